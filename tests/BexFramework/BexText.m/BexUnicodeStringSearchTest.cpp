// Searching, replacing and stripping, compared with naive references over all short texts of a small alphabet.

#include "TextTesting.h"

#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <string>
#include <string_view>
#include <vector>

namespace {

// A letter, the letter that stands for what narrow text cannot hold, and a wide unit with the low byte of the first:
// whoever compares after narrowing, or only low bytes, confuses two of them.
constexpr std::u16string_view kConfusing = u"a?\u0161";

int NaiveSearch(const std::u16string& iText, const std::u16string& iPart, int iFrom, int iMode) {
    int found = -1;
    if (iPart.empty() || (iMode != 1 && iMode != 2)) {
        return found;
    }
    for (std::size_t pos = static_cast<std::size_t>(std::max(iFrom, 0)); pos + iPart.size() <= iText.size(); ++pos) {
        bool same = true;
        for (std::size_t unit = 0; unit < iPart.size(); ++unit) {
            same = same && iText[pos + unit] == iPart[unit];
        }
        if (same && (found == -1 || iMode == 2)) {
            found = static_cast<int>(pos);
        }
    }
    return found;
}

std::u16string NaiveStrip(const std::u16string& iText, int iMode, char16_t iUnit) {
    std::u16string left;
    for (std::size_t pos = 0; pos < iText.size(); ++pos) {
        const auto isUnit = [iUnit](char16_t iOther) { return iOther == iUnit; };
        const auto here = iText.begin() + static_cast<std::ptrdiff_t>(pos);
        const bool leading = std::all_of(iText.begin(), here + 1, isUnit);
        const bool trailing = std::all_of(here, iText.end(), isUnit);
        const bool removed = (iMode == 1 && leading) || (iMode == 2 && trailing) ||
                             (iMode == 3 && (leading || trailing)) || (iMode == 4 && iText[pos] == iUnit);
        if (!removed) {
            left += iText[pos];
        }
    }
    return left;
}

void CompareSearches(std::u16string_view iAlphabet, std::size_t iTextLength, std::size_t iPartLength) {
    for (const std::u16string& units : TextsOf(iAlphabet, iTextLength)) {
        const BexUnicodeString text = Units(units);
        for (const std::u16string& partUnits : TextsOf(iAlphabet, iPartLength)) {
            const BexUnicodeString part = Units(partUnits);
            for (int from = -1; from <= static_cast<int>(units.size()) + 1; ++from) {
                for (int mode = 0; mode <= 3; ++mode) {
                    ASSERT_EQ(text.SearchSubString(part, from, mode), NaiveSearch(units, partUnits, from, mode))
                        << text << " " << part << " " << from << " " << mode;
                }
            }
        }
    }
}

TEST(BexUnicodeStringSearch, AgreesWithTheReferenceOnAllShortNarrowTexts) {
    CompareSearches(u"ab", 7, 4);
}

TEST(BexUnicodeStringSearch, AgreesWithTheReferenceOnAllShortMixedTexts) {
    CompareSearches(kConfusing, 5, 3);
}

TEST(BexUnicodeStringSearch, AgreesWithTheReferenceOnAllShortWideTexts) {
    CompareSearches(u"\u0161\u0261", 6, 3);
}

TEST(BexUnicodeStringSearch, BeginsAtZeroAndFindsTheFirstUnlessToldOtherwise) {
    const BexUnicodeString text("abcabcabc");
    EXPECT_EQ(text.SearchSubString("bc"), 1);
    EXPECT_EQ(text.SearchSubString("bc", 2), 4);
    EXPECT_EQ(text.SearchSubString("bc", 2, 2), 7);
    EXPECT_EQ(text.SearchSubString("bc", 8, 2), -1);
}

TEST(BexUnicodeStringSearch, StartOutOfBoundsFindsAsFromTheNearerEnd) {
    const BexUnicodeString text("abcabc");
    EXPECT_EQ(text.SearchSubString("abc", INT_MIN), 0);
    EXPECT_EQ(text.SearchSubString("abc", INT_MIN, 2), 3);
    EXPECT_EQ(text.SearchSubString("abc", INT_MAX), -1);
    EXPECT_EQ(text.SearchSubString("abc", INT_MAX, 2), -1);
    EXPECT_EQ(text.SearchSubString("c", 6), -1);
}

TEST(BexUnicodeStringSearch, ModeThatDoesNotExistFindsNothing) {
    const BexUnicodeString text("abc");
    for (const int mode : {INT_MIN, -1, 0, 3, INT_MAX}) {
        EXPECT_EQ(text.SearchSubString("b", 0, mode), -1) << mode;
    }
}

TEST(BexUnicodeStringSearch, EmptyAndNullAreNeverFoundAndHoldNothing) {
    const BexUnicodeString null;
    const BexUnicodeString empty("");
    for (const int mode : {1, 2}) {
        for (const BexUnicodeString& text : {BexUnicodeString("abc"), Units(u"\u0161"), empty, null}) {
            EXPECT_EQ(text.SearchSubString(empty, 0, mode), -1);
            EXPECT_EQ(text.SearchSubString(null, 0, mode), -1);
            EXPECT_EQ(empty.SearchSubString(text, 0, mode), -1);
            EXPECT_EQ(null.SearchSubString(text, 0, mode), -1);
        }
    }
}

TEST(BexUnicodeStringSearch, FindsItselfAtZero) {
    for (const BexUnicodeString& text : {BexUnicodeString("abc"), Units(u"\u0161"), BexUnicodeString("\0", 1)}) {
        EXPECT_EQ(text.SearchSubString(text), 0);
        EXPECT_EQ(text.SearchSubString(text, 0, 2), 0);
        EXPECT_EQ(text.SearchSubString(text, 1), -1);
    }
}

TEST(BexUnicodeStringSearch, NulIsACodeUnitLikeAnother) {
    const BexUnicodeString text("a\0b\0c", 5);
    EXPECT_EQ(text.SearchSubString(BexUnicodeString("\0", 1)), 1);
    EXPECT_EQ(text.SearchSubString(BexUnicodeString("\0", 1), 0, 2), 3);
    EXPECT_EQ(text.SearchSubString(BexUnicodeString("\0c", 2)), 3);
    EXPECT_EQ(text.SearchSubString("c"), 4);
}

TEST(BexUnicodeStringReplace, AgreesWithTheReferenceOnAllShortTexts) {
    const std::vector<std::u16string> parts = TextsOf(kConfusing, 2);
    for (const std::u16string& units : TextsOf(kConfusing, 4)) {
        for (const std::u16string& oldUnits : parts) {
            for (const std::u16string& newUnits : parts) {
                const int found = NaiveSearch(units, oldUnits, 0, 1);
                std::u16string expected = units;
                if (found >= 0) {
                    expected = units.substr(0, static_cast<std::size_t>(found)) + newUnits +
                               units.substr(static_cast<std::size_t>(found) + oldUnits.size());
                }
                BexUnicodeString text = Units(units);
                ASSERT_EQ(text.ReplaceSubString(Units(oldUnits), Units(newUnits)), found);
                ASSERT_EQ(UnitsOf(text), expected);
                ASSERT_EQ(text.IsNull(), 0);
                ASSERT_EQ(text.IsWide(), HasWideUnit(expected));
            }
        }
    }
}

TEST(BexUnicodeStringReplace, ReplacesTheFirstOccurrenceOnly) {
    BexUnicodeString text("a><b><c");
    EXPECT_EQ(text.ReplaceSubString("><", ">\n<"), 1);
    EXPECT_EQ(UnitsOf(text), u"a>\n<b><c");
    EXPECT_EQ(text.ReplaceSubString("><", ">\n<"), 5);
    EXPECT_EQ(UnitsOf(text), u"a>\n<b>\n<c");
    EXPECT_EQ(text.ReplaceSubString("><", ">\n<"), -1);
    EXPECT_EQ(UnitsOf(text), u"a>\n<b>\n<c");
}

TEST(BexUnicodeStringReplace, WholeTextReplacedByNothingIsEmptyNotNull) {
    for (const BexUnicodeString& nothing : {BexUnicodeString(), BexUnicodeString("")}) {
        for (const BexUnicodeString& kind : {BexUnicodeString("abc"), Units(u"\u0161")}) {
            BexUnicodeString text(kind);
            EXPECT_EQ(text.ReplaceSubString(kind, nothing), 0);
            EXPECT_EQ(text.GetLengthInChar(), 0);
            EXPECT_EQ(text.IsNull(), 0);
        }
    }
}

TEST(BexUnicodeStringReplace, NothingFoundLeavesNullNullAndEmptyEmpty) {
    for (const BexUnicodeString& old : {BexUnicodeString("a"), BexUnicodeString(""), BexUnicodeString()}) {
        BexUnicodeString null;
        EXPECT_EQ(null.ReplaceSubString(old, "new"), -1);
        EXPECT_EQ(null.IsNull(), 1);
        BexUnicodeString empty("");
        EXPECT_EQ(empty.ReplaceSubString(old, "new"), -1);
        EXPECT_EQ(empty.IsNull(), 0);
        EXPECT_EQ(empty.IsEmpty(), 1);
    }
}

TEST(BexUnicodeStringReplace, StringMayBeItsOwnArgument) {
    for (const std::u16string& units : {std::u16string(u"abc"), std::u16string(u"\u0161b"),
                                        std::u16string(u"a text that is longer than fifteen characters")}) {
        BexUnicodeString same = Units(units);
        EXPECT_EQ(same.ReplaceSubString(same, same), 0);
        EXPECT_EQ(UnitsOf(same), units);

        BexUnicodeString replaced = Units(units);
        EXPECT_EQ(replaced.ReplaceSubString(replaced, Units(u"\u0162new")), 0);
        EXPECT_EQ(UnitsOf(replaced), u"\u0162new");

        BexUnicodeString removed = Units(units);
        EXPECT_EQ(removed.ReplaceSubString(removed, ""), 0);
        EXPECT_EQ(UnitsOf(removed), u"");

        BexUnicodeString doubled = Units(units);
        EXPECT_EQ(doubled.ReplaceSubString("b", doubled),
                  static_cast<int>(units.find(u'b')) >= 0 ? static_cast<int>(units.find(u'b')) : -1);
        const std::size_t found = units.find(u'b');
        EXPECT_EQ(UnitsOf(doubled),
                  found == std::u16string::npos ? units : units.substr(0, found) + units + units.substr(found + 1));
    }
    BexUnicodeString null;
    EXPECT_EQ(null.ReplaceSubString(null, null), -1);
    EXPECT_EQ(null.IsNull(), 1);
}

TEST(BexUnicodeStringReplace, TextBecomesWideAndNarrowAgain) {
    BexUnicodeString text("first middle last");
    EXPECT_EQ(text.ReplaceSubString("middle", Units(u"\u0161")), 6);
    EXPECT_TRUE(text.IsWide());
    EXPECT_EQ(UnitsOf(text), u"first \u0161 last");
    EXPECT_EQ(text.ReplaceSubString(Units(u"\u0161"), "\xE9"), 6);
    EXPECT_FALSE(text.IsWide());
    EXPECT_EQ(UnitsOf(text), u"first \u00E9 last");
    EXPECT_STREQ(text.ConvertToChar(), "first \xE9 last");
}

TEST(BexUnicodeStringStrip, AgreesWithTheReferenceOnAllShortTexts) {
    for (const std::u16string& units : TextsOf(kConfusing, 6)) {
        const BexUnicodeString text = Units(units);
        for (const char16_t unit : kConfusing) {
            for (int mode = -1; mode <= 5; ++mode) {
                const std::u16string expected = NaiveStrip(units, mode, unit);
                const BexUnicodeString left = text.Strip(mode, unit);
                ASSERT_EQ(UnitsOf(left), expected) << text << " " << mode;
                ASSERT_EQ(left.IsNull(), 0) << text << " " << mode;
                ASSERT_EQ(left.IsWide(), HasWideUnit(expected)) << text << " " << mode;
            }
        }
        ASSERT_EQ(UnitsOf(text), units);
    }
}

struct StripCase {
    int mode;
    const char* left;
};

TEST(BexUnicodeStringStrip, RemovesWhereTheModeSays) {
    const StripCase cases[] = {
        {1, "a  b  "},    {2, "  a  b"},         {3, "a  b"},           {4, "ab"},
        {0, "  a  b  "},  {5, "  a  b  "},       {-1, "  a  b  "},  // modes that do not exist
        {12, "  a  b  "}, {INT_MAX, "  a  b  "}, {INT_MIN, "  a  b  "},
    };
    for (const StripCase& tried : cases) {
        EXPECT_STREQ(BexUnicodeString("  a  b  ").Strip(tried.mode, ' ').ConvertToChar(), tried.left) << tried.mode;
    }
}

TEST(BexUnicodeStringStrip, RemovesOnlyTheCodeUnitGiven) {
    EXPECT_STREQ(BexUnicodeString(" \ta\t ").Strip(3, ' ').ConvertToChar(), "\ta\t");
    EXPECT_EQ(UnitsOf(Units(u"\u0161a").Strip(4, 'a')), u"\u0161");
    EXPECT_EQ(UnitsOf(Units(u"\u0161a").Strip(4, BexUnicodeChar(char16_t{0x0161}))), u"a");
    EXPECT_EQ(UnitsOf(Units(u"\u0161?").Strip(4, '?')), u"\u0161");
    EXPECT_EQ(UnitsOf(BexUnicodeString("\xFFx\xFF").Strip(3, '\xFF')), u"x");
    EXPECT_EQ(UnitsOf(BexUnicodeString("?").Strip(4, BexUnicodeChar(char16_t{0x0161}))), u"?");
    EXPECT_EQ(UnitsOf(BexUnicodeString("\0a\0b\0", 5).Strip(4, '\0')), u"ab");
    EXPECT_EQ(UnitsOf(BexUnicodeString("\0a\0b\0", 5).Strip(3, '\0')), std::u16string_view(u"a\0b", 3));
}

TEST(BexUnicodeStringStrip, NothingLeftIsEmptyNotNull) {
    for (int mode = 0; mode <= 5; ++mode) {
        for (const BexUnicodeString& text : {BexUnicodeString(), BexUnicodeString("")}) {
            const BexUnicodeString left = text.Strip(mode, ' ');
            EXPECT_EQ(left.GetLengthInChar(), 0) << mode;
            EXPECT_EQ(left.IsNull(), 0) << mode;
        }
    }
    for (int mode = 1; mode <= 4; ++mode) {
        const BexUnicodeString left = BexUnicodeString("    ").Strip(mode, ' ');
        EXPECT_EQ(left.GetLengthInChar(), 0) << mode;
        EXPECT_EQ(left.IsNull(), 0) << mode;
    }
}

TEST(BexUnicodeStringStrip, ResultMayReplaceTheString) {
    BexUnicodeString text("  a text that is longer than fifteen characters  ");
    text = text.Strip(3, ' ');
    EXPECT_STREQ(text.ConvertToChar(), "a text that is longer than fifteen characters");
}

}  // namespace
