#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char* kMembers =
    "id, abstract, priority, owner, name, status, generation, duration, durationUnit, documentation, processName, "
    "contexts, objects, record";

ToolResult ExportText(const std::string& iJson) {
    return RunTool({"export", "-"}, {.input = iJson});
}

/** An action with one part of that UUID. */
std::string WithUuid(const std::string& iUuid) {
    return R"({"objects": [{"type": "Part", "direction": "I", "name": "P", "uuid": )" + iUuid + "}]}";
}

/** A UUID as an object, some member's value replaced. */
std::string Fields(const std::string& iMember = "", const std::string& iValue = "") {
    const struct {
        const char* name;
        const char* value;
    } fields[] = {{"dbName", "\"DB\""},
                  {"environment", "\"ENV\""},
                  {"table", "\"PART_LIST\""},
                  {"coid", "\"0123456789abCDef\""},
                  {"compid", "\"00000000000000FF\""}};
    std::string text;
    for (const auto& field : fields) {
        text += (text.empty() ? "{\"" : ", \"") + std::string(field.name) + "\": ";
        text += iMember == field.name ? iValue : field.value;
    }
    return text + "}";
}

void ExpectRefused(const std::string& iJson, const std::string& iMessage) {
    SCOPED_TRACE(iJson);
    const ToolResult result = ExportText(iJson);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_EQ(result.err, "qorwfl: standard input: " + iMessage + "\n");
}

}  // namespace

TEST(JsonAction, OtherDocumentsThanObjectsAreRefused) {
    ExpectRefused("[]", "expected an object, found a list");
    ExpectRefused("\"A\"", "expected an object, found \"A\"");
    ExpectRefused("1", "expected an object, found the number 1");
    ExpectRefused("null", "expected an object, found nothing");
    ExpectRefused("true", "expected an object, found true");
}

TEST(JsonAction, UnknownMembersAreRefusedWithTheKnownOnes) {
    ExpectRefused(R"({"Id": "A"})", std::string("/Id: unknown member; known are ") + kMembers);
    ExpectRefused(R"({"": null})", std::string("/: unknown member; known are ") + kMembers);
    ExpectRefused(R"({"a/b~c": 1})", std::string("/a~1b~0c: unknown member; known are ") + kMembers);
    ExpectRefused(R"({"contexts": [{}, {"type": "Config"}]})",
                  "/contexts/1/type: unknown member; known are kind, value");
    ExpectRefused(R"({"objects": [{"id": 1}]})",
                  "/objects/0/id: unknown member; known are type, direction, nickname, name, uuid");
    ExpectRefused(WithUuid(R"({"db": "X"})"),
                  "/objects/0/uuid/db: unknown member; known are dbName, environment, table, coid, compid");
}

TEST(JsonAction, TextMembersRefuseWhatIsNoText) {
    for (const std::string member :
         {"id", "abstract", "priority", "owner", "name", "status", "durationUnit", "documentation", "processName"}) {
        ExpectRefused("{\"" + member + "\": 3}", '/' + member + ": expected a text, found the number 3");
        ExpectRefused("{\"" + member + "\": [\"A\"]}", '/' + member + ": expected a text, found a list");
        ExpectRefused("{\"" + member + "\": {}}", '/' + member + ": expected a text, found an object");
        ExpectRefused("{\"" + member + "\": false}", '/' + member + ": expected a text, found false");
    }
    ExpectRefused(R"({"contexts": [{"kind": 1}]})", "/contexts/0/kind: expected a text, found the number 1");
    ExpectRefused(R"({"contexts": [{"value": []}]})", "/contexts/0/value: expected a text, found a list");
    ExpectRefused(R"({"objects": [{"type": "Product", "nickname": 1}]})",
                  "/objects/0/nickname: expected a text, found the number 1");
    ExpectRefused(R"({"objects": [{"type": "Product", "name": {}}]})",
                  "/objects/0/name: expected a text, found an object");
}

TEST(JsonAction, ListsRefuseWhatIsNoList) {
    ExpectRefused(R"({"contexts": {}})", "/contexts: expected a list, found an object");
    ExpectRefused(R"({"objects": "Part"})", "/objects: expected a list, found \"Part\"");
    ExpectRefused(R"({"contexts": [{}, 1]})", "/contexts/1: expected an object, found the number 1");
    ExpectRefused(R"({"objects": [null]})", "/objects/0: expected an object, found nothing");
}

