#ifndef BexGuid_H
#define BexGuid_H

#include <cstdint>

/** The identifier of an interface or class: 16 bytes in the usual layout. A plain value. */
struct GUID {
    std::uint32_t Data1;    ///< the first group of digits
    std::uint16_t Data2;    ///< the second
    std::uint16_t Data3;    ///< the third
    std::uint8_t Data4[8];  ///< the fourth, two bytes, and the fifth, six
};

/** Compares all 16 bytes. */
constexpr bool operator==(const GUID& iLeft, const GUID& iRight) {
    if (iLeft.Data1 != iRight.Data1 || iLeft.Data2 != iRight.Data2 || iLeft.Data3 != iRight.Data3) {
        return false;
    }
    for (int i = 0; i < 8; ++i) {
        if (iLeft.Data4[i] != iRight.Data4[i]) {
            return false;
        }
    }
    return true;
}

/** Compares all 16 bytes. */
constexpr bool operator!=(const GUID& iLeft, const GUID& iRight) {
    return !(iLeft == iRight);
}

#endif
