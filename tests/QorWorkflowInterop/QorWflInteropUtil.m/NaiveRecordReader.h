#ifndef NaiveRecordReader_H
#define NaiveRecordReader_H

#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

/** What an activity holds once it has been read, as plain data that compares and prints. */
struct RecordContent {
    std::string fields;                ///< a line for each text and number of the activity and its process
    std::vector<std::string> datas;    ///< four texts for each data field
    std::vector<std::string> inputs;   ///< the inputs
    std::vector<std::string> outputs;  ///< the outputs
    int dataNumber = 0;                ///< the count as it stands
    int inputNumber = 0;               ///< the count as it stands
    int outputNumber = 0;              ///< the count as it stands

    void AddField(const std::string& iValue) { fields += "[" + iValue + "]\n"; }

    std::string Print() const {
        std::string text = fields;
        const auto add = [&text](int iNumber, const std::vector<std::string>& iTexts) {
            text += std::to_string(iNumber) + ":";
            for (const std::string& value : iTexts) {
                text += " [" + value + "]";
            }
            text += "\n";
        };
        add(dataNumber, datas);
        add(inputNumber, inputs);
        add(outputNumber, outputs);
        return text;
    }

    static RecordContent Of(const ActivityInfo& iActivity) {
        using RecordTesting::Bytes;
        RecordContent content;
        for (const BexUnicodeString* text : {&iActivity.id, &iActivity.name, &iActivity.abstract, &iActivity.priority,
                                             &iActivity.extid, &iActivity.status}) {
            content.AddField(Bytes(*text));
        }
        content.AddField(std::to_string(iActivity.duration));
        for (const BexUnicodeString* text : {&iActivity.durationUnit, &iActivity.owner, &iActivity.documentation}) {
            content.AddField(Bytes(*text));
        }
        content.AddField(std::to_string(iActivity.generation));
        for (const BexUnicodeString* text :
             {&iActivity.process.id, &iActivity.process.name, &iActivity.process.context}) {
            content.AddField(Bytes(*text));
        }
        content.dataNumber = iActivity.process.dataNumber;
        for (int i = 0; i < content.dataNumber && iActivity.process.datas != nullptr; ++i) {
            const DataInfo& data = iActivity.process.datas[i];
            for (const BexUnicodeString* text : {&data.name, &data.type, &data.extid, &data.value}) {
                content.datas.push_back(Bytes(*text));
            }
        }
        content.inputNumber = iActivity.inputNumber;
        for (int i = 0; i < content.inputNumber && iActivity.inputs != nullptr; ++i) {
            content.inputs.push_back(Bytes(iActivity.inputs[i]));
        }
        content.outputNumber = iActivity.outputNumber;
        for (int i = 0; i < content.outputNumber && iActivity.outputs != nullptr; ++i) {
            content.outputs.push_back(Bytes(iActivity.outputs[i]));
        }
        return content;
    }
};

/**
 * Reads an activity from a text in memory, a character at a time, as the text form is defined; independent of the
 * library, to judge it by.
 */
class NaiveRecordReader {
public:
    explicit NaiveRecordReader(std::string iText) : text(std::move(iText)) {}

    void Read() {
        for (int i = 0; i < 6; ++i) {
            content.AddField(Text());
        }
        content.AddField(std::to_string(Number<long>()));
        for (int i = 0; i < 3; ++i) {
            content.AddField(Text());
        }
        content.AddField(std::to_string(Number<int>()));
        for (int i = 0; i < 3; ++i) {
            content.AddField(Text());
        }
        content.dataNumber = List(content.datas, 4);
        content.inputNumber = List(content.inputs, 1);
        content.outputNumber = List(content.outputs, 1);
    }

    const RecordContent& Content() const { return content; }
    /** Whether something to read was not there. */
    bool Failed() const { return failed; }
    /** Whether the text ended inside the very last line, at which a stream may fail or not. */
    bool EndsInsideALine() const { return !failed && endsInsideALine; }
    /** Where reading stopped. */
    std::size_t Position() const { return next; }

