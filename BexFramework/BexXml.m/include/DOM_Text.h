#ifndef DOM_Text_H
#define DOM_Text_H

#include "DOM_CharacterData.h"

/** A handle on a text node or CDATA section. */
class BEX_EXPORT DOM_Text : public DOM_CharacterData {
public:
    /** A null handle. */
    DOM_Text() = default;
    /** The same node as @p iNode, or null when that is not a text or CDATA section. */
    explicit DOM_Text(const DOM_Node& iNode) : DOM_CharacterData(iNode, TEXT_NODE, CDATA_SECTION_NODE) {}

protected:
    /** A handle on a text of the document that @p iTree shares in. */
    DOM_Text(xercesc::DOMNode* iNode, const Share& iTree) : DOM_CharacterData(iNode, iTree) {}
    /** The same node, or null when it is of neither type. */
    DOM_Text(const DOM_Node& iNode, NodeType iType, NodeType iOrType) : DOM_CharacterData(iNode, iType, iOrType) {}
    friend class DOM_Document;
};

#endif
