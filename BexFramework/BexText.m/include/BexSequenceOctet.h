#ifndef BexSequenceOctet_H
#define BexSequenceOctet_H

#include "BexExport.h"

#include <vector>

/**
 * The framework's counted byte buffer.
 *
 * A value type that owns its bytes. Memory that cannot be had leaves an operation as std::bad_alloc. Threads: any
 * number may read one buffer that nobody changes.
 */
class BEX_EXPORT _SEQUENCE_octet {
public:
    /** No bytes. */
    _SEQUENCE_octet() = default;
    /** A copy of @p iLength bytes; a null pointer gives no bytes. */
    _SEQUENCE_octet(const void* iBytes, unsigned long iLength);

    /** @return the number of bytes. */
    unsigned long length() const noexcept { return octets.size(); }
    /** Cuts the buffer, or makes it longer by bytes of 0. */
    void length(unsigned long iLength);
    /**
     * The byte at @p iPos. A position at or past the length ends the process: "operator[] : %length, %i" and a second
     * line with the two numbers go to standard error, then abort().
     */
    unsigned char& operator[](unsigned long iPos);
    /** The same for a buffer that is not changed. */
    const unsigned char& operator[](unsigned long iPos) const;

private:
    std::vector<unsigned char> octets;
};

#endif
