#include "CheckRun.h"
#include "XpdlReply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <filesystem>
#include <string>
#include <vector>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/** A document of which something is said in each severity, at known places. */
std::string MixedDocument() {
    std::string text = WithElement(XpdlReply(), "Vendor", "");
    text = WithPart(text, "<Cost/>", "<Cost/><Extra/>");
    return WithPart(text, "new owner", "a \"b\"");
}

nlohmann::json Sarif(const std::vector<std::string>& iFiles, const ToolSettings& iSettings = {}) {
    std::vector<std::string> arguments = {"check", "--format", "sarif"};
    arguments.insert(arguments.end(), iFiles.begin(), iFiles.end());
    return nlohmann::json::parse(RunTool(arguments, iSettings).out);
}

/** What the log format requires of a place. */
void ExpectLocation(const nlohmann::json& iLocation, const nlohmann::json& iArtifacts) {
    const auto& artifact = iLocation.at("physicalLocation").at("artifactLocation");
    const std::string uri = artifact.at("uri");
    EXPECT_EQ(uri.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._~/%"),
              std::string::npos)
        << uri;
    EXPECT_EQ(uri.substr(0, 1) == "/", false) << uri;
    EXPECT_EQ(iArtifacts.at(artifact.at("index").get<std::size_t>()).at("location").at("uri"), uri);
    if (iLocation["physicalLocation"].contains("region")) {
        EXPECT_GE(iLocation["physicalLocation"]["region"].at("startLine").get<int>(), 1);
        EXPECT_GE(iLocation["physicalLocation"]["region"].at("startColumn").get<int>(), 1);
    }
}

/** What the log format requires of a log of one run. */
void ExpectSarif(const nlohmann::json& iLog) {
    EXPECT_EQ(iLog.at("version"), "2.1.0");
    EXPECT_THAT(iLog.at("$schema").get<std::string>(), EndsWith("sarif-2.1.0.json"));
    ASSERT_EQ(iLog.at("runs").size(), 1U);
    const auto& run = iLog["runs"][0];
    const auto& rules = run.at("tool").at("driver").at("rules");
    EXPECT_EQ(run["tool"]["driver"].at("name"), "qorwfl");
    EXPECT_EQ(run["tool"]["driver"].at("version"), QORWFL_VERSION);
    EXPECT_EQ(run.at("columnKind"), "unicodeCodePoints");
    for (const auto& rule : rules) {
        EXPECT_FALSE(rule.at("id").get<std::string>().empty());
        EXPECT_FALSE(rule.at("help").at("text").get<std::string>().empty());
        EXPECT_FALSE(rule.at("fullDescription").at("text").get<std::string>().empty());
    }
    EXPECT_TRUE(run.at("invocations").at(0).at("executionSuccessful").is_boolean());
    for (const auto& notification : run["invocations"][0].at("toolExecutionNotifications")) {
        EXPECT_FALSE(notification.at("message").at("text").get<std::string>().empty());
        ExpectLocation(notification.at("locations").at(0), run.at("artifacts"));
    }
    for (const auto& result : run.at("results")) {
        EXPECT_EQ(rules.at(result.at("ruleIndex").get<std::size_t>()).at("id"), result.at("ruleId"));
        EXPECT_THAT(result.at("level").get<std::string>(), testing::AnyOf("error", "warning", "note"));
        EXPECT_FALSE(result.at("message").at("text").get<std::string>().empty());
        ASSERT_EQ(result.at("locations").size(), 1U);
        ExpectLocation(result["locations"][0], run.at("artifacts"));
    }
}

bool IsAscii(const std::string& iText) {
    return iText.find_first_not_of("\n", 0) == std::string::npos ||
           std::all_of(iText.begin(), iText.end(), [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); });
}

}  // namespace

