#include "../QorWflInteropUtil.m/UrlTesting.h"
#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <CapturedTrace.h>
#include <string>
#include <vector>

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

const std::string kLong =
    "LumenUID://Legacy+QOR1/ENV1/VERANT++#ENV1++++#KIRVA_MODEL+++++++#00000000000000A1#00000000000000B2.KIRVA_MODEL";
const std::string kShort = "qor://VERANT/ENV1.KIRVA_MODEL/00000000000000A100000000000000B2";

/** What the command has to say about URLs, which go in as lines. */
json Explained(const std::vector<std::string>& iUrls) {
    std::string input;
    for (const std::string& url : iUrls) {
        input += url + '\n';
    }
    const ToolResult result = RunTool({"url", "explain", "-", "--format", "json"}, {.input = input});
    json document = json::parse(result.out, nullptr, false);
    EXPECT_FALSE(document.is_discarded()) << result.err;
    EXPECT_EQ(document.size(), iUrls.size());
    return document;
}

/** What the library traces while it looks for an object instance. */
std::vector<std::string> TraceOf(const std::string& iUrl) {
    const CapturedTrace trace("WFInteropUrl");
    UrlTesting::UrlToUuid(iUrl);
    return trace.Messages();
}

/** The reason for which a URL is no object instance's, read out of the library's trace. */
std::string CodeOfTrace(const std::vector<std::string>& iMessages) {
    const std::string& last = iMessages.back();
    if (last == "No / found after environment") {
        return "no-environment-end";
    }
    if (last == "Delimiters not placed correctly") {
        return "marks-misplaced";
    }
    if (last == "Environment does not match Kienv") {
        return "environment-differs";
    }
    if (last == "Found [qor://]") {  // so it says when it is not found
        return "no-prefix";
    }
    // A short URL has a message for each part that is there.
    constexpr const char* kCodes[] = {"no-database", "no-environment", "no-table", "", "digits-count"};
    return kCodes[iMessages.size() - 1];
}

/** Holds what the command says about a URL against what the library does with it. */
void ExpectAgreement(const std::string& iUrl, const json& iExplained) {
    SCOPED_TRACE(iUrl);
    const json& instance = iExplained["instance"];
    const json& action = iExplained["action"];
    const std::optional<std::string> block = UrlTesting::UrlToUuid(iUrl);
    const std::string id = UrlTesting::UrlToActionId(iUrl);
    const std::vector<std::string> trace = TraceOf(iUrl);
    ASSERT_EQ(instance["accepted"], block.has_value());
    ASSERT_EQ(action["accepted"], !id.empty());
    EXPECT_EQ(instance["trace"], json(trace));
    EXPECT_EQ(instance["code"], block ? json() : json(CodeOfTrace(trace)));
    EXPECT_EQ(action["code"].is_null(), !id.empty());
    if (!id.empty()) {
        EXPECT_EQ(action["id"], id);
        EXPECT_EQ(action["written"], UrlTesting::ActionUrl(id));
    }
    if (block) {
        EXPECT_EQ(instance["written"], UrlTesting::InstanceUrl(*block));
        EXPECT_EQ(instance["context"], UrlTesting::GetUrlParm(iUrl, "context"));
    }
    for (const json& reading : {instance, action}) {
        std::string whole;
        for (const json& piece : reading["pieces"]) {
            EXPECT_EQ(piece["start"], whole.size());
            EXPECT_EQ(piece["length"], piece["text"].get<std::string>().size());
            whole += piece["text"].get<std::string>();
        }
        EXPECT_EQ(whole, iUrl);
        const bool isReadToItsEnd = reading["pieces"].empty() || reading["pieces"].back()["piece"] != "rest";
        EXPECT_TRUE(isReadToItsEnd || !reading["accepted"].get<bool>()) << reading;
    }
    for (const json& parameter : iExplained["parameters"]) {
        if (parameter["read"].get<bool>()) {
            EXPECT_EQ(parameter["value"], UrlTesting::GetUrlParm(iUrl, parameter["name"]));
        }
    }
}

void ExpectAgreement(const std::vector<std::string>& iUrls) {
    const json explained = Explained(iUrls);
    for (std::size_t i = 0; i < iUrls.size() && !testing::Test::HasFailure(); ++i) {
        ExpectAgreement(iUrls[i], explained[i]);
    }
}

/** A text with one part of it replaced. */
std::string Replaced(std::string iText, const std::string& iOld, const std::string& iNew) {
    return iText.replace(iText.find(iOld), iOld.size(), iNew);
}

}  // namespace

