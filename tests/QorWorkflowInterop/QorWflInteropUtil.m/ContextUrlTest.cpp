#include "AllocationWatch.h"
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
using testing::Eq;
using testing::Optional;
using UrlTesting::Block;
using UrlTesting::Bytes;
using UrlTesting::OwnedUuid;
using UrlTesting::Text;

const std::string kBlock = Block("DB", "ENV1", "PART_LIST");
const std::string kUrl =
    "LumenUID://Legacy+QOR1/ENV1/DB++++++#ENV1++++#PART_LIST+++++++++#0123456789ABCDEF#FEDCBA9876543210.PART_LIST";

std::string ContextUrl(const std::string& iContext) {
    return Bytes(QorWflUrlUtil::ContextUrl(kBlock.data(), Text(iContext)));
}

TEST(ContextUrl, CarriesTheContextAsAParameter) {
    EXPECT_EQ(ContextUrl("Nickname"), kUrl + "?context=Nickname");
    EXPECT_EQ(ContextUrl("a b/c?d&e=f"), kUrl + "?context=a+b%2Fc%3Fd%26e%3Df");
}

TEST(ContextUrl, EmptyOrNullContextAddsNothing) {
    EXPECT_EQ(ContextUrl(""), kUrl);
    EXPECT_EQ(Bytes(QorWflUrlUtil::ContextUrl(kBlock.data(), BexUnicodeString())), kUrl);
}

TEST(ContextUrl, QuestionMarkInTheBlocksTextsCountsAsAQuery) {
    // the environment and the table stand unencoded in the URL, outside its key
    const std::string table = Block("DB", "ENV1", "T?");
    EXPECT_EQ(Bytes(QorWflUrlUtil::ContextUrl(table.data(), "c")),
              "LumenUID://Legacy+QOR1/ENV1/DB++++++#ENV1++++#T%3F++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T?"
              "&context=c");
    const std::string environment = Block("DB", "?", "T");
    const BexUnicodeString url = QorWflUrlUtil::ContextUrl(environment.data(), "c");
    EXPECT_EQ(Bytes(url),
              "LumenUID://Legacy+QOR1/?/DB++++++#%3F+++++++#T+++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T"
              "&context=c");
    EXPECT_EQ(Bytes(QorWflUrlUtil::GetUrlParm(url, "context")), "c");
}

TEST(ContextUrl, ContextOfBlanksIsNotEmpty) {
    EXPECT_EQ(ContextUrl(" "), kUrl + "?context=+");
    EXPECT_EQ(ContextUrl(std::string(1, '\0')), kUrl + "?context=%00");
}

TEST(ContextUrl, TracesTheStepsThatItTakes) {
    CapturedTrace trace("WFInteropUrl");
    ContextUrl("x y");
    EXPECT_THAT(trace.Lines(),
                ElementsAre(">> QorWflUrlUtil::ContextUrl", ">> QorWflUrlUtil::InstanceUrl",
                            ">> QorWflUrlUtil::BinToHex", "res=[0123456789ABCDEF]", "<< QorWflUrlUtil::BinToHex",
                            ">> QorWflUrlUtil::BinToHex", "res=[FEDCBA9876543210]", "<< QorWflUrlUtil::BinToHex",
                            "url is [" + kUrl + "]", "<< QorWflUrlUtil::InstanceUrl", ">> QorWflUrlUtil::AddUrlParm",
                            "url set to [" + kUrl + "?context=x+y]", "<< QorWflUrlUtil::AddUrlParm",
                            "<< QorWflUrlUtil::ContextUrl"));
}

TEST(ContextUrl, TracesNoParameterWithoutContext) {
    CapturedTrace trace("WFInteropUrl");
    ContextUrl("");
    EXPECT_THAT(trace.Lines(), testing::Not(testing::Contains(">> QorWflUrlUtil::AddUrlParm")));
    EXPECT_EQ(trace.Lines().front(), ">> QorWflUrlUtil::ContextUrl");
    EXPECT_EQ(trace.Lines().back(), "<< QorWflUrlUtil::ContextUrl");
}

