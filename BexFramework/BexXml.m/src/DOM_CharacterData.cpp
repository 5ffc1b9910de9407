#include "DOM_CharacterData.h"

#include <xercesc/dom/DOMCharacterData.hpp>

namespace {

xercesc::DOMCharacterData* DataOf(xercesc::DOMNode* iNode) {
    return static_cast<xercesc::DOMCharacterData*>(iNode);
}

}  // namespace

std::size_t DOM_CharacterData::getLength() const {
    return node == nullptr ? 0 : DataOf(node)->getLength();
}

DOMString DOM_CharacterData::substringData(std::size_t iOffset, std::size_t iCount) const {
    return getData().substringData(iOffset, iCount);
}

void DOM_CharacterData::appendData(const DOMString& iData) {
    if (node != nullptr) {
        DataOf(node)->appendData(iData.rawBuffer());
    }
}