TEST(UrlExplain, ReasonIsTheOneThatTheLibraryTraces) {
    const struct {
        std::string url;
        const char* action;    // why it is no action's URL, empty when it is one
        const char* instance;  // why it is no object instance's
    } cases[] = {
        {kLong, "no-action-suffix", ""},
        {kLong + "?context=As+built", "no-action-suffix", ""},
        {kLong + "?a=?", "no-action-suffix", ""},
        {Replaced(kLong, "/ENV1/", "/ENV2/"), "no-action-suffix", "environment-differs"},
        {Replaced(kLong, "/ENV1/", "//"), "no-action-suffix", "environment-differs"},
        {Replaced(kLong, "VERANT++", "VERANT+"), "no-action-suffix", "marks-misplaced"},
        {Replaced(kLong, "VERANT++", "VER%2FA++"), "no-action-suffix", "marks-misplaced"},
        {Replaced(kLong, "B2.", "B2,"), "no-action-suffix", "marks-misplaced"},
        {Replaced(kLong, ".KIRVA_MODEL", ""), "no-action-suffix", "marks-misplaced"},
        {Replaced(kLong, ".KIRVA_MODEL", "."), "no-action-suffix", ""},
        {Replaced(kLong, ".KIRVA_MODEL", ".ACTION"), "", ""},
        {Replaced(kLong, "00A1", "zzzz"), "no-action-suffix", ""},
        {"LumenUID://Legacy+QOR1/", "no-environment-end", "no-environment-end"},
        {"LumenUID://Legacy+QOR1/E", "no-environment-end", "no-environment-end"},
        {"LumenUID://Legacy+QOR1/E/", "no-action-suffix", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/default/A.ACTION", "", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/default/A.ACTION?context=x", "", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/default/A.Action", "no-action-suffix", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/default/A.ACTIONS", "no-action-suffix", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/default/.ACTION", "no-identifier", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/default/%zz.ACTION", "no-identifier", "marks-misplaced"},
        {"LumenUID://Legacy+QOR1/A.ACTION?b=/", "no-identifier", "marks-misplaced"},
        {"LumenUID://Legacy+QOR2/default/A.ACTION", "no-prefix", "no-prefix"},
        {"qor://ACTION/DR+4711", "", "no-environment"},
        {"qor://ACTION/", "no-identifier", "no-environment"},
        {"qor://ACTION/E.T/0123456789ABCDEF0123456789ABCDEF", "", ""},
        {kShort, "no-prefix", ""},
        {kShort + "?context=x", "no-prefix", ""},
        {kShort + "0", "no-prefix", "digits-count"},
        {kShort.substr(0, kShort.size() - 1), "no-prefix", "digits-count"},
        {Replaced(kShort, "VERANT/", "/"), "no-prefix", "no-database"},
        {Replaced(kShort, "VERANT/", "VERANT%2F"), "no-prefix", ""},
        {Replaced(kShort, "ENV1.", "."), "no-prefix", ""},
        {Replaced(kShort, "ENV1.", "ENVIRONMENT1."), "no-prefix", ""},
        {Replaced(kShort, "KIRVA_MODEL/", "KIRVA_MODEL"), "no-prefix", "no-table"},
        {"qor://", "no-prefix", "no-database"},
        {"qor://VERANT", "no-prefix", "no-database"},
        {"qor:/", "no-prefix", "no-prefix"},
        {"QOR://VERANT", "no-prefix", "no-prefix"},
        {" ", "no-prefix", "no-prefix"},
    };
    std::vector<std::string> urls;
    for (const auto& test : cases) {
        urls.push_back(test.url);
    }
    const json explained = Explained(urls);
    for (std::size_t i = 0; i < urls.size(); ++i) {
        const auto code = [](const json& iReading) {
            return iReading["code"].is_null() ? std::string() : iReading["code"].get<std::string>();
        };
        EXPECT_EQ(code(explained[i]["action"]), cases[i].action) << urls[i];
        EXPECT_EQ(code(explained[i]["instance"]), cases[i].instance) << urls[i];
        ExpectAgreement(urls[i], explained[i]);
    }
}

TEST(UrlExplain, AgreesWithTheLibraryOnAllShortBodies) {
    std::vector<std::string> urls;
    UrlTesting::ForEachText({"a", "/", ".", "?", "%2F", "%2", "+", "0123456789ABCDEF0123456789ABCDEF"}, 4,
                            [&urls](const std::string& iBody) { urls.push_back("qor://" + iBody); });
    ExpectAgreement(urls);
}

