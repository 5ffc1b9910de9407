#include "AllocationWatch.h"
#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <new>
#include <optional>
#include <random>
#include <string>

namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::Optional;
using UrlTesting::Block;
using UrlTesting::ForEachText;
using UrlTesting::InstanceUrl;
using UrlTesting::OwnedUuid;
using UrlTesting::Text;
using UrlTesting::UrlToUuid;

const std::string kLongPrefix = "LumenUID://Legacy+QOR1/";
const std::string kKey = "DB++++++#ENV1++++#KIRVA_MODEL+++++++#0123456789ABCDEF#FEDCBA9876543210.KIRVA_MODEL";
const std::string kLongUrl = kLongPrefix + "ENV1/" + kKey;
const std::string kBlock = std::string("DB      ENV1    KIRVA_MODEL       ") + "\x01\x23\x45\x67\x89\xAB\xCD\xEF" +
                           "\xFE\xDC\xBA\x98\x76\x54\x32\x10";

std::string RandomText(std::mt19937& ioRandom, const std::string& iAlphabet, std::size_t iWidth) {
    std::string text;
    const std::size_t length = std::uniform_int_distribution<std::size_t>(0, iWidth)(ioRandom);
    while (text.size() < length) {
        text += iAlphabet[std::uniform_int_distribution<std::size_t>(0, iAlphabet.size() - 1)(ioRandom)];
    }
    return text;
}

std::string RandomBytes(std::mt19937& ioRandom, std::size_t iCount) {
    std::string bytes;
    while (bytes.size() < iCount) {
        bytes += static_cast<char>(std::uniform_int_distribution<int>(0, 255)(ioRandom));
    }
    return bytes;
}

TEST(UuidLayout, FieldsFollowOneAnother) {
    using namespace QorWflUuidLayout;
    const Field fields[] = {kDbName, kKienv, kKitab, kXCoid, kXCompid};
    const int expected[][2] = {{0, 8}, {8, 8}, {16, 18}, {34, 8}, {42, 8}};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(fields[i].offset, expected[i][0]) << i;
        EXPECT_EQ(fields[i].width, expected[i][1]) << i;
    }
    EXPECT_EQ(kBlockSize, 50);
}

TEST(InstanceUrl, PutsTheFieldsAtFullWidthBetweenSeparators) {
    EXPECT_EQ(InstanceUrl(kBlock), kLongUrl);
}

TEST(InstanceUrl, EnvironmentAndTableAreNotEncodedOutsideTheKey) {
    EXPECT_EQ(InstanceUrl(Block("a/b", "c d%", "e/f g")),
              "LumenUID://Legacy+QOR1/c d%/a%2Fb+++++#c+d%25++++#e%2Ff+g+++++++++++++#0123456789ABCDEF#"
              "FEDCBA9876543210.e/f g");
}

TEST(InstanceUrl, NullGivesTheEmptyString) {
    EXPECT_TRUE(QorWflUrlUtil::InstanceUrl(nullptr).IsEmpty());
    EXPECT_FALSE(QorWflUrlUtil::InstanceUrl(nullptr).IsNull());
}

TEST(InstanceUrl, AgreesWithTheNaiveVersionOnRandomBlocks) {
    std::mt19937 random(50);
    for (int round = 0; round < 5000; ++round) {
        const std::string block = RandomBytes(random, 50);
        ASSERT_EQ(InstanceUrl(block), NaiveUrl::InstanceUrl(block));
        const std::string texts = RandomText(random, std::string("a \0/+%.?", 8), 34);
        const std::string padded = NaiveUrl::ToChar(34, texts, ' ') + block.substr(34);
        ASSERT_EQ(InstanceUrl(padded), NaiveUrl::InstanceUrl(padded));
    }
}

TEST(UrlToUuid, ReadsTheLongForm) {
    EXPECT_THAT(UrlToUuid(kLongUrl), Optional(kBlock));
    EXPECT_THAT(UrlToUuid(kLongUrl + "?"), Optional(kBlock));
    EXPECT_THAT(UrlToUuid(kLongUrl + "?context=a.b/c#d"), Optional(kBlock));
    EXPECT_THAT(UrlToUuid(kLongPrefix + "ENV1/" + kKey.substr(0, 71)), Optional(kBlock)) << "the tail may be missing";
    EXPECT_THAT(UrlToUuid(kLongPrefix + "ENV1/" + kKey.substr(0, 71) + "other/tail.x"), Optional(kBlock));
}

