#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>

#include <SmallStackThread.h>
#include <XmlText.h>
#include <memory>
#include <string>

namespace {

struct Release {
    void operator()(xercesc::DOMDocument* iDocument) const { iDocument->release(); }
};
using NativeDocument = std::unique_ptr<xercesc::DOMDocument, Release>;

/** A tree that the test owns, as a host's own tree is. */
NativeDocument HostDocument(const XMLCh* iRootName) {
    BexXMLParser::Initialize();
    xercesc::DOMImplementation* implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core");
    return NativeDocument(implementation->createDocument(nullptr, iRootName, nullptr));
}

/** Counts the documents that Xerces-C releases. */
class ReleaseCounter : public xercesc::DOMUserDataHandler {
public:
    explicit ReleaseCounter(const DOM_Node& iDocument) {
        static_cast<xercesc::DOMDocument*>(iDocument.getNative())->setUserData(u"counter", this, this);
    }
    void handle(DOMOperationType iOperation, const XMLCh* const, void*, const xercesc::DOMNode*,
                xercesc::DOMNode*) override {
        count += iOperation == NODE_DELETED ? 1 : 0;
    }
    int Count() const { return count; }

private:
    int count = 0;
};

/** Elements nested @p iDepth deep, put together from the innermost outwards. */
DOM_Element Nested(DOM_Document& ioDocument, int iDepth) {
    DOM_Element inner = ioDocument.createElement("e");
    for (int depth = 1; depth < iDepth; ++depth) {
        DOM_Element outer = ioDocument.createElement("e");
        outer.appendChild(inner);
        inner = outer;
    }
    return inner;
}

int DepthOf(DOM_Node iNode) {
    int depth = 0;
    for (; !iNode.isNull(); iNode = iNode.getFirstChild()) {
        ++depth;
    }
    return depth;
}

/** The names of a node and of the nodes below it, each with its children in parentheses. */
std::string ShapeOf(const DOM_Node& iNode) {
    std::string shape = Narrow(iNode.getNodeName()) + "(";
    for (DOM_Node child = iNode.getFirstChild(); !child.isNull(); child = child.getNextSibling()) {
        shape += ShapeOf(child);
    }
    return shape + ")";
}

}  // namespace

TEST(DomNullHandle, ComparesAsNull) {
    const DOM_Node node;
    EXPECT_TRUE(node == 0);
    EXPECT_TRUE(node == nullptr);
    EXPECT_FALSE(node != 0);
    EXPECT_TRUE(node.isNull());
    EXPECT_TRUE(node == DOM_Node(nullptr));
    EXPECT_EQ(node.getNative(), nullptr);
    EXPECT_TRUE(DOM_Document() == 0);
    EXPECT_TRUE(DOM_Element().isNull());
}

TEST(DomNullHandle, EveryReadOfANodeIsDefined) {
    const DOM_Node node;
    EXPECT_EQ(node.getNodeType(), 0);
    EXPECT_EQ(node.getNodeName().length(), 0U);
    EXPECT_EQ(node.getNodeValue().length(), 0U);
    EXPECT_TRUE(node.getParentNode().isNull());
    EXPECT_TRUE(node.getFirstChild().isNull());
    EXPECT_TRUE(node.getLastChild().isNull());
    EXPECT_TRUE(node.getPreviousSibling().isNull());
    EXPECT_TRUE(node.getNextSibling().isNull());
    EXPECT_TRUE(node.getOwnerDocument().isNull());
    EXPECT_EQ(node.getChildNodes().getLength(), 0U);
    EXPECT_EQ(node.getAttributes().getLength(), 0U);
    EXPECT_FALSE(node.hasChildNodes());
    EXPECT_FALSE(node.hasAttributes());
    EXPECT_EQ(node.getNamespaceURI().length(), 0U);
    EXPECT_EQ(node.getPrefix().length(), 0U);
    EXPECT_EQ(node.getLocalName().length(), 0U);
    EXPECT_TRUE(node.cloneNode(true).isNull());
}

