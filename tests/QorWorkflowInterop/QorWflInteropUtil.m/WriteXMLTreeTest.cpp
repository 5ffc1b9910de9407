#include "NaiveXmlWriter.h"

#include <BexDom.h>
#include <BexTreeBuilder.h>
#include <BexXMLParser.h>
#include <WriteXML.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include <ProcessorTime.h>
#include <SmallStackThread.h>
#include <XmlText.h>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using NaiveXmlWriter::NaivelyWritten;

struct Release {
    void operator()(xercesc::DOMDocument* iDocument) const { iDocument->release(); }
};
using NativeDocument = std::unique_ptr<xercesc::DOMDocument, Release>;

NativeDocument EmptyHostDocument() {
    BexXMLParser::Initialize();
    return NativeDocument(xercesc::DOMImplementationRegistry::getDOMImplementation(u"Core")->createDocument());
}

/** A host's own tree, read by Xerces-C with document type, entities and entity reference nodes. */
class HostTree {
public:
    explicit HostTree(const std::string& iText) {
        BexXMLParser::Initialize();
        parser = std::make_unique<xercesc::XercesDOMParser>();
        parser->setCreateEntityReferenceNodes(true);
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(iText.data()), iText.size(), "host");
        parser->parse(source);
    }
    /** The tree, or null when Xerces-C found an error in the text. */
    xercesc::DOMDocument* Document() const { return parser->getErrorCount() == 0 ? parser->getDocument() : nullptr; }

private:
    std::unique_ptr<xercesc::XercesDOMParser> parser;
};

std::u16string Written(xercesc::DOMNode* iNode, const DOMString& iBefore = DOMString()) {
    DOM_Node node(iNode);
    DOMString out(iBefore);
    EXPECT_EQ(WriteXML(node, out), 0);
    return Units(out);
}

/** Builds trees of random shape from a fixed seed. */
class RandomTrees {
public:
    explicit RandomTrees(xercesc::DOMDocument& ioDocument, unsigned iSeed) : document(ioDocument), random(iSeed) {}

    void FillDocument() {
        AddMisc();
        xercesc::DOMElement* root = document.createElement(Name());
        document.appendChild(root);
        FillElement(*root, 0);
        AddMisc();
    }

private:
    unsigned Below(unsigned iLimit) { return static_cast<unsigned>(random() % iLimit); }

    const XMLCh* Name() {
        static const XMLCh* const kNames[] = {u"a", u"Bc", u"x:y", u"d-1", u"\u0434"};
        return kNames[Below(5)];
    }

    std::u16string Text() {
        static const std::u16string kUnits = u"ab<>&\"' \n]-?\u00e9\u20ac";
        std::u16string text;
        for (unsigned count = Below(6); count > 0; --count) {
            text += kUnits[Below(static_cast<unsigned>(kUnits.size()))];
        }
        return text;
    }

    void AddMisc() {
        for (unsigned count = Below(3); count > 0; --count) {
            if (Below(2) == 0) {
                document.appendChild(document.createComment(Text().c_str()));
            } else {
                document.appendChild(document.createProcessingInstruction(Name(), Text().c_str()));
            }
        }
    }

    void FillElement(xercesc::DOMElement& ioElement, int iDepth) {
        for (unsigned count = Below(4); count > 0; --count) {
            ioElement.setAttribute(Name(), Text().c_str());
        }
        for (unsigned count = Below(iDepth < 8 ? 5 : 1); count > 0; --count) {
            switch (Below(8)) {
                case 0:
                    ioElement.appendChild(document.createComment(Text().c_str()));
                    break;
                case 1:
                    ioElement.appendChild(document.createCDATASection(Text().c_str()));
                    break;
                case 2:
                    ioElement.appendChild(document.createProcessingInstruction(Name(), Text().c_str()));
                    break;
                case 3:
                    ioElement.appendChild(document.createEntityReference(u"unknown"));
                    break;
                case 4:
                case 5:
                    ioElement.appendChild(document.createTextNode(Text().c_str()));
                    break;
                default: {
                    xercesc::DOMElement* child = document.createElement(Name());
                    ioElement.appendChild(child);
                    FillElement(*child, iDepth + 1);
                }
            }
        }
    }

    xercesc::DOMDocument& document;
    std::mt19937 random;
};

const char* const kTextWithEntities =
    "<!DOCTYPE r [<!ENTITY five 'a &#38;#38; b'><!ENTITY tree 'x<i a=\"1\">&five;</i><!--c-->y'><!NOTATION n SYSTEM "
    "'s'>"
    "<!ENTITY picture SYSTEM 'p' NDATA n>]>\n<r v='&five;'>before &tree; behind</r>";

}  // namespace

TEST(WriteXmlTree, TextEndsAtItsFirstNulCharacter) {
    for (const std::size_t length : {0UL, 1UL, 7UL, 8UL, 9UL, 2000UL}) {
        const std::u16string before(length, u'b');
        DOM_Document document = DOM_Document::createDocument();
        BexTreeBuilder builder(document);
        builder.OpenElement(u"r");
        builder.AddText(before + u'\0' + u"behind<");
        builder.CloseElement();
        EXPECT_EQ(Written(document.getDocumentElement().getNative()), u"<r>" + before + u"</r>") << length;
    }
}

TEST(WriteXmlHostTree, IsWrittenThroughAHandle) {
    const NativeDocument host = EmptyHostDocument();
    xercesc::DOMElement* root = host->createElement(u"r");
    host->appendChild(root);
    root->setAttribute(u"b", u"2");
    root->setAttribute(u"a", u"<1>");
    root->appendChild(host->createTextNode(u"x & y"));
    EXPECT_TRUE(Written(root) == u"<r a = \"&lt;1&gt;\" b = \"2\">x &amp; y</r>");
    EXPECT_TRUE(Written(host.get()) ==
                u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n<r a = \"&lt;1&gt;\" b = \"2\">x &amp; y</r>\n");
    EXPECT_TRUE(Written(root->getAttributeNode(u"a"), "old") == u"old");
}

