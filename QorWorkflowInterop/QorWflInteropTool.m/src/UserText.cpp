#include "UserText.h"

#include "Failure.h"
#include "SafeText.h"
#include "Unicode.h"

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