TEST(DomNullHandle, EveryReadOfAKindOfNodeIsDefined) {
    const DOM_Element element;
    EXPECT_EQ(element.getTagName().length(), 0U);
    EXPECT_EQ(element.getAttribute("a").length(), 0U);
    EXPECT_FALSE(element.hasAttribute("a"));
    EXPECT_TRUE(element.getAttributeNode("a").isNull());
    EXPECT_EQ(element.getElementsByTagName("*").getLength(), 0U);
    EXPECT_EQ(DOM_Attr().getName().length(), 0U);
    EXPECT_EQ(DOM_Attr().getValue().length(), 0U);
    EXPECT_EQ(DOM_Text().getData().length(), 0U);
    EXPECT_EQ(DOM_Text().getLength(), 0U);
    EXPECT_EQ(DOM_Comment().substringData(0, 5).length(), 0U);
    EXPECT_EQ(DOM_CDATASection().getData().length(), 0U);
    EXPECT_EQ(DOM_ProcessingInstruction().getTarget().length(), 0U);
    EXPECT_EQ(DOM_ProcessingInstruction().getData().length(), 0U);
    EXPECT_EQ(DOM_EntityReference().getNodeName().length(), 0U);
    EXPECT_TRUE(DOM_DocumentFragment().getFirstChild().isNull());
    EXPECT_TRUE(DOM_Document().getDocumentElement().isNull());
    EXPECT_EQ(DOM_Document().getElementsByTagName("*").getLength(), 0U);
}

TEST(DomNullHandle, EveryReadOfAListOrMapIsDefined) {
    DOM_NamedNodeMap map;
    EXPECT_TRUE(map.isNull());
    EXPECT_EQ(map.getLength(), 0U);
    EXPECT_TRUE(map.item(0).isNull());
    EXPECT_TRUE(map.getNamedItem("a").isNull());
    EXPECT_TRUE(map.removeNamedItem("a").isNull());
    const DOM_NodeList list;
    EXPECT_TRUE(list.isNull());
    EXPECT_EQ(list.getLength(), 0U);
    EXPECT_TRUE(list.item(0).isNull());
}

TEST(DomNullHandle, EveryChangeDoesNothing) {
    DOM_Document document = DOM_Document::createDocument();
    const DOM_Element child = document.createElement("child");
    DOM_Node node;
    EXPECT_TRUE(node.appendChild(child).isNull());
    EXPECT_TRUE(node.insertBefore(child, DOM_Node()).isNull());
    EXPECT_TRUE(node.replaceChild(child, child).isNull());
    EXPECT_TRUE(node.removeChild(child).isNull());
    node.setNodeValue("value");
    node.normalize();
    EXPECT_TRUE(node.isNull());
    EXPECT_TRUE(child.getParentNode().isNull());
    DOM_Element element;
    element.setAttribute("a", "b");
    element.removeAttribute("a");
    EXPECT_TRUE(element.setAttributeNode(document.createAttribute("a")).isNull());
    DOM_Attr().setValue("b");
    DOM_Text().setData("b");
    DOM_Text().appendData("b");
    DOM_ProcessingInstruction().setData("b");
    EXPECT_TRUE(element.isNull());
    DOM_NamedNodeMap map;
    EXPECT_TRUE(map.setNamedItem(document.createAttribute("a")).isNull());
}

TEST(DomNullHandle, DocumentCreatesNullHandles) {
    DOM_Document document;
    EXPECT_TRUE(document.createElement("a").isNull());
    EXPECT_TRUE(document.createElementNS("urn:a", "p:a").isNull());
    EXPECT_TRUE(document.createAttribute("a").isNull());
    EXPECT_TRUE(document.createTextNode("a").isNull());
    EXPECT_TRUE(document.createCDATASection("a").isNull());
    EXPECT_TRUE(document.createComment("a").isNull());
    EXPECT_TRUE(document.createProcessingInstruction("a", "b").isNull());
    EXPECT_TRUE(document.createEntityReference("a").isNull());
    EXPECT_TRUE(document.createDocumentFragment().isNull());
    EXPECT_TRUE(document.importNode(Parsed("<a/>").getDocumentElement(), true).isNull());
}