TEST(UrlToUuid, KeyIsNotDecoded) {
    EXPECT_THAT(
        UrlToUuid(kLongPrefix + "ENV1/%41++++++#ENV1++++#%4B+++++++++++++++#0123456789ABCDEF#FEDCBA9876543210."),
        Eq(std::nullopt))
        << "an escape is longer than its character";
    EXPECT_THAT(UrlToUuid(kLongPrefix + "ENV1/%41+++++#ENV1++++#%4B+++++++++++++++#0123456789ABCDEF#FEDCBA9876543210."),
                Optional(Block("%41", "ENV1", "%4B")));
    EXPECT_THAT(UrlToUuid(kLongPrefix + "E%/DB      #E%++++++#T u               #0123456789ABCDEF#FEDCBA9876543210."),
                Optional(Block("DB", "E%", "T u")))
        << "blanks are taken as they are";
}

TEST(UrlToUuid, OnlyTrailingPlusSignsBecomePadding) {
    EXPECT_THAT(UrlToUuid(kLongPrefix + "E+F/+A+B++++#E+F+++++#+T++U+++++++++++++#0123456789ABCDEF#FEDCBA9876543210."),
                Optional(Block("+A+B", "E+F", "+T++U")));
}

TEST(UrlToUuid, InnerBlanksComeBackAsPlusSigns) {
    EXPECT_THAT(UrlToUuid(InstanceUrl(Block("a b", "env", "c d  e"))), Optional(Block("a+b", "env", "c+d++e")));
    EXPECT_THAT(UrlToUuid(InstanceUrl(Block(" a", "env", "  b"))), Optional(Block("+a", "env", "++b")));
}

TEST(UrlToUuid, InnerBlankInTheEnvironmentDoesNotMatch) {
    CapturedTrace trace("WFInteropUrl");
    EXPECT_THAT(UrlToUuid(InstanceUrl(Block("db", "e v", "table"))), Eq(std::nullopt));
    EXPECT_EQ(trace.Messages().back(), "Environment does not match Kienv");
}

TEST(UrlToUuid, EscapedCharacterInATextShiftsTheSeparators) {
    for (const std::string& block :
         {Block("a/b", "env", "table"), Block("db", "e~", "table"), Block("db", "env", "t%")}) {
        CapturedTrace trace("WFInteropUrl");
        EXPECT_THAT(UrlToUuid(InstanceUrl(block)), Eq(std::nullopt));
        EXPECT_EQ(trace.Messages().back(), "Delimiters not placed correctly");
    }
}

TEST(UrlToUuid, GivesBackEveryBlockOfUnescapedTexts) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789.-*_";
    std::mt19937 random(3);
    for (int round = 0; round < 5000; ++round) {
        const std::string block = NaiveUrl::ToChar(8, RandomText(random, alphabet, 8), ' ') +
                                  NaiveUrl::ToChar(8, RandomText(random, alphabet, 8), ' ') +
                                  NaiveUrl::ToChar(18, RandomText(random, alphabet, 18), ' ') + RandomBytes(random, 16);
        ASSERT_THAT(UrlToUuid(InstanceUrl(block)), Optional(block));
        ASSERT_THAT(UrlToUuid(InstanceUrl(block) + "?context=x"), Optional(block));
    }
}

TEST(UrlToUuid, GivesBackBlocksOfUnescapedTextsAtAnyWidth) {
    ForEachText({".", "-", "*", "_", "Z", "9"}, 3, [](const std::string& iText) {
        for (const std::string& block :
             {Block(iText, "e", "t"), Block("d", iText, "t"), Block("d", "e", iText), Block(iText, iText, iText)}) {
            ASSERT_THAT(UrlToUuid(InstanceUrl(block)), Optional(block)) << iText;
        }
    });
}