TEST(JsonAction, NumbersRefuseWhatIsNoneOrOutOfRange) {
    const std::string generation = "/generation: expected a whole number from -2147483648 to 2147483647, found ";
    ExpectRefused(R"({"generation": "3"})", generation + "\"3\"");
    ExpectRefused(R"({"generation": 1.5})", generation + "the number 1.5");
    ExpectRefused(R"({"generation": 2147483648})", generation + "the number 2147483648");
    ExpectRefused(R"({"generation": -2147483649})", generation + "the number -2147483649");
    ExpectRefused(R"({"generation": 18446744073709551615})", generation + "the number 18446744073709551615");
    const std::string duration = "/duration: expected a whole number from " + std::to_string(LONG_MIN) + " to " +
                                 std::to_string(LONG_MAX) + ", found ";
    ExpectRefused(R"({"duration": true})", duration + "true");
    const std::string tooLarge = std::to_string(static_cast<unsigned long>(LONG_MAX) + 1);
    ExpectRefused("{\"duration\": " + tooLarge + "}", duration + "the number " + tooLarge);
    ExpectRefused(R"({"duration": 9223372036854775808})", duration + "the number 9223372036854775808");
}

TEST(JsonAction, NumbersAreTakenUpToTheirLimits) {
    for (const char* number : {"-2147483648", "2147483647", "0"}) {
        const ToolResult result = ExportText(std::string("{\"generation\": ") + number + "}");
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.out, HasSubstr(std::string("Value = \"") + number + "\""));
    }
    for (const std::string& number : {std::to_string(LONG_MIN), std::to_string(LONG_MAX), std::string("-5")}) {
        const ToolResult result = ExportText("{\"duration\": " + number + "}");
        EXPECT_EQ(result.status, 0) << result;
        EXPECT_THAT(result.out, HasSubstr("<Duration>" + number + "</Duration>"));
    }
}

TEST(JsonAction, CharactersThatTheDocumentCannotHoldAreRefusedWithTheirPlace) {
    ExpectRefused("{\"abstract\": \"5 \xE2\x82\xAC\"}",
                  "/abstract: character U+20AC (\xE2\x82\xAC) is outside ISO-8859-1");
    ExpectRefused(R"({"owner": "\u0100"})", "/owner: character U+0100 (\xC4\x80) is outside ISO-8859-1");
    ExpectRefused(R"({"name": "\ud83d\ude00"})", "/name: character U+1F600 (\xF0\x9F\x98\x80) is outside ISO-8859-1");
    ExpectRefused(R"({"id": "A\u0000B"})", "/id: character U+0000 cannot be in an XML document");
    ExpectRefused(R"({"status": "\u001f"})", "/status: character U+001F cannot be in an XML document");
    ExpectRefused(R"({"objects": [{"type": "Product", "nickname": "\u2013"}]})",
                  "/objects/0/nickname: character U+2013 (\xE2\x80\x93) is outside ISO-8859-1");
    ExpectRefused(WithUuid(Fields("table", R"("T\u0142")")),
                  "/objects/0/uuid/table: character U+0142 (\xC5\x82) is outside ISO-8859-1");
}

TEST(JsonAction, EveryCharacterOfTheEncodingComesOutAsItsByte) {
    std::string json;
    std::vector<std::string> expected;
    for (int code = 1; code <= 0xFF; ++code) {
        if (code < 0x20 && code != '\t' && code != '\n' && code != '\r') {
            continue;
        }
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(code));
        json += (json.empty() ? "" : ", ") +
                std::string(R"({"type": "Part", "direction": "I", "uuid": "qor://D/E.T/)") + std::string(32, '0') +
                R"(", "nickname": "a)" + escape + "b\"}";
        const auto byte = static_cast<char>(code);
        const std::string written = byte == '&'   ? "&amp;"
                                    : byte == '<' ? "&lt;"
                                    : byte == '>' ? "&gt;"
                                    : byte == '"' ? "&quot;"
                                                  : std::string(1, byte);
        expected.push_back("<InitialValue>a" + written + "b</InitialValue>");
    }
    const ToolResult result = ExportText("{\"objects\": [" + json + "]}");
    EXPECT_EQ(result.status, 0) << result.err;
    std::size_t place = 0;
    for (const std::string& value : expected) {
        place = result.out.find(value, place);
        ASSERT_NE(place, std::string::npos) << value;
    }
}