TEST(DomNode, WalksATree) {
    const DOM_Document document = Parsed("<!--head--><r>one<a/>two<b/></r>");
    const DOM_Node root = document.getDocumentElement();
    EXPECT_EQ(root.getParentNode(), document);
    EXPECT_EQ(Narrow(root.getPreviousSibling().getNodeValue()), "head");
    EXPECT_TRUE(root.getNextSibling().isNull());
    EXPECT_EQ(Narrow(root.getFirstChild().getNodeValue()), "one");
    EXPECT_EQ(Narrow(root.getLastChild().getNodeName()), "b");
    EXPECT_EQ(Narrow(root.getFirstChild().getNextSibling().getNodeName()), "a");
    EXPECT_EQ(root.getLastChild().getPreviousSibling().getPreviousSibling(), root.getFirstChild().getNextSibling());
    EXPECT_EQ(root.getOwnerDocument(), document);
    EXPECT_TRUE(document.getOwnerDocument().isNull());
    EXPECT_TRUE(root.hasChildNodes());
    EXPECT_FALSE(root.getLastChild().hasChildNodes());
    const DOM_NodeList children = root.getChildNodes();
    ASSERT_EQ(children.getLength(), 4U);
    EXPECT_EQ(Narrow(children.item(2).getNodeValue()), "two");
    EXPECT_TRUE(children.item(4).isNull());
}

TEST(DomNode, HandlesOfOneNodeAreEqual) {
    const DOM_Document document = Parsed("<r><a/><a/></r>");
    const DOM_Node first = document.getDocumentElement().getFirstChild();
    EXPECT_TRUE(first == document.getDocumentElement().getFirstChild());
    EXPECT_TRUE(first != first.getNextSibling());
    const DOM_Node copy = first;
    EXPECT_TRUE(copy == first);
}

TEST(DomNode, ChangesTheTree) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element root = document.createElement("r");
    const DOM_Element a = document.createElement("a");
    const DOM_Element b = document.createElement("b");
    const DOM_Element c = document.createElement("c");
    EXPECT_EQ(document.appendChild(root), root);
    EXPECT_EQ(root.appendChild(b), b);
    EXPECT_EQ(root.insertBefore(a, b), a);
    EXPECT_EQ(root.insertBefore(c, DOM_Node()), c);
    EXPECT_EQ(root.getFirstChild(), a);
    EXPECT_EQ(root.getLastChild(), c);
    EXPECT_EQ(root.removeChild(a), a);
    EXPECT_TRUE(a.getParentNode().isNull());
    EXPECT_EQ(root.replaceChild(a, b), b);
    EXPECT_EQ(root.getFirstChild(), a);
    EXPECT_EQ(root.appendChild(a), a) << "a node that stands in the tree moves";
    EXPECT_EQ(root.getFirstChild(), c);
    EXPECT_EQ(root.getChildNodes().getLength(), 2U);
}

TEST(DomNode, RefusesAChangeThatTheTreeCannotTake) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element root = document.createElement("r");
    document.appendChild(root);
    DOM_Element child = document.createElement("c");
    root.appendChild(child);
    DOM_Document other = DOM_Document::createDocument();
    EXPECT_THROW(root.appendChild(other.createElement("x")), xercesc::DOMException);
    EXPECT_THROW(child.appendChild(root), xercesc::DOMException);
    EXPECT_THROW(document.appendChild(document.createElement("second")), xercesc::DOMException);
    EXPECT_THROW(document.appendChild(document.createTextNode("text")), xercesc::DOMException);
    EXPECT_THROW(root.removeChild(document.createElement("x")), xercesc::DOMException);
    EXPECT_EQ(root.getChildNodes().getLength(), 1U);
    EXPECT_EQ(document.getChildNodes().getLength(), 1U);
}

