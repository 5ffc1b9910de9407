#include "WriteXML.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace {

using xercesc::DOMNode;

constexpr std::u16string_view kDeclaration(u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n");

/** Whether a code unit is written as an entity reference. */
bool IsMarkup(char16_t iUnit) {
    constexpr std::uint64_t kMarkup = (std::uint64_t{1} << u'&') | (std::uint64_t{1} << u'<') |
                                      (std::uint64_t{1} << u'>') | (std::uint64_t{1} << u'"');
    return iUnit < 64 && ((kMarkup >> iUnit) & 1U) != 0;
}

/** Appends text with markup characters as entity references. */
void outputContent(std::u16string_view in, DOMString& out) {
    while (!in.empty()) {
        const auto markup = std::find_if(in.begin(), in.end(), IsMarkup);
        const auto plain = static_cast<std::size_t>(markup - in.begin());
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
        DOMNode* attribute = attributes->item(i);
        out.appendData(u" ");
        out.appendData(attribute->getNodeName());
        out.appendData(u" = \"");
        outputContent(DOM_Node(attribute).viewNodeValue(), out);
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
            outputContent(std::u16string_view(iNode.getNodeValue()), out);
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

/** Writes what stands behind the nodes below. */
void Close(const DOMNode& iNode, DOMString& out) {
    if (iNode.getNodeType() == DOMNode::ELEMENT_NODE) {
        out.appendData(u"</");
        out.appendData(iNode.getNodeName());
        out.appendData(u">");
    }
}

/** Writes what stands behind a node and before the next one: a line feed between those of the document itself. */
void Separate(const DOMNode& iParent, DOMString& out) {
    if (iParent.getNodeType() == DOMNode::DOCUMENT_NODE) {
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
    // Kept here and not on the stack of calls, whatever the depth; Xerces-C takes long to tell a node's parent.
    std::vector<const DOMNode*> open;
    const DOMNode* at = node.getNative();
    while (at != nullptr) {
        Open(*at, out);
        if (HasWrittenChildren(*at)) {
            open.push_back(at);
            at = at->getFirstChild();
            continue;
        }
        const DOMNode* next = nullptr;
        while (next == nullptr && !open.empty()) {
            Separate(*open.back(), out);
            next = at->getNextSibling();
            if (next == nullptr) {
                at = open.back();
                open.pop_back();
                Close(*at, out);
            }
        }
        at = next;
    }
    return 0;
}
