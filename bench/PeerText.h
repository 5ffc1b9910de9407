#ifndef PeerText_H
#define PeerText_H

#include <BexUnicodeString.h>

#include <algorithm>
#include <string>
#include <string_view>

/** Texts for libraries that want UTF-8. Plain ASCII, the usual case, is handed on as it is. */
namespace PeerText {

inline bool IsAscii(std::string_view iText) {
    return std::all_of(iText.begin(), iText.end(), [](char iByte) { return static_cast<signed char>(iByte) >= 0; });
}

/** The UTF-8 of a narrow text, NUL-terminated; valid until the text or the buffer changes. */
inline const char* Utf8(const BexUnicodeString& iText, std::string& ioBuffer) {
    const char* narrow = iText.ConvertToChar();
    const std::string_view text(narrow, static_cast<std::size_t>(iText.GetLengthInChar()));
    if (IsAscii(text)) {
        return narrow;
    }
    ioBuffer.clear();
    for (const char byte : text) {
        const auto code = static_cast<unsigned char>(byte);
        if (code < 0x80) {
            ioBuffer += byte;
        } else {
            ioBuffer += static_cast<char>(0xC0 | (code >> 6));
            ioBuffer += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    return ioBuffer.c_str();
}

/** The narrow text of UTF-8 that holds nothing above 0xFF. */
inline BexUnicodeString FromUtf8(std::string_view iText) {
    if (IsAscii(iText)) {
        return BexUnicodeString(iText.data(), static_cast<int>(iText.size()));
    }
    std::string narrow;
    for (std::size_t i = 0; i < iText.size(); ++i) {
        const auto code = static_cast<unsigned char>(iText[i]);
        if (code < 0x80 || i + 1 == iText.size()) {
            narrow += iText[i];
        } else {
            narrow += static_cast<char>((code << 6) | (static_cast<unsigned char>(iText[++i]) & 0x3F));
        }
    }
    return BexUnicodeString(narrow.data(), static_cast<int>(narrow.size()));
}

}  // namespace PeerText

#endif
