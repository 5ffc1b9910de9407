#include "QorWflInteropInfo.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <istream>
#include <limits>
#include <new>
#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

namespace {

/** Gives an array of @p iCount default elements in the place of another; null for a count of 0 or below. */
template <typename Element>
void ReplaceArray(Element*& ioArray, int& ioCount, int iCount) {
    delete[] ioArray;
    ioArray = nullptr;
    ioCount = 0;
    if (iCount > 0) {
        ioArray = new Element[static_cast<std::size_t>(iCount)];
    }
    ioCount = iCount;
}

}  // namespace

ProcessInfo::ProcessInfo() = default;

ProcessInfo::~ProcessInfo() {
    SetDataNumber(0);
}

void ProcessInfo::SetDataNumber(int n) {
    ReplaceArray(datas, dataNumber, n);
}

ActivityInfo::ActivityInfo() = default;

ActivityInfo::~ActivityInfo() {
    SetInputNumber(0);
    SetOutputNumber(0);
}

void ActivityInfo::SetInputNumber(int n) {
    ReplaceArray(inputs, inputNumber, n);
}

void ActivityInfo::SetOutputNumber(int n) {
    ReplaceArray(outputs, outputNumber, n);
}

// ---------------------------------------------------------------------------------------------------- writing

namespace {

constexpr std::string_view kLengthLabel("length=");
constexpr std::string_view kNameLabel("name=");
constexpr std::string_view kProcessPrefix("process.");
constexpr std::string_view kDatasPrefix("datas.");
constexpr std::string_view kInputsPrefix("inputs.");
constexpr std::string_view kOutputsPrefix("outputs.");

/**
 * What stands before the labels of data and process lines. One for the whole library, and writing an activity leaves it
 * as last set: hosts that write a process or data record behind an activity rely on its labels.
 */
std::string labelPrefix;

std::string DecimalText(long iNumber) {
    char digits[std::numeric_limits<long>::digits10 + 3];  // all digits, one more, a sign
    return std::string(digits, std::to_chars(digits, digits + sizeof digits, iNumber).ptr);
}

/** Reaches where a stream buffer gathers what is written, so that several pieces get there in one step. */
class WriteAhead : public std::streambuf {
    static constexpr std::size_t kLongestStep = std::numeric_limits<int>::max();  // what pbump() can count

public:
    /** Writes pieces; false when they cannot be written. */
    static bool Put(std::streambuf& ioTarget, std::initializer_list<std::string_view> iPieces) {
        std::size_t length = 0;
        for (const std::string_view piece : iPieces) {
            length += piece.size();
        }
        char* const next = (ioTarget.*(&WriteAhead::pptr))();
        char* const end = (ioTarget.*(&WriteAhead::epptr))();
        if (next == nullptr || static_cast<std::size_t>(end - next) < length || length > kLongestStep) {
            return std::all_of(iPieces.begin(), iPieces.end(), [&ioTarget](std::string_view iPiece) {
                const auto pieceLength = static_cast<std::streamsize>(iPiece.size());
                return ioTarget.sputn(iPiece.data(), pieceLength) == pieceLength;
            });
        }
        char* at = next;
        for (const std::string_view piece : iPieces) {
            at = std::copy_n(piece.data(), piece.size(), at);
        }
        (ioTarget.*(&WriteAhead::pbump))(static_cast<int>(length));
        return true;
    }
};

/** Writes the lines of one record, with a flush at each line end. */
class LineWriter {
public:
    /** Asks once whether the stream is ready, not for every line. */
    explicit LineWriter(std::ostream& ioStream) : stream(ioStream), ready(ioStream) {}

    void Quoted(std::string_view iPrefix, std::string_view iLabel, const BexUnicodeString& iValue) {
        const std::string_view value(iValue.ConvertToChar(), static_cast<std::size_t>(iValue.GetLengthInChar()));
        Write([&](std::streambuf& ioTarget) {
            return WriteAhead::Put(ioTarget, {iPrefix, iLabel, "\"", value, "\";"});
        });
    }

