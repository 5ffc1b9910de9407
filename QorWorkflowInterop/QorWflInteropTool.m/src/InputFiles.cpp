#include "InputFiles.h"

#include "Configuration.h"

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** Which regular file a path leads to; nothing when to none. */
std::optional<std::pair<dev_t, ino_t>> IdentityOf(const std::string& iPath) {
    struct stat status {};
    const int found = iPath == "-" ? ::fstat(STDIN_FILENO, &status) : ::stat(iPath.c_str(), &status);
    return found == 0 && S_ISREG(status.st_mode) ? std::optional(std::pair(status.st_dev, status.st_ino))
                                                 : std::nullopt;
}

}  // namespace

InputFiles::InputFiles(const std::vector<std::string>& iInputs, const std::optional<std::string>& iConfig) {
    for (const std::string& input : iInputs) {
        Add(input);
    }
    if (iConfig) {
        Add(*iConfig);
        Add((std::filesystem::path(*iConfig) / kPropertyFileName).string());
    }
}

bool InputFiles::Contains(const std::string& iOutput) const {
    const auto file = iOutput == "-" ? std::nullopt : IdentityOf(iOutput);
    return file && files.contains(*file);
}

void InputFiles::Add(const std::string& iPath) {
    if (const auto file = IdentityOf(iPath)) {
        files.insert(*file);
    }
}
