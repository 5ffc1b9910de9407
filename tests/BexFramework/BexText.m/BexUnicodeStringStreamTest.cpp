// Lines from a stream and text to a stream.

#include "TextTesting.h"

#include <BexUnicodeString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAreArray;

std::string NarrowOf(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

std::vector<std::string> LinesOf(const std::string& iBytes, int iFlag) {
    std::istringstream stream(iBytes);
    std::vector<std::string> lines;
    BexUnicodeString line;
    while (line.BuildFromStream(stream, iFlag) == 0) {
        lines.push_back(NarrowOf(line));
    }
    EXPECT_TRUE(stream.fail());
    return lines;
}

struct LinesCase {
    std::string bytes;
    std::vector<std::string> lines;
};

TEST(BexUnicodeStringFromStream, ReadsPhysicalLinesAsTheyStand) {
    const LinesCase cases[] = {
        {"", {}},
        {"\n", {""}},
        {"\n\n", {"", ""}},
        {"a", {"a"}},  // no final line end
        {"a\n", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\n\nb\n", {"a", "", "b"}},
        {"\na", {"", "a"}},
        {"  a  \n\tb\t\n", {"  a  ", "\tb\t"}},
        {"   \n \n", {"   ", " "}},
        {"a\r\nb\r\n", {"a\r", "b\r"}},  // only the line feed is the line's end
        {"a\rb\n", {"a\rb"}},
        {"\r\n", {"\r"}},
        {"a\\\nb\n", {"a\\", "b"}},
        {std::string("a\0b\n\0\n", 6), {std::string("a\0b", 3), std::string("\0", 1)}},
        {"\xFF\xC3\xA9\n\x80", {"\xFF\xC3\xA9", "\x80"}},
        {"\x1A\n\x04", {"\x1A", "\x04"}},
        {std::string(100'000, 'x') + "\ny", {std::string(100'000, 'x'), "y"}},
    };
    for (const LinesCase& tried : cases) {
        for (const int flag : {0, 1}) {
            EXPECT_THAT(LinesOf(tried.bytes, flag), ElementsAreArray(tried.lines)) << tried.bytes.substr(0, 40);
        }
    }
}

TEST(BexUnicodeStringFromStream, EveryByteOfALineIsKept) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const char narrow = static_cast<char>(byte);
        std::istringstream stream(std::string{'a', narrow, 'b', '\n', 'c'});
        BexUnicodeString line;
        ASSERT_EQ(line.BuildFromStream(stream, 1), 0) << byte;
        ASSERT_EQ(NarrowOf(line), narrow == '\n' ? "a" : (std::string{'a', narrow, 'b'})) << byte;
    }
}

TEST(BexUnicodeStringFromStream, EmptyLineIsEmptyNotNull) {
    for (const int flag : {0, 1}) {
        for (const char* const former : {static_cast<const char*>(nullptr), "", "former"}) {
            std::istringstream stream("\n");
            BexUnicodeString line(former);
            EXPECT_EQ(line.BuildFromStream(stream, flag), 0);
            EXPECT_EQ(line.GetLengthInChar(), 0);
            EXPECT_EQ(line.IsNull(), 0);
        }
    }
}

TEST(BexUnicodeStringFromStream, ReplacesTheFormerTextWhateverItWas) {
    for (const BexUnicodeString& former : {BexUnicodeString(), BexUnicodeString("former"), Units(u"\u0161 and wide")}) {
        std::istringstream stream("line\n");
        BexUnicodeString line(former);
        (void)line.ConvertToChar();
        EXPECT_EQ(line.BuildFromStream(stream, 1), 0);
        EXPECT_EQ(line, BexUnicodeString("line"));
        EXPECT_STREQ(line.ConvertToChar(), "line");
        EXPECT_FALSE(line.IsWide());
    }
}

TEST(BexUnicodeStringFromStream, LineFeedIsConsumedAndNothingBehindIt) {
    std::istringstream stream("first\n second\nthird");
    BexUnicodeString line;
    EXPECT_EQ(line.BuildFromStream(stream, 1), 0);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.peek(), ' ');
    EXPECT_EQ(line.BuildFromStream(stream, 0), 0);
    EXPECT_STREQ(line.ConvertToChar(), " second");
    EXPECT_EQ(stream.peek(), 't');
}

TEST(BexUnicodeStringFromStream, LastLineWithoutALineEndDoesNotFail) {
    std::istringstream stream("last");
    BexUnicodeString line;
    EXPECT_EQ(line.BuildFromStream(stream, 1), 0);
    EXPECT_STREQ(line.ConvertToChar(), "last");
    EXPECT_FALSE(stream.fail());
}

TEST(BexUnicodeStringFromStream, StreamThatThrowsLosesNoLine) {
    std::istringstream stream("last");
    stream.exceptions(std::ios_base::eofbit);
    BexUnicodeString line("former");
    EXPECT_THROW(line.BuildFromStream(stream, 1), std::ios_base::failure);
    EXPECT_STREQ(line.ConvertToChar(), "last");
}

/** A stream that fails and throws as soon as it is flushed. */
class FailingOutput : public std::ostream {
public:
    FailingOutput() : std::ostream(&buffer) { exceptions(std::ios_base::badbit); }

private:
    class Buffer : public std::streambuf {
        int sync() override { return -1; }
    };
    Buffer buffer;
};