    void Number(std::string_view iPrefix, std::string_view iLabel, long iValue) {
        const std::string value = DecimalText(iValue);
        Write([&](std::streambuf& ioTarget) { return WriteAhead::Put(ioTarget, {iPrefix, iLabel, value, ";"}); });
    }

    void End() {
        Write([](std::streambuf& ioTarget) {
            return ioTarget.sputc('\n') != std::streambuf::traits_type::eof() && ioTarget.pubsync() != -1;
        });
    }

private:
    /** Lets a function write to the stream buffer; what goes wrong shows in the stream's state. */
    template <typename Function>
    void Write(Function iFunction) {
        std::ios_base::iostate state = std::ios_base::failbit;
        if (stream.good()) {
            try {
                state = iFunction(*stream.rdbuf()) ? std::ios_base::goodbit : std::ios_base::badbit;
            } catch (...) {  // the target cannot be written
                state = std::ios_base::badbit;
            }
        }
        if (state != std::ios_base::goodbit) {
            stream.setstate(state);
        }
    }

    std::ostream& stream;
    const std::ostream::sentry ready;
};

/** Sets the label prefix of element @p iIndex of a list, counted from 1 in the text. */
void SetElementPrefix(std::string_view iList, int iIndex) {
    labelPrefix.assign(iList).append(DecimalText(iIndex + 1L)).append(".");
}

void WriteData(LineWriter& ioWriter, const DataInfo& iData) {
    ioWriter.Quoted(labelPrefix, kNameLabel, iData.name);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, "type=", iData.type);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, "extid=", iData.extid);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, "value=", iData.value);
}

/** Puts the label prefix back that stood before, also when memory ends in between. */
class SavedPrefix {
public:
    SavedPrefix() : saved(labelPrefix) {}
    ~SavedPrefix() { labelPrefix.swap(saved); }
    SavedPrefix(const SavedPrefix&) = delete;  // puts it back once
    SavedPrefix& operator=(const SavedPrefix&) = delete;

    std::string With(std::string_view iMore) const { return saved + std::string(iMore); }

private:
    std::string saved;
};

void WriteProcess(LineWriter& ioWriter, const ProcessInfo& iProcess) {
    const SavedPrefix before;
    ioWriter.Quoted(labelPrefix, "id=", iProcess.id);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, kNameLabel, iProcess.name);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, "context=", iProcess.context);
    const std::string listPrefix = before.With(kDatasPrefix);
    labelPrefix = listPrefix;
    ioWriter.End();
    ioWriter.Number(labelPrefix, kLengthLabel, iProcess.dataNumber);
    for (int i = 0; i < iProcess.dataNumber; ++i) {
        SetElementPrefix(listPrefix, i);
        ioWriter.End();
        WriteData(ioWriter, iProcess.datas[i]);
    }
}

/** Writes the count line and the names of a list, leaving the prefix of its last line behind. */
void WriteNames(LineWriter& ioWriter, std::string_view iPrefix, const BexUnicodeString* iNames, int iCount) {
    labelPrefix = iPrefix;
    ioWriter.Number(labelPrefix, kLengthLabel, iCount);
    for (int i = 0; i < iCount; ++i) {
        SetElementPrefix(iPrefix, i);
        ioWriter.End();
        ioWriter.Quoted(labelPrefix, kNameLabel, iNames[i]);
    }
}

