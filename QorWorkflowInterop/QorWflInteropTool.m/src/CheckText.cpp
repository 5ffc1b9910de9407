#include "CheckOutput.h"
#include "Files.h"
#include "FindingText.h"
#include "SafeText.h"

namespace {

std::string Place(const std::string& iFile, const TextPlace& iPlace) {
    return iPlace.line == 0 ? iFile : iFile + ':' + std::to_string(iPlace.line) + ':' + std::to_string(iPlace.column);
}

/** A line for each code of which not all findings are shown. */
void AddLeft(const FindingText& iText, const std::string& iFile, const FindingList& iFindings, std::string& ioText) {
    for (const CodeInfo& code : AllCodes()) {
        if (const std::size_t left = iFindings.Left(code.code)) {
            ioText += iText.Line(iFile, code.severity, "and " + std::to_string(left) + " more: " + code.title, code.id);
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
    const FindingText lines(iColours);
    std::string text;
    for (const FileReport& report : iReports) {
        const std::string file = SafeText(InputName(report.path));
        for (const Finding& finding : report.findings.Kept()) {
            const CodeInfo& code = InfoOf(finding.code);
            text += lines.Line(Place(file, finding.place), code.severity, finding.message, code.id);
            text += FindingText::Detail("at", finding.path) + FindingText::Detail("hint", finding.hint);
        }
        AddLeft(lines, file, report.findings, text);
        text += lines.Bold(file + ": " + report.statement) + " (" + Counts(report.findings) + ")\n";
    }
    return text;
}
