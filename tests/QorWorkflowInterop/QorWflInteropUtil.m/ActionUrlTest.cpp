#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <random>
#include <string>

namespace {

using testing::ElementsAre;
using UrlTesting::ActionUrl;
using UrlTesting::ForEachText;
using UrlTesting::UrlToActionId;

TEST(ActionUrl, NamesTheActionInTheDefaultEnvironment) {
    EXPECT_EQ(ActionUrl("A1"), "LumenUID://Legacy+QOR1/default/A1.ACTION");
    EXPECT_EQ(ActionUrl(""), "LumenUID://Legacy+QOR1/default/.ACTION");
    EXPECT_EQ(ActionUrl("a b/c+d%e?f.g"), "LumenUID://Legacy+QOR1/default/a+b%2Fc%2Bd%25e%3Ff.g.ACTION");
    EXPECT_EQ(QorWflUrlUtil::ActionUrl(BexUnicodeString()), BexUnicodeString("LumenUID://Legacy+QOR1/default/.ACTION"));
}

TEST(ActionUrl, TracesItsStepOnly) {
    CapturedTrace trace("WFInteropUrl");
    ActionUrl("A1");
    EXPECT_THAT(trace.Lines(), ElementsAre(">> QorWflUrlUtil::ActionUrl", "<< QorWflUrlUtil::ActionUrl"));
}

TEST(UrlToActionId, ReadsBothForms) {
    const struct {
        const char* url;
        const char* id;
    } cases[] = {
        // the short form: everything behind the prefix
        {"qor://ACTION/A1", "A1"},
        {"qor://ACTION/", ""},
        {"qor://ACTION/a+b%2Fc", "a b/c"},
        {"qor://ACTION/A1?context=x%20y", "A1?context=x y"},
        {"qor://ACTION/A1.ACTION", "A1.ACTION"},
        {"qor://ACTION/a/b", "a/b"},
        // the long form
        {"LumenUID://Legacy+QOR1/default/A1.ACTION", "A1"},
        {"LumenUID://Legacy+QOR1/other/A1.ACTION", "A1"},
        {"LumenUID://Legacy+QOR1//A1.ACTION", "A1"},
        {"LumenUID://Legacy+QOR1/a.b/A1.ACTION", "A1"},
        {"LumenUID://Legacy+QOR1/default/.ACTION", ""},
        {"LumenUID://Legacy+QOR1/default/a+b%2Fc.ACTION", "a b/c"},
        {"LumenUID://Legacy+QOR1/default/a.b.c.ACTION", "a.b.c"},
        {"LumenUID://Legacy+QOR1/default/a/b.ACTION", "a/b"},
        {"LumenUID://Legacy+QOR1/default/A1.ACTION.ACTION", "A1.ACTION"},
        {"LumenUID://Legacy+QOR1/default/A1.ACTION?", "A1"},
        {"LumenUID://Legacy+QOR1/default/A1.ACTION?context=x", "A1"},
        {"LumenUID://Legacy+QOR1/default/A1.ACTION?context=x.y/z", "A1"},
        // the path ends at the last question mark
        {"LumenUID://Legacy+QOR1/default/a?b.ACTION?context=x", "a?b"},
        {"LumenUID://Legacy+QOR1/default/a?b.ACTION", ""},
        {"LumenUID://Legacy+QOR1/default/A1.ACTION?a=1?b=2", ""},
        {"LumenUID://Legacy+QOR1/e?f/A1.ACTION?", "A1"},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(UrlToActionId(entry.url), entry.id) << entry.url;
        EXPECT_EQ(NaiveUrl::UrlToActionId(entry.url), entry.id) << entry.url;
    }
}

TEST(UrlToActionId, AnyOtherTextGivesTheEmptyString) {
    const char* const urls[] = {
        "",
        "A1",
        "qor://ACTION",
        "qor://action/A1",
        "QOR://ACTION/A1",
        " qor://ACTION/A1",
        "qor://ACTIONS/A1",
        "http://ACTION/A1.ACTION",
        "LumenUID://Legacy+QOR1",
        "LumenUID://Legacy+QOR1/",
        "LumenUID://Legacy+QOR1/A1.ACTION",
        "LumenUID://Legacy+QOR2/default/A1.ACTION",
        "lumenuid://legacy+qor1/default/A1.ACTION",
        "LumenUID://Legacy QOR1/default/A1.ACTION",
        "LumenUID://Legacy+QOR1/default/",
        "LumenUID://Legacy+QOR1/default/A1",
        "LumenUID://Legacy+QOR1/default/A1ACTION",
        "LumenUID://Legacy+QOR1/default/A1.ACTIONS",
        "LumenUID://Legacy+QOR1/default/A1.ACTIO",
        "LumenUID://Legacy+QOR1/default/A1.action",
        "LumenUID://Legacy+QOR1/default/A1.Action",
        "LumenUID://Legacy+QOR1/default/A1.",
        "LumenUID://Legacy+QOR1/default/A1.ACTION.",
        "LumenUID://Legacy+QOR1/default/A1.ACTION/",
        "LumenUID://Legacy+QOR1/default/A1%2EACTION",
        "LumenUID://Legacy+QOR1/x.ACTION?/",
        "LumenUID://Legacy+QOR1/x.ACTION?/y",
        "LumenUID://Legacy+QOR1/.ACTION?/y.ACTION",
        "LumenUID://Legacy+QOR1/?/y.ACTION",
    };
    for (const char* url : urls) {
        EXPECT_EQ(UrlToActionId(url), "") << url;
        EXPECT_EQ(NaiveUrl::UrlToActionId(url), "") << url;
    }
    EXPECT_TRUE(QorWflUrlUtil::UrlToActionId(BexUnicodeString()).IsEmpty());
}

TEST(UrlToActionId, NoIdentifierAndAnEmptyOneAreEmptyAndNotNull) {
    for (const char* url : {"", "x", "qor://ACTION/", "qor://ACTION/%zz", "LumenUID://Legacy+QOR1/e",
                            "LumenUID://Legacy+QOR1/e/A1", "LumenUID://Legacy+QOR1/e/.ACTION"}) {
        EXPECT_FALSE(QorWflUrlUtil::UrlToActionId(url).IsNull()) << url;
    }
    EXPECT_FALSE(QorWflUrlUtil::UrlToActionId(BexUnicodeString()).IsNull());
}

TEST(UrlToActionId, InstanceUrlNamesNoAction) {
    EXPECT_EQ(UrlToActionId(UrlTesting::InstanceUrl(UrlTesting::Block("db", "env", "KIRVA_MODEL"))), "");
}

TEST(UrlToActionId, GivesBackEveryShortIdentifier) {
    const std::vector<std::string> alphabet = {
        " ", ".", "/", "+", "%", "?", "&", "=", "a", "4", ".ACTION", std::string(1, '\0'), "\xFF", "~", "#"};
    ForEachText(alphabet, 4, [](const std::string& iId) { ASSERT_EQ(UrlToActionId(ActionUrl(iId)), iId); });
}

TEST(UrlToActionId, GivesBackRandomIdentifiers) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> byte(0, 255);
    std::uniform_int_distribution<int> length(0, 300);
    for (int round = 0; round < 5000; ++round) {
        std::string id;
        for (int left = length(random); left > 0; --left) {
            id += static_cast<char>(byte(random));
        }
        ASSERT_EQ(UrlToActionId(ActionUrl(id)), id);
        ASSERT_EQ(ActionUrl(id), NaiveUrl::kLong + "default/" + NaiveUrl::Encode(id) + ".ACTION");
        ASSERT_EQ(UrlToActionId("qor://ACTION/" + NaiveUrl::Encode(id)), id);
    }
}

