#include "CheckRun.h"

#include <gtest/gtest.h>

#include <TemporaryDirectory.h>

nlohmann::json CheckFiles(const std::vector<std::string>& iPaths, const ToolSettings& iSettings) {
    std::vector<std::string> arguments = {"check", "--format", "json"};
    arguments.insert(arguments.end(), iPaths.begin(), iPaths.end());
    const ToolResult result = RunTool(arguments, iSettings);
    EXPECT_EQ(result.err, "");
    const nlohmann::json whole = nlohmann::json::parse(result.out, nullptr, false);
    if (whole.is_discarded() || whole["files"].size() != iPaths.size()) {
        ADD_FAILURE() << "no report: " << result;
        return nlohmann::json::array();
    }
    return whole["files"];
}

nlohmann::json CheckDocuments(const std::vector<std::string>& iTexts) {
    const TemporaryDirectory folder;
    std::vector<std::string> paths;
    for (const std::string& text : iTexts) {
        paths.push_back(folder.Write(std::to_string(paths.size()) + ".xpdl", text));
    }
    return CheckFiles(paths);
}

nlohmann::json CheckDocument(const std::string& iText) {
    const nlohmann::json files = CheckFiles({"-"}, {.input = iText});
    return files.empty() ? nlohmann::json{{"findings", nlohmann::json::array()}} : files[0];
}

std::vector<std::string> PlacesOf(const nlohmann::json& iReport, const std::string& iCode) {
    std::vector<std::string> places;
    for (const auto& finding : iReport["findings"]) {
        if (finding["code"] == iCode) {
            std::string place =
                std::to_string(finding.value("line", 0)) + ':' + std::to_string(finding.value("column", 0));
            if (finding.contains("path")) {
                place += ' ' + finding["path"].get<std::string>();
            }
            places.push_back(place);
        }
    }
    return places;
}

nlohmann::json FindingOf(const nlohmann::json& iReport, const std::string& iCode) {
    for (const auto& finding : iReport["findings"]) {
        if (finding["code"] == iCode) {
            return finding;
        }
    }
    ADD_FAILURE() << "no finding " << iCode << " in " << iReport.dump(2);
    return {{"message", ""}, {"hint", ""}};
}

std::vector<std::string> CodesOf(const nlohmann::json& iReport) {
    std::vector<std::string> codes;
    for (const auto& finding : iReport["findings"]) {
        codes.push_back(finding["code"].get<std::string>());
    }
    return codes;
}
