#include "NaiveUrl.h"
#include "UrlTesting.h"

#include <BexUnicodeString.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

// The codecs are reached through the URLs: Encode and Decode through action URLs and parameters, the fixed-width and
// hexadecimal conversions through UUID blocks.

namespace {

using testing::Optional;
using UrlTesting::ActionUrl;
using UrlTesting::Block;
using UrlTesting::Bytes;
using UrlTesting::GetUrlParm;
using UrlTesting::InstanceUrl;
using UrlTesting::Text;
using UrlTesting::UrlToActionId;
using UrlTesting::UrlToUuid;

std::string Encode(const std::string& iText) {
    const std::string url = ActionUrl(iText);
    const std::string before = "LumenUID://Legacy+QOR1/default/";
    const std::string behind = ".ACTION";
    EXPECT_EQ(url.substr(0, before.size()), before);
    EXPECT_EQ(url.substr(url.size() - behind.size()), behind);
    return url.substr(before.size(), url.size() - before.size() - behind.size());
}

std::string Decode(const std::string& iText) {
    return UrlToActionId("qor://ACTION/" + iText);
}

std::string AllBytes() {
    std::string bytes;
    for (int code = 0; code < 256; ++code) {
        bytes += static_cast<char>(code);
    }
    return bytes;
}

const std::string kAllBytes = AllBytes();

TEST(UrlEncode, KnownTexts) {
    const struct {
        std::string text;
        std::string encoded;
    } cases[] = {
        {"", ""},
        {"a b/c", "a+b%2Fc"},
        {"ABCXYZabcxyz0189.-*_", "ABCXYZabcxyz0189.-*_"},
        {"~", "%7E"},
        {"+", "%2B"},
        {"%", "%25"},
        {"/", "%2F"},
        {"  ", "++"},
        {"#?&=", "%23%3F%26%3D"},
        {"@[`{:", "%40%5B%60%7B%3A"},
        {std::string("\0\n\x7F\x80\xFF", 5), "%00%0A%7F%80%FF"},
        {"\xE9t\xE9", "%E9t%E9"},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(Encode(entry.text), entry.encoded);
        EXPECT_EQ(Decode(entry.encoded), entry.text);
    }
}

TEST(UrlEncode, EveryByteAlone) {
    for (const char c : kAllBytes) {
        const std::string text(1, c);
        EXPECT_EQ(Encode(text), NaiveUrl::Encode(text)) << static_cast<int>(c);
    }
}

TEST(UrlEncode, EveryByteBesideOneThatIsEscapedOneThatIsNotAndABlank) {
    for (const char neighbour : {'/', '%', 'A', ' '}) {
        for (const char c : kAllBytes) {
            const std::string behind = std::string(1, neighbour) + c;
            const std::string before = std::string(1, c) + neighbour;
            EXPECT_EQ(Encode(behind), NaiveUrl::Encode(behind)) << static_cast<int>(c);
            EXPECT_EQ(Encode(before), NaiveUrl::Encode(before)) << static_cast<int>(c);
        }
    }
}

TEST(UrlEncode, LongTexts) {
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += kAllBytes;
    }
    EXPECT_TRUE(Encode(text) == NaiveUrl::Encode(text));
    EXPECT_TRUE(Decode(NaiveUrl::Encode(text)) == text);
}

TEST(UrlEncode, WideCharactersAreReducedToTheirLowByteBeforeTheTest) {
    const BexUnicodeString wide(u"\u0141\u0120\u012F\u0100\u4E2B", 5);
    EXPECT_EQ(Bytes(QorWflUrlUtil::ActionUrl(wide)), "LumenUID://Legacy+QOR1/default/A+%2F%00%2B.ACTION");
    BexUnicodeString url = "u";
    QorWflUrlUtil::AddUrlParm(url, "n", wide);
    EXPECT_EQ(Bytes(url), "u?n=A+%2F%00%2B");
}

TEST(UrlDecode, KnownTexts) {
    const struct {
        std::string text;
        std::string decoded;
    } cases[] = {
        {"a+b%2Fc", "a b/c"},
        {"%2B+", "+ "},
        {"%2b%2B", "++"},
        {"%zz", ""},
        {"a%zzb", "ab"},
        {"%4g", "\x04"},
        {"a%4gb",
         "a\x04"
         "b"},
        {"%4%41",
         "\x04"
         "41"},
        {"%%41", "1"},
        {"%%%41", "41"},
        {"%zz%41", "A"},
        {"%+4", "\x04"},
        {"%-1", "\xFF"},
        {"%2541", "%41"},
        {"%00", std::string(1, '\0')},
        {"~\xE9", "~\xE9"},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(Decode(entry.text), entry.decoded) << entry.text;
        EXPECT_EQ(GetUrlParm("?v=" + entry.text, "v"), entry.decoded) << entry.text;
    }
}

