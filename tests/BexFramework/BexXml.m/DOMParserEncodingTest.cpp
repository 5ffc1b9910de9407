#include <BexDom.h>

#include <gtest/gtest.h>
#include <xercesc/util/XMLUni.hpp>

#include <XmlText.h>
#include <ostream>
#include <string>
#include <vector>

namespace {

std::string Utf16(const std::u16string& iText, bool iBigEndian) {
    std::string bytes;
    for (const char16_t unit : iText) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += iBigEndian ? high : low;
        bytes += iBigEndian ? low : high;
    }
    return bytes;
}

const std::string kUtf8Mark = "\xEF\xBB\xBF";
const std::string kLittleMark = "\xFF\xFE";
const std::string kBigMark = "\xFE\xFF";

std::string Declared(const std::string& iEncoding) {
    return "<?xml version='1.0' encoding='" + iEncoding + "'?>";
}

std::string Ascii(const std::u16string& iText) {
    std::string text;
    for (const char16_t unit : iText) {
        text += static_cast<char>(unit);
    }
    return text;
}

std::u16string Wide(const std::string& iAscii) {
    return std::u16string(iAscii.begin(), iAscii.end());
}

/** The text below the root, or "no document". */
std::u16string TextOf(const DOM_Document& iDocument) {
    return iDocument.isNull() ? u"no document" : Units(iDocument.getDocumentElement().getFirstChild().getNodeValue());
}

}  // namespace

TEST(DomParserEncoding, ReadsTextOfEveryUsualEncoding) {
    struct Case {
        std::string name;
        std::string bytes;
        std::u16string text;
    };
    const std::u16string wideText = u"\u00e9\u20ac\U0001F600";
    const std::u16string wideElement = u"<a>" + wideText + u"</a>";
    const std::string utf8Element = "<a>\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80</a>";
    const Case cases[] = {
        {"UTF-8, bare", utf8Element, wideText},
        {"UTF-8, mark", kUtf8Mark + utf8Element, wideText},
        {"UTF-8, declaration", Declared("UTF-8") + utf8Element, wideText},
        {"UTF-8, lower case declaration", Declared("utf-8") + utf8Element, wideText},
        {"UTF-8, mark and declaration", kUtf8Mark + Declared("UTF-8") + utf8Element, wideText},
        {"UTF-8, declaration without encoding", "<?xml version='1.0'?>" + utf8Element, wideText},
        {"UTF-16LE, mark", kLittleMark + Utf16(wideElement, false), wideText},
        {"UTF-16LE, mark and declaration", kLittleMark + Utf16(Wide(Declared("UTF-16")) + wideElement, false),
         wideText},
        {"UTF-16LE, declaration", Utf16(Wide(Declared("UTF-16")) + wideElement, false), wideText},
        {"UTF-16LE, its own declaration", Utf16(Wide(Declared("UTF-16LE")) + wideElement, false), wideText},
        {"UTF-16BE, mark", kBigMark + Utf16(wideElement, true), wideText},
        {"UTF-16BE, mark and declaration", kBigMark + Utf16(Wide(Declared("UTF-16")) + wideElement, true), wideText},
        {"UTF-16BE, declaration", Utf16(Wide(Declared("UTF-16")) + wideElement, true), wideText},
        {"UTF-16BE, its own declaration", Utf16(Wide(Declared("UTF-16BE")) + wideElement, true), wideText},
        {"ISO-8859-1", Declared("ISO-8859-1") + "<a>\xE9\xFF\x80</a>", u"\u00e9\u00ff\u0080"},
        {"iso-8859-1", Declared("iso-8859-1") + "<a>\xE9\xFF\x80</a>", u"\u00e9\u00ff\u0080"},
        {"windows-1252", Declared("windows-1252") + "<a>\xE9\x80\x99</a>", u"\u00e9\u20ac\u2122"},
        {"US-ASCII", Declared("US-ASCII") + "<a>text &#233;</a>", u"text \u00e9"},
    };
    for (const Case& one : cases) {
        EXPECT_TRUE(TextOf(Parsed(one.bytes)) == one.text) << one.name;
    }
}

