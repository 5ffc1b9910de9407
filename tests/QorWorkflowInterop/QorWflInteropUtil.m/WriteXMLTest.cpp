#include <BexDom.h>
#include <WriteXML.h>

#include <gtest/gtest.h>

#include <RunOnThreads.h>
#include <XmlText.h>
#include <algorithm>
#include <string>
#include <vector>

namespace {

const std::string kDeclaration = "<?xml version='1.0' encoding='ISO-8859-1' ?>\n";

/** What WriteXML leaves in a text that held @p iBefore. */
std::string Written(DOM_Node iNode, const std::string& iBefore = "") {
    DOMString out(iBefore.c_str());
    EXPECT_EQ(WriteXML(iNode, out), 0);
    return Narrow(out);
}

class WriteXmlNodes : public testing::Test {
protected:
    DOM_Document document = DOM_Document::createDocument();
};

}  // namespace

TEST_F(WriteXmlNodes, EveryKindOfNodeReplacesAppendsOrLeavesTheTextAsItShould) {
    DOM_Document whole = DOM_Document::createDocument();
    whole.appendChild(whole.createElement("r"));
    DOM_Attr attribute = document.createAttribute("a");
    attribute.setValue("v");
    DOM_DocumentFragment fragment = document.createDocumentFragment();
    fragment.appendChild(document.createElement("e"));
    struct Case {
        std::string name;
        DOM_Node node;
        std::string fromEmpty;
        std::string fromOld;
    };
    const Case cases[] = {
        {"element", document.createElement("Cost"), "<Cost/>", "<Cost/>"},
        {"attribute", attribute, "", "old"},
        {"text", document.createTextNode("a<b"), "a&lt;b", "olda&lt;b"},
        {"empty text", document.createTextNode(""), "", "old"},
        {"CDATA section", document.createCDATASection("a<b"), "<![CDATA[a<b]]>", "<![CDATA[a<b]]>"},
        {"entity reference", document.createEntityReference("x"), "", "old"},
        {"instruction", document.createProcessingInstruction("t", "d e"), "<?t d e?>", "<?t d e?>"},
        {"comment", document.createComment("c & <d>"), "<!--c & <d>-->", "<!--c & <d>-->"},
        {"document", whole, kDeclaration + "<r/>\n", kDeclaration + "<r/>\n"},
        {"fragment", fragment, "", "old"},
        {"null", DOM_Node(), "", "old"},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(Written(one.node), one.fromEmpty) << one.name;
        EXPECT_EQ(Written(one.node, "old"), one.fromOld) << one.name;
    }
}

TEST_F(WriteXmlNodes, EveryKindOfNodeIsWrittenWithinAnElement) {
    DOM_Element root = document.createElement("r");
    root.appendChild(document.createTextNode("one"));
    root.appendChild(document.createComment("two"));
    root.appendChild(document.createTextNode("three"));
    root.appendChild(document.createCDATASection("four"));
    root.appendChild(document.createTextNode(""));
    root.appendChild(document.createProcessingInstruction("five", "5"));
    root.appendChild(document.createElement("six"));
    root.appendChild(document.createEntityReference("unknown"));
    root.appendChild(document.createTextNode("seven"));
    EXPECT_EQ(Written(root), "<r>one<!--two-->three<![CDATA[four]]><?five 5?><six/>seven</r>");
}

TEST_F(WriteXmlNodes, ElementWithoutChildrenIsShort) {
    DOM_Element element = document.createElement("Cost");
    EXPECT_EQ(Written(element), "<Cost/>");
    element.setAttribute("a", "1");
    element.setAttribute("b", "");
    EXPECT_EQ(Written(element), "<Cost a = \"1\" b = \"\"/>");
}

TEST_F(WriteXmlNodes, ElementWithAnEmptyTextHasTwoTags) {
    DOM_Element element = document.createElement("e");
    element.appendChild(document.createTextNode(""));
    EXPECT_EQ(Written(element), "<e></e>");
}

