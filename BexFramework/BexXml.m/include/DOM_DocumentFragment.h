#ifndef DOM_DocumentFragment_H
#define DOM_DocumentFragment_H

#include "DOM_Node.h"

/** A handle on a document fragment: nodes that are put into a tree together. */
class BEX_EXPORT DOM_DocumentFragment : public DOM_Node {
public:
    /** A null handle. */
    DOM_DocumentFragment() = default;
    /** The same node as @p iNode, or null when that is not a document fragment. */
    explicit DOM_DocumentFragment(const DOM_Node& iNode)
        : DOM_Node(iNode, DOCUMENT_FRAGMENT_NODE, DOCUMENT_FRAGMENT_NODE) {}

private:
    DOM_DocumentFragment(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    friend class DOM_Document;
};

#endif
