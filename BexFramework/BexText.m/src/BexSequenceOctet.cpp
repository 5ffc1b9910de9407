#include "BexSequenceOctet.h"

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

/** The framework's range check. Hosts look for the first line in their logs, so it stays as it is, escapes and all. */
void CheckRange(unsigned long iLength, unsigned long iPos) {
    // GCOVR_EXCL_START: death tests go here, and a process that aborts leaves no counts behind
    if (iPos >= iLength) {
        std::fputs("operator[] : %length, %i\n", stderr);
        std::fprintf(stderr, "%lu, %lu\n", iLength, iPos);
        std::abort();
    }
    // GCOVR_EXCL_STOP
}

}  // namespace

_SEQUENCE_octet::_SEQUENCE_octet(const void* iBytes, unsigned long iLength) {
    if (iBytes != nullptr) {
        const auto* bytes = static_cast<const unsigned char*>(iBytes);
        octets.assign(bytes, bytes + iLength);
    }
}

void _SEQUENCE_octet::length(unsigned long iLength) {
    if (iLength > octets.max_size()) {
        throw std::bad_alloc();
    }
    octets.resize(iLength);
}

unsigned char& _SEQUENCE_octet::operator[](unsigned long iPos) {
    CheckRange(length(), iPos);
    return octets[iPos];
}

const unsigned char& _SEQUENCE_octet::operator[](unsigned long iPos) const {
    CheckRange(length(), iPos);
    return octets[iPos];
}
