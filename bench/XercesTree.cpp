#include "XercesTree.h"

#include "XpdlTree.h"

#include <xercesc/framework/MemBufFormatTarget.hpp>

namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;
using xercesc::DOMImplementation;
using xercesc::DOMImplementationLS;
using xercesc::DOMImplementationRegistry;

class Tree {
public:
    using Node = DOMElement*;

    explicit Tree(DOMDocument& ioDocument) : document(ioDocument) {}

    Node Root(const Tag& iTag) {
        Node root = document.createElement(iTag.wide);
        document.appendChild(root);
        return root;
    }
    Node Element(Node iParent, const Tag& iTag) {
        Node element = document.createElement(iTag.wide);
        iParent->appendChild(element);
        return element;
    }
    template <typename Value>
    void Attribute(Node iElement, const Tag& iName, const Value& iValue) {
        iElement->setAttribute(iName.wide, Wide(iValue));
    }
    void Text(Node iElement, const BexUnicodeString& iText) {
        iElement->appendChild(document.createTextNode(Wide(iText)));
    }

private:
    static const XMLCh* Wide(const Tag& iTag) { return iTag.wide; }
    /** Valid until the next one. */
    const XMLCh* Wide(const BexUnicodeString& iText) {
        wide.clear();
        for (const char* at = iText.ConvertToChar(); *at != '\0'; ++at) {
            wide += static_cast<char16_t>(static_cast<unsigned char>(*at));
        }
        return wide.c_str();
    }

    DOMDocument& document;
    std::u16string wide;
};

}  // namespace

XercesTree::Document XercesTree::Build(const ActivityInfo& iActivity) {
    Document document(DOMImplementation::getImplementation()->createDocument());
    Tree tree(*document);
    XpdlTreeBuilder<Tree>(tree).Build(iActivity);
    return document;
}

XercesTree::Serializer XercesTree::MakeSerializer() {
    DOMImplementationLS* implementation = DOMImplementationRegistry::getDOMImplementation(u"LS");
    return Serializer(implementation->createLSSerializer());
}

std::string XercesTree::WriteLatin1(xercesc::DOMLSSerializer& ioSerializer, const DOMDocument& iDocument) {
    DOMImplementationLS* implementation = DOMImplementationRegistry::getDOMImplementation(u"LS");
    const std::unique_ptr<xercesc::DOMLSOutput, Release> output(implementation->createLSOutput());
    xercesc::MemBufFormatTarget target;
    output->setByteStream(&target);
    output->setEncoding(u"ISO-8859-1");
    ioSerializer.write(&iDocument, output.get());
    return std::string(reinterpret_cast<const char*>(target.getRawBuffer()), target.getLen());
}
