#include "StoreAction.h"

StoreAction::StoreAction(const Action& iAction, const QorWflObjectNameHandlerBase& iHandler) : action(iAction) {
    for (const Object& object : action.objects) {
        names.push_back(iHandler.GetObjectName(object.uuid.data()));
    }
}

int StoreAction::GetContextCount() const {
    return static_cast<int>(action.contexts.size());
}

void StoreAction::GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                             BexUnicodeString& oExtra) const {
    const Context& context = action.contexts.at(static_cast<std::size_t>(iIndex) - 1);  // the library counts from 1
    oKind = context.kind;
    oValue = context.value;
    oExtra.Reset();
}

int StoreAction::GetObjectCount() const {
    return static_cast<int>(action.objects.size());
}

void StoreAction::GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                            BexUnicodeString& oNickname, BexUnicodeString& oName) const {
    const std::size_t k = static_cast<std::size_t>(iIndex) - 1;
    const Object& object = action.objects.at(k);
    oUuid = _SEQUENCE_octet(object.uuid.data(), object.uuid.size());
    oType = object.type;
    oDirection = object.direction;
    oNickname = object.nickname;
    oName = names.at(k);  // null for an object without a name, which then gets one from the library
}