TEST(JsonAction, ObjectTypesAndDirectionsAreChecked) {
    const std::string types =
        "/objects/0/type: expected one of \"Product\", \"Part\", \"Model\", \"Document\" and \"Feature\", found ";
    ExpectRefused(R"({"objects": [{"type": "part"}]})", types + "\"part\"");
    ExpectRefused(R"({"objects": [{"type": ""}]})", types + "\"\"");
    ExpectRefused(R"({"objects": [{}]})", types + "nothing");
    const std::string directions = "/objects/0/direction: expected \"I\" (input), \"O\" (output) or nothing, found ";
    ExpectRefused(R"({"objects": [{"type": "Product", "direction": "IO"}]})", directions + "\"IO\"");
    ExpectRefused(R"({"objects": [{"type": "Product", "direction": ""}]})", directions + "\"\"");
}

TEST(JsonAction, OnlyAProductMayDoWithoutUuid) {
    EXPECT_EQ(ExportText(R"({"objects": [{"type": "Product"}]})").status, 0);
    for (const std::string type : {"Part", "Model", "Document", "Feature"}) {
        for (const char* uuid : {"", R"(, "uuid": null)"}) {
            ExpectRefused(R"({"objects": [{"type": ")" + type + "\"" + uuid + "}]}",
                          "/objects/0/uuid: expected a UUID (an object with dbName, environment, table, coid and "
                          "compid, or an instance URL), found nothing");
        }
    }
}

TEST(JsonUuid, FieldsAreCheckedForPresenceAndWidth) {
    const std::string uuid = "/objects/0/uuid";
    for (const std::string field : {"dbName", "environment", "table", "coid", "compid"}) {
        ExpectRefused(WithUuid(Fields(field, "null")), uuid + '/' + field + ": expected a text, found nothing");
        ExpectRefused(WithUuid(Fields(field, "7")), uuid + '/' + field + ": expected a text, found the number 7");
    }
    ExpectRefused(WithUuid(Fields("dbName", "\"123456789\"")),
                  uuid + "/dbName: expected at most 8 characters, found 9");
    ExpectRefused(WithUuid(Fields("environment", "\"123456789\"")),
                  uuid + "/environment: expected at most 8 characters, found 9");
    ExpectRefused(WithUuid(Fields("table", "\"1234567890123456789\"")),
                  uuid + "/table: expected at most 18 characters, found 19");
    for (const std::string field : {"coid", "compid"}) {
        for (const std::string digits : {"", "0", "000000000000000", "00000000000000000", "000000000000000G",
                                         "0x00000000000000", " 000000000000000", "+000000000000000"}) {
            ExpectRefused(WithUuid(Fields(field, '"' + digits + '"')),
                          uuid + '/' + field + ": expected exactly 16 hexadecimal digits, found \"" + digits + '"');
        }
    }
    for (const char* other : {"3", "[]", "true"}) {
        const ToolResult result = ExportText(WithUuid(other));
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr(uuid + ": expected a UUID (an object with dbName")) << result;
    }
}

TEST(JsonUuid, TextsOfFullWidthAreTakenWhole) {
    const ToolResult result = ExportText(WithUuid(
        R"({"dbName": "12345678", "environment": "ABCDEFGH", "table": "PARTPARTPARTPART_X", "coid": "0123456789abCDef", "compid": "fedcba9876543210"})"));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("LumenUID://Legacy+QOR1/ABCDEFGH/12345678#ABCDEFGH#PARTPARTPARTPART_X"
                                      "#0123456789ABCDEF#FEDCBA9876543210.PARTPARTPARTPART_X?Nickname="));
}

