#ifndef DOM_Comment_H
#define DOM_Comment_H

#include "DOM_CharacterData.h"

/** A handle on a comment. */
class BEX_EXPORT DOM_Comment : public DOM_CharacterData {
public:
    /** A null handle. */
    DOM_Comment() = default;
    /** The same node as @p iNode, or null when that is not a comment. */
    explicit DOM_Comment(const DOM_Node& iNode) : DOM_CharacterData(iNode, COMMENT_NODE, COMMENT_NODE) {}

private:
    DOM_Comment(xercesc::DOMNode* iNode, const Share& iTree) : DOM_CharacterData(iNode, iTree) {}
    friend class DOM_Document;
};

#endif
