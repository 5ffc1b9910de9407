#include "Configuration.h"

#include "Failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdlib.h>
#include <system_error>
#include <unistd.h>

namespace {

/** A new folder that only this user can enter. */
std::string MakeFolder() {
    std::error_code error;
    std::string parent = std::filesystem::temp_directory_path(error).string();
    if (error || parent.find(':') != std::string::npos) {  // a colon ends an entry of the search path
        parent = "/tmp";
    }
    std::string folder = parent + "/qorwfl-XXXXXX";
    if (::mkdtemp(folder.data()) == nullptr) {
        throw Failure(parent + ": no temporary folder can be made: " + std::strerror(errno));
    }
    return folder;
}

}  // namespace

std::string FindPropertyFile(const std::string& iPath) {
    std::error_code error;
    const std::string file = std::filesystem::is_directory(iPath, error)
                                 ? (std::filesystem::path(iPath) / kPropertyFileName).string()
                                 : iPath;
    if (::access(file.c_str(), R_OK) != 0) {
        throw Failure(file + ": the property file cannot be read: " + std::strerror(errno));
    }
    if (!std::filesystem::is_regular_file(file, error)) {
        throw Failure(file + ": expected a property file, found no regular file");
    }
    return file;
}

Configuration::Configuration(const std::string& iPath) {
    const std::string file = std::filesystem::absolute(FindPropertyFile(iPath)).string();
    folder = MakeFolder();
    if (::symlink(file.c_str(), (folder + '/' + kPropertyFileName).c_str()) != 0) {
        const std::string reason = std::strerror(errno);
        RemoveFolder();
        throw Failure(folder + ": no link to the property file can be made: " + reason);
    }
    if (const char* path = ::getenv(kPropertyPathVariable)) {
        formerPath = path;
    }
    ::setenv(kPropertyPathVariable, folder.c_str(), 1);
}

Configuration::~Configuration() {
    if (formerPath) {
        ::setenv(kPropertyPathVariable, formerPath->c_str(), 1);
    } else {
        ::unsetenv(kPropertyPathVariable);
    }
    RemoveFolder();
}

void Configuration::RemoveFolder() const {
    ::unlink((folder + '/' + kPropertyFileName).c_str());
    ::rmdir(folder.c_str());
}
