#ifndef RefusedMemory_H
#define RefusedMemory_H

#include <cstddef>

/**
 * Memory that ends. This program takes the place of the allocation functions: of malloc() and its kin, on which the
 * allocation operators stand, or under a sanitizer, which needs those for itself, of the operators.
 */
namespace RefusedMemory {

/** Blocks that are alive, of all threads. */
long LiveBlocks();

/** Bytes that were asked for since the program began, those given back included. */
std::size_t RequestedBytes();

enum class Mode {
    kOnce,        ///< one request is refused, those behind it are granted
    kFromThenOn,  ///< one request is refused and all behind it
};

/** Refuses a request of this thread while it lives. */
class Refusal {
public:
    /** @param iGranted the number of requests that are granted before */
    Refusal(long iGranted, Mode iMode);
    ~Refusal();
    Refusal(const Refusal&) = delete;
    Refusal& operator=(const Refusal&) = delete;

    /** Whether a request was refused so far. */
    bool Happened() const;
};

}  // namespace RefusedMemory

#endif
