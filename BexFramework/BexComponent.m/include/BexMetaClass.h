#ifndef BexMetaClass_H
#define BexMetaClass_H

#include "BexExport.h"
#include "BexGuid.h"

#include <string>

/** What a meta class describes. */
enum BexTypeOfClass {
    BexTypeOfClassInterface = 8  ///< an interface
};

/** The class identifier of BexMetaClass itself, under which meta classes are entered in the dictionary. */
BEX_EXPORT extern const GUID CLSID_BexMetaClass;

/**
 * The description of a class or interface of the component model. Does not change once built, so any number of
 * threads may read it.
 */
class BEX_EXPORT BexMetaClass {
public:
    /**
     * Describes a class.
     * @param iId its identifier
     * @param iName its name; copied, a null pointer counts as ""
     * @param iParent the meta class of its base, or null; not owned, must live as long
     * @param iSecond a second meta class, or null; not owned, must live as long
     * @param iType what is described
     */
    BexMetaClass(const GUID& iId, const char* iName, BexMetaClass* iParent, BexMetaClass* iSecond,
                 BexTypeOfClass iType);
    BexMetaClass(const BexMetaClass&) = delete;  // a meta class is known by its address
    BexMetaClass& operator=(const BexMetaClass&) = delete;

    /** @return the identifier. */
    const GUID& GetId() const { return id; }
    /** @return the name, valid as long as this object. */
    const char* GetName() const { return name.c_str(); }
    /** @return the meta class of the base, or null. */
    BexMetaClass* GetParent() const { return parent; }
    /** @return the second meta class, or null. */
    BexMetaClass* GetSecond() const { return second; }
    /** @return what is described. */
    BexTypeOfClass GetType() const { return type; }

private:
    GUID id;
    std::string name;
    BexMetaClass* parent;
    BexMetaClass* second;
    BexTypeOfClass type;
};

#endif
