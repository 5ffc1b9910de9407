#ifndef StoreAction_H
#define StoreAction_H

#include "Store.h"

#include <QorWflActionItf.h>
#include <QorWflObjectNameHandlerBase.h>

/** Shows an action of the store to the library. A view: the action must live as long. */
class StoreAction final : public QorWflActionItf {
public:
    /** @param iHandler knows the names of the objects; asked here only, because GetObject() is called twice for each */
    StoreAction(const Action& iAction, const QorWflObjectNameHandlerBase& iHandler);

    BexUnicodeString GetAbstract() const override { return action.abstract; }
    BexUnicodeString GetPriority() const override { return action.priority; }
    BexUnicodeString GetStatus() const override { return action.status; }
    BexUnicodeString GetActionId() const override { return action.id; }
    BexUnicodeString GetOwner() const override { return action.owner; }
    int GetContextCount() const override;
    void GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                    BexUnicodeString& oExtra) const override;
    int GetObjectCount() const override;
    void GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                   BexUnicodeString& oNickname, BexUnicodeString& oName) const override;

private:
    const Action& action;
    std::vector<BexUnicodeString> names;  // of the objects, in their order
};

#endif
