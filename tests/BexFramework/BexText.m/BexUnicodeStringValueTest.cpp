// How strings come into being, are copied, moved and reset, and how they convert to and from narrow text.

#include "TextTesting.h"

#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <GlobalLocale.h>
#include <RunOnThreads.h>
#include <algorithm>
#include <climits>
#include <locale>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

std::string NarrowOf(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

void ExpectNull(const BexUnicodeString& iText) {
    EXPECT_EQ(iText.IsNull(), 1);
    EXPECT_EQ(iText.IsEmpty(), 1);
    EXPECT_EQ(iText.GetLengthInChar(), 0);
    EXPECT_STREQ(iText.ConvertToChar(), "");
    EXPECT_FALSE(iText.IsWide());
}

void ExpectEmptyNotNull(const BexUnicodeString& iText) {
    EXPECT_EQ(iText.IsNull(), 0);
    EXPECT_EQ(iText.IsEmpty(), 1);
    EXPECT_EQ(iText.GetLengthInChar(), 0);
    EXPECT_STREQ(iText.ConvertToChar(), "");
    EXPECT_FALSE(iText.IsWide());
}

void ExpectUnits(const BexUnicodeString& iText, std::u16string_view iUnits) {
    EXPECT_EQ(UnitsOf(iText), iUnits);
    EXPECT_EQ(iText.IsNull(), 0);
    EXPECT_EQ(iText.IsEmpty(), iUnits.empty() ? 1 : 0);
}

TEST(BexUnicodeStringValue, DefaultIsNull) {
    ExpectNull(BexUnicodeString());
}

TEST(BexUnicodeStringValue, NullPointerGivesNullAndEmptyTextGivesEmpty) {
    ExpectNull(BexUnicodeString(static_cast<const char*>(nullptr)));
    ExpectEmptyNotNull(BexUnicodeString(""));
}

TEST(BexUnicodeStringValue, NullPointerWithALengthIsNoText) {
    for (const int length : {INT_MIN, -1, 0, 1, INT_MAX}) {
        ExpectEmptyNotNull(BexUnicodeString(static_cast<const char*>(nullptr), length));
        ExpectEmptyNotNull(BexUnicodeString(static_cast<const char16_t*>(nullptr), length));
    }
}

TEST(BexUnicodeStringValue, LengthBelowOneGivesEmpty) {
    for (const int length : {INT_MIN, -1, 0}) {
        ExpectEmptyNotNull(BexUnicodeString("text", length));
        ExpectEmptyNotNull(BexUnicodeString(u"\u0161text", length));
    }
}

TEST(BexUnicodeStringValue, TakesExactlyTheLengthGivenNulBytesIncluded) {
    ExpectUnits(BexUnicodeString("a\0b\0", 4), std::u16string_view(u"a\0b\0", 4));
    ExpectUnits(BexUnicodeString("\0", 1), std::u16string_view(u"\0", 1));
    ExpectUnits(BexUnicodeString("abcdef", 3), u"abc");
    ExpectUnits(BexUnicodeString(u"a\0b\u0161", 4), std::u16string_view(u"a\0b\u0161", 4));
    ExpectUnits(BexUnicodeString(u"\u0161\u0162\u0163", 2), u"\u0161\u0162");
    const char unterminated[] = {'x', 'y'};
    ExpectUnits(BexUnicodeString(unterminated, 2), u"xy");
}

TEST(BexUnicodeStringValue, TextEndsAtTheFirstNulWithoutALength) {
    ExpectUnits(BexUnicodeString("ab\0cd"), u"ab");
}

TEST(BexUnicodeStringValue, NulInsideStaysInTheNarrowText) {
    EXPECT_EQ(NarrowOf(BexUnicodeString("a\0b", 3)), std::string("a\0b", 3));
    EXPECT_EQ(NarrowOf(Units(std::u16string_view(u"\0\u0161\0", 3))), std::string("\0?\0", 3));
}

TEST(BexUnicodeStringValue, EveryByteIsTheCodeUnitOfTheSameValueAndComesBack) {
    std::string all;
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const char narrow = static_cast<char>(byte);
        const BexUnicodeString one(&narrow, 1);
        ASSERT_EQ(one.GetLengthInChar(), 1) << byte;
        ASSERT_EQ(static_cast<unsigned>(one[0].Code()), byte);
        ASSERT_EQ(NarrowOf(one), std::string(1, narrow)) << byte;
        ASSERT_FALSE(one.IsWide()) << byte;
        ASSERT_EQ(one, Units(std::u16string(1, static_cast<char16_t>(byte)))) << byte;
        all += narrow;
    }
    const BexUnicodeString text(all.data(), 256);
    EXPECT_EQ(NarrowOf(text), all);
    for (int pos = 0; pos < 256; ++pos) {
        EXPECT_EQ(static_cast<int>(text[pos].Code()), pos);
    }
}

