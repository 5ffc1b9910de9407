#include "OtherParsers.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <pugixml.hpp>

namespace OtherParsers {

namespace {

std::string TextOf(const xmlChar* iText) {
    return iText == nullptr ? "" : reinterpret_cast<const char*>(iText);
}

/** The name as it stands in the text. */
std::string NameOf(const xmlNs* iNamespace, const xmlChar* iName) {
    const bool hasPrefix = iNamespace != nullptr && iNamespace->prefix != nullptr;
    return hasPrefix ? TextOf(iNamespace->prefix) + ":" + TextOf(iName) : TextOf(iName);
}

void AddAttributes(const xmlNode& iElement, XmlNode& oNode) {
    for (const xmlNs* space = iElement.nsDef; space != nullptr; space = space->next) {
        oNode.attributes[space->prefix == nullptr ? "xmlns" : "xmlns:" + TextOf(space->prefix)] = TextOf(space->href);
    }
    for (const xmlAttr* attribute = iElement.properties; attribute != nullptr; attribute = attribute->next) {
        std::string& value = oNode.attributes[NameOf(attribute->ns, attribute->name)];
        for (const xmlNode* part = attribute->children; part != nullptr; part = part->next) {
            value += TextOf(part->content);
        }
    }
}

void AddChildren(const xmlNode* iFirst, XmlNode& oParent) {
    for (const xmlNode* node = iFirst; node != nullptr; node = node->next) {
        switch (node->type) {
            case XML_ELEMENT_NODE: {
                XmlNode& element = oParent.Add(XmlNode::Kind::Element, NameOf(node->ns, node->name));
                AddAttributes(*node, element);
                AddChildren(node->children, element);
                break;
            }
            case XML_TEXT_NODE:
            case XML_CDATA_SECTION_NODE:
                oParent.AddText(TextOf(node->content));
                break;
            case XML_COMMENT_NODE:
                oParent.Add(XmlNode::Kind::Comment, "", TextOf(node->content));
                break;
            case XML_PI_NODE:
                oParent.Add(XmlNode::Kind::Instruction, TextOf(node->name), TextOf(node->content));
                break;
            default:
                break;
        }
    }
}

void AddChildren(const pugi::xml_node& iNode, XmlNode& oParent) {
    for (const pugi::xml_node node : iNode.children()) {
        switch (node.type()) {
            case pugi::node_element: {
                XmlNode& element = oParent.Add(XmlNode::Kind::Element, node.name());
                for (const pugi::xml_attribute attribute : node.attributes()) {
                    element.attributes[attribute.name()] = attribute.value();
                }
                AddChildren(node, element);
                break;
            }
            case pugi::node_pcdata:
            case pugi::node_cdata:
                oParent.AddText(node.value());
                break;
            case pugi::node_comment:
                oParent.Add(XmlNode::Kind::Comment, "", node.value());
                break;
            case pugi::node_pi:  // of which pugixml leaves the line ends as they are
                oParent.Add(XmlNode::Kind::Instruction, node.name(), WithLineFeeds(node.value()));
                break;
            default:
                break;
        }
    }
}

struct Release {
    void operator()(xmlParserCtxt* iContext) const { xmlFreeParserCtxt(iContext); }
    void operator()(xmlDoc* iDocument) const { xmlFreeDoc(iDocument); }
};

}  // namespace

std::optional<XmlNode> ReadWithLibxml2(const std::string& iText, Encoding iEncoding) {
    const std::unique_ptr<xmlParserCtxt, Release> context(xmlNewParserCtxt());
    const char* encoding = iEncoding == Encoding::Utf8 ? "UTF-8" : nullptr;
    const std::unique_ptr<xmlDoc, Release> document(
        xmlCtxtReadMemory(context.get(), iText.data(), static_cast<int>(iText.size()), nullptr, encoding,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_HUGE));
    if (document == nullptr) {
        return std::nullopt;
    }
    XmlNode root;
    AddChildren(document->children, root);
    return root;
}

std::optional<XmlNode> ReadWithPugixml(const std::string& iText, Encoding iEncoding) {
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer(
        iText.data(), iText.size(), pugi::parse_default | pugi::parse_comments | pugi::parse_pi | pugi::parse_ws_pcdata,
        iEncoding == Encoding::Utf8 ? pugi::encoding_utf8 : pugi::encoding_auto);
    if (!result) {
        return std::nullopt;
    }
    XmlNode root;
    AddChildren(document, root);
    return root;
}

}  // namespace OtherParsers
