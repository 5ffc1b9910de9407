#include "BexBaseUnknown.h"

#include <utility>

namespace {

constexpr int kNoInterface = static_cast<int>(0x80004005);

}  // namespace

const GUID IID_BexBaseUnknown = {0x9EFAB7A5, 0xA17F, 0x0000, {0x02, 0x80, 0x03, 0x0B, 0x02, 0x00, 0x00, 0x00}};

int BexBaseUnknown::QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) {
    if (oObject == nullptr) {
        return kNoInterface;
    }
    *oObject = nullptr;
    if (iIid != IID_BexBaseUnknown) {
        return kNoInterface;
    }
    AddRef();
    *oObject = this;
    return 0;
}

unsigned int BexBaseUnknown::AddRef() {
    return references.fetch_add(1, std::memory_order_relaxed) + 1;
}

unsigned int BexBaseUnknown::Release() {
    const unsigned int left = references.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        delete this;
    }
    return left;
}

BexBaseUnknown::~BexBaseUnknown() = default;

BexMetaClass* BexBaseUnknown::MetaObject() {
    static BexMetaClass meta(IID_BexBaseUnknown, "BexBaseUnknown", nullptr, nullptr, BexTypeOfClassInterface);
    return &meta;
}

BexBaseUnknown_var::BexBaseUnknown_var(BexBaseUnknown* iObject) : object(iObject) {
    if (object != nullptr) {
        object->AddRef();
    }
}

BexBaseUnknown_var::BexBaseUnknown_var(const BexBaseUnknown_var& iOther) : BexBaseUnknown_var(iOther.object) {}

BexBaseUnknown_var::~BexBaseUnknown_var() {
    if (object != nullptr) {
        object->Release();
    }
}

BexBaseUnknown_var& BexBaseUnknown_var::operator=(const BexBaseUnknown_var& iOther) {
    BexBaseUnknown_var held(iOther);
    std::swap(object, held.object);
    return *this;
}

void BexBaseUnknown_var::CastTo(BexBaseUnknown* iObject, const GUID& iIid) {
    BexBaseUnknown* answer = nullptr;
    if (iObject != nullptr && iObject->QueryInterface(iIid, &answer) != 0) {
        answer = nullptr;
    }
    BexBaseUnknown* former = std::exchange(object, answer);  // let go of last: it may be what was asked
    if (former != nullptr) {
        former->Release();
    }
}
