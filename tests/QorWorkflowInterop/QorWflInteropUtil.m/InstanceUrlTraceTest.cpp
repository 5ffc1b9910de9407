#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gtest/gtest.h>

#include <CapturedTrace.h>
#include <optional>
#include <string>
#include <vector>

// The whole trace of one call, indentation and line ends included, compared as one text.

namespace {

using UrlTesting::Block;
using UrlTesting::InstanceUrl;
using UrlTesting::UrlToUuid;

const std::string kPrefix = "LumenUID://Legacy+QOR1/";
const std::string kKey = "DB++++++#ENV1++++#KIRVA_MODEL+++++++#0123456789ABCDEF#FEDCBA9876543210.KIRVA_MODEL";
const std::string kDigits = "0123456789ABCDEFFEDCBA9876543210";
const std::string kLooksLong = "Url looks like a LumenUID";
const std::string kMisplaced = "Delimiters not placed correctly";
const std::string kBuilt = "UUID successfully built";
const std::vector<std::string> kFields = {"DbName=[DB]", "Kienv=[ENV1]", "Kitab=[KIRVA_MODEL]",
                                          "XCoid=[0123456789ABCDEF]", "XCompid=[FEDCBA9876543210]"};

using Messages = std::vector<std::string>;

Messages Joined(Messages iFirst, const Messages& iSecond) {
    iFirst.insert(iFirst.end(), iSecond.begin(), iSecond.end());
    return iFirst;
}

/** What a long URL traces behind the message that it looks like one: its key, then the rest. */
Messages LongMessages(const std::string& iKey, const Messages& iRest) {
    return Joined({kLooksLong, "LumenUID=[" + iKey + "]"}, iRest);
}

std::string TextOfTrace(const std::string& iUrl, const Messages& iMessages) {
    std::string text = ">> QorWflUrlUtil::UrlToInstance\n  Input url is [" + iUrl + "]\n";
    for (const std::string& message : iMessages) {
        text += "  " + message + "\n";
    }
    return text + "<< QorWflUrlUtil::UrlToInstance\n";
}

struct TraceCase {
    std::string url;
    Messages messages;
    std::optional<std::string> block;
};

void ExpectTraces(const std::vector<TraceCase>& iCases) {
    for (const TraceCase& traceCase : iCases) {
        const CapturedTrace trace("WFInteropUrl");
        EXPECT_EQ(UrlToUuid(traceCase.url), traceCase.block) << traceCase.url;
        EXPECT_EQ(trace.Text(), TextOfTrace(traceCase.url, traceCase.messages));
    }
}

const std::string kBlock = Block("DB", "ENV1", "KIRVA_MODEL");

TEST(UrlToUuidTrace, KeysAtTheLengthThatTheLastDelimiterNeeds) {
    const std::string start = kPrefix + "ENV1/";
    for (const std::string query : {"", "?", "?context=x", "?a=1&context=.#/"}) {
        ExpectTraces({
            {start + kKey.substr(0, 69) + query, LongMessages(kKey.substr(0, 69), {kMisplaced}), std::nullopt},
            {start + kKey.substr(0, 70) + query, LongMessages(kKey.substr(0, 70), {kMisplaced}), std::nullopt},
            {start + kKey.substr(0, 71) + query, LongMessages(kKey.substr(0, 71), Joined(kFields, {kBuilt})), kBlock},
            {start + kKey.substr(0, 72) + query, LongMessages(kKey.substr(0, 72), Joined(kFields, {kBuilt})), kBlock},
        });
    }
}

TEST(UrlToUuidTrace, KeyEndsAtTheLastQuestionMarkWhereverThatStands) {
    ExpectTraces({
        // two behind the key: the first belongs to its tail
        {kPrefix + "ENV1/" + kKey + "?a=1?b=2", LongMessages(kKey + "?a=1", Joined(kFields, {kBuilt})), kBlock},
        {kPrefix + "ENV1/" + kKey + "??", LongMessages(kKey + "?", Joined(kFields, {kBuilt})), kBlock},
        // one before the key and one behind it
        {kPrefix + "ENV1?/" + kKey + "?", LongMessages(kKey, Joined(kFields, {"Environment does not match Kienv"})),
         std::nullopt},
        // only before the key, which is empty then
        {kPrefix + "ENV1?/" + kKey, LongMessages("", {kMisplaced}), std::nullopt},
        {kPrefix + "?ENV1/" + kKey, LongMessages("", {kMisplaced}), std::nullopt},
        {kPrefix + "EN?V1/" + kKey, LongMessages("", {kMisplaced}), std::nullopt},
        {kPrefix + "ENV1/?" + kKey, LongMessages("", {kMisplaced}), std::nullopt},
        {kPrefix + "ENV1/" + kKey.substr(0, 17) + "?" + kKey.substr(17), LongMessages(kKey.substr(0, 17), {kMisplaced}),
         std::nullopt},
        {kPrefix + "/", LongMessages("", {kMisplaced}), std::nullopt},
        // no slash behind the prefix, but in the query
        {kPrefix + "ENV1?/", LongMessages("", {kMisplaced}), std::nullopt},
        {kPrefix + "ENV1", {kLooksLong, "No / found after environment"}, std::nullopt},
        {kPrefix, {kLooksLong, "No / found after environment"}, std::nullopt},
    });
}

TEST(UrlToUuidTrace, FieldsAreToldWithoutTheirTrailingPlusSignsAndDigitsAsTheyStand) {
    const std::string empty = "++++++++#++++++++#++++++++++++++++++#0000000000000000#0000000000000000.";
    const std::string odd = "+a+b++++#E+F.++++#+#++.++?++++++++++#zz00 g\"%41+/????#fedcba9876543210.x?y";
    const std::string full = "ABCDEFGH#IJKLMNOP#QRSTUVWXYZ01234567#0123456789abcdef#FEDCBA987654321-.";
    ExpectTraces({
        {kPrefix + "/" + empty,
         LongMessages(empty, {"DbName=[]", "Kienv=[]", "Kitab=[]", "XCoid=[0000000000000000]",
                              "XCompid=[0000000000000000]", kBuilt}),
         Block("", "", "", "", "")},
        {kPrefix + "E+F./" + odd + "?",
         LongMessages(odd, {"DbName=[+a+b]", "Kienv=[E+F.]", "Kitab=[+#++.++?]", "XCoid=[zz00 g\"%41+/????]",
                            "XCompid=[fedcba9876543210]", kBuilt}),
         Block("+a+b", "E+F.", "+#++.++?", "zz00 g\"%41+/????")},
        {kPrefix + "IJKLMNOP/" + full,
         LongMessages(full, {"DbName=[ABCDEFGH]", "Kienv=[IJKLMNOP]", "Kitab=[QRSTUVWXYZ01234567]",
                             "XCoid=[0123456789abcdef]", "XCompid=[FEDCBA987654321-]", kBuilt}),
         Block("ABCDEFGH", "IJKLMNOP", "QRSTUVWXYZ01234567", "0123456789ABCDEF", "FEDCBA987654321-")},
        {kPrefix + "IJKLMNO/" + full,
         LongMessages(
             full, {"DbName=[ABCDEFGH]", "Kienv=[IJKLMNOP]", "Kitab=[QRSTUVWXYZ01234567]", "XCoid=[0123456789abcdef]",
                    "XCompid=[FEDCBA987654321-]", "Environment does not match Kienv"}),
         std::nullopt},
    });
}

TEST(UrlToUuidTrace, MissingDelimitersAreToldOnceHoweverManyThereAre) {
    for (unsigned missing = 1; missing < 32; ++missing) {
        std::string key = kKey;
        const std::size_t places[] = {8, 17, 36, 53, 70};
        for (std::size_t i = 0; i < 5; ++i) {
            if ((missing >> i & 1U) != 0) {
                key[places[i]] = i == 4 ? '#' : '.';
            }
        }
        ExpectTraces({{kPrefix + "ENV1/" + key, LongMessages(key, {kMisplaced}), std::nullopt}});
    }
}

TEST(UrlToUuidTrace, ShortFormTellsItsFieldsDecoded) {
    ExpectTraces({
        {"qor://D/.T/" + kDigits,
         {"Found [D]", "Found []", "Found [T]", "nPos=5", "Found [0123456789ABCDEF]", "Found [FEDCBA9876543210]"},
         Block("D", "", "T")},
        {"qor://D/E./" + kDigits + "?a?b",
         {"Found [D]", "Found [E]", "Found []", "nPos=5", "Found [0123456789ABCDEF]", "Found [FEDCBA9876543210]"},
         Block("D", "E", "")},
        {"qor://%44+x%2fE%2ET%3F%2F" + kDigits,
         {"Found [D x]", "Found [E]", "Found [T?]", "nPos=9", "Found [0123456789ABCDEF]", "Found [FEDCBA9876543210]"},
         Block("D x", "E", "T?")},
        {"qor://ABCDEFGHIJ/E.T/zz++%2B%25zz/.zz%3F++FFEDCBA9876543210",
         {"Found [ABCDEFGHIJ]", "Found [E]", "Found [T]", "nPos=15", "Found [zz  +%zz/.zz?  F]",
          "Found [FEDCBA9876543210]"},
         Block("ABCDEFGHIJ", "E", "T", "zz  +%zz/.zz?  F")},
    });
}

TEST(UrlToUuidTrace, ShortFormTellsHowFarItCameWhenTheDigitsAreTooFewOrTooMany) {
    const std::string first(16, 'z');
    ExpectTraces({
        {"qor://D/E.T/" + first + "+%2F?.%3F", {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}, std::nullopt},
        {"qor://D/E.T/" + first + "%2F./%3F%25%2B+%20" + std::string(8, 'y'),
         {"Found [D]", "Found [E]", "Found [T]", "nPos=6", "Found [" + first + "]", "Found [/./?%+  yyyyyyyy]"},
         Block("D", "E", "T", first, std::string(16, 'y'))},
        {"qor://D/E.T/" + kDigits + "%20", {"Found [D]", "Found [E]", "Found [T]", "nPos=6"}, std::nullopt},
        {"qor://D/E.T/" + kDigits + "%zz",
         {"Found [D]", "Found [E]", "Found [T]", "nPos=6", "Found [0123456789ABCDEF]", "Found [FEDCBA9876543210]"},
         Block("D", "E", "T")},
    });
}

TEST(InstanceUrlTrace, IdentifiersAndUrlAreToldInOrder) {
    const CapturedTrace trace("WFInteropUrl");
    EXPECT_EQ(
        InstanceUrl(Block("D/", "E F", "T%", "00AB", "FF00000000000001")),
        "LumenUID://Legacy+QOR1/E F/D%2F++++++#E+F+++++#T%25++++++++++++++++#00AB000000000000#FF00000000000001.T%");
    EXPECT_EQ(trace.Text(),
              ">> QorWflUrlUtil::InstanceUrl\n"
              "  >> QorWflUrlUtil::BinToHex\n"
              "    res=[00AB000000000000]\n"
              "  << QorWflUrlUtil::BinToHex\n"
              "  >> QorWflUrlUtil::BinToHex\n"
              "    res=[FF00000000000001]\n"
              "  << QorWflUrlUtil::BinToHex\n"
              "  url is [LumenUID://Legacy+QOR1/E F/D%2F++++++#E+F+++++#T%25++++++++++++++++#00AB000000000000#"
              "FF00000000000001.T%]\n"
              "<< QorWflUrlUtil::InstanceUrl\n");
}

}  // namespace
