#include "ConfigFindings.h"

#include <algorithm>

std::vector<ConfigFinding> FindInConfig(const PropertyText& iFile, const LoadedConfig& iConfig) {
    std::vector<ConfigFinding> findings;
    if (iConfig.FileName().empty()) {
        findings.push_back({ConfigCode::NoFile, 0, "no property file is found; the built-in values stand",
                            "set BexMsgCatalogPath to the folder with the file"});
    }
    if (!iConfig.WhyNotOpened().empty()) {
        findings.push_back({ConfigCode::NotOpened, 0,
                            "the file is found but cannot be opened (" + iConfig.WhyNotOpened() +
                                "); the library takes it as an empty one"});
    }
    FindInLines(iFile, findings);
    FindInSettings(iFile, iConfig, findings);
    FindInMappings(iFile, iConfig, findings);
    std::stable_sort(findings.begin(), findings.end(),
                     [](const ConfigFinding& iOne, const ConfigFinding& iOther) { return iOne.line < iOther.line; });
    return findings;
}

std::string PlaceOf(const PropertyText& iFile, const BexUnicodeString& iKey) {
    const PropertyLine* line = iFile.LineOf(std::string(iKey.NarrowView()));
    return line == nullptr ? "built in" : "line " + std::to_string(line->first);
}
