#ifndef PropertySearch_H
#define PropertySearch_H

#include <optional>
#include <string>
#include <vector>

/** A file that was looked at on the way to the property file. */
struct PropertyCandidate {
    std::string entry;   ///< the entry of the path, as it stands there; empty for the current folder
    std::string file;    ///< the file that the entry gives
    std::string reason;  ///< why it was passed over; empty for the one that is taken
};

/** The way along `BexMsgCatalogPath` to the property file. */
struct PropertySearch {
    std::optional<std::string> path;            ///< the value of the variable, nothing when it is not set
    std::vector<PropertyCandidate> candidates;  ///< one for each entry of the path, in its order

    /** @return the file that the library takes, nothing when there is none. */
    std::optional<std::string> Found() const;
};

/** Looks for the property file where the library does: the first regular file of its name counts. */
PropertySearch SearchPropertyFile();

#endif
