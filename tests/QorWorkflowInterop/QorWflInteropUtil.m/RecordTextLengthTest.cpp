#include "NaiveRecordReader.h"
#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace {

using RecordTesting::Joined;
using RecordTesting::SampleLines;
using RecordTesting::ToText;

/** The sample with one of its lines changed. */
std::string WithLine(std::size_t iLine, const std::string& iNew) {
    std::vector<std::string> lines = SampleLines();
    lines[iLine] = iNew;
    return Joined(lines);
}

}  // namespace

TEST(RecordTextLength, ValueOfAnyLengthInAnyLine) {
    const std::vector<std::string> lines = SampleLines();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const std::size_t quote = lines[line].find('"');
        if (quote == std::string::npos) {
            continue;
        }
        for (const std::size_t length : {0U, 1U, 78U, 79U, 80U, 9997U, 10000U, 10076U, 10077U, 10078U, 10079U}) {
            ExpectReadAsNaively(WithLine(line, lines[line].substr(0, quote + 1) + std::string(length, 'v') + "\";"));
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << lines[line] << length;
        }
    }
}

TEST(RecordTextLength, EveryValueIsCutAtSeventyNineCharactersAndTheNextIsNot) {
    const std::vector<std::string> lines = SampleLines();
    int values = 0;
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const std::size_t quote = lines[line].find('"');
        if (quote == std::string::npos) {
            continue;
        }
        ++values;
        const std::string label = lines[line].substr(0, quote + 1);
        for (const std::size_t length : {0U, 78U, 79U, 80U, 100U, 10000U}) {
            std::istringstream stream(WithLine(line, label + std::string(length, 'v') + "\";"));
            ActivityInfo activity;
            stream >> activity;
            EXPECT_EQ(ToText(activity) + "\n",
                      WithLine(line, label + std::string(std::min<std::size_t>(length, 79), 'v') + "\";"));
            EXPECT_FALSE(stream.fail()) << label << length;
        }
    }
    EXPECT_EQ(values, 24);
}

TEST(RecordTextLength, LabelOfAnyLengthBeforeAnyLine) {
    const std::vector<std::string> lines = SampleLines();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        const std::size_t start = lines[line].find_first_of("\"=");
        for (const std::size_t length : {0U, 9997U, 9998U, 9999U, 10000U, 19998U, 20000U, 30000U}) {
            ExpectReadAsNaively(WithLine(line, std::string(length, 'l') + lines[line].substr(start)));
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << lines[line] << length;
        }
    }
}

TEST(RecordTextLength, AnythingOfAnyLengthBehindAnyLine) {
    const std::vector<std::string> lines = SampleLines();
    for (std::size_t line = 0; line < lines.size(); ++line) {
        for (const char filler : {'x', ';', '"', '='}) {
            for (const std::size_t length : {1U, 9995U, 9996U, 9997U, 9998U, 9999U, 10000U, 20000U}) {
                ExpectReadAsNaively(WithLine(line, lines[line] + std::string(length, filler)));
                ASSERT_FALSE(testing::Test::HasFatalFailure()) << lines[line] << length << filler;
            }
        }
    }
}
