#ifndef ConfigFindings_H
#define ConfigFindings_H

#include "ConfigCodes.h"
#include "LoadedConfig.h"
#include "PropertyText.h"

#include <cstddef>
#include <string>
#include <vector>

/** Something in a property file that its author wants to know. All text is UTF-8. */
struct ConfigFinding {
    ConfigCode code;
    std::size_t line;     ///< the first line of what it is about; 0 for the file as a whole
    std::string message;  ///< what there is
    std::string hint{};   ///< what to do about it, empty when that is plain
};

/**
 * Looks through a property file.
 * @param iFile the file
 * @param iConfig what the library has made of it
 * @return all findings, by line.
 */
std::vector<ConfigFinding> FindInConfig(const PropertyText& iFile, const LoadedConfig& iConfig);

/** Findings in the form of single lines: joined, commented out, without a setting, with characters out of place. */
void FindInLines(const PropertyText& iFile, std::vector<ConfigFinding>& ioFindings);
/** Findings in keys and values: not known, set twice, empty, priorities. */
void FindInSettings(const PropertyText& iFile, const LoadedConfig& iConfig, std::vector<ConfigFinding>& ioFindings);
/** Findings in the mappings of objects to types. */
void FindInMappings(const PropertyText& iFile, const LoadedConfig& iConfig, std::vector<ConfigFinding>& ioFindings);

/** @return where a key of the library's table is set: "line 7", or "built in". */
std::string PlaceOf(const PropertyText& iFile, const BexUnicodeString& iKey);

#endif
