#include "../QorWflInteropUtil.m/UrlTesting.h"
#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const std::string kBlock = UrlTesting::Block("VERANT", "ENV1", "PART_LIST", "00000000000000A1", "FF000000000000B2");
const std::string kUrl = UrlTesting::InstanceUrl(kBlock);

std::string HexOf(const std::string& iBytes) {
    return NaiveUrl::BinToHex(iBytes);
}

/** What the command prints when all is well. */
std::string Built(const std::vector<std::string>& iArguments, const std::string& iInput = "") {
    std::vector<std::string> arguments{"url"};
    arguments.insert(arguments.end(), iArguments.begin(), iArguments.end());
    const ToolResult result = RunTool(arguments, {.input = iInput});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, IsEmpty());
    return result.out;
}

std::string Refused(const std::vector<std::string>& iArguments) {
    std::vector<std::string> arguments{"url"};
    arguments.insert(arguments.end(), iArguments.begin(), iArguments.end());
    const ToolResult result = RunTool(arguments);
    EXPECT_EQ(result.status, 1) << result;
    EXPECT_THAT(result.out, IsEmpty());
    return result.err;
}

}  // namespace

TEST(UrlBuild, ActionUrlsAreTheLibrarys) {
    EXPECT_EQ(Built({"action", "DR 4711", "a/b+c%"}),
              UrlTesting::ActionUrl("DR 4711") + '\n' + UrlTesting::ActionUrl("a/b+c%") + '\n');
    EXPECT_EQ(Built({"action", "-", "x"}, "one\n\ntwo\r\nthree"),
              UrlTesting::ActionUrl("one") + '\n' + UrlTesting::ActionUrl("two") + '\n' +
                  UrlTesting::ActionUrl("three") + '\n' + UrlTesting::ActionUrl("x") + '\n');
}

TEST(UrlBuild, IdentifierIsTakenAsUtf8AndElseAsLatinOne) {
    EXPECT_EQ(Built({"action", "\xC3\xBC"}), UrlTesting::ActionUrl("\xFC") + '\n');
    EXPECT_EQ(Built({"action", "\xFC"}), UrlTesting::ActionUrl("\xFC") + '\n');
    EXPECT_EQ(Refused({"action", "\xE2\x82\xAC"}),
              "qorwfl: identifier \"\xE2\x82\xAC\": a character is outside ISO-8859-1, which the URLs carry\n");
}

TEST(UrlBuild, InstanceIsToldInFourWays) {
    const std::string json = R"({"dbName": "VERANT", "environment": "ENV1", "table": "PART_LIST",
        "coid": "00000000000000A1", "compid": "FF000000000000B2"})";
    for (const std::string& uuid :
         {json, kUrl, std::string("qor://VERANT/ENV1.PART_LIST/00000000000000A1FF000000000000B2"), HexOf(kBlock)}) {
        EXPECT_EQ(Built({"instance", uuid}), kUrl + '\n') << uuid;
    }
    EXPECT_EQ(Built({"instance", "--db-name", "VERANT", "--environment", "ENV1", "--table", "PART_LIST", "--coid",
                     "00000000000000A1", "--compid", "FF000000000000B2"}),
              kUrl + '\n');
    EXPECT_EQ(Built({"instance", "-"}, kUrl + '\n' + HexOf(kBlock) + '\n'), kUrl + '\n' + kUrl + '\n');
}

TEST(UrlBuild, ContextIsAddedAsTheLibraryDoesIt) {
    EXPECT_EQ(Built({"context", kUrl, "--context", "As built/1"}), kUrl + "?context=As+built%2F1\n");
    EXPECT_EQ(Built({"context", kUrl, "--context", ""}), kUrl + '\n');
}

TEST(UrlBuild, ParameterIsAddedAsTheLibraryDoesIt) {
    EXPECT_EQ(Built({"parm", kUrl, "Nickname", "Pump & co"}), kUrl + "?Nickname=Pump+%26+co\n");
    EXPECT_EQ(Built({"parm", kUrl + "?a=b", "Nickname", ""}), kUrl + "?a=b&Nickname=\n");
    EXPECT_EQ(Built({"parm", "-", "a", "b"}, "x\ny?\n"), "x?a=b\ny?&a=b\n");
}

