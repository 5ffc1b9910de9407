#ifndef DOM_EntityReference_H
#define DOM_EntityReference_H

#include "DOM_Node.h"

/** A handle on a reference to an entity, with the expansion below it. */
class BEX_EXPORT DOM_EntityReference : public DOM_Node {
public:
    /** A null handle. */
    DOM_EntityReference() = default;
    /** The same node as @p iNode, or null when that is not an entity reference. */
    explicit DOM_EntityReference(const DOM_Node& iNode)
        : DOM_Node(iNode, ENTITY_REFERENCE_NODE, ENTITY_REFERENCE_NODE) {}

private:
    DOM_EntityReference(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    friend class DOM_Document;
};

#endif
