// Single code units, parts of a text, and the comparison of texts.

#include "TextTesting.h"

#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace {

TEST(BexUnicodeStringIndex, OutsideTheStringIsTheCodeUnitZero) {
    for (const BexUnicodeString& text :
         {BexUnicodeString("abc"), Units(u"a\u0161c"), BexUnicodeString(""), BexUnicodeString()}) {
        for (const int pos : {INT_MIN, -2, -1, text.GetLengthInChar(), text.GetLengthInChar() + 1, INT_MAX}) {
            EXPECT_EQ(text[pos].Code(), u'\0') << pos;
        }
    }
}

TEST(BexUnicodeStringIndex, InsideIsTheCodeUnitAtThePosition) {
    const BexUnicodeString text = Units(std::u16string_view(u"\0\u00FF\u0100\uFFFF", 4));
    EXPECT_EQ(text[0].Code(), 0x0000);
    EXPECT_EQ(text[1].Code(), 0x00FF);
    EXPECT_EQ(text[2].Code(), 0x0100);
    EXPECT_EQ(text[3].Code(), 0xFFFF);
}

struct SubStringCase {
    int pos;
    int length;
    const char16_t* part;
};

TEST(BexUnicodeStringSubString, IsClampedToTheString) {
    const SubStringCase cases[] = {
        {0, 5, u"a\u0161\u00E9de"},
        {1, 2, u"\u0161\u00E9"},
        {4, 1, u"e"},
        {0, INT_MAX, u"a\u0161\u00E9de"},  // to the end
        {3, INT_MAX, u"de"},
        {3, 100, u"de"},
        {5, 1, u""},
        {6, 1, u""},
        {INT_MAX, INT_MAX, u""},
        {2, 0, u""},
        {2, -1, u""},
        {2, INT_MIN, u""},
        {-1, 2, u"a\u0161"},  // a negative position counts as 0
        {INT_MIN, 1, u"a"},
        {INT_MIN, INT_MIN, u""},
        {INT_MIN, INT_MAX, u"a\u0161\u00E9de"},
    };
    const BexUnicodeString text = Units(u"a\u0161\u00E9de");
    for (const SubStringCase& tried : cases) {
        const BexUnicodeString part = text.SubString(tried.pos, tried.length);
        EXPECT_EQ(UnitsOf(part), tried.part) << tried.pos << ", " << tried.length;
        EXPECT_EQ(part.IsNull(), 0) << tried.pos << ", " << tried.length;
    }
}

TEST(BexUnicodeStringSubString, AgreesWithTheReferenceOnAllShortTexts) {
    for (const std::u16string& units : TextsOf(u"a?\u0161", 5)) {
        const BexUnicodeString text = Units(units);
        const int size = static_cast<int>(units.size());
        for (int pos = -2; pos <= size + 2; ++pos) {
            for (int length = -2; length <= size + 2; ++length) {
                const int begin = std::clamp(pos, 0, size);
                const std::u16string part =
                    units.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(std::max(length, 0)));
                const BexUnicodeString result = text.SubString(pos, length);
                ASSERT_EQ(UnitsOf(result), part) << pos << ", " << length;
                ASSERT_EQ(result.IsNull(), 0);
                ASSERT_EQ(result.IsWide(), HasWideUnit(part));
            }
        }
        ASSERT_EQ(UnitsOf(text), units);
    }
}

TEST(BexUnicodeStringSubString, MayReplaceTheStringItIsTakenFrom) {
    BexUnicodeString text("a text that is longer than fifteen characters");
    text = text.SubString(2, 4);
    EXPECT_EQ(UnitsOf(text), u"text");
    text = Units(u"\u0161 narrow");
    text = text.SubString(2, 6);
    EXPECT_EQ(UnitsOf(text), u"narrow");
    EXPECT_FALSE(text.IsWide());
}

