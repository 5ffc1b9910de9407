#ifndef BexBaseUnknown_H
#define BexBaseUnknown_H

#include "BexExport.h"
#include "BexGuid.h"
#include "BexMetaClass.h"

#include <atomic>

/** The interface identifier of BexBaseUnknown. */
BEX_EXPORT extern const GUID IID_BexBaseUnknown;

/**
 * The base of every interface of the component model: identity and counted references.
 *
 * An implementation overrides QueryInterface() and answers an interface identifier with the base-class pointer of that
 * very interface, so that a handle may cast it down. AddRef() and Release() given here count for it: an object is born
 * with one reference, its creator's, and deletes itself when the last one is released. A class that counts elsewhere
 * overrides both.
 */
class BEX_EXPORT BexBaseUnknown {
public:
    BexBaseUnknown() = default;
    BexBaseUnknown(const BexBaseUnknown&) = delete;  // references count for one object
    BexBaseUnknown& operator=(const BexBaseUnknown&) = delete;

    /**
     * Asks the object for an interface.
     * @param iIid the interface's identifier
     * @param oObject receives the interface with a reference added for the caller, or null
     * @return 0, or 0x80004005 when the object has no such interface or @p oObject is null. The base answers
     *         IID_BexBaseUnknown only.
     */
    virtual int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject);
    /** Adds a reference. @return the number of references. Safe from any thread. */
    virtual unsigned int AddRef();
    /** Takes a reference back; the last one deletes the object. @return the number left. Safe from any thread. */
    virtual unsigned int Release();
    virtual ~BexBaseUnknown();

    /** @return the meta class of this interface, which lives as long as the library. */
    static BexMetaClass* MetaObject();

private:
    std::atomic<unsigned int> references{1};
};

/**
 * A handle that holds one reference on an object, or nothing.
 *
 * One pointer in size. A handle belongs to one thread at a time; the objects count their references safely.
 */
class BEX_EXPORT BexBaseUnknown_var {
public:
    /** Holds nothing. */
    BexBaseUnknown_var() = default;
    /** Holds @p iObject with a reference of its own; null holds nothing. */
    BexBaseUnknown_var(BexBaseUnknown* iObject);
    /** Holds the same object with a reference of its own. */
    BexBaseUnknown_var(const BexBaseUnknown_var& iOther);
    /** Releases its reference. */
    ~BexBaseUnknown_var();
    /** Holds the same object as @p iOther, with a reference of its own, and releases what it held. */
    BexBaseUnknown_var& operator=(const BexBaseUnknown_var& iOther);

    /**
     * Asks @p iObject for an interface, then lets go of what it held and keeps the answer: the interface, or nothing
     * when the object is null or has none. Casting a handle to its own pointer is safe.
     */
    void CastTo(BexBaseUnknown* iObject, const GUID& iIid);
    /** @return what is held, or null; the handle keeps its reference. */
    BexBaseUnknown* GetPointer() const { return object; }

private:
    BexBaseUnknown* object = nullptr;
};

#endif
