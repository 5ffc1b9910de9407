#ifndef Files_H
#define Files_H

#include <string>
#include <string_view>

/** @return how messages call an input: its path, or "standard input" for "-". */
std::string InputName(const std::string& iPath);

/**
 * An input as a whole, byte for byte.
 * @param iPath a file, or "-" for the standard input
 * @throw Failure when it cannot be read to its end, or has more bytes than the library's texts can hold.
 */
std::string ReadInput(const std::string& iPath);

/**
 * Writes bytes to the standard output, as they stand, and has them leave the process.
 * @throw Failure when they cannot be written.
 */
void WriteOutput(std::string_view iBytes);

#endif