TEST(JsonUuid, AllWaysToWriteOneGiveTheSameDocument) {
    const std::string fields = MaskCreated(ExportText(WithUuid(Fields())).out);
    EXPECT_THAT(fields, HasSubstr("LumenUID://Legacy+QOR1/ENV/DB++++++#ENV+++++#PART_LIST+++++++++"
                                  "#0123456789ABCDEF#00000000000000FF.PART_LIST?Nickname="));
    for (const char* url : {
             "LumenUID://Legacy+QOR1/ENV/"
             "DB++++++#ENV+++++#PART_LIST+++++++++#0123456789ABCDEF#00000000000000FF.PART_LIST",
             "LumenUID://Legacy+QOR1/ENV/DB++++++#ENV+++++#PART_LIST+++++++++#0123456789abcdef#00000000000000ff.?a=b",
             "qor://DB/ENV.PART_LIST/0123456789ABCDEF00000000000000FF",
             "qor://DB/ENV.PART_LIST/0123456789abcdef00000000000000ff?Nickname=x/y",
             "qor://DB%2FENV%2EPART%5FLIST%2F%30123456789ABCDEF00000000000000FF",
         }) {
        const ToolResult result = ExportText(WithUuid('"' + std::string(url) + '"'));
        EXPECT_EQ(result.status, 0) << url << '\n' << result;
        EXPECT_EQ(MaskCreated(result.out), fields) << url;
    }
}

TEST(JsonUuid, UrlsThatNameNoInstanceAreRefused) {
    const char* const reason =
        "/objects/0/uuid: expected an instance URL (LumenUID://Legacy+QOR1/... or qor://...), found ";
    for (const std::string url :
         {"", "PART", "http://host/x", "qor://ACTION/A1", "LumenUID://Legacy+QOR1/default/A1.ACTION",
          "qor://DB/ENV.T/0123456789ABCDEF00000000000000F", "qor:///ENV.T/0123456789ABCDEF00000000000000FF",
          "LumenUID://Legacy+QOR1/OTHER/DB++++++#ENV+++++#PART_LIST+++++++++#0123456789ABCDEF#0000.PART_LIST"}) {
        const ToolResult result = ExportText(WithUuid('"' + url + '"'));
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, HasSubstr(reason + std::string("\"") + url.substr(0, 40))) << url;
    }
}

TEST(JsonUuid, UrlsThatTheBlockCannotHoldAreRefused) {
    const std::string uuid = "/objects/0/uuid: ";
    const std::string digits = "0123456789ABCDEF00000000000000FF";
    ExpectRefused(WithUuid("\"qor://DATABASE1/ENV.T/" + digits + '"'), uuid + "expected at most 8 characters, found 9");
    ExpectRefused(WithUuid("\"qor://DB/ENVIRONM1.T/" + digits + '"'), uuid + "expected at most 8 characters, found 9");
    ExpectRefused(WithUuid("\"qor://DB/ENV.TABLETABLETABLETABL/" + digits + '"'),
                  uuid + "expected at most 18 characters, found 19");
    const std::string hexadecimal = "expected an instance URL with hexadecimal identifiers, found ";
    for (const std::string url :
         {"qor://DB/ENV.T/0123456789ABCDEG00000000000000FF", "qor://D&B/ENV.T/0x23456789ABCDEF00000000000000FF",
          "LumenUID://Legacy+QOR1/E/D+++++++#E+++++++#T+++++++++++++++++#012345678 ABCDEF#00000000000000FF.T",
          "LumenUID://Legacy+QOR1/E/D+++++++#E+++++++#T+++++++++++++++++#0123456789ABCDEF#0000000000000-FF.T"}) {
        const ToolResult result = ExportText(WithUuid('"' + url + '"'));
        EXPECT_EQ(result.status, 1) << url;
        EXPECT_THAT(result.err, HasSubstr(uuid + hexadecimal)) << url;
    }
}

TEST(JsonUuid, AmpersandInAShortUrlIsPartOfItsText) {
    const ToolResult result = ExportText(WithUuid(R"("qor://D&345678/ENV.T/0123456789ABCDEF00000000000000FF")"));
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("/ENV/D%26345678#"));
}

TEST(JsonAction, LongTextIsCutInTheMessage) {
    const ToolResult result = ExportText(WithUuid('"' + std::string(100000, 'x') + '"'));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("xxx...\n"));
    EXPECT_THAT(result.err.size(), testing::Lt(300U));
}