TEST(UrlBuild, WhatTheLibraryCannotReadBackIsBuiltWithAWarning) {
    const struct {
        std::vector<std::string> arguments;
        const char* words;
    } cases[] = {
        {{"action", ""}, "the identifier is empty"},
        {{"instance", HexOf(UrlTesting::Block("A/B", "E", "T"))}, "an escape before it shifts the columns"},
        {{"instance", HexOf(UrlTesting::Block("A B", "E", "T"))}, "it would be another object"},
        {{"instance", HexOf(UrlTesting::Block("A", "E F", "T"))}, "is not that of the key"},
        {{"parm", "x?a=b", "a", "c"}, "there is a parameter of that name before it"},
    };
    for (const auto& test : cases) {
        std::vector<std::string> arguments{"url"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, testing::Not(IsEmpty()));
        EXPECT_THAT(result.err, HasSubstr("the library cannot read it back: "));
        EXPECT_THAT(result.err, HasSubstr(test.words));
    }
}

TEST(UrlBuild, WhatIsNoObjectIsRefused) {
    EXPECT_THAT(Refused({"instance", "hello"}), HasSubstr("UUID \"hello\": expected an instance URL"));
    EXPECT_THAT(Refused({"instance", R"({"dbName": "A"})"}), HasSubstr("/environment: expected a text, found nothing"));
    EXPECT_THAT(Refused({"instance", "{"}), HasSubstr("UUID \"{\""));
    const std::string anyForm =
        "expected an instance URL (LumenUID://Legacy+QOR1/... or qor://...), a JSON object or 100 hexadecimal digits; "
        "found ";
    EXPECT_THAT(Refused({"instance", "hello"}), HasSubstr(anyForm + "none of them\n"));
    EXPECT_THAT(Refused({"instance", ""}), HasSubstr(anyForm + "nothing\n"));
    EXPECT_THAT(Refused({"instance", "A"}), HasSubstr(anyForm + "1 digit\n"));
    EXPECT_THAT(Refused({"instance", HexOf(kBlock) + "0"}), HasSubstr(anyForm + "101 digits\n"));
    EXPECT_THAT(Refused({"instance", "qor://A"}),
                HasSubstr("expected an instance URL (LumenUID://Legacy+QOR1/... or qor://...), found \"qor://A\"\n"));
    EXPECT_THAT(Refused({"instance", "--db-name", "TOO_LONG_NAME", "--environment", "E", "--table", "T", "--coid",
                         "00000000000000A1", "--compid", "00000000000000A1"}),
                HasSubstr("qorwfl: --db-name: expected at most 8 characters, found 13"));
    EXPECT_THAT(Refused({"instance", "--db-name", "A", "--environment", "E23456789", "--table", "T", "--coid",
                         "00000000000000A1", "--compid", "00000000000000A1"}),
                HasSubstr("qorwfl: --environment: expected at most 8 characters, found 9"));
    EXPECT_THAT(Refused({"instance", "--db-name", "A", "--environment", "E", "--table", "T", "--coid",
                         "00000000000000A1", "--compid", "A1"}),
                HasSubstr("qorwfl: --compid: expected exactly 16 hexadecimal digits, found \"A1\""));
    EXPECT_THAT(Refused({"instance", HexOf(UrlTesting::Block("A", "E", "T\x1B"))}),
                HasSubstr("a control character in it: LumenUID://Legacy+QOR1/E/"));
}

TEST(UrlBuild, EscapeBeforeAnAmpersandIsReadAsTheLibraryDoes) {
    // "%&4" is an escape without digits: all of it vanishes.
    EXPECT_EQ(Built({"instance", "qor://VER%&4ANT/ENV1.PART_LIST/00000000000000A1FF000000000000B2"}), kUrl + '\n');
}
