#include "CodePage.h"
#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <map>
#include <string>
#include <vector>

using nlohmann::json;

namespace {

/** Examples that the page has in words, because a page cannot show them. */
const std::map<std::string, std::string>& ExamplesInWords() {
    static const std::map<std::string, std::string> examples{{"QC101",
                                                              "\xEF\xBB\xBF"
                                                              "actionType = Design\n"},
                                                             {"QC102", "\xEF\xBB\xBF// words of the workflow tool\n"},
                                                             {"QC103", "actionType = Design\r\n"},
                                                             {"QC107", "actionType = Design\\"},
                                                             {"QC108", "actionType = Design \\ \nreview\n"},
                                                             {"QC204", "actionType\t= Design\n"},
                                                             {"QC207", "actionType =\tDesign\n"},
                                                             {"QC209", "actionType = \x1B[1mDesign\n"},
                                                             {"QC210",
                                                              "actionStatus.run = \xC3\xBC"
                                                              "berarbeitet\n"}};
    return examples;
}

/** Expects that the findings have one with the code, severity and title of a section. */
void ExpectFinding(const ToolResult& iResult, const CodeSection& iSection) {
    const json document = json::parse(iResult.out, nullptr, false);
    ASSERT_FALSE(document.is_discarded()) << iSection.id << ": " << iResult;
    std::vector<std::string> findings;
    for (const json& finding : document["findings"]) {
        findings.push_back(finding["code"].get<std::string>() + ' ' + finding["severity"].get<std::string>() + ' ' +
                           finding["title"].get<std::string>());
    }
    EXPECT_THAT(findings, testing::Contains(iSection.id + ' ' + iSection.Severity() + ' ' + iSection.title)) << iResult;
}

}  // namespace

TEST(ConfigCodes, AreDescribedEachWithAnExampleThatHasIt) {
    const std::vector<CodeSection> sections = CodeSections("config-codes.md");
    EXPECT_EQ(sections.size(), 30U);
    for (const CodeSection& section : sections) {
        section.ExpectWhole("properties");
        if (section.id == "QC001") {
            ExpectFinding(RunTool({"config", "check", "--format", "json"}), section);
        } else if (section.id != "QC002") {  // which the shell's test of config has: it takes a file without rights
            const auto inWords = ExamplesInWords().find(section.id);
            const std::string example =
                inWords == ExamplesInWords().end() ? section.Example("properties") + '\n' : inWords->second;
            ExpectFinding(RunTool({"config", "check", "-", "--format", "json"}, {.input = example}), section);
        }
    }
}
