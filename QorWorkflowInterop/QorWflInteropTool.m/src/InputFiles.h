#ifndef InputFiles_H
#define InputFiles_H

#include <optional>
#include <set>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

/** The regular files that a command reads, so that it does not write over one of them. */
class InputFiles {
public:
    /**
     * @param iInputs the paths of the inputs, "-" for the standard input; those that lead to no regular file do not
     * count
     * @param iConfig the property file, or the folder that it is in
     */
    explicit InputFiles(const std::vector<std::string>& iInputs,
                        const std::optional<std::string>& iConfig = std::nullopt);

    /** Whether an output is one of the files, by whatever name: a link, or another way to the same folder. */
    bool Contains(const std::string& iOutput) const;

private:
    void Add(const std::string& iPath);

    std::set<std::pair<dev_t, ino_t>> files;
};

#endif
