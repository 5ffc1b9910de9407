#include "BexAttributeView.h"

#include <xercesc/dom/DOMText.hpp>

BexAttributeView BexAttributeView::Checked(const xercesc::DOMNode& iAttribute) {
    // the value of nearly every attribute is one text, which Xerces-C itself takes long to find out
    const xercesc::DOMNode* child = iAttribute.getFirstChild();
    if (child != nullptr && child->getNodeType() == xercesc::DOMNode::TEXT_NODE && child->getNextSibling() == nullptr) {
        const auto& text = static_cast<const xercesc::DOMText&>(*child);
        return {iAttribute.getNodeName(), std::u16string_view(text.getData(), text.getLength())};
    }
    const XMLCh* value = iAttribute.getNodeValue();
    return {iAttribute.getNodeName(), value == nullptr ? std::u16string_view() : std::u16string_view(value)};
}

#if !BEX_DIRECT_NODES
BexAttributeView BexAttributeView::Of(const xercesc::DOMNode& iAttribute) {
    return Checked(iAttribute);
}
#endif
