#ifndef QorIWflInteropMessenger_H
#define QorIWflInteropMessenger_H

#include "QorWflExport.h"

#include <BexBaseUnknown.h>

/** The identifier of the interface QorIWflInteropMessenger. */
QORWFL_EXPORT extern const GUID IID_QorIWflInteropMessenger;

/**
 * The interface through which the host's workflow-interop messenger is reached. The host implements it and declares its
 * operations. Loading the library enters it in the framework's dictionary, unloading takes it out.
 */
class QORWFL_EXPORT QorIWflInteropMessenger : public BexBaseUnknown {
public:
    /** @return the meta class of the interface, the same at every call, living as long as the library. */
    static BexMetaClass* MetaObject();
    /** @return the identifier that the meta class reports, IID_QorIWflInteropMessenger. */
    static const GUID& ClassId();
    /** @return the name that the meta class reports, "QorIWflInteropMessenger". */
    static const char* ClassName();

    static BexMetaClass* meta_object;  ///< what MetaObject() gives, null until its first call
};

/**
 * A handle on a messenger: holds one interface pointer with a reference of its own, or nothing. A handle built or
 * assigned from an object that is no messenger stays empty. One pointer in size; belongs to one thread at a time.
 */
class QORWFL_EXPORT QorIWflInteropMessenger_var : public BexBaseUnknown_var {
public:
    /** Holds nothing. */
    QorIWflInteropMessenger_var();
    /** Asks an object for the interface; null holds nothing. */
    QorIWflInteropMessenger_var(BexBaseUnknown* iObject);
    /** Takes a pointer to the interface as it is, without asking, and adds a reference. */
    QorIWflInteropMessenger_var(QorIWflInteropMessenger* iMessenger);
    /** Asks what the other handle holds for the interface. */
    QorIWflInteropMessenger_var(const QorIWflInteropMessenger_var& iOther);
    /** Asks what the other handle holds for the interface. */
    QorIWflInteropMessenger_var(const BexBaseUnknown_var& iOther);
    ~QorIWflInteropMessenger_var();

    /** Asks what the other handle holds for the interface, and lets go of what it held itself. */
    QorIWflInteropMessenger_var& operator=(const BexBaseUnknown_var& iOther);
    /** Asks what the other handle holds for the interface, and lets go of what it held itself. */
    QorIWflInteropMessenger_var& operator=(const QorIWflInteropMessenger_var& iOther);

    /** @return what is held, or null. */
    QorIWflInteropMessenger* operator->() const;
    /** @return what is held, or null. */
    operator QorIWflInteropMessenger*() const;
};

#endif