void WriteActivity(LineWriter& ioWriter, const ActivityInfo& iActivity) {
    const auto quotedLine = [&ioWriter](std::string_view iLabel, const BexUnicodeString& iValue) {
        ioWriter.Quoted("", iLabel, iValue);
        ioWriter.End();
    };
    const auto numberLine = [&ioWriter](std::string_view iLabel, long iValue) {
        ioWriter.Number("", iLabel, iValue);
        ioWriter.End();
    };
    quotedLine("id=", iActivity.id);
    quotedLine(kNameLabel, iActivity.name);
    quotedLine("abstract=", iActivity.abstract);
    quotedLine("priority=", iActivity.priority);
    quotedLine("extid=", iActivity.extid);
    quotedLine("status=", iActivity.status);
    numberLine("duration=", iActivity.duration);
    quotedLine("durationUnit=", iActivity.durationUnit);
    quotedLine("owner=", iActivity.owner);
    quotedLine("documentation=", iActivity.documentation);
    numberLine("generation=", iActivity.generation);
    labelPrefix = kProcessPrefix;
    WriteProcess(ioWriter, iActivity.process);
    ioWriter.End();
    WriteNames(ioWriter, kInputsPrefix, iActivity.inputs, iActivity.inputNumber);
    labelPrefix = kOutputsPrefix;
    ioWriter.End();
    WriteNames(ioWriter, kOutputsPrefix, iActivity.outputs, iActivity.outputNumber);
}

/** Writes a record; memory that cannot be had for it fails the stream. */
template <typename Record, typename Write>
std::ostream& WriteRecord(std::ostream& ioStream, const Record& iRecord, Write iWrite) {
    try {
        LineWriter writer(ioStream);
        iWrite(writer, iRecord);
    } catch (const std::bad_alloc&) {
        ioStream.setstate(std::ios_base::failbit);
    }
    return ioStream;
}

}  // namespace

std::ostream& operator<<(std::ostream& ioStream, const DataInfo& iData) {
    return WriteRecord(ioStream, iData, WriteData);
}

std::ostream& operator<<(std::ostream& ioStream, const ProcessInfo& iProcess) {
    return WriteRecord(ioStream, iProcess, WriteProcess);
}

std::ostream& operator<<(std::ostream& ioStream, const ActivityInfo& iActivity) {
    return WriteRecord(ioStream, iActivity, WriteActivity);
}

// ---------------------------------------------------------------------------------------------------- reading

namespace {

constexpr std::size_t kLongestSkip = 9999;
constexpr std::size_t kLongestText = 79;
constexpr char kQuote = '"';
/** The shortest text that a value can be read from: two quotes, and a line feed but behind the last. */
constexpr std::size_t kShortestText = 3;
/** A list of so many elements is made whether or not the text has them. */
constexpr int kTrustedCount = 4096;
/** What memory is taken for at once, whatever number of texts is announced. */
constexpr std::size_t kUsualNumber = 512;

/** Reaches what a stream buffer has read ahead, so that it can be searched as a whole. */
class ReadAhead : public std::streambuf {
public:
    /**
     * The characters at hand, read anew when there are none; empty at the end of the text.
     * @param oSingle holds the next one when the source keeps none, as std::cin does
     */
    static std::string_view Of(std::streambuf& ioSource, char& oSingle) {
        const int next = ioSource.sgetc();
        if (next == traits_type::eof()) {
            return std::string_view();
        }
        if (const std::size_t length = LengthOf(ioSource); length > 0) {
            return std::string_view((ioSource.*(&ReadAhead::gptr))(), length);
        }
        oSingle = traits_type::to_char_type(next);
        return std::string_view(&oSingle, 1);
    }
    /** Takes characters that are at hand. */
    static void Take(std::streambuf& ioSource, std::size_t iLength) {
        if (LengthOf(ioSource) > 0) {
            (ioSource.*(&ReadAhead::gbump))(static_cast<int>(iLength));
        } else if (iLength > 0) {
            ioSource.sbumpc();
        }
    }

private:
    static std::size_t LengthOf(std::streambuf& ioSource) {
        return static_cast<std::size_t>((ioSource.*(&ReadAhead::egptr))() - (ioSource.*(&ReadAhead::gptr))());
    }
};

/** Takes values out of the lines of a record, by their order. */
class LineReader {
public:
    /** Asks once whether the stream is ready, not for every line. */
    explicit LineReader(std::istream& ioStream) : stream(ioStream), ready(ioStream, true) {}

