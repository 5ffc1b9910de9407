#ifndef DOM_CDATASection_H
#define DOM_CDATASection_H

#include "DOM_Text.h"

/** A handle on a CDATA section. */
class BEX_EXPORT DOM_CDATASection : public DOM_Text {
public:
    /** A null handle. */
    DOM_CDATASection() = default;
    /** The same node as @p iNode, or null when that is not a CDATA section. */
    explicit DOM_CDATASection(const DOM_Node& iNode) : DOM_Text(iNode, CDATA_SECTION_NODE, CDATA_SECTION_NODE) {}

private:
    DOM_CDATASection(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Text(iNode, iTree) {}
    friend class DOM_Document;
};

#endif
