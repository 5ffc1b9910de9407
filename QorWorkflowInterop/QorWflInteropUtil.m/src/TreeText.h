#ifndef TreeText_H
#define TreeText_H

#include "XmlOutput.h"

#include <BexAttributeView.h>

#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/**
 * Writes a tree as XML text, without recursion on its depth. The text is WriteXML()'s; with line breaks there is a line
 * feed between any two tags that touch besides.
 */
template <typename Text>
class TreeText {
public:
    TreeText(XmlOutput<Text>& ioOutput, bool iWithLineBreaks) : output(ioOutput), withLineBreaks(iWithLineBreaks) {}

    /** Writes a node with everything below it; null writes nothing. */
    void Write(const xercesc::DOMNode* iRoot) {
        // Kept here and not on the stack of calls, whatever the depth; Xerces-C takes long to tell a node's parent.
        std::vector<Parent> open;
        const Node* at = iRoot;
        while (at != nullptr) {
            const Parent node = Open(*at);
            if (node.firstChild != nullptr) {
                open.push_back(node);
                at = node.firstChild;
                continue;
            }
            const Node* next = nullptr;
            while (next == nullptr && !open.empty()) {
                Separate(open.back());
                next = at->getNextSibling();
                if (next == nullptr) {
                    Close(open.back());
                    at = open.back().node;
                    open.pop_back();
                }
            }
            at = next;
        }
        output.Flush();
    }

private:
    using Node = xercesc::DOMNode;

    /** A node with others below it that are written too. */
    struct Parent {
        const Node* node;
        const Node* firstChild;  // null when there is none
        Node::NodeType type;
        std::u16string_view name;  // of an element
    };

    static std::u16string_view ValueOf(const Node& iNode) {
        const XMLCh* value = iNode.getNodeValue();
        return value == nullptr ? std::u16string_view() : std::u16string_view(value);
    }

    /** A text node's value, which may have NUL characters in it; Xerces-C knows its length. */
    static std::u16string_view TextOf(const Node& iNode) {
        const auto& text = static_cast<const xercesc::DOMText&>(iNode);
        return std::u16string_view(text.getData(), text.getLength());
    }

    /** A name with its length. A document keeps a name once, so the length is looked up by the name's address. */
    std::u16string_view WithLength(const XMLCh* iName) {
        std::u16string_view& known = names[(reinterpret_cast<std::uintptr_t>(iName) >> 3U) % kNames];
        if (known.data() != iName) {
            known = iName;
        }
        return known;
    }

    /** Writes what stands before the nodes below, and gives the first of those that are written too. */
    Parent Open(const Node& iNode) {
        const Node::NodeType type = iNode.getNodeType();
        switch (type) {
            case Node::ELEMENT_NODE:
                return OpenElement(iNode);
            case Node::TEXT_NODE:
                output.PutEscaped(TextOf(iNode));
                break;
            case Node::CDATA_SECTION_NODE:
                BreakLine();
                output.Put(u"<![CDATA[");
                output.Put(ValueOf(iNode));
                output.Put(u"]]>");
                break;
            case Node::ENTITY_REFERENCE_NODE:
                return {&iNode, iNode.getFirstChild(), type, {}};
            case Node::PROCESSING_INSTRUCTION_NODE:
                BreakLine();
                output.Put(u"<?");
                output.Put(WithLength(iNode.getNodeName()));
                output.Put(u" ");
                output.Put(ValueOf(iNode));
                output.Put(u"?>");
                break;
            case Node::COMMENT_NODE:
                BreakLine();
                output.Put(u"<!--");
                output.Put(ValueOf(iNode));
                output.Put(u"-->");
                break;
            case Node::DOCUMENT_NODE:
                output.Put(u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n");
                return {&iNode, iNode.getFirstChild(), type, {}};
            default:
                break;
        }
        return {&iNode, nullptr, type, {}};
    }

    /** The attributes come in the map's own order. The blanks around the equals sign are part of the form. */
    Parent OpenElement(const Node& iElement) {
        const std::u16string_view name = WithLength(iElement.getNodeName());
        BreakLine();
        output.Put(u"<");
        output.Put(name);
        const xercesc::DOMNamedNodeMap* attributes = iElement.getAttributes();
        const XMLSize_t count = attributes == nullptr ? 0 : attributes->getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            const BexAttributeView attribute = BexAttributeView::Of(*attributes->item(i));
            output.Put(u" ");
            output.Put(WithLength(attribute.name));
            output.Put(u" = \"");
            output.PutEscaped(attribute.value);
            output.Put(u"\"");
        }
        const Node* child = iElement.getFirstChild();
        if (child != nullptr) {
            output.Put(u">");
        } else {
            output.Put(u"/>");
        }
        return {&iElement, child, Node::ELEMENT_NODE, name};
    }

    /** Writes what stands behind the nodes below. */
    void Close(const Parent& iNode) {
        if (iNode.type == Node::ELEMENT_NODE) {
            BreakLine();
            output.Put(u"</");
            output.Put(iNode.name);
            output.Put(u">");
        }
    }

    /** Writes what stands between the nodes of a parent: a line feed behind each of the document's. */
    void Separate(const Parent& iParent) {
        if (iParent.type == Node::DOCUMENT_NODE) {
            output.Put(u"\n");
        }
    }

    /** Before a tag: keeps it from touching the one before it, when line breaks are wanted. */
    void BreakLine() {
        if (withLineBreaks && output.EndsWithTag()) {
            output.Put(u"\n");
        }
    }

    static constexpr std::size_t kNames = 128;

    XmlOutput<Text>& output;
    bool withLineBreaks;
    std::u16string_view names[kNames];  // those met last, by their address
};

#endif
