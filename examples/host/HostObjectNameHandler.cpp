#include "HostObjectNameHandler.h"

#include <QorWflUuidLayout.h>

namespace {

BexUnicodeString TextAt(const char* iUuid, QorWflUuidLayout::Field iField) {
    return BexUnicodeString(iUuid + iField.offset, iField.width).Strip(2, ' ');
}

}  // namespace

BexUnicodeString HostObjectNameHandler::GetObjectName(const char* iUuid) const {
    const BexUnicodeString attribute = GetNameAttribute(GetExternalType(iUuid), TextAt(iUuid, QorWflUuidLayout::kKienv),
                                                        TextAt(iUuid, QorWflUuidLayout::kKitab));
    if (attribute.IsEmpty()) {
        return BexUnicodeString();
    }
    return store.Attribute(std::string(iUuid, QorWflUuidLayout::kBlockSize), attribute);
}