TEST(CheckText, ShowsFindingsWithPathAndHintAndTheVerdict) {
    const ToolResult result = RunTool({"check", "-"}, {.input = MixedDocument()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, StartsWith("standard input:3:2: error: required element Vendor is missing; "));
    EXPECT_THAT(result.out,
                HasSubstr("\nstandard input:26:17: warning: the field owner has a double quote; the text form of "
                          "the record gives back the first 2 [QW401]\n"
                          "    at: /Package/WorkflowProcesses/WorkflowProcess/Activities/Activity/Performer\n"
                          "    hint: use other quotes, or another form\n"));
    EXPECT_THAT(result.out, EndsWith("\nstandard input: stops at /Package/PackageHeader/Vendor (1 error, 1 warning, 1 "
                                     "note)\n"));
}

TEST(CheckText, TellsWhatIsLostTheWorseFirst) {
    std::string text = WithPart(XpdlReply(), "<Cost/>", "<Cost/><a/><b/>");
    text = WithPart(text, "</Activity>", "</Activity><Activity/><Activity/>");
    const ToolResult result = RunTool({"check", "-"}, {.input = text});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out,
                EndsWith("\nstandard input: loses 2 activities, 2 elements (0 errors, 2 warnings, 2 notes)\n"));
}

TEST(CheckText, CountsWhatItDoesNotShow) {
    std::string many;
    for (int i = 0; i < 101; ++i) {
        many += "<x/>";
    }
    const ToolResult result = RunTool({"check", "-"}, {.input = WithPart(XpdlReply(), "<Cost/>", many)});
    EXPECT_THAT(result.out, HasSubstr("\nstandard input: note: and 1 more: element ignored [QW201]\n"));
}

TEST(CheckJson, HasItsVersionAndTheMembersOfEachFile) {
    const ToolResult result = RunTool({"check", "--format", "json", "-"}, {.input = MixedDocument()});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(IsAscii(result.out));
    const auto json = nlohmann::json::parse(result.out);
    EXPECT_EQ(json["version"], 1);
    EXPECT_EQ(json["tool"], "qorwfl check");
    const auto& file = json["files"][0];
    EXPECT_EQ(file["file"], "standard input");
    EXPECT_EQ(file["verdict"], "stops");
    EXPECT_EQ(file["counts"], nlohmann::json::parse(R"({"error": 1, "warning": 1, "note": 1})"));
    EXPECT_EQ(file["more"], nlohmann::json::array());
    EXPECT_EQ(file["findings"][1], nlohmann::json::parse(R"({
        "code": "QW401", "severity": "warning", "title": "quote in a value", "line": 26, "column": 17,
        "path": "/Package/WorkflowProcesses/WorkflowProcess/Activities/Activity/Performer",
        "message": "the field owner has a double quote; the text form of the record gives back the first 2",
        "hint": "use other quotes, or another form"})"));
}

TEST(CheckJson, NamesOfFilesAreShownWithoutControlCharacters) {
    const TemporaryDirectory folder;
    folder.Write("a\033[31m\xFF.xpdl", XpdlReply());
    const ToolResult result = RunTool({"check", "--format", "json", "a\033[31m\xFF.xpdl"}, {.folder = folder.Path()});
    EXPECT_EQ(nlohmann::json::parse(result.out)["files"][0]["file"], "a\\x1B[31m\\xFF.xpdl");
    EXPECT_THAT(RunTool({"check", "a\033[31m\xFF.xpdl"}, {.folder = folder.Path()}).out,
                StartsWith("a\\x1B[31m\\xFF.xpdl: read whole"));
}

