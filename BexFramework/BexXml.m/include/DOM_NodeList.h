#ifndef DOM_NodeList_H
#define DOM_NodeList_H

#include "DOM_Node.h"

#include <xercesc/dom/DOMNodeList.hpp>

/** A list of nodes that follows the changes of its tree. A handle as DOM_Node is; null has no nodes. */
class BEX_EXPORT DOM_NodeList {
public:
    /** A null handle. */
    DOM_NodeList() = default;

    /** @return whether the handle is null. */
    bool isNull() const { return list == nullptr; }
    /** @return the number of nodes. */
    std::size_t getLength() const;
    /** @return the node at @p iIndex, from 0, or null. */
    DOM_Node item(std::size_t iIndex) const;

private:
    friend class DOM_Node;
    friend class DOM_Element;
    friend class DOM_Document;
    DOM_NodeList(xercesc::DOMNodeList* iList, const DOM_Node::Share& iTree) : list(iList), tree(iTree) {}

    xercesc::DOMNodeList* list = nullptr;
    DOM_Node::Share tree;
};

#endif
