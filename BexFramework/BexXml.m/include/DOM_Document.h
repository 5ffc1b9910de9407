#ifndef DOM_Document_H
#define DOM_Document_H

#include "DOM_CDATASection.h"
#include "DOM_Comment.h"
#include "DOM_DocumentFragment.h"
#include "DOM_Element.h"
#include "DOM_EntityReference.h"
#include "DOM_ProcessingInstruction.h"
#include "DOM_Text.h"

/** A handle on a document. What it creates belongs to it and stands in no tree until it is appended; a name that XML
 * does not allow is refused with xercesc::DOMException. On a null handle every creation gives a null handle.
 */
class BEX_EXPORT DOM_Document : public DOM_Node {
public:
    /** A null handle. */
    DOM_Document() = default;
    /** The same node as @p iNode, or null when that is not a document. */
    explicit DOM_Document(const DOM_Node& iNode) : DOM_Node(iNode, DOCUMENT_NODE, DOCUMENT_NODE) {}

    /** @return a new document with nothing in it, released with its last handle; null when Xerces-C cannot be started.
     */
    [[nodiscard]] static DOM_Document createDocument();

    /** @return the root element, or null. */
    DOM_Element getDocumentElement() const;
    /** @return a new element of that name. */
    DOM_Element createElement(const DOMString& iTagName);
    /** @return a new element of that namespace and name, prefix included. */
    DOM_Element createElementNS(const DOMString& iNamespaceUri, const DOMString& iQualifiedName);
    /** @return a new attribute with an empty value. */
    DOM_Attr createAttribute(const DOMString& iName);
    /** @return a new text node. */
    DOM_Text createTextNode(const DOMString& iData);
    /** @return a new CDATA section. */
    DOM_CDATASection createCDATASection(const DOMString& iData);
    /** @return a new comment. */
    DOM_Comment createComment(const DOMString& iData);
    /** @return a new processing instruction. */
    DOM_ProcessingInstruction createProcessingInstruction(const DOMString& iTarget, const DOMString& iData);
    /** @return a new reference to an entity. */
    DOM_EntityReference createEntityReference(const DOMString& iName);
    /** @return a new document fragment. */
    DOM_DocumentFragment createDocumentFragment();
    /** @return a copy, for this document, of a node of another; with everything below when @p iDeep. */
    DOM_Node importNode(const DOM_Node& iNode, bool iDeep);
    /** @return the elements of a name, at any depth, "*" for all; a list that follows later changes. */
    DOM_NodeList getElementsByTagName(const DOMString& iName) const;

private:
    DOM_Document(xercesc::DOMNode* iNode, const Share& iTree) : DOM_Node(iNode, iTree) {}
    friend class DOM_Node;
    friend class DOMParser;

    static DOM_Document Own(xercesc::DOMDocument* iDocument);
    DOM_Document Copy(bool iDeep) const;
    xercesc::DOMDocument* Native() const { return static_cast<xercesc::DOMDocument*>(node); }
};

#endif
