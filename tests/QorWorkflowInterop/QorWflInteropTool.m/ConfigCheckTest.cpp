#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <TemporaryDirectory.h>
#include <string>
#include <vector>

using nlohmann::json;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

/** The findings in a property file, each as LINE SEVERITY CODE. */
std::vector<std::string> FindingsIn(const std::string& iContent) {
    const ToolResult result = RunTool({"config", "check", "-", "--format", "json"}, {.input = iContent});
    EXPECT_THAT(result.err, IsEmpty());
    const json document = json::parse(result.out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result;
    std::vector<std::string> findings;
    for (const json& finding : document.value("findings", json::array())) {
        findings.push_back(std::to_string(finding["line"].get<int>()) + ' ' + finding["severity"].get<std::string>() +
                           ' ' + finding["code"].get<std::string>());
    }
    EXPECT_EQ(result.status, document["errors"].get<int>() > 0 ? 1 : 0);
    return findings;
}

/** The messages about a property file. */
std::string MessagesAbout(const std::string& iContent) {
    return RunTool({"config", "check", "-"}, {.input = iContent}).out;
}

}  // namespace

TEST(ConfigCheck, FindsWhatItIsLookedFor) {
    const struct {
        std::string content;
        std::vector<std::string> findings;
    } cases[] = {
        // lines
        {"", {}},
        {"actionType = X\n\n   \n// a comment\n   / another\n", {}},
        {"\xEF\xBB\xBF"
         "actionType = X",
         {"1 error QC101"}},
        {"\xEF\xBB\xBF// comment", {"1 warning QC102", "1 warning QC109"}},
        {"actionType = X\r\n\r\n// comment\r\n", {"1 error QC103"}},
        {"actionType = \"X\"\r\n", {"1 error QC103"}},
        {"/actionType = X", {"1 warning QC104"}},
        {"  / actionType = X", {"1 warning QC104"}},
        {"//actionType = X", {}},
        {"/ a remark", {}},
        {"// a\nactionType = X\n// b \\\nactionType = Y\n", {"4 warning QC105"}},
        {"// b \\\nnothing\n", {}},
        {"actionType = X\\\nactionStatus.run = Y\n", {"2 warning QC106"}},
        {"actionType = X\\\na = Y\n", {}},
        {"actionType = X\\", {"1 warning QC107"}},
        {"actionType = X\\\n\\", {"2 warning QC107"}},
        {"actionType = X\\ \n", {"1 warning QC108"}},
        {"actionType = X\\\r\n", {"1 warning QC108", "1 error QC103"}},
        {"hello", {"1 warning QC109"}},
        {"= hello", {"1 warning QC109"}},
        {"\t// hello", {"1 warning QC109"}},
        {"\t\nhello", {"2 warning QC109"}},
        {"actionType\t= X", {"1 error QC204"}},
        {"actionType =\tX", {"1 warning QC207"}},
        {"actionType = a\tb", {}},
        {"actionType = \"X", {"1 warning QC208"}},
        {"actionType = X\"", {"1 warning QC208"}},
        {"actionType = \"X\"", {}},
        {"actionType = a 3\" pipe", {}},
        {"actionType = \x1B[31m", {"1 warning QC209"}},
        {"actionType = \xC3\xBC", {"1 warning QC210"}},
        {"actionType = \xFC", {}},
        // keys and values
        {"actionTipe = X", {"1 warning QC201"}},
        {"ACTIONTYPE = X", {"1 warning QC201"}},
        {"#actionType = X", {"1 warning QC201"}},
        {"hostOwn = X", {"1 note QC202"}},
        {"actionStatus.Start = X", {"1 warning QC201"}},
        {"action Type = X", {}},
        {"  = X", {"1 warning QC203"}},
        {"actionType = X\nactionType = Y\nactionType = Z\n", {"1 warning QC205", "2 warning QC205"}},
        {"actionType =", {"1 warning QC206"}},
        {"actionType =\nactionType = X", {"1 warning QC205"}},
        {"actionPriority.1 = A\nactionPriority.2 = B\nactionPriority.3 = C\n", {}},
        {"actionPriority.1 = A\nactionPriority.2 = B\n", {"1 note QC211"}},
        {"actionPriority.1 = A\nactionPriority.2 = B\nactionPriority.3 = A\n", {"3 warning QC212"}},
        {"actionPriority.1 = A\nactionPriority.2 = B\nactionPriority.3 = C\nactionPriority. = D", {"4 note QC213"}},
        // mappings
        {"actionObjects.X.E = PART_LIST.A", {}},
        {"actionObjects.X = PART_LIST.A", {"1 error QC301"}},
        {"actionObjects. = PART_LIST.A", {"1 error QC301"}},
        {"actionObjects..E = PART_LIST.A", {"1 error QC301"}},
        {"actionObjects.X. = PART_LIST.A", {}},
        {"actionObjects.X.E = PART_LIST", {"1 error QC301"}},
        {"actionObjects.X.E = part_list.A", {"1 error QC301"}},
        {"actionObjects.X.E = OTHER.A", {"1 error QC301"}},
        {"actionObjects.X.E = OTHER.A\nactionObjects.X.E = DOC*.A", {"1 warning QC205"}},
        {"actionObjects.X.12345678 = PART_LIST.A", {}},
        {"actionObjects.X.123456789 = PART_LIST.A", {"1 warning QC302"}},
        {"actionObjects.X.E = DOC456789012345678.A", {}},
        {"actionObjects.X.E = DOC4567890123456789.A", {"1 warning QC302"}},
        {"actionObjects.X.E = DOC .A", {"1 warning QC302"}},
        {"actionObjects.X.P* = PART_LIST.A", {"1 warning QC303"}},
        {"actionObjects.X.E = DOCX*.A", {"1 warning QC303"}},
        {"actionObjects.X.E = FEAT*.", {"1 warning QC304"}},
        {"actionObjects.X.* = KIRVA_MODEL.A", {"1 warning QC305"}},
        {"actionObjects.X.E = DOC*.A\nactionObjects.Y.E = DOC*.B", {"2 warning QC305"}},
        {"actionObjects.X.E = DOC*.A\nactionObjects.Y.E = DOC_STD.B", {}},
        {"actionObjects.VERANT_QORModel.* = KIRVA_MODEL.A", {}},
        {"actionObjects.VERANT_QORDocument.E = DOC_STD.A", {"1 warning QC306"}},
        {"actionObjects.VERANT_QORDocument.E = DOC*.A", {}},
    };
    for (const auto& test : cases) {
        EXPECT_THAT(FindingsIn(test.content), ElementsAreArray(test.findings)) << test.content;
    }
}