TEST(UrlToUuid, EveryKeyThatEndsTooEarlyIsRejected) {
    for (std::size_t length = 0; length < kLongPrefix.size() + 5 + 71; ++length) {
        EXPECT_THAT(UrlToUuid(kLongUrl.substr(0, length)), Eq(std::nullopt)) << length;
    }
}

TEST(UrlToUuid, WrongEnvironmentGivesNullAndTracesWhy) {
    for (const std::string environment :
         {"", "ENV", "ENV11", "env1", "ENV2", "ENV1 ", " ENV1", "ENV1++++", "default"}) {
        CapturedTrace trace("WFInteropUrl");
        const std::string url = kLongPrefix + environment + "/" + kKey;
        EXPECT_THAT(UrlToUuid(url), Eq(std::nullopt)) << environment;
        EXPECT_THAT(trace.Lines(),
                    ElementsAre(">> QorWflUrlUtil::UrlToInstance", "Input url is [" + url + "]",
                                "Url looks like a LumenUID", "LumenUID=[" + kKey + "]", "DbName=[DB]", "Kienv=[ENV1]",
                                "Kitab=[KIRVA_MODEL]", "XCoid=[0123456789ABCDEF]", "XCompid=[FEDCBA9876543210]",
                                "Environment does not match Kienv", "<< QorWflUrlUtil::UrlToInstance"));
    }
}

TEST(UrlToUuid, EmptyEnvironmentMatchesAKeyOfPlusSigns) {
    const std::string block = Block("DB", "", "T");
    EXPECT_THAT(UrlToUuid(InstanceUrl(block)), Optional(block));
}

TEST(UrlToUuid, LongActionUrlIsNoInstanceUrl) {
    EXPECT_THAT(UrlToUuid(UrlTesting::ActionUrl("A1")), Eq(std::nullopt));
    EXPECT_THAT(UrlToUuid(UrlTesting::ActionUrl(std::string(200, 'a'))), Eq(std::nullopt));
}

TEST(UrlToUuid, PathEndsAtTheLastQuestionMark) {
    EXPECT_THAT(UrlToUuid(kLongUrl + "?a=1?b=2"), Optional(kBlock)) << "the first query is part of the tail";
    const std::string marked =
        kLongPrefix + "E?/D?++++++#E?++++++#T?++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.";
    EXPECT_THAT(UrlToUuid(marked + "?"), Optional(Block("D?", "E?", "T?")));
    EXPECT_THAT(UrlToUuid(marked), Eq(std::nullopt)) << "the key seems to end within itself";
    EXPECT_THAT(UrlToUuid(kLongPrefix + "?ENV1/" + kKey), Eq(std::nullopt));
    EXPECT_THAT(UrlToUuid(kLongPrefix + "ENV1?/" + kKey), Eq(std::nullopt)) << "it ends before it begins";
    EXPECT_THAT(UrlToUuid(kLongPrefix + "?/"), Eq(std::nullopt));
    EXPECT_THAT(UrlToUuid(kLongPrefix + "/?"), Eq(std::nullopt));
}

TEST(UrlToUuid, PrefixIsComparedExactly) {
    for (const std::string prefix : {"LumenUID://Legacy+QOR2/", "lumenUID://Legacy+QOR1/", "LumenUID://Legacy QOR1/",
                                     " LumenUID://Legacy+QOR1/", "LumenUID:/Legacy+QOR1/"}) {
        CapturedTrace trace("WFInteropUrl");
        const std::string url = prefix + "ENV1/" + kKey;
        EXPECT_THAT(UrlToUuid(url), Eq(std::nullopt)) << prefix;
        EXPECT_THAT(trace.Messages(), ElementsAre("Input url is [" + url + "]", "Found [qor://]"));
    }
}

TEST(UrlToUuid, TracesEveryFieldOfTheLongForm) {
    CapturedTrace trace("WFInteropUrl");
    EXPECT_THAT(UrlToUuid(kLongUrl + "?context=x"), Optional(kBlock));
    EXPECT_THAT(trace.Lines(),
                ElementsAre(">> QorWflUrlUtil::UrlToInstance", "Input url is [" + kLongUrl + "?context=x]",
                            "Url looks like a LumenUID", "LumenUID=[" + kKey + "]", "DbName=[DB]", "Kienv=[ENV1]",
                            "Kitab=[KIRVA_MODEL]", "XCoid=[0123456789ABCDEF]", "XCompid=[FEDCBA9876543210]",
                            "UUID successfully built", "<< QorWflUrlUtil::UrlToInstance"));
}

