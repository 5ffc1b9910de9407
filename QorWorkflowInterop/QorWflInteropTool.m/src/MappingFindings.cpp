#include "ConfigFindings.h"
#include "NearestName.h"
#include "PropertyKeys.h"
#include "SafeText.h"
#include "Unicode.h"
#include "UserText.h"

#include <QorWflUuidLayout.h>

#include <map>
#include <string_view>

namespace {

constexpr const char* kAny = "*";

/** What a mapping's key and value lack; only for one of which the library makes none. */
struct Fault {
    std::string message;
    std::string hint;
};

Fault FaultOf(const std::string& iKey, const std::string& iValue) {
    const std::string form = "expected actionObjects.TYPE.ENVIRONMENT";
    const std::size_t lastDot = iKey.rfind('.');
    if (lastDot < kMappingPrefix.size()) {
        return {"there is no second dot in the key " + Quoted(Latin1ToUtf8(iKey)),
                form + "; ENVIRONMENT may be * for any"};
    }
    if (lastDot == kMappingPrefix.size()) {
        return {"there is no type in the key " + Quoted(Latin1ToUtf8(iKey)), form};
    }
    const std::size_t dot = iValue.find('.');
    if (dot == std::string::npos) {
        return {"there is no dot in the value " + Quoted(Latin1ToUtf8(iValue)), "expected TABLE.ATTRIBUTE"};
    }
    const std::string table = iValue.substr(0, dot);
    const std::string nearest = NearestName(table, {"PART_LIST", "KIRVA_MODEL", "DOC*", "FEAT*"});
    return {"the table " + Quoted(Latin1ToUtf8(table)) + " is none that can be mapped",
            nearest.empty() ? "expected PART_LIST, KIRVA_MODEL, or a name that begins with DOC or FEAT"
                            : "did you mean " + Quoted(nearest) + "? Upper and lower case differ"};
}

void CheckUsable(const PropertyLine& iLine, std::vector<ConfigFinding>& ioFindings) {
    if (!MappingOf(BexUnicodeString::FromNarrow(iLine.key), BexUnicodeString::FromNarrow(iLine.value))) {
        const Fault fault = FaultOf(iLine.key, iLine.value);
        ioFindings.push_back(
            {ConfigCode::UnusableMapping, iLine.first, fault.message + "; there is no mapping", fault.hint});
    }
}

/** Gathers the findings of a mapping that the library has made. */
class MappingCheck {
public:
    MappingCheck(const ObjectMapping& iMapping, const PropertyLine& iLine, std::vector<ConfigFinding>& ioFindings)
        : mapping(iMapping), line(iLine), findings(ioFindings) {}

    void Run() {
        CheckWidth("environment", mapping.environment, QorWflUuidLayout::kKienv);
        CheckWidth("table", mapping.table, QorWflUuidLayout::kKitab);
        CheckStar("environment", mapping.environment);
        CheckStar("table", mapping.table);
        if (mapping.attribute.IsEmpty() != 0) {
            Add(ConfigCode::NoAttribute,
                "there is nothing behind the dot of the value, so the type has no name attribute",
                "expected TABLE.ATTRIBUTE");
        }
    }

private:
    void Add(ConfigCode iCode, const std::string& iMessage, const std::string& iHint = "") {
        findings.push_back({iCode, line.first, iMessage, iHint});
    }

    /** A name that no object can have, because its field in a UUID cannot hold it. */
    void CheckWidth(const char* iWhat, const BexUnicodeString& iName, QorWflUuidLayout::Field iField) {
        const std::string name = std::string(iWhat) + ' ' + Quoted(ToUtf8(iName));
        if (iName.GetLengthInChar() > iField.width) {
            Add(ConfigCode::NeverAsked, "no object has the " + name + ", which is longer than the " +
                                            std::to_string(iField.width) + " characters of an object's " + iWhat);
        } else if (iName.NarrowView().ends_with(' ')) {
            Add(ConfigCode::NeverAsked, "no object has the " + name + ", which ends in a blank");
        }
    }

    void CheckStar(const char* iWhat, const BexUnicodeString& iName) {
        if (iName != kAny && iName.SearchSubString(kAny) >= 0) {
            Add(ConfigCode::LiteralStar,
                std::string("the star in the ") + iWhat + ' ' + Quoted(ToUtf8(iName)) +
                    " stands for itself, not for any text",
                iWhat == std::string_view("table") ? "any table is DOC* or FEAT*" : "any environment is a star alone");
        }
    }

