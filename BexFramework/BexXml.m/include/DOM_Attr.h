#ifndef DOM_Attr_H
#define DOM_Attr_H

#include "DOM_Node.h"

/** A handle on an attribute. */
class BEX_EXPORT DOM_Attr : public DOM_Node {
public:
    /** A null handle. */
    DOM_Attr() = default;
    /** The same node as @p iNode, or null when that is not an attribute. */
    explicit DOM_Attr(const DOM_Node& iNode) : DOM_Node(iNode, ATTRIBUTE_NODE, ATTRIBUTE_NODE) {}

    /** @return the attribute's name. */
    DOMString getName() const { return getNodeName(); }
    /** @return the attribute's value. */
    DOMString getValue() const { return getNodeValue(); }
    /** Replaces the value. */
    void setValue(const DOMString& iValue) { setNodeValue(iValue); }

private:
    DOM_Attr(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    friend class DOM_Document;
    friend class DOM_Element;
};

#endif
