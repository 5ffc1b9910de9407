#include "DOM_Node.h"

#include "BexAttributeView.h"
#include "DOM_Document.h"
#include "DOM_NamedNodeMap.h"
#include "DOM_NodeList.h"
#include "TreeCopy.h"

#include <xercesc/dom/DOMText.hpp>

DOMString DOM_Node::getNodeName() const {
    return node == nullptr ? DOMString() : DOMString(node->getNodeName());
}

DOMString DOM_Node::getNodeValue() const {
    return node == nullptr ? DOMString() : DOMString(node->getNodeValue());
}

std::u16string_view DOM_Node::viewNodeValue() const {
    if (node == nullptr) {
        return std::u16string_view();
    }
    if (node->getNodeType() == xercesc::DOMNode::ATTRIBUTE_NODE) {
        const std::u16string_view value = BexAttributeView::Of(*node).value;
        return value.substr(0, value.find(u'\0'));
    }
    return ViewOf(node->getNodeValue());
}

void DOM_Node::setNodeValue(const DOMString& iValue) {
    if (node != nullptr) {
        node->setNodeValue(iValue.rawBuffer());
    }
}

DOM_Node DOM_Node::getParentNode() const {
    return node == nullptr ? DOM_Node() : DOM_Node(node->getParentNode(), tree);
}

DOM_Node DOM_Node::getFirstChild() const {
    return node == nullptr ? DOM_Node() : DOM_Node(node->getFirstChild(), tree);
}

DOM_Node DOM_Node::getLastChild() const {
    return node == nullptr ? DOM_Node() : DOM_Node(node->getLastChild(), tree);
}

DOM_Node DOM_Node::getPreviousSibling() const {
    return node == nullptr ? DOM_Node() : DOM_Node(node->getPreviousSibling(), tree);
}

DOM_Node DOM_Node::getNextSibling() const {
    return node == nullptr ? DOM_Node() : DOM_Node(node->getNextSibling(), tree);
}

DOM_NodeList DOM_Node::getChildNodes() const {
    return node == nullptr ? DOM_NodeList() : DOM_NodeList(node->getChildNodes(), tree);
}

DOM_NamedNodeMap DOM_Node::getAttributes() const {
    return node == nullptr ? DOM_NamedNodeMap() : DOM_NamedNodeMap(node->getAttributes(), tree);
}

DOM_Document DOM_Node::getOwnerDocument() const {
    return node == nullptr ? DOM_Document() : DOM_Document(node->getOwnerDocument(), tree);
}

bool DOM_Node::hasChildNodes() const {
    return node != nullptr && node->hasChildNodes();
}

bool DOM_Node::hasAttributes() const {
    return node != nullptr && node->hasAttributes();
}

DOMString DOM_Node::getNamespaceURI() const {
    return node == nullptr ? DOMString() : DOMString(node->getNamespaceURI());
}

DOMString DOM_Node::getPrefix() const {
    return node == nullptr ? DOMString() : DOMString(node->getPrefix());
}

DOMString DOM_Node::getLocalName() const {
    return node == nullptr ? DOMString() : DOMString(node->getLocalName());
}

DOM_Node DOM_Node::appendChild(const DOM_Node& iNew) {
    return insertBefore(iNew, DOM_Node());
}

DOM_Node DOM_Node::insertBefore(const DOM_Node& iNew, const DOM_Node& iBefore) {
    if (node == nullptr || iNew.isNull()) {
        return DOM_Node();
    }
    return DOM_Node(node->insertBefore(iNew.node, iBefore.node), tree);
}

DOM_Node DOM_Node::replaceChild(const DOM_Node& iNew, const DOM_Node& iOld) {
    if (node == nullptr || iNew.isNull() || iOld.isNull()) {
        return DOM_Node();
    }
    return DOM_Node(node->replaceChild(iNew.node, iOld.node), tree);
}

DOM_Node DOM_Node::removeChild(const DOM_Node& iOld) {
    if (node == nullptr || iOld.isNull()) {
        return DOM_Node();
    }
    return DOM_Node(node->removeChild(iOld.node), tree);
}

DOM_Node DOM_Node::cloneNode(bool iDeep) const {
    if (node == nullptr) {
        return DOM_Node();
    }
    if (node->getNodeType() == xercesc::DOMNode::DOCUMENT_NODE) {
        return DOM_Document(*this).Copy(iDeep);
    }
    return DOM_Node(CopyTree(*node, iDeep,
                             [](const xercesc::DOMNode& iNode) {
                                 const bool isReference =
                                     iNode.getNodeType() == xercesc::DOMNode::ENTITY_REFERENCE_NODE;
                                 return iNode.cloneNode(isReference);
                             }),
                    tree);
}

void DOM_Node::normalize() {
    for (xercesc::DOMNode* at = node == nullptr ? nullptr : node->getFirstChild(); at != nullptr;) {
        xercesc::DOMNode* next = NextInTree(at, node);
        if (at->getNodeType() == xercesc::DOMNode::TEXT_NODE) {
            auto* text = static_cast<xercesc::DOMText*>(at);
            while (at->getNextSibling() != nullptr &&
                   at->getNextSibling()->getNodeType() == xercesc::DOMNode::TEXT_NODE) {
                text->appendData(at->getNextSibling()->getNodeValue());
                at->getParentNode()->removeChild(at->getNextSibling());
            }
            next = NextInTree(at, node);
            if (text->getLength() == 0) {
                at->getParentNode()->removeChild(at);
            }
        }
        at = next;
    }
}
