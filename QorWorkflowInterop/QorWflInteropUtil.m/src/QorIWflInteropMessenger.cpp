#include "QorIWflInteropMessenger.h"

#include <BexDictionary.h>

const GUID IID_QorIWflInteropMessenger = {0x9EFAB7A5, 0xA17F, 0x0000, {0x02, 0x80, 0x03, 0x0B, 0x23, 0x00, 0x00, 0x00}};

namespace {

constexpr const char* kName = "QorIWflInteropMessenger";
constexpr const char* kEntry = "MetaObject";

}  // namespace

BexMetaClass* QorIWflInteropMessenger::meta_object = nullptr;

BexMetaClass* QorIWflInteropMessenger::MetaObject() {
    if (meta_object == nullptr) {
        static BexMetaClass meta(IID_QorIWflInteropMessenger, kName, BexBaseUnknown::MetaObject(), nullptr,
                                 BexTypeOfClassInterface);
        meta_object = &meta;
        AddDictionary(IID_QorIWflInteropMessenger, CLSID_BexMetaClass, kName, kEntry, nullptr, meta_object, nullptr,
                      nullptr);
    }
    return meta_object;
}

const GUID& QorIWflInteropMessenger::ClassId() {
    return MetaObject()->GetId();
}

const char* QorIWflInteropMessenger::ClassName() {
    return MetaObject()->GetName();
}

namespace {

/** Makes the interface known before the host asks for it, and has it forgotten when the library is unloaded. */
const BexFillDictionary fillDictionary(IID_QorIWflInteropMessenger, CLSID_BexMetaClass,
                                       QorIWflInteropMessenger::MetaObject(), nullptr);

}  // namespace

QorIWflInteropMessenger_var::QorIWflInteropMessenger_var() = default;

QorIWflInteropMessenger_var::QorIWflInteropMessenger_var(BexBaseUnknown* iObject) {
    CastTo(iObject, QorIWflInteropMessenger::ClassId());
}

QorIWflInteropMessenger_var::QorIWflInteropMessenger_var(QorIWflInteropMessenger* iMessenger)
    : BexBaseUnknown_var(iMessenger) {}

QorIWflInteropMessenger_var::QorIWflInteropMessenger_var(const QorIWflInteropMessenger_var& iOther)
    : BexBaseUnknown_var(iOther) {
    CastTo(iOther.GetPointer(), QorIWflInteropMessenger::ClassId());
}

QorIWflInteropMessenger_var::QorIWflInteropMessenger_var(const BexBaseUnknown_var& iOther) {
    CastTo(iOther.GetPointer(), QorIWflInteropMessenger::ClassId());
}

QorIWflInteropMessenger_var::~QorIWflInteropMessenger_var() = default;

QorIWflInteropMessenger_var& QorIWflInteropMessenger_var::operator=(const BexBaseUnknown_var& iOther) {
    CastTo(iOther.GetPointer(), QorIWflInteropMessenger::ClassId());
    return *this;
}

QorIWflInteropMessenger_var& QorIWflInteropMessenger_var::operator=(const QorIWflInteropMessenger_var& iOther) {
    return *this = static_cast<const BexBaseUnknown_var&>(iOther);
}

QorIWflInteropMessenger* QorIWflInteropMessenger_var::operator->() const {
    return static_cast<QorIWflInteropMessenger*>(GetPointer());
}

QorIWflInteropMessenger_var::operator QorIWflInteropMessenger*() const {
    return operator->();
}