TEST(BexUnicodeStringValue, EveryByteBesideAWideUnitIsKept) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const char16_t unit = static_cast<char16_t>(byte);
        const char narrow = static_cast<char>(byte);
        const BexUnicodeString text = Units(std::u16string{unit, 0x0161, unit});
        ASSERT_EQ(UnitsOf(text), (std::u16string{unit, 0x0161, unit})) << byte;
        ASSERT_EQ(NarrowOf(text), (std::string{narrow, '?', narrow})) << byte;
    }
}

TEST(BexUnicodeStringValue, EveryUnitAboveFFBecomesAQuestionMarkInNarrowText) {
    for (unsigned code = 0x100; code <= 0xFFFF; ++code) {
        const BexUnicodeString text = Units(std::u16string(1, static_cast<char16_t>(code)));
        ASSERT_STREQ(text.ConvertToChar(), "?") << code;
        ASSERT_EQ(static_cast<unsigned>(text[0].Code()), code);
        ASSERT_TRUE(text.IsWide()) << code;
    }
}

TEST(BexUnicodeStringValue, WideUnitInEveryPositionIsKeptAndBecomesAQuestionMark) {
    constexpr int kLength = 40;  // longer than what fits inside the object
    for (int length = 1; length <= kLength; ++length) {
        for (int wideAt = 0; wideAt < length; ++wideAt) {
            std::u16string units(static_cast<std::size_t>(length), u'\xE9');
            std::string narrow(static_cast<std::size_t>(length), '\xE9');
            units[static_cast<std::size_t>(wideAt)] = 0x0161;
            narrow[static_cast<std::size_t>(wideAt)] = '?';
            const BexUnicodeString text = Units(units);
            ASSERT_EQ(UnitsOf(text), units) << length << " " << wideAt;
            ASSERT_EQ(NarrowOf(text), narrow) << length << " " << wideAt;
        }
    }
}

TEST(BexUnicodeStringValue, SurrogatePairIsTwoCodeUnits) {
    const BexUnicodeString text = Units(u"\U0001F600");
    EXPECT_EQ(text.GetLengthInChar(), 2);
    EXPECT_EQ(text[0].Code(), 0xD83D);
    EXPECT_EQ(text[1].Code(), 0xDE00);
    EXPECT_STREQ(text.ConvertToChar(), "??");
}

TEST(BexUnicodeStringValue, NarrowTextDoesNotDependOnTheLocale) {
    const std::vector<std::locale> utf8 = InstalledLocales({"C.UTF-8"});
    if (utf8.empty()) {
        GTEST_SKIP() << "no UTF-8 locale installed";
    }
    const GlobalLocale locale(utf8.front());
    const BexUnicodeString text("\xC3\xA9\xFF");
    ExpectUnits(text, u"\u00C3\u00A9\u00FF");
    EXPECT_STREQ(text.ConvertToChar(), "\xC3\xA9\xFF");
    EXPECT_STREQ(Units(u"\u00E9\u20AC").ConvertToChar(), "\xE9?");
}

TEST(BexUnicodeStringValue, NarrowTextIsTerminated) {
    for (const std::size_t length : {0U, 1U, 15U, 16U, 17U, 255U, 4096U}) {
        const std::string narrow(length, 'x');
        EXPECT_EQ(std::string(BexUnicodeString(narrow.c_str()).ConvertToChar()), narrow);
        std::string marked = narrow + '?';
        const std::u16string units = std::u16string(length, u'x') + u'\u0161';
        EXPECT_EQ(std::string(Units(units).ConvertToChar()), marked);
    }
}

TEST(BexUnicodeStringValue, NarrowTextStaysValidWhileTheStringIsOnlyRead) {
    for (const BexUnicodeString& text : {BexUnicodeString("plain text of some length"), Units(u"\u0161 and wide text"),
                                         BexUnicodeString(""), BexUnicodeString()}) {
        const char* const first = text.ConvertToChar();
        const std::string before = first;
        (void)text.ConvertToChar();
        (void)text.SubString(1, 3);
        (void)text.Strip(4, 'a');
        (void)text.SearchSubString("a");
        const BexUnicodeString copy(text);
        EXPECT_EQ(before, first);
        EXPECT_EQ(before, copy.ConvertToChar());
    }
}

