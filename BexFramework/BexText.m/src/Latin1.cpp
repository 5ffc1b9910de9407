#include "Latin1.h"

#include <algorithm>
#include <cstddef>

namespace Latin1 {

// The loops are written so that the compiler turns them into vector code: no branch depends on a single unit.

bool Fits(std::u16string_view iUnits) noexcept {
    constexpr std::size_t kBlock = 512;  // looked at whole before anything is decided
    while (!iUnits.empty()) {
        const std::u16string_view block = iUnits.substr(0, kBlock);
        unsigned int all = 0;
        for (const char16_t unit : block) {
            all |= unit;
        }
        if (all > 0xFFU) {
            return false;
        }
        iUnits.remove_prefix(block.size());
    }
    return true;
}

void Narrow(std::u16string_view iUnits, char* oBytes) noexcept {
    for (std::size_t i = 0; i < iUnits.size(); ++i) {
        const char16_t unit = iUnits[i];
        oBytes[i] = unit > 0xFF ? kReplacement : static_cast<char>(unit);
    }
}

void Widen(std::string_view iBytes, char16_t* oUnits) noexcept {
    for (std::size_t i = 0; i < iBytes.size(); ++i) {
        oUnits[i] = static_cast<unsigned char>(iBytes[i]);
    }
}

std::string Narrow(std::u16string_view iUnits) {
    std::string bytes(iUnits.size(), '\0');
    Narrow(iUnits, bytes.data());
    return bytes;
}

std::u16string Widen(std::string_view iBytes) {
    std::u16string units(iBytes.size(), u'\0');
    Widen(iBytes, units.data());
    return units;
}

}  // namespace Latin1