TEST(WriteXmlHostTree, EntityReferenceIsWrittenAsItsExpansion) {
    const HostTree host(kTextWithEntities);
    ASSERT_NE(host.Document(), nullptr);
    xercesc::DOMElement* root = host.Document()->getDocumentElement();
    EXPECT_TRUE(Written(root) == u"<r v = \"a &amp; b\">before x<i a = \"1\">a &amp; b</i><!--c-->y behind</r>");
    xercesc::DOMNode* reference = root->getFirstChild()->getNextSibling();
    ASSERT_NE(reference, nullptr);
    ASSERT_EQ(reference->getNodeType(), xercesc::DOMNode::ENTITY_REFERENCE_NODE);
    EXPECT_TRUE(Written(reference, "old ") == u"old x<i a = \"1\">a &amp; b</i><!--c-->y");
}

TEST(WriteXmlHostTree, DocumentTypeIsAnEmptyLine) {
    const HostTree host(kTextWithEntities);
    ASSERT_NE(host.Document(), nullptr);
    EXPECT_TRUE(Written(host.Document()) == u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n\n" +
                                                Written(host.Document()->getDocumentElement()) + u"\n");
}

TEST(WriteXmlHostTree, DocumentTypeEntitiesAndNotationsAreNotWritten) {
    const HostTree host(kTextWithEntities);
    ASSERT_NE(host.Document(), nullptr);
    xercesc::DOMDocumentType* type = host.Document()->getDoctype();
    ASSERT_NE(type, nullptr);
    xercesc::DOMNode* entity = type->getEntities()->getNamedItem(u"tree");
    xercesc::DOMNode* notation = type->getNotations()->getNamedItem(u"n");
    ASSERT_NE(entity, nullptr);
    ASSERT_NE(notation, nullptr);
    for (xercesc::DOMNode* node : {static_cast<xercesc::DOMNode*>(type), entity, notation}) {
        EXPECT_TRUE(Written(node) == u"") << node->getNodeType();
        EXPECT_TRUE(Written(node, "old") == u"old") << node->getNodeType();
    }
}

TEST(WriteXmlHostTree, RandomTreesAreWrittenAsByTheNaiveWriter) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        const NativeDocument host = EmptyHostDocument();
        RandomTrees(*host, seed).FillDocument();
        ASSERT_TRUE(Written(host.get()) == NaivelyWritten(*host)) << "seed " << seed;
        for (xercesc::DOMNode* node = host->getDocumentElement()->getFirstChild(); node != nullptr;
             node = node->getNextSibling()) {
            ASSERT_TRUE(Written(node, "old") == NaivelyWritten(*node, u"old")) << "seed " << seed;
        }
    }
}

TEST(WriteXmlHostTree, NaiveWriterAgreesOnEntities) {
    const HostTree host(kTextWithEntities);
    ASSERT_NE(host.Document(), nullptr);
    EXPECT_TRUE(Written(host.Document()) == NaivelyWritten(*host.Document()));
}

class WriteXmlDeepTree : public testing::Test {
protected:
    static constexpr int kDepth = 100000;

    /** Elements put together from the innermost outwards, because an append looks at every element above. */
    static xercesc::DOMElement* Nested(xercesc::DOMDocument& ioDocument, int iDepth) {
        xercesc::DOMElement* inner = ioDocument.createElement(u"e");
        inner->appendChild(ioDocument.createTextNode(u"<"));
        for (int depth = 1; depth < iDepth; ++depth) {
            xercesc::DOMElement* outer = ioDocument.createElement(u"e");
            outer->appendChild(inner);
            inner = outer;
        }
        return inner;
    }

    static std::u16string Expected(int iDepth) {
        std::u16string text;
        for (int depth = 0; depth < iDepth; ++depth) {
            text += u"<e>";
        }
        text += u"&lt;";
        for (int depth = 0; depth < iDepth; ++depth) {
            text += u"</e>";
        }
        return text;
    }
};

TEST_F(WriteXmlDeepTree, ElementIsWrittenOnASmallStack) {
    const NativeDocument host = EmptyHostDocument();
    xercesc::DOMElement* root = Nested(*host, kDepth);
    SmallStackThread::Run([root] { EXPECT_TRUE(Written(root) == Expected(kDepth)); });
}

TEST_F(WriteXmlDeepTree, DocumentIsWrittenOnASmallStack) {
    const NativeDocument host = EmptyHostDocument();
    host->appendChild(Nested(*host, kDepth));
    SmallStackThread::Run([&host] {
        EXPECT_TRUE(Written(host.get()) ==
                    u"<?xml version='1.0' encoding='ISO-8859-1' ?>\n" + Expected(kDepth) + u"\n");
    });
}

TEST_F(WriteXmlDeepTree, TakesTimeInProportionToTheText) {
    const NativeDocument host = EmptyHostDocument();
    xercesc::DOMElement* deep = Nested(*host, 400000);
    xercesc::DOMElement* wide = host->createElement(u"w");
    for (int count = 0; count < 400000; ++count) {
        wide->appendChild(host->createElement(u"e"));
    }
    const ProcessorTime time;
    EXPECT_EQ(Written(deep).size(), 400000U * 7 + 4);
    EXPECT_EQ(Written(wide).size(), 400000U * 4 + 7);
    EXPECT_LT(time.Seconds(), ProcessorTime::kQuick);
}