TEST(BexUnicodeStringValue, SeveralThreadsMayConvertOneStringThatNobodyChanges) {
    for (int round = 0; round < 100; ++round) {
        const BexUnicodeString text = Units(u"\u0161 is no narrow character, \u00E9 is one");
        const auto results = ResultsOfThreads<std::string>([&text] { return text.ConvertToChar(); });
        for (const std::string& result : results) {
            ASSERT_EQ(result, "? is no narrow character, \xE9 is one");
        }
    }
}

TEST(BexUnicodeStringValue, NarrowTextFollowsEveryChange) {
    BexUnicodeString text = Units(u"\u0161");
    EXPECT_STREQ(text.ConvertToChar(), "?");
    text.Append("a");
    EXPECT_STREQ(text.ConvertToChar(), "?a");
    text.Append(BexUnicodeChar(char16_t{0x0162}));
    EXPECT_STREQ(text.ConvertToChar(), "?a?");
    text.ReplaceSubString(Units(u"\u0161"), "longer than before");
    EXPECT_STREQ(text.ConvertToChar(), "longer than beforea?");
    text.ReplaceSubString(Units(u"\u0162"), "");
    EXPECT_STREQ(text.ConvertToChar(), "longer than beforea");
    text = Units(u"\u0161\u0162");
    EXPECT_STREQ(text.ConvertToChar(), "??");
    text.Reset();
    EXPECT_STREQ(text.ConvertToChar(), "");
    text.BuildFromNum(12, "%d");
    EXPECT_STREQ(text.ConvertToChar(), "12");
}

TEST(BexUnicodeStringValue, CopyIsEqualAndIndependent) {
    for (const std::u16string_view units :
         {u"abc", u"a text that is longer than fifteen characters", u"\u0161b", u""}) {
        BexUnicodeString source = Units(units);
        (void)source.ConvertToChar();
        BexUnicodeString copy(source);
        BexUnicodeString assigned("former text");
        assigned = source;
        source.Append("!");
        ExpectUnits(copy, units);
        ExpectUnits(assigned, units);
        copy.Reset();
        ExpectUnits(assigned, units);
        ExpectUnits(source, std::u16string(units) + u"!");
    }
}

TEST(BexUnicodeStringValue, CopyOfNullIsNullAndOfEmptyIsEmpty) {
    const BexUnicodeString null;
    const BexUnicodeString empty("");
    ExpectNull(BexUnicodeString(null));
    ExpectEmptyNotNull(BexUnicodeString(empty));
    for (const BexUnicodeString& former : {BexUnicodeString("x"), Units(u"\u0161"), empty, null}) {
        BexUnicodeString target(former);
        target = null;
        ExpectNull(target);
        target = former;
        target = empty;
        ExpectEmptyNotNull(target);
    }
}

TEST(BexUnicodeStringValue, AssignmentReplacesEveryKindByEveryKind) {
    const std::vector<std::u16string> kinds = {u"", u"short", u"narrow and longer than fifteen characters", u"\u0161",
                                               u"wide \u0161 and longer than fifteen characters"};
    for (const std::u16string& from : kinds) {
        for (const std::u16string& to : kinds) {
            BexUnicodeString target = Units(to);
            (void)target.ConvertToChar();
            target = Units(from);
            ExpectUnits(target, from);
            const BexUnicodeString source = Units(to);
            target = source;
            ExpectUnits(target, to);
            EXPECT_EQ(target, source);
            EXPECT_STREQ(target.ConvertToChar(), source.ConvertToChar());
        }
    }
}

TEST(BexUnicodeStringValue, NarrowTextIsAssignedLikeTheConstructorTakesIt) {
    BexUnicodeString text = Units(u"\u0161");
    text = "narrow";
    ExpectUnits(text, u"narrow");
    text = "";
    ExpectEmptyNotNull(text);
    text = static_cast<const char*>(nullptr);
    ExpectNull(text);
}

TEST(BexUnicodeStringValue, MovedFromStringIsNull) {
    for (const std::u16string_view units :
         {u"abc", u"a text that is longer than fifteen characters", u"\u0161b", u""}) {
        BexUnicodeString source = Units(units);
        BexUnicodeString moved(std::move(source));
        ExpectUnits(moved, units);
        ExpectNull(source);  // NOLINT(bugprone-use-after-move): the state is part of the contract
        BexUnicodeString assigned("former text");
        assigned = std::move(moved);
        ExpectUnits(assigned, units);
        ExpectNull(moved);  // NOLINT(bugprone-use-after-move)
        moved.Append("again");
        ExpectUnits(moved, u"again");
    }
}