TEST(DomNode, NullHandleAsAnArgumentChangesNothing) {
    DOM_Document document = Parsed("<r a='1'><c/></r>");
    DOM_Element root = document.getDocumentElement();
    const DOM_Node child = root.getFirstChild();
    EXPECT_TRUE(root.appendChild(DOM_Node()).isNull());
    EXPECT_TRUE(root.insertBefore(DOM_Node(), child).isNull());
    EXPECT_TRUE(root.removeChild(DOM_Node()).isNull());
    EXPECT_TRUE(root.replaceChild(DOM_Node(), child).isNull());
    EXPECT_TRUE(root.replaceChild(document.createElement("x"), DOM_Node()).isNull());
    EXPECT_TRUE(root.setAttributeNode(DOM_Attr()).isNull());
    EXPECT_TRUE(root.getAttributes().setNamedItem(DOM_Node()).isNull());
    EXPECT_TRUE(document.importNode(DOM_Node(), true).isNull());
    EXPECT_EQ(root.getChildNodes().getLength(), 1U);
    EXPECT_EQ(root.getFirstChild(), child);
    EXPECT_EQ(root.getAttributes().getLength(), 1U);
}

TEST(DomNode, AttributesAreInTheOrderOfTheirNames) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element element = document.createElement("e");
    for (const char* name : {"c", "a", "d", "b"}) {
        element.setAttribute(name, DOMString("value of ") + name);
    }
    const DOM_NamedNodeMap attributes = element.getAttributes();
    ASSERT_EQ(attributes.getLength(), 4U);
    std::string names;
    for (std::size_t index = 0; index < attributes.getLength(); ++index) {
        names += Narrow(attributes.item(index).getNodeName());
    }
    EXPECT_EQ(names, "abcd");
    EXPECT_EQ(Narrow(attributes.getNamedItem("c").getNodeValue()), "value of c");
    EXPECT_EQ(attributes.getNamedItem("c").getNodeType(), DOM_Node::ATTRIBUTE_NODE);
    EXPECT_TRUE(attributes.getNamedItem("C").isNull());
    EXPECT_TRUE(attributes.item(4).isNull());
    EXPECT_TRUE(element.hasAttributes());
    EXPECT_TRUE(document.createTextNode("t").getAttributes().isNull());
    EXPECT_FALSE(document.createTextNode("t").hasAttributes());
}

TEST(DomNamedNodeMap, AddsAndTakesOutNodes) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element element = document.createElement("e");
    DOM_NamedNodeMap attributes = element.getAttributes();
    DOM_Attr first = document.createAttribute("a");
    first.setValue("1");
    DOM_Attr second = document.createAttribute("a");
    second.setValue("2");
    EXPECT_TRUE(attributes.setNamedItem(first).isNull());
    EXPECT_EQ(attributes.setNamedItem(second), first);
    EXPECT_EQ(Narrow(element.getAttribute("a")), "2");
    EXPECT_EQ(attributes.removeNamedItem("a"), second);
    EXPECT_TRUE(attributes.removeNamedItem("a").isNull());
    EXPECT_EQ(attributes.getLength(), 0U);
}

TEST(DomHandle, DocumentIsReleasedWithItsLastHandle) {
    DOM_Document document = DOM_Document::createDocument();
    const ReleaseCounter released(document);
    DOM_Element element = document.createElement("e");
    document.appendChild(element);
    element.setAttribute("a", "1");
    DOM_NamedNodeMap attributes = element.getAttributes();
    DOM_NodeList children = document.getChildNodes();
    DOM_Node attribute = attributes.item(0);

    document = DOM_Document();
    EXPECT_EQ(released.Count(), 0);
    element = DOM_Element();
    EXPECT_EQ(released.Count(), 0);
    EXPECT_EQ(Narrow(children.item(0).getNodeName()), "e");
    children = DOM_NodeList();
    EXPECT_EQ(released.Count(), 0);
    EXPECT_EQ(Narrow(attributes.getNamedItem("a").getNodeValue()), "1");
    attributes = DOM_NamedNodeMap();
    EXPECT_EQ(released.Count(), 0);
    EXPECT_EQ(Narrow(attribute.getNodeValue()), "1");
    EXPECT_EQ(Narrow(attribute.getOwnerDocument().getDocumentElement().getTagName()), "e");
    EXPECT_EQ(released.Count(), 0);
    attribute = DOM_Node();
    EXPECT_EQ(released.Count(), 1);
}

