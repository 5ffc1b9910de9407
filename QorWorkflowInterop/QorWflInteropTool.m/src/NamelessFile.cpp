#include "NamelessFile.h"

#include "Failure.h"

#include <cerrno>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

NamelessFile::NamelessFile(const std::string& iBytes) : number(::memfd_create("standard input", MFD_CLOEXEC)) {
    std::size_t written = 0;
    while (number >= 0 && written < iBytes.size()) {
        const ssize_t count = ::write(number, iBytes.data() + written, iBytes.size() - written);
        if (count < 0 && errno != EINTR) {
            const std::string reason = std::strerror(errno);
            ::close(number);
            throw Failure("standard input: cannot be kept: " + reason);
        }
        written += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    if (number < 0) {
        throw Failure(std::string("standard input: cannot be kept: ") + std::strerror(errno));
    }
}

NamelessFile::~NamelessFile() {
    ::close(number);
}

std::string NamelessFile::Path() const {
    return "/proc/self/fd/" + std::to_string(number);
}
