#include "WriteXML.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <algorithm>
#include <string_view>

namespace {

using xercesc::DOMNode;

constexpr std::u16string_view kDeclaration(u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n");

/** Appends text with markup characters as entity references. */
void outputContent(const XMLCh* iText, DOMString& out) {
    std::u16string_view in = iText == nullptr ? std::u16string_view() : std::u16string_view(iText);
    while (!in.empty()) {
        const std::size_t plain = std::min(in.find_first_of(u"&<>\""), in.size());
        out.appendData(in.substr(0, plain));
        if (plain == in.size()) {
            return;
        }
        switch (in[plain]) {
            case u'&':
                out.appendData(u"&amp;");
                break;
            case u'<':
                out.appendData(u"&lt;");
                break;
            case u'>':
                out.appendData(u"&gt;");
                break;
            default:
                out.appendData(u"&quot;");
                break;
        }
        in.remove_prefix(plain + 1);
    }
}

/** The attributes in the map's own order. The blanks around the equals sign are part of the form. */
void OpenElement(const DOMNode& iElement, DOMString& out) {
    out.appendData(u"<");
    out.appendData(iElement.getNodeName());
    const xercesc::DOMNamedNodeMap* attributes = iElement.getAttributes();
    const XMLSize_t count = attributes == nullptr ? 0 : attributes->getLength();
    for (XMLSize_t i = 0; i < count; ++i) {
        const DOMNode* attribute = attributes->item(i);
        out.appendData(u" ");
        out.appendData(attribute->getNodeName());
        out.appendData(u" = \"");
        outputContent(attribute->getNodeValue(), out);
        out.appendData(u"\"");
    }
    out.appendData(iElement.getFirstChild() != nullptr ? u">" : u"/>");
}

/** Writes what stands before the nodes below; the whole of a node that has none to write. */
void Open(const DOMNode& iNode, DOMString& out) {
    switch (iNode.getNodeType()) {
        case DOMNode::ELEMENT_NODE:
            OpenElement(iNode, out);
            break;
        case DOMNode::TEXT_NODE:
            outputContent(iNode.getNodeValue(), out);
            break;
        case DOMNode::CDATA_SECTION_NODE:
            out.appendData(u"<![CDATA[");
            out.appendData(iNode.getNodeValue());
            out.appendData(u"]]>");
            break;
        case DOMNode::PROCESSING_INSTRUCTION_NODE:
            out.appendData(u"<?");
            out.appendData(iNode.getNodeName());
            out.appendData(u" ");
            out.appendData(iNode.getNodeValue());
            out.appendData(u"?>");
            break;
        case DOMNode::COMMENT_NODE:
            out.appendData(u"<!--");
            out.appendData(iNode.getNodeValue());
            out.appendData(u"-->");
            break;
        case DOMNode::DOCUMENT_NODE:
            out.appendData(kDeclaration);
            break;
        default:
            break;
    }
}

/** Whether the nodes below are written too. */
bool HasWrittenChildren(const DOMNode& iNode) {
    switch (iNode.getNodeType()) {
        case DOMNode::ELEMENT_NODE:
        case DOMNode::DOCUMENT_NODE:
        case DOMNode::ENTITY_REFERENCE_NODE:
            return iNode.getFirstChild() != nullptr;
        default:
            return false;
    }
}

/** Writes what stands behind the nodes below, and behind a node of the document itself. */
void Close(const DOMNode& iNode, bool iIsRoot, DOMString& out) {
    if (iNode.getNodeType() == DOMNode::ELEMENT_NODE && iNode.getFirstChild() != nullptr) {
        out.appendData(u"</");
        out.appendData(iNode.getNodeName());
        out.appendData(u">");
    }
    if (!iIsRoot && iNode.getParentNode()->getNodeType() == DOMNode::DOCUMENT_NODE) {
        out.appendData(u"\n");
    }
}

/** Whether a node's text takes the place of what was there; that of others is appended. */
bool ReplacesText(short iType) {
    switch (iType) {
        case DOMNode::ELEMENT_NODE:
        case DOMNode::CDATA_SECTION_NODE:
        case DOMNode::PROCESSING_INSTRUCTION_NODE:
        case DOMNode::COMMENT_NODE:
        case DOMNode::DOCUMENT_NODE:
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
    const DOMNode* root = node.getNative();
    const DOMNode* at = root;
    while (at != nullptr) {
        Open(*at, out);
        if (HasWrittenChildren(*at)) {
            at = at->getFirstChild();
            continue;
        }
        Close(*at, at == root, out);
        while (at != root && at->getNextSibling() == nullptr) {
            at = at->getParentNode();
            Close(*at, at == root, out);
        }
        at = at == root ? nullptr : at->getNextSibling();
    }
    return 0;
}
