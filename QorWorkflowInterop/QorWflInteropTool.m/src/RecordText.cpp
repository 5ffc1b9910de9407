#include "RecordText.h"

#include "Failure.h"
#include "RecordFields.h"
#include "Unicode.h"

#include <QorWflInteropInfo.h>

#include <algorithm>
#include <sstream>
#include <string_view>

namespace {

constexpr std::size_t kExcerptLength = 60;
constexpr char kQuote = '"';

/** Goes through the lines of a text beside the record that was read from it. */
class LineCheck {
public:
    LineCheck(std::string_view iText, const std::string& iFileName) : rest(iText), fileName(iFileName) {}

    void Text(const std::string& iLabel, const BexUnicodeString& iValue) {
        TakeLabel(iLabel + "=\"");
        const std::string_view value = iValue.NarrowView();
        if (!rest.starts_with(value)) {
            Refuse("expected the value of " + iLabel);
        }
        const std::size_t number = line;
        Take(value.size());
        if (rest.empty() || (rest.front() == kQuote && !HasEndAt(1) && rest.find('\n') == std::string_view::npos)) {
            Refuse("expected " + iLabel + " to end in \";");
        }
        if (rest.front() != kQuote) {
            Cut(number, iLabel, "is read up to its first " + std::to_string(value.size()) + " characters only");
        } else if (!HasEndAt(1)) {
            Cut(number, iLabel, "is read up to the quote in it only");
        }
        TakeLine();
    }

    void Number(const std::string& iLabel, long iValue) {
        TakeLabel(iLabel + '=');
        std::istringstream text{std::string(rest.substr(0, rest.find('\n')))};
        long number = 0;
        if (!(text >> number) || number != iValue) {
            Refuse("expected " + iLabel + " to have a number that the rest of the text bears out");
        }
        TakeLine();
    }

    void RequireEnd() {
        if (rest.find_first_not_of(" \t\r\n") != std::string_view::npos) {
            Refuse("expected the end of the record");
        }
    }

    std::vector<std::string> cuts;

private:
    void TakeLabel(const std::string& iLabel) {
        if (!rest.starts_with(iLabel)) {
            Refuse("expected " + iLabel);
        }
        Take(iLabel.size());
    }

    bool HasEndAt(std::size_t iPlace) const {
        std::string_view end = rest.substr(iPlace, rest.find('\n', iPlace) - iPlace);
        return end.substr(0, end.find_last_not_of(" \t\r") + 1) == ";";
    }

    void Cut(std::size_t iLine, const std::string& iLabel, const std::string& iHow) {
        cuts.push_back(Place(iLine) + iLabel + ' ' + iHow);
    }

    void Take(std::size_t iCount) {
        const std::string_view taken = rest.substr(0, iCount);
        line += static_cast<std::size_t>(std::count(taken.begin(), taken.end(), '\n'));
        rest.remove_prefix(taken.size());
    }

    void TakeLine() {
        const std::size_t end = rest.find('\n');
        Take(end == std::string_view::npos ? rest.size() : end + 1);
    }

    std::string Place(std::size_t iLine) const { return fileName + ':' + std::to_string(iLine) + ": "; }

    [[noreturn]] void Refuse(const std::string& iExpected) const {
        const BexUnicodeString found = BexUnicodeString::FromNarrow(std::string(rest.substr(0, rest.find('\n'))));
        throw Failure(Place(line) + iExpected + ", found " +
                      (rest.empty() ? "the end of the text" : Shortened(ToUtf8(found), kExcerptLength)));
    }

    std::string_view rest;
    const std::string& fileName;
    std::size_t line = 1;
};

void CheckActivity(LineCheck& ioCheck, const ActivityInfo& iRecord) {
    // The order of the text form, which is not that of the fields and lacks the participant.
    ioCheck.Text("id", iRecord.id);
    ioCheck.Text("name", iRecord.name);
    ioCheck.Text("abstract", iRecord.abstract);
    ioCheck.Text("priority", iRecord.priority);
    ioCheck.Text("extid", iRecord.extid);
    ioCheck.Text("status", iRecord.status);
    ioCheck.Number("duration", iRecord.duration);
    ioCheck.Text("durationUnit", iRecord.durationUnit);
    ioCheck.Text("owner", iRecord.owner);
    ioCheck.Text("documentation", iRecord.documentation);
    ioCheck.Number("generation", iRecord.generation);
}

void CheckProcess(LineCheck& ioCheck, const ProcessInfo& iProcess) {
    for (const auto& field : kProcessFields) {
        ioCheck.Text("process." + std::string(field.name), iProcess.*field.member);
    }
    ioCheck.Number("process.datas.length", iProcess.dataNumber);
    for (int i = 0; i < iProcess.dataNumber; ++i) {
        const std::string prefix = "process.datas." + std::to_string(i + 1) + '.';
        for (const auto& field : kDataFields) {
            ioCheck.Text(prefix + std::string(field.name), iProcess.datas[i].*field.member);
        }
    }
}

void CheckNames(LineCheck& ioCheck, const std::string& iList, const BexUnicodeString* iNames, int iCount) {
    ioCheck.Number(iList + ".length", iCount);
    for (int i = 0; i < iCount; ++i) {
        ioCheck.Text(iList + '.' + std::to_string(i + 1) + ".name", iNames[i]);
    }
}

}  // namespace

std::string RecordToText(const ActivityInfo& iRecord, const std::string& iFileName) {
    for (const NamedText& each : TextsOf(iRecord)) {
        if (each.text->IsWide()) {
            throw Failure(iFileName + ": " + each.name + ": has characters outside ISO-8859-1");
        }
    }
    std::ostringstream text;
    text << iRecord << '\n';
    return text.str();
}

std::vector<std::string> TextToRecord(const std::string& iText, const std::string& iFileName, ActivityInfo& oRecord) {
    std::istringstream stream(iText);
    stream >> oRecord;
    LineCheck check(iText, iFileName);
    CheckActivity(check, oRecord);
    CheckProcess(check, oRecord.process);
    CheckNames(check, "inputs", oRecord.inputs, oRecord.inputNumber);
    CheckNames(check, "outputs", oRecord.outputs, oRecord.outputNumber);
    check.RequireEnd();
    return check.cuts;
}
