#ifndef DOM_CharacterData_H
#define DOM_CharacterData_H

#include "DOM_Node.h"

/** What text, CDATA sections and comments have in common. A handle as DOM_Node is. */
class BEX_EXPORT DOM_CharacterData : public DOM_Node {
public:
    /** A null handle. */
    DOM_CharacterData() = default;

    /** @return the text. */
    DOMString getData() const { return getNodeValue(); }
    /** Replaces the text. */
    void setData(const DOMString& iData) { setNodeValue(iData); }
    /** @return the number of code units. */
    std::size_t getLength() const;
    /** @return part of the text, clamped to it. */
    DOMString substringData(std::size_t iOffset, std::size_t iCount) const;
    /** Appends to the text. */
    void appendData(const DOMString& iData);

protected:
    /** A handle on a node of the document that @p iTree shares in. */
    DOM_CharacterData(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    /** The same node, or null when it is of neither type. */
    DOM_CharacterData(const DOM_Node& iNode, NodeType iType, NodeType iOrType) : DOM_Node(iNode, iType, iOrType) {}
};

#endif
