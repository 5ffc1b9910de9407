#include "WriteXML.h"

#include "TreeText.h"

namespace {

/** Whether a node's text takes the place of what was there; that of others is appended. */
bool ReplacesText(short iType) {
    switch (iType) {
        case DOM_Node::ELEMENT_NODE:
        case DOM_Node::CDATA_SECTION_NODE:
        case DOM_Node::PROCESSING_INSTRUCTION_NODE:
        case DOM_Node::COMMENT_NODE:
        case DOM_Node::DOCUMENT_NODE:
            return true;
        default:
            return false;
    }
}

}  // namespace

int WriteXML(DOM_Node& node, DOMString& out) {
    if (ReplacesText(node.getNodeType())) {
        out.clear();
    }
    if (!node.isNull()) {
        XmlOutput<DOMString> output(out);
        TreeText<DOMString>(output, false).Write(node.getNative());
    }
    return 0;
}