TEST(BexUnicodeStringFromStream, LineStaysInAStreamThatATiedOneMakesFail) {
    FailingOutput output;
    std::istringstream stream("line one\nline two\n");
    stream.tie(&output);
    BexUnicodeString line("former");
    EXPECT_EQ(line.BuildFromStream(stream, 1), -1);
    EXPECT_STREQ(line.ConvertToChar(), "");
    EXPECT_TRUE(stream.fail());
    stream.tie(nullptr);
    stream.clear();
    EXPECT_EQ(line.BuildFromStream(stream, 1), 0);
    EXPECT_STREQ(line.ConvertToChar(), "line one");
}

TEST(BexUnicodeStringFromStream, NothingLeftIsEmptyWhenTheStreamThrowsToo) {
    for (const bool isBad : {false, true}) {
        std::istringstream stream;
        if (isBad) {
            stream.setstate(std::ios_base::badbit);
        } else {
            stream.exceptions(std::ios_base::failbit);
        }
        BexUnicodeString line("former");
        if (isBad) {
            EXPECT_EQ(line.BuildFromStream(stream, 1), -1);
        } else {
            EXPECT_THROW(line.BuildFromStream(stream, 1), std::ios_base::failure);
        }
        EXPECT_EQ(line.IsNull(), 0);
        EXPECT_STREQ(line.ConvertToChar(), "");
        EXPECT_TRUE(stream.fail());
    }
}

TEST(BexUnicodeStringFromStream, NothingLeftIsEmptyWithTheFailStateSet) {
    for (const int flag : {0, 1}) {
        for (const char* const bytes : {"", "a", "a\n"}) {
            std::istringstream stream(bytes);
            BexUnicodeString line("former");
            if (*bytes != '\0') {
                ASSERT_EQ(line.BuildFromStream(stream, flag), 0);
                ASSERT_FALSE(stream.fail());
            }
            EXPECT_EQ(line.BuildFromStream(stream, flag), -1);
            EXPECT_EQ(line.GetLengthInChar(), 0);
            EXPECT_EQ(line.IsNull(), 0);
            EXPECT_TRUE(stream.fail());
            EXPECT_EQ(line.BuildFromStream(stream, flag), -1);
            EXPECT_EQ(line.IsEmpty(), 1);
            EXPECT_TRUE(stream.fail());
        }
    }
}

TEST(BexUnicodeStringFromStream, FailedStreamGivesNothing) {
    for (const std::ios_base::iostate state : {std::ios_base::failbit, std::ios_base::badbit, std::ios_base::eofbit}) {
        std::istringstream stream("text\n");
        stream.setstate(state);
        BexUnicodeString line("former");
        EXPECT_EQ(line.BuildFromStream(stream, 1), -1);
        EXPECT_EQ(line.IsEmpty(), 1);
        EXPECT_TRUE(stream.fail());
    }
    std::ifstream missing("no-such-directory/no-such-file");
    BexUnicodeString line("former");
    EXPECT_EQ(line.BuildFromStream(missing, 1), -1);
    EXPECT_EQ(line.IsEmpty(), 1);
}

TEST(BexUnicodeStringFromStream, FlagThatDoesNotExistReadsAndChangesNothing) {
    for (const int flag : {INT_MIN, -1, 2, 3, INT_MAX}) {
        for (const char* const former : {static_cast<const char*>(nullptr), "", "former"}) {
            std::istringstream stream("text\n");
            BexUnicodeString line(former);
            EXPECT_EQ(line.BuildFromStream(stream, flag), -1) << flag;
            EXPECT_EQ(line, BexUnicodeString(former)) << flag;
            EXPECT_EQ(line.IsNull(), former == nullptr ? 1 : 0) << flag;
            EXPECT_TRUE(stream.good()) << flag;
            EXPECT_EQ(line.BuildFromStream(stream, 1), 0) << flag;
            EXPECT_STREQ(line.ConvertToChar(), "text") << flag;
        }
    }
}

TEST(BexUnicodeStringFromStream, StreamSettingsDoNotMatter) {
    std::istringstream stream("  padded line  \n");
    stream.width(3);
    stream >> std::noskipws;
    BexUnicodeString line;
    EXPECT_EQ(line.BuildFromStream(stream, 1), 0);
    EXPECT_STREQ(line.ConvertToChar(), "  padded line  ");
}

TEST(BexUnicodeStringFromStream, ReadsAHundredThousandLines) {
    std::string bytes;
    for (int number = 0; number < 100'000; ++number) {
        bytes += std::to_string(number) + "\n";
    }
    std::istringstream stream(bytes);
    BexUnicodeString line;
    int count = 0;
    while (line.BuildFromStream(stream, count % 2) == 0) {
        int number = -1;
        ASSERT_EQ(line.ConvertToNum(&number, "%d"), 0);
        ASSERT_EQ(number, count);
        ++count;
    }
    EXPECT_EQ(count, 100'000);
}

TEST(BexUnicodeStringToStream, WritesTheNarrowText) {
    std::ostringstream stream;
    stream << BexUnicodeString("a\xE9") << BexUnicodeString() << BexUnicodeString("") << Units(u"\u0161\u00FF")
           << BexUnicodeString("\0x\0", 3) << "end";
    EXPECT_EQ(stream.str(), std::string("a\xE9?\xFF\0x\0end", 10));
}

TEST(BexUnicodeStringToStream, EveryByteIsWrittenAsItIs) {
    std::string all;
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        all += static_cast<char>(byte);
    }
    std::ostringstream stream;
    stream << BexUnicodeString(all.data(), 256);
    EXPECT_EQ(stream.str(), all);
}

TEST(BexUnicodeStringToStream, GivesBackTheStream) {
    std::ostringstream stream;
    EXPECT_EQ(&(stream << BexUnicodeString("a")), &stream);
}

}  // namespace