TEST(UrlDecode, EscapeAtTheVeryEndIsReadFromWhatIsThere) {
    const struct {
        const char* text;
        const char* decoded;
    } cases[] = {{"%", ""},    {"a%", "a"},     {"a%4", "a\x04"}, {"a%z", "a"},   {"a%+", "a"},
                 {"a%%", "a"}, {"a%41%", "aA"}, {"a%-", "a"},     {"a%41", "aA"}, {"a%4g", "a\x04"}};
    for (const auto& entry : cases) {
        EXPECT_EQ(Decode(entry.text), entry.decoded) << entry.text;
        EXPECT_EQ(GetUrlParm(std::string("?v=") + entry.text, "v"), entry.decoded) << entry.text;
        EXPECT_EQ(GetUrlParm(std::string("?v=") + entry.text + "&w=1", "v"), entry.decoded) << entry.text;
        EXPECT_EQ(UrlToActionId(std::string("LumenUID://Legacy+QOR1/e/") + entry.text + ".ACTION"), entry.decoded)
            << entry.text;
    }
}

TEST(UrlDecode, AgreesWithTheScanOfTheCLibraryOnEveryPairOfBytes) {
    for (const char first : kAllBytes) {
        for (const char second : kAllBytes) {
            const std::string escape = std::string("%") + first + second;
            const std::string decoded = NaiveUrl::Decode(escape);
            ASSERT_EQ(Decode(escape), decoded) << NaiveUrl::BinToHex(escape);
            ASSERT_EQ(Decode("a" + escape + "41"), "a" + decoded + "41") << NaiveUrl::BinToHex(escape);
            if (first != '&' && second != '&') {
                ASSERT_EQ(GetUrlParm("u?v=" + escape, "v"), decoded) << NaiveUrl::BinToHex(escape);
            }
        }
    }
}

// Long texts are decoded many characters at a time: what an escape is must not depend on its place.
TEST(UrlDecode, EscapesOfEveryKindStandAnywhereInALongText) {
    const std::string before = "0+2a4B6+8c0D2+4e6F8+0a2B4+6c8D0+2e4F6+8a";
    for (const std::string piece : {"%41", "%", "%%", "%%41", "%4", "%4x", "%zz", "%+5", "%-5", "%25", "%41%42%"}) {
        for (std::size_t place = 0; place <= before.size(); ++place) {
            for (const std::size_t behind : {0U, 1U, 2U, 15U, 16U, 17U, 31U, 32U, 33U, 48U}) {
                const std::string text = before.substr(0, place) + piece + std::string(behind, '7');
                EXPECT_EQ(Decode(text), NaiveUrl::Decode(text)) << text;
            }
        }
    }
}

TEST(UrlDecode, AgreesWithTheNaiveVersionOnLongTextsOfANastyAlphabet) {
    const std::string alphabet = "%%%+ 0aFxz-.";
    std::mt19937 random(20040229);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 150, ' ');
        for (char& character : text) {
            character = alphabet[random() % alphabet.size()];
        }
        EXPECT_EQ(Decode(text), NaiveUrl::Decode(text)) << text;
    }
}

TEST(UrlDecode, EveryByteThatIsNoEscapeIsKept) {
    for (const char c : kAllBytes) {
        const std::string text = std::string("%41") + c + "x";
        EXPECT_EQ(Decode(text), NaiveUrl::Decode(text)) << static_cast<int>(c);
    }
}

TEST(UrlDecode, WideCharactersPassThrough) {
    const BexUnicodeString url = BexUnicodeString("qor://ACTION/") + BexUnicodeString(u"\u20AC+%41\u0141%E9", 9);
    EXPECT_EQ(QorWflUrlUtil::UrlToActionId(url), BexUnicodeString(u"\u20AC A\u0141\u00E9", 5));
}

TEST(UrlDecode, WideCharactersAreNoHexadecimalDigits) {
    // the low bytes of these are digits
    const BexUnicodeString url = BexUnicodeString("qor://ACTION/") + BexUnicodeString(u"a%\u0134\u0131b", 5);
    EXPECT_EQ(QorWflUrlUtil::UrlToActionId(url), BexUnicodeString("ab"));
}

TEST(UrlDecode, ManyPlusSignsAndEscapesTakeLinearTime) {
    const std::string plus(2000000, '+');
    EXPECT_TRUE(Decode(plus) == std::string(2000000, ' '));
    std::string escapes;
    for (int i = 0; i < 500000; ++i) {
        escapes += "%41";
    }
    EXPECT_TRUE(Decode(escapes) == std::string(500000, 'A'));
    EXPECT_TRUE(Decode(std::string(1000000, '%')) == "");
}

std::string ShortUrl(const std::string& iHex) {
    return "qor://db/env.table/" + NaiveUrl::Encode(iHex);
}

