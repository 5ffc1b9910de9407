#ifndef RecordTesting_H
#define RecordTesting_H

#include <QorWflInteropInfo.h>

#include <cstddef>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

/** What the tests of the records' text form share: sample records, their text, and streams that watch or lack
 * something. */
namespace RecordTesting {

template <typename Record>
std::string ToText(const Record& iRecord) {
    std::ostringstream stream;
    stream << iRecord;
    return stream.str();
}

inline std::string Bytes(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

/** A record with a value of its own in every field that the text form knows, two of each list. */
inline void FillSample(ActivityInfo& oActivity) {
    oActivity.id = "A1";
    oActivity.name = "Design review";
    oActivity.abstract = "Check the wing";
    oActivity.priority = "high";
    oActivity.extid = "LumenUID://Legacy+QOR1/default/A1.ACTION";
    oActivity.status = "RUN";
    oActivity.duration = 12;
    oActivity.durationUnit = "D";
    oActivity.owner = "smith";
    oActivity.participant = "jones";
    oActivity.participantType = "HUMAN";
    oActivity.documentation = "see drawing";
    oActivity.generation = 34;
    oActivity.process.id = "P7";
    oActivity.process.name = "Release";
    oActivity.process.context = "ctx?context=x";
    oActivity.process.SetDataNumber(2);
    oActivity.process.datas[0].name = "D1";
    oActivity.process.datas[0].type = "Part";
    oActivity.process.datas[0].extid = "url1";
    oActivity.process.datas[0].value = "v1";
    oActivity.process.datas[1].name = "D2";
    oActivity.process.datas[1].type = "Model";
    oActivity.process.datas[1].extid = "url2";
    oActivity.process.datas[1].value = "v2";
    oActivity.SetInputNumber(2);
    oActivity.inputs[0] = "D1";
    oActivity.inputs[1] = "D2";
    oActivity.SetOutputNumber(2);
    oActivity.outputs[0] = "D3";
    oActivity.outputs[1] = "D4";
}

/** The text of the sample record. */
inline const std::string kSampleText =
    "id=\"A1\";\n"
    "name=\"Design review\";\n"
    "abstract=\"Check the wing\";\n"
    "priority=\"high\";\n"
    "extid=\"LumenUID://Legacy+QOR1/default/A1.ACTION\";\n"
    "status=\"RUN\";\n"
    "duration=12;\n"
    "durationUnit=\"D\";\n"
    "owner=\"smith\";\n"
    "documentation=\"see drawing\";\n"
    "generation=34;\n"
    "process.id=\"P7\";\n"
    "process.name=\"Release\";\n"
    "process.context=\"ctx?context=x\";\n"
    "process.datas.length=2;\n"
    "process.datas.1.name=\"D1\";\n"
    "process.datas.1.type=\"Part\";\n"
    "process.datas.1.extid=\"url1\";\n"
    "process.datas.1.value=\"v1\";\n"
    "process.datas.2.name=\"D2\";\n"
    "process.datas.2.type=\"Model\";\n"
    "process.datas.2.extid=\"url2\";\n"
    "process.datas.2.value=\"v2\";\n"
    "inputs.length=2;\n"
    "inputs.1.name=\"D1\";\n"
    "inputs.2.name=\"D2\";\n"
    "outputs.length=2;\n"
    "outputs.1.name=\"D3\";\n"
    "outputs.2.name=\"D4\";";

/** The lines of the sample, without their line feeds. */
inline std::vector<std::string> SampleLines() {
    std::vector<std::string> lines;
    std::istringstream stream(kSampleText);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/** Lines as a text, a line feed behind each. */
inline std::string Joined(const std::vector<std::string>& iLines) {
    std::string text;
    for (const std::string& line : iLines) {
        text += line + "\n";
    }
    return text;
}

/** The label prefix is one for the process; this leaves it as "outputs." @p iLast, whatever test ran before. */
inline void LeavePrefixOfOutputs(int iLast) {
    ActivityInfo activity;
    activity.SetOutputNumber(iLast);
    ToText(activity);
}

/** Takes text and remembers how much of it there was at each flush. */
class FlushRecorder : public std::stringbuf {
public:
    std::vector<std::size_t> lengthAtFlush;

protected:
    int sync() override {
        lengthAtFlush.push_back(str().size());
        return std::stringbuf::sync();
    }
};

/**
 * Gives text a piece at a time, never going back or telling where it is or how much is left; with pieces of no length a
 * character at a time without keeping it, as std::cin does.
 */
class ForwardOnlyBuffer : public std::streambuf {
public:
    explicit ForwardOnlyBuffer(std::string iText, std::size_t iPiece = 7) : text(std::move(iText)), piece(iPiece) {}

protected:
    int_type underflow() override {
        if (next == text.size()) {
            return traits_type::eof();
        }
        if (piece == 0) {
            return traits_type::to_int_type(text[next]);
        }
        const std::size_t length = std::min(piece, text.size() - next);
        current = text.substr(next, length);
        next += length;
        setg(current.data(), current.data(), current.data() + length);
        return traits_type::to_int_type(current[0]);
    }
    int_type uflow() override {
        if (piece > 0) {
            return std::streambuf::uflow();
        }
        return next == text.size() ? traits_type::eof() : traits_type::to_int_type(text[next++]);
    }

private:
    std::string text;
    std::string current;
    std::size_t next = 0;
    std::size_t piece;
};

}  // namespace RecordTesting

#endif
