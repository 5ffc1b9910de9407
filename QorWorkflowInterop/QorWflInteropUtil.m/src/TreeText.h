#ifndef TreeText_H
#define TreeText_H

#include "XmlOutput.h"

#include <BexDom.h>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>
#include <xercesc/dom/DOMNode.hpp>

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
        std::vector<const xercesc::DOMNode*> open;
        const xercesc::DOMNode* at = iRoot;
        while (at != nullptr) {
            const xercesc::DOMNode* child = Open(*at);
            if (child != nullptr) {
                open.push_back(at);
                at = child;
                continue;
            }
            const xercesc::DOMNode* next = nullptr;
            while (next == nullptr && !open.empty()) {
                Separate(*open.back());
                next = at->getNextSibling();
                if (next == nullptr) {
                    at = open.back();
                    open.pop_back();
                    Close(*at);
                }
            }
            at = next;
        }
        output.Flush();
    }

private:
    using Node = xercesc::DOMNode;

    static std::u16string_view NameOf(const Node& iNode) { return iNode.getNodeName(); }
    static std::u16string_view ValueOf(const Node& iNode) {
        const XMLCh* value = iNode.getNodeValue();
        return value == nullptr ? std::u16string_view() : std::u16string_view(value);
    }

    /** Writes what stands before the nodes below, and gives the first of those that are written too. */
    const Node* Open(const Node& iNode) {
        switch (iNode.getNodeType()) {
            case Node::ELEMENT_NODE:
                return OpenElement(iNode);
            case Node::TEXT_NODE:
                output.PutEscaped(ValueOf(iNode));
                return nullptr;
            case Node::CDATA_SECTION_NODE:
                PutMarkup(u"<![CDATA[", ValueOf(iNode), u"]]>");
                return nullptr;
            case Node::ENTITY_REFERENCE_NODE:
                return iNode.getFirstChild();
            case Node::PROCESSING_INSTRUCTION_NODE:
                PutMarkup(u"<?", NameOf(iNode), u" ");
                output.Put(ValueOf(iNode));
                output.Put(u"?>");
                return nullptr;
            case Node::COMMENT_NODE:
                PutMarkup(u"<!--", ValueOf(iNode), u"-->");
                return nullptr;
            case Node::DOCUMENT_NODE:
                output.Put(kDeclaration);
                return iNode.getFirstChild();
            default:
                return nullptr;
        }
    }

    /** The attributes come in the map's own order. The blanks around the equals sign are part of the form. */
    const Node* OpenElement(const Node& iElement) {
        BreakLine();
        output.Put(u"<");
        output.Put(NameOf(iElement));
        const xercesc::DOMNamedNodeMap* attributes = iElement.getAttributes();
        const XMLSize_t count = attributes == nullptr ? 0 : attributes->getLength();
        for (XMLSize_t i = 0; i < count; ++i) {
            Node* attribute = attributes->item(i);
            output.Put(u" ");
            output.Put(NameOf(*attribute));
            output.Put(u" = \"");
            output.PutEscaped(DOM_Node(attribute).viewNodeValue());
            output.Put(u"\"");
        }
        const Node* child = iElement.getFirstChild();
        output.Put(child != nullptr ? std::u16string_view(u">") : std::u16string_view(u"/>"));
        return child;
    }

    /** Writes what stands behind the nodes below. */
    void Close(const Node& iNode) {
        if (iNode.getNodeType() == Node::ELEMENT_NODE) {
            BreakLine();
            output.Put(u"</");
            output.Put(NameOf(iNode));
            output.Put(u">");
        }
    }

    /** Writes what stands between the nodes of a parent: a line feed behind each of the document's. */
    void Separate(const Node& iParent) {
        if (iParent.getNodeType() == Node::DOCUMENT_NODE) {
            output.Put(u"\n");
        }
    }

    void PutMarkup(std::u16string_view iBegin, std::u16string_view iText, std::u16string_view iEnd) {
        BreakLine();
        output.Put(iBegin);
        output.Put(iText);
        output.Put(iEnd);
    }

    /** Before a tag: keeps it from touching the one before it, when line breaks are wanted. */
    void BreakLine() {
        if (withLineBreaks && output.EndsWithTag()) {
            output.Put(u"\n");
        }
    }

    static constexpr std::u16string_view kDeclaration = u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n";

    XmlOutput<Text>& output;
    bool withLineBreaks;
};

#endif
