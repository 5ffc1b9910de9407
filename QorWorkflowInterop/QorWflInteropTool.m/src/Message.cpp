#include "Message.h"

#include "SafeText.h"

#include <iostream>

void Report(const std::string& iMessage) {
    std::cerr << "qorwfl: " + SafeText(iMessage) + '\n';
}
