#include "Message.h"

#include <cstdio>
#include <iostream>

std::string WithoutControls(const std::string& iText) {
    std::string text;
    text.reserve(iText.size());
    for (const char c : iText) {
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", static_cast<unsigned>(c));
            text += escaped;
        } else {
            text += c;
        }
    }
    return text;
}

void Report(const std::string& iMessage) {
    std::cerr << "qorwfl: " + WithoutControls(iMessage) + '\n';
}