TEST(DomParserEncoding, EveryByteOfIso8859IsTheCharacterOfItsValue) {
    for (int code = 0x20; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        if (byte == '<' || byte == '&') {
            continue;
        }
        const std::u16string expected = std::u16string(1, static_cast<char16_t>(code)) + u"|";
        EXPECT_TRUE(TextOf(Parsed(Declared("ISO-8859-1") + "<a>" + byte + "|</a>")) == expected) << code;
    }
}

TEST(DomParserEncoding, TextThatItsEncodingDoesNotAllowGivesNoDocument) {
    struct Case {
        std::string name;
        std::string bytes;
    };
    const Case cases[] = {
        {"no declaration, ISO-8859-1 text", "<a>\xE9</a>"},
        {"UTF-8 declared, ISO-8859-1 text", Declared("UTF-8") + "<a>caf\xE9</a>"},
        {"continuation byte alone", "<a>\x80</a>"},
        {"overlong", "<a>\xC0\xBC</a>"},
        {"overlong NUL", "<a>\xC0\x80</a>"},
        {"surrogate", "<a>\xED\xA0\x80</a>"},
        {"above U+10FFFF", "<a>\xF4\x90\x80\x80</a>"},
        {"five bytes", "<a>\xF8\x88\x80\x80\x80</a>"},
        {"U+FFFE", "<a>\xEF\xBF\xBE</a>"},
        {"byte 0xFF", "<a>\xFF</a>"},
        {"US-ASCII declared, byte above 0x7F", Declared("US-ASCII") + "<a>\xE9</a>"},
        {"UTF-16 declared, one byte a character", Declared("UTF-16") + "<a>text</a>"},
        {"UTF-16LE without mark and declaration", Utf16(u"<a>text</a>", false)},
        {"UTF-16BE without mark and declaration", Utf16(u"<a>text</a>", true)},
        {"UTF-16, high surrogate alone",
         kLittleMark + Utf16(u"<a>" + std::u16string(1, char16_t{0xD800}) + u"x</a>", false)},
        {"UTF-16, low surrogate alone",
         kLittleMark + Utf16(u"<a>" + std::u16string(1, char16_t{0xDC00}) + u"x</a>", false)},
        {"only a UTF-8 mark", kUtf8Mark},
        {"only a UTF-16 mark", kLittleMark},
        {"two marks behind one another and no root", kUtf8Mark + kUtf8Mark},
    };
    for (const Case& one : cases) {
        EXPECT_TRUE(Parsed(one.bytes).isNull()) << one.name;
    }
}