TEST_F(WriteXmlNodes, AttributesStandBeforeTheChildrenWithBlanksAroundTheEqualsSign) {
    DOM_Element element = document.createElement("Activity");
    element.setAttribute("Id", "A1");
    element.setAttribute("Name", "Review");
    element.appendChild(document.createElement("x"));
    EXPECT_EQ(Written(element), "<Activity Id = \"A1\" Name = \"Review\"><x/></Activity>");
}

TEST_F(WriteXmlNodes, SiblingsHaveNothingBetweenThem) {
    DOM_Element root = document.createElement("r");
    root.appendChild(document.createElement("a"));
    root.appendChild(document.createElement("b"));
    EXPECT_EQ(Written(root), "<r><a/><b/></r>");
    DOM_Element outer = document.createElement("o");
    outer.appendChild(root);
    outer.appendChild(document.createElement("c"));
    EXPECT_EQ(Written(outer), "<o><r><a/><b/></r><c/></o>");
}

TEST_F(WriteXmlNodes, OnlyTheNodeAndWhatIsBelowIsWritten) {
    DOM_Document tree = Parsed("<r><a>1<b>2</b>3</a><c/></r>");
    const DOM_Node a = tree.getDocumentElement().getFirstChild();
    EXPECT_EQ(Written(a), "<a>1<b>2</b>3</a>");
    EXPECT_EQ(Written(a.getFirstChild()), "1");
    EXPECT_EQ(Written(a.getFirstChild().getNextSibling()), "<b>2</b>");
    EXPECT_EQ(Written(a.getNextSibling()), "<c/>");
}

TEST_F(WriteXmlNodes, MarkupCharactersAreEscapedInTextsAndAttributes) {
    struct Case {
        std::string text;
        std::string escaped;
    };
    const Case cases[] = {
        {"a<b & \"c\"", "a&lt;b &amp; &quot;c&quot;"},
        {"x > y", "x &gt; y"},
        {"it's", "it's"},
        {"&lt;", "&amp;lt;"},
        {"><", "&gt;&lt;"},
        {"\"\"", "&quot;&quot;"},
        {"]]>", "]]&gt;"},
        {"\n\t\r", "\n\t\r"},
        {"\x01\x7F\x80\xE9\xFF", "\x01\x7F\x80\xE9\xFF"},
        {"", ""},
        {"&&&&", "&amp;&amp;&amp;&amp;"},
    };
    for (const Case& one : cases) {
        DOM_Element element = document.createElement("e");
        element.setAttribute("a", one.text.c_str());
        element.appendChild(document.createTextNode(one.text.c_str()));
        EXPECT_EQ(Written(element), "<e a = \"" + one.escaped + "\">" + one.escaped + "</e>");
        EXPECT_EQ(Written(document.createTextNode(one.text.c_str())), one.escaped);
    }
}

TEST_F(WriteXmlNodes, EveryByteIsEscapedOrKeptAloneAndBesideAnEscapedOne) {
    for (int code = 1; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        std::string escaped = byte;
        if (byte == "&") {
            escaped = "&amp;";
        } else if (byte == "<") {
            escaped = "&lt;";
        } else if (byte == ">") {
            escaped = "&gt;";
        } else if (byte == "\"") {
            escaped = "&quot;";
        }
        EXPECT_EQ(Written(document.createTextNode(byte.c_str())), escaped) << code;
        EXPECT_EQ(Written(document.createTextNode(("<" + byte + "&").c_str())), "&lt;" + escaped + "&amp;") << code;
    }
}

