#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <optional>
#include <string>

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Eq;
using testing::Optional;
using UrlTesting::Block;
using UrlTesting::Text;
using UrlTesting::UrlToUuid;

const std::string kDigits = "0123456789ABCDEFFEDCBA9876543210";

TEST(ShortInstanceUrl, ReadsTextsOfAnyLength) {
    const struct {
        std::string url;
        std::string block;
    } cases[] = {
        {"qor://DB/ENV1.KIRVA_MODEL/" + kDigits, Block("DB", "ENV1", "KIRVA_MODEL")},
        {"qor://D/E.T/" + kDigits + "?", Block("D", "E", "T")},
        {"qor://D/E.T/" + kDigits + "?context=a/b.c", Block("D", "E", "T")},
        {"qor://D/E.T/" + kDigits + "?a?b", Block("D", "E", "T")},
        {"qor://D%2FE%2ET%2F" + kDigits, Block("D", "E", "T")},
        {"qor://D%20x/E+y.T%3Fz/" + kDigits, Block("D x", "E y", "T?z")},
        {"qor://D%2Bx/E.T/" + kDigits, Block("D+x", "E", "T")},
        {"qor://D.x/E.T/" + kDigits, Block("D.x", "E", "T")},
        {"qor://D/E.T.U/" + kDigits, Block("D", "E", "T.U")},
        {"qor://D/E/F.T/" + kDigits, Block("D", "E/F", "T")},
        {"qor://D/.T/" + kDigits, Block("D", "", "T")},
        {"qor://D/E./" + kDigits, Block("D", "E", "")},
        {"qor://D/./" + kDigits, Block("D", "", "")},
        {"qor://ACTION/E.T/" + kDigits, Block("ACTION", "E", "T")},
        {"qor://D/E.T/0123456789abcdeffedcba9876543210", Block("D", "E", "T")},
        {"qor://123456789/123456789.1234567890123456789/" + kDigits,
         Block("12345678", "12345678", "123456789012345678")},
    };
    for (const auto& entry : cases) {
        EXPECT_THAT(UrlToUuid(entry.url), Optional(entry.block)) << entry.url;
        EXPECT_THAT(NaiveUrl::UrlToUuid(entry.url), Optional(entry.block)) << entry.url;
    }
}

TEST(ShortInstanceUrl, NonHexadecimalDigitsAreNotDetected) {
    EXPECT_THAT(UrlToUuid("qor://D/E.T/" + std::string(32, 'z')), Optional(Block("D", "E", "T", "", "")));
}

/** A text that names no instance, with the messages that say how far it was understood. */
struct Rejection {
    std::string url;
    std::vector<std::string> messages;
};

const Rejection kRejections[] = {
    {"x", {"Found [qor://]"}},
    {"qor:/", {"Found [qor://]"}},
    {"QOR://D/E.T/" + kDigits, {"Found [qor://]"}},
    {"qor:/D/E.T/" + kDigits, {"Found [qor://]"}},
    {" qor://D/E.T/" + kDigits, {"Found [qor://]"}},
    {"LumenUID://Legacy+QOR1", {"Found [qor://]"}},
    {"qor://", {}},
    {"qor://?", {}},
    {"qor://D", {}},
    {"qor://D?/E.T/" + kDigits, {}},
    {"qor:///E.T/" + kDigits, {}},
    {"qor://%2FE.T/" + kDigits, {}},
    {"qor://D/", {"Found [D]"}},
    {"qor://D/E", {"Found [D]"}},
    {"qor://D/E/T/" + kDigits, {"Found [D]"}},
    {"qor://D.x/E", {"Found [D.x]"}},
    {"qor://D/E.", {"Found [D]", "Found [E]"}},
    {"qor://D/E.T", {"Found [D]", "Found [E]"}},
    {"qor://D/E.T" + kDigits, {"Found [D]", "Found [E]"}},
    {"qor://D/E.T/", {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}},
    {"qor://D/E.T/" + kDigits.substr(1), {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}},
    {"qor://D/E.T/" + kDigits + "0", {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}},
    {"qor://D/E.T/" + kDigits.substr(0, 31) + "?0", {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}},
    {"qor://D/E.T/x/" + kDigits, {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}},
    {"qor://DB%20/E+.T/" + kDigits + "%zz%30", {"Found [DB ]", "Found [E ]", "Found [T]", "nPos=9"}},
};

TEST(ShortInstanceUrl, OtherTextsGiveNullAndTraceHowFarTheyWereUnderstood) {
    for (const Rejection& rejection : kRejections) {
        CapturedTrace trace("WFInteropUrl");
        EXPECT_THAT(UrlToUuid(rejection.url), Eq(std::nullopt)) << rejection.url;
        std::vector<std::string> lines = {">> QorWflUrlUtil::UrlToInstance", "Input url is [" + rejection.url + "]"};
        lines.insert(lines.end(), rejection.messages.begin(), rejection.messages.end());
        lines.push_back("<< QorWflUrlUtil::UrlToInstance");
        EXPECT_THAT(trace.Lines(), ElementsAreArray(lines)) << rejection.url;
        EXPECT_THAT(NaiveUrl::UrlToUuid(rejection.url), Eq(std::nullopt)) << rejection.url;
    }
}

TEST(ShortInstanceUrl, EmptyAndNullTextsGiveNullAndTraceNoMore) {
    for (const BexUnicodeString& url : {BexUnicodeString(""), BexUnicodeString()}) {
        CapturedTrace trace("WFInteropUrl");
        EXPECT_EQ(UrlTesting::OwnedUuid(QorWflUrlUtil::UrlToUuid(url)), nullptr);
        EXPECT_THAT(trace.Lines(), ElementsAre(">> QorWflUrlUtil::UrlToInstance", "Input url is []",
                                               "<< QorWflUrlUtil::UrlToInstance"));
    }
}

TEST(ShortInstanceUrl, TracesEveryField) {
    CapturedTrace trace("WFInteropUrl");
    EXPECT_TRUE(UrlToUuid("qor://DB/ENV1.TAB/" + kDigits).has_value());
    EXPECT_THAT(trace.Lines(),
                ElementsAre(">> QorWflUrlUtil::UrlToInstance", "Input url is [qor://DB/ENV1.TAB/" + kDigits + "]",
                            "Found [DB]", "Found [ENV1]", "Found [TAB]", "nPos=12", "Found [0123456789ABCDEF]",
                            "Found [FEDCBA9876543210]", "<< QorWflUrlUtil::UrlToInstance"));
}

TEST(ShortInstanceUrl, AgreesWithTheNaiveVersionOverAllShortTexts) {
    for (const std::string prefix : {"qor://", "qor:/", ""}) {
        UrlTesting::ForEachText({"/", ".", "?", "%", "2F", "+", "D", kDigits}, 6, [&prefix](const std::string& iText) {
            ASSERT_EQ(UrlToUuid(prefix + iText), NaiveUrl::UrlToUuid(prefix + iText)) << prefix + iText;
        });
    }
}

}  // namespace
