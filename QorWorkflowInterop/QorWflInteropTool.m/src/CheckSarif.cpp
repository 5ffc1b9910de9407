#include "CheckOutput.h"
#include "Files.h"
#include "SafeText.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>
#include <map>

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

Json Driver() {
    Json rules = Json::array();
    for (const CodeInfo& code : AllCodes()) {
        rules.push_back(RuleOf(code));
    }
    return {{"name", "qorwfl"}, {"version", QORWFL_VERSION}, {"rules", std::move(rules)}};
}

/** One run of the command over some files. */
class Run {
public:
    void Add(const FileReport& iReport) {
        file = UriOf(iReport.path);
        const auto [known, isNew] = files.try_emplace(file, files.size());
        fileIndex = known->second;
        if (isNew) {  // a file that is named twice is one
            artifacts.push_back(ArtifactOf(iReport));
        }
        for (const Finding& finding : iReport.findings.Kept()) {
            results.push_back(ResultOf(finding));
        }
        isSuccessful = isSuccessful && iReport.verdict != Verdict::Unread;
        AddNotifications(iReport);
    }

    Json Whole() {
        return {{"tool", {{"driver", Driver()}}},
                {"columnKind", "unicodeCodePoints"},
                {"invocations", Json::array({{{"executionSuccessful", isSuccessful},
                                              {"toolExecutionNotifications", std::move(notifications)}}})},
                {"artifacts", std::move(artifacts)},
                {"results", std::move(results)}};
    }

private:
    Json ArtifactOf(const FileReport& iReport) const {
        Json artifact = {{"location", {{"uri", file}}}};
        if (iReport.path == "-") {
            artifact["description"] = {{"text", InputName(iReport.path)}};
        }
        return artifact;
    }

    /** Where something is: the file, the region in it, and the element. */
    Json LocationOf(const TextPlace& iPlace, const std::string& iPath) const {
        Json physical = {{"artifactLocation", {{"uri", file}, {"index", fileIndex}}}};
        if (iPlace.line != 0) {
            physical["region"] = {{"startLine", iPlace.line}, {"startColumn", iPlace.column}};
        }
        Json location = {{"physicalLocation", std::move(physical)}};
        if (!iPath.empty()) {
            location["logicalLocations"] = Json::array({{{"fullyQualifiedName", iPath}, {"kind", "element"}}});
        }
        return location;
    }

    Json ResultOf(const Finding& iFinding) const {
        const CodeInfo& code = InfoOf(iFinding.code);
        return {{"ruleId", code.id},
                {"ruleIndex", static_cast<std::size_t>(code.code)},
                {"level", NameOf(code.severity)},
                {"message", {{"text", iFinding.message + ". Hint: " + iFinding.hint + '.'}}},
                {"locations", Json::array({LocationOf(iFinding.place, iFinding.path)})}};
    }

    /** What is said about a file beside its findings: the verdict, and how many findings are left out. */
    void AddNotifications(const FileReport& iReport) {
        AddNotification(iReport.statement);
        for (const CodeInfo& code : AllCodes()) {
            if (const std::size_t left = iReport.findings.Left(code.code)) {
                AddNotification(std::string(code.id) + ": and " + std::to_string(left) + " more: " + code.title);
            }
        }
    }

    void AddNotification(const std::string& iText) {
        notifications.push_back(
            {{"level", "note"}, {"message", {{"text", iText}}}, {"locations", Json::array({LocationOf({}, "")})}});
    }

    std::string file;  // the URI of the one that is being added
    std::size_t fileIndex = 0;
    std::map<std::string, std::size_t> files;  // indices of artifacts by URI
    bool isSuccessful = true;
    Json artifacts = Json::array();
    Json results = Json::array();
    Json notifications = Json::array();
};

}  // namespace

std::string CheckAsSarif(const std::vector<FileReport>& iReports) {
    Run run;
    for (const FileReport& report : iReports) {
        run.Add(report);
    }
    const Json sarif = {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
                        {"version", "2.1.0"},
                        {"runs", Json::array({run.Whole()})}};
    return sarif.dump(2, ' ', true) + '\n';
}
