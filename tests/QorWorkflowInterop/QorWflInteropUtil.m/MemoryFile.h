#ifndef MemoryFile_H
#define MemoryFile_H

#include "PropertyEntries.h"

#include <BexUnicodeString.h>

#include <string>
#include <sys/mman.h>
#include <unistd.h>

/** A file in memory, for tests that read very many small texts. */
class MemoryFile {
public:
    MemoryFile() : descriptor(::memfd_create("properties", 0)), path("/proc/self/fd/" + std::to_string(descriptor)) {}
    ~MemoryFile() { ::close(descriptor); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    /** Makes the file hold just this text. @return whether that worked. */
    bool Hold(const std::string& iText) const {
        return ::ftruncate(descriptor, 0) == 0 &&
               ::pwrite(descriptor, iText.data(), iText.size(), 0) == static_cast<ssize_t>(iText.size());
    }
    BexUnicodeString Path() const { return StringOf(path); }

private:
    int descriptor;
    std::string path;
};

#endif