TEST(UrlToContext, GivesTheInstanceAndTheDecodedContext) {
    const struct {
        std::string url;
        std::string context;
    } cases[] = {
        {kUrl + "?context=Nickname", "Nickname"},
        {kUrl + "?context=a+b%2Fc", "a b/c"},
        {kUrl + "?other=1&context=x&context=y", "x"},
        {kUrl + "?context=", ""},
        {kUrl + "?Context=x", ""},
        {kUrl + "?", ""},
        {kUrl, ""},
        {"qor://DB/ENV1.PART_LIST/0123456789ABCDEFFEDCBA9876543210?context=x", "x"},
    };
    for (const auto& entry : cases) {
        BexUnicodeString context = "before";
        const OwnedUuid uuid(QorWflUrlUtil::UrlToContext(Text(entry.url), context));
        EXPECT_THAT(UrlTesting::BytesOf(uuid), Optional(kBlock)) << entry.url;
        EXPECT_EQ(Bytes(context), entry.context) << entry.url;
    }
}

TEST(UrlToContext, TextThatNamesNoInstanceEmptiesTheContext) {
    for (const std::string url :
         {"", "x?context=y", "qor://ACTION/A1?context=y", "LumenUID://Legacy+QOR1/default/A1.ACTION?context=y"}) {
        BexUnicodeString context = "before";
        const OwnedUuid uuid(QorWflUrlUtil::UrlToContext(Text(url), context));
        EXPECT_EQ(uuid, nullptr) << url;
        EXPECT_TRUE(context.IsEmpty()) << url;
        EXPECT_FALSE(context.IsNull()) << url;
    }
}

TEST(UrlToContext, ContextIsOfTheFirstQuestionMarkAndTheInstanceOfTheLast) {
    const struct {
        std::string url;
        std::string context;
    } cases[] = {
        {kUrl + "?context=a?context=b", "a?context=b"},
        {kUrl + "?x=1?context=b", ""},
        {kUrl + "??context=b", ""},
        {kUrl + "?context=a?", "a?"},
        {kUrl + "&context=b", ""},
        {kUrl + "/context=b?", ""},
        {"qor://DB/ENV1.PART_LIST/0123456789ABCDEFFEDCBA9876543210?context=a?context=b", "a?context=b"},
        {"qor://DB/ENV1.PART_LIST/0123456789ABCDEFFEDCBA9876543210?%63ontext=a", ""},
    };
    for (const auto& entry : cases) {
        BexUnicodeString context = "before";
        const OwnedUuid uuid(QorWflUrlUtil::UrlToContext(Text(entry.url), context));
        EXPECT_THAT(UrlTesting::BytesOf(uuid), Optional(kBlock)) << entry.url;
        EXPECT_EQ(Bytes(context), entry.context) << entry.url;
    }
}

TEST(UrlToContext, WholeTraceOfARejection) {
    const CapturedTrace trace("WFInteropUrl");
    BexUnicodeString context = "before";
    const OwnedUuid uuid(QorWflUrlUtil::UrlToContext("LumenUID://Legacy+QOR1/default/A1.ACTION?context=x", context));
    EXPECT_EQ(trace.Text(),
              ">> QorWflUrlUtil::UrlToContext\n"
              "  Input url is [LumenUID://Legacy+QOR1/default/A1.ACTION?context=x]\n"
              "  >> QorWflUrlUtil::UrlToInstance\n"
              "    Input url is [LumenUID://Legacy+QOR1/default/A1.ACTION?context=x]\n"
              "    Url looks like a LumenUID\n"
              "    LumenUID=[A1.ACTION]\n"
              "    Delimiters not placed correctly\n"
              "  << QorWflUrlUtil::UrlToInstance\n"
              "<< QorWflUrlUtil::UrlToContext\n");
}

