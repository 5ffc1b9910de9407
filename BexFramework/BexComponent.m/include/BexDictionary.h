#ifndef BexDictionary_H
#define BexDictionary_H

#include "BexExport.h"
#include "BexGuid.h"
#include "BexMetaClass.h"

/**
 * Enters a meta class in the process-wide dictionary of interfaces. All calls here may be made from any threads.
 *
 * @param iIid the interface identifier it is found by
 * @param iClassId the class identifier of the meta class's own class, CLSID_BexMetaClass
 * @param iName the name it is found by; copied, a null pointer counts as ""
 * @param iEntry the name of the entry point that gives the meta class, for people; copied, may be null
 * @param iReserved1 not used, null
 * @param iMetaClass the meta class; not owned, not null, must live until the entry is taken out
 * @param iReserved2 not used, null
 * @param iReserved3 not used, null
 */
BEX_EXPORT void AddDictionary(const GUID& iIid, const GUID& iClassId, const char* iName, const char* iEntry,
                              void* iReserved1, BexMetaClass* iMetaClass, void* iReserved2, void* iReserved3);

/** @return the meta class first entered under an interface identifier, or null. */
BEX_EXPORT BexMetaClass* FindInDictionary(const GUID& iIid);

/** @return the meta class first entered under a name, or null, also for a null pointer. */
BEX_EXPORT BexMetaClass* FindInDictionary(const char* iName);

/**
 * The load-time object of a source file that publishes an interface: built when the library is loaded, it enters the
 * meta class in the dictionary; destroyed when the library is unloaded, it takes every entry of its interface
 * identifier out again, those that AddDictionary() made included.
 */
class BEX_EXPORT BexFillDictionary {
public:
    /**
     * Enters @p iMetaClass under @p iIid and under its own name; a null meta class enters nothing.
     * @param iReserved not used, null
     */
    BexFillDictionary(const GUID& iIid, const GUID& iClassId, BexMetaClass* iMetaClass, void* iReserved);
    ~BexFillDictionary();
    BexFillDictionary(const BexFillDictionary&) = delete;  // takes its entries out once
    BexFillDictionary& operator=(const BexFillDictionary&) = delete;

private:
    GUID iid;
};

#endif
