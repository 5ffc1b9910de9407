#ifndef ConfigReport_H
#define ConfigReport_H

#include "ConfigFindings.h"
#include "LoadedConfig.h"
#include "PropertyText.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/** A property file with all that can be told about it. */
struct ExaminedConfig {
    /** @throw Failure as LoadedConfig's constructor has it. */
    explicit ExaminedConfig(const std::optional<std::string>& iConfig);

    /** @return how many findings there are of a severity. */
    std::size_t Count(Severity iSeverity) const;

    LoadedConfig config;
    PropertyText file;
    std::vector<ConfigFinding> findings;
};

/** @return the findings, a line or two each, with the file and the line in front. */
std::string FindingsAsText(const ExaminedConfig& iConfig, bool iColours);
/** @return the same as a JSON document. */
std::string FindingsAsJson(const ExaminedConfig& iConfig);

/** @return where the file was found, what it sets, and what the library makes of that. */
std::string ConfigAsText(const ExaminedConfig& iConfig, bool iColours);
/** @return the same as a JSON document. */
std::string ConfigAsJson(const ExaminedConfig& iConfig);

#endif
