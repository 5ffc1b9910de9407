#include "XmlEncoding.h"

#include "BexXmlMemory.h"
#include "Latin1.h"

#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/TransService.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/util/XMLUniDefs.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

using namespace std::string_view_literals;

namespace {

/** First bytes that tell an encoding. */
struct Signature {
    std::string_view bytes;
    const XMLCh* name;
    bool isMark;
};

const Signature kSignatures[] = {
    {"\x00\x00\xFE\xFF"sv, xercesc::XMLUni::fgUCS4BEncodingString, true},
    {"\xFF\xFE\x00\x00"sv, xercesc::XMLUni::fgUCS4LEncodingString, true},
    {"\xEF\xBB\xBF"sv, xercesc::XMLUni::fgUTF8EncodingString, true},
    {"\xFE\xFF"sv, xercesc::XMLUni::fgUTF16BEncodingString, true},
    {"\xFF\xFE"sv, xercesc::XMLUni::fgUTF16LEncodingString, true},
    {"\x00\x00\x00<\x00\x00\x00?"sv, xercesc::XMLUni::fgUCS4BEncodingString, false},
    {"<\x00\x00\x00?\x00\x00\x00"sv, xercesc::XMLUni::fgUCS4LEncodingString, false},
    {"\x00<\x00?"sv, xercesc::XMLUni::fgUTF16BEncodingString, false},
    {"<\x00?\x00"sv, xercesc::XMLUni::fgUTF16LEncodingString, false},
};

constexpr std::string_view kEbcdicDeclaration("\x4C\x6F\xA7\x94\x93");  // "<?xml"

/** Beginnings of the names of encodings whose bytes below 0x80 are ASCII and nothing else. */
constexpr std::u16string_view kAsciiBased[] = {u"UTF-8",    u"UTF8",   u"US-ASCII",    u"ASCII", u"ISO-8859-",
                                               u"ISO8859-", u"LATIN1", u"WINDOWS-125", u"CP125", u"KOI8-"};

std::u16string UpperCase(std::u16string_view iName) {
    std::u16string name(iName);
    std::transform(name.begin(), name.end(), name.begin(), [](char16_t iUnit) {
        return iUnit >= u'a' && iUnit <= u'z' ? static_cast<char16_t>(iUnit - u'a' + u'A') : iUnit;
    });
    return name;
}

/** The value of `encoding` in the XML declaration that a text begins with, empty when there is none. */
std::string DeclaredEncoding(std::string_view iText) {
    constexpr std::string_view kWhiteSpace(" \t\r\n");
    const std::string_view declaration = iText.substr(0, iText.find("?>"));
    const bool isDeclaration = declaration.substr(0, 5) == "<?xml" && declaration.find_first_of(kWhiteSpace, 5) == 5;
    const std::size_t name = declaration.find("encoding");
    if (!isDeclaration || name == std::string_view::npos) {
        return std::string();
    }
    const std::size_t equals = declaration.find_first_not_of(kWhiteSpace, name + 8);
    const std::size_t quote = equals == std::string_view::npos || declaration[equals] != '='
                                  ? std::string_view::npos
                                  : declaration.find_first_not_of(kWhiteSpace, equals + 1);
    if (quote == std::string_view::npos || (declaration[quote] != '"' && declaration[quote] != '\'')) {
        return std::string();
    }
    const std::size_t end = declaration.find(declaration[quote], quote + 1);
    return end == std::string_view::npos ? std::string() : std::string(declaration.substr(quote + 1, end - quote - 1));
}

/** The same for a text whose declaration is in EBCDIC; all of its code pages agree on those characters. */
std::string DeclaredEbcdicEncoding(std::string_view iBytes) {
    constexpr std::size_t kLongestDeclaration = 256;
    XmlEncoding ebcdic;
    ebcdic.name = xercesc::XMLUni::fgIBM037EncodingString;
    std::u16string text;
    return DecodeXml(iBytes.substr(0, kLongestDeclaration), ebcdic, text) ? DeclaredEncoding(Latin1::Narrow(text))
                                                                          : std::string();
}

/**
 * Whether XML lets an encoding be called so. No other name may come to Xerces-C: ICU, which converts for it, writes
 * past a buffer when a name is not in ASCII, and makes the name of a file of one with slashes.
 */
bool IsEncodingName(std::u16string_view iName) {
    const auto isLetter = [](char16_t iUnit) {
        return (iUnit >= u'A' && iUnit <= u'Z') || (iUnit >= u'a' && iUnit <= u'z');
    };
    return !iName.empty() && isLetter(iName.front()) && std::all_of(iName.begin(), iName.end(), [&](char16_t iUnit) {
        return isLetter(iUnit) || (iUnit >= u'0' && iUnit <= u'9') || iUnit == u'.' || iUnit == u'_' || iUnit == u'-';
    });
}

XmlEncoding Named(std::u16string_view iName, std::size_t iMarkLength) {
    XmlEncoding encoding;
    encoding.name = UpperCase(iName);
    if (encoding.name.ends_with(u"S390")) {
        // Xerces-C would put another end in the place of this one, without a NUL character, and read past the name.
        return XmlEncoding();
    }
    encoding.markLength = iMarkLength;
    encoding.isAsciiBased = std::any_of(
        std::begin(kAsciiBased), std::end(kAsciiBased),
        [&](std::u16string_view iBeginning) { return encoding.name.compare(0, iBeginning.size(), iBeginning) == 0; });
    return encoding;
}

/** The encoding that a declaration names. */
XmlEncoding Declared(const std::string& iName) {
    const std::u16string name = Latin1::Widen(iName);
    return IsEncodingName(name) ? Named(name, 0) : XmlEncoding();
}

/** Whether a name is one of Xerces-C's own for an order of bytes, which have blanks and brackets in them. */
bool IsOneOfXerces(std::u16string_view iName) {
    return std::any_of(std::begin(kSignatures), std::end(kSignatures),
                       [iName](const Signature& iSignature) { return iName == iSignature.name; });
}

/** The position of the next byte from 0x80 on, or the length. */
std::size_t SkipAscii(std::string_view iBytes, std::size_t iFrom) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::uint64_t word = 0;
    while (iBytes.size() - iFrom >= sizeof word) {
        std::memcpy(&word, iBytes.data() + iFrom, sizeof word);
        if ((word & kHighBits) != 0) {
            break;
        }
        iFrom += sizeof word;
    }
    while (iFrom < iBytes.size() && static_cast<unsigned char>(iBytes[iFrom]) < 0x80U) {
        ++iFrom;
    }
    return iFrom;
}

