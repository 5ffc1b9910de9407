#include "CapturedStream.h"
#include "MemoryFile.h"
#include "PlainPropertyReader.h"
#include "PropertyEntries.h"
#include "TemporaryDirectory.h"

#include <QorWflPropertyFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

using PlainPropertyReader::PlainRead;

/** The table after a text was read over what the table held. */
PropertyEntries Read(QorWflPropertyFile& ioProperties, const std::string& iText) {
    const MemoryFile file;
    EXPECT_TRUE(file.Hold(iText));
    EXPECT_EQ(ioProperties.Read(file.Path()), 0);
    return EntriesOf(ioProperties);
}

/** The table after a text was read into an empty one. */
PropertyEntries Read(const std::string& iText) {
    QorWflPropertyFile properties;
    return Read(properties, iText);
}

struct SyntaxCase {
    std::string text;
    PropertyEntries entries;
};

void ExpectTables(const std::vector<SyntaxCase>& iCases) {
    for (const SyntaxCase& syntaxCase : iCases) {
        EXPECT_EQ(PlainRead(syntaxCase.text), syntaxCase.entries) << "the judge errs";
        EXPECT_EQ(Read(syntaxCase.text), syntaxCase.entries) << ::testing::PrintToString(syntaxCase.text);
    }
}

}  // namespace

TEST(PropertyFileTable, StartsEmpty) {
    const QorWflPropertyFile properties;
    EXPECT_EQ(properties.GetNKeys(), 0);
}

TEST(PropertyFileTable, PositionOutsideGivesNull) {
    QorWflPropertyFile properties;
    properties.SetValue("a", "1");
    for (const int position : {0, 2, -1, INT_MAX, INT_MIN}) {
        EXPECT_TRUE(properties.GetKey(position).IsNull()) << position;
        EXPECT_TRUE(properties.GetValue(position).IsNull()) << position;
    }
    EXPECT_EQ(properties.GetKey(1), "a");
    EXPECT_EQ(properties.GetValue(1), "1");
}

TEST(PropertyFileTable, SetValueKeepsThePositionOfAKeyAndAppendsNewOnes) {
    QorWflPropertyFile properties;
    properties.SetValue("b", "1");
    properties.SetValue("a", "2");
    properties.SetValue("b", "3");
    properties.SetValue("c", "2");
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("b", "3"), Pair("a", "2"), Pair("c", "2")));
}

TEST(PropertyFileTable, KeysCompareExactly) {
    QorWflPropertyFile properties;
    for (const char* key : {"key", "Key", "key ", " key", "ke", "", "keys"}) {
        properties.SetValue(key, key);
    }
    properties.SetValue(BexUnicodeString("key\0", 4), "NUL");
    properties.SetValue(BexUnicodeString(u"key\u20AC", 4), "Euro");
    properties.SetValue("key?", "question mark");
    EXPECT_EQ(properties.GetNKeys(), 10);
    properties.SetValue(BexUnicodeString(), "null is the empty key");
    EXPECT_EQ(properties.GetNKeys(), 10);
    EXPECT_EQ(properties.GetValue(6), "null is the empty key");
    EXPECT_EQ(properties.GetValue(1), "key");
}

TEST(PropertyFileTable, ValuesAreKeptAsTheyWereGiven) {
    QorWflPropertyFile properties;
    properties.SetValue(" k = ", " \"v\" \\");
    properties.SetValue("none", BexUnicodeString());
    properties.SetValue("wide", BexUnicodeString(u"\u20AC", 1));
    EXPECT_EQ(properties.GetKey(1), " k = ");
    EXPECT_EQ(properties.GetValue(1), " \"v\" \\");
    EXPECT_EQ(properties.GetValue(2), "");
    EXPECT_EQ(properties.GetValue(3)[0].Code(), u'\u20AC');
}

TEST(PropertyFileTable, HandsOutCopies) {
    QorWflPropertyFile properties;
    properties.SetValue("k", "v");
    properties.GetKey(1).Append("changed");
    properties.GetValue(1).Append("changed");
    const BexUnicodeString key = properties.GetKey(1);
    const BexUnicodeString value = properties.GetValue(1);
    properties.SetValue("k", "w");
    EXPECT_EQ(key, "k");
    EXPECT_EQ(value, "v");
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("k", "w")));
}

