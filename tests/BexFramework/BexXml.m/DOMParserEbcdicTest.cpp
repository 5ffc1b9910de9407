// Documents in EBCDIC, which are known by how their XML declaration begins and have to declare their encoding.

#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <iconv.h>
#include <string>

namespace {

/** An ISO-8859-1 text in an EBCDIC code page, by the C library's tables. */
std::string InEbcdic(std::string iText, const char* iCodePage) {
    std::string bytes(iText.size(), '\0');
    const iconv_t converter = ::iconv_open(iCodePage, "ISO-8859-1");
    EXPECT_NE(converter, iconv_t(-1));
    char* from = iText.data();
    char* to = bytes.data();
    std::size_t fromLeft = iText.size();
    std::size_t toLeft = bytes.size();
    EXPECT_EQ(::iconv(converter, &from, &fromLeft, &to, &toLeft), 0U);
    ::iconv_close(converter);
    return bytes;
}

TEST(DomParserEbcdic, IsReadInTheCodePageThatItDeclares) {
    struct Case {
        const char* declared;
        const char* codePage;
    };
    const Case cases[] = {{"IBM037", "IBM037"},       {"IBM-037", "IBM037"},   {"ebcdic-cp-us", "IBM037"},
                          {"EBCDIC-CP-US", "IBM037"}, {"IBM1047", "IBM1047"},  {"IBM-1047", "IBM1047"},
                          {"IBM1140", "IBM1140"},     {"ibm01140", "IBM1140"}, {"IBM273", "IBM273"}};
    for (const Case& tried : cases) {
        const std::string text = "<?xml version='1.0' encoding='" + std::string(tried.declared) +
                                 "'?>\n<!-- a comment -->\n<a b='[x] \xE4'>y^\n\xFC</a>\n";
        DOMParser parser;
        const TextSource source(InEbcdic(text, tried.codePage));
        parser.parse(source.Get());
        ASSERT_FALSE(parser.getDocument().isNull()) << tried.declared << ": " << Narrow(parser.getErrorText());
        const DOM_Element root = parser.getDocument().getDocumentElement();
        EXPECT_EQ(Narrow(root.getAttribute("b")), "[x] \xE4") << tried.declared;
        EXPECT_EQ(Narrow(root.getFirstChild().getNodeValue()), "y^\n\xFC") << tried.declared;
    }
}

TEST(DomParserEbcdic, WithoutAKnownEncodingInItsDeclarationIsNoDocument) {
    for (const char* text : {"<?xml version='1.0'?><a>text</a>", "<?xml version='1.0' encoding='no-such'?><a/>",
                             "<?xml version='1.0' encoding='UTF-8'?><a/>", "<?xml", "<a>text</a>"}) {
        DOMParser parser;
        const TextSource source(InEbcdic(text, "IBM037"));
        parser.parse(source.Get());
        EXPECT_TRUE(parser.getDocument().isNull()) << text;
        EXPECT_GT(parser.getErrorText().length(), 0U) << text;
    }
}

}  // namespace
