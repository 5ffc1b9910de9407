// Documents in EBCDIC, which are known by how their XML declaration begins: they give no document, nor anything else.

#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <iconv.h>
#include <string>

namespace {

/** An ISO-8859-1 text in an EBCDIC code page, by the C library's tables. */
std::string InEbcdic(std::string iText) {
    std::string bytes(iText.size(), '\0');
    const iconv_t converter = ::iconv_open("IBM037", "ISO-8859-1");
    EXPECT_NE(converter, iconv_t(-1));
    char* from = iText.data();
    char* to = bytes.data();
    std::size_t fromLeft = iText.size();
    std::size_t toLeft = bytes.size();
    EXPECT_EQ(::iconv(converter, &from, &fromLeft, &to, &toLeft), 0U);
    ::iconv_close(converter);
    return bytes;
}

TEST(DomParserEbcdic, GivesNoDocument) {
    for (const char* text :
         {"<?xml version='1.0'?><a>text</a>", "<?xml version='1.0' encoding='no-such'?><a/>", "<?xml", "<a>text</a>"}) {
        DOMParser parser;
        const TextSource source(InEbcdic(text));
        parser.parse(source.Get());
        EXPECT_TRUE(parser.getDocument().isNull()) << text;
        EXPECT_GT(parser.getErrorText().length(), 0U) << text;
    }
}

}  // namespace
