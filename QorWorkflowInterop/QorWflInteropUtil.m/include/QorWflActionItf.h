#ifndef QorWflActionItf_H
#define QorWflActionItf_H

#include <BexSequenceOctet.h>
#include <BexUnicodeString.h>

/**
 * A workflow action of the PDM server, as the host shows it to the library.
 *
 * The host implements it and owns the object; the library reads it during one call of
 * QorWflActionManagerBase::GetActionInfo() and keeps nothing. Indices count from 1. A text that the action does not
 * have is null. The order of the operations is fixed: hosts are built against it.
 */
class QorWflActionItf {
public:
    /** @return a short description. */
    virtual BexUnicodeString GetAbstract() const = 0;
    /** @return the internal priority code. */
    virtual BexUnicodeString GetPriority() const = 0;
    /** @return the status; the library does not call it. */
    virtual BexUnicodeString GetStatus() const { return BexUnicodeString(); }
    /** @return the action's identifier. */
    virtual BexUnicodeString GetActionId() const = 0;
    /** @return the owner. */
    virtual BexUnicodeString GetOwner() const = 0;
    /** @return the number of context entries; 0 and below: none. */
    virtual int GetContextCount() const = 0;
    /**
     * Tells a context entry.
     * @param iIndex 1 to GetContextCount()
     * @param oKind "Config", "WFProcess" or "WFActivity", the last of each counts; others are ignored
     * @param oValue its value
     * @param oExtra not used by the library
     */
    virtual void GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                            BexUnicodeString& oExtra) const = 0;
    /** @return the number of attached objects; 0 and below: none. */
    virtual int GetObjectCount() const = 0;
    /**
     * Tells an attached object; asked twice for each in one call.
     * @param iIndex 1 to GetObjectCount()
     * @param oUuid the object's UUID block of 50 bytes. For a product it may be of another length, which leaves the
     *        context unset; for what fills a data field, as inputs and outputs do, shorter ends the process
     * @param oType "Product", "Part", "Model", "Document" or "Feature"; others are ignored
     * @param oDirection "I" for an input, "O" for an output; with any other the object is in no list
     * @param oNickname the object's short name
     * @param oName what identifies the object among the action's data; null asks for a name of its own
     */
    virtual void GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                           BexUnicodeString& oNickname, BexUnicodeString& oName) const = 0;

protected:
    QorWflActionItf() = default;
    /** For derived classes, which may be copied as what they are. */
    QorWflActionItf(const QorWflActionItf&) = default;
    /** For derived classes, too. */
    QorWflActionItf& operator=(const QorWflActionItf&) = default;
    ~QorWflActionItf() = default;  // not virtual: it would take a place among the operations
};

#endif
