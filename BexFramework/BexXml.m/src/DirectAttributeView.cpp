// Built only against the releases of Xerces-C whose implementation headers it was written for (see the module's part in
// BexFramework/CMakeLists.txt). Asking an attribute and its text takes six calls through the public interface.

#include "BexAttributeView.h"

#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>

BexAttributeView BexAttributeView::Of(const xercesc::DOMNode& iAttribute) {
    const auto& attribute = static_cast<const xercesc::DOMAttrImpl&>(iAttribute);
    const xercesc::DOMNode* child = attribute.fParent.fFirstChild;
    if (child == nullptr || child->getNodeType() != xercesc::DOMNode::TEXT_NODE) {
        return Checked(iAttribute);
    }
    const auto& text = static_cast<const xercesc::DOMTextImpl&>(*child);
    if (text.fChild.nextSibling != nullptr) {
        return Checked(iAttribute);
    }
    const xercesc::DOMBuffer& value = *text.fCharacterData.fDataBuf;
    return {attribute.fName, std::u16string_view(value.getRawBuffer(), value.getLen())};
}
