#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <string>

namespace {

using UrlTesting::Bytes;
using UrlTesting::ForEachText;
using UrlTesting::GetUrlParm;
using UrlTesting::Text;

std::string AddUrlParm(const std::string& iUrl, const std::string& iName, const std::string& iValue) {
    BexUnicodeString url = Text(iUrl);
    QorWflUrlUtil::AddUrlParm(url, Text(iName), Text(iValue));
    return Bytes(url);
}

TEST(GetUrlParm, GivesTheDecodedValueOfTheFirstParameterOfThatName) {
    const struct {
        const char* url;
        const char* name;
        const char* value;
    } cases[] = {
        {"u?a=1&ab=2", "a", "1"},
        {"u?a=1&ab=2", "ab", "2"},
        {"u?a=1&ab=2", "b", ""},
        {"u?ab=2&a=1", "a", "1"},
        {"u?a=1&a=2", "a", "1"},
        {"u?a=&a=2", "a", ""},
        {"u?A=1", "a", ""},
        {"u?a=x+y%2Fz", "a", "x y/z"},
        {"u?a=1=2", "a", "1=2"},
        {"u?a", "a", ""},
        {"u?a&a=1", "a", "1"},
        {"u?=1", "", "1"},
        {"u?a=1&=2", "", "2"},
        {"u?&&&a=1", "a", "1"},
        {"u?b=a=1", "a", ""},
        {"u?b=1;a=2", "a", ""},
        {"u?b=%26a=2", "a", ""},
        {"u?%61=1", "a", ""},
        {"u?%61=1", "%61", "1"},
        {"u?a=1&", "b", ""},
        {"u?a=1&b", "b", ""},
        {"u?a=1&b=", "b", ""},
        {"?a=1", "a", "1"},
        {"u?a=b=1", "a=b", "1"},
        {"u?a&b=1", "a&b", "1"},
        // the query begins at the first question mark
        {"u?a=1?b=2", "a", "1?b=2"},
        {"u?a=1?b=2", "b", ""},
        {"u??a=1", "a", ""},
        {"u??a=1", "?a", "1"},
        {"u/x?y/a?b=1", "b", ""},
        // no query
        {"", "a", ""},
        {"?", "a", ""},
        {"u?", "a", ""},
        {"u?", "", ""},
        {"u", "u", ""},
        {"a=1", "a", ""},
        {"u&a=1", "a", ""},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(GetUrlParm(entry.url, entry.name), entry.value) << entry.url << " " << entry.name;
        EXPECT_EQ(NaiveUrl::GetUrlParm(entry.url, entry.name), entry.value) << entry.url << " " << entry.name;
    }
}

TEST(GetUrlParm, NullTextsFindNothing) {
    const BexUnicodeString null;
    EXPECT_TRUE(QorWflUrlUtil::GetUrlParm(null, "a").IsEmpty());
    EXPECT_TRUE(QorWflUrlUtil::GetUrlParm(null, null).IsEmpty());
    EXPECT_TRUE(QorWflUrlUtil::GetUrlParm("u?a=1", null).IsEmpty());
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm("u?=1", null), BexUnicodeString("1"));
}

TEST(GetUrlParm, NoValueAndAnEmptyOneAreEmptyAndNotNull) {
    for (const char* url : {"", "u", "u?", "u?b=1", "u?b=1&", "u?a=", "u?a=&b=1", "u?a=%zz"}) {
        EXPECT_FALSE(QorWflUrlUtil::GetUrlParm(url, "a").IsNull()) << url;
    }
}

TEST(GetUrlParm, AgreesWithTheNaiveVersionOverAllShortTexts) {
    for (const std::string name : {"a", "ab", "", "a=", "b"}) {
        ForEachText({"?", "&", "=", "a", "b", "%", "+"}, 6, [&name](const std::string& iText) {
            ASSERT_EQ(GetUrlParm(iText, name), NaiveUrl::GetUrlParm(iText, name)) << iText << " " << name;
        });
    }
}

