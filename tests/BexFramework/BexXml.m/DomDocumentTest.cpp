#include <BexDom.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>

#include <RunOnThreads.h>
#include <XmlText.h>
#include <string>

TEST(DomDocument, NewOneIsEmpty) {
    const DOM_Document document = DOM_Document::createDocument();
    ASSERT_FALSE(document.isNull());
    EXPECT_EQ(document.getNodeType(), DOM_Node::DOCUMENT_NODE);
    EXPECT_EQ(Narrow(document.getNodeName()), "#document");
    EXPECT_TRUE(document.getNodeValue().isNull());
    EXPECT_TRUE(document.getDocumentElement().isNull());
    EXPECT_FALSE(document.hasChildNodes());
    EXPECT_TRUE(document != DOM_Document::createDocument());
}

TEST(DomDocument, CreatesEveryKindOfNode) {
    DOM_Document document = DOM_Document::createDocument();
    struct Case {
        DOM_Node node;
        short type;
        std::string name;
        std::string value;
    };
    const Case cases[] = {
        {document.createElement("tag"), 1, "tag", ""},
        {document.createAttribute("name"), 2, "name", ""},
        {document.createTextNode("a<b"), 3, "#text", "a<b"},
        {document.createCDATASection("a<b"), 4, "#cdata-section", "a<b"},
        {document.createEntityReference("entity"), 5, "entity", ""},
        {document.createProcessingInstruction("target", "some data"), 7, "target", "some data"},
        {document.createComment("a-b"), 8, "#comment", "a-b"},
        {document.createDocumentFragment(), 11, "#document-fragment", ""},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(one.node.getNodeType(), one.type) << one.name;
        EXPECT_EQ(Narrow(one.node.getNodeName()), one.name);
        EXPECT_EQ(Narrow(one.node.getNodeValue()), one.value) << one.name;
        EXPECT_TRUE(one.node.getParentNode().isNull()) << one.name;
        EXPECT_EQ(one.node.getOwnerDocument(), document) << one.name;
    }
}

TEST(DomDocument, RefusesNamesThatXmlDoesNotAllow) {
    DOM_Document document = DOM_Document::createDocument();
    for (const char* name : {"", "1a", "a b", "<", "a>"}) {
        EXPECT_THROW(static_cast<void>(document.createElement(name)), xercesc::DOMException) << name;
        EXPECT_THROW(static_cast<void>(document.createAttribute(name)), xercesc::DOMException) << name;
        EXPECT_THROW(static_cast<void>(document.createProcessingInstruction(name, "")), xercesc::DOMException) << name;
        EXPECT_THROW(document.createElement("e").setAttribute(name, ""), xercesc::DOMException) << name;
    }
}

TEST(DomDocument, CreatesElementsOfANamespace) {
    DOM_Document document = DOM_Document::createDocument();
    const DOM_Element element = document.createElementNS("urn:example", "p:tag");
    EXPECT_EQ(Narrow(element.getTagName()), "p:tag");
    EXPECT_EQ(Narrow(element.getNamespaceURI()), "urn:example");
    EXPECT_EQ(Narrow(element.getPrefix()), "p");
    EXPECT_EQ(Narrow(element.getLocalName()), "tag");
    const DOM_Element plain = document.createElement("p:tag");
    EXPECT_EQ(Narrow(plain.getTagName()), "p:tag");
    EXPECT_TRUE(plain.getNamespaceURI().isNull());
    EXPECT_TRUE(plain.getPrefix().isNull());
    EXPECT_TRUE(plain.getLocalName().isNull());
}

TEST(DomDocument, FragmentGivesItsNodesToTheTree) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element root = document.createElement("r");
    DOM_DocumentFragment fragment = document.createDocumentFragment();
    fragment.appendChild(document.createElement("a"));
    fragment.appendChild(document.createElement("b"));
    root.appendChild(fragment);
    EXPECT_EQ(root.getChildNodes().getLength(), 2U);
    EXPECT_EQ(Narrow(root.getLastChild().getNodeName()), "b");
    EXPECT_FALSE(fragment.hasChildNodes());
}

TEST(DomDocument, ImportsNodesOfAnotherDocument) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Node deep;
    DOM_Node flat;
    {
        const DOM_Document other = Parsed("<r a='1'>text<b><!--c--></b></r>");
        deep = document.importNode(other.getDocumentElement(), true);
        flat = document.importNode(other.getDocumentElement(), false);
        EXPECT_TRUE(deep != other.getDocumentElement());
    }
    EXPECT_EQ(deep.getOwnerDocument(), document);
    EXPECT_TRUE(deep.getParentNode().isNull());
    EXPECT_EQ(Narrow(DOM_Element(deep).getAttribute("a")), "1");
    EXPECT_EQ(Narrow(deep.getFirstChild().getNodeValue()), "text");
    EXPECT_EQ(Narrow(deep.getLastChild().getFirstChild().getNodeValue()), "c");
    EXPECT_EQ(Narrow(DOM_Element(flat).getAttribute("a")), "1");
    EXPECT_FALSE(flat.hasChildNodes());
    document.appendChild(deep);
    EXPECT_EQ(document.getDocumentElement(), deep);
}

