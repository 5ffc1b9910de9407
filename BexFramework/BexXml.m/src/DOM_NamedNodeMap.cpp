#include "DOM_NamedNodeMap.h"

std::size_t DOM_NamedNodeMap::getLength() const {
    return map == nullptr ? 0 : map->getLength();
}

DOM_Node DOM_NamedNodeMap::item(std::size_t iIndex) const {
    return map == nullptr ? DOM_Node() : DOM_Node(map->item(iIndex), tree);
}

DOM_Node DOM_NamedNodeMap::getNamedItem(const DOMString& iName) const {
    return map == nullptr ? DOM_Node() : DOM_Node(map->getNamedItem(iName.rawBuffer()), tree);
}

DOM_Node DOM_NamedNodeMap::setNamedItem(const DOM_Node& iNode) {
    return map == nullptr || iNode.isNull() ? DOM_Node() : DOM_Node(map->setNamedItem(iNode.getNative()), tree);
}

DOM_Node DOM_NamedNodeMap::removeNamedItem(const DOMString& iName) {
    // Xerces-C throws for a name that is not there
    if (getNamedItem(iName).isNull()) {
        return DOM_Node();
    }
    return DOM_Node(map->removeNamedItem(iName.rawBuffer()), tree);
}
