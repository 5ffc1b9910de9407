#ifndef DOM_NamedNodeMap_H
#define DOM_NamedNodeMap_H

#include "DOM_Node.h"

#include <xercesc/dom/DOMNamedNodeMap.hpp>

/** The attributes of an element, in the order of their names. A handle as DOM_Node is; null has no nodes. */
class BEX_EXPORT DOM_NamedNodeMap {
public:
    /** A null handle. */
    DOM_NamedNodeMap() = default;

    /** @return whether the handle is null. */
    bool isNull() const { return map == nullptr; }
    /** @return the number of nodes. */
    std::size_t getLength() const;
    /** @return the node at @p iIndex, from 0, or null. */
    DOM_Node item(std::size_t iIndex) const;
    /** @return the node of that name, or null. */
    DOM_Node getNamedItem(const DOMString& iName) const;
    /** Adds a node. @return the one of that name that it takes the place of, or null. */
    DOM_Node setNamedItem(const DOM_Node& iNode);
    /** Takes a node out. @return it, or null when there is none of that name. */
    DOM_Node removeNamedItem(const DOMString& iName);

private:
    friend class DOM_Node;
    DOM_NamedNodeMap(xercesc::DOMNamedNodeMap* iMap, const DOM_Node::Share& iTree) : map(iMap), tree(iTree) {}

    xercesc::DOMNamedNodeMap* map = nullptr;
    DOM_Node::Share tree;
};

#endif