TEST(DomHandle, NodeOutsideTheTreeKeepsItsDocument) {
    DOM_Document document = DOM_Document::createDocument();
    const ReleaseCounter released(document);
    DOM_Node removed;
    {
        DOM_Element root = document.createElement("r");
        document.appendChild(root);
        removed = root.appendChild(document.createTextNode("text"));
        root.removeChild(removed);
    }
    document = DOM_Document();
    EXPECT_EQ(released.Count(), 0);
    EXPECT_EQ(Narrow(removed.getNodeValue()), "text");
    removed = DOM_Node();
    EXPECT_EQ(released.Count(), 1);
}

TEST(DomHandle, EveryNodeThatAReadGivesKeepsItsDocument) {
    const std::string text = "<r a='1'><b><c/></b></r>";
    const DOM_Node kept[] = {
        Parsed(text).getDocumentElement(),
        Parsed(text).getFirstChild().getFirstChild(),
        Parsed(text).getLastChild().getLastChild(),
        Parsed(text).getFirstChild().getParentNode(),
        Parsed(text).getFirstChild().getAttributes().item(0),
        Parsed(text).getElementsByTagName("c").item(0),
        Parsed(text).getChildNodes().item(0),
        Parsed(text).getDocumentElement().getAttributeNode("a"),
        Parsed(text).getDocumentElement().cloneNode(true),
        DOM_Element(Parsed(text).getFirstChild()),
    };
    for (const DOM_Node& node : kept) {
        EXPECT_FALSE(node.isNull());
        EXPECT_GT(node.getNodeName().length(), 0U);
    }
}

TEST(DomHandle, OnANodeOfSomebodyElseReleasesNothing) {
    NativeDocument host = HostDocument(u"root");
    host->getDocumentElement()->setAttribute(u"a", u"1");
    const ReleaseCounter released{DOM_Node(host.get())};
    {
        DOM_Node root(host->getDocumentElement());
        EXPECT_EQ(Narrow(root.getNodeName()), "root");
        EXPECT_EQ(root.getNative(), host->getDocumentElement());
        const DOM_Document document = root.getOwnerDocument();
        EXPECT_EQ(document.getNative(), host.get());
        EXPECT_EQ(DOM_Element(root).getAttribute("a"), DOMString("1"));
        root.appendChild(root.getOwnerDocument().createElement("child"));
    }
    EXPECT_EQ(released.Count(), 0);
    EXPECT_NE(host->getDocumentElement()->getFirstChild(), nullptr);
    host.reset();
    EXPECT_EQ(released.Count(), 1);
}

TEST(DomHandle, OfAKindIsNullOnAnotherKind) {
    DOM_Document document = Parsed("<r a='1'>text<![CDATA[cdata]]><!--comment--><?target data?></r>");
    const DOM_Node root = document.getDocumentElement();
    const DOM_Node text = root.getFirstChild();
    const DOM_Node cdata = text.getNextSibling();
    const DOM_Node comment = cdata.getNextSibling();
    const DOM_Node instruction = comment.getNextSibling();
    const DOM_Node attribute = root.getAttributes().item(0);
    const DOM_Node fragment = document.createDocumentFragment();
    const DOM_Node reference = document.createEntityReference("entity");
    const DOM_Node nodes[] = {document,    root,      text,     cdata,     comment,
                              instruction, attribute, fragment, reference, DOM_Node()};
    for (const DOM_Node& node : nodes) {
        EXPECT_EQ(DOM_Document(node).isNull(), node != document);
        EXPECT_EQ(DOM_Element(node).isNull(), node != root);
        EXPECT_EQ(DOM_Text(node).isNull(), node != text && node != cdata);
        EXPECT_EQ(DOM_CDATASection(node).isNull(), node != cdata);
        EXPECT_EQ(DOM_Comment(node).isNull(), node != comment);
        EXPECT_EQ(DOM_ProcessingInstruction(node).isNull(), node != instruction);
        EXPECT_EQ(DOM_Attr(node).isNull(), node != attribute);
        EXPECT_EQ(DOM_DocumentFragment(node).isNull(), node != fragment);
        EXPECT_EQ(DOM_EntityReference(node).isNull(), node != reference);
    }
}

