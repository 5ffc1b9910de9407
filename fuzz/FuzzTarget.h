#ifndef FuzzTarget_H
#define FuzzTarget_H

#include <cstddef>
#include <cstdint>

/**
 * What every fuzz target defines: takes one input, and comes back when everything it promises of it holds.
 * @return 0.
 */
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize);

#endif
