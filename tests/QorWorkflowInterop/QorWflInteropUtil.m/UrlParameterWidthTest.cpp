// Parameters whose name or value has characters above U+00FF, in URLs that have none and in URLs that do.

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gtest/gtest.h>

namespace {

const BexUnicodeString kWide(u"\u20AC", 1);

TEST(UrlParameterWidth, WideNameStandsInNoNarrowUrl) {
    for (const char* url : {"", "u", "u?=1", "u?%AC=1", "u?\xAC=1", "u? =1", "u?\?=1"}) {
        const BexUnicodeString value = QorWflUrlUtil::GetUrlParm(url, kWide);
        EXPECT_TRUE(value.IsEmpty()) << url;
        EXPECT_FALSE(value.IsNull()) << url;
    }
}

TEST(UrlParameterWidth, WideNameIsFoundWhereItWasAdded) {
    BexUnicodeString url("u");
    QorWflUrlUtil::AddUrlParm(url, kWide, "1");
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, kWide), BexUnicodeString("1"));
    QorWflUrlUtil::AddUrlParm(url, "narrow", "2");
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, kWide), BexUnicodeString("1"));
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, "narrow"), BexUnicodeString("2"));
}

TEST(UrlParameterWidth, NarrowNameIsComparedByteForUnitInAWideUrl) {
    const BexUnicodeString url(u"u?\u20AC=1&\u00E9=2", 9);
    EXPECT_EQ(QorWflUrlUtil::GetUrlParm(url, "\xE9"), BexUnicodeString("2"));
    EXPECT_TRUE(QorWflUrlUtil::GetUrlParm(url, "\xAC").IsEmpty());
}

}  // namespace
