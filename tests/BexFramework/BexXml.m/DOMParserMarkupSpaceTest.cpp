// White space inside markup, of every kind and in every place where it may stand.

#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <string>

namespace {

TEST(DomParserMarkupSpace, EveryKindMayStandAroundAttributesAndEquals) {
    for (const std::string space : {" ", "\t", "\n", "\r", "\r\n", " \t\n\r"}) {
        const std::string text = "<r" + space + "a" + space + "=" + space + "'1'" + space + "b" + space + "=\"2\"" +
                                 space + "><e" + space + "c='3'" + space + "/></r" + space + ">";
        const DOM_Document document = Parsed(text);
        ASSERT_FALSE(document.isNull()) << text;
        const DOM_Element root = document.getDocumentElement();
        EXPECT_EQ(Narrow(root.getAttribute("a")), "1") << text;
        EXPECT_EQ(Narrow(root.getAttribute("b")), "2") << text;
        EXPECT_EQ(Narrow(DOM_Element(root.getFirstChild()).getAttribute("c")), "3") << text;
    }
}

TEST(DomParserMarkupSpace, BlankBeforeTheEqualsSignMakesNoOtherName) {
    std::string text = "<r>";
    for (int i = 0; i < DOMParser::kMaxNames; ++i) {
        text += "<e a" + std::to_string(i) + "='1'/>";
    }
    for (const char* equals : {"=", " =", "\t=", " \r\n= "}) {
        EXPECT_FALSE(Parsed(text + "<e a0" + equals + "'2'/></r>").isNull()) << equals;
        EXPECT_TRUE(Parsed(text + "<e another" + equals + "'2'/></r>").isNull()) << equals;
    }
}

TEST(DomParserMarkupSpace, EveryKindMayStandInADocumentType) {
    for (const std::string space : {" ", "\t", "\n", "\r", "\r\n", " \t\n\r"}) {
        const std::string text =
            "<!DOCTYPE" + space + "r" + space + "PUBLIC" + space + "'p'" + space + "\"s\"" + space + "><r/>";
        EXPECT_FALSE(Parsed(text).isNull()) << text;
    }
    for (const char* text : {"<!DOCTYPEr><r/>", "<!DOCTYPE r PUBLIC'p' 's'><r/>", "<!DOCTYPE r PUBLIC 'p's'><r/>",
                             "<!DOCTYPE r SYSTEM's'><r/>"}) {
        EXPECT_TRUE(Parsed(text).isNull()) << text;
    }
}

}  // namespace