TEST(UrlTrace, LinesGoToStandardOutputAndToNothingElse) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    BexQorTrace::SetOn("WFInteropUrl", 1);
    UrlTesting::ActionUrl("A1");
    BexQorTrace::SetOn("WFInteropUrl", 0);
    UrlTesting::ActionUrl("A2");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), ">> QorWflUrlUtil::ActionUrl\n<< QorWflUrlUtil::ActionUrl\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(UrlToContext, GivesBackWhatContextUrlWasGiven) {
    for (int code = 0; code < 256; ++code) {
        const std::string written = "x" + std::string(1, static_cast<char>(code));
        BexUnicodeString context;
        const OwnedUuid uuid(QorWflUrlUtil::UrlToContext(Text(ContextUrl(written)), context));
        EXPECT_THAT(UrlTesting::BytesOf(uuid), Optional(kBlock)) << code;
        EXPECT_EQ(Bytes(context), written) << code;
    }
}

TEST(UrlToContext, BlockIsAPlainAllocationOfItsSize) {
    const AllocationWatch::PlainBlocks watch(50);
    BexUnicodeString context;
    char* const uuid = QorWflUrlUtil::UrlToContext(Text(kUrl), context);
    EXPECT_TRUE(watch.Holds(uuid));
    ::operator delete(uuid);
    EXPECT_FALSE(watch.Holds(uuid));
}

TEST(UrlToContext, TracesTheStepsThatItTakes) {
    CapturedTrace trace("WFInteropUrl");
    const std::string url = kUrl + "?context=x";
    const std::string key = kUrl.substr(kUrl.find("DB++"));
    BexUnicodeString context;
    const OwnedUuid uuid(QorWflUrlUtil::UrlToContext(Text(url), context));
    EXPECT_THAT(
        trace.Lines(),
        ElementsAre(">> QorWflUrlUtil::UrlToContext", "Input url is [" + url + "]", ">> QorWflUrlUtil::UrlToInstance",
                    "Input url is [" + url + "]", "Url looks like a LumenUID", "LumenUID=[" + key + "]", "DbName=[DB]",
                    "Kienv=[ENV1]", "Kitab=[PART_LIST]", "XCoid=[0123456789ABCDEF]", "XCompid=[FEDCBA9876543210]",
                    "UUID successfully built", "<< QorWflUrlUtil::UrlToInstance", ">> QorWflUrlUtil::GetUrlParm",
                    "Input url is [" + url + "]", "Search for [context]", "Found [x]", "<< QorWflUrlUtil::GetUrlParm",
                    "<< QorWflUrlUtil::UrlToContext"));
}

TEST(UrlToContext, LooksForNoParameterWithoutInstance) {
    CapturedTrace trace("WFInteropUrl");
    BexUnicodeString context;
    const OwnedUuid uuid(QorWflUrlUtil::UrlToContext("x?context=y", context));
    EXPECT_THAT(trace.Lines(),
                ElementsAre(">> QorWflUrlUtil::UrlToContext", "Input url is [x?context=y]",
                            ">> QorWflUrlUtil::UrlToInstance", "Input url is [x?context=y]", "Found [qor://]",
                            "<< QorWflUrlUtil::UrlToInstance", "<< QorWflUrlUtil::UrlToContext"));
}

TEST(UrlTrace, LinesAreIndentedByTheirStep) {
    CapturedTrace trace("WFInteropUrl");
    BexUnicodeString context;
    const OwnedUuid uuid(QorWflUrlUtil::UrlToContext("", context));
    EXPECT_EQ(trace.Text(),
              ">> QorWflUrlUtil::UrlToContext\n"
              "  Input url is []\n"
              "  >> QorWflUrlUtil::UrlToInstance\n"
              "    Input url is []\n"
              "  << QorWflUrlUtil::UrlToInstance\n"
              "<< QorWflUrlUtil::UrlToContext\n");
}

}  // namespace