    /**
     * What may be read instead of Content() where the text ends inside a list: the same without that list, because
     * a large count that the text cannot hold leaves its list empty.
     */
    RecordContent WithoutBrokenList() const {
        RecordContent other = content;
        if (std::max({content.dataNumber, content.inputNumber, content.outputNumber}) <= kTrustedCount) {
            return other;
        }
        if (broken == &content.datas) {
            other.datas.clear();
            other.dataNumber = 0;
        } else if (broken == &content.inputs) {
            other.inputs.clear();
            other.inputNumber = 0;
        } else if (broken == &content.outputs) {
            other.outputs.clear();
            other.outputNumber = 0;
        }
        return other;
    }

private:
    /** Up to and including the next @p iStop, at most 9999 characters. @return whether it was there. */
    bool Skip(char iStop) {
        for (int skipped = 0; skipped < 9999 && next < text.size(); ++skipped) {
            if (text[next++] == iStop) {
                return true;
            }
        }
        return false;
    }

    bool AtEnd() {
        failed = failed || next == text.size();
        return failed;
    }

    std::string Text() {
        if (AtEnd()) {
            return "";
        }
        Skip('"');
        if (AtEnd()) {
            return "";
        }
        std::string value;
        while (value.size() < 79 && next < text.size() && text[next] != '"') {
            value += text[next++];
        }
        endsInsideALine = next == text.size();
        Skip('\n');
        return value;
    }

    template <typename Integer>
    Integer Number() {
        if (AtEnd()) {
            return 0;
        }
        Skip('=');
        std::istringstream rest(text.substr(next));
        Integer number = 0;
        if (!(rest >> number)) {
            failed = true;
            return 0;
        }
        next = rest.eof() ? text.size() : next + static_cast<std::size_t>(rest.tellg());
        endsInsideALine = next == text.size();
        Skip('\n');
        return number;
    }

    int List(std::vector<std::string>& oTexts, int iTextsPerElement) {
        const int count = Number<int>();
        const long wanted = static_cast<long>(count) * iTextsPerElement;
        for (long i = 0; i < wanted; ++i) {
            const bool before = failed;
            oTexts.push_back(Text());
            if (failed && !before) {
                broken = &oTexts;
                if (count > kTrustedCount &&
                    static_cast<std::size_t>(wanted) > text.size()) {  // the count of a list that was never there
                    oTexts.clear();
                    return 0;
                }
            }
        }
        return count;
    }

    static constexpr int kTrustedCount = 4096;  // up to here a count is taken at its word

    std::string text;
    std::size_t next = 0;
    bool failed = false;
    bool endsInsideALine = false;
    RecordContent content;
    const std::vector<std::string>* broken = nullptr;
};

/** Reads @p iText from a stream into a record that holds something and compares record and stream with the naive
 * reader. */
inline void ExpectReadAsNaively(std::istream& ioStream, const std::string& iText) {
    NaiveRecordReader naive(iText);
    naive.Read();
    ActivityInfo activity;
    RecordTesting::FillSample(activity);
    ioStream >> activity;
    ASSERT_THAT(RecordContent::Of(activity).Print(),
                testing::AnyOf(naive.Content().Print(), naive.WithoutBrokenList().Print()))
        << iText;
    if (!naive.EndsInsideALine()) {
        ASSERT_EQ(ioStream.fail(), naive.Failed()) << iText;
    }
}

/** The same from a stream that can go back, from one that cannot and from one that keeps nothing. */
inline void ExpectReadAsNaively(const std::string& iText) {
    std::istringstream stream(iText);
    ExpectReadAsNaively(stream, iText);
    for (const std::size_t piece : {7U, 0U}) {
        RecordTesting::ForwardOnlyBuffer buffer(iText, piece);
        std::istream forwardOnly(&buffer);
        ExpectReadAsNaively(forwardOnly, iText);
    }
}

#endif