TEST(UrlExplain, AgreesWithTheLibraryOnAllShortPaths) {
    std::vector<std::string> urls;
    UrlTesting::ForEachText({"a", "/", ".", "?", "%2F", ".ACTION", "&context=b"}, 3, [&urls](const std::string& iPath) {
        urls.push_back("LumenUID://Legacy+QOR1/" + iPath);
        urls.push_back("qor://ACTION/" + iPath);
    });
    ExpectAgreement(urls);
}

TEST(UrlExplain, AgreesWithTheLibraryOnEveryPlaceOfALongUrl) {
    std::vector<std::string> urls;
    for (std::size_t at = 0; at < kLong.size(); ++at) {
        for (const char* text : {"", "#", "+", ".", "/", "?", "%2F", "x"}) {
            urls.push_back(kLong.substr(0, at) + text + kLong.substr(at + 1));
        }
        urls.push_back(kLong.substr(0, at) + "?" + kLong.substr(at + 1) + "?context=a");
        urls.push_back(kLong.substr(0, at + 1));
    }
    ExpectAgreement(urls);
}

TEST(UrlExplain, TakesALongUrlApartPieceByPiece) {
    const ToolResult result = RunTool({"url", "explain", kLong + "?context=As+built&context=x"});
    EXPECT_EQ(result.status, 0);
    for (const char* line :
         {"  object instance of database \"VERANT\", environment \"ENV1\", table \"KIRVA_MODEL\", identifiers "
          "00000000000000A1 and 00000000000000B2\n",
          "  in the context \"As built\"\n", "\n  0    23      prefix                  LumenUID://Legacy+QOR1/\n",
          "\n  28   8       database                VERANT++                     VERANT\n",
          "\n  82   16      second identifier       00000000000000B2\n", "\n  111  context  = \"As built\"\n",
          "\n  128  context  = \"x\"         not read: there is one of that name before it\n"}) {
        EXPECT_THAT(result.out, HasSubstr(line));
    }
}

TEST(UrlExplain, TellsInWordsWhyAUrlIsRejected) {
    const struct {
        std::string url;
        const char* words;
    } cases[] = {
        {Replaced(kLong, "/ENV1/", "/ENV2/"),
         "the environment in front, \"ENV2\", is not that of the key, \"ENV1\" (at 23)"},
        {Replaced(kLong, "VERANT++", "VER%2FA++"),
         "belongs at 8 of the key (36 of the URL), where \"+\" stands; an escape"},
        {"LumenUID://Legacy+QOR1/E/short", "but the key ends at 5"},
        {"qor://A/B.C/12", "exactly 32 hexadecimal digits; there are 2 characters (at 12)"},
        {"LumenUID://Legacy+QOR1/E/A.part", "behind the last \".\" of the path stands \"part\", not \"ACTION\""},
    };
    for (const auto& test : cases) {
        const ToolResult result = RunTool({"url", "explain", test.url});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, HasSubstr(test.words));
    }
}

TEST(UrlExplain, RemarksOnWhatTheLibraryLetsPass) {
    const struct {
        std::string url;
        const char* words;
    } cases[] = {
        {Replaced(kLong, "00A1", "zzzz"), "no hexadecimal digits"},
        {Replaced(kLong, ".KIRVA_MODEL", ".OTHER"), "the table at the end differs"},
        {Replaced(kShort, "ENV1.", "ENVIRONMENT1."), "\"ENVIRONMENT1\" is cut to 8 characters"},
        {Replaced(kShort, "VERANT", "VER%zzANT"), "the escape at 9 has not two hexadecimal digits"},
        {"qor://ACTION/A?b=c", "a query is not taken off"},
    };
    for (const auto& test : cases) {
        const ToolResult result = RunTool({"url", "explain", test.url});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.out, HasSubstr(test.words));
    }
}

TEST(UrlExplain, CharactersBeyondLatinOneAreCountedAsOne) {
    const json explained = Explained({"qor://ACTION/\xE2\x82\xAC\xC3\xBC"});
    EXPECT_EQ(explained[0]["action"]["pieces"][1]["length"], 2);
    EXPECT_EQ(explained[0]["action"]["id"], "\xE2\x82\xAC\xC3\xBC");
    const ToolResult result = RunTool({"url", "explain", "qor://ACTION/a%1B%9B\x9B"});
    EXPECT_THAT(result.out, HasSubstr("  action \"a\\x1B\\u{009B}\\u{009B}\"\n"));
    EXPECT_THAT(result.out, StartsWith("qor://ACTION/a%1B%9B\\u{009B}\n"));
}
