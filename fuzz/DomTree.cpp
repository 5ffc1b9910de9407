#include "DomTree.h"

#include "NaiveXmlWriter.h"
#include "OtherParsers.h"
#include "PropertyCheck.h"

#include <BexXMLParser.h>
#include <WriteXML.h>

#include <XmlText.h>
#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;
using xercesc::DOMNode;

/** Takes the plain data of a tree node by node. */
class TreeTaker {
public:
    explicit TreeTaker(TreeForm iForm) : form(iForm) {}

    void AddChildren(const DOMNode& iParent, XmlNode& oParent) const {
        std::string pending;  // of text nodes side by side, which nothing separates in the text
        AddChildren(iParent, oParent, pending);
        AddPending(oParent, pending);
    }

private:
    std::string Text(const std::string& iText) const {
        return form == TreeForm::AsReadBack ? WithLineFeeds(iText) : iText;
    }

    /** Beside the root there can only be white space, which parsers do not hand on. */
    void AddPending(XmlNode& oParent, std::string& ioPending) const {
        const std::string text = Text(std::exchange(ioPending, ""));
        if (oParent.kind != XmlNode::Kind::Document || form == TreeForm::AsItIs) {
            oParent.AddText(text);
        }
    }

    std::string ValueOf(const DOMNode& iNode) const {
        return Utf8Of(DOM_Node(const_cast<DOMNode*>(&iNode)).viewNodeValue());
    }

    void AddChildren(const DOMNode& iParent, XmlNode& oParent, std::string& ioPending) const {
        for (const DOMNode* node = iParent.getFirstChild(); node != nullptr; node = node->getNextSibling()) {
            const auto type = node->getNodeType();
            if (type == DOMNode::TEXT_NODE) {
                ioPending += ValueOf(*node);
                continue;
            }
            if (type == DOMNode::ENTITY_REFERENCE_NODE) {
                AddChildren(*node, oParent, ioPending);
                continue;
            }
            AddPending(oParent, ioPending);
            AddOther(*node, oParent);
        }
    }

    void AddOther(const DOMNode& iNode, XmlNode& oParent) const {
        switch (iNode.getNodeType()) {
            case DOMNode::ELEMENT_NODE: {
                XmlNode& element = oParent.Add(XmlNode::Kind::Element, Utf8Of(iNode.getNodeName()));
                const xercesc::DOMNamedNodeMap& attributes = *iNode.getAttributes();
                for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
                    const DOMNode& attribute = *attributes.item(i);
                    const std::string value = ValueOf(attribute);
                    element.attributes[Utf8Of(attribute.getNodeName())] =
                        form == TreeForm::AsReadBack ? AsAttribute(value) : value;
                }
                AddChildren(iNode, element);
                break;
            }
            case DOMNode::CDATA_SECTION_NODE:
                oParent.AddText(Text(ValueOf(iNode)));
                break;
            case DOMNode::COMMENT_NODE:
                oParent.Add(XmlNode::Kind::Comment, "", Text(ValueOf(iNode)));
                break;
            case DOMNode::PROCESSING_INSTRUCTION_NODE:
                oParent.Add(XmlNode::Kind::Instruction, Utf8Of(iNode.getNodeName()), Data(ValueOf(iNode)));
                break;
            default:
                break;
        }
    }

    /** White space behind the target of an instruction is no part of its data. */
    std::string Data(const std::string& iData) const {
        const std::string data = Text(iData);
        const std::size_t start = form == TreeForm::AsReadBack ? data.find_first_not_of(" \t\n") : 0;
        return start == std::string::npos ? "" : data.substr(start);
    }

    TreeForm form;
};

bool IsXmlText(std::u16string_view iText) {
    for (std::size_t i = 0; i < iText.size(); ++i) {
        const char16_t unit = iText[i];
        if (unit >= 0xD800 && unit < 0xDC00 && i + 1 < iText.size() && iText[i + 1] >= 0xDC00 &&
            iText[i + 1] < 0xE000) {
            ++i;
        } else if ((unit < 0x20 && unit != u'\t' && unit != u'\n' && unit != u'\r') ||
                   (unit >= 0xD800 && unit < 0xE000) || unit > 0xFFFD) {
            return false;
        }
    }
    return true;
}