TEST(UrlToActionId, IdentifierSurvivesParametersAddedToItsUrl) {
    ForEachText({" ", ".", "/", "?", "&", "%", "a"}, 3, [](const std::string& iText) {
        BexUnicodeString url = QorWflUrlUtil::ActionUrl(UrlTesting::Text(iText));
        QorWflUrlUtil::AddUrlParm(url, "context", UrlTesting::Text(iText));
        QorWflUrlUtil::AddUrlParm(url, "other", UrlTesting::Text(iText));
        ASSERT_EQ(QorWflUrlUtil::UrlToActionId(url), UrlTesting::Text(iText));
        ASSERT_EQ(QorWflUrlUtil::GetUrlParm(url, "context"), UrlTesting::Text(iText));
        ASSERT_EQ(QorWflUrlUtil::GetUrlParm(url, "other"), UrlTesting::Text(iText));
    });
}

TEST(UrlToActionId, AgreesWithTheNaiveVersionOverAllShortTexts) {
    for (const std::string prefix : {"", "LumenUID:/", "LumenUID://Legacy+QOR1/", "qor://ACTION/", "qor://"}) {
        ForEachText({"/", ".", "?", "%", "4", "ACTION", ".ACTION", "+"}, 5, [&prefix](const std::string& iText) {
            ASSERT_EQ(UrlToActionId(prefix + iText), NaiveUrl::UrlToActionId(prefix + iText)) << prefix + iText;
        });
    }
}

TEST(UrlToActionId, WideTextsKeepTheirPlaces) {
    const BexUnicodeString url = BexUnicodeString("LumenUID://Legacy+QOR1/") +
                                 BexUnicodeString(u"\u20AC\u012F/\u0141%2F\u012E.x", 10) + ".ACTION?context=x";
    EXPECT_EQ(QorWflUrlUtil::UrlToActionId(url), BexUnicodeString(u"\u0141/\u012E.x", 5))
        << "characters whose low byte is a delimiter are none";
}

TEST(UrlToActionId, TracesTheUrl) {
    for (const char* url : {"qor://ACTION/A1", "LumenUID://Legacy+QOR1/e/A1.ACTION", "nonsense", ""}) {
        CapturedTrace trace("WFInteropUrl");
        UrlToActionId(url);
        EXPECT_THAT(trace.Lines(),
                    ElementsAre(">> QorWflUrlUtil::UrlToActionId", "Input url=[" + std::string(url) + "]",
                                "<< QorWflUrlUtil::UrlToActionId"));
    }
}

}  // namespace
