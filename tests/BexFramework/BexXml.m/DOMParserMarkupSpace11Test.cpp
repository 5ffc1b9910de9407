// The white space that XML 1.1 has besides that of XML 1.0, in markup: U+0085 and U+2028 separate attributes there, so
// no limit may be overlooked behind them.

#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <string>

namespace {

const std::string kNextLine = "\xC2\x85";
const std::string kLineSeparator = "\xE2\x80\xA8";

/** A text of one kind of white space, with its bytes in an encoding. */
struct Space {
    const char* encoding;
    std::string bytes;
};

const Space kSpaces[] = {{"UTF-8", kNextLine}, {"UTF-8", kLineSeparator}, {"ISO-8859-1", "\x85"}};

std::string Declared(const std::string& iVersion, const std::string& iEncoding) {
    return "<?xml version='" + iVersion + "' encoding='" + iEncoding + "'?>";
}

std::string Repeated(const std::string& iText, int iCount) {
    std::string text;
    for (int count = 0; count < iCount; ++count) {
        text += iText;
    }
    return text;
}

std::string Nested(int iDepth) {
    return Repeated("<a>", iDepth) + Repeated("</a>", iDepth);
}

/** The same text in UTF-16 with its mark. */
std::string Utf16(const std::u16string& iText) {
    const std::u16string text = u"\uFEFF" + iText;
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t));
}

TEST(DomParserMarkupSpace11, SeparatesAttributesInXml11Only) {
    for (const Space& space : kSpaces) {
        const std::string& s = space.bytes;
        const std::string body = "<r" + s + "a" + s + "=" + s + "'1'" + s + "b='2'" + s + "/>";
        const DOM_Document document = Parsed(Declared("1.1", space.encoding) + body);
        ASSERT_FALSE(document.isNull()) << body;
        EXPECT_EQ(Narrow(document.getDocumentElement().getAttribute("a")), "1");
        EXPECT_EQ(Narrow(document.getDocumentElement().getAttribute("b")), "2");
        EXPECT_TRUE(Parsed(Declared("1.0", space.encoding) + body).isNull()) << body;
    }
    for (const char16_t space : {u'\u0085', u'\u2028'}) {
        const std::u16string body = std::u16string(u"<r") + space + u"a='1'" + space + u"/>";
        EXPECT_FALSE(Parsed(Utf16(u"<?xml version='1.1'?>" + body)).isNull());
        EXPECT_TRUE(Parsed(Utf16(u"<?xml version='1.0'?>" + body)).isNull());
    }
}

TEST(DomParserMarkupSpace11, NoLimitIsOverlookedBehindIt) {
    for (const Space& space : kSpaces) {
        // read as one long name, the first tag would end behind the quote of the second attribute
        const std::string hiding = Declared("1.1", space.encoding) + "<r" + space.bytes + "x='/ \"'>";
        EXPECT_FALSE(Parsed(hiding + Nested(1023) + "</r>").isNull()) << space.encoding;
        EXPECT_TRUE(Parsed(hiding + Nested(1024) + "</r>").isNull()) << space.encoding;
        std::string attributes;
        std::string names;
        for (int number = 0; number < 16384; ++number) {
            attributes += number < 1024 ? " n" + std::to_string(number) + "=''" : "";
            names += "<n" + std::to_string(number) + "/>";
        }
        EXPECT_FALSE(Parsed(hiding + "<e" + attributes + "/></r>").isNull()) << space.encoding;
        EXPECT_TRUE(Parsed(hiding + "<e" + attributes + " n=''/></r>").isNull()) << space.encoding;
        EXPECT_TRUE(Parsed(hiding + names + "</r>").isNull()) << space.encoding;
        // read so, each of these would be an element without content
        const std::string open = "<a" + space.bytes + "x='/>'>";
        const std::string declared = Declared("1.1", space.encoding);
        EXPECT_FALSE(Parsed(declared + Repeated(open, 1024) + Repeated("</a>", 1024)).isNull()) << space.encoding;
        EXPECT_TRUE(Parsed(declared + Repeated(open, 1025) + Repeated("</a>", 1025)).isNull()) << space.encoding;
    }
}

TEST(DomParserMarkupSpace11, NoLimitIsOverlookedBehindItInUtf16) {
    for (const char16_t space : {u'\u0085', u'\u2028'}) {
        const std::u16string hiding = std::u16string(u"<?xml version='1.1'?><r") + space + u"x='/ \"'>";
        std::u16string open;
        std::u16string close;
        for (int depth = 0; depth < 1023; ++depth) {
            open += u"<a>";
            close += u"</a>";
        }
        EXPECT_FALSE(Parsed(Utf16(hiding + open + close + u"</r>")).isNull());
        EXPECT_TRUE(Parsed(Utf16(hiding + open + u"<a/>" + close + u"</r>")).isNull());
    }
}

TEST(DomParserMarkupSpace11, CharacterWithSuchAByteBelongsToAName) {
    const DOM_Document document = Parsed("<r \xC3\x85='1' \xE2\x80\xBF='2'/>");
    EXPECT_TRUE(document.isNull());  // U+203F begins no name
    const DOM_Document other = Parsed("<\xC3\x85 a\xC3\x85='1'><\xC3\x85/></\xC3\x85>");
    ASSERT_FALSE(other.isNull());
    EXPECT_EQ(Units(other.getDocumentElement().getNodeName()), u"\u00C5");
    EXPECT_EQ(Units(other.getDocumentElement().getAttribute(DOMString(u"a\u00C5"))), u"1");
}

TEST(DomParserMarkupSpace11, MayStandInADocumentTypeOfXml11Only) {
    for (const Space& space : kSpaces) {
        const std::string& s = space.bytes;
        const std::string types[] = {
            "<!DOCTYPE" + s + "r>",
            "<!DOCTYPE r" + s + ">",
            "<!DOCTYPE r" + s + "SYSTEM 'x'>",
            "<!DOCTYPE r SYSTEM" + s + "'x'>",
            "<!DOCTYPE r SYSTEM 'x'" + s + ">",
            "<!DOCTYPE" + s + "r" + s + "PUBLIC" + s + "'p'" + s + "'x'" + s + ">",
        };
        for (const std::string& type : types) {
            EXPECT_FALSE(Parsed(Declared("1.1", space.encoding) + type + "<r/>").isNull()) << type;
            EXPECT_TRUE(Parsed(Declared("1.0", space.encoding) + type + "<r/>").isNull()) << type;
        }
    }
    EXPECT_TRUE(Parsed("<?xml version='1.0' encoding='windows-1252'?><!DOCTYPE\x85r><r/>").isNull());
    EXPECT_TRUE(Parsed("<?xml version='1.1' encoding='windows-1252'?><!DOCTYPE\x85r><r/>").isNull());
    EXPECT_FALSE(Parsed("<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE r SYSTEM '\x85'><r/>").isNull());
}

}  // namespace
