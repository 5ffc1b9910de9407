#include "StandardStreams.h"

#include "Failure.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

constexpr const char* kNothing = "/dev/null";

/** Opens what fails when the stream is used, under the stream's number if that is free. */
void Occupy(int iStream) {
    if (::fcntl(iStream, F_GETFD) >= 0) {
        return;
    }
    // The lowest free number is given, and those below are taken.
    if (::open(kNothing, iStream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != iStream) {
        throw Failure(std::string(kNothing) + ": cannot be opened: " + std::strerror(errno));
    }
}

}  // namespace

void PrepareStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        Occupy(stream);
    }
    std::cout.rdbuf(std::cerr.rdbuf());
}