TEST(PropertyFileTable, ValueOfTheTableMayBeSetInIt) {
    QorWflPropertyFile properties;
    properties.SetValue("a", "b");
    properties.SetValue(properties.GetValue(1), properties.GetKey(1));
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("a", "b"), Pair("b", "a")));
}

TEST(PropertyFileSyntax, LinesSetKeysInOrder) {
    ExpectTables({
        {"", {}},
        {"\n", {}},
        {"\n\n\n", {}},
        {"a=1\nb=2\n", {{"a", "1"}, {"b", "2"}}},
        {"a=1\n\n\nb=2\n", {{"a", "1"}, {"b", "2"}}},
        {"b=2\na=1\nB=3\n", {{"b", "2"}, {"a", "1"}, {"B", "3"}}},
    });
}

TEST(PropertyFileSyntax, LastLineNeedsNoLineEnd) {
    ExpectTables({
        {"a=1", {{"a", "1"}}},
        {"a=1\nb=2", {{"a", "1"}, {"b", "2"}}},
        {"a=", {{"a", ""}}},
        {"a=1\nb", {{"a", "1"}}},
        {"a=1\n=", {{"a", "1"}}},
    });
}

TEST(PropertyFileSyntax, LineWithoutEqualsSignOrWithItInFrontIsSkipped) {
    ExpectTables({
        {"a\nb=2\n", {{"b", "2"}}},
        {"=1\nb=2\n", {{"b", "2"}}},
        {"=a=1\nb=2\n", {{"b", "2"}}},
        {"==\n", {}},
        {"   \nb=2\n", {{"b", "2"}}},
        {"\t\n\r\nb=2\n", {{"b", "2"}}},
    });
}

TEST(PropertyFileSyntax, KeyLosesEveryBlankAndTheValueThoseAroundIt) {
    ExpectTables({
        {"key   =   value   \n", {{"key", "value"}}},
        {"  a  key =  a  value \n", {{"akey", "a  value"}}},
        {"key=\n", {{"key", ""}}},
        {"key=    \n", {{"key", ""}}},
        {" =v\n", {{"", "v"}}},
        {"    =\n", {{"", ""}}},
        {"  =1\na=2\n =3\n", {{"", "3"}, {"a", "2"}}},
        {"a b=1\nab=2\n", {{"ab", "2"}}},
    });
}

TEST(PropertyFileSyntax, FurtherEqualsSignsBelongToTheValue) {
    ExpectTables({
        {"a==\n", {{"a", "="}}},
        {"a=b=c\n", {{"a", "b=c"}}},
        {"a = = b = \n", {{"a", "= b ="}}},
        {"a====\n", {{"a", "==="}}},
        {" ==\n", {{"", "="}}},
    });
}

TEST(PropertyFileSyntax, OnePairOfEnclosingQuotesIsTaken) {
    ExpectTables({
        {"k=\"a b\"\n", {{"k", "a b"}}},
        {"k =  \"a b\"  \n", {{"k", "a b"}}},
        {"k=\"  a  \"\n", {{"k", "  a  "}}},
        {"k=\"\n", {{"k", "\""}}},
        {"k=\"\"\n", {{"k", ""}}},
        {"k=\"\"\"\n", {{"k", "\""}}},
        {"k=\"\"a\"\"\n", {{"k", "\"a\""}}},
        {"k=\"a\"b\"\n", {{"k", "a\"b"}}},
        {"k=\"a\n", {{"k", "\"a"}}},
        {"k=a\"\n", {{"k", "a\""}}},
        {"k=\"a\" x\n", {{"k", "\"a\" x"}}},
        {"k=\"a=b\"\n", {{"k", "a=b"}}},
        {"k=\" \"\n", {{"k", " "}}},
        {"k='a b'\n", {{"k", "'a b'"}}},
        {"\"k\"=v\n", {{"\"k\"", "v"}}},
        {"\"k=v\"\n", {{"\"k", "v\""}}},
        {"k=\"a\\\"b\"\n", {{"k", "a\\\"b"}}},
        {"k=\"\\n\\t\"\n", {{"k", "\\n\\t"}}},
    });
}