    /** The next quoted value, cut at 79 characters; empty when there is none. */
    BexUnicodeString Text() {
        char text[kLongestText];
        std::size_t length = 0;
        std::ios_base::iostate state = std::ios_base::failbit;
        if (stream.good()) {
            try {
                state = ReadText(text, length);
            } catch (const std::bad_alloc&) {
                throw;
            } catch (...) {  // the source cannot be read
                state = std::ios_base::badbit;
                length = 0;
            }
        }
        if (state != std::ios_base::goodbit) {
            stream.setstate(state);
        }
        return BexUnicodeString::FromNarrow(std::string_view(text, length));
    }

    /** The next number; 0 when none stands there. */
    template <typename Value>
    Value Number() {
        stream.ignore(kLongestSkip, '=');
        Value value{};
        if (!(stream >> value)) {
            value = Value{};
        }
        stream.ignore(kLongestSkip, '\n');
        return value;
    }

    /**
     * The texts of a list of @p iCount elements, empty ones for what is missing.
     *
     * They are read before the list is made, so that a large count which the rest of the text cannot hold costs no
     * memory. Such a count gives no texts and false.
     */
    bool Texts(int iCount, std::size_t iTextsOfElement, std::vector<BexUnicodeString>& oTexts) {
        const std::size_t wanted = static_cast<std::size_t>(std::max(iCount, 0)) * iTextsOfElement;
        consumed = 0;
        oTexts.reserve(std::min(wanted, kUsualNumber));
        while (oTexts.size() < wanted && stream.good()) {
            oTexts.push_back(Text());
        }
        if (oTexts.size() == wanted) {
            return true;
        }
        Fail();
        if (iCount > kTrustedCount && consumed + 1 < wanted * kShortestText) {
            oTexts.clear();
            return false;
        }
        oTexts.resize(wanted, BexUnicodeString(""));
        return true;
    }

    void Fail() { stream.setstate(std::ios_base::failbit); }

private:
    /** Reads a label, a value and the rest of the line; gives the state that the stream is in then. */
    std::ios_base::iostate ReadText(char* oText, std::size_t& oLength) {
        if (!SkipPast(kQuote) || !TakeValue(oText, oLength)) {
            return std::ios_base::eofbit | std::ios_base::failbit;
        }
        return SkipPast('\n') ? std::ios_base::goodbit : std::ios_base::eofbit;
    }

    /** Goes behind the next such character, over no more than the longest skip; false at the end of the text. */
    bool SkipPast(char iCharacter) {
        std::streambuf& source = *stream.rdbuf();
        std::size_t left = kLongestSkip;
        while (left > 0) {
            const std::string_view ahead = ReadAhead::Of(source, single).substr(0, left);
            if (ahead.empty()) {
                return false;
            }
            const std::size_t found = ahead.find(iCharacter);
            const std::size_t length = found == std::string_view::npos ? ahead.size() : found + 1;
            ReadAhead::Take(source, length);
            consumed += length;
            if (found != std::string_view::npos) {
                return true;
            }
            left -= length;
        }
        return true;
    }

    /** Takes what stands before the next quote, no more than fits; false at the end of the text. */
    bool TakeValue(char* oText, std::size_t& oLength) {
        std::streambuf& source = *stream.rdbuf();
        while (oLength < kLongestText) {
            const std::string_view ahead = ReadAhead::Of(source, single).substr(0, kLongestText - oLength);
            if (ahead.empty()) {
                return false;
            }
            const std::size_t length = std::min(ahead.find(kQuote), ahead.size());
            std::copy_n(ahead.data(), length, oText + oLength);
            ReadAhead::Take(source, length);
            oLength += length;
            consumed += length;
            if (length < ahead.size()) {
                return true;
            }
        }
        return true;
    }

