#include "Message.h"

#include "UserText.h"

#include <iostream>

std::string WithoutControls(const std::string& iText) {
    return Printable(iText);
}

void Report(const std::string& iMessage) {
    std::cerr << "qorwfl: " + WithoutControls(iMessage) + '\n';
}
