#include "QorWflInteropInfo.h"

#include <algorithm>
#include <charconv>
#include <istream>
#include <limits>
#include <new>
#include <ostream>
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

/** The lines of one record, put together in one buffer and sent with one flush a line end. */
class LineWriter {
public:
    explicit LineWriter(std::ostream& ioStream) : stream(ioStream) {}

    void Quoted(std::string_view iPrefix, std::string_view iLabel, const BexUnicodeString& iValue) {
        const char* value = iValue.ConvertToChar();
        line.assign(iPrefix).append(iLabel).append("\"");
        line.append(value, static_cast<std::size_t>(iValue.GetLengthInChar())).append("\";");
        Send();
    }

    void Number(std::string_view iPrefix, std::string_view iLabel, long iValue) {
        line.assign(iPrefix).append(iLabel).append(DecimalText(iValue)).append(";");
        Send();
    }

    void End() { stream << std::endl; }

private:
    void Send() { stream.write(line.data(), static_cast<std::streamsize>(line.size())); }

    std::ostream& stream;
    std::string line;
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

void WriteProcess(LineWriter& ioWriter, const ProcessInfo& iProcess) {
    ioWriter.Quoted(labelPrefix, "id=", iProcess.id);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, kNameLabel, iProcess.name);
    ioWriter.End();
    ioWriter.Quoted(labelPrefix, "context=", iProcess.context);
    const std::string savedPrefix = labelPrefix;
    const std::string listPrefix = savedPrefix + std::string(kDatasPrefix);
    labelPrefix = listPrefix;
    ioWriter.End();
    ioWriter.Number(labelPrefix, kLengthLabel, iProcess.dataNumber);
    for (int i = 0; i < iProcess.dataNumber; ++i) {
        SetElementPrefix(listPrefix, i);
        ioWriter.End();
        WriteData(ioWriter, iProcess.datas[i]);
    }
    labelPrefix = savedPrefix;
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

constexpr std::streamsize kLongestSkip = 9999;
constexpr std::streamsize kLongestText = 79;
constexpr char kQuote = '"';
/** The shortest text that a value can be read from: two quotes, and a line feed but behind the last. */
constexpr std::streamsize kShortestText = 3;

/** Takes values out of the lines of a record, by their order. */
class LineReader {
public:
    explicit LineReader(std::istream& ioStream) : stream(ioStream) {}

    /** The next quoted value, cut at 79 characters; empty when there is none. */
    BexUnicodeString Text() {
        Skip(kQuote);
        char buffer[kLongestText + 1];
        std::streamsize length = 0;
        if (stream.peek() != kQuote) {  // an empty value, of which get() would make a failure
            stream.get(buffer, sizeof buffer, kQuote);
            length = stream.gcount();
            consumed += length;
        }
        Skip('\n');
        return BexUnicodeString(buffer, static_cast<int>(length));
    }

    /** The next number; 0 when none stands there. */
    template <typename Value>
    Value Number() {
        Skip('=');
        Value value{};
        if (!(stream >> value)) {
            value = Value{};
        }
        Skip('\n');
        return value;
    }

    /**
     * The texts of a list of @p iCount elements.
     *
     * They are read before the list is made, so that a count which the rest of the text cannot hold costs no memory.
     * Such a count gives no texts and false; one that it could hold, but does not, gives empty texts for what is
     * missing.
     */
    bool Texts(int iCount, std::size_t iTextsOfElement, std::vector<BexUnicodeString>& oTexts) {
        const std::size_t wanted = static_cast<std::size_t>(std::max(iCount, 0)) * iTextsOfElement;
        consumed = 0;
        while (oTexts.size() < wanted && stream.good()) {
            oTexts.push_back(Text());
        }
        if (oTexts.size() < wanted && static_cast<std::size_t>(consumed) + 1 < wanted * kShortestText) {
            stream.setstate(std::ios_base::failbit);
            oTexts.clear();
            return false;
        }
        if (oTexts.size() < wanted) {
            stream.setstate(std::ios_base::failbit);
            oTexts.resize(wanted, BexUnicodeString(""));
        }
        return true;
    }

    void Fail() { stream.setstate(std::ios_base::failbit); }

private:
    /** Goes behind the next such character, over no more than the longest skip. */
    void Skip(char iCharacter) {
        stream.ignore(kLongestSkip, iCharacter);
        consumed += stream.gcount();
    }

    std::istream& stream;
    std::streamsize consumed = 0;  // characters taken out since it was last set
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