TEST_F(WriteXmlNodes, CharactersAboveAByteStayAsTheyAre) {
    DOM_Element element = document.createElement(u"\u0434");
    element.setAttribute(u"\u0436", u"\u20ac<");
    std::u16string loneSurrogate = u"\U0001F600";
    loneSurrogate += char16_t{0xDC00};
    loneSurrogate += u'>';
    element.appendChild(document.createTextNode(DOMString(loneSurrogate.c_str())));
    DOMString out;
    EXPECT_EQ(WriteXML(element, out), 0);
    std::u16string expected = u"<\u0434 \u0436 = \"\u20ac&lt;\">\U0001F600";
    expected += char16_t{0xDC00};
    expected += u"&gt;</\u0434>";
    EXPECT_TRUE(Units(out) == expected);
}

TEST_F(WriteXmlNodes, EveryCodeUnitIsEscapedOrKept) {
    std::u16string all;
    std::u16string escaped;
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        const auto character = static_cast<char16_t>(unit);
        all += character;
        switch (character) {
            case u'&':
                escaped += u"&amp;";
                break;
            case u'<':
                escaped += u"&lt;";
                break;
            case u'>':
                escaped += u"&gt;";
                break;
            case u'"':
                escaped += u"&quot;";
                break;
            default:
                escaped += character;
        }
    }
    DOM_Element element = document.createElement("e");
    element.setAttribute("a", DOMString(all.c_str()));
    element.appendChild(document.createTextNode(DOMString(all.c_str())));
    element.appendChild(document.createCDATASection(DOMString(all.c_str())));
    element.appendChild(document.createComment(DOMString(all.c_str())));
    DOMString out;
    EXPECT_EQ(WriteXML(element, out), 0);
    EXPECT_TRUE(Units(out) ==
                u"<e a = \"" + escaped + u"\">" + escaped + u"<![CDATA[" + all + u"]]><!--" + all + u"--></e>");
}

TEST_F(WriteXmlNodes, NamesOfNamespacesAreWrittenAsTheyStandAndNothingIsDeclared) {
    DOM_Element element = document.createElementNS("urn:x", "x:e");
    element.appendChild(document.createElementNS("urn:x", "e"));
    element.appendChild(document.createElementNS("urn:y", "x:e"));
    EXPECT_EQ(Written(element), "<x:e><e/><x:e/></x:e>");
    DOM_Document tree = Parsed("<x:r xmlns:x='urn:x' xmlns='urn:y' x:b='1' b='2'><x:e x:a='3'/></x:r>");
    EXPECT_EQ(Written(tree.getDocumentElement()),
              "<x:r b = \"2\" x:b = \"1\" xmlns = \"urn:y\" xmlns:x = \"urn:x\"><x:e x:a = \"3\"/></x:r>");
}

TEST_F(WriteXmlNodes, AttributesComeInTheOrderOfTheirNamesHoweverTheyWereSet) {
    std::vector<std::string> names = {"b", "a", "B", "x:a", "_", "a1", "a-", "aa", "Z", "xml:lang"};
    for (std::size_t round = 0; round < names.size(); ++round) {
        std::rotate(names.begin(), names.begin() + 3, names.end());
        DOM_Element element = document.createElement("e");
        for (const std::string& name : names) {
            element.setAttribute(name.c_str(), "old");
        }
        for (const std::string& name : names) {
            element.setAttribute(name.c_str(), ("v" + name).c_str());
        }
        element.removeAttribute("aa");
        std::string expected = "<e";
        const DOM_NamedNodeMap map = element.getAttributes();
        ASSERT_EQ(map.getLength(), names.size() - 1);
        for (std::size_t index = 0; index < map.getLength(); ++index) {
            expected +=
                " " + Narrow(map.item(index).getNodeName()) + " = \"" + Narrow(map.item(index).getNodeValue()) + "\"";
        }
        EXPECT_EQ(Written(element), expected + "/>");
        EXPECT_EQ(expected,
                  "<e B = \"vB\" Z = \"vZ\" _ = \"v_\" a = \"va\" a- = \"va-\" a1 = \"va1\" b = \"vb\" "
                  "x:a = \"vx:a\" xml:lang = \"vxml:lang\"");
    }
}

