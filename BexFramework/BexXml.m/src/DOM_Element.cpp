#include "DOM_Element.h"

#include "BexXmlMemory.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>

namespace {

xercesc::DOMElement* ElementOf(xercesc::DOMNode* iNode) {
    return static_cast<xercesc::DOMElement*>(iNode);
}

}  // namespace

DOMString DOM_Element::getAttribute(const DOMString& iName) const {
    return node == nullptr ? DOMString() : DOMString(ElementOf(node)->getAttribute(iName.rawBuffer()));
}

bool DOM_Element::hasAttribute(const DOMString& iName) const {
    return node != nullptr && ElementOf(node)->hasAttribute(iName.rawBuffer());
}

void DOM_Element::setAttribute(const DOMString& iName, const DOMString& iValue) {
    if (node != nullptr) {
        ElementOf(node)->setAttribute(iName.rawBuffer(), iValue.rawBuffer());
    }
}

void DOM_Element::removeAttribute(const DOMString& iName) {
    if (node != nullptr) {
        ElementOf(node)->removeAttribute(iName.rawBuffer());
    }
}

DOM_Attr DOM_Element::getAttributeNode(const DOMString& iName) const {
    return node == nullptr ? DOM_Attr() : DOM_Attr(ElementOf(node)->getAttributeNode(iName.rawBuffer()), tree);
}

DOM_Attr DOM_Element::setAttributeNode(const DOM_Attr& iAttribute) {
    if (node == nullptr || iAttribute.isNull()) {
        return DOM_Attr();
    }
    auto* attribute = static_cast<xercesc::DOMAttr*>(iAttribute.getNative());
    return DOM_Attr(ElementOf(node)->setAttributeNode(attribute), tree);
}

DOM_NodeList DOM_Element::getElementsByTagName(const DOMString& iName) const {
    if (node == nullptr) {
        return DOM_NodeList();
    }
    return DOM_NodeList(InForeignMemory([&] { return ElementOf(node)->getElementsByTagName(iName.rawBuffer()); }),
                        tree);
}
