#ifndef DOM_ProcessingInstruction_H
#define DOM_ProcessingInstruction_H

#include "DOM_Node.h"

/** A handle on a processing instruction. */
class BEX_EXPORT DOM_ProcessingInstruction : public DOM_Node {
public:
    /** A null handle. */
    DOM_ProcessingInstruction() = default;
    /** The same node as @p iNode, or null when that is not a processing instruction. */
    explicit DOM_ProcessingInstruction(const DOM_Node& iNode)
        : DOM_Node(iNode, PROCESSING_INSTRUCTION_NODE, PROCESSING_INSTRUCTION_NODE) {}

    /** @return the target, the instruction's first word. */
    DOMString getTarget() const { return getNodeName(); }
    /** @return the data behind the target. */
    DOMString getData() const { return getNodeValue(); }
    /** Replaces the data. */
    void setData(const DOMString& iData) { setNodeValue(iData); }

private:
    DOM_ProcessingInstruction(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    friend class DOM_Document;
};

#endif
