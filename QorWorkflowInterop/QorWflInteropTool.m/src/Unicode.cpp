#include "Unicode.h"

#include <cstdio>

namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char32_t iCode) {
    return iCode >= 0xD800 && iCode < 0xDC00;
}
bool IsLowSurrogate(char32_t iCode) {
    return iCode >= 0xDC00 && iCode < 0xE000;
}

}  // namespace

std::string ToUtf8(char32_t iCode) {
    const auto continuation = [iCode](int iShift) { return static_cast<char>(0x80 | ((iCode >> iShift) & 0x3F)); };
    if (iCode < 0x80) {
        return {static_cast<char>(iCode)};
    }
    if (iCode < 0x800) {
        return {static_cast<char>(0xC0 | (iCode >> 6)), continuation(0)};
    }
    if (iCode < 0x10000) {
        return {static_cast<char>(0xE0 | (iCode >> 12)), continuation(6), continuation(0)};
    }
    return {static_cast<char>(0xF0 | (iCode >> 18)), continuation(12), continuation(6), continuation(0)};
}

std::string ToUtf8(std::u16string_view iUnits) {
    std::string text;
    for (std::size_t i = 0; i < iUnits.size(); ++i) {
        char32_t code = iUnits[i];
        if (IsHighSurrogate(code) && i + 1 < iUnits.size() && IsLowSurrogate(iUnits[i + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10) + (iUnits[++i] - 0xDC00U);
        } else if (IsHighSurrogate(code) || IsLowSurrogate(code)) {
            code = kReplacement;
        }
        text += ToUtf8(code);
    }
    return text;
}

std::string ToUtf8(const BexUnicodeString& iText) {
    if (iText.IsWide()) {
        return ToUtf8(iText.WideView());
    }
    std::string text;
    for (const char c : iText.NarrowView()) {
        text += ToUtf8(static_cast<char32_t>(static_cast<unsigned char>(c)));
    }
    return text;
}

std::u16string ToUtf16(std::string_view iText) {
    std::u16string units;
    units.reserve(iText.size());
    while (!iText.empty()) {
        const char32_t code = TakeCharacter(iText);
        if (code < 0x10000) {
            units += static_cast<char16_t>(code);
        } else {
            units += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return units;
}

std::size_t LengthOfCharacter(std::string_view iText) {
    constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};  // what needs one byte, two, three, four
    const auto first = static_cast<unsigned char>(iText.front());
    const std::size_t more = first < 0x80 ? 0 : first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
    if ((first >= 0x80 && first < 0xC0) || first >= 0xF8 || more >= iText.size()) {
        return 0;
    }
    for (std::size_t i = 1; i <= more; ++i) {
        if ((static_cast<unsigned char>(iText[i]) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    const char32_t code = TakeCharacter(iText);
    const bool isCharacter =
        code >= kLeast[more] && code <= 0x10FFFF && !IsHighSurrogate(code) && !IsLowSurrogate(code);
    return isCharacter ? more + 1 : 0;
}

bool IsUtf8(std::string_view iText) {
    while (!iText.empty()) {
        const std::size_t length = LengthOfCharacter(iText);
        if (length == 0) {
            return false;
        }
        iText.remove_prefix(length);
    }
    return true;
}

std::string WhyNotInDocument(char32_t iCode) {
    char code[16];
    std::snprintf(code, sizeof code, "U+%04X", static_cast<unsigned>(iCode));
    if (iCode > 0xFF) {
        return std::string("character ") + code + " (" + ToUtf8(iCode) + ") is outside ISO-8859-1";
    }
    if (iCode < 0x20 && iCode != '\t' && iCode != '\n' && iCode != '\r') {
        return std::string("character ") + code + " cannot be in an XML document";
    }
    return "";
}

std::string Shortened(std::string_view iText, std::size_t iLength) {
    std::size_t end = iLength;
    while (end < iText.size() && (static_cast<unsigned char>(iText[end]) & 0xC0U) == 0x80U) {
        ++end;
    }
    return std::string(iText.substr(0, end)) + (end < iText.size() ? "..." : "");
}

char32_t TakeCharacter(std::string_view& ioText) {
    const auto first = static_cast<unsigned char>(ioText.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t code = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length && i < ioText.size(); ++i) {
        code = (code << 6) | (static_cast<unsigned char>(ioText[i]) & 0x3FU);
    }
    ioText.remove_prefix(length < ioText.size() ? length : ioText.size());
    return code;
}