TEST(PropertyFileSyntax, LineWhoseFirstCharacterButBlanksIsASlashIsAComment) {
    ExpectTables({
        {"   // a note\nb=2\n", {{"b", "2"}}},
        {"   // a=1\nb=2\n", {{"b", "2"}}},
        {"/a=1\nb=2\n", {{"b", "2"}}},
        {"/\nb=2\n", {{"b", "2"}}},
        {"    /=1\nb=2\n", {{"b", "2"}}},
        {"\t/a=1\n", {{"\t/a", "1"}}},
        {" \t/a=1\n", {{"\t/a", "1"}}},
        {"a/b=1\n", {{"a/b", "1"}}},
        {"a=/ 1 // no note\n", {{"a", "/ 1 // no note"}}},
        {"#a=1\n", {{"#a", "1"}}},
    });
}

TEST(PropertyFileSyntax, BackslashAtTheEndOfALineJoinsTheNextAsItStands) {
    ExpectTables({
        {"k=first\\\nsecond\n", {{"k", "firstsecond"}}},
        {"k=first\\\n  second\n", {{"k", "first  second"}}},
        {"k=first  \\\nsecond  \n", {{"k", "first  second"}}},
        {"k=1\\\n2\\\n3\\\n4\nl=5\n", {{"k", "1234"}, {"l", "5"}}},
        {"ke\\\ny=v\n", {{"key", "v"}}},
        {"ke\\\n  y=v\n", {{"key", "v"}}},
        {"k\\\n=v\n", {{"k", "v"}}},
        {"\\\n=v\nb=2\n", {{"b", "2"}}},
        {"\\\n =v\n", {{"", "v"}}},
        {"k=1\\\n\nl=2\n", {{"k", "1"}, {"l", "2"}}},
        {"k=1\\\nl=2\n", {{"k", "1l=2"}}},
        {"k=1\\ \nl=2\n", {{"k", "1\\"}, {"l", "2"}}},
        {"k=\"a\\\nb\"\n", {{"k", "ab"}}},
        {"k=\"a\"\\\n\n", {{"k", "a"}}},
        {"a\\b=c\\d\n", {{"a\\b", "c\\d"}}},
        {"k=1\\\n/2\n", {{"k", "1/2"}}},
    });
}

TEST(PropertyFileSyntax, TheTestForABackslashIsMadeAgainOnTheJoinedLine) {
    ExpectTables({
        {"k=1\\\\\n2\nl=3\n", {{"k", "1\\2"}, {"l", "3"}}},
        {"k=1\\\\\n\n2\nl=3\n", {{"k", "12"}, {"l", "3"}}},
        {"k=1\\\\\\\n\n\n2\nl=3\n", {{"k", "12"}, {"l", "3"}}},
        {"k=1\\\\\\\n\n2\nl=3\n", {{"k", "1\\2"}, {"l", "3"}}},
        {"k=1\\\n\\\n2\nl=3\n", {{"k", "12"}, {"l", "3"}}},
        {"k=1\\\n\\\\\n2\nl=3\n", {{"k", "1\\2"}, {"l", "3"}}},
        {"\\\n\\\n\\\nk=v\n", {{"k", "v"}}},
        {"\\\\\nk=v\n", {{"\\k", "v"}}},
    });
}

TEST(PropertyFileSyntax, BackslashesBeforeTheEndOfTheFileGo) {
    ExpectTables({
        {"k=v\\", {{"k", "v"}}},
        {"k=v\\\n", {{"k", "v"}}},
        {"k=v\\\\", {{"k", "v"}}},
        {"k=v\\\\\\\\\\", {{"k", "v"}}},
        {"k=v\\\\\n", {{"k", "v"}}},
        {"k=v\\\n\\", {{"k", "v"}}},
        {"k=\\", {{"k", ""}}},
        {"k\\", {}},
        {"\\", {}},
        {"\\\n", {}},
        {"\\\\\\\\", {}},
        {"\\\\\\\\\n", {}},
        {"\\\n\\\n\\\n", {}},
        {"a=1\n\\", {{"a", "1"}}},
        {"k= \"v\" \\", {{"k", "v"}}},
    });
}

