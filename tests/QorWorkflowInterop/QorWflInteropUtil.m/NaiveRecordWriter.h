#ifndef NaiveRecordWriter_H
#define NaiveRecordWriter_H

#include "RecordTesting.h"

#include <ActivityInfo.h>

#include <cstddef>
#include <string>
#include <vector>

/** Writes records in their text form by plain concatenation; independent of the library, to judge it by. */
class NaiveRecordWriter {
public:
    explicit NaiveRecordWriter(std::string iPrefix = "") : prefix(std::move(iPrefix)) {}

    void Write(const DataInfo& iData) {
        Quoted("name", iData.name);
        EndLine();
        Quoted("type", iData.type);
        EndLine();
        Quoted("extid", iData.extid);
        EndLine();
        Quoted("value", iData.value);
    }

    void Write(const ProcessInfo& iProcess) {
        Quoted("id", iProcess.id);
        EndLine();
        Quoted("name", iProcess.name);
        EndLine();
        Quoted("context", iProcess.context);
        EndLine();
        const std::string saved = prefix;
        prefix = saved + "datas.";
        Number("length", iProcess.dataNumber);
        for (int k = 1; k <= iProcess.dataNumber; ++k) {
            prefix = saved + "datas." + std::to_string(k) + ".";
            EndLine();
            Write(iProcess.datas[k - 1]);
        }
        prefix = saved;
    }

    void Write(const ActivityInfo& iActivity) {
        prefix.clear();
        QuotedLine("id", iActivity.id);
        QuotedLine("name", iActivity.name);
        QuotedLine("abstract", iActivity.abstract);
        QuotedLine("priority", iActivity.priority);
        QuotedLine("extid", iActivity.extid);
        QuotedLine("status", iActivity.status);
        NumberLine("duration", iActivity.duration);
        QuotedLine("durationUnit", iActivity.durationUnit);
        QuotedLine("owner", iActivity.owner);
        QuotedLine("documentation", iActivity.documentation);
        NumberLine("generation", iActivity.generation);
        prefix = "process.";
        Write(iActivity.process);
        EndLine();
        WriteList("inputs.", iActivity.inputs, iActivity.inputNumber);
        EndLine();
        WriteList("outputs.", iActivity.outputs, iActivity.outputNumber);
    }

    const std::string& Text() const { return text; }
    /** Where a line ends, which is where the stream is flushed: the length of the text up to there. */
    const std::vector<std::size_t>& LineEnds() const { return lineEnds; }
    /** The label prefix that is left behind. */
    const std::string& Prefix() const { return prefix; }

private:
    void EndLine() {
        text += "\n";
        lineEnds.push_back(text.size());
    }
    void Quoted(const std::string& iLabel, const BexUnicodeString& iText) {
        text += prefix + iLabel + "=\"" + RecordTesting::Bytes(iText) + "\";";
    }
    void QuotedLine(const std::string& iLabel, const BexUnicodeString& iText) {
        Quoted(iLabel, iText);
        EndLine();
    }
    void Number(const std::string& iLabel, long iNumber) {
        text += prefix + iLabel + "=" + std::to_string(iNumber) + ";";
    }
    void NumberLine(const std::string& iLabel, long iNumber) {
        Number(iLabel, iNumber);
        EndLine();
    }
    void WriteList(const std::string& iList, const BexUnicodeString* iTexts, int iCount) {
        prefix = iList;
        Number("length", iCount);
        for (int k = 1; k <= iCount; ++k) {
            prefix = iList + std::to_string(k) + ".";
            EndLine();
            Quoted("name", iTexts[k - 1]);
        }
    }

    std::string prefix;
    std::string text;
    std::vector<std::size_t> lineEnds;
};

#endif
