// Which bytes may follow which in UTF-8, at the boundaries of what the encoding allows.

#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <string>

namespace {

TEST(Utf8Boundary, FirstAndLastCharactersOfEachLengthAreRead) {
    const struct {
        const char* bytes;
        const char16_t* units;
    } cases[] = {
        {"\x7F", u"\u007f"},
        {"\xC2\x80", u"\u0080"},
        {"\xDF\xBF", u"\u07ff"},
        {"\xE0\xA0\x80", u"\u0800"},
        {"\xE1\x80\x80", u"\u1000"},
        {"\xED\x80\x80", u"\ud000"},
        {"\xED\x9F\xBF", u"\ud7ff"},
        {"\xEE\x80\x80", u"\ue000"},
        {"\xEF\xBF\xBD", u"\ufffd"},
        {"\xF0\x90\x80\x80", u"\U00010000"},
        {"\xF1\x80\x80\x80", u"\U00040000"},
        {"\xF4\x80\x80\x80", u"\U00100000"},
        {"\xF4\x8F\xBF\xBF", u"\U0010ffff"},
    };
    for (const auto& each : cases) {
        const DOM_Document document = Parsed("<a>" + std::string(each.bytes) + "</a>");
        ASSERT_FALSE(document.isNull()) << each.bytes;
        EXPECT_EQ(Units(document.getDocumentElement().getFirstChild().getNodeValue()), each.units) << each.bytes;
    }
}

TEST(Utf8Boundary, WhatLiesOutsideGivesNoDocument) {
    const struct {
        const char* name;
        const char* bytes;
    } cases[] = {
        {"a byte that begins nothing", "\x80"},
        {"the last byte that begins nothing", "\xBF"},
        {"two bytes for what one holds", "\xC1\xBF"},
        {"three bytes for what two hold", "\xE0\x80\x80"},
        {"the last of those", "\xE0\x9F\xBF"},
        {"the first half of a pair", "\xED\xA0\x80"},
        {"the last half of a pair", "\xED\xBF\xBF"},
        {"four bytes for what three hold", "\xF0\x80\x80\x80"},
        {"the last of those", "\xF0\x8F\xBF\xBF"},
        {"the first behind the last character", "\xF4\x90\x80\x80"},
        {"the last of those", "\xF4\xBF\xBF\xBF"},
        {"a length that does not exist", "\xF5\x80\x80\x80"},
        {"no second byte", "\xC2"},
        {"no third byte", "\xE1\x80"},
        {"no fourth byte", "\xF1\x80\x80"},
        {"a third byte of another kind", "\xE1\x80\xC0"},
        {"a fourth byte of another kind", "\xF1\x80\x80\x7F"},
    };
    for (const auto& each : cases) {
        EXPECT_TRUE(Parsed("<a>" + std::string(each.bytes) + "</a>").isNull()) << each.name << ": " << each.bytes;
    }
}

}  // namespace
