// A library of a host that brings the interop library along and uses everything of it.

#include "WholeWay.h"

#include <BexTime.h>

#include <cstddef>

extern "C" {

/** Uses everything once. @return a number made from what came out, the same each time */
__attribute__((visibility("default"))) std::size_t UseEverything() {
    std::size_t sum = BexTime().GetYear() > 2000 ? 1 : 0;
    for (const char character : WholeWay::Once(WholeWay::RecordText())) {
        sum = sum * 31 + static_cast<unsigned char>(character);
    }
    return sum;
}
}
