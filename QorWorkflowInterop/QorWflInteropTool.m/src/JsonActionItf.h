#ifndef JsonActionItf_H
#define JsonActionItf_H

#include "JsonAction.h"

#include <QorWflActionItf.h>

/** Shows an action that was read from JSON to the library. A view: the action must live as long. */
class JsonActionItf final : public QorWflActionItf {
public:
    explicit JsonActionItf(const JsonAction& iAction) : action(iAction) {}

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
    const JsonAction& action;
};

#endif
