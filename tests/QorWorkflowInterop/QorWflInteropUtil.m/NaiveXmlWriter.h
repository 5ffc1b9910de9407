#ifndef NaiveXmlWriter_H
#define NaiveXmlWriter_H

#include <xercesc/dom/DOM.hpp>

#include <string>

/** The text of a tree once more, plainly and by recursion, independent of the library, to judge it by. */
namespace NaiveXmlWriter {

inline std::u16string NaiveEscaped(const std::u16string& iText) {
    std::u16string escaped;
    for (const char16_t unit : iText) {
        if (unit == u'&') {
            escaped += u"&amp;";
        } else if (unit == u'<') {
            escaped += u"&lt;";
        } else if (unit == u'>') {
            escaped += u"&gt;";
        } else if (unit == u'"') {
            escaped += u"&quot;";
        } else {
            escaped += unit;
        }
    }
    return escaped;
}

/** The plain recursive writer: each child into a text of its own. */
inline void NaiveWrite(const xercesc::DOMNode& iNode, std::u16string& ioText) {
    const std::u16string name = iNode.getNodeName();
    const std::u16string value = iNode.getNodeValue() == nullptr ? u"" : iNode.getNodeValue();
    const auto addChildren = [&iNode, &ioText](const std::u16string& iBehindEach) {
        for (const xercesc::DOMNode* child = iNode.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
            std::u16string text;
            NaiveWrite(*child, text);
            ioText += text + iBehindEach;
        }
    };
    switch (iNode.getNodeType()) {
        case xercesc::DOMNode::ELEMENT_NODE: {
            ioText = u"<" + name;
            const xercesc::DOMNamedNodeMap& attributes = *iNode.getAttributes();
            for (XMLSize_t index = 0; index < attributes.getLength(); ++index) {
                const xercesc::DOMNode& attribute = *attributes.item(index);
                ioText += std::u16string(u" ") + attribute.getNodeName() + u" = \"" +
                          NaiveEscaped(attribute.getNodeValue()) + u"\"";
            }
            if (iNode.getFirstChild() == nullptr) {
                ioText += u"/>";
                break;
            }
            ioText += u">";
            addChildren(u"");
            ioText += u"</" + name + u">";
            break;
        }
        case xercesc::DOMNode::TEXT_NODE:
            ioText += NaiveEscaped(value);
            break;
        case xercesc::DOMNode::CDATA_SECTION_NODE:
            ioText = u"<![CDATA[" + value + u"]]>";
            break;
        case xercesc::DOMNode::ENTITY_REFERENCE_NODE:
            addChildren(u"");
            break;
        case xercesc::DOMNode::PROCESSING_INSTRUCTION_NODE:
            ioText = u"<?" + name + u" " + value + u"?>";
            break;
        case xercesc::DOMNode::COMMENT_NODE:
            ioText = u"<!--" + value + u"-->";
            break;
        case xercesc::DOMNode::DOCUMENT_NODE:
            ioText = u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n";
            addChildren(u"\n");
            break;
        default:
            break;
    }
}

inline std::u16string NaivelyWritten(const xercesc::DOMNode& iNode, const std::u16string& iBefore = u"") {
    std::u16string text = iBefore;
    NaiveWrite(iNode, text);
    return text;
}

}  // namespace NaiveXmlWriter

#endif