TEST(CheckSarif, HasWhatTheLogFormatRequires) {
    const TemporaryDirectory folder;
    folder.Write("mixed.xpdl", MixedDocument());
    folder.Write("sub folder/\xC3\xA4#%:.xpdl", "<Package/>");
    const ToolSettings here{.folder = folder.Path()};
    const std::vector<std::string> files = {"mixed.xpdl", "./sub folder/\xC3\xA4#%:.xpdl", "gone.xpdl",
                                            (folder.Path() / "mixed.xpdl").string(), "-"};
    const nlohmann::json log = Sarif(files, here);
    ExpectSarif(log);
    const auto& run = log["runs"][0];
    std::vector<std::string> uris;
    for (const auto& artifact : run["artifacts"]) {
        uris.push_back(artifact["location"]["uri"]);
    }
    EXPECT_THAT(uris, testing::ElementsAre("mixed.xpdl", "sub%20folder/%C3%A4%23%25%3A.xpdl", "gone.xpdl", "-"));
    EXPECT_EQ(run["invocations"][0]["executionSuccessful"], false);
    const auto& result = run["results"][1];
    EXPECT_EQ(result["ruleId"], "QW401");
    EXPECT_EQ(result["locations"][0]["physicalLocation"]["region"],
              nlohmann::json::parse(R"({"startLine": 26, "startColumn": 17})"));
    EXPECT_EQ(result["locations"][0]["logicalLocations"][0]["fullyQualifiedName"],
              "/Package/WorkflowProcesses/WorkflowProcess/Activities/Activity/Performer");
}

TEST(CheckSarif, IsAsciiAndTheSameEachTime) {
    const std::vector<std::string> arguments = {"check", "--format", "sarif", "-"};
    const ToolResult first = RunTool(arguments, {.input = "<\xC3\xA4><\xC3\xB6/></\xC3\xA4>"});
    EXPECT_TRUE(IsAscii(first.out));
    EXPECT_EQ(RunTool(arguments, {.input = "<\xC3\xA4><\xC3\xB6/></\xC3\xA4>"}).out, first.out);
}

TEST(CheckCommand, GoesOnBehindFilesThatCannotBeRead) {
    const TemporaryDirectory folder;
    const std::string whole = folder.Write("whole.xpdl", XpdlReply());
    const ToolResult result = RunTool({"check", folder.Path() / "gone.xpdl", folder.Path(), whole});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, AllOf(HasSubstr("gone.xpdl: error: cannot be read: No such file or directory [QW007]\n"),
                                  HasSubstr(": error: cannot be read: Is a directory [QW007]\n"),
                                  EndsWith("whole.xpdl: read whole (0 errors, 0 warnings, 0 notes)\n")));
}

TEST(CheckCommand, WarningsFailOnlyWhenStrict) {
    const std::string text = WithPart(XpdlReply(), "new owner", "a \"b\"");
    EXPECT_EQ(RunTool({"check", "-"}, {.input = text}).status, 0);
    EXPECT_EQ(RunTool({"check", "--strict", "-"}, {.input = text}).status, 1);
    const std::string note = WithPart(XpdlReply(), "<Cost/>", "<Cost/><x/>");
    EXPECT_EQ(RunTool({"check", "--strict", "-"}, {.input = note}).status, 0);
}

TEST(CheckCommand, LargeDocumentsTakeNoStackAndNoOutputInProportion) {
    std::string deep;
    std::string end;
    for (int i = 0; i < 1022; ++i) {
        deep += "<x a='1'>";
        end += "</x>";
    }
    std::string wide;
    for (int i = 0; i < 60000; ++i) {
        wide += "<Activity Name='" + std::to_string(i) + "'>" + (i % 5 == 0 ? "text" : "<b/>") + "</Activity>\n";
    }
    const ToolResult nested = RunTool({"check", "-"}, {.input = "<Package>" + deep + end + "</Package>"});
    EXPECT_THAT(nested.out, HasSubstr("element x is ignored, with the 1021 elements in it"));
    const ToolResult result =
        RunTool({"check", "-"}, {.input = WithPart(XpdlReply(), "</Activities>", wide + "</Activities>")});
    EXPECT_THAT(result.out, HasSubstr("warning: and 59900 more: further activity ignored [QW204]\n"));
    EXPECT_LT(result.out.size(), 100000U);
}
