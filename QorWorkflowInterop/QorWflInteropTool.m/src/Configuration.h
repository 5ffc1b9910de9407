#ifndef Configuration_H
#define Configuration_H

#include <optional>
#include <string>

/** The name of the property file, which is fixed. */
constexpr const char* kPropertyFileName = "QorWflActionManager";
/** The environment variable with the folders in which the library looks for it. */
constexpr const char* kPropertyPathVariable = "BexMsgCatalogPath";

/**
 * The property file that a path names: the path itself, or the file of the fixed name in the folder that it is.
 * @throw Failure when there is no such file or it cannot be read.
 */
std::string FindPropertyFile(const std::string& iPath);

/**
 * Makes the library find a chosen property file while this object lives.
 *
 * The library looks for a file of a fixed name along `BexMsgCatalogPath`; so the variable names a private folder with
 * a link of that name. The variable is restored and the folder removed afterwards. One object at a time, and no other
 * thread may use the environment meanwhile.
 */
class Configuration {
public:
    /**
     * @param iPath a property file of any name, or a folder with one called QorWflActionManager
     * @throw Failure when there is no such file or it cannot be read.
     */
    explicit Configuration(const std::string& iPath);
    ~Configuration();
    Configuration(const Configuration&) = delete;  // the folder is removed once
    Configuration& operator=(const Configuration&) = delete;

private:
    void RemoveFolder() const;

    std::string folder;
    std::optional<std::string> formerPath;
};

#endif
