#include <BexDom.h>

#include <gtest/gtest.h>

#include <GlobalLocale.h>
#include <XmlText.h>
#include <locale>
#include <memory>
#include <string>
#include <vector>

namespace {

std::string AllBytesButNul() {
    std::string bytes;
    for (int code = 1; code < 256; ++code) {
        bytes += static_cast<char>(code);
    }
    return bytes;
}

}  // namespace

TEST(DomString, WithoutAValueIsNull) {
    const DOMString texts[] = {DOMString(), DOMString(nullptr), DOMString(static_cast<const char*>(nullptr)),
                               DOMString(static_cast<const XMLCh*>(nullptr)),
                               DOMString(static_cast<const XMLCh*>(nullptr), 3)};
    for (const DOMString& text : texts) {
        EXPECT_TRUE(text.isNull());
        EXPECT_TRUE(text == nullptr);
        EXPECT_TRUE(text == 0);
        EXPECT_EQ(text.length(), 0U);
        ASSERT_NE(text.rawBuffer(), nullptr);
        EXPECT_EQ(text.rawBuffer()[0], u'\0');
        EXPECT_EQ(Narrow(text), "");
    }
}

TEST(DomString, EmptyIsNotNullButEqualAsText) {
    const DOMString empties[] = {DOMString(""), DOMString(u""), DOMString(u"abc", 0)};
    for (const DOMString& empty : empties) {
        EXPECT_FALSE(empty.isNull());
        EXPECT_TRUE(empty != nullptr);
        EXPECT_EQ(empty.length(), 0U);
        EXPECT_TRUE(empty == DOMString());
        EXPECT_TRUE(empty.equals(DOMString()));
        EXPECT_TRUE(DOMString().equals(empty));
    }
}

TEST(DomString, EveryNarrowByteIsTheCodeUnitOfItsValue) {
    for (int code = 1; code < 256; ++code) {
        const char narrow[] = {static_cast<char>(code), '\0'};
        const DOMString text(narrow);
        ASSERT_EQ(text.length(), 1U) << code;
        EXPECT_EQ(text.rawBuffer()[0], static_cast<XMLCh>(code));
        EXPECT_EQ(Narrow(text), narrow) << code;
    }
}

TEST(DomString, NarrowTextDoesNotDependOnTheLocaleOfTheProcess) {
    const std::vector<std::locale> locales =
        InstalledLocales({"C", "C.UTF-8", "C.utf8", "en_US.UTF-8", "de_DE.ISO-8859-1", "tr_TR.UTF-8", "ja_JP.EUC-JP"});
    EXPECT_GE(locales.size(), 2U);
    for (const std::locale& one : locales) {
        const GlobalLocale locale(one);
        const DOMString text(AllBytesButNul().c_str());
        EXPECT_EQ(text.length(), 255U) << one.name();
        EXPECT_EQ(Narrow(text), AllBytesButNul()) << one.name();
        EXPECT_EQ(Narrow(DOMString(u"\u20ac\u00e9")), "?\xE9") << one.name();
    }
}

TEST(DomString, CodeUnitsAboveAByteAreQuestionMarksInNarrowText) {
    struct Case {
        std::u16string text;
        std::string narrow;
    };
    const Case cases[] = {
        {u"\u00ff", "\xFF"},   {u"\u0100", "?"}, {u"a\u20acb", "a?b"},
        {u"\U0001F600", "??"}, {u"\uffff", "?"}, {std::u16string(1, char16_t{0xD800}), "?"},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(Narrow(DOMString(one.text.c_str())), one.narrow);
    }
}

TEST(DomString, TranscodeGivesANewTerminatedArrayEachTime) {
    const DOMString text("abc");
    const std::unique_ptr<char[]> first(text.transcode());
    const std::unique_ptr<char[]> second(text.transcode());
    EXPECT_NE(first.get(), second.get());
    EXPECT_STREQ(first.get(), "abc");
    EXPECT_STREQ(second.get(), "abc");
    const std::unique_ptr<char[]> nothing(DOMString().transcode());
    ASSERT_NE(nothing.get(), nullptr);
    EXPECT_STREQ(nothing.get(), "");
}

TEST(DomString, KeepsNulCodeUnitsGivenWithALength) {
    const DOMString text(u"a\0b", 3);
    EXPECT_EQ(text.length(), 3U);
    EXPECT_EQ(Narrow(text), std::string("a\0b", 3));
}

TEST(DomString, IsTerminatedBehindItsText) {
    DOMString text("ab");
    EXPECT_EQ(text.rawBuffer()[2], u'\0');
    text.appendData(DOMString("cd"));
    EXPECT_EQ(text.rawBuffer()[4], u'\0');
}

TEST(DomString, SubstringIsClampedAndNeverNull) {
    struct Case {
        std::size_t offset;
        std::size_t count;
        std::string part;
    };
    const Case cases[] = {
        {0, 5, "abcde"},
        {0, 0, ""},
        {1, 3, "bcd"},
        {4, 1, "e"},
        {4, 2, "e"},
        {5, 1, ""},
        {6, 1, ""},
        {2, 1, "c"},
        {0, 9, "abcde"},
        {2, static_cast<std::size_t>(-1), "cde"},
        {static_cast<std::size_t>(-1), static_cast<std::size_t>(-1), ""},
    };
    const DOMString text("abcde");
    for (const Case& one : cases) {
        const DOMString part = text.substringData(one.offset, one.count);
        EXPECT_EQ(Narrow(part), one.part) << one.offset << ", " << one.count;
        EXPECT_FALSE(part.isNull());
    }
    EXPECT_FALSE(DOMString().substringData(0, 1).isNull());
}

TEST(DomString, AppendsTextsAndCodeUnits) {
    DOMString text;
    text.appendData(DOMString("a"));
    EXPECT_FALSE(text.isNull());
    text.appendData(XMLCh{u'b'});
    text += DOMString("c");
    text += "d";
    text += XMLCh{0x20AC};
    EXPECT_EQ(Units(text), u"abcd\u20ac");
    EXPECT_EQ(Narrow(text + DOMString("!")), "abcd?!");
    EXPECT_EQ(Narrow("<" + DOMString("e") + ">"), "<e>");
}

TEST(DomString, AppendsItself) {
    DOMString text("ab");
    for (int doubling = 0; doubling < 8; ++doubling) {
        text.appendData(text);
    }
    text += text;
    std::string expected;
    for (int count = 0; count < 512; ++count) {
        expected += "ab";
    }
    EXPECT_EQ(Narrow(text), expected);
}

TEST(DomString, ComparesByCodeUnits) {
    EXPECT_TRUE(DOMString("abc") == DOMString(u"abc"));
    EXPECT_TRUE(DOMString("abc") == "abc");
    EXPECT_TRUE(DOMString("abc") != "abC");
    EXPECT_TRUE(DOMString("abc") != "abcd");
    EXPECT_FALSE(DOMString("abc").equals("ab"));
    EXPECT_TRUE(DOMString("abc").equals("abc"));
    EXPECT_FALSE(DOMString(u"a\0b", 3).equals(DOMString("a")));
}

TEST(DomString, CopiesAreIndependent) {
    DOMString original("text");
    DOMString copy(original);
    copy += "!";
    EXPECT_EQ(Narrow(original), "text");
    EXPECT_EQ(Narrow(copy), "text!");
    original = copy;
    copy.clear();
    EXPECT_EQ(Narrow(original), "text!");
    EXPECT_FALSE(copy.isNull());
}
