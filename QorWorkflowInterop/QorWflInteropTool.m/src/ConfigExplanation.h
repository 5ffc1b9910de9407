#ifndef ConfigExplanation_H
#define ConfigExplanation_H

#include "ConfigReport.h"

#include <BexUnicodeString.h>

#include <string>
#include <vector>

/** How the library comes to the type of an object and to the attribute with its name. */
struct ConfigExplanation {
    /** A key by which a mapping is looked for. */
    struct Key {
        BexUnicodeString text;
        bool isTried = false;  ///< not once an earlier key is found
        int property = 0;      ///< the place of the mapping's key in the property table, 0 when it is not found
    };

    /** Asks the library about the objects of an environment and a table. */
    ConfigExplanation(const LoadedConfig& iConfig, const BexUnicodeString& iEnvironment,
                      const BexUnicodeString& iTable);

    BexUnicodeString environment;
    BexUnicodeString table;
    BexUnicodeString kind;           ///< empty when the table is of none
    std::vector<Key> typeKeys;       ///< in the order in which they are tried
    BexUnicodeString type;           ///< empty when there is none
    std::vector<Key> attributeKeys;  ///< the same for the attribute; none without a type
    BexUnicodeString attribute;      ///< empty when there is none
    bool isOtherTable = false;       ///< the mapping found by the attribute's keys is for another table or kind
};

std::string ExplanationAsText(const ExaminedConfig& iConfig, const ConfigExplanation& iExplanation);
std::string ExplanationAsJson(const ExaminedConfig& iConfig, const ConfigExplanation& iExplanation);

#endif