TEST(GetUrlParm, WideNamesAndValuesAreComparedAsTheyStand) {
    const BexUnicodeString url(u"u?\u0161=1&a=2&\u0126a=\u20AC%41", 17);
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, BexUnicodeString(u"\u0161", 1)), BexUnicodeString("1"));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, "a"), BexUnicodeString("2")) << "U+0161 is no letter a";
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, BexUnicodeString(u"\u0126a", 2)), BexUnicodeString(u"\u20ACA", 2));
}

TEST(GetUrlParm, ManyParametersTakeLinearTime) {
    std::string url = "u?";
    for (int i = 0; i < 300000; ++i) {
        url += "a=1&";
    }
    EXPECT_EQ(GetUrlParm(url + "b=2", "b"), "2");
    EXPECT_EQ(GetUrlParm(url + "b=2", "c"), "");
}

TEST(GetUrlParm, TracesWhatItFindsIfAnything) {
    const struct {
        const char* url;
        const char* name;
        const char* found;  ///< null: nothing is
    } cases[] = {
        {"u?a=1&a=2", "a", "1"},    {"u?b=a=1&a=2?a=3", "a", "2?a=3"},
        {"u?a=&b=1", "a", ""},      {"u?=&b=1", "", ""},
        {"u?ab=1&&a=2&", "a", "2"}, {"u?a=1&b=2", "b", "2"},
        {"?a=b=c", "a", "b=c"},     {"u?a=x+y%2Fz&b=1", "a", "x y/z"},
        {"u?ab=1", "a", nullptr},   {"u?a", "a", nullptr},
        {"u?b=1", "a", nullptr},    {"u?A=1&", "a", nullptr},
        {"u?", "", nullptr},        {"u", "", nullptr},
        {"a=1", "a", nullptr},      {"", "", nullptr},
    };
    for (const auto& entry : cases) {
        const CapturedTrace trace("WFInteropUrl");
        EXPECT_EQ(GetUrlParm(entry.url, entry.name), entry.found == nullptr ? "" : entry.found) << entry.url;
        EXPECT_EQ(trace.Text(),
                  ">> QorWflUrlUtil::GetUrlParm\n"
                  "  Input url is [" +
                      std::string(entry.url) + "]\n  Search for [" + entry.name + "]\n" +
                      (entry.found == nullptr ? "" : "  Found [" + std::string(entry.found) + "]\n") +
                      "<< QorWflUrlUtil::GetUrlParm\n");
    }
}

