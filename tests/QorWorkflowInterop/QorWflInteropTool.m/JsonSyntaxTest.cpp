#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Lt;
using testing::StartsWith;

namespace {

ToolResult ExportText(const std::string& iJson) {
    return RunTool({"export", "-"}, {.input = iJson});
}

/** An action whose objects list is @p iLevels lists deep inside. */
std::string Nested(int iLevels) {
    const auto inner = static_cast<std::size_t>(iLevels - 1);
    return "{\"objects\":" + std::string(inner, '[') + std::string(inner, ']') + "}";
}

}  // namespace

TEST(JsonSyntax, ErrorTellsLineColumnAndWhatIsWrong) {
    const struct {
        std::string text;
        const char* place;
        const char* reason;
    } cases[] = {
        {"", "1:1", "unexpected end of input; expected an object, which begins with {\n"},
        {" \n\t", "2:2", "unexpected end of input; expected an object, which begins with {\n"},
        {" ]", "1:2", "unexpected ']'; expected an object, which begins with {\n"},
        {"{\"id\": ]", "1:8", "unexpected ']'; expected '[', '{', or a literal\n"},
        {"{", "1:2", "unexpected end of input"},
        {"{\n  \"id\": \"A\",\n}", "3:1", "unexpected '}'"},
        {"{\"id\" \"A\"}", "1:9", "unexpected string literal"},
        {"{\"id\": tru}", "1:11", "invalid literal"},
        {"{\"id\": \"A\n\"}", "1:10", "control character"},
        {"{\"id\": \"\xFC\"}", "1:9", "ill-formed UTF-8"},
        {"{\"id\": \"\\ud800\"}", "1:15", "surrogate"},
        {"{\"id\": \"\xC3\xA9\xC3\xA9\" ?}", "1:13", "invalid literal"},
        {"{} {}", "1:4", "end of input"},
        {"{\"duration\": 1e999}", "1:18", "number overflow"},
        {std::string("{\"id\": \0}", 9), "1:8", "NUL character"},
        {std::string("{}\n\0{}", 6), "2:1", "NUL character"},
        {"\xEF\xBB\xBF{", "1:2", "unexpected end of input"},
        {"[1e999", "1:6", "number overflow"},
        {"\r\n\r\n// note\r\n{}", "3:1", "invalid literal"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.text);
        const ToolResult result = ExportText(test.text);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, StartsWith(std::string("qorwfl: standard input:") + test.place + ": "));
        EXPECT_THAT(result.err, HasSubstr(test.reason));
        EXPECT_THAT(result.err, EndsWith("\n"));
    }
}

TEST(JsonSyntax, BytesThatAreNoTextAreNotShown) {
    for (const char* text :
         {"{\"id\": \"\xFC\"}", "{\"id\": \"ok \xC3(\"}", "\xEF\xBB\xBF\xEF\xBB\xFF{}", "{\"\x9B\": 1}", "\x9B"}) {
        const ToolResult result = ExportText(text);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, testing::Each(testing::AllOf(testing::Ge('\n'), testing::Le('~')))) << result.err;
    }
}

TEST(JsonSyntax, EveryCutOfAnActionIsRefused) {
    const std::string whole = FileBytes(Example("minimal.json"));
    const std::string text = whole.substr(0, whole.find_last_not_of('\n') + 1);
    for (std::size_t length = 0; length < text.size(); ++length) {
        const ToolResult result = ExportText(text.substr(0, length));
        EXPECT_EQ(result.status, 1) << length;
        EXPECT_THAT(result.out, IsEmpty());
    }
    EXPECT_EQ(ExportText(text).status, 0);
}

TEST(JsonSyntax, LongTokenIsNotRepeatedInTheMessage) {
    const ToolResult result = ExportText("{\"id\": \"" + std::string(100000, 'x'));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err.size(), Lt(400U));
}

TEST(JsonSyntax, MemberGivenTwiceIsRefusedWhereItIsGivenAgain) {
    const ToolResult top = ExportText("{\"id\": \"A\",\n \"id\": \"B\"}");
    EXPECT_EQ(top.status, 1);
    EXPECT_EQ(top.err, "qorwfl: standard input:2:5: member \"id\" is given twice\n");
    const ToolResult inner = ExportText("{\"contexts\":[{\"kind\":\"a\"},{\"kind\":\"a\",\"kind\":\"b\"}]}");
    EXPECT_EQ(inner.err, "qorwfl: standard input:1:44: member \"kind\" is given twice\n");
}

TEST(JsonSyntax, SixtyFourLevelsAreReadAndOneMoreIsRefused) {
    EXPECT_THAT(ExportText(Nested(64)).err, HasSubstr("/objects/0: expected an object, found a list"));
    EXPECT_EQ(ExportText(Nested(65)).err, "qorwfl: standard input:1:75: nested deeper than 64 levels\n");
}

TEST(JsonSyntax, MillionLevelsAreRefusedWithoutACrash) {
    for (const char* bracket : {"[", "{\"id\":"}) {
        std::string text;
        for (int i = 0; i < 1000000; ++i) {
            text += bracket;
        }
        const ToolResult result = ExportText(text);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("nested deeper than 64 levels"));
    }
}

TEST(JsonSyntax, ByteOrderMarkIsReadPast) {
    EXPECT_EQ(ExportText("\xEF\xBB\xBF{\"id\": \"A\"}").status, 0);
}