TEST(DomNode, ClonesFlatOrDeep) {
    const DOM_Document document = Parsed("<r a='1'>text<b c='2'/></r>");
    const DOM_Node root = document.getDocumentElement();
    const DOM_Node flat = root.cloneNode(false);
    EXPECT_TRUE(flat != root);
    EXPECT_EQ(Narrow(DOM_Element(flat).getAttribute("a")), "1");
    EXPECT_TRUE(flat.getFirstChild().isNull());
    const DOM_Node deep = root.cloneNode(true);
    EXPECT_TRUE(deep.getParentNode().isNull());
    EXPECT_EQ(Narrow(deep.getFirstChild().getNodeValue()), "text");
    EXPECT_EQ(Narrow(DOM_Element(deep.getLastChild()).getAttribute("c")), "2");
    EXPECT_TRUE(deep.getLastChild() != root.getLastChild());
    EXPECT_EQ(deep.getOwnerDocument(), document);
}

TEST(DomNode, ClonesWhatStandsBehindADeepBranch) {
    const DOM_Document document = Parsed("<r><a><b><c/></b></a><d><e/>text</d><!--f--></r>");
    const std::string shape = "r(a(b(c()))d(e()#text())#comment())";
    EXPECT_EQ(ShapeOf(document.getDocumentElement()), shape);
    EXPECT_EQ(ShapeOf(document.getDocumentElement().cloneNode(true)), shape);
    EXPECT_EQ(ShapeOf(document.getDocumentElement().getFirstChild().cloneNode(true)), "a(b(c()))");
    DOM_Document other = Parsed("<o/>");
    EXPECT_EQ(ShapeOf(other.importNode(document.getDocumentElement(), true)), shape);
}

TEST(DomNode, ClonesEveryKindOfNode) {
    DOM_Document document = Parsed("<?p q?><!--c--><r>text<![CDATA[cdata]]><!--comment--><?target data?><e/>end</r>");
    DOM_Node copy = document.cloneNode(true);
    DOM_Node original = document;
    EXPECT_EQ(copy.getNodeType(), DOM_Node::DOCUMENT_NODE);
    EXPECT_TRUE(copy != original);
    original = original.getFirstChild();
    copy = copy.getFirstChild();
    for (const bool below : {false, true}) {
        if (below) {
            original = document.getDocumentElement().getFirstChild();
            copy = document.getDocumentElement().cloneNode(true).getFirstChild();
        }
        int count = 0;
        while (!original.isNull() && !copy.isNull()) {
            EXPECT_EQ(copy.getNodeType(), original.getNodeType());
            EXPECT_EQ(Narrow(copy.getNodeName()), Narrow(original.getNodeName()));
            EXPECT_EQ(Narrow(copy.getNodeValue()), Narrow(original.getNodeValue()));
            original = original.getNextSibling();
            copy = copy.getNextSibling();
            ++count;
        }
        EXPECT_TRUE(original.isNull());
        EXPECT_TRUE(copy.isNull());
        EXPECT_EQ(count, below ? 6 : 3);
    }
}

