#ifndef OutputFile_H
#define OutputFile_H

#include <string>
#include <string_view>

/**
 * Writes a file whole or not at all: whoever opens it finds what was there before or all of the new bytes, also when
 * the process is interrupted or the disk is full.
 *
 * The bytes go to a temporary file in the same folder, which takes the place of the file when they are on the disk, and
 * is removed when something fails. A new file has the permissions that the umask gives, a replaced one keeps its own. A
 * symbolic link stays, its target is written. What is no regular file, such as a terminal, a pipe or /dev/stdout, is
 * written to directly.
 *
 * Not for several threads at a time.
 *
 * @param iPath the file; "-" for the standard output
 * @throw Failure with the path and the reason when it cannot be written.
 */
void WriteFile(const std::string& iPath, std::string_view iBytes);

#endif
