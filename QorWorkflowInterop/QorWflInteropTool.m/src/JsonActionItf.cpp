#include "JsonActionItf.h"

namespace {

/** The entry that an index from 1 names. */
template <typename Entry>
const Entry& At(const std::vector<Entry>& iEntries, int iIndex) {
    return iEntries.at(static_cast<std::size_t>(iIndex) - 1);
}

}  // namespace

int JsonActionItf::GetContextCount() const {
    return static_cast<int>(action.contexts.size());
}

void JsonActionItf::GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                               BexUnicodeString& oExtra) const {
    const JsonAction::Context& context = At(action.contexts, iIndex);
    oKind = context.kind;
    oValue = context.value;
    oExtra.Reset();
}

int JsonActionItf::GetObjectCount() const {
    return static_cast<int>(action.objects.size());
}

void JsonActionItf::GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                              BexUnicodeString& oNickname, BexUnicodeString& oName) const {
    const JsonAction::Object& object = At(action.objects, iIndex);
    oUuid = _SEQUENCE_octet(object.uuid.data(), object.uuid.size());
    oType = object.type;
    oDirection = object.direction;
    oNickname = object.nickname;
    oName = object.name;
}
