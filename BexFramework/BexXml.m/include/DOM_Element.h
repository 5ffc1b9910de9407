#ifndef DOM_Element_H
#define DOM_Element_H

#include "DOM_Attr.h"
#include "DOM_Node.h"
#include "DOM_NodeList.h"

/** A handle on an element. */
class BEX_EXPORT DOM_Element : public DOM_Node {
public:
    /** A null handle. */
    DOM_Element() = default;
    /** The same node as @p iNode, or null when that is not an element. */
    explicit DOM_Element(const DOM_Node& iNode) : DOM_Node(iNode, ELEMENT_NODE, ELEMENT_NODE) {}

    /** @return the element's name, prefix included. */
    DOMString getTagName() const { return getNodeName(); }
    /** @return the value of an attribute, an empty text when it is absent. */
    DOMString getAttribute(const DOMString& iName) const;
    /** @return whether the attribute is there. */
    bool hasAttribute(const DOMString& iName) const;
    /** Sets an attribute, adding it when it is absent. */
    void setAttribute(const DOMString& iName, const DOMString& iValue);
    /** Takes an attribute out, when it is there. */
    void removeAttribute(const DOMString& iName);
    /** @return the attribute's node, or null. */
    DOM_Attr getAttributeNode(const DOMString& iName) const;
    /** Adds an attribute's node. @return the one of that name that it takes the place of, or null. */
    DOM_Attr setAttributeNode(const DOM_Attr& iAttribute);
    /** @return the elements of a name below, at any depth, "*" for all; a list that follows later changes. */
    DOM_NodeList getElementsByTagName(const DOMString& iName) const;

private:
    DOM_Element(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    friend class DOM_Document;
};

#endif