TEST(GetUrlParm, LinesOfAnyLengthAreTracedWhole) {
    for (const std::size_t length : {1000U, 1008U, 1009U, 1010U, 1022U, 1023U, 1024U, 1025U, 2048U, 100'000U}) {
        const std::string value(length, 'v');
        const CapturedTrace trace("WFInteropUrl");
        EXPECT_EQ(GetUrlParm("u?a=" + value, "a"), value);
        EXPECT_EQ(trace.Text(),
                  ">> QorWflUrlUtil::GetUrlParm\n"
                  "  Input url is [u?a=" +
                      value + "]\n  Search for [a]\n  Found [" + value + "]\n<< QorWflUrlUtil::GetUrlParm\n");
    }
}

TEST(GetUrlParm, EveryByteOfAValueIsGivenBackAndEveryByteOfANameIsCompared) {
    for (int code = 0; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        const std::string url = "u?" + byte + "x=1&x" + byte + "=2&v=3" + byte + "4";
        for (const std::string& name : {byte + "x", "x" + byte, byte, std::string("v"), std::string("x")}) {
            EXPECT_EQ(GetUrlParm(url, name), NaiveUrl::GetUrlParm(url, name)) << code;
        }
    }
}

TEST(AddUrlParm, AppendsBehindAQuestionMarkOrAnAmpersand) {
    const struct {
        const char* url;
        const char* name;
        const char* value;
        const char* result;
    } cases[] = {
        {"u", "a", "1", "u?a=1"},
        {"u?a=1", "b", "2", "u?a=1&b=2"},
        {"u?a=1", "a", "2", "u?a=1&a=2"},
        {"u?", "a", "1", "u?&a=1"},
        {"?", "a", "1", "?&a=1"},
        {"", "a", "1", "?a=1"},
        {"u", "a", "", "u?a="},
        {"u", "", "1", "u?=1"},
        {"u", "a b/c%", "x", "u?a b/c%=x"},
        {"u", "a", "x y/z+?&=", "u?a=x+y%2Fz%2B%3F%26%3D"},
        {"u&v", "a", "1", "u&v?a=1"},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(AddUrlParm(entry.url, entry.name, entry.value), entry.result);
    }
}

TEST(AddUrlParm, NullTextsAreAddedAsEmptyOnes) {
    BexUnicodeString url;
    QorWflUrlUtil::AddUrlParm(url, BexUnicodeString(), BexUnicodeString());
    EXPECT_EQ(url, BexUnicodeString("?="));
}

TEST(AddUrlParm, SameNameTwiceLeavesTwoAndTheFirstIsRead) {
    const std::string url = AddUrlParm(AddUrlParm("u", "a", "first"), "a", "second");
    EXPECT_EQ(url, "u?a=first&a=second");
    EXPECT_EQ(GetUrlParm(url, "a"), "first");
}

TEST(AddUrlParm, EveryValueIsReadBack) {
    for (int code = 0; code < 256; ++code) {
        const std::string value(1, static_cast<char>(code));
        EXPECT_EQ(GetUrlParm(AddUrlParm("u?x=1", "a", value), "a"), value) << code;
        EXPECT_EQ(GetUrlParm(AddUrlParm("u", "a", value + "/" + value), "a"), value + "/" + value) << code;
    }
    ForEachText({"?", "&", "=", "a", "%", "+", " ", "4"}, 4,
                [](const std::string& iValue) { ASSERT_EQ(GetUrlParm(AddUrlParm("u", "a", iValue), "a"), iValue); });
}

TEST(AddUrlParm, NameIsWrittenAsItStandsAndSoMayNotBeFoundAgain) {
    EXPECT_EQ(AddUrlParm("u", "a&b", "x&y"), "u?a&b=x%26y");
    EXPECT_EQ(GetUrlParm("u?a&b=x%26y", "b"), "x&y") << "the ampersand begins another parameter";
    EXPECT_EQ(GetUrlParm("u?a&b=x%26y", "a&b"), "x&y");
    EXPECT_EQ(AddUrlParm("u", "?", "1"), "u?\?=1");
    EXPECT_EQ(AddUrlParm(AddUrlParm("u", "?", "1"), "a", "2"), "u?\?=1&a=2");
    const BexUnicodeString wide(u"\u20AC", 1);
    BexUnicodeString url = "u";
    QorWflUrlUtil::AddUrlParm(url, wide, "1");
    EXPECT_EQ(url, BexUnicodeString(u"u?\u20AC=1", 5));
}

TEST(AddUrlParm, UrlMayBeItsOwnNameAndValue) {
    BexUnicodeString url = "u";
    QorWflUrlUtil::AddUrlParm(url, url, url);
    EXPECT_EQ(url, BexUnicodeString("u?u=u"));
    QorWflUrlUtil::AddUrlParm(url, "n", url);
    EXPECT_EQ(url, BexUnicodeString("u?u=u&n=u%3Fu%3Du"));
}

TEST(AddUrlParm, MarkAnywhereInTheUrlCountsAsAQuery) {
    EXPECT_EQ(AddUrlParm("u?x/y", "a", "1"), "u?x/y&a=1");
    EXPECT_EQ(AddUrlParm("%3F", "a", "1"), "%3F?a=1");
    BexUnicodeString url(u"u\u013F", 2);  // a question mark in its low byte only
    QorWflUrlUtil::AddUrlParm(url, "a", "1");
    EXPECT_EQ(url, BexUnicodeString(u"u\u013F?a=1", 6));
}

TEST(AddUrlParm, TracesTheNewUrl) {
    const CapturedTrace trace("WFInteropUrl");
    AddUrlParm("", "", "");
    AddUrlParm("u?", "a b", "c d?");
    EXPECT_EQ(trace.Text(),
              ">> QorWflUrlUtil::AddUrlParm\n"
              "  url set to [?=]\n"
              "<< QorWflUrlUtil::AddUrlParm\n"
              ">> QorWflUrlUtil::AddUrlParm\n"
              "  url set to [u?&a b=c+d%3F]\n"
              "<< QorWflUrlUtil::AddUrlParm\n");
}

}  // namespace