TEST(BexUnicodeStringValue, MoveOfNullGivesNull) {
    BexUnicodeString source;
    BexUnicodeString moved(std::move(source));
    ExpectNull(moved);
    BexUnicodeString assigned("former text");
    assigned = std::move(moved);
    ExpectNull(assigned);
    ExpectNull(moved);  // NOLINT(bugprone-use-after-move)
}

TEST(BexUnicodeStringValue, AssignmentToItselfKeepsTheText) {
    for (const BexUnicodeString& kind : {BexUnicodeString("abc"), Units(u"\u0161b"), BexUnicodeString("")}) {
        BexUnicodeString text(kind);
        const BexUnicodeString& itself = text;
        text = itself;
        ExpectUnits(text, UnitsOf(kind));
    }
    BexUnicodeString null;
    const BexUnicodeString& itself = null;
    null = itself;
    ExpectNull(null);
}

TEST(BexUnicodeStringValue, MoveToItselfKeepsTheTextOrLeavesNull) {
    for (const BexUnicodeString& kind : {BexUnicodeString("abc"), Units(u"\u0161b"), BexUnicodeString("")}) {
        BexUnicodeString text(kind);
        BexUnicodeString& itself = text;
        text = std::move(itself);
        if (text.IsNull() != 0) {
            ExpectNull(text);
        } else {
            ExpectUnits(text, UnitsOf(kind));
        }
        text = "usable";
        ExpectUnits(text, u"usable");
    }
}

TEST(BexUnicodeStringValue, SwapExchangesTextAndKind) {
    BexUnicodeString wide = Units(u"\u0161");
    BexUnicodeString null;
    std::swap(wide, null);
    ExpectNull(wide);
    ExpectUnits(null, u"\u0161");
}

TEST(BexUnicodeStringValue, ResetMakesNull) {
    for (const BexUnicodeString& kind :
         {BexUnicodeString("abc"), Units(u"\u0161b"), BexUnicodeString(""), BexUnicodeString()}) {
        BexUnicodeString text(kind);
        (void)text.ConvertToChar();
        text.Reset();
        ExpectNull(text);
        text.Reset();
        ExpectNull(text);
    }
}

TEST(BexUnicodeStringValue, FromNarrowKeepsWhatWasWrittenOfTheRoom) {
    for (const std::size_t room : {0U, 1U, 31U, 32U, 5000U}) {
        for (const std::size_t length : {std::size_t{0}, room / 2, room}) {
            const BexUnicodeString text = BexUnicodeString::FromNarrow(room, [length](char* oText) {
                std::fill_n(oText, length, '\xE4');
                return oText + length;
            });
            EXPECT_EQ(text.NarrowView(), std::string(length, '\xE4')) << room;
            EXPECT_FALSE(text.IsNull()) << room;
        }
    }
}

TEST(BexUnicodeStringValue, FromNarrowTakesEveryByteAndIsNeverNull) {
    std::string all;
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        all += static_cast<char>(byte);
    }
    const BexUnicodeString text = BexUnicodeString::FromNarrow(all);
    EXPECT_EQ(NarrowOf(text), all);
    EXPECT_EQ(text, BexUnicodeString(all.data(), 256));
    ExpectEmptyNotNull(BexUnicodeString::FromNarrow(std::string()));
}

TEST(BexUnicodeStringValue, ViewsShowTheTextOnTheSideItIsKept) {
    const BexUnicodeString narrow("a\xFF\0b", 4);
    EXPECT_FALSE(narrow.IsWide());
    EXPECT_EQ(narrow.NarrowView(), std::string_view("a\xFF\0b", 4));
    EXPECT_TRUE(narrow.WideView().empty());

    const BexUnicodeString wide = Units(std::u16string_view(u"a\0\u0161", 3));
    EXPECT_TRUE(wide.IsWide());
    EXPECT_EQ(wide.WideView(), std::u16string_view(u"a\0\u0161", 3));
    EXPECT_TRUE(wide.NarrowView().empty());

    EXPECT_TRUE(BexUnicodeString().NarrowView().empty());
    EXPECT_TRUE(BexUnicodeString().WideView().empty());
}

TEST(BexUnicodeStringValue, CodeUnitsThatFitAByteAreNotWide) {
    EXPECT_FALSE(Units(u"\u00FF\u0080").IsWide());
    EXPECT_EQ(Units(u"\u00FF\u0080").NarrowView(), "\xFF\x80");
    EXPECT_TRUE(Units(u"\u00FF\u0100").IsWide());
}

}  // namespace
