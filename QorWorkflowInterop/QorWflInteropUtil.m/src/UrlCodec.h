#ifndef UrlCodec_H
#define UrlCodec_H

#include "UrlBlock.h"

#include <BexNarrowText.h>
#include <BexUnicodeString.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

/** The percent coding of URLs, for texts of both kinds of code units. */
namespace UrlCodec {

constexpr char kHexDigits[] = "0123456789ABCDEF";
constexpr int kNoDigit = -1;
constexpr std::size_t kEscapeLength = 3;  // a percent sign and two digits

constexpr bool IsAlphanumeric(unsigned char iCode) {
    return (iCode >= '0' && iCode <= '9') || (iCode >= 'A' && iCode <= 'Z') || (iCode >= 'a' && iCode <= 'z');
}

/** What a byte is in a URL. */
struct EncodedByte {
    char text[3];
    unsigned char length;
};
static_assert(sizeof(EncodedByte) == kEscapeLength + 1);

constexpr EncodedByte EncodeByte(unsigned char iCode) {
    const char character = static_cast<char>(iCode);
    for (const char mark : {'.', '-', '*', '_'}) {
        if (character == mark) {
            return {{character}, 1};
        }
    }
    if (IsAlphanumeric(iCode)) {
        return {{character}, 1};
    }
    if (character == ' ') {
        return {{'+'}, 1};
    }
    return {{'%', kHexDigits[iCode / 16], kHexDigits[iCode % 16]}, kEscapeLength};
}

/** For each byte what it is in a URL; the C locale's letters and digits stand for themselves, whatever the locale. */
constexpr std::array<EncodedByte, 256> MakeEncodingTable() {
    std::array<EncodedByte, 256> table{};
    for (unsigned int code = 0; code < table.size(); ++code) {
        table[code] = EncodeByte(static_cast<unsigned char>(code));
    }
    return table;
}

constexpr std::array<EncodedByte, 256> kEncoding = MakeEncodingTable();

/** For each byte its value as a hexadecimal digit, or kNoDigit. */
constexpr std::array<signed char, 256> MakeDigitTable() {
    std::array<signed char, 256> values{};
    for (signed char& value : values) {
        value = kNoDigit;
    }
    for (int value = 0; value < 16; ++value) {
        const char digit = kHexDigits[value];
        values[static_cast<unsigned char>(digit)] = static_cast<signed char>(value);
        if (value >= 10) {
            values[static_cast<unsigned char>(digit - 'A' + 'a')] = static_cast<signed char>(value);
        }
    }
    return values;
}

constexpr std::array<signed char, 256> kDigitValues = MakeDigitTable();

inline int DigitValue(char iCharacter) {
    return kDigitValues[static_cast<unsigned char>(iCharacter)];
}

inline int DigitValue(char16_t iUnit) {
    return iUnit > 0xFF ? kNoDigit : kDigitValues[iUnit];
}

/** The byte of two digits' values; negative when one of them is kNoDigit. */
inline int ByteValue(int iHigh, int iLow) {
    return iHigh * 16 | iLow;
}

/** What a scan for a hexadecimal byte yields. */
struct ScannedByte {
    bool found;
    unsigned char value;
};

/**
 * Reads a byte as the C library's `%2X` does in the C locale: white space first, however much, then two characters at
 * the most, of which the first may be a sign, or "0x" with no digit behind it, which counts as 0.
 */
inline ScannedByte ScanHexByte(std::string_view iText) {
    if (iText.size() >= 2) {
        const int value = ByteValue(DigitValue(iText[0]), DigitValue(iText[1]));
        if (value >= 0) {
            return {true, static_cast<unsigned char>(value)};
        }
    }
    constexpr std::string_view kWhiteSpace(" \t\n\v\f\r");
    iText.remove_prefix(std::min(iText.find_first_not_of(kWhiteSpace), iText.size()));
    if (iText.empty()) {
        return {false, 0};
    }
    const char first = iText[0];
    const int second = iText.size() < 2 ? kNoDigit : DigitValue(iText[1]);
    if (first == '+' || first == '-') {
        return {second >= 0, static_cast<unsigned char>(first == '-' ? -second : second)};
    }
    if (DigitValue(first) < 0) {
        return {false, 0};
    }
    return {true, static_cast<unsigned char>(second < 0 ? DigitValue(first) : DigitValue(first) * 16 + second)};
}

/** A text whose code units are of one kind: bytes, or UTF-16 where some unit does not fit one. */
template <typename Unit>
using View = std::basic_string_view<Unit>;

/** The narrow character of a code unit, a question mark for one that has none. */
inline char NarrowCharacter(char iCharacter) {
    return iCharacter;
}

inline char NarrowCharacter(char16_t iUnit) {
    return iUnit > 0xFF ? '?' : static_cast<char>(iUnit);
}

/** Room for the encoded form of so many units, also when a whole table entry is written each time. */
constexpr std::size_t LongestEncoding(std::size_t iUnits) {
    return iUnits * kEscapeLength + 1;
}

/** Appends the encoded form of a text. A code unit above 0xFF counts as its low 8 bits. */
template <typename Unit>
void AppendEncoded(BexNarrowText& ioText, View<Unit> iText) {
    constexpr std::size_t kPiece = 1024;  // so that little room is taken that is not needed
    while (!iText.empty()) {
        const View<Unit> block = iText.substr(0, kPiece);
        char* const start = ioText.Extend(LongestEncoding(block.size()));
        char* end = start;
#pragma GCC unroll 8
        for (const Unit unit : block) {
            const EncodedByte& encoded = kEncoding[static_cast<unsigned char>(unit)];
            std::memcpy(end, &encoded, sizeof encoded);
            end += encoded.length;
        }
        ioText.Shorten(ioText.Length() - LongestEncoding(block.size()) + static_cast<std::size_t>(end - start));
        iText.remove_prefix(block.size());
    }
}

/** As ScanEscape(), for an escape that is not just two digits. */
template <typename Unit>
ScannedByte ScanUnusualEscape(View<Unit> iEscape) {
    char digits[kEscapeLength - 1];
    std::size_t length = 0;
    for (const Unit unit : iEscape.substr(1, kEscapeLength - 1)) {
        const char digit = NarrowCharacter(unit);
        digits[length++] = digit == '+' ? ' ' : digit;  // blanks come first, also in an escape
    }
    return ScanHexByte(std::string_view(digits, length));
}

/** The character that an escape stands for, at its percent sign; the text may end within it. */
template <typename Unit>
ScannedByte ScanEscape(View<Unit> iEscape) {
    if (iEscape.size() >= kEscapeLength) {
        const int value = ByteValue(DigitValue(iEscape[1]), DigitValue(iEscape[2]));
        if (value >= 0) {
            return {true, static_cast<unsigned char>(value)};
        }
    }
    return ScanUnusualEscape(iEscape);
}

/**
 * Undoes the encoding; an escape that is none disappears with the two characters behind the percent sign.
 * @param oDecoded room for as many units as the text has
 * @return the end of what was decoded.
 */
template <typename Unit>
Unit* DecodeTo(Unit* oDecoded, View<Unit> iText) {
    const Unit* const end = iText.data() + iText.size();
    for (const Unit* at = iText.data(); at < end; ++at) {
        if (*at != Unit{'%'}) {
            *oDecoded++ = UrlBlock::Decoded(*at);
            continue;
        }
        const ScannedByte scanned = ScanEscape(View<Unit>(at, static_cast<std::size_t>(end - at)));
        if (scanned.found) {
            *oDecoded++ = static_cast<Unit>(scanned.value);
        }
        at += std::min<std::ptrdiff_t>(kEscapeLength, end - at) - 1;
    }
    return oDecoded;
}

/**
 * Undoes the encoding of a long narrow text as DecodeTo() does, up to its last characters, and takes what is done off
 * the text. Whole blocks are copied, between escapes too, and the next escape's place in the block is known before the
 * one in front is undone: nothing waits for the place that the text has got to.
 */
inline char* DecodeBlocksTo(char* oDecoded, std::string_view& ioText) {
    while (ioText.size() >= 2 * UrlBlock::kSize) {  // so that a block can be read from anywhere in the first one
        std::size_t done = 0;
        for (unsigned int signs = UrlBlock(ioText.data()).PercentSigns(); signs != 0; signs &= ~0U << done) {
            const auto sign = static_cast<std::size_t>(__builtin_ctz(signs));
            UrlBlock(ioText.data() + done).DecodeTo(oDecoded);
            oDecoded += sign - done;
            const ScannedByte scanned = ScanEscape(ioText.substr(sign));
            *oDecoded = static_cast<char>(scanned.value);
            oDecoded += scanned.found ? 1 : 0;
            done = sign + kEscapeLength;
        }
        if (done < UrlBlock::kSize) {
            UrlBlock(ioText.data() + done).DecodeTo(oDecoded);
            oDecoded += UrlBlock::kSize - done;
            done = UrlBlock::kSize;
        }
        ioText.remove_prefix(done);
    }
    return oDecoded;
}

inline BexUnicodeString Decode(std::string_view iText) {
    constexpr std::size_t kLong = 64;  // from which on blocks pay
    return BexUnicodeString::FromNarrow(iText.size(), [iText](char* oDecoded) mutable {
        if (iText.size() >= kLong) {
            oDecoded = DecodeBlocksTo(oDecoded, iText);
        }
        return DecodeTo(oDecoded, iText);
    });
}

inline BexUnicodeString Decode(std::u16string_view iText) {
    std::u16string decoded(iText.size(), u'\0');
    const char16_t* const end = DecodeTo(decoded.data(), iText);
    return BexUnicodeString(decoded.data(), static_cast<int>(end - decoded.data()));
}

}  // namespace UrlCodec

#endif
