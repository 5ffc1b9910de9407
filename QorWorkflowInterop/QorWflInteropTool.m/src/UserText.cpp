#include "UserText.h"

#include "Failure.h"
#include "Unicode.h"

#include <cstdio>

namespace {

constexpr std::size_t kMaxQuotedLength = 80;

/** The length of the UTF-8 character that a text begins with, 0 when there is none. */
std::size_t CharacterLength(std::string_view iText) {
    for (std::size_t length = 1; length <= 4 && length <= iText.size(); ++length) {
        if (IsUtf8(iText.substr(0, length))) {
            return length;
        }
    }
    return 0;
}

bool IsControl(char32_t iCode) {
    return iCode < 0x20 || (iCode >= 0x7F && iCode < 0xA0);
}

std::string Escape(char32_t iCode) {
    char escape[8];
    std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(iCode));
    return escape;
}

}  // namespace

BexUnicodeString FromUser(std::string_view iText) {
    if (!IsUtf8(iText)) {
        return BexUnicodeString::FromNarrow(std::string(iText));
    }
    const std::u16string units = ToUtf16(iText);
    return BexUnicodeString(units.data(), static_cast<int>(units.size()));
}

BexUnicodeString FromUserForUrl(std::string_view iText, const std::string& iWhat) {
    BexUnicodeString text = FromUser(iText);
    if (text.IsWide()) {
        throw Failure(iWhat + ' ' + Quoted(iText) + ": a character is outside ISO-8859-1, which the URLs carry");
    }
    return text;
}

std::string Latin1ToUtf8(std::string_view iBytes) {
    std::string text;
    for (const char byte : iBytes) {
        text += ToUtf8(static_cast<char32_t>(static_cast<unsigned char>(byte)));
    }
    return text;
}

std::string Printable(std::string_view iText) {
    std::string printable;
    while (!iText.empty()) {
        const std::size_t length = CharacterLength(iText);
        if (length == 0) {
            printable += Escape(static_cast<unsigned char>(iText.front()));
            iText.remove_prefix(1);
            continue;
        }
        const std::string_view character = iText.substr(0, length);
        const char32_t code = TakeCharacter(iText);
        printable += IsControl(code) ? Escape(code) : std::string(character);
    }
    return printable;
}

std::string Quoted(std::string_view iText) {
    return '"' + Shortened(std::string(iText), kMaxQuotedLength) + '"';
}