TEST(PropertyFileSyntax, CommentsAreToldFromJoinedLines) {
    ExpectTables({
        {"/ note \\\na=1\nb=2\n", {{"b", "2"}}},
        {"/\\\na=1\nb=2\n", {{"b", "2"}}},
        {"  \\\n  / a=1\nb=2\n", {{"b", "2"}}},
        {"\\\n/a=1\nb=2\n", {{"b", "2"}}},
        {"/\\\\\na=1\nb=2\n", {{"b", "2"}}},
        {"/ note\\", {}},
        {"\\\\\n/a=1\n", {{"\\/a", "1"}}},
    });
}

TEST(PropertyFileSyntax, CarriageReturnsAndTabsStay) {
    ExpectTables({
        {"a=1\r\nb=2\r\n", {{"a", "1\r"}, {"b", "2\r"}}},
        {"k = \"a b\"\r\n", {{"k", "\"a b\"\r"}}},
        {"k = v  \r\n", {{"k", "v  \r"}}},
        {"k=\r\n", {{"k", "\r"}}},
        {"k=1\\\r\nl=2\r\n", {{"k", "1\\\r"}, {"l", "2\r"}}},
        {"a=1\rb=2\n", {{"a", "1\rb=2"}}},
        {"\r=1\n", {{"\r", "1"}}},
        {"\tk\t=\tv\t\n", {{"\tk\t", "\tv\t"}}},
        {"k=\t\"v\"\t\n", {{"k", "\t\"v\"\t"}}},
        {"k=v\v\f\n", {{"k", "v\v\f"}}},
    });
}

TEST(PropertyFileSyntax, LastSettingOfAKeyWinsAtItsFirstPosition) {
    ExpectTables({
        {"a=1\na=2\n", {{"a", "2"}}},
        {"a=1\nb=5\na=2\n", {{"a", "2"}, {"b", "5"}}},
        {"b=1\na=1\n a = 2\nb=\nc=3\n", {{"b", ""}, {"a", "2"}, {"c", "3"}}},
    });
}

TEST(PropertyFileSyntax, NulBytesAreTextLikeOthers) {
    using namespace std::string_literals;
    ExpectTables({
        {"a\0b=c\0d\ne=f\n"s, {{"a\0b"s, "c\0d"s}, {"e", "f"}}},
        {"\0=\0\n"s, {{"\0"s, "\0"s}}},
        {"\0/a=1\n"s, {{"\0/a"s, "1"}}},
        {"a\0=1\na=2\na\0b=3\n"s, {{"a\0"s, "1"}, {"a", "2"}, {"a\0b"s, "3"}}},
        {"k=\"a\"\0\n"s, {{"k", "\"a\"\0"s}}},
        {"k=v\\\0\nl=w\n"s, {{"k", "v\\\0"s}, {"l", "w"}}},
    });
}

TEST(PropertyFileSyntax, EveryByteIsTextUnlessItHasAMeaningAtItsPlace) {
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        const std::string special = " \n=/\\\"";
        if (special.find(byte) == std::string::npos) {
            EXPECT_THAT(Read(byte + "k" + byte + "=" + byte + "v" + byte + "\n"),
                        ElementsAre(Pair(byte + "k" + byte, byte + "v" + byte)))
                << code;
        }
        const std::string places[] = {byte + "k=v\nl=w\n", "k" + byte + "=v\nl=w\n", "k=" + byte + "\nl=w\n",
                                      "k=v" + byte + "\nl=w\n", "k=\"" + byte + "\"" + byte};
        for (const std::string& text : places) {
            EXPECT_EQ(Read(text), PlainRead(text)) << ::testing::PrintToString(text);
        }
    }
}

TEST(PropertyFileSyntax, BytesAboveSeventyFAreCodeUnitsOfTheSameNumber) {
    QorWflPropertyFile properties;
    Read(properties, "\xC3\xA4=\xFF\x80\n");
    ASSERT_EQ(properties.GetNKeys(), 1);
    EXPECT_EQ(properties.GetKey(1), BexUnicodeString(u"\u00C3\u00A4", 2));
    EXPECT_EQ(properties.GetValue(1), BexUnicodeString(u"\u00FF\u0080", 2));
}

TEST(PropertyFileSyntax, ByteOrderMarkIsPartOfTheFirstKey) {
    EXPECT_THAT(Read("\xEF\xBB\xBFk=v\n"), ElementsAre(Pair("\xEF\xBB\xBFk", "v")));
}

