#include "DOM_NodeList.h"

std::size_t DOM_NodeList::getLength() const {
    return list == nullptr ? 0 : list->getLength();
}

DOM_Node DOM_NodeList::item(std::size_t iIndex) const {
    return list == nullptr ? DOM_Node() : DOM_Node(list->item(iIndex), tree);
}
