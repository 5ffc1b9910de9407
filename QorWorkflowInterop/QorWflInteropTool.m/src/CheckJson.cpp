#include "CheckOutput.h"
#include "Files.h"
#include "SafeText.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

constexpr int kFormVersion = 1;

Json JsonOf(const Finding& iFinding) {
    const CodeInfo& code = InfoOf(iFinding.code);
    Json json = {{"code", code.id}, {"severity", NameOf(code.severity)}, {"title", code.title}};
    if (iFinding.place.line != 0) {
        json["line"] = iFinding.place.line;
        json["column"] = iFinding.place.column;
    }
    if (!iFinding.path.empty()) {
        json["path"] = iFinding.path;
    }
    json["message"] = iFinding.message;
    json["hint"] = iFinding.hint;
    return json;
}

Json JsonOf(const FileReport& iReport) {
    Json findings = Json::array();
    for (const Finding& finding : iReport.findings.Kept()) {
        findings.push_back(JsonOf(finding));
    }
    Json more = Json::array();
    for (const CodeInfo& code : AllCodes()) {
        if (const std::size_t left = iReport.findings.Left(code.code)) {
            more.push_back({{"code", code.id}, {"count", left}});
        }
    }
    Json json = {{"file", SafeText(InputName(iReport.path))},
                 {"verdict", NameOf(iReport.verdict)},
                 {"statement", iReport.statement}};
    if (!iReport.stopsAt.empty()) {
        json["stopsAt"] = iReport.stopsAt;
    }
    json["fieldsSet"] = iReport.setFields;
    json["fieldsKept"] = iReport.keptFields;
    json["counts"] = {{"error", iReport.findings.Count(Severity::Error)},
                      {"warning", iReport.findings.Count(Severity::Warning)},
                      {"note", iReport.findings.Count(Severity::Note)}};
    json["findings"] = std::move(findings);
    json["more"] = std::move(more);
    return json;
}

}  // namespace

std::string CheckAsJson(const std::vector<FileReport>& iReports) {
    Json files = Json::array();
    for (const FileReport& report : iReports) {
        files.push_back(JsonOf(report));
    }
    const Json json = {{"version", kFormVersion}, {"tool", "qorwfl check"}, {"files", std::move(files)}};
    return json.dump(2, ' ', true) + '\n';
}