TEST(PropertyFileSyntax, EmptyValuesAreEmptyAndNotNull) {
    QorWflPropertyFile properties;
    Read(properties, "a=\nb=\"\"\nc=   \n");
    ASSERT_EQ(properties.GetNKeys(), 3);
    for (int i = 1; i <= 3; ++i) {
        EXPECT_FALSE(properties.GetValue(i).IsNull()) << i;
    }
}

TEST(PropertyFileSyntax, PresetKeysKeepTheirPlaceAndTheirValueUnlessTheFileSetsThem) {
    QorWflPropertyFile properties;
    properties.SetValue("kept", " as it was ");
    properties.SetValue("changed", "1");
    properties.SetValue("a b", "a key no line can set");
    EXPECT_THAT(Read(properties, "new=3\nchanged=2\na b=4\n"),
                ElementsAre(Pair("kept", " as it was "), Pair("changed", "2"), Pair("a b", "a key no line can set"),
                            Pair("new", "3"), Pair("ab", "4")));
}

TEST(PropertyFileSyntax, SecondFileIsMergedIntoTheTable) {
    QorWflPropertyFile properties;
    Read(properties, "a=1\nb=1\nc=1");
    EXPECT_THAT(Read(properties, "d=2\nb=2\n/c=2\n"),
                ElementsAre(Pair("a", "1"), Pair("b", "2"), Pair("c", "1"), Pair("d", "2")));
    EXPECT_THAT(Read(properties, ""), ElementsAre(Pair("a", "1"), Pair("b", "2"), Pair("c", "1"), Pair("d", "2")));
}

TEST(PropertyFileSyntax, TablesAreIndependent) {
    QorWflPropertyFile first;
    QorWflPropertyFile second;
    Read(first, "a=1\n");
    Read(second, "b=2\n");
    EXPECT_THAT(EntriesOf(first), ElementsAre(Pair("a", "1")));
    EXPECT_THAT(EntriesOf(second), ElementsAre(Pair("b", "2")));
}

TEST(PropertyFileSyntax, MalformedFileSaysNothing) {
    const CapturedStream output(std::cout);
    const CapturedStream error(std::cerr);
    Read("=\nnothing\n\\\\\n\"\n\xFF\n");
    EXPECT_EQ(output.Text() + error.Text(), "");
}

TEST(PropertyFileSyntax, FileWhoseSizeIsToldAsZeroIsReadToItsEnd) {
    const std::string name = "/proc/self/environ";
    std::ifstream stream(name, std::ios::binary);
    if (!stream.is_open()) {
        GTEST_SKIP() << "no file here that hides its size";
    }
    const std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    QorWflPropertyFile properties;
    EXPECT_EQ(properties.Read(StringOf(name)), 0);
    EXPECT_EQ(EntriesOf(properties), PlainRead(text));
}

/** All texts that begin with one character of the alphabet, so that the work falls into parts. */
class PropertyFileEveryText : public ::testing::TestWithParam<char> {};

