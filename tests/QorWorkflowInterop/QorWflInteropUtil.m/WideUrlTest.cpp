#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <optional>
#include <string>

// Characters above U+00FF whose low byte is a delimiter, a digit or a letter of a URL are none of these.

namespace {

using UrlTesting::BytesOf;
using UrlTesting::OwnedUuid;

const std::u16string kLong =
    u"LumenUID://Legacy+QOR1/E/DB++++++#E+++++++#T+++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T?context=x";
const std::u16string kShort = u"qor://DB/E.T/0123456789ABCDEFFEDCBA9876543210?context=x";
const std::string kBlock = UrlTesting::Block("DB", "E", "T");

BexUnicodeString Text(const std::u16string& iUnits) {
    return BexUnicodeString(iUnits.data(), static_cast<int>(iUnits.size()));
}

std::optional<std::string> UrlToUuid(const std::u16string& iUrl) {
    return BytesOf(OwnedUuid(QorWflUrlUtil::UrlToUuid(Text(iUrl))));
}

/** The text with one character replaced by the one 256 above it. */
std::u16string Widened(std::u16string iText, std::size_t iPlace) {
    iText[iPlace] = static_cast<char16_t>(iText[iPlace] + 0x100);
    return iText;
}

TEST(WideUrl, PrefixesAreComparedWithTheWholeCharacters) {
    for (std::size_t place = 0; place < kLong.find(u"E/DB"); ++place) {
        EXPECT_EQ(UrlToUuid(Widened(kLong, place)), std::nullopt) << place;
    }
    for (std::size_t place = 0; place < kShort.find(u"DB"); ++place) {
        EXPECT_EQ(UrlToUuid(Widened(kShort, place)), std::nullopt) << place;
    }
    const struct {
        std::u16string url;
        std::string fixed;  ///< an "x" where the text is fixed
    } actions[] = {
        {u"qor://ACTION/A1", "xxxxxxxxxxxxx  "},
        {u"LumenUID://Legacy+QOR1/e/A1.ACTION", "xxxxxxxxxxxxxxxxxxxxxxx x  xxxxxxx"},
    };
    for (const auto& action : actions) {
        ASSERT_EQ(action.url.size(), action.fixed.size());
        EXPECT_EQ(QorWflUrlUtil::UrlToActionId(Text(action.url)), BexUnicodeString("A1"));
        for (std::size_t place = 0; place < action.fixed.size(); ++place) {
            const BexUnicodeString id = QorWflUrlUtil::UrlToActionId(Text(Widened(action.url, place)));
            EXPECT_EQ(id.IsEmpty() != 0, action.fixed[place] == 'x') << place;
        }
    }
}

TEST(WideUrl, DelimitersOfTheKeyAreWholeCharacters) {
    ASSERT_EQ(UrlToUuid(kLong), kBlock);
    const std::size_t key = kLong.find(u"DB");
    for (const std::size_t place : {8U, 17U, 36U, 53U, 70U}) {
        const CapturedTrace trace("WFInteropUrl");
        EXPECT_EQ(UrlToUuid(Widened(kLong, key + place)), std::nullopt) << place;
        EXPECT_EQ(trace.Messages().back(), "Delimiters not placed correctly") << place;
    }
    const CapturedTrace trace("WFInteropUrl");
    EXPECT_EQ(UrlToUuid(Widened(kLong, key - 1)), std::nullopt);
    EXPECT_EQ(trace.Messages().back(), "No / found after environment");
}

TEST(WideUrl, WidePlusSignIsNoPadding) {
    const std::size_t key = kLong.find(u"DB");
    EXPECT_EQ(UrlToUuid(Widened(kLong, key + 7)), UrlTesting::Block("DB+++++?", "E", "T"));
    EXPECT_EQ(UrlToUuid(Widened(kLong, key + 35)), UrlTesting::Block("DB", "E", "T++++++++++++++++?"));
    EXPECT_EQ(UrlToUuid(Widened(kLong, key + 16)), std::nullopt) << "the environment is another then";
}

TEST(WideUrl, DelimitersOfTheShortFormAreWholeCharacters) {
    ASSERT_EQ(UrlToUuid(kShort), kBlock);
    for (const char16_t delimiter : {u'.', u'?'}) {
        EXPECT_EQ(UrlToUuid(Widened(kShort, kShort.find(delimiter))), std::nullopt) << static_cast<int>(delimiter);
    }
    EXPECT_EQ(UrlToUuid(Widened(kShort, kShort.find(u"/E"))), std::nullopt);
    EXPECT_EQ(UrlToUuid(Widened(kShort, kShort.find(u"/0"))), std::nullopt);
}

TEST(WideUrl, WideNameIsInNoNarrowUrl) {
    const BexUnicodeString value = QorWflUrlUtil::GetUrlParm("u?\xAC=1", Text(u"\u20AC"));
    EXPECT_EQ(value, "");
    EXPECT_FALSE(value.IsNull());
}

TEST(WideUrl, EscapesAndParametersNeedWholeCharacters) {
    EXPECT_EQ(QorWflUrlUtil::UrlToActionId(Text(u"qor://ACTION/\u012B\u01251+%41")), Text(u"\u012B\u01251 A"));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(Text(u"u\u013Fa=1"), "a"), BexUnicodeString(""));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(Text(u"u?a\u013D1"), "a"), BexUnicodeString(""));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(Text(u"u?b=1\u0126a=2"), "a"), BexUnicodeString(""));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(Text(u"u?b=1\u0126a=2"), "b"), Text(u"1\u0126a=2"));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(Text(u"u?\u0161=1"), "a"), BexUnicodeString(""));
}

TEST(WideUrl, TraceShowsQuestionMarks) {
    const CapturedTrace trace("WFInteropUrl");
    QorWflUrlUtil::GetUrlParm(Text(u"u?\u20AC=\u0141\u00E9"), Text(u"\u20AC"));
    EXPECT_EQ(trace.Text(),
              ">> QorWflUrlUtil::GetUrlParm\n"
              "  Input url is [u?\?=?\xE9]\n"
              "  Search for [?]\n"
              "  Found [?\xE9]\n"
              "<< QorWflUrlUtil::GetUrlParm\n");
}

}  // namespace
