#include "CheckOutput.h"
#include "Files.h"
#include "SafeText.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>

namespace {

using Json = nlohmann::ordered_json;

/** Whether a byte may stand in a path of a URI as it is. A colon may not: it would end a scheme. */
bool IsPlainInUri(char iByte) {
    const bool isLetter = (iByte >= 'a' && iByte <= 'z') || (iByte >= 'A' && iByte <= 'Z');
    return isLetter || (iByte >= '0' && iByte <= '9') ||
           std::string_view("-._~/").find(iByte) != std::string_view::npos;
}

std::string PercentEncoded(const std::string& iPath) {
    std::string uri;
    for (const char byte : iPath) {
        if (IsPlainInUri(byte)) {
            uri += byte;
        } else {
            char encoded[4];
            std::snprintf(encoded, sizeof encoded, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
            uri += encoded;
        }
    }
    return uri;
}

/** The URI of a file, relative to the current folder. */
std::string UriOf(const std::string& iPath) {
    std::filesystem::path path(iPath);
    if (path.is_absolute()) {
        path = path.lexically_relative(std::filesystem::current_path());
    }
    return PercentEncoded(path.lexically_normal().string());
}

Json RuleOf(const CodeInfo& iCode) {
    return {{"id", iCode.id},
            {"shortDescription", {{"text", iCode.title}}},
            {"fullDescription", {{"text", iCode.help}}},
            {"help", {{"text", iCode.help}}},
            {"defaultConfiguration", {{"level", NameOf(iCode.severity)}}}};
}

Json RegionOf(const TextPlace& iPlace) {
    return {{"startLine", iPlace.line}, {"startColumn", iPlace.column}};
}

/** Where something is: the file, the region in it, and the element. */
Json LocationOf(std::size_t iFile, const FileReport& iReport, const TextPlace& iPlace, const std::string& iPath) {
    Json physical = {{"artifactLocation", {{"uri", UriOf(iReport.path)}, {"index", iFile}}}};
    if (iPlace.line != 0) {
        physical["region"] = RegionOf(iPlace);
    }
    Json location = {{"physicalLocation", std::move(physical)}};
    if (!iPath.empty()) {
        location["logicalLocations"] = Json::array({{{"fullyQualifiedName", iPath}, {"kind", "element"}}});
    }
    return location;
}

Json ResultOf(std::size_t iFile, const FileReport& iReport, const Finding& iFinding) {
    const CodeInfo& code = InfoOf(iFinding.code);
    return {{"ruleId", code.id},
            {"ruleIndex", static_cast<std::size_t>(code.code)},
            {"level", NameOf(code.severity)},
            {"message", {{"text", iFinding.message + ". Hint: " + iFinding.hint + '.'}}},
            {"locations", Json::array({LocationOf(iFile, iReport, iFinding.place, iFinding.path)})}};
}

/** What is said about a file beside its findings: the verdict, and how many findings are left out. */
void AddNotifications(std::size_t iFile, const FileReport& iReport, Json& ioNotifications) {
    const auto add = [&](const std::string& iText) {
        ioNotifications.push_back({{"level", "note"},
                                   {"message", {{"text", iText}}},
                                   {"locations", Json::array({LocationOf(iFile, iReport, {}, "")})}});
    };
    add(iReport.statement);
    for (const CodeInfo& code : AllCodes()) {
        if (const std::size_t left = iReport.findings.Left(code.code)) {
            add(std::string(code.id) + ": and " + std::to_string(left) + " more: " + code.title);
        }
    }
}

Json ArtifactOf(const FileReport& iReport) {
    Json artifact = {{"location", {{"uri", UriOf(iReport.path)}}}};
    if (iReport.path == "-") {
        artifact["description"] = {{"text", InputName(iReport.path)}};
    }
    return artifact;
}

Json Driver() {
    Json rules = Json::array();
    for (const CodeInfo& code : AllCodes()) {
        rules.push_back(RuleOf(code));
    }
    return {{"name", "qorwfl"}, {"version", QORWFL_VERSION}, {"rules", std::move(rules)}};
}

}  // namespace

std::string CheckAsSarif(const std::vector<FileReport>& iReports) {
    Json artifacts = Json::array();
    Json results = Json::array();
    Json notifications = Json::array();
    for (std::size_t file = 0; file < iReports.size(); ++file) {
        const FileReport& report = iReports[file];
        artifacts.push_back(ArtifactOf(report));
        for (const Finding& finding : report.findings.Kept()) {
            results.push_back(ResultOf(file, report, finding));
        }
        AddNotifications(file, report, notifications);
    }
    const Json run = {
        {"tool", {{"driver", Driver()}}},
        {"columnKind", "unicodeCodePoints"},
        {"invocations",
         Json::array({{{"executionSuccessful", true}, {"toolExecutionNotifications", std::move(notifications)}}})},
        {"artifacts", std::move(artifacts)},
        {"results", std::move(results)}};
    const Json sarif = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                        {"version", "2.1.0"},
                        {"runs", Json::array({run})}};
    return sarif.dump(2, ' ', true) + '\n';
}
