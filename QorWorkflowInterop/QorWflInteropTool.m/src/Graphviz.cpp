#include "Graphviz.h"

#include "Failure.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr const char* kProgram = "dot";

[[noreturn]] void Fail(const std::string& iReason) {
    throw Failure(std::string("Graphviz's program ") + kProgram + ": " + iReason);
}

/** A pipe whose ends are closed at the latest with it. */
class Pipe {
public:
    Pipe() {
        if (::pipe2(ends, O_CLOEXEC) != 0) {
            Fail(std::string("no pipe to it: ") + std::strerror(errno));
        }
    }
    ~Pipe() {
        Close(0);
        Close(1);
    }
    Pipe(const Pipe&) = delete;  // closes its ends once
    Pipe& operator=(const Pipe&) = delete;

    int Reading() const { return ends[0]; }
    int Writing() const { return ends[1]; }
    void CloseReading() { Close(0); }
    void CloseWriting() { Close(1); }

private:
    void Close(int iEnd) {
        if (ends[iEnd] >= 0) {
            ::close(ends[iEnd]);
            ends[iEnd] = -1;
        }
    }

    int ends[2] = {-1, -1};
};

/** What a process reads and writes. */
struct Streams {
    Pipe in;
    Pipe out;
    Pipe err;
};

pid_t Start(const Streams& iStreams) {
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    sigset_t signals;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, iStreams.in.Reading(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, iStreams.out.Writing(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, iStreams.err.Writing(), STDERR_FILENO);
    ::posix_spawnattr_init(&attributes);
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGPIPE);  // which this process ignores, and a child would inherit that
    ::posix_spawnattr_setsigdefault(&attributes, &signals);
    ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string words[] = {kProgram, "-Tsvg"};
    char* arguments[] = {words[0].data(), words[1].data(), nullptr};
    pid_t process = -1;
    const int error = ::posix_spawnp(&process, kProgram, &actions, &attributes, arguments, environ);
    ::posix_spawnattr_destroy(&attributes);
    ::posix_spawn_file_actions_destroy(&actions);
    if (error == ENOENT) {
        Fail("not found along PATH; the format svg needs it, --format dot and --format mermaid do not");
    }
    if (error != 0) {
        Fail(std::string("cannot be started: ") + std::strerror(error));
    }
    return process;
}

/** Takes what a pipe has; false at its end. */
bool Take(int iDescriptor, std::string& ioBytes) {
    char buffer[65536];
    const ssize_t count = ::read(iDescriptor, buffer, sizeof buffer);
    if (count > 0) {
        ioBytes.append(buffer, static_cast<std::size_t>(count));
    }
    return count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
}

/** Gives a pipe what it takes; false when there is no more to give. */
bool Give(int iDescriptor, std::string_view& ioBytes) {
    const ssize_t count = ::write(iDescriptor, ioBytes.data(), ioBytes.size());
    if (count > 0) {
        ioBytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return !ioBytes.empty() && (count >= 0 || errno == EINTR || errno == EAGAIN);
}

/** Feeds the process and takes what it says, all at a time, so that neither waits for the other. */
void Exchange(Streams& ioStreams, std::string_view iInput, std::string& oOutput, std::string& oErrors) {
    ioStreams.in.CloseReading();
    ioStreams.out.CloseWriting();
    ioStreams.err.CloseWriting();
    ::fcntl(ioStreams.in.Writing(), F_SETFL, O_NONBLOCK);
    while (ioStreams.out.Reading() >= 0 || ioStreams.err.Reading() >= 0) {
        pollfd entries[] = {{ioStreams.in.Writing(), POLLOUT, 0},
                            {ioStreams.out.Reading(), POLLIN, 0},
                            {ioStreams.err.Reading(), POLLIN, 0}};  // one that is closed is passed over
        if (::poll(entries, std::size(entries), -1) < 0) {
            continue;
        }
        if (entries[0].revents != 0 && !Give(entries[0].fd, iInput)) {
            ioStreams.in.CloseWriting();
        }
        if (entries[1].revents != 0 && !Take(entries[1].fd, oOutput)) {
            ioStreams.out.CloseReading();
        }
        if (entries[2].revents != 0 && !Take(entries[2].fd, oErrors)) {
            ioStreams.err.CloseReading();
        }
    }
    ioStreams.in.CloseWriting();
}

int Wait(pid_t iProcess) {
    int status = 0;
    while (::waitpid(iProcess, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

}  // namespace

std::string DrawSvg(const std::string& iGraph) {
    Streams streams;
    const pid_t process = Start(streams);
    std::string picture;
    std::string errors;
    Exchange(streams, iGraph, picture, errors);
    const int status = Wait(process);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || picture.empty()) {
        errors.erase(errors.find_last_not_of(" \n") + 1);
        Fail(errors.empty() ? "drew nothing" : "drew nothing: " + errors);
    }
    return picture;
}