/** The digits stand as they are; a "?" behind them keeps one among them from ending the key. */
std::string LongUrl(const std::string& iXCoid, const std::string& iXCompid) {
    return "LumenUID://Legacy+QOR1/env/db++++++#env+++++#table+++++++++++++#" + iXCoid + "#" + iXCompid + ".table?";
}

TEST(UrlHexToBin, KnownDigits) {
    const struct {
        std::string digits;
        std::string bytes;
    } cases[] = {
        {"0123456789ABCDEF", "\x01\x23\x45\x67\x89\xAB\xCD\xEF"},
        {"0123456789abcdef", "\x01\x23\x45\x67\x89\xAB\xCD\xEF"},
        {"0000000000000000", std::string(8, '\0')},
        {"zz4gg4 4  41-1+1", std::string("\x00\x04\x00\x04\x41\x41\xFF\x01", 8)},
    };
    for (const auto& entry : cases) {
        const std::string other = "FEDCBA9876543210";
        const std::string expected = entry.bytes + "\xFE\xDC\xBA\x98\x76\x54\x32\x10";
        EXPECT_EQ(UrlToUuid(ShortUrl(entry.digits + other)).value_or("").substr(34), expected) << entry.digits;
        EXPECT_EQ(UrlToUuid(LongUrl(entry.digits, other)).value_or("").substr(34), expected) << entry.digits;
    }
}

TEST(UrlHexToBin, AgreesWithTheScanOfTheCLibraryOnEveryPairOfBytes) {
    for (const char first : kAllBytes) {
        for (const char second : kAllBytes) {
            // at the start, in the middle, before white space and at the end, behind which white space finds no digit
            const std::string pair = std::string(1, first) + second;
            const std::string xCoid = pair + "4A" + pair + "  5B0x" + pair + "C";
            const std::string xCompid = "12345678" + pair + " \t" + "7" + pair + "8";
            ASSERT_EQ(xCoid.size(), 15U);
            ASSERT_EQ(xCompid.size(), 16U);
            const std::string block = NaiveUrl::Block("db", "env", "table", xCoid + "D", xCompid);
            ASSERT_THAT(UrlToUuid(ShortUrl(xCoid + "D" + xCompid)), Optional(block)) << NaiveUrl::BinToHex(pair);
            ASSERT_THAT(UrlToUuid(LongUrl(xCoid + "D", xCompid)), Optional(block)) << NaiveUrl::BinToHex(pair);
            const std::string last = "00000000000000" + pair;
            const std::string lastBlock = NaiveUrl::Block("db", "env", "table", last, last);
            ASSERT_THAT(UrlToUuid(ShortUrl(last + last)), Optional(lastBlock)) << NaiveUrl::BinToHex(pair);
            ASSERT_THAT(UrlToUuid(LongUrl(last, last)), Optional(lastBlock)) << NaiveUrl::BinToHex(pair);
        }
    }
}

TEST(UrlHexToBin, WhiteSpaceRunsOnIntoLaterDigitsButNotIntoTheOtherIdentifier) {
    const std::string blanks(14, ' ');
    const std::string xCoid = blanks + "4F";
    const std::string bytes = std::string(8, '\x4F');
    EXPECT_EQ(UrlToUuid(ShortUrl(xCoid + xCoid)).value_or("").substr(34), bytes + bytes);
    EXPECT_EQ(UrlToUuid(LongUrl(xCoid, xCoid)).value_or("").substr(34), bytes + bytes);
    const std::string noDigits(16, ' ');
    EXPECT_EQ(UrlToUuid(ShortUrl(noDigits + xCoid)).value_or("").substr(34), std::string(8, '\0') + bytes);
    EXPECT_EQ(UrlToUuid(LongUrl(noDigits, xCoid)).value_or("").substr(34), std::string(8, '\0') + bytes);
}

TEST(UrlHexToBin, AgreesOverAllTextsOfANastyAlphabet) {
    UrlTesting::ForEachText({"4", "f", " ", "-", "+", "0", "x", "g"}, 4, [](const std::string& iDigits) {
        std::string digits = iDigits;
        digits.resize(16, '7');
        const std::string other = std::string(16 - iDigits.size(), '7') + iDigits;
        const std::string block = NaiveUrl::Block("db", "env", "table", digits, other);
        ASSERT_THAT(UrlToUuid(ShortUrl(digits + other)), Optional(block)) << iDigits;
        ASSERT_THAT(UrlToUuid(LongUrl(digits, other)), Optional(block)) << iDigits;
    });
}

