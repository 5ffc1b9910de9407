#include "CheckRun.h"
#include "CodePage.h"
#include "XpdlReply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

constexpr const char* kPage = "check-codes.md";

/** The rules of the command, which are in every SARIF log. */
nlohmann::json Rules() {
    const ToolResult result = RunTool({"check", "--format", "sarif", Example("reply.xpdl")});
    return nlohmann::json::parse(result.out)["runs"][0]["tool"]["driver"]["rules"];
}

/** A whole document with an example in it: in the place of the element with which the example begins. */
std::string DocumentWith(const std::string& iExample) {
    const std::string utf8 = WithPart(XpdlReply(), "ISO-8859-1", "UTF-8");
    if (iExample.substr(0, 2) == "<!") {
        return WithPart(utf8, "<Package ", iExample + "<Package ");
    }
    std::smatch tag;
    std::regex_search(iExample, tag, std::regex("<([a-z]+:)?([A-Za-z]+)"));
    return WithElement(utf8, tag[2], iExample);
}

}  // namespace

TEST(CheckCodes, AllAreDescribedWithTitleAndSeverityAndNothingElseIs) {
    const std::vector<CodeSection> sections = CodeSections(kPage);
    const nlohmann::json rules = Rules();
    ASSERT_EQ(sections.size(), rules.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const CodeSection& section = sections[i];
        EXPECT_EQ(section.id, rules[i]["id"]);
        EXPECT_EQ(section.title, rules[i]["shortDescription"]["text"]);
        EXPECT_EQ(section.Severity(), rules[i]["defaultConfiguration"]["level"]) << section.id;
        section.ExpectWhole("xml");
    }
}

TEST(CheckCodes, EveryExampleOfTheDescriptionHasItsCode) {
    std::vector<std::string> ids;
    std::vector<std::string> texts;
    for (const CodeSection& section : CodeSections(kPage)) {
        if (const std::string example = section.Example("xml"); !example.empty()) {
            ids.push_back(section.id);
            texts.push_back(DocumentWith(example));
        }
    }
    EXPECT_GT(ids.size(), 25U);
    const nlohmann::json reports = CheckDocuments(texts);
    for (std::size_t i = 0; i < ids.size(); ++i) {
        EXPECT_THAT(CodesOf(reports[i]), testing::Contains(ids[i])) << texts[i];
    }
}

TEST(CheckCodes, AreInTheOrderOfTheirNumbers) {
    std::string before;
    for (const auto& rule : Rules()) {
        EXPECT_LT(before, rule["id"].get<std::string>());
        before = rule["id"];
    }
}
