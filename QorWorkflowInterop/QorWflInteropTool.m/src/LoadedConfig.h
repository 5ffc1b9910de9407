#ifndef LoadedConfig_H
#define LoadedConfig_H

#include "PropertySearch.h"

#include <BexUnicodeString.h>
#include <QorWflPropertyFile.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

/** A mapping of objects to a type, as the library holds it. */
struct ObjectMapping {
    BexUnicodeString type;
    BexUnicodeString environment;  ///< "*" for any
    BexUnicodeString kind;
    BexUnicodeString table;  ///< "*" for any table of the kind
    BexUnicodeString attribute;
    BexUnicodeString typeKey;    ///< what it is found by when the name attribute is looked up
    BexUnicodeString objectKey;  ///< what it is found by when the type is looked up
    int property = 0;            ///< the place of the key that makes it in the property table, from 1
};

/** A priority, as the library holds it. */
struct PriorityWord {
    BexUnicodeString code;
    BexUnicodeString word;
};

/** A maturity and the key that sets it. */
struct MaturityWord {
    const char* status;  ///< what the key ends with
    BexUnicodeString word;
};

/**
 * What the library takes from a property file. The library's own manager and handler have read it; nothing here is
 * worked out by the command itself but the file's place.
 */
class LoadedConfig {
public:
    /**
     * Has the library read a property file.
     * @param iConfig the file, the folder it is in, or "-" for the standard input; without one the library looks for it
     *        along the path
     * @throw Failure when a file is given and cannot be read.
     */
    explicit LoadedConfig(const std::optional<std::string>& iConfig);
    ~LoadedConfig();
    LoadedConfig(const LoadedConfig&) = delete;  // the manager is one
    LoadedConfig& operator=(const LoadedConfig&) = delete;

    /** @return how messages call the file; empty when there is none. */
    const std::string& FileName() const { return fileName; }
    /** @return the bytes of the file, which are none when there is none or it cannot be opened. */
    const std::string& Content() const { return content; }
    /** @return why the file that was found along the path cannot be opened; empty when it can or there is none. */
    const std::string& WhyNotOpened() const { return whyNotOpened; }
    /** @return how the file was looked for, nothing when it was given. */
    const std::optional<PropertySearch>& Search() const { return search; }

    /** @return the property table, the built-in mappings in front. */
    const QorWflPropertyFile& Properties() const { return properties; }
    BexUnicodeString ActionType() const;
    /** @return the five maturities, in the order of an action's life. */
    std::vector<MaturityWord> Maturities() const;
    std::vector<PriorityWord> Priorities() const;
    BexUnicodeString MissingMarker() const;
    BexUnicodeString AmbiguousMarker() const;
    /** @return the mappings, in the order in which the library looks through them. */
    std::vector<ObjectMapping> Mappings() const;
    /** @return the type of an object, as QorWflObjectNameHandlerBase::GetExternalType() has it. */
    BexUnicodeString ExternalType(const BexUnicodeString& iEnvironment, const BexUnicodeString& iTable) const;
    /** @return the attribute, as QorWflObjectNameHandlerBase::GetNameAttribute() has it. */
    BexUnicodeString NameAttribute(const BexUnicodeString& iType, const BexUnicodeString& iEnvironment,
                                   const BexUnicodeString& iTable) const;

private:
    class Manager;

    std::string fileName;
    std::string content;
    std::string whyNotOpened;
    std::optional<PropertySearch> search;
    QorWflPropertyFile properties;
    std::unique_ptr<Manager> manager;
};

/** @return the mapping that the library makes of a key and its value, nothing when it makes none. */
std::optional<ObjectMapping> MappingOf(const BexUnicodeString& iKey, const BexUnicodeString& iValue);

#endif