    std::istream& stream;
    const std::istream::sentry ready;
    char single = '\0';        // the next character, of a source that keeps none
    std::size_t consumed = 0;  // characters that texts took since it was last set
};

constexpr std::size_t kTextsOfData = 4;

/** Reads the count and the elements of a list, through the record's own setter. */
template <typename Record, typename Fill>
void ReadList(LineReader& ioReader, Record& oRecord, void (Record::*iSetNumber)(int), std::size_t iTextsOfElement,
              Fill iFill) {
    const int count = ioReader.Number<int>();
    (oRecord.*iSetNumber)(0);
    try {
        std::vector<BexUnicodeString> texts;
        if (ioReader.Texts(count, iTextsOfElement, texts)) {
            (oRecord.*iSetNumber)(count);
            iFill(texts);
        }
    } catch (const std::bad_alloc&) {
        ioReader.Fail();
    }
}

void ReadData(LineReader& ioReader, DataInfo& oData) {
    oData.name = ioReader.Text();
    oData.type = ioReader.Text();
    oData.extid = ioReader.Text();
    oData.value = ioReader.Text();
}

void ReadProcess(LineReader& ioReader, ProcessInfo& oProcess) {
    oProcess.id = ioReader.Text();
    oProcess.name = ioReader.Text();
    oProcess.context = ioReader.Text();
    ReadList(ioReader, oProcess, &ProcessInfo::SetDataNumber, kTextsOfData,
             [&oProcess](std::vector<BexUnicodeString>& ioTexts) {
                 for (std::size_t i = 0; i < ioTexts.size(); i += kTextsOfData) {
                     DataInfo& data = oProcess.datas[i / kTextsOfData];
                     data.name = std::move(ioTexts[i]);
                     data.type = std::move(ioTexts[i + 1]);
                     data.extid = std::move(ioTexts[i + 2]);
                     data.value = std::move(ioTexts[i + 3]);
                 }
             });
}

void ReadActivity(LineReader& ioReader, ActivityInfo& oActivity) {
    oActivity.id = ioReader.Text();
    oActivity.name = ioReader.Text();
    oActivity.abstract = ioReader.Text();
    oActivity.priority = ioReader.Text();
    oActivity.extid = ioReader.Text();
    oActivity.status = ioReader.Text();
    oActivity.duration = ioReader.Number<long>();
    oActivity.durationUnit = ioReader.Text();
    oActivity.owner = ioReader.Text();
    oActivity.documentation = ioReader.Text();
    oActivity.generation = ioReader.Number<int>();
    ReadProcess(ioReader, oActivity.process);
    ReadList(ioReader, oActivity, &ActivityInfo::SetInputNumber, 1,
             [&oActivity](std::vector<BexUnicodeString>& ioTexts) {
                 std::move(ioTexts.begin(), ioTexts.end(), oActivity.inputs);
             });
    ReadList(ioReader, oActivity, &ActivityInfo::SetOutputNumber, 1,
             [&oActivity](std::vector<BexUnicodeString>& ioTexts) {
                 std::move(ioTexts.begin(), ioTexts.end(), oActivity.outputs);
             });
}

/** Reads a record; memory that cannot be had for its texts fails the stream. */
template <typename Record, typename Read>
std::istream& ReadRecord(std::istream& ioStream, Record& oRecord, Read iRead) {
    try {
        LineReader reader(ioStream);
        iRead(reader, oRecord);
    } catch (const std::bad_alloc&) {
        ioStream.setstate(std::ios_base::failbit);
    }
    return ioStream;
}

}  // namespace

std::istream& operator>>(std::istream& ioStream, DataInfo& oData) {
    return ReadRecord(ioStream, oData, ReadData);
}

std::istream& operator>>(std::istream& ioStream, ProcessInfo& oProcess) {
    return ReadRecord(ioStream, oProcess, ReadProcess);
}

std::istream& operator>>(std::istream& ioStream, ActivityInfo& oActivity) {
    return ReadRecord(ioStream, oActivity, ReadActivity);
}
