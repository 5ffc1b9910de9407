#ifndef QorWflObjectNameHandlerBase_H
#define QorWflObjectNameHandlerBase_H

#include "QorWflExport.h"
#include "QorWflPropertyFile.h"

#include <BexListValBexUnicodeString.h>

/**
 * Maps PDM objects, known by environment and table, to the types of the workflow side, and those types to the
 * attribute that holds an object's name. The host derives its own handler from it.
 *
 * Filled by Init() and then only read: any number of threads may read it. All comparisons are exact. Memory that cannot
 * be had is std::bad_alloc.
 */
class QORWFL_EXPORT QorWflObjectNameHandlerBase {
public:
    /** No mappings. */
    QorWflObjectNameHandlerBase();

    /**
     * The name of an object, for the host's own use; the library does not call it.
     * @param iUuid the object's UUID block of 50 bytes
     * @return what the attribute holds that GetNameAttribute() names.
     */
    virtual BexUnicodeString GetObjectName(const char* iUuid) const = 0;

    /**
     * Adds a mapping for each usable key "actionObjects.TYPE.ENVIRONMENT" with the value "TABLE.ATTRIBUTE", in the
     * order of the table; "*" as ENVIRONMENT stands for any. TABLE is PART_LIST, KIRVA_MODEL or begins with DOC or
     * FEAT; DOC* and FEAT* stand for every such table. Other keys are skipped. A second call adds behind the first.
     */
    void Init(const QorWflPropertyFile& iProperties);
    /**
     * The external type of objects of an environment and table: that of the mapping for just these, else for the
     * environment and any table of the kind, else for any environment and just this table, else for any of the kind.
     * @return the type, or the empty string.
     */
    BexUnicodeString GetExternalType(const BexUnicodeString& iEnvironment, const BexUnicodeString& iTable) const;
    /** @return the same for the environment and table of a UUID block, or the empty string for a null pointer. */
    BexUnicodeString GetExternalType(const char* iUuid) const;
    /**
     * The name attribute of an external type: of its first mapping for the environment, else of its first for any.
     * @return the attribute, or the empty string when there is no such mapping or it is for another table or kind.
     */
    BexUnicodeString GetNameAttribute(const BexUnicodeString& iExternalType, const BexUnicodeString& iEnvironment,
                                      const BexUnicodeString& iTable) const;
    /** @return 1 when a mapping has that external type, else 0. */
    int HasExternalType(const BexUnicodeString& iExternalType) const;

protected:
    // seven parallel lists: entry k of each belongs to the same mapping
    BexListValBexUnicodeString externalTypes;   ///< the types of the workflow side
    BexListValBexUnicodeString environments;    ///< "*" for any
    BexListValBexUnicodeString objectKinds;     ///< "Part", "Model", "Document" or "Feature"
    BexListValBexUnicodeString tables;          ///< "*" for any table of the kind
    BexListValBexUnicodeString nameAttributes;  ///< what holds an object's name
    BexListValBexUnicodeString typeKeys;        ///< external type, environment
    BexListValBexUnicodeString objectKeys;      ///< environment, kind, table
};

#endif
