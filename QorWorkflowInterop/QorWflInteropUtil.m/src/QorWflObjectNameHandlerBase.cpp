#include "QorWflObjectNameHandlerBase.h"

#include "QorWflUuidLayout.h"

#include <climits>
#include <cstring>
#include <utility>

namespace {

constexpr const char* kKeyPrefix = "actionObjects.";
constexpr const char* kAny = "*";
constexpr const char* kSeparator = ",";
constexpr const char* kPartTable = "PART_LIST";
constexpr const char* kModelTable = "KIRVA_MODEL";
constexpr const char* kDocumentTables = "DOC";
constexpr const char* kFeatureTables = "FEAT";
constexpr const char* kAnyDocumentTable = "DOC*";
constexpr const char* kAnyFeatureTable = "FEAT*";
constexpr const char* kPart = "Part";
constexpr const char* kModel = "Model";
constexpr const char* kDocument = "Document";
constexpr const char* kFeature = "Feature";
constexpr int kFirst = 1;  // modes of SearchSubString
constexpr int kLast = 2;
constexpr int kTrailing = 2;  // mode of Strip

bool StartsWith(const BexUnicodeString& iText, const BexUnicodeString& iBeginning) {
    return iText.SubString(0, iBeginning.GetLengthInChar()) == iBeginning;
}

/** The kind of object that a table holds, empty when it is none of ours. */
BexUnicodeString KindOfTable(const BexUnicodeString& iTable) {
    if (iTable == kPartTable) {
        return kPart;
    }
    if (iTable == kModelTable) {
        return kModel;
    }
    if (StartsWith(iTable, kDocumentTables)) {
        return kDocument;
    }
    return StartsWith(iTable, kFeatureTables) ? kFeature : "";
}

BexUnicodeString TypeKey(const BexUnicodeString& iExternalType, const BexUnicodeString& iEnvironment) {
    return iExternalType + kSeparator + iEnvironment;
}

BexUnicodeString ObjectKey(const BexUnicodeString& iEnvironment, const BexUnicodeString& iKind,
                           const BexUnicodeString& iTable) {
    return iEnvironment + kSeparator + iKind + kSeparator + iTable;
}

/** One mapping, as a key and a value of the property table tell it. */
struct Mapping {
    BexUnicodeString externalType;
    BexUnicodeString environment;
    BexUnicodeString kind;
    BexUnicodeString table;
    BexUnicodeString nameAttribute;
};

/** Takes a key and a value apart; false when they make no mapping. */
bool ParseMapping(const BexUnicodeString& iKey, const BexUnicodeString& iValue, Mapping& oMapping) {
    const int typeStart = static_cast<int>(std::strlen(kKeyPrefix));
    const int typeEnd = iKey.SearchSubString(".", 0, kLast);
    const int tableEnd = iValue.SearchSubString(".", 0, kFirst);
    if (!StartsWith(iKey, kKeyPrefix) || typeEnd <= typeStart || tableEnd < 0) {
        return false;
    }
    oMapping.externalType = iKey.SubString(typeStart, typeEnd - typeStart);
    oMapping.environment = iKey.SubString(typeEnd + 1, INT_MAX);
    oMapping.table = iValue.SubString(0, tableEnd);
    oMapping.nameAttribute = iValue.SubString(tableEnd + 1, INT_MAX);
    oMapping.kind = KindOfTable(oMapping.table);
    if (oMapping.table == kAnyDocumentTable || oMapping.table == kAnyFeatureTable) {
        oMapping.table = kAny;
    }
    return oMapping.kind.IsEmpty() == 0;
}

/** The handler's lists, in the making. */
struct MappingLists {
    void Append(const Mapping& iMapping) {
        externalTypes.Append(iMapping.externalType);
        environments.Append(iMapping.environment);
        objectKinds.Append(iMapping.kind);
        tables.Append(iMapping.table);
        nameAttributes.Append(iMapping.nameAttribute);
        typeKeys.Append(TypeKey(iMapping.externalType, iMapping.environment));
        objectKeys.Append(ObjectKey(iMapping.environment, iMapping.kind, iMapping.table));
    }