/** The number of bytes of the character of two bytes or more that begins here, 0 when there is none. */
std::size_t Utf8CharacterLength(std::string_view iBytes) {
    const auto byte = [iBytes](std::size_t iPos) {
        return iPos < iBytes.size() ? static_cast<unsigned char>(iBytes[iPos]) : static_cast<unsigned char>(0);
    };
    const unsigned int lead = byte(0);
    const std::size_t length = lead >= 0xF0U ? 4 : lead >= 0xE0U ? 3 : 2;
    if (lead < 0xC2U || lead > 0xF4U) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    // what could have been written shorter, halves of a surrogate pair, what lies behind the last character
    const unsigned int second = byte(1);
    const bool isOutside = (lead == 0xE0U && second < 0xA0U) || (lead == 0xEDU && second > 0x9FU) ||
                           (lead == 0xF0U && second < 0x90U) || (lead == 0xF4U && second > 0x8FU);
    return isOutside ? 0 : length;
}

/** Turns the bytes of one text into UTF-16, part by part. */
class Decoder {
public:
    explicit Decoder(const XmlEncoding& iEncoding) {
        if (iEncoding.name.empty()) {
            return;
        }
        xercesc::XMLTransService::Codes result = xercesc::XMLTransService::Ok;
        transcoder.reset(xercesc::XMLPlatformUtils::fgTransService->makeNewTranscoderFor(
            iEncoding.name.c_str(), result, kBlock, BexXmlMemory::Instance()));
    }

    /** Appends what the bytes stand for; false when the encoding is not known or a part of a character is left. */
    bool Decode(std::string_view iBytes, std::u16string& ioText) {
        while (transcoder != nullptr && !iBytes.empty()) {
            XMLSize_t eaten = 0;
            const XMLSize_t made =
                transcoder->transcodeFrom(reinterpret_cast<const XMLByte*>(iBytes.data()),
                                          std::min(iBytes.size(), kBlock), units.data(), kBlock, eaten, sizes.data());
            if (eaten == 0) {
                return false;
            }
            ioText.append(units, 0, made);
            iBytes.remove_prefix(eaten);
        }
        return transcoder != nullptr;
    }

private:
    static constexpr std::size_t kBlock = 16384;  // bytes a call; an encoding gives at most one unit a byte

    std::unique_ptr<xercesc::XMLTranscoder> transcoder;  // null when the encoding is not known
    std::u16string units = std::u16string(kBlock, u'\0');
    std::basic_string<unsigned char> sizes = std::basic_string<unsigned char>(kBlock, 0);
};

}  // namespace

XmlEncoding DetectXmlEncoding(std::string_view iBytes, std::u16string_view iGiven) {
    const auto* signature =
        std::find_if(std::begin(kSignatures), std::end(kSignatures), [iBytes](const Signature& iSignature) {
            return iBytes.substr(0, iSignature.bytes.size()) == iSignature.bytes;
        });
    const bool isKnown = signature != std::end(kSignatures);
    const std::size_t markLength = isKnown && signature->isMark ? signature->bytes.size() : 0;
    if (!iGiven.empty()) {
        return IsEncodingName(iGiven) || IsOneOfXerces(iGiven) ? Named(iGiven, markLength) : XmlEncoding();
    }
    if (isKnown) {
        return Named(signature->name, markLength);
    }
    if (iBytes.substr(0, kEbcdicDeclaration.size()) == kEbcdicDeclaration) {
        const std::string declared = DeclaredEbcdicEncoding(iBytes);
        return declared.empty() ? Named(xercesc::XMLUni::fgEBCDICEncodingString, 0) : Declared(declared);
    }
    const std::string declared = DeclaredEncoding(iBytes);
    return declared.empty() ? Named(xercesc::XMLUni::fgUTF8EncodingString, 0) : Declared(declared);
}

bool DecodeXml(std::string_view iBytes, const XmlEncoding& iEncoding, std::u16string& oText) {
    Decoder decoder(iEncoding);
    oText.clear();
    oText.reserve(iBytes.size());
    if (!decoder.Decode(iBytes, oText)) {
        return false;
    }
    // A decoder may keep the beginning of a character for later. Then one more character shows it: it comes out
    // otherwise.
    constexpr std::string_view kOneMore("\n");
    std::u16string expected;
    std::u16string actual;
    const bool isWhole = Decoder(iEncoding).Decode(kOneMore, expected) == decoder.Decode(kOneMore, actual);
    return isWhole && expected == actual;
}

std::size_t FirstInvalidUtf8(std::string_view iBytes) {
    std::size_t at = 0;
    while (at < iBytes.size()) {
        at = SkipAscii(iBytes, at);
        if (at == iBytes.size()) {
            break;
        }
        const std::size_t length = Utf8CharacterLength(iBytes.substr(at));
        if (length == 0) {
            return at;
        }
        at += length;
    }
    return iBytes.size();
}
