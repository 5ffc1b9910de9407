#include "CheckRun.h"
#include "XpdlReply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

/** A code as its section in the document describes it. */
struct Section {
    std::string id;
    std::string title;
    std::string text;
};

std::vector<Section> DescribedCodes() {
    const std::string page = FileBytes(std::string(DOCS_DIR) + "/check-codes.md");
    const std::regex heading("\n### (QW[0-9]+): ([^\n]+)\n");
    std::vector<Section> sections;
    for (std::sregex_iterator match(page.begin(), page.end(), heading), end; match != end; ++match) {
        const auto start = static_cast<std::size_t>(match->position() + match->length());
        sections.push_back({(*match)[1], (*match)[2], page.substr(start, page.find("\n##", start) - start)});
    }
    return sections;
}

/** The rules of the command, which are in every SARIF log. */
nlohmann::json Rules() {
    const ToolResult result = RunTool({"check", "--format", "sarif", Example("reply.xpdl")});
    return nlohmann::json::parse(result.out)["runs"][0]["tool"]["driver"]["rules"];
}

/** The example of a section that is XML; empty when it is in words. */
std::string ExampleOf(const Section& iSection) {
    const std::string start = "```xml\n";
    const std::size_t at = iSection.text.find(start);
    if (at == std::string::npos) {
        return std::string();
    }
    const std::size_t begin = at + start.size();
    return iSection.text.substr(begin, iSection.text.find("\n```", begin) - begin);
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
    const std::vector<Section> sections = DescribedCodes();
    const nlohmann::json rules = Rules();
    ASSERT_EQ(sections.size(), rules.size());
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const Section& section = sections[i];
        EXPECT_EQ(section.id, rules[i]["id"]);
        EXPECT_EQ(section.title, rules[i]["shortDescription"]["text"]);
        const std::string level = rules[i]["defaultConfiguration"]["level"];
        EXPECT_THAT(section.text, testing::StartsWith("\nSeverity: " + level + ". ")) << section.id;
        EXPECT_THAT(section.text, testing::HasSubstr("\nWhat to do: ")) << section.id;
        EXPECT_TRUE(!ExampleOf(section).empty() || section.text.find("Example: ") != std::string::npos ||
                    section.text.find("Example:\n") != std::string::npos)
            << section.id;
    }
}

TEST(CheckCodes, EveryExampleOfTheDescriptionHasItsCode) {
    std::vector<std::string> ids;
    std::vector<std::string> texts;
    for (const Section& section : DescribedCodes()) {
        if (const std::string example = ExampleOf(section); !example.empty()) {
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
