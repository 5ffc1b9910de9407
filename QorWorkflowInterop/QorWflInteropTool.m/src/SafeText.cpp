#include "SafeText.h"

#include "Unicode.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::size_t kMostShown = 80;  // characters of a text or name in a message

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

std::u16string_view Cut(std::u16string_view iText, std::size_t iLength) {
    if (iText.size() <= iLength) {
        return iText;
    }
    const bool isHalf = iText[iLength - 1] >= 0xD800 && iText[iLength - 1] < 0xDC00;
    return iText.substr(0, isHalf ? iLength - 1 : iLength);
}

/** The beginning of a text, which can be as long as a file. */
std::string SafeAndShort(std::u16string_view iText) {
    return SafeText(ToUtf8(Cut(iText, kMostShown))) + (iText.size() > kMostShown ? "..." : "");
}

}  // namespace

std::string SafeText(std::string_view iUtf8) {
    if (std::all_of(iUtf8.begin(), iUtf8.end(), [](char iByte) { return iByte >= ' ' && iByte <= '~'; })) {
        return std::string(iUtf8);
    }
    std::string safe;
    safe.reserve(iUtf8.size());
    while (!iUtf8.empty()) {
        const std::size_t length = LengthOfCharacter(iUtf8);
        if (length == 0) {
            safe += EscapedByte(iUtf8.front());
            iUtf8.remove_prefix(1);
            continue;
        }
        const std::string_view character = iUtf8.substr(0, length);
        const char32_t code = TakeCharacter(iUtf8);
        safe += IsUnsafe(code) ? Escaped(code) : std::string(character);
    }
    return safe;
}

std::string Quoted(std::string_view iUtf8) {
    return '"' + SafeText(Shortened(iUtf8, kMostShown)) + '"';
}

std::string Quoted(std::u16string_view iUnits) {
    return '"' + SafeAndShort(iUnits) + '"';
}

std::string SafeName(std::u16string_view iName) {
    return SafeAndShort(iName);
}
