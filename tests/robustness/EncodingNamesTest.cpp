#include <BexDom.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <algorithm>
#include <memory>
#include <set>
#include <string>
#include <unicode/ucnv.h>
#include <vector>

namespace {

struct CloseConverter {
    void operator()(UConverter* iConverter) const { ucnv_close(iConverter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

/** A converter that stops at whatever is no character, null for an encoding that is not known. */
Converter StrictConverter(const std::string& iName) {
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(iName.c_str(), &error));
    if (converter) {
        ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
        ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    }
    return U_SUCCESS(error) ? std::move(converter) : nullptr;
}

/** The characters of a text, or false when it does not follow the encoding. */
bool Decoded(UConverter& ioConverter, const std::string& iBytes, std::u16string& oText) {
    UErrorCode error = U_ZERO_ERROR;
    oText.resize(iBytes.size() * 4 + 16);
    const int32_t length = ucnv_toUChars(&ioConverter, oText.data(), static_cast<int32_t>(oText.size()), iBytes.data(),
                                         static_cast<int32_t>(iBytes.size()), &error);
    oText.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
    return U_SUCCESS(error);
}

/** The bytes of a text, empty when the encoding lacks one of its characters. */
std::string Encoded(UConverter& ioConverter, const std::u16string& iText) {
    UErrorCode error = U_ZERO_ERROR;
    std::string bytes(iText.size() * 8 + 16, '\0');
    const int32_t length = ucnv_fromUChars(&ioConverter, bytes.data(), static_cast<int32_t>(bytes.size()), iText.data(),
                                           static_cast<int32_t>(iText.size()), &error);
    bytes.resize(U_SUCCESS(error) ? static_cast<std::size_t>(length) : 0);
    return bytes;
}

std::u16string Wide(const std::string& iAscii) {
    return std::u16string(iAscii.begin(), iAscii.end());
}

/** Every name that Xerces-C takes for an encoding: those of its converters, and those it knows by itself. */
std::set<std::string> EncodingNames() {
    std::set<std::string> names = {"UTF8",         "XMLCH",   "ISO-10646-UCS-4", "UCS-4",       "UCS4",
                                   "UCS-4 (LE)",   "UCS_4",   "ISO-10646-UCS-2", "UTF-16 (BE)", "UTF-16 (LE)",
                                   "IBM1047-s390", "IBM-037", "EBCDIC-CP-US",    "EBCDIC",      "LATIN1"};
    for (int32_t i = 0; i < ucnv_countAvailable(); ++i) {
        const std::string name = ucnv_getAvailableName(i);
        names.insert(name);
        UErrorCode error = U_ZERO_ERROR;
        for (std::uint16_t alias = 0; alias < ucnv_countAliases(name.c_str(), &error); ++alias) {
            names.insert(ucnv_getAlias(name.c_str(), alias, &error));
        }
    }
    return names;
}

std::string Declaration(const std::string& iEncoding) {
    return "<?xml version=\"1.0\" encoding=\"" + iEncoding + "\"?>";
}

/** The text below the root of a document, or nothing. */
std::unique_ptr<std::u16string> TextOf(const std::string& iBytes) {
    const DOM_Document document = Parsed(iBytes);
    if (document.isNull()) {
        return nullptr;
    }
    return std::make_unique<std::u16string>(Units(document.getDocumentElement().getFirstChild().getNodeValue()));
}

/** Whether the encoding has the characters of XML's markup at their places in ASCII. */
bool IsAsciiBased(UConverter& ioConverter) {
    std::string ascii = "\t\n\r";
    for (char character = ' '; character < '\x7F'; ++character) {
        ascii += character;
    }
    std::u16string text;
    return Decoded(ioConverter, ascii, text) && text == Wide(ascii);
}

/** Whether bytes change the meaning of those behind them, so that text may end behind such bytes. */
bool HasShifts(UConverter& ioConverter) {
    const UConverterType type = ucnv_getType(&ioConverter);
    return type == UCNV_ISO_2022 || type == UCNV_SCSU || type == UCNV_COMPOUND_TEXT || type == UCNV_HZ;
}

/** The text that a document of these bytes between the tags of its root has to have, if it is one. */
bool ExpectedText(UConverter& ioConverter, const std::string& iBytes, std::u16string& oText) {
    const std::u16string start = u"<a>";
    const std::u16string end = u"</a>";
    std::u16string all;
    if (!Decoded(ioConverter, Encoded(ioConverter, start) + iBytes + Encoded(ioConverter, end), all) ||
        all.size() < start.size() + end.size() || all.compare(0, start.size(), start) != 0 ||
        all.compare(all.size() - end.size(), end.size(), end) != 0) {
        return false;
    }
    oText = all.substr(start.size(), all.size() - start.size() - end.size());
    return oText.find(u'<') == std::u16string::npos && oText.find(u'&') == std::u16string::npos;
}

TEST(EncodingNames, ThereAreMany) {
    EXPECT_GT(EncodingNames().size(), 500U);
}

TEST(EncodingNames, AsciiTextOfEveryAsciiBasedEncodingIsRead) {
    for (const std::string& name : EncodingNames()) {
        const Converter converter = StrictConverter(name);
        const auto text = TextOf(Declaration(name) + "<a>plain text</a>");
        if (text != nullptr && *text != u"plain text") {
            std::u16string expected;
            ASSERT_TRUE(converter) << name;
            EXPECT_TRUE(ExpectedText(*converter, "plain text", expected) && *text == expected) << name;
        }
    }
    for (const char* name : {"UTF-8", "US-ASCII", "ISO-8859-1", "ISO-8859-15", "windows-1251", "KOI8-R", "Shift_JIS",
                             "EUC-JP", "Big5", "GB18030", "ISO-2022-JP", "TIS-620"}) {
        const auto text = TextOf(Declaration(name) + "<a>plain text</a>");
        ASSERT_TRUE(text) << name;
        EXPECT_EQ(*text, u"plain text") << name;
    }
}

TEST(EncodingNames, NoByteMeansAnythingElseThanItsEncodingSays) {
    for (const std::string& name : EncodingNames()) {
        const Converter converter = StrictConverter(name);
        if (!converter || !IsAsciiBased(*converter)) {
            continue;
        }
        for (int code = 0x80; code <= 0xFF; ++code) {
            for (const std::string& tail : {std::string(), std::string("\x40"), std::string("\xA1")}) {
                const std::string bytes = "x" + std::string(1, static_cast<char>(code)) + tail + "x";
                const auto text = TextOf(Declaration(name) + "<a>" + bytes + "</a>");
                std::u16string expected;
                if (text != nullptr && ExpectedText(*converter, bytes, expected)) {
                    EXPECT_TRUE(*text == expected) << name << " " << code << " " << tail;
                }
            }
        }
        ASSERT_FALSE(HasFailure());
    }
}

TEST(EncodingNames, WholeDocumentInEveryEncodingIsReadOrRefused) {
    int read = 0;
    for (const std::string& name : EncodingNames()) {
        const Converter converter = StrictConverter(name);
        if (!converter) {
            continue;
        }
        for (const std::u16string& content :
             std::vector<std::u16string>{u"text", u"\u00e9\u00fc", u"\u3042\u6f22", u"\u0416\u03a9"}) {
            const std::string bytes = Encoded(*converter, Wide(Declaration(name)) + u"<a>" + content + u"</a>");
            const auto text = bytes.empty() ? nullptr : TextOf(bytes);
            if (text != nullptr) {
                EXPECT_TRUE(*text == content) << name;
                ++read;
            }
        }
    }
    EXPECT_GT(read, 500);
}

TEST(EncodingNames, TextThatEndsWithinACharacterOfAnyEncodingGivesNoDocument) {
    int cut = 0;
    for (const std::string& name : EncodingNames()) {
        const Converter converter = StrictConverter(name);
        if (!converter || !IsAsciiBased(*converter) || HasShifts(*converter)) {
            continue;
        }
        const std::string whole = Encoded(*converter, Wide(Declaration(name)) + u"<a>text</a>\n");
        for (const std::u16string& character :
             std::vector<std::u16string>{u"\u00e9", u"\u3042", u"\u6f22", u"\u0416"}) {
            const std::string bytes = Encoded(*converter, character);
            for (std::size_t length = 1; length < bytes.size(); ++length) {
                EXPECT_EQ(TextOf(whole + bytes.substr(0, length)), nullptr) << name << " " << length;
                ++cut;
            }
        }
    }
    EXPECT_GT(cut, 100);
}

TEST(EncodingNames, NameThatIsNoneGivesNoDocument) {
    const std::string longName(100000, 'x');
    for (const std::string& name :
         {std::string("no-such-encoding"), std::string("../../etc/passwd"), std::string("ibm-99999"), longName,
          std::string("UTF-8,version=9"), std::string("x-user-defined"), std::string("utf-8 "), std::string(" utf-8"),
          std::string("\xFF\xFE"), std::string(59, '\xFF'), "latin1" + std::string(53, '\xE9'), std::string("%s%n"),
          std::string("&#85;TF-8")}) {
        EXPECT_EQ(TextOf(Declaration(name) + "<a>text</a>"), nullptr) << name.substr(0, 40);
    }
}

TEST(EncodingNames, EveryMarkBeforeEveryDeclarationIsReadOrRefused) {
    const std::vector<std::string> marks = {"\xEF\xBB\xBF",
                                            "\xFE\xFF",
                                            "\xFF\xFE",
                                            std::string("\0\0\xFE\xFF", 4),
                                            std::string("\xFF\xFE\0\0", 4),
                                            "\x2B\x2F\x76",
                                            "\xDD\x73\x66\x73",
                                            "\x0E\xFE\xFF",
                                            "\xFB\xEE\x28",
                                            "\x84\x31\x95\x33",
                                            "\xEF\xBB",
                                            "\xFE"};
    for (const std::string& name : EncodingNames()) {
        for (const std::string& mark : marks) {
            const auto text = TextOf(mark + Declaration(name) + "<a>text</a>");
            EXPECT_TRUE(text == nullptr || *text == u"text") << name;
        }
    }
    for (const std::string& mark : marks) {
        EXPECT_EQ(TextOf(mark), nullptr);
    }
}

TEST(EncodingNames, SecondByteOrderMarkGivesNoDocument) {
    struct Case {
        std::string mark;
        std::string element;
    };
    const Case cases[] = {{"\xEF\xBB\xBF", "<a>text</a>"},
                          {"\xFF\xFE", std::string("<\0a\0>\0t\0e\0x\0t\0<\0/\0a\0>\0", 22)},
                          {"\xFE\xFF", std::string("\0<\0a\0>\0t\0e\0x\0t\0<\0/\0a\0>", 22)}};
    for (const Case& one : cases) {
        const auto text = TextOf(one.mark + one.element);
        ASSERT_TRUE(text);
        EXPECT_EQ(*text, u"text");
        EXPECT_EQ(TextOf(one.mark + one.mark + one.element), nullptr);
    }
}

}  // namespace
