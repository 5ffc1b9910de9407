#include "CodePage.h"

#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

std::string CodeSection::Severity() const {
    std::smatch match;
    return std::regex_search(text, match, std::regex("^\nSeverity: ([a-z]+)\\. ")) ? match[1].str() : std::string();
}

std::string CodeSection::Example(const std::string& iLanguage) const {
    const std::string start = "```" + iLanguage + '\n';
    const std::size_t at = text.find(start);
    if (at == std::string::npos) {
        return std::string();
    }
    const std::size_t begin = at + start.size();
    return text.substr(begin, text.find("\n```", begin) - begin);
}

void CodeSection::ExpectWhole(const std::string& iLanguage) const {
    EXPECT_NE(Severity(), "") << id;
    EXPECT_THAT(text, testing::HasSubstr("\nWhat to do: ")) << id;
    EXPECT_TRUE(!Example(iLanguage).empty() || std::regex_search(text, std::regex("Example:[ \n]"))) << id;
}

std::vector<CodeSection> CodeSections(const std::string& iPage) {
    const std::string page = FileBytes(std::string(DOCS_DIR) + '/' + iPage);
    const std::regex heading("\n### (Q[A-Z][0-9]+): ([^\n]+)\n");
    std::vector<CodeSection> sections;
    for (std::sregex_iterator match(page.begin(), page.end(), heading), end; match != end; ++match) {
        const auto start = static_cast<std::size_t>(match->position() + match->length());
        sections.push_back({(*match)[1], (*match)[2], page.substr(start, page.find("\n##", start) - start)});
    }
    return sections;
}