TEST(UrlHexToBin, WideCharactersAreNoHexadecimalDigits) {
    // the low bytes of these are the digits 4 and 1
    const BexUnicodeString wide(u"\u0134\u0131", 2);
    const std::string expected = std::string(1, '\0') + std::string(7, '\x41') + std::string(8, '\x41');
    const BexUnicodeString rest = "414141414141414141414141414141";
    const BexUnicodeString url = BexUnicodeString("qor://db/env.table/") + wide + rest;
    const UrlTesting::OwnedUuid uuid(QorWflUrlUtil::UrlToUuid(url));
    EXPECT_EQ(UrlTesting::BytesOf(uuid).value_or("").substr(34), expected);
    const BexUnicodeString key = BexUnicodeString("LumenUID://Legacy+QOR1/env/db++++++#env+++++#table+++++++++++++#") +
                                 wide + "41414141414141#4141414141414141.";
    const UrlTesting::OwnedUuid fromKey(QorWflUrlUtil::UrlToUuid(key));
    EXPECT_EQ(UrlTesting::BytesOf(fromKey).value_or("").substr(34), expected);
}

TEST(UrlBinToHex, EveryByteIsTwoUpperCaseDigits) {
    for (const char c : kAllBytes) {
        std::string block = Block("db", "env", "table");
        block[34] = c;
        block[49] = c;
        EXPECT_EQ(InstanceUrl(block), NaiveUrl::InstanceUrl(block)) << static_cast<int>(c);
    }
}

TEST(UrlFromChar, OnlyTrailingPadIsDropped) {
    const struct {
        std::string dbName;
        std::string kienv;
        std::string kitab;
        std::string urlPart;  ///< environment and the three fields
    } cases[] = {
        {"AB", "E", "T", "E/AB++++++#E+++++++#T+++++++++++++++++"},
        {"", "", "", "/++++++++#++++++++#++++++++++++++++++"},
        {"ABCDEFGH", "IJKLMNOP", "QRSTUVWXYZ01234567", "IJKLMNOP/ABCDEFGH#IJKLMNOP#QRSTUVWXYZ01234567"},
        {" A B", " E F", " T U", " E F/+A+B++++#+E+F++++#+T+U++++++++++++++"},
    };
    for (const auto& entry : cases) {
        const std::string url = InstanceUrl(Block(entry.dbName, entry.kienv, entry.kitab));
        EXPECT_EQ(url, "LumenUID://Legacy+QOR1/" + entry.urlPart + "#0123456789ABCDEF#FEDCBA9876543210." + entry.kitab);
    }
}

TEST(UrlFromChar, NulBytesAtTheEndOfAFieldAreDroppedFromTheKey) {
    std::string block = Block("AB", "E", "T");
    block.replace(2, 6, 6, '\0');
    EXPECT_EQ(InstanceUrl(block),
              "LumenUID://Legacy+QOR1/E/AB#E+++++++#T+++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T");
    block = Block(std::string("A\0B", 3), "E", "T");
    EXPECT_EQ(InstanceUrl(block),
              "LumenUID://Legacy+QOR1/E/A%00B+++++#E+++++++#T+++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T");
    block = Block(std::string(8, '\0'), "E", "T");
    EXPECT_EQ(InstanceUrl(block),
              "LumenUID://Legacy+QOR1/E/#E+++++++#T+++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.T");
}

TEST(UrlToChar, TextsArePaddedWithBlanksOrCut) {
    const std::string digits(32, '0');
    const std::string bytes(16, '\0');
    EXPECT_THAT(UrlToUuid("qor://A/B.C/" + digits), Optional("A       B       C                 " + bytes));
    EXPECT_THAT(UrlToUuid("qor://ABCDEFGH/IJKLMNOP.QRSTUVWXYZ01234567/" + digits),
                Optional("ABCDEFGHIJKLMNOPQRSTUVWXYZ01234567" + bytes));
    EXPECT_THAT(UrlToUuid("qor://ABCDEFGH1/IJKLMNOP2.QRSTUVWXYZ012345673/" + digits),
                Optional("ABCDEFGHIJKLMNOPQRSTUVWXYZ01234567" + bytes));
    EXPECT_THAT(UrlToUuid("qor://" + std::string(500, 'a') + "/" + std::string(500, 'b') + "." + std::string(500, 'c') +
                          "/" + digits),
                Optional(std::string(8, 'a') + std::string(8, 'b') + std::string(18, 'c') + bytes));
}

TEST(UrlToChar, WideCharactersAreQuestionMarks) {
    const BexUnicodeString url =
        BexUnicodeString("qor://") + BexUnicodeString(u"\u20AC/\u00E9.\u0141x/", 7) + std::string(32, '0').c_str();
    const UrlTesting::OwnedUuid uuid(QorWflUrlUtil::UrlToUuid(url));
    EXPECT_THAT(UrlTesting::BytesOf(uuid), Optional("?       \xE9       ?x                " + std::string(16, '\0')));
}

}  // namespace