    const ObjectMapping& mapping;
    const PropertyLine& line;
    std::vector<ConfigFinding>& findings;
};

/** A name of a table that a mapping is for. */
BexUnicodeString SampleTable(const ObjectMapping& iMapping) {
    if (iMapping.table != kAny) {
        return iMapping.table;
    }
    return iMapping.kind == "Document" ? "DOC" : "FEAT";
}

/** The number of the line that a finding about two mappings belongs to: of the one, or if built in of the other. */
std::size_t LineOfEither(const PropertyLine* iOne, const PropertyLine* iOther) {
    return iOne != nullptr ? iOne->first : iOther != nullptr ? iOther->first : 0;
}

/** Mappings that are never reached, because an earlier one is for the same objects. */
void CheckShadows(const std::vector<ObjectMapping>& iMappings, const PropertyText& iFile, const LoadedConfig& iConfig,
                  std::vector<ConfigFinding>& ioFindings) {
    std::map<std::string, const ObjectMapping*> firstOf;
    for (const ObjectMapping& mapping : iMappings) {
        const auto [first, isNew] = firstOf.emplace(ToUtf8(mapping.objectKey), &mapping);
        if (isNew) {
            continue;
        }
        const BexUnicodeString key = iConfig.Properties().GetKey(mapping.property);
        const BexUnicodeString firstKey = iConfig.Properties().GetKey(first->second->property);
        const PropertyLine* line = iFile.LineOf(std::string(key.NarrowView()));
        const PropertyLine* firstLine = iFile.LineOf(std::string(firstKey.NarrowView()));
        ioFindings.push_back({ConfigCode::ShadowedMapping, LineOfEither(line, firstLine),
                              "the mapping " + Quoted(ToUtf8(key)) + " is never taken, because " +
                                  Quoted(ToUtf8(firstKey)) + " (" + PlaceOf(iFile, firstKey) +
                                  ") is for the same objects",
                              "take one of the two out"});
    }
}

/**
 * Types whose mapping for one environment takes the name attribute away from their objects in other tables there: the
 * attribute is looked up in that mapping alone.
 */
void CheckLostAttributes(const std::vector<ObjectMapping>& iMappings, const PropertyText& iFile,
                         const LoadedConfig& iConfig, std::vector<ConfigFinding>& ioFindings) {
    std::map<std::string, const ObjectMapping*> general;
    for (const ObjectMapping& mapping : iMappings) {
        if (mapping.environment == kAny) {
            general.emplace(ToUtf8(mapping.type), &mapping);
        }
    }
    for (const ObjectMapping& special : iMappings) {
        const auto found = general.find(ToUtf8(special.type));
        if (special.environment == kAny || found == general.end()) {
            continue;
        }
        const BexUnicodeString table = SampleTable(*found->second);
        if (iConfig.ExternalType(special.environment, table) == special.type &&
            iConfig.NameAttribute(special.type, special.environment, table).IsEmpty() != 0 &&
            found->second->attribute.IsEmpty() == 0) {
            const BexUnicodeString key = iConfig.Properties().GetKey(special.property);
            const BexUnicodeString generalKey = iConfig.Properties().GetKey(found->second->property);
            ioFindings.push_back({ConfigCode::LostAttribute,
                                  LineOfEither(iFile.LineOf(std::string(key.NarrowView())),
                                               iFile.LineOf(std::string(generalKey.NarrowView()))),
                                  "in the environment " + Quoted(ToUtf8(special.environment)) + " objects of " +
                                      Quoted(ToUtf8(generalKey)) + " (" + PlaceOf(iFile, generalKey) +
                                      ") have no name attribute, because it is looked up in this mapping alone",
                                  "give the mapping for the environment a type of its own"});
        }
    }
}

}  // namespace

void FindInMappings(const PropertyText& iFile, const LoadedConfig& iConfig, std::vector<ConfigFinding>& ioFindings) {
    for (const PropertyLine& line : iFile.Lines()) {
        if (line.kind == PropertyLine::Kind::kSetting && line.key.starts_with(kMappingPrefix) &&
            iFile.LineOf(line.key) == &line) {
            CheckUsable(line, ioFindings);
        }
    }
    const std::vector<ObjectMapping> mappings = iConfig.Mappings();
    for (const ObjectMapping& mapping : mappings) {
        const BexUnicodeString key = iConfig.Properties().GetKey(mapping.property);
        if (const PropertyLine* line = iFile.LineOf(std::string(key.NarrowView()))) {
            MappingCheck(mapping, *line, ioFindings).Run();
        }
    }
    CheckShadows(mappings, iFile, iConfig, ioFindings);
    CheckLostAttributes(mappings, iFile, iConfig, ioFindings);
}