TEST(DomDocument, FindsElementsByTagName) {
    const DOM_Document document = Parsed("<r><a/><b><a><a/></a></b><A/></r>");
    EXPECT_EQ(document.getElementsByTagName("a").getLength(), 3U);
    EXPECT_EQ(document.getElementsByTagName("*").getLength(), 6U);
    EXPECT_EQ(document.getElementsByTagName("x").getLength(), 0U);
    const DOM_Element root = document.getDocumentElement();
    EXPECT_EQ(root.getElementsByTagName("a").getLength(), 3U);
    EXPECT_EQ(root.getElementsByTagName("r").getLength(), 0U);
    EXPECT_EQ(root.getElementsByTagName("a").item(0), root.getFirstChild());
}

TEST(DomNodeList, FollowsLaterChanges) {
    DOM_Document document = Parsed("<r><a/></r>");
    DOM_Element root = document.getDocumentElement();
    const DOM_NodeList children = root.getChildNodes();
    const DOM_NodeList named = document.getElementsByTagName("a");
    EXPECT_EQ(children.getLength(), 1U);
    EXPECT_EQ(named.getLength(), 1U);
    root.appendChild(document.createElement("a"));
    EXPECT_EQ(children.getLength(), 2U);
    EXPECT_EQ(named.getLength(), 2U);
}

TEST(DomElement, SetsReplacesAndRemovesAttributes) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element element = document.createElement("e");
    EXPECT_FALSE(element.hasAttribute("a"));
    EXPECT_EQ(element.getAttribute("a").length(), 0U);
    EXPECT_TRUE(element.getAttributeNode("a").isNull());
    element.setAttribute("a", "1");
    element.setAttribute("a", "<2>");
    EXPECT_TRUE(element.hasAttribute("a"));
    EXPECT_EQ(Narrow(element.getAttribute("a")), "<2>");
    EXPECT_EQ(Narrow(element.getAttributeNode("a").getValue()), "<2>");
    EXPECT_EQ(Narrow(element.getAttributeNode("a").getName()), "a");
    element.removeAttribute("b");
    element.removeAttribute("a");
    EXPECT_FALSE(element.hasAttribute("a"));
    element.setAttribute("n", DOMString());
    EXPECT_TRUE(element.hasAttribute("n"));
    EXPECT_EQ(element.getAttribute("n").length(), 0U);
}

TEST(DomElement, TakesAttributeNodes) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Element element = document.createElement("e");
    DOM_Attr first = document.createAttribute("a");
    first.setValue("1");
    DOM_Attr second = document.createAttribute("a");
    EXPECT_TRUE(element.setAttributeNode(first).isNull());
    EXPECT_EQ(element.setAttributeNode(second), first);
    EXPECT_TRUE(element.hasAttribute("a"));
    second.setValue("2");
    EXPECT_EQ(Narrow(element.getAttribute("a")), "2");
    DOM_Document other = DOM_Document::createDocument();
    EXPECT_THROW(element.setAttributeNode(other.createAttribute("b")), xercesc::DOMException);
}

TEST(DomCharacterData, ReadsAndChangesItsText) {
    DOM_Document document = DOM_Document::createDocument();
    DOM_Text text = document.createTextNode("abc");
    EXPECT_EQ(Narrow(text.getData()), "abc");
    EXPECT_EQ(text.getLength(), 3U);
    text.appendData("de");
    EXPECT_EQ(Narrow(text.getNodeValue()), "abcde");
    EXPECT_EQ(Narrow(text.substringData(1, 3)), "bcd");
    EXPECT_EQ(Narrow(text.substringData(3, 9)), "de");
    EXPECT_EQ(Narrow(text.substringData(9, 9)), "");
    text.setData("x");
    EXPECT_EQ(text.getLength(), 1U);
    text.setNodeValue("yz");
    EXPECT_EQ(Narrow(text.getData()), "yz");
    DOM_ProcessingInstruction instruction = document.createProcessingInstruction("t", "old");
    instruction.setData("new");
    EXPECT_EQ(Narrow(instruction.getTarget()), "t");
    EXPECT_EQ(Narrow(instruction.getData()), "new");
}

TEST(DomDocument, MayBeReadFromSeveralThreads) {
    const DOM_Document document = Parsed("<r><a n='1'>one</a><a n='2'>two</a></r>");
    const auto results = ResultsOfThreads<std::string>([&document] {
        std::string result;
        for (int round = 0; round < 200; ++round) {
            result.clear();
            for (DOM_Node node = document.getDocumentElement().getFirstChild(); node != 0;
                 node = node.getNextSibling()) {
                result += Narrow(node.getNodeName()) + Narrow(node.getAttributes().getNamedItem("n").getNodeValue()) +
                          Narrow(node.getFirstChild().getNodeValue());
            }
        }
        return result;
    });
    for (const std::string& result : results) {
        EXPECT_EQ(result, "a1onea2two");
    }
}