TEST_P(PropertyFileEveryText, UpToSevenCharactersReadsAsThePlainReaderHasIt) {
    const std::string alphabet = "a=\"\\/\n ";
    const std::size_t kLongest = 7;
    const MemoryFile file;
    std::vector<std::size_t> digits;  // the text behind its first character, as a number in base alphabet.size()
    while (digits.size() < kLongest) {
        std::string text(1, GetParam());
        for (const std::size_t digit : digits) {
            text += alphabet[digit];
        }
        ASSERT_TRUE(file.Hold(text));
        QorWflPropertyFile properties;
        ASSERT_EQ(properties.Read(file.Path()), 0);
        ASSERT_EQ(EntriesOf(properties), PlainRead(text)) << ::testing::PrintToString(text);

        std::size_t place = 0;
        while (place < digits.size() && ++digits[place] == alphabet.size()) {
            digits[place++] = 0;
        }
        if (place == digits.size()) {
            digits.push_back(0);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(FirstCharacter, PropertyFileEveryText, ::testing::Values('a', '=', '"', '\\', '/', '\n', ' '),
                         [](const auto& iInfo) { return "Code" + std::to_string(static_cast<int>(iInfo.param)); });

TEST(PropertyFileSyntax, RandomTextsReadAsThePlainReaderHasThem) {
    const std::string frequent = "aab ==\"\\\\//\n\n\r\t";
    std::mt19937 random(20031);
    const MemoryFile file;
    for (int round = 0; round < 20'000; ++round) {
        std::string text(random() % 120, '\0');
        for (char& character : text) {
            character = random() % 8 == 0 ? static_cast<char>(random() % 256) : frequent[random() % frequent.size()];
        }
        ASSERT_TRUE(file.Hold(text));
        QorWflPropertyFile properties;
        ASSERT_EQ(properties.Read(file.Path()), 0);
        ASSERT_EQ(EntriesOf(properties), PlainRead(text)) << ::testing::PrintToString(text);
    }
}

TEST(PropertyFileSize, AMillionKeysAreReadAndReadAgain) {
    constexpr int kKeys = 1'000'000;
    std::string first;
    std::string second;
    for (int i = 1; i <= kKeys; ++i) {
        const std::string key = "key." + std::to_string(i);
        first += key + " = old " + std::to_string(i) + "\n";
        second += key + "=" + std::to_string(i) + "\n";
    }
    const MemoryFile file;
    QorWflPropertyFile properties;
    ASSERT_TRUE(file.Hold(first));
    ASSERT_EQ(properties.Read(file.Path()), 0);
    ASSERT_EQ(properties.GetNKeys(), kKeys);
    EXPECT_EQ(properties.GetValue(kKeys), "old 1000000");
    ASSERT_TRUE(file.Hold(second));
    ASSERT_EQ(properties.Read(file.Path()), 0);
    ASSERT_EQ(properties.GetNKeys(), kKeys);
    for (int i = 1; i <= kKeys; ++i) {
        const std::string number = std::to_string(i);
        ASSERT_EQ(NarrowText(properties.GetKey(i)), "key." + number);
        ASSERT_EQ(NarrowText(properties.GetValue(i)), number);
    }
}

TEST(PropertyFileSize, AMillionSettingsOfOneKeyAreRead) {
    std::string text = "first=1\n";
    for (int i = 1; i <= 1'000'000; ++i) {
        text += "key=" + std::to_string(i) + "\n";
    }
    EXPECT_THAT(Read(text), ElementsAre(Pair("first", "1"), Pair("key", "1000000")));
}

TEST(PropertyFileSize, AMillionKeysSetByHandKeepTheirPlaces) {
    constexpr int kKeys = 1'000'000;
    QorWflPropertyFile properties;
    for (int round = 0; round < 2; ++round) {
        for (int i = 1; i <= kKeys; ++i) {
            properties.SetValue(StringOf(std::to_string(i)), StringOf(std::to_string(round)));
        }
    }
    ASSERT_EQ(properties.GetNKeys(), kKeys);
    EXPECT_EQ(properties.GetKey(kKeys), "1000000");
    EXPECT_EQ(properties.GetValue(kKeys), "1");
    EXPECT_EQ(properties.GetValue(1), "1");
}

TEST(PropertyFileSize, AMillionJoinedLinesAreOneValue) {
    std::string text = "key=";
    for (int i = 0; i < 1'000'000; ++i) {
        text += "x\\\n";
    }
    EXPECT_THAT(Read(text + "y\nnext=1\n"),
                ElementsAre(Pair("key", std::string(1'000'000, 'x') + "y"), Pair("next", "1")));
}

TEST(PropertyFileSize, AMillionBackslashesJoinAMillionLines) {
    const std::string backslashes(1'000'000, '\\');
    EXPECT_THAT(Read("key=v" + backslashes), ElementsAre(Pair("key", "v")));
    EXPECT_THAT(Read("key=v" + backslashes + std::string(1'000'001, '\n') + "next=1\n"),
                ElementsAre(Pair("key", "v"), Pair("next", "1")));
}

TEST(PropertyFileSize, LineOfTenMillionCharactersIsRead) {
    const std::string blanks(5'000'000, ' ');
    EXPECT_THAT(Read(blanks + "key" + blanks + "=" + blanks + "v" + blanks), ElementsAre(Pair("key", "v")));
    const std::string quotes(10'000'000, '"');
    EXPECT_THAT(Read("key=" + quotes), ElementsAre(Pair("key", quotes.substr(2))));
    EXPECT_THAT(Read(blanks + "/" + quotes + "=\n"), IsEmpty());
}