TEST_F(WriteXmlNodes, WhatIsNotWellFormedIsWrittenAsItStands) {
    EXPECT_EQ(Written(document.createComment("a--b-")), "<!--a--b--->");
    EXPECT_EQ(Written(document.createCDATASection("a]]>b")), "<![CDATA[a]]>b]]>");
    EXPECT_EQ(Written(document.createProcessingInstruction("target", "")), "<?target ?>");
    EXPECT_EQ(Written(document.createProcessingInstruction("target", "a?>b")), "<?target a?>b?>");
    EXPECT_EQ(Written(document.createComment("")), "<!---->");
    EXPECT_EQ(Written(document.createCDATASection("")), "<![CDATA[]]>");
}

TEST_F(WriteXmlNodes, DocumentIsTheDeclarationAndItsChildrenOneALine) {
    EXPECT_EQ(Written(document), kDeclaration);
    document.appendChild(document.createElement("r"));
    EXPECT_EQ(Written(document), kDeclaration + "<r/>\n");
    document.insertBefore(document.createComment("c"), document.getFirstChild());
    document.insertBefore(document.createProcessingInstruction("t", "d"), document.getFirstChild());
    document.appendChild(document.createComment("end"));
    EXPECT_EQ(Written(document), kDeclaration + "<?t d?>\n<!--c-->\n<r/>\n<!--end-->\n");
    EXPECT_EQ(Written(document, "old"), kDeclaration + "<?t d?>\n<!--c-->\n<r/>\n<!--end-->\n");
}

TEST_F(WriteXmlNodes, NullTextIsReplacedOrAppendedToLikeAnEmptyOne) {
    DOMString out;
    DOM_Node text = document.createTextNode("t");
    EXPECT_EQ(WriteXML(text, out), 0);
    EXPECT_EQ(Narrow(out), "t");
    EXPECT_EQ(WriteXML(text, out), 0);
    EXPECT_EQ(Narrow(out), "tt");
    DOM_Node element = document.createElement("e");
    EXPECT_EQ(WriteXML(element, out), 0);
    EXPECT_EQ(Narrow(out), "<e/>");
}

TEST_F(WriteXmlNodes, WritingChangesNothingInTheTree) {
    DOM_Document tree = Parsed("<r a='1'>text<!--c--><b/></r>");
    const std::string first = Written(tree);
    EXPECT_EQ(Written(tree), first);
    EXPECT_EQ(first, kDeclaration + "<r a = \"1\">text<!--c--><b/></r>\n");
}

TEST_F(WriteXmlNodes, WrittenDocumentReadsBackAsTheSameText) {
    const char* texts[] = {
        "<r/>",
        "<r a='&lt;&quot;&amp;>' b=\"'\">x &amp; y<![CDATA[<raw>]]><?t d?><!--c--><e><f/></e></r>",
        "<!--c--><?p d?><r>\xC3\xA9\n <e/>\n</r><!--end-->",
    };
    for (const char* text : texts) {
        DOM_Document tree = Parsed(text);
        ASSERT_FALSE(tree.isNull());
        const std::string once = Written(tree);
        DOM_Document again = Parsed(once);
        ASSERT_FALSE(again.isNull()) << once;
        EXPECT_EQ(Written(again), once);
    }
}

TEST_F(WriteXmlNodes, SeveralThreadsMayWriteOneTree) {
    DOM_Document tree = Parsed("<r a='1'>text<!--c--><b/></r>");
    const std::string expected = kDeclaration + "<r a = \"1\">text<!--c--><b/></r>\n";
    const auto good = ResultsOfThreads<int>([&tree, &expected] {
        int count = 0;
        for (int round = 0; round < 200; ++round) {
            DOM_Node node = tree;
            DOMString out;
            count += WriteXML(node, out) == 0 && Narrow(out) == expected ? 1 : 0;
        }
        return count;
    });
    EXPECT_EQ(good, std::vector<int>(4, 200));
}
