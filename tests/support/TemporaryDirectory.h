#ifndef TemporaryDirectory_H
#define TemporaryDirectory_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

/** An empty directory of its own, removed with everything in it. */
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string pattern = (std::filesystem::temp_directory_path() / "qorwfl-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path = pattern;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& Path() const { return path; }
    /** Writes a file of exactly these bytes, its folders included, and gives its path. */
    std::string Write(const std::string& iName, const std::string& iBytes) const {
        const std::filesystem::path file = path / iName;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << iBytes;
        return file.string();
    }

private:
    std::filesystem::path path;
};

#endif