TEST(DomNode, CopyOfADocumentIsADocumentOfItsOwn) {
    DOM_Document copy;
    {
        const DOM_Document document = Parsed("<r>text</r>");
        copy = DOM_Document(document.cloneNode(true));
        EXPECT_TRUE(copy != document);
    }
    EXPECT_EQ(Narrow(copy.getDocumentElement().getFirstChild().getNodeValue()), "text");
    EXPECT_EQ(copy.getDocumentElement().getOwnerDocument(), copy);
}

TEST(DomNode, NormalizeJoinsTextAndTakesEmptyTextOut) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element root = document.createElement("r");
    document.appendChild(root);
    DOM_Element inner = document.createElement("i");
    const auto addTexts = [&document](DOM_Element& ioElement) {
        for (const char* text : {"", "a", "", "b", "c"}) {
            ioElement.appendChild(document.createTextNode(text));
        }
    };
    addTexts(root);
    root.appendChild(document.createCDATASection("cdata"));
    root.appendChild(document.createTextNode("d"));
    root.appendChild(inner);
    root.appendChild(document.createTextNode(""));
    addTexts(inner);
    root.normalize();
    std::string shape;
    for (DOM_Node child = root.getFirstChild(); !child.isNull(); child = child.getNextSibling()) {
        shape += Narrow(child.getNodeName()) + "=" + Narrow(child.getNodeValue()) + " ";
    }
    EXPECT_EQ(shape, "#text=abc #cdata-section=cdata #text=d i= ");
    EXPECT_EQ(inner.getChildNodes().getLength(), 1U);
    EXPECT_EQ(Narrow(inner.getFirstChild().getNodeValue()), "abc");
}

class DomDeepTree : public testing::Test {
protected:
    static constexpr int kDepth = 100000;
};

TEST_F(DomDeepTree, IsClonedOnASmallStack) {
    SmallStackThread::Run([] {
        DOM_Document document = DOM_Document::createDocument();
        const DOM_Node copy = Nested(document, kDepth).cloneNode(true);
        EXPECT_EQ(DepthOf(copy), kDepth);
    });
}

TEST_F(DomDeepTree, IsNormalizedOnASmallStack) {
    SmallStackThread::Run([] {
        DOM_Document document = DOM_Document::createDocument();
        DOM_Element root = Nested(document, kDepth);
        DOM_Node innermost = root;
        while (innermost.hasChildNodes()) {
            innermost = innermost.getFirstChild();
        }
        innermost.appendChild(document.createTextNode("a"));
        innermost.appendChild(document.createTextNode("b"));
        root.normalize();
        EXPECT_EQ(innermost.getChildNodes().getLength(), 1U);
        EXPECT_EQ(Narrow(innermost.getFirstChild().getNodeValue()), "ab");
    });
}

TEST_F(DomDeepTree, IsImportedOnASmallStack) {
    SmallStackThread::Run([] {
        DOM_Document document = DOM_Document::createDocument();
        DOM_Document other = DOM_Document::createDocument();
        const DOM_Node copy = other.importNode(Nested(document, kDepth), true);
        EXPECT_EQ(copy.getOwnerDocument(), other);
        EXPECT_EQ(DepthOf(copy), kDepth);
    });
}

TEST_F(DomDeepTree, IsPutIntoADocumentSearchedAndReleasedOnASmallStack) {
    SmallStackThread::Run([] {
        DOM_Document document = DOM_Document::createDocument();
        document.appendChild(Nested(document, kDepth));
        EXPECT_EQ(document.getElementsByTagName("e").getLength(), static_cast<std::size_t>(kDepth));
        document = DOM_Document();
        EXPECT_TRUE(document.isNull());
    });
}

TEST_F(DomDeepTree, WholeDocumentIsClonedOnASmallStack) {
    SmallStackThread::Run([] {
        DOM_Document document = DOM_Document::createDocument();
        document.appendChild(Nested(document, kDepth));
        const DOM_Document copy(document.cloneNode(true));
        EXPECT_EQ(DepthOf(copy.getDocumentElement()), kDepth);
    });
}