TEST(UrlToUuid, TracesTheMissingSlashBehindTheEnvironment) {
    for (const std::string rest : {"", "ENV1", "ENV1?context=x", "?"}) {
        CapturedTrace trace("WFInteropUrl");
        EXPECT_THAT(UrlToUuid(kLongPrefix + rest), Eq(std::nullopt)) << rest;
        EXPECT_THAT(trace.Lines(), ElementsAre(">> QorWflUrlUtil::UrlToInstance",
                                               "Input url is [" + kLongPrefix + rest + "]", "Url looks like a LumenUID",
                                               "No / found after environment", "<< QorWflUrlUtil::UrlToInstance"));
    }
}

TEST(UrlToUuid, WideTextsKeepTheirPlacesAndBecomeQuestionMarks) {
    const BexUnicodeString digits = "#0123456789ABCDEF#FEDCBA9876543210.T";
    const BexUnicodeString url = BexUnicodeString(kLongPrefix.c_str()) + "E/" +
                                 BexUnicodeString(u"\u0141\u0123++++++#E+++++++#T\u012E", 20) + "++++++++++++++++" +
                                 digits;
    EXPECT_THAT(UrlTesting::BytesOf(OwnedUuid(QorWflUrlUtil::UrlToUuid(url))), Optional(Block("??", "E", "T?")));
}

TEST(UrlToUuid, WideEnvironmentMatchesNoKey) {
    // the key's environment is narrow when it is compared, so a character without a narrow form is a question mark
    const BexUnicodeString key =
        BexUnicodeString(u"DB++++++#E\u20AC++++++#T", 19) + "+++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T?";
    const BexUnicodeString prefix = kLongPrefix.c_str();
    for (const BexUnicodeString& environment : {BexUnicodeString(u"E\u20AC", 2), BexUnicodeString(u"E\u20AD", 2)}) {
        EXPECT_EQ(OwnedUuid(QorWflUrlUtil::UrlToUuid(prefix + environment + "/" + key)), nullptr);
    }
    EXPECT_THAT(UrlTesting::BytesOf(OwnedUuid(QorWflUrlUtil::UrlToUuid(prefix + "E?/" + key))),
                Optional(Block("DB", "E?", "T")));
}

TEST(UrlToUuid, BlockIsAPlainAllocationOfItsSize) {
    const AllocationWatch::PlainBlocks watch(50);
    for (const std::string& url : {kLongUrl, "qor://DB/ENV1.T/" + std::string(32, '7')}) {
        char* const uuid = QorWflUrlUtil::UrlToUuid(Text(url));
        ASSERT_NE(uuid, nullptr);
        EXPECT_TRUE(watch.Holds(uuid)) << url;
        ::operator delete(uuid);
        EXPECT_FALSE(watch.Holds(uuid)) << url;
    }
}

TEST(UrlToUuid, DeleterReleasesTheBlockAndIgnoresNull) {
    const AllocationWatch::PlainBlocks watch(50);
    char* const uuid = QorWflUrlUtil::UrlToUuid(Text(kLongUrl));
    EXPECT_TRUE(watch.Holds(uuid));
    QorWflUuidDeleter()(uuid);
    EXPECT_FALSE(watch.Holds(uuid));
    EXPECT_NO_FATAL_FAILURE(QorWflUuidDeleter()(nullptr));
}

TEST(UrlToUuid, RejectedUrlsLeaveNoBlockBehind) {
    const std::string urls[] = {"",        kLongPrefix,     kLongPrefix + "e/" + kKey, kLongPrefix + "ENV1/x",
                                "qor://a", "qor://a/b.c/00"};
    for (const std::string& url : urls) {
        const BexUnicodeString text = Text(url);
        const long before = AllocationWatch::LiveBlocks();
        char* const uuid = QorWflUrlUtil::UrlToUuid(text);
        EXPECT_EQ(AllocationWatch::LiveBlocks(), before) << url;
        EXPECT_EQ(uuid, nullptr) << url;
    }
}

}  // namespace
