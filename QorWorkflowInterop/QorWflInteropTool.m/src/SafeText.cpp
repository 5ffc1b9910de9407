#include "SafeText.h"

#include "Unicode.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t kLongestQuote = 40;  // UTF-16 units of a text
constexpr std::size_t kLongestName = 80;

bool IsUnsafe(char32_t iCode) {
    const bool isControl = iCode < 0x20 || (iCode >= 0x7F && iCode < 0xA0);
    const bool isDirection = iCode == 0x61C || iCode == 0x200E || iCode == 0x200F ||
                             (iCode >= 0x202A && iCode <= 0x202E) || (iCode >= 0x2066 && iCode <= 0x2069);
    const bool isInvisible = iCode == 0x200B || iCode == 0x2028 || iCode == 0x2029 || iCode == 0xFEFF;
    const bool isNoCharacter = (iCode & 0xFFFE) == 0xFFFE || (iCode >= 0xFFF9 && iCode <= 0xFFFB);
    return isControl || isDirection || isInvisible || isNoCharacter;
}

std::string Escaped(char32_t iCode) {
    char text[16];
    std::snprintf(text, sizeof text, iCode < 0x80 ? "\\x%02X" : "\\u{%04X}", static_cast<unsigned>(iCode));
    return text;
}

std::string EscapedByte(char iByte) {
    char text[8];
    std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(iByte)));
    return text;
}

/** How many bytes the character at the beginning has; 0 when there is none. */
std::size_t CharacterLength(std::string_view iText) {
    const auto first = static_cast<unsigned char>(iText.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (length == 0 || first > 0xF4 || length > iText.size()) {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i) {
        if ((static_cast<unsigned char>(iText[i]) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    return length;
}

/** Whether a code of several bytes is one that those bytes may stand for. */
bool IsCharacter(char32_t iCode, std::size_t iLength) {
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    return iCode >= kLeast[iLength] && iCode <= 0x10FFFF && (iCode < 0xD800 || iCode > 0xDFFF);
}

std::u16string_view Cut(std::u16string_view iText, std::size_t iLength) {
    if (iText.size() <= iLength) {
        return iText;
    }
    const bool isHalf = iText[iLength - 1] >= 0xD800 && iText[iLength - 1] < 0xDC00;
    return iText.substr(0, isHalf ? iLength - 1 : iLength);
}

std::string SafeAndShort(std::u16string_view iText, std::size_t iLength) {
    return SafeText(Cut(iText, iLength)) + (iText.size() > iLength ? "..." : "");
}

}  // namespace

std::string SafeText(std::string_view iUtf8) {
    if (std::all_of(iUtf8.begin(), iUtf8.end(), [](char iByte) { return iByte >= ' ' && iByte <= '~'; })) {
        return std::string(iUtf8);
    }
    std::string safe;
    safe.reserve(iUtf8.size());
    while (!iUtf8.empty()) {
        const std::size_t length = CharacterLength(iUtf8);
        std::string_view rest = iUtf8;
        const char32_t code = length == 0 ? 0 : TakeCharacter(rest);
        if (length == 0 || !IsCharacter(code, length)) {
            safe += EscapedByte(iUtf8.front());
            iUtf8.remove_prefix(1);
            continue;
        }
        if (IsUnsafe(code)) {
            safe += Escaped(code);
        } else {
            safe += iUtf8.substr(0, length);
        }
        iUtf8.remove_prefix(length);
    }
    return safe;
}

std::string SafeText(std::u16string_view iUnits) {
    return SafeText(ToUtf8(iUnits));
}

std::string Quoted(std::u16string_view iUnits) {
    return '\'' + SafeAndShort(iUnits, kLongestQuote) + '\'';
}

std::string SafeName(std::u16string_view iName) {
    return SafeAndShort(iName, kLongestName);
}
