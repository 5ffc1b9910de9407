#include "Message.h"

#include "Unicode.h"

#include <cstdio>
#include <iostream>
#include <string_view>

namespace {

/** Whether a character is one that a terminal obeys: U+0000 to U+001F, U+007F to U+009F. */
bool IsControl(std::string_view iCharacter) {
    const auto first = static_cast<unsigned char>(iCharacter.front());
    return first < 0x20 || first == 0x7F || (first == 0xC2 && static_cast<unsigned char>(iCharacter[1]) < 0xA0);
}

void AppendEscaped(std::string_view iBytes, std::string& ioText) {
    for (const char c : iBytes) {
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(c)));
        ioText += escaped;
    }
}

}  // namespace

std::string WithoutControls(const std::string& iText) {
    std::string text;
    text.reserve(iText.size());
    for (std::string_view rest = iText; !rest.empty();) {
        const std::size_t length = LengthOfCharacter(rest);
        const std::string_view character = rest.substr(0, length == 0 ? 1 : length);
        if (length == 0 || IsControl(character)) {
            AppendEscaped(character, text);
        } else {
            text += character;
        }
        rest.remove_prefix(character.size());
    }
    return text;
}

void Report(const std::string& iMessage) {
    std::cerr << "qorwfl: " + WithoutControls(iMessage) + '\n';
}