TEST(ConfigCheck, NearestKeyIsProposed) {
    const struct {
        const char* key;
        const char* nearest;
    } cases[] = {
        {"actiontype", "actionType"},
        {"actionStatus.rum", "actionStatus.run"},
        {"actionStatus.aborted", "actionStatus.abort"},
        {"dataName.mising", "dataName.missing"},
        {"actionPriorty.7", "actionPriority.7"},
        {"actionpriority", "actionPriority.CODE"},
        {"actionObject.X.E", "actionObjects.X.E"},
    };
    for (const auto& test : cases) {
        EXPECT_THAT(MessagesAbout(std::string(test.key) + " = X"),
                    HasSubstr("did you mean \"" + std::string(test.nearest) + "\"?"))
            << test.key;
    }
    EXPECT_THAT(MessagesAbout("colour = red"), HasSubstr("it may be one of the host's own"));
}

TEST(ConfigCheck, MessageHasFileLineSeverityAndCode) {
    const TemporaryDirectory folder;
    const std::string file = folder.Write("QorWflActionManager", "actionType = a\\\nb\nactionObjects.X = DOC.A\n");
    const std::string expected =
        file +
        ":3: error: there is no second dot in the key \"actionObjects.X\"; there is no mapping [QC301]\n"
        "    hint: expected actionObjects.TYPE.ENVIRONMENT; ENVIRONMENT may be * for any\n";
    for (const std::string& name : {file, folder.Path().string()}) {
        const ToolResult result = RunTool({"config", "check", name});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.out, expected);
        EXPECT_THAT(result.err, IsEmpty());
    }
}

TEST(ConfigCheck, OnlyErrorsFailUnlessStrict) {
    const struct {
        std::string content;
        int status;
        int strictStatus;
    } cases[] = {
        {"actionType = X\n", 0, 0},
        {"hostOwn = X\n", 0, 0},
        {"hello\n", 0, 1},
        {"actionObjects.X = Y\n", 1, 1},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(RunTool({"config", "check", "-"}, {.input = test.content}).status, test.status) << test.content;
        EXPECT_EQ(RunTool({"config", "check", "-", "--strict"}, {.input = test.content}).status, test.strictStatus)
            << test.content;
    }
}

TEST(ConfigCheck, ExampleHasNoFinding) {
    const ToolResult result = RunTool({"config", "check", "--strict", Example("QorWflActionManager")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
}

TEST(ConfigCheck, WithoutAFileThePathIsFollowed) {
    const TemporaryDirectory folder;
    folder.Write("QorWflActionManager", "hello\n");
    const ToolSettings settings{.environment = {{"BexMsgCatalogPath", "/nowhere:" + folder.Path().string()}}};
    EXPECT_THAT(RunTool({"config", "check"}, settings).out,
                HasSubstr(folder.Path().string() + "/QorWflActionManager:1: warning: the line has no \"=\""));
    const ToolResult none = RunTool({"config", "check"});
    EXPECT_EQ(none.status, 0);
    EXPECT_THAT(none.out, HasSubstr("QorWflActionManager: warning: no property file is found"));
    EXPECT_EQ(RunTool({"config", "check", "--strict"}).status, 1);
}

TEST(ConfigCheck, EveryByteOfKeysAndValuesIsShownSafely) {
    std::string content;
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        content += "no" + byte + "thing" + byte + " = \"" + byte + "x\nactionObjects." + byte + " = " + byte + "\n";
    }
    std::string text = MessagesAbout(content);
    EXPECT_THAT(text, HasSubstr("no\\x1Bthing\\x1B"));
    text += RunTool({"config", "show", "--config", "-"}, {.input = content}).out;
    text += RunTool({"config", "show", "--config", "-", "--format", "json"}, {.input = content}).out;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        const auto shown = static_cast<unsigned char>(text[i]);
        const bool isC1 = shown == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
        ASSERT_FALSE((shown < 0x20 && shown != '\n') || shown == 0x7F || isC1) << text.substr(0, i);
    }
}

TEST(ConfigCheck, LongFileIsReadToItsEnd) {
    std::string content;
    for (int i = 0; i < 3000; ++i) {
        const std::string number = std::to_string(i);
        content += "actionObjects.T" + number + ".E = DOC" + number + ".A\nactionPriority." + number + " = W\n";
    }
    EXPECT_THAT(MessagesAbout(content), HasSubstr("standard input:6000: warning: the word \"W\""));
}