TEST(DomParserEncoding, BytesThatAreNoUtf8AreToldAsSuch) {
    for (const char* bytes : {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xED\xA0\x80",
                              "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                              "\xF5\x80\x80\x80", "\xFF", "\xC3", "\xE2\x82", "\xF0\x9F\x98"}) {
        for (const char* before : {"<a>", "<a>long enough to be looked at in words"}) {
            DOMParser parser;
            const TextSource source(std::string(before) + bytes + "</a>");
            parser.parse(source.Get());
            EXPECT_EQ(Narrow(parser.getErrorText()), "the text is not in UTF-8") << testing::PrintToString(bytes);
        }
    }
}

TEST(DomParserEncoding, InstructionWhoseNameBeginsLikeTheDeclarationDeclaresNothing) {
    for (const char* name : {"xml-stylesheet", "xml-x", "xmlx"}) {
        const std::string instruction = std::string("<?") + name + " encoding=";
        EXPECT_EQ(TextOf(Parsed(instruction + "'ISO-8859-1'?><a>\xC3\xA4</a>")), u"\u00e4") << name;
        EXPECT_EQ(TextOf(Parsed(instruction + "'nonsense'?><a>x</a>")), u"x") << name;
        EXPECT_EQ(TextOf(Parsed(instruction + "'ISO-8859-1'?><a>\xE4</a>")), u"no document") << name;
    }
    for (const char* space : {" ", "\t", "\n", "\r"}) {
        EXPECT_EQ(TextOf(Parsed(std::string("<?xml") + space + "version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>")),
                  u"\u00e4");
    }
}

TEST(DomParserEncoding, UnknownEncodingGivesNoDocument) {
    for (const char* encoding : {"no-such-encoding", "x", "UTF-99", "ISO-8859-999"}) {
        EXPECT_TRUE(Parsed(Declared(encoding) + "<a/>").isNull()) << encoding;
    }
    EXPECT_TRUE(Parsed(Declared("") + "<a/>").isNull());
    EXPECT_TRUE(Parsed(Declared("8-bit") + "<a/>").isNull()) << "a name begins with a letter";
}

TEST(DomParserEncoding, NameThatXercesWouldReadPastGivesNoDocument) {
    for (const char* encoding : {"UTF-8-s390", "ISO-8859-1-S390", "ibm-1047-s390", "S390"}) {
        DOMParser parser;
        const TextSource source(Declared(encoding) + "<a/>");
        parser.parse(source.Get());
        EXPECT_TRUE(parser.getDocument().isNull()) << encoding;
        EXPECT_EQ(Narrow(parser.getErrorText()), "the encoding is not known or the text does not follow it")
            << encoding;
    }
}

TEST(DomParserEncoding, TextThatEndsWithinACharacterGivesNoDocument) {
    for (const char* tail : {"\xC3", "\xE2", "\xE2\x82", "\xF0", "\xF0\x9F", "\xF0\x9F\x98"}) {
        for (const std::size_t blanks : {0UL, 1UL, 100UL, 50000UL}) {
            const std::string text = "<a/>" + std::string(blanks, '\n');
            EXPECT_TRUE(Parsed(text + tail).isNull()) << blanks;
            EXPECT_TRUE(Parsed(Declared("UTF-8") + text + tail).isNull()) << blanks;
            EXPECT_TRUE(Parsed(text + "<!--" + tail).isNull()) << blanks;
        }
    }
}

TEST(DomParserEncoding, Utf16TextThatEndsWithinACharacterGivesNoDocument) {
    for (const bool bigEndian : {false, true}) {
        const std::string mark = bigEndian ? kBigMark : kLittleMark;
        const std::string text = mark + Utf16(u"<a>text</a>\n", bigEndian);
        ASSERT_FALSE(Parsed(text).isNull());
        EXPECT_TRUE(Parsed(text + ' ').isNull()) << "half a code unit";
        EXPECT_TRUE(Parsed(text + std::string(1, '\0')).isNull()) << "half a code unit";
        EXPECT_TRUE(Parsed(text + Utf16(std::u16string(1, char16_t{0xD83D}), bigEndian)).isNull()) << "half a pair";
    }
}

TEST(DomParserEncoding, TextOfAnotherEncodingThatEndsWithinACharacterGivesNoDocument) {
    struct Case {
        const char* encoding;
        const char* tail;
    };
    for (const Case& one : {Case{"Shift_JIS", "\x81"}, Case{"EUC-JP", "\xA4"}, Case{"Big5", "\xA4"},
                            Case{"GB18030", "\x81"}, Case{"GB18030", "\x81\x30"}, Case{"GB18030", "\x81\x30\x81"}}) {
        const std::string text = Declared(one.encoding) + "<a/>\n";
        EXPECT_TRUE(Parsed(text + one.tail).isNull()) << one.encoding;
    }
}

TEST(DomParserEncoding, InternalSubsetIsAnErrorInEveryEncoding) {
    const std::u16string text = u"<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>";
    EXPECT_TRUE(Parsed(kUtf8Mark + Ascii(text)).isNull());
    EXPECT_TRUE(Parsed(kLittleMark + Utf16(text, false)).isNull());
    EXPECT_TRUE(Parsed(kBigMark + Utf16(text, true)).isNull());
    EXPECT_TRUE(Parsed(Utf16(Wide(Declared("UTF-16")) + text, true)).isNull());
    EXPECT_TRUE(Parsed(Declared("windows-1252") + Ascii(text)).isNull());
}

TEST(DomParserEncoding, Utf16TextCutAnywhereGivesNoDocument) {
    for (const bool bigEndian : {false, true}) {
        const std::string text =
            (bigEndian ? kBigMark : kLittleMark) + Utf16(u"<a b='\u20ac'>\U0001F600<c/></a>", bigEndian);
        ASSERT_FALSE(Parsed(text).isNull());
        for (std::size_t length = 0; length < text.size(); ++length) {
            EXPECT_TRUE(Parsed(text.substr(0, length)).isNull()) << length;
        }
    }
}

TEST(DomParserEncoding, Utf8TextCutAnywhereGivesNoDocument) {
    const std::string text = kUtf8Mark + "<a b='\xE2\x82\xAC'>\xF0\x9F\x98\x80<c/></a>";
    ASSERT_FALSE(Parsed(text).isNull());
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_TRUE(Parsed(text.substr(0, length)).isNull()) << length;
    }
}