    BexListValBexUnicodeString externalTypes;
    BexListValBexUnicodeString environments;
    BexListValBexUnicodeString objectKinds;
    BexListValBexUnicodeString tables;
    BexListValBexUnicodeString nameAttributes;
    BexListValBexUnicodeString typeKeys;
    BexListValBexUnicodeString objectKeys;
};

/** A text field of a UUID block without the blanks that pad it. */
BexUnicodeString TextOfUuid(const char* iUuid, QorWflUuidLayout::Field iField) {
    return BexUnicodeString(iUuid + iField.offset, iField.width).Strip(kTrailing, ' ');
}

}  // namespace

QorWflObjectNameHandlerBase::QorWflObjectNameHandlerBase() = default;

void QorWflObjectNameHandlerBase::Init(const QorWflPropertyFile& iProperties) {
    MappingLists lists{externalTypes, environments, objectKinds, tables, nameAttributes, typeKeys, objectKeys};
    Mapping mapping;
    for (int i = 1; i <= iProperties.GetNKeys(); ++i) {
        if (ParseMapping(iProperties.GetKey(i), iProperties.GetValue(i), mapping)) {
            lists.Append(mapping);
        }
    }
    externalTypes = std::move(lists.externalTypes);  // all or none, also when memory ends
    environments = std::move(lists.environments);
    objectKinds = std::move(lists.objectKinds);
    tables = std::move(lists.tables);
    nameAttributes = std::move(lists.nameAttributes);
    typeKeys = std::move(lists.typeKeys);
    objectKeys = std::move(lists.objectKeys);
}

BexUnicodeString QorWflObjectNameHandlerBase::GetExternalType(const BexUnicodeString& iEnvironment,
                                                              const BexUnicodeString& iTable) const {
    const BexUnicodeString kind = KindOfTable(iTable);
    int position = objectKeys.Locate(ObjectKey(iEnvironment, kind, iTable));
    if (position == 0) {
        position = objectKeys.Locate(ObjectKey(iEnvironment, kind, kAny));
    }
    if (position == 0) {
        position = objectKeys.Locate(ObjectKey(kAny, kind, iTable));
    }
    if (position == 0) {
        position = objectKeys.Locate(ObjectKey(kAny, kind, kAny));
    }
    return position == 0 ? BexUnicodeString("") : externalTypes[position];
}

BexUnicodeString QorWflObjectNameHandlerBase::GetExternalType(const char* iUuid) const {
    if (iUuid == nullptr) {
        return BexUnicodeString("");
    }
    return GetExternalType(TextOfUuid(iUuid, QorWflUuidLayout::kKienv), TextOfUuid(iUuid, QorWflUuidLayout::kKitab));
}

BexUnicodeString QorWflObjectNameHandlerBase::GetNameAttribute(const BexUnicodeString& iExternalType,
                                                               const BexUnicodeString& iEnvironment,
                                                               const BexUnicodeString& iTable) const {
    int position = typeKeys.Locate(TypeKey(iExternalType, iEnvironment));
    if (position == 0) {
        position = typeKeys.Locate(TypeKey(iExternalType, kAny));
    }
    if (position == 0) {
        return BexUnicodeString("");
    }
    // only the first mapping found is looked at, also when a later one would be for the table
    const bool isForTable =
        tables[position] == kAny ? KindOfTable(iTable) == objectKinds[position] : tables[position] == iTable;
    return isForTable ? nameAttributes[position] : BexUnicodeString("");
}

int QorWflObjectNameHandlerBase::HasExternalType(const BexUnicodeString& iExternalType) const {
    return externalTypes.Locate(iExternalType) > 0 ? 1 : 0;
}
