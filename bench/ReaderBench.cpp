#include "Bench.h"
#include "Inputs.h"
#include "PeerText.h"
#include "XpdlWalk.h"

#include <QorWflXmlToActivity.h>

#include <benchmark/benchmark.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstring>
#include <libxml/parser.h>
#include <libxml/tree.h>

namespace {

// ---------------------------------------------------------------------------------------------------- Xerces-C

using xercesc::DOMElement;
using xercesc::DOMNode;
using xercesc::XMLString;

/** A record out of Xerces-C's own tree. */
class XercesWalk {
public:
    using Node = const DOMElement*;

    static Node FirstChild(Node iParent, const Tag& iTag) { return Find(iParent->getFirstChild(), iTag); }
    static Node NextSibling(Node iNode, const Tag& iTag) { return Find(iNode->getNextSibling(), iTag); }
    BexUnicodeString Text(Node iNode) {
        for (const DOMNode* child = iNode->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
            if (child->getNodeType() == DOMNode::TEXT_NODE) {
                return Narrow(child->getNodeValue());
            }
        }
        return BexUnicodeString("");
    }
    BexUnicodeString Attribute(Node iNode, const Tag& iName) { return Narrow(iNode->getAttribute(iName.wide)); }
    static bool HasValue(Node iNode, const Tag& iName, const Tag& iValue) {
        return XMLString::equals(iNode->getAttribute(iName.wide), iValue.wide);
    }

private:
    static Node Find(const DOMNode* iFrom, const Tag& iTag) {
        for (const DOMNode* node = iFrom; node != nullptr; node = node->getNextSibling()) {
            if (node->getNodeType() == DOMNode::ELEMENT_NODE && XMLString::equals(node->getNodeName(), iTag.wide)) {
                return static_cast<Node>(node);
            }
        }
        return nullptr;
    }
    BexUnicodeString Narrow(const XMLCh* iText) {
        narrow.clear();
        for (; *iText != 0; ++iText) {
            narrow += *iText > 0xFF ? '?' : static_cast<char>(*iText);
        }
        return BexUnicodeString(narrow.data(), static_cast<int>(narrow.size()));
    }

    std::string narrow;
};

void ReadWithXerces(const BexUnicodeString& iXml, ActivityInfo& oActivity) {
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(iXml.ConvertToChar()),
                                            static_cast<XMLSize_t>(iXml.GetLengthInChar()), "XPDL");
    xercesc::XercesDOMParser parser;
    parser.parse(source);
    XercesWalk walk;
    XpdlReader<XercesWalk>(walk, oActivity).Read(parser.getDocument()->getDocumentElement());
}

// ---------------------------------------------------------------------------------------------------- libxml2

/** A record out of libxml2's tree; texts that are in one piece are taken without a copy. */
class LibXmlWalk {
public:
    using Node = const xmlNode*;

    static Node FirstChild(Node iParent, const Tag& iTag) { return Find(iParent->children, iTag); }
    static Node NextSibling(Node iNode, const Tag& iTag) { return Find(iNode->next, iTag); }
    static BexUnicodeString Text(Node iNode) {
        for (Node child = iNode->children; child != nullptr; child = child->next) {
            if (child->type == XML_TEXT_NODE) {
                return PeerText::FromUtf8(Narrow(child->content));
            }
        }
        return BexUnicodeString("");
    }
    static BexUnicodeString Attribute(Node iNode, const Tag& iName) {
        const xmlAttr* attribute = FindAttribute(iNode, iName);
        if (attribute == nullptr || attribute->children == nullptr) {
            return BexUnicodeString("");
        }
        if (attribute->children->next == nullptr) {
            return PeerText::FromUtf8(Narrow(attribute->children->content));
        }
        xmlChar* value = xmlNodeListGetString(iNode->doc, attribute->children, 1);
        BexUnicodeString text = PeerText::FromUtf8(Narrow(value));
        xmlFree(value);
        return text;
    }
    static bool HasValue(Node iNode, const Tag& iName, const Tag& iValue) {
        const xmlAttr* attribute = FindAttribute(iNode, iName);
        return attribute != nullptr && attribute->children != nullptr &&
               std::strcmp(Narrow(attribute->children->content), iValue.narrow) == 0;
    }

private:
    static const char* Narrow(const xmlChar* iText) { return reinterpret_cast<const char*>(iText); }
    static Node Find(Node iFrom, const Tag& iTag) {
        for (Node node = iFrom; node != nullptr; node = node->next) {
            if (node->type == XML_ELEMENT_NODE && std::strcmp(Narrow(node->name), iTag.narrow) == 0) {
                return node;
            }
        }
        return nullptr;
    }
    static const xmlAttr* FindAttribute(Node iNode, const Tag& iName) {
        for (const xmlAttr* attribute = iNode->properties; attribute != nullptr; attribute = attribute->next) {
            if (std::strcmp(Narrow(attribute->name), iName.narrow) == 0) {
                return attribute;
            }
        }
        return nullptr;
    }
};

struct FreeDocument {
    void operator()(xmlDoc* iDocument) const { xmlFreeDoc(iDocument); }
};

void ReadWithLibXml(const BexUnicodeString& iXml, ActivityInfo& oActivity) {
    const std::unique_ptr<xmlDoc, FreeDocument> document(
        xmlReadMemory(iXml.ConvertToChar(), iXml.GetLengthInChar(), "XPDL", nullptr, 0));
    LibXmlWalk walk;
    XpdlReader<LibXmlWalk>(walk, oActivity).Read(xmlDocGetRootElement(document.get()));
}

// ---------------------------------------------------------------------------------------------------- timing

using Reader = void (*)(const BexUnicodeString&, ActivityInfo&);

std::string TextsRead(Reader iRead, const BexUnicodeString& iXml) {
    ActivityInfo activity;
    iRead(iXml, activity);
    return Inputs::AllTexts(activity);
}

Bench::Work Timed(Reader iRead) {
    return [iRead](benchmark::State& ioState, int iSize) {
        const std::shared_ptr<const BexUnicodeString> xml = Inputs::Document(iSize);
        for ([[maybe_unused]] auto round : ioState) {
            ActivityInfo activity;
            iRead(*xml, activity);
            benchmark::DoNotOptimize(activity.process.datas);
        }
    };
}

}  // namespace

void Bench::CheckReaders() {
    for (const int size : kSizes) {
        const std::shared_ptr<const BexUnicodeString> xml = Inputs::Document(size);
        const std::string ours = TextsRead(QorWflXmlToActivity, *xml);
        RequireSame("the record that was written", ours, Inputs::AllTexts(*Inputs::Activity(size)));
        RequireSame("records of Xerces-C", ours, TextsRead(ReadWithXerces, *xml));
        RequireSame("records of libxml2", ours, TextsRead(ReadWithLibXml, *xml));
    }
}

void Bench::AddReaders() {
    AddOurs("read", kSizes, Timed(QorWflXmlToActivity));
    Add("read", "Xerces-C", kSizes, Timed(ReadWithXerces));
    Add("read", "libxml2", kSizes, Timed(ReadWithLibXml));
}
