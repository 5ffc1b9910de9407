#include "PropertySearch.h"

#include "Configuration.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

namespace {

constexpr char kSeparator = ':';
constexpr const char* kCurrentFolder = ".";

/** Why a file cannot be the property file, empty when it can. */
std::string WhyPassedOver(const std::string& iFile) {
    struct stat status {};
    if (::stat(iFile.c_str(), &status) != 0) {
        return errno == ENOENT ? "there is no such file" : std::strerror(errno);
    }
    if (S_ISREG(status.st_mode)) {
        return "";
    }
    return S_ISDIR(status.st_mode) ? "it is a folder" : "it is no regular file";
}

/** The entries of the path; one that is not set or empty has a single empty one. */
std::vector<std::string> EntriesOf(const std::string& iPath) {
    std::vector<std::string> entries;
    std::size_t start = 0;
    while (start <= iPath.size()) {
        const std::size_t end = std::min(iPath.find(kSeparator, start), iPath.size());
        entries.push_back(iPath.substr(start, end - start));
        start = end + 1;
    }
    return entries;
}

}  // namespace

std::optional<std::string> PropertySearch::Found() const {
    const auto taken = std::find_if(candidates.begin(), candidates.end(),
                                    [](const PropertyCandidate& iCandidate) { return iCandidate.reason.empty(); });
    return taken == candidates.end() ? std::nullopt : std::optional(taken->file);
}

PropertySearch SearchPropertyFile() {
    PropertySearch search;
    if (const char* path = std::getenv(kPropertyPathVariable)) {
        search.path = path;
    }
    bool isFound = false;
    for (const std::string& entry : EntriesOf(search.path.value_or(""))) {
        PropertyCandidate candidate{
            entry, (entry.empty() ? std::string(kCurrentFolder) : entry) + '/' + kPropertyFileName, ""};
        candidate.reason = isFound ? "a file was found before" : WhyPassedOver(candidate.file);
        isFound = isFound || candidate.reason.empty();
        search.candidates.push_back(std::move(candidate));
    }
    return search;
}
