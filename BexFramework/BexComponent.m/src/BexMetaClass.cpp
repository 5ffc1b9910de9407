#include "BexMetaClass.h"

const GUID CLSID_BexMetaClass = {0x9EFAB7A5, 0xA17F, 0x0000, {0x02, 0x80, 0x03, 0x0B, 0x01, 0x00, 0x00, 0x00}};

BexMetaClass::BexMetaClass(const GUID& iId, const char* iName, BexMetaClass* iParent, BexMetaClass* iSecond,
                           BexTypeOfClass iType)
    : id(iId), name(iName == nullptr ? "" : iName), parent(iParent), second(iSecond), type(iType) {}
