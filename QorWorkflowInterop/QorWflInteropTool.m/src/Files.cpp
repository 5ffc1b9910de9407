#include "Files.h"

#include "Failure.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** An open file; the standard input stays open. */
class Descriptor {
public:
    explicit Descriptor(const std::string& iPath)
        : number(iPath == "-" ? STDIN_FILENO : ::open(iPath.c_str(), O_RDONLY | O_CLOEXEC)) {}
    ~Descriptor() {
        if (number > STDIN_FILENO) {
            ::close(number);
        }
    }
    Descriptor(const Descriptor&) = delete;  // closes the file once
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return number; }

private:
    int number;
};

[[noreturn]] void FailToRead(const std::string& iPath) {
    throw Failure(InputName(iPath) + ": cannot be read: " + std::strerror(errno));
}

/** Refuses more bytes than a text of the library can hold. */
void RequireSize(const std::string& iPath, off_t iSize) {
    if (iSize > INT_MAX) {
        throw Failure(InputName(iPath) + ": has more than " + std::to_string(INT_MAX) + " bytes");
    }
}

/** Reads the next bytes, trying again when a signal comes in between. */
ssize_t ReadSome(int iNumber, char* oBuffer, std::size_t iSize) {
    ssize_t count = 0;
    do {
        count = ::read(iNumber, oBuffer, iSize);
    } while (count < 0 && errno == EINTR);
    return count;
}

}  // namespace

std::string InputName(const std::string& iPath) {
    return iPath == "-" ? "standard input" : iPath;
}

std::string ReadInput(const std::string& iPath) {
    const Descriptor file(iPath);
    if (file.Number() < 0) {
        FailToRead(iPath);
    }
    std::string bytes;
    struct stat status {};
    if (::fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode)) {
        RequireSize(iPath, status.st_size);
        bytes.reserve(static_cast<std::size_t>(status.st_size));
    }
    std::array<char, 65536> buffer{};
    for (;;) {
        const ssize_t count = ReadSome(file.Number(), buffer.data(), buffer.size());
        if (count < 0) {
            FailToRead(iPath);
        }
        if (count == 0) {
            return bytes;
        }
        bytes.append(buffer.data(), static_cast<std::size_t>(count));
        RequireSize(iPath, static_cast<off_t>(bytes.size()));
    }
}

void WriteOutput(std::string_view iBytes) {
    if (std::fwrite(iBytes.data(), 1, iBytes.size(), stdout) != iBytes.size() || std::fflush(stdout) != 0) {
        throw Failure(std::string("standard output: cannot be written: ") + std::strerror(errno));
    }
}
