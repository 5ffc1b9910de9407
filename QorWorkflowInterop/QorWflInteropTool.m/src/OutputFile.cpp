#include "OutputFile.h"

#include "Failure.h"
#include "Files.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

constexpr int kMaxLinks = 40;  // in a chain, as the system has it
constexpr mode_t kPermissions = 07777;

[[noreturn]] void Fail(const std::string& iPath, int iError) {
    throw Failure(iPath + ": cannot be written: " + std::strerror(iError));
}

void WriteAll(int iDescriptor, std::string_view iBytes, const std::string& iPath) {
    while (!iBytes.empty()) {
        const ssize_t count = ::write(iDescriptor, iBytes.data(), iBytes.size());
        if (count >= 0) {
            iBytes.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            Fail(iPath, errno);
        }
    }
}

/** The open file descriptor that a path such as /dev/stdout or /proc/self/fd/3 names. */
std::optional<int> DescriptorOf(const fs::path& iPath) {
    std::error_code error;
    const std::string folder = fs::weakly_canonical(iPath.parent_path(), error).string();
    if (folder != "/proc/" + std::to_string(::getpid()) + "/fd") {
        return std::nullopt;
    }
    const std::string name = iPath.filename().string();
    int number = -1;
    const auto [end, wrong] = std::from_chars(name.data(), name.data() + name.size(), number);
    return wrong == std::errc() && end == name.data() + name.size() ? std::optional<int>(number) : std::nullopt;
}

/** The next place that a symbolic link leads to; nothing when there is no link. */
std::optional<fs::path> Follow(const fs::path& iPath) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(iPath, error))) {
        return std::nullopt;
    }
    const fs::path target = fs::read_symlink(iPath, error);
    return error ? std::nullopt : std::optional<fs::path>(iPath.parent_path() / target);
}

/**
 * The name of the temporary file, for the handler of signals. Empty when there is none.
 */
std::array<char, PATH_MAX> temporaryName{};

extern "C" void RemoveTemporaryFile(int iSignal) {
    if (temporaryName[0] != '\0') {
        ::unlink(temporaryName.data());
    }
    ::signal(iSignal, SIG_DFL);
    ::raise(iSignal);
}

/** Has the temporary file removed when the user or the system ends the process. */
void WatchSignals() {
    static bool isWatching = false;
    if (isWatching) {
        return;
    }
    isWatching = true;
    for (const int number : {SIGHUP, SIGINT, SIGTERM}) {
        struct sigaction former {};
        if (::sigaction(number, nullptr, &former) == 0 && former.sa_handler == SIG_DFL) {
            struct sigaction action {};
            action.sa_handler = RemoveTemporaryFile;
            ::sigaction(number, &action, nullptr);
        }
    }
}

/** A file beside the one to be written, which is gone afterwards unless it took its place. */
class TemporaryFile {
public:
    TemporaryFile(const fs::path& iTarget, const std::string& iPath) : shownPath(iPath) {
        WatchSignals();
        const fs::path folder = iTarget.parent_path();
        do {
            static unsigned number = 0;
            name = (folder / (".qorwfl-" + std::to_string(::getpid()) + '-' + std::to_string(number++))).string();
            std::strncpy(temporaryName.data(), name.c_str(), temporaryName.size() - 1);
            descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        } while (descriptor < 0 && errno == EEXIST);
        if (descriptor < 0) {
            temporaryName[0] = '\0';
            Fail(iPath, errno);
        }
    }
    ~TemporaryFile() {
        if (descriptor >= 0) {
            ::close(descriptor);
        }
        if (!name.empty()) {
            ::unlink(name.c_str());
        }
        temporaryName[0] = '\0';
    }
    TemporaryFile(const TemporaryFile&) = delete;  // the file is removed once
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void Fill(std::string_view iBytes, std::optional<mode_t> iMode) {
        WriteAll(descriptor, iBytes, shownPath);
        if (iMode && ::fchmod(descriptor, *iMode) != 0) {
            Fail(shownPath, errno);
        }
        if (::fsync(descriptor) != 0 && errno != EINVAL && errno != EROFS) {  // not every file system can
            Fail(shownPath, errno);
        }
        const int closed = ::close(descriptor);
        descriptor = -1;
        if (closed != 0) {
            Fail(shownPath, errno);
        }
    }

    void Replace(const fs::path& iTarget) {
        if (::rename(name.c_str(), iTarget.c_str()) != 0) {
            Fail(shownPath, errno);
        }
        name.clear();
    }

private:
    std::string shownPath;
    std::string name;
    int descriptor = -1;
};

/** Writes to what takes bytes as they come: a device, a pipe. */
void WriteDirectly(const fs::path& iTarget, std::string_view iBytes, const std::string& iPath) {
    const int descriptor = ::open(iTarget.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor < 0) {
        Fail(iPath, errno);
    }
    try {
        WriteAll(descriptor, iBytes, iPath);
    } catch (...) {
        ::close(descriptor);
        throw;
    }
    if (::close(descriptor) != 0) {
        Fail(iPath, errno);
    }
}

/** Replaces a regular file, or makes one. */
void ReplaceFile(const fs::path& iTarget, std::optional<mode_t> iMode, std::string_view iBytes,
                 const std::string& iPath) {
    if (iMode && ::access(iTarget.c_str(), W_OK) != 0) {  // a protected file is not to be replaced either
        Fail(iPath, errno);
    }
    TemporaryFile file(iTarget, iPath);
    file.Fill(iBytes, iMode);
    file.Replace(iTarget);
}

}  // namespace

void WriteFile(const std::string& iPath, std::string_view iBytes) {
    if (iPath == "-") {
        return WriteOutput(iBytes);
    }
    fs::path target = iPath;
    for (int links = 0;; ++links) {
        if (const std::optional<int> descriptor = DescriptorOf(target)) {
            return WriteAll(*descriptor, iBytes, iPath);
        }
        const std::optional<fs::path> next = Follow(target);
        if (!next) {
            break;
        }
        if (links == kMaxLinks) {
            Fail(iPath, ELOOP);
        }
        target = *next;
    }
    struct stat status {};
    const bool isThere = ::stat(target.c_str(), &status) == 0;
    if (!isThere && (errno != ENOENT || iPath.empty())) {
        Fail(iPath, errno);
    }
    if (isThere && S_ISDIR(status.st_mode)) {
        Fail(iPath, EISDIR);
    }
    if (isThere && !S_ISREG(status.st_mode)) {
        return WriteDirectly(target, iBytes, iPath);
    }
    ReplaceFile(target, isThere ? std::optional<mode_t>(status.st_mode & kPermissions) : std::nullopt, iBytes, iPath);
}
