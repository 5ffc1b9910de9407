#include "Unicode.h"

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

std::string Shortened(const std::string& iText, std::size_t iLength) {
    std::size_t end = iLength;
    while (end < iText.size() && (static_cast<unsigned char>(iText[end]) & 0xC0U) == 0x80U) {
        ++end;
    }
    return end < iText.size() ? iText.substr(0, end) + "..." : iText;
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