TEST(DomParserEncoding, NulCharacterInUtf16TextGivesNoDocument) {
    const std::u16string text = u"<?xml version='1.0' encoding='UTF-16'?><a b='1'>text<b/></a>\n<!--c-->\n";
    for (const bool bigEndian : {false, true}) {
        const std::string mark = bigEndian ? kBigMark : kLittleMark;
        ASSERT_FALSE(Parsed(mark + Utf16(text, bigEndian)).isNull());
        for (std::size_t at = 0; at <= text.size(); ++at) {
            std::u16string damaged = text;
            damaged.insert(at, 1, u'\0');
            EXPECT_TRUE(Parsed(mark + Utf16(damaged, bigEndian)).isNull()) << at;
        }
    }
}

TEST(DomParserEncoding, HalfOfASurrogatePairAloneGivesNoDocument) {
    const std::u16string texts[] = {
        u"<a b='\xD800'/>",     u"<a b='\xD800&amp;'/>",  u"<a b='\xD800x'/>",
        u"<a b='\xDC00'/>",     u"<a>\xD800</a>",         u"<a>\xDC00</a>",
        u"<a><?p \xD800?></a>", u"<a><!--\xD800--></a>",  u"<a><![CDATA[\xD800]]></a>",
        u"<\xD800/>",           u"<a b='\xDC00\xD800'/>", u"<!DOCTYPE a SYSTEM '\xD800'><a/>",
        u"<a/>\xD800",
    };
    for (const std::u16string& text : texts) {
        EXPECT_EQ(TextOf(Parsed(kLittleMark + Utf16(text, false))), u"no document");
        EXPECT_EQ(TextOf(Parsed(kBigMark + Utf16(text, true))), u"no document");
    }
    EXPECT_EQ(TextOf(Parsed(kLittleMark + Utf16(u"<a>\xD83D\xDE00</a>", false))), u"\xD83D\xDE00");
    EXPECT_EQ(ErrorOf(kLittleMark + Utf16(u"<a>\nxy\xD800</a>", false)), "2:3: half of a surrogate pair stands alone");
}

TEST(DomParserEncoding, DeclarationWithWhiteSpaceOfXml11GivesNoDocument) {
    for (const std::string space : {"\xC2\x85", "\xE2\x80\xA8"}) {
        for (const std::string& declaration :
             {"version='1.1' encoding" + space + "='windows-1252'",
              "version='1.1' encoding=" + space + "'windows-1252'", "version='1.1'" + space + "encoding='windows-1252'",
              "version='1.1'" + space}) {
            EXPECT_TRUE(Parsed("<?xml " + declaration + "?><a/>").isNull()) << declaration;
        }
    }
}

TEST(DomParserEncoding, EncodingOfTheSourceWins) {
    const TextSource latin("<a>\xE9</a>");
    latin.Get().setEncoding(u"ISO-8859-1");
    DOMParser parser;
    parser.parse(latin.Get());
    EXPECT_TRUE(TextOf(parser.getDocument()) == u"\u00e9");

    const TextSource declared(Declared("US-ASCII") + "<a>\xC3\xA9</a>");
    declared.Get().setEncoding(u"UTF-8");
    parser.parse(declared.Get());
    EXPECT_TRUE(TextOf(parser.getDocument()) == u"\u00e9");

    const TextSource unknown("<a/>");
    unknown.Get().setEncoding(u"no-such-encoding");
    parser.parse(unknown.Get());
    EXPECT_TRUE(parser.getDocument().isNull());
    const std::u16string noName(59, u'\u00FF');  // ICU, which converts for Xerces-C, writes past a buffer for it
    unknown.Get().setEncoding(noName.c_str());
    parser.parse(unknown.Get());
    EXPECT_TRUE(parser.getDocument().isNull());

    unknown.Get().setEncoding(u"ISO 8859-1");  // which ICU would take for the one with a hyphen
    parser.parse(unknown.Get());
    EXPECT_TRUE(parser.getDocument().isNull());

    const TextSource wide(std::string("<\0a\0/\0>\0", 8));
    wide.Get().setEncoding(xercesc::XMLUni::fgUTF16LEncodingString);
    parser.parse(wide.Get());
    EXPECT_FALSE(parser.getDocument().isNull());
}