bool Holds(std::u16string_view iText, std::u16string_view iPart) {
    return iText.find(iPart) != std::u16string_view::npos;
}

/** Whether a tree's text is XML: nothing in it ends early what it stands in, and every character is one of XML's. */
bool CanBeRead(const DOMNode& iNode) {
    const std::u16string_view value = DOM_Node(const_cast<DOMNode*>(&iNode)).viewNodeValue();
    switch (iNode.getNodeType()) {
        case DOMNode::CDATA_SECTION_NODE:
            if (Holds(value, u"]]>")) {
                return false;
            }
            break;
        case DOMNode::COMMENT_NODE:
            if (Holds(value, u"--") || (!value.empty() && value.back() == u'-')) {
                return false;
            }
            break;
        case DOMNode::PROCESSING_INSTRUCTION_NODE:
            if (Holds(value, u"?>")) {
                return false;
            }
            break;
        case DOMNode::ELEMENT_NODE: {
            const xercesc::DOMNamedNodeMap& attributes = *iNode.getAttributes();
            for (XMLSize_t i = 0; i < attributes.getLength(); ++i) {
                if (!IsXmlText(DOM_Node(attributes.item(i)).viewNodeValue())) {
                    return false;
                }
            }
            break;
        }
        default:
            break;
    }
    for (const DOMNode* child = iNode.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        if (!CanBeRead(*child)) {
            return false;
        }
    }
    return IsXmlText(value);
}

/** The document that the library reads from a text in that encoding, whatever the text says. */
DOM_Document ParsedAs(const std::string& iText, const char16_t* iEncoding) {
    const TextSource source(iText);
    source.Get().setEncoding(iEncoding);
    DOMParser parser;
    parser.parse(source.Get());
    return parser.getDocument();
}

}  // namespace

XmlNode TreeOf(const DOM_Document& iDocument, TreeForm iForm) {
    XmlNode tree;
    if (!iDocument.isNull()) {
        TreeTaker(iForm).AddChildren(*iDocument.getNative(), tree);
    }
    return tree;
}

void CheckWrittenTree(DOM_Document& ioDocument) {
    DOMString out("replaced");
    Expect(WriteXML(ioDocument, out) == 0, "WriteXML gives 0");
    const std::u16string written = Units(out);
    ExpectEqual("the naive writer writes the same", Utf8Of(written),
                Utf8Of(NaiveXmlWriter::NaivelyWritten(*ioDocument.getNative())));
    if (!CanBeRead(*ioDocument.getNative())) {
        return;
    }
    const bool isNarrow = std::all_of(written.begin(), written.end(), [](char16_t iUnit) { return iUnit <= 0xFF; });
    const std::string text = isNarrow ? std::string(written.begin(), written.end()) : Utf8Of(written);
    const auto encoding = isNarrow ? OtherParsers::Encoding::AsDeclared : OtherParsers::Encoding::Utf8;
    const std::string expected = TreeOf(ioDocument, TreeForm::AsReadBack).Print();

    const std::optional<XmlNode> byLibxml2 = OtherParsers::ReadWithLibxml2(text, encoding);
    Expect(byLibxml2.has_value(), "libxml2 reads what was written");
    ExpectEqual("libxml2 reads the tree that was written", byLibxml2->Print(), expected);
    const std::optional<XmlNode> byPugixml = OtherParsers::ReadWithPugixml(text, encoding);
    Expect(byPugixml.has_value(), "pugixml reads what was written");
    ExpectEqual("pugixml reads the tree that was written", byPugixml->Print(), expected);
    const DOM_Document read = isNarrow ? Parsed(text) : ParsedAs(text, u"UTF-8");
    Expect(read != nullptr, "the library reads what was written");
    ExpectEqual("the library reads the tree that was written", TreeOf(read, TreeForm::AsItIs).Print(), expected);
}
