#include "CheckOutput.h"
#include "Files.h"
#include "SafeText.h"

namespace {

/** Puts colours around words, or leaves them as they are. */
class Painter {
public:
    explicit Painter(bool iColours) : colours(iColours) {}

    std::string Bold(const std::string& iText) const { return Painted("\033[1m", iText); }
    std::string Of(Severity iSeverity, const std::string& iText) const {
        switch (iSeverity) {
            case Severity::Error:
                return Painted("\033[1;31m", iText);
            case Severity::Warning:
                return Painted("\033[1;35m", iText);
            case Severity::Note:
                break;
        }
        return Painted("\033[1;36m", iText);
    }

private:
    std::string Painted(const char* iStart, const std::string& iText) const {
        return colours ? iStart + iText + "\033[0m" : iText;
    }

    bool colours;
};

std::string Place(const std::string& iFile, const TextPlace& iPlace) {
    if (iPlace.line == 0) {
        return iFile + ": ";
    }
    return iFile + ':' + std::to_string(iPlace.line) + ':' + std::to_string(iPlace.column) + ": ";
}

std::string Label(const Painter& iPainter, const CodeInfo& iCode) {
    return iPainter.Of(iCode.severity, std::string(NameOf(iCode.severity)) + ' ' + iCode.id) + ": ";
}

void AddFinding(const Painter& iPainter, const std::string& iFile, const Finding& iFinding, std::string& ioText) {
    ioText += Place(iFile, iFinding.place) + Label(iPainter, InfoOf(iFinding.code)) + iFinding.message + '\n';
    if (!iFinding.path.empty()) {
        ioText += "    at: " + iFinding.path + '\n';
    }
    ioText += "    hint: " + iFinding.hint + '\n';
}

/** A line for each code of which not all findings are shown. */
void AddLeft(const Painter& iPainter, const std::string& iFile, const FindingList& iFindings, std::string& ioText) {
    for (const CodeInfo& code : AllCodes()) {
        if (const std::size_t left = iFindings.Left(code.code)) {
            ioText +=
                iFile + ": " + Label(iPainter, code) + "and " + std::to_string(left) + " more: " + code.title + '\n';
        }
    }
}

std::string Count(std::size_t iCount, Severity iSeverity) {
    return std::to_string(iCount) + ' ' + NameOf(iSeverity) + (iCount == 1 ? "" : "s");
}

std::string Counts(const FindingList& iFindings) {
    std::string text;
    for (const Severity severity : {Severity::Error, Severity::Warning, Severity::Note}) {
        text += (text.empty() ? "" : ", ") + Count(iFindings.Count(severity), severity);
    }
    return text;
}

}  // namespace

std::string CheckAsText(const std::vector<FileReport>& iReports, bool iColours) {
    const Painter painter(iColours);
    std::string text;
    for (const FileReport& report : iReports) {
        const std::string file = SafeText(InputName(report.path));
        for (const Finding& finding : report.findings.Kept()) {
            AddFinding(painter, file, finding, text);
        }
        AddLeft(painter, file, report.findings, text);
        text += painter.Bold(file + ": " + report.statement) + " (" + Counts(report.findings) + ")\n";
    }
    return text;
}