TEST(BexUnicodeStringCompare, AgreesWithTheReferenceOnAllPairsOfShortTexts) {
    // the letters cover both signs of a byte, two units with the same low byte, and a unit that orders above
    // surrogates only when compared by code units
    const std::vector<std::u16string> texts = TextsOf(std::u16string{u'a', 0x00E9, 0x0161, 0xD83D, 0xE000}, 3);
    std::vector<BexUnicodeString> strings;
    for (const std::u16string& units : texts) {
        strings.push_back(Units(units));
    }
    for (std::size_t left = 0; left < texts.size(); ++left) {
        for (std::size_t right = 0; right < texts.size(); ++right) {
            ASSERT_EQ(strings[left] == strings[right], texts[left] == texts[right]) << left << " " << right;
            ASSERT_EQ(strings[left] != strings[right], texts[left] != texts[right]) << left << " " << right;
            ASSERT_EQ(strings[left] < strings[right], texts[left] < texts[right]) << left << " " << right;
        }
    }
}

TEST(BexUnicodeStringCompare, EveryPairOfBytesOrdersAsUnsigned) {
    for (unsigned left = 0; left <= 0xFF; ++left) {
        for (unsigned right = 0; right <= 0xFF; ++right) {
            const char leftByte = static_cast<char>(left);
            const char rightByte = static_cast<char>(right);
            const BexUnicodeString leftText(&leftByte, 1);
            const BexUnicodeString rightText(&rightByte, 1);
            ASSERT_EQ(leftText < rightText, left < right) << left << " " << right;
            ASSERT_EQ(leftText == rightText, left == right) << left << " " << right;
        }
    }
}

TEST(BexUnicodeStringCompare, NulIsACodeUnitLikeAnother) {
    EXPECT_TRUE(BexUnicodeString("a\0b", 3) != BexUnicodeString("a"));
    EXPECT_TRUE(BexUnicodeString("a\0b", 3) != BexUnicodeString("a\0c", 3));
    EXPECT_TRUE(BexUnicodeString("a\0b", 3) < BexUnicodeString("a\0c", 3));
    EXPECT_TRUE(BexUnicodeString("a") < BexUnicodeString("a\0", 2));
    EXPECT_TRUE(BexUnicodeString("") < BexUnicodeString("\0", 1));
}

TEST(BexUnicodeStringCompare, NullEqualsEmptyAndStandsBeforeEveryOtherText) {
    const BexUnicodeString null;
    const BexUnicodeString empty("");
    EXPECT_TRUE(null == empty);
    EXPECT_TRUE(empty == null);
    EXPECT_TRUE(null == null);
    EXPECT_FALSE(null != empty);
    EXPECT_FALSE(null < empty);
    EXPECT_FALSE(empty < null);
    for (const BexUnicodeString& text : {BexUnicodeString("a"), Units(u"\u0161"), BexUnicodeString("\0", 1)}) {
        EXPECT_TRUE(null < text);
        EXPECT_FALSE(text < null);
        EXPECT_TRUE(null != text);
        EXPECT_FALSE(text == null);
    }
}

TEST(BexUnicodeStringCompare, QuestionMarkIsNotAUnitThatConvertsToOne) {
    EXPECT_TRUE(BexUnicodeString("?") != Units(u"\u0161"));
    EXPECT_TRUE(Units(u"\u0161") != Units(u"\u0162"));
    EXPECT_TRUE(BexUnicodeString("a") != Units(u"\u0161"));
}

TEST(BexUnicodeStringCompare, TextThatWasWideEqualsTextThatNeverWas) {
    BexUnicodeString text = Units(u"\u0161 narrow");
    text.ReplaceSubString(Units(u"\u0161"), "now");
    EXPECT_TRUE(text == BexUnicodeString("now narrow"));
    EXPECT_TRUE(BexUnicodeString("now narrow") == text);
    EXPECT_FALSE(text < BexUnicodeString("now narrow"));
    EXPECT_FALSE(BexUnicodeString("now narrow") < text);
    EXPECT_TRUE(Units(u"\u0161 narrow").SubString(1, 100) == BexUnicodeString(" narrow"));
    EXPECT_TRUE(Units(u"\u0161").Strip(4, BexUnicodeChar(char16_t{0x0161})) == BexUnicodeString());
}

TEST(BexUnicodeStringCompare, NarrowTextOnEitherSideIsCompared) {
    const BexUnicodeString text("abc");
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE("abc" == text);
    EXPECT_TRUE(text != "abd");
    EXPECT_TRUE(text < "abd");
    EXPECT_TRUE("abb" < text);
}

}  // namespace
