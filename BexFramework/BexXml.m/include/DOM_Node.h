#ifndef DOM_Node_H
#define DOM_Node_H

#include "BexExport.h"
#include "DOMString.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <cstddef>
#include <memory>
#include <string_view>

class DOM_Document;
class DOM_NamedNodeMap;
class DOM_NodeList;

/**
 * A handle on a node of a document tree: a pointer and a share in the document.
 *
 * Xerces-C builds and owns the tree; a handle is copied by value, and the handles of one document keep it alive between
 * them. A handle may be null: every read of a null handle gives a null handle, an empty text, 0 or false, and every
 * change does nothing and gives a null handle. A node taken out of its tree lives as long as its document.
 *
 * A change that the tree cannot take (a node of another document, a node below itself, a second document element) is
 * refused as Xerces-C refuses it, with xercesc::DOMException. Memory that cannot be had is std::bad_alloc.
 *
 * Trees are walked without recursion on their depth. Threads: any number may read one document that nobody changes.
 */
class BEX_EXPORT DOM_Node {
public:
    /** The kinds of node, with the DOM's numbers. */
    enum NodeType {
        ELEMENT_NODE = 1,
        ATTRIBUTE_NODE = 2,
        TEXT_NODE = 3,
        CDATA_SECTION_NODE = 4,
        ENTITY_REFERENCE_NODE = 5,
        ENTITY_NODE = 6,
        PROCESSING_INSTRUCTION_NODE = 7,
        COMMENT_NODE = 8,
        DOCUMENT_NODE = 9,
        DOCUMENT_TYPE_NODE = 10,
        DOCUMENT_FRAGMENT_NODE = 11,
        NOTATION_NODE = 12
    };

    /** A null handle. */
    DOM_Node() = default;
    /** A handle on a node of a tree that somebody else owns and keeps alive; null gives a null handle. */
    DOM_Node(xercesc::DOMNode* iNode) : node(iNode) {}

    /** @return whether the handle is null. */
    bool isNull() const { return node == nullptr; }
    /** @return Xerces-C's node, or null; it belongs to its document. */
    xercesc::DOMNode* getNative() const { return node; }

    /** @return one of NodeType, 0 for a null handle. */
    short getNodeType() const { return node == nullptr ? short{0} : static_cast<short>(node->getNodeType()); }
    /** @return the name: the tag of an element, the name of an attribute, "#text" and so on for others. */
    DOMString getNodeName() const;
    /** @return the value of a node that has one, else a null text. */
    DOMString getNodeValue() const;
    /** @return the name without a copy, valid until the tree changes; empty for a null handle. */
    std::u16string_view viewNodeName() const {
        return node == nullptr ? std::u16string_view() : ViewOf(node->getNodeName());
    }
    /** @return the value without a copy, valid until the tree changes; empty for a node that has none. */
    std::u16string_view viewNodeValue() const;
    /** Sets the value of a node that has one. */
    void setNodeValue(const DOMString& iValue);
    /** @return the node above, or null. */
    DOM_Node getParentNode() const;
    /** @return the first node below, or null. */
    DOM_Node getFirstChild() const;
    /** @return the last node below, or null. */
    DOM_Node getLastChild() const;
    /** @return the node before this one under the same parent, or null. */
    DOM_Node getPreviousSibling() const;
    /** @return the node behind this one under the same parent, or null. */
    DOM_Node getNextSibling() const;
    /** @return the nodes below, a list that follows later changes. */
    DOM_NodeList getChildNodes() const;
    /** @return the attributes of an element, a null map for other nodes. */
    DOM_NamedNodeMap getAttributes() const;
    /** @return the document that the node belongs to; null for a document. */
    DOM_Document getOwnerDocument() const;
    /** @return whether there are nodes below. */
    bool hasChildNodes() const;
    /** @return whether this is an element with attributes. */
    bool hasAttributes() const;
    /** @return the namespace, null unless the node was created with one. */
    DOMString getNamespaceURI() const;
    /** @return the prefix, null unless the node was created with a namespace. */
    DOMString getPrefix() const;
    /** @return the local name, null unless the node was created with a namespace. */
    DOMString getLocalName() const;

    /** Puts @p iNew behind the last child; taken from where it was. @return @p iNew. */
    DOM_Node appendChild(const DOM_Node& iNew);
    /** Puts @p iNew before the child @p iBefore, or behind the last one when that is null. @return @p iNew. */
    DOM_Node insertBefore(const DOM_Node& iNew, const DOM_Node& iBefore);
    /** Puts @p iNew in the place of the child @p iOld. @return @p iOld. */
    DOM_Node replaceChild(const DOM_Node& iNew, const DOM_Node& iOld);
    /** Takes the child @p iOld out. @return @p iOld. */
    DOM_Node removeChild(const DOM_Node& iOld);
    /** @return a copy outside any tree, with attributes, and with everything below when @p iDeep. */
    DOM_Node cloneNode(bool iDeep) const;
    /** Joins adjacent text nodes below and takes empty ones out. */
    void normalize();

    /** @return whether both are the same node. */
    friend bool operator==(const DOM_Node& iLeft, const DOM_Node& iRight) { return iLeft.node == iRight.node; }
    /** @return whether they are different nodes. */
    friend bool operator!=(const DOM_Node& iLeft, const DOM_Node& iRight) { return iLeft.node != iRight.node; }
    /** @return whether the handle is null. */
    friend bool operator==(const DOM_Node& iNode, std::nullptr_t) { return iNode.node == nullptr; }
    /** @return whether the handle is not null. */
    friend bool operator!=(const DOM_Node& iNode, std::nullptr_t) { return iNode.node != nullptr; }

protected:
    /** The document, released with the last share; null for a tree that somebody else owns. */
    using Share = std::shared_ptr<xercesc::DOMDocument>;

    /** A handle on a node of the document that @p iTree shares in. */
    DOM_Node(xercesc::DOMNode* iNode, const Share& iTree) : node(iNode), tree(iTree) {}
    /** The same node, or null when it is not of type @p iType (or @p iOrType, when given). */
    DOM_Node(const DOM_Node& iNode, NodeType iType, NodeType iOrType) : DOM_Node() {
        if (iNode.getNodeType() == iType || iNode.getNodeType() == iOrType) {
            *this = iNode;
        }
    }

    /** @return the text without a copy, empty for a null pointer. */
    static std::u16string_view ViewOf(const XMLCh* iText) {
        return iText == nullptr ? std::u16string_view() : std::u16string_view(iText);
    }

    xercesc::DOMNode* node = nullptr;  ///< null for a null handle; belongs to its document
    Share tree;                        ///< keeps the document of the node alive

    friend class DOM_Document;
    friend class DOM_NamedNodeMap;
    friend class DOM_NodeList;
};

#endif
