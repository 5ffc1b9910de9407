#include "DOM_Document.h"

#include "BexXMLParser.h"
#include "BexXmlMemory.h"
#include "TreeCopy.h"

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMComment.hpp>
#include <xercesc/dom/DOMDocumentFragment.hpp>
#include <xercesc/dom/DOMDocumentType.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMEntityReference.hpp>
#include <xercesc/dom/DOMProcessingInstruction.hpp>
#include <xercesc/dom/DOMText.hpp>

DOM_Document DOM_Document::createDocument() {
    if (BexXMLParser::Initialize() != 0) {
        return DOM_Document();
    }
    return Own(BexXmlMemory::NewDocument());
}

/** A handle that releases the document with its last copy. */
DOM_Document DOM_Document::Own(xercesc::DOMDocument* iDocument) {
    const Share share(iDocument, [](xercesc::DOMDocument* iReleased) {
        if (iReleased != nullptr) {
            iReleased->release();
        }
    });
    return DOM_Document(iDocument, share);
}

DOM_Element DOM_Document::getDocumentElement() const {
    return node == nullptr ? DOM_Element() : DOM_Element(Native()->getDocumentElement(), tree);
}

DOM_Element DOM_Document::createElement(const DOMString& iTagName) {
    return node == nullptr ? DOM_Element() : DOM_Element(Native()->createElement(iTagName.rawBuffer()), tree);
}

DOM_Element DOM_Document::createElementNS(const DOMString& iNamespaceUri, const DOMString& iQualifiedName) {
    return node == nullptr
               ? DOM_Element()
               : DOM_Element(Native()->createElementNS(iNamespaceUri.rawBuffer(), iQualifiedName.rawBuffer()), tree);
}

DOM_Attr DOM_Document::createAttribute(const DOMString& iName) {
    return node == nullptr ? DOM_Attr() : DOM_Attr(Native()->createAttribute(iName.rawBuffer()), tree);
}

DOM_Text DOM_Document::createTextNode(const DOMString& iData) {
    return node == nullptr ? DOM_Text() : DOM_Text(Native()->createTextNode(iData.rawBuffer()), tree);
}

DOM_CDATASection DOM_Document::createCDATASection(const DOMString& iData) {
    return node == nullptr ? DOM_CDATASection()
                           : DOM_CDATASection(Native()->createCDATASection(iData.rawBuffer()), tree);
}

DOM_Comment DOM_Document::createComment(const DOMString& iData) {
    return node == nullptr ? DOM_Comment() : DOM_Comment(Native()->createComment(iData.rawBuffer()), tree);
}

DOM_ProcessingInstruction DOM_Document::createProcessingInstruction(const DOMString& iTarget, const DOMString& iData) {
    return node == nullptr ? DOM_ProcessingInstruction()
                           : DOM_ProcessingInstruction(
                                 Native()->createProcessingInstruction(iTarget.rawBuffer(), iData.rawBuffer()), tree);
}

DOM_EntityReference DOM_Document::createEntityReference(const DOMString& iName) {
    return node == nullptr ? DOM_EntityReference()
                           : DOM_EntityReference(Native()->createEntityReference(iName.rawBuffer()), tree);
}

DOM_DocumentFragment DOM_Document::createDocumentFragment() {
    return node == nullptr ? DOM_DocumentFragment() : DOM_DocumentFragment(Native()->createDocumentFragment(), tree);
}

DOM_Node DOM_Document::importNode(const DOM_Node& iNode, bool iDeep) {
    if (node == nullptr || iNode.isNull()) {
        return DOM_Node();
    }
    const auto importOne = [this](const xercesc::DOMNode& iOne) { return Native()->importNode(&iOne, false); };
    return DOM_Node(CopyTree(*iNode.getNative(), iDeep, importOne), tree);
}

DOM_NodeList DOM_Document::getElementsByTagName(const DOMString& iName) const {
    if (node == nullptr) {
        return DOM_NodeList();
    }
    return DOM_NodeList(InForeignMemory([&] { return Native()->getElementsByTagName(iName.rawBuffer()); }), tree);
}

/** A document of its own with copies of what is in this one, its document type included. */
DOM_Document DOM_Document::Copy(bool iDeep) const {
    DOM_Document copy = createDocument();
    for (DOM_Node child = iDeep ? getFirstChild() : DOM_Node(); child != nullptr; child = child.getNextSibling()) {
        if (child.getNodeType() == DOCUMENT_TYPE_NODE) {
            const auto* type = static_cast<const xercesc::DOMDocumentType*>(child.getNative());
            copy.node->appendChild(
                copy.Native()->createDocumentType(type->getName(), type->getPublicId(), type->getSystemId()));
        } else {
            copy.appendChild(copy.importNode(child, true));
        }
    }
    return copy;
}
