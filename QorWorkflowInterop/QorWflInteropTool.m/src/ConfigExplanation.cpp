#include "ConfigExplanation.h"

#include "JsonDocument.h"
#include "SafeText.h"
#include "TextTable.h"
#include "Unicode.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <initializer_list>

namespace {

using Json = nlohmann::ordered_json;
using Key = ConfigExplanation::Key;

constexpr const char* kAny = "*";

/** The kind of the objects of a table, as a mapping for it would have it; empty when it is of none. */
BexUnicodeString KindOf(const BexUnicodeString& iTable) {
    const std::optional<ObjectMapping> mapping = MappingOf("actionObjects.TYPE.*", iTable + ".");
    const bool isCut = iTable.SearchSubString(".") >= 0;  // a mapping's table ends at the first dot
    if (!mapping || (isCut && (mapping->kind == "Part" || mapping->kind == "Model"))) {
        return "";
    }
    return mapping->kind;
}

/** Follows keys through the mappings up to the first that is there. */
std::vector<Key> Follow(const std::vector<ObjectMapping>& iMappings, BexUnicodeString ObjectMapping::*iMember,
                        std::initializer_list<BexUnicodeString> iKeys) {
    std::vector<Key> keys;
    bool isFound = false;
    for (const BexUnicodeString& text : iKeys) {
        Key key{text, !isFound};
        const auto mapping = std::find_if(iMappings.begin(), iMappings.end(),
                                          [&](const ObjectMapping& iMapping) { return iMapping.*iMember == text; });
        if (!isFound && mapping != iMappings.end()) {
            key.property = mapping->property;
            isFound = true;
        }
        keys.push_back(key);
    }
    return keys;
}

std::string Setting(const LoadedConfig& iConfig, int iProperty) {
    return ToUtf8(iConfig.Properties().GetKey(iProperty)) + " = " + ToUtf8(iConfig.Properties().GetValue(iProperty));
}

std::string KeysText(const ExaminedConfig& iConfig, const std::vector<Key>& iKeys) {
    TextTable table;
    for (const Key& key : iKeys) {
        std::string what = key.isTried ? "no mapping" : "not tried";
        if (key.property != 0) {
            what = PlaceOf(iConfig.file, iConfig.config.Properties().GetKey(key.property)) + ": " +
                   Setting(iConfig.config, key.property);
        }
        table.Add({ToUtf8(key.text), what});
    }
    return table.Text();
}

Json KeysJson(const ExaminedConfig& iConfig, const std::vector<Key>& iKeys) {
    Json list = Json::array();
    for (const Key& key : iKeys) {
        Json mapping;
        if (key.property != 0) {
            const BexUnicodeString name = iConfig.config.Properties().GetKey(key.property);
            const PropertyLine* line = iConfig.file.LineOf(std::string(name.NarrowView()));
            mapping = {{"key", ToUtf8(name)},
                       {"value", ToUtf8(iConfig.config.Properties().GetValue(key.property))},
                       {"line", line == nullptr ? Json() : Json(line->first)}};
        }
        list.push_back({{"key", ToUtf8(key.text)}, {"tried", key.isTried}, {"mapping", mapping}});
    }
    return list;
}

}  // namespace

ConfigExplanation::ConfigExplanation(const LoadedConfig& iConfig, const BexUnicodeString& iEnvironment,
                                     const BexUnicodeString& iTable)
    : environment(iEnvironment), table(iTable), kind(KindOf(iTable)), type(iConfig.ExternalType(iEnvironment, iTable)) {
    const std::vector<ObjectMapping> mappings = iConfig.Mappings();
    const BexUnicodeString comma(",");
    typeKeys = Follow(mappings, &ObjectMapping::objectKey,
                      {environment + comma + kind + comma + table, environment + comma + kind + comma + kAny,
                       kAny + comma + kind + comma + table, kAny + comma + kind + comma + kAny});
    if (type.IsEmpty() != 0) {
        return;
    }
    attributeKeys = Follow(mappings, &ObjectMapping::typeKey, {type + comma + environment, type + comma + kAny});
    attribute = iConfig.NameAttribute(type, environment, table);
    const auto found =
        std::find_if(attributeKeys.begin(), attributeKeys.end(), [](const Key& iKey) { return iKey.property != 0; });
    const auto mapping = std::find_if(mappings.begin(), mappings.end(), [&](const ObjectMapping& iMapping) {
        return found != attributeKeys.end() && iMapping.property == found->property;
    });
    isOtherTable =
        mapping != mappings.end() && (mapping->table == kAny ? mapping->kind != kind : mapping->table != table);
}

std::string ExplanationAsText(const ExaminedConfig& iConfig, const ConfigExplanation& iExplanation) {
    const auto shown = [](const BexUnicodeString& iText) { return SafeText(ToUtf8(iText)); };
    std::string text = "Environment: " + shown(iExplanation.environment) + "\nTable: " + shown(iExplanation.table);
    text += "\nKind: " + (iExplanation.kind.IsEmpty() != 0
                              ? "none; only PART_LIST, KIRVA_MODEL, DOC... and FEAT... can be mapped"
                              : shown(iExplanation.kind));
    text += "\n\nKeys of the type, in the order of the look-up\n" + KeysText(iConfig, iExplanation.typeKeys);
    if (iExplanation.type.IsEmpty() != 0) {
        return text + "\nType: none\n";
    }
    text += "\nType: " + shown(iExplanation.type);
    text += "\n\nKeys of the name attribute, in the order of the look-up\n" +
            KeysText(iConfig, iExplanation.attributeKeys) + "\nName attribute: ";
    if (iExplanation.isOtherTable) {
        return text + "none; the mapping found is for another table, and no further one is tried\n";
    }
    return text + (iExplanation.attribute.IsEmpty() != 0 ? "none" : shown(iExplanation.attribute)) + '\n';
}

std::string ExplanationAsJson(const ExaminedConfig& iConfig, const ConfigExplanation& iExplanation) {
    const auto orNull = [](const BexUnicodeString& iText) {
        return iText.IsEmpty() != 0 ? Json() : Json(ToUtf8(iText));
    };
    const std::string& file = iConfig.config.FileName();
    return JsonDocument({{"file", file.empty() ? Json() : Json(file)},
                         {"environment", ToUtf8(iExplanation.environment)},
                         {"table", ToUtf8(iExplanation.table)},
                         {"kind", orNull(iExplanation.kind)},
                         {"typeKeys", KeysJson(iConfig, iExplanation.typeKeys)},
                         {"type", orNull(iExplanation.type)},
                         {"attributeKeys", KeysJson(iConfig, iExplanation.attributeKeys)},
                         {"attribute", orNull(iExplanation.attribute)}});
}
