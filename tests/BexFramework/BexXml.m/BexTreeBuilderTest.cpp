#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using Access = BexTreeBuilder::Access;
using xercesc::DOMNode;

const char16_t* const kNames[] = {u"a", u"Activity", u"x:y", u"\u00e9l", u"ExtendedAttribute"};
const char16_t* const kAttributes[] = {u"Name", u"Id", u"Value", u"xmlns:xpdl", u"b", u"a"};
const char16_t* const kTexts[] = {u"", u"x", u"a < b & \"c\"", u"\u20ac \U0001F600", u" \n\t"};

/** Gives a builder a random tree: the same one for the same seed. */
class RandomTree {
public:
    RandomTree(unsigned int iSeed, BexTreeBuilder& ioBuilder) : random(iSeed), builder(ioBuilder) {}

    void Build() {
        AddMisc();
        AddElement(0);
        AddMisc();
    }

private:
    int Below(int iBound) { return static_cast<int>(random() % static_cast<unsigned int>(iBound)); }

    template <typename Items>
    const char16_t* OneOf(const Items& iItems) {
        return iItems[Below(static_cast<int>(std::size(iItems)))];
    }

    void AddMisc() {
        for (int i = Below(3); i > 0; --i) {
            if (Below(2) == 0) {
                builder.AddComment(OneOf(kTexts));
            } else {
                builder.AddProcessingInstruction(u"target", OneOf(kTexts));
            }
        }
    }

    void AddElement(int iDepth) {
        builder.OpenElement(OneOf(kNames));
        const int first = Below(static_cast<int>(std::size(kAttributes)));
        for (int i = 0; i < first; ++i) {
            builder.AddAttribute(kAttributes[(first + i) % static_cast<int>(std::size(kAttributes))], OneOf(kTexts));
        }
        for (int i = Below(iDepth > 5 ? 2 : 6); i > 0; --i) {
            AddChild(iDepth);
        }
        builder.CloseElement();
    }

    void AddChild(int iDepth) {
        switch (Below(6)) {
            case 0:
                builder.AddText(std::u16string_view(OneOf(kTexts)));
                break;
            case 1:
                builder.AddText("narrow \xe9");
                break;
            case 2:
                builder.AddCDATASection(OneOf(kTexts));
                break;
            case 3:
                AddMisc();
                break;
            default:
                AddElement(iDepth + 1);
                break;
        }
    }

    std::mt19937 random;
    BexTreeBuilder& builder;
};

DOM_Document Built(unsigned int iSeed, Access iAccess) {
    DOM_Document document = DOM_Document::createDocument();
    BexTreeBuilder builder(document, iAccess);
    RandomTree(iSeed, builder).Build();
    return document;
}

/** Compares what links a node to others, which isEqualNode does not look at. */
void ExpectSameLinks(const DOMNode* iLeft, const DOMNode* iRight, const DOMNode* iLeftDocument,
                     const DOMNode* iRightDocument) {
    ASSERT_EQ(iLeft == nullptr, iRight == nullptr);
    if (iLeft == nullptr) {
        return;
    }
    EXPECT_EQ(iLeft->getOwnerDocument(), iLeftDocument);
    EXPECT_EQ(iRight->getOwnerDocument(), iRightDocument);
    EXPECT_EQ(iLeft->getNodeType(), iRight->getNodeType());
    const DOMNode* lastLeft = nullptr;
    const DOMNode* lastRight = nullptr;
    const DOMNode* right = iRight->getFirstChild();
    for (const DOMNode* left = iLeft->getFirstChild(); left != nullptr; left = left->getNextSibling()) {
        ASSERT_NE(right, nullptr);
        EXPECT_EQ(left->getParentNode(), iLeft);
        EXPECT_EQ(right->getParentNode(), iRight);
        EXPECT_EQ(left->getPreviousSibling(), lastLeft);
        EXPECT_EQ(right->getPreviousSibling(), lastRight);
        ExpectSameLinks(left, right, iLeftDocument, iRightDocument);
        lastLeft = left;
        lastRight = right;
        right = right->getNextSibling();
    }
    EXPECT_EQ(right, nullptr);
    EXPECT_EQ(iLeft->getLastChild(), lastLeft);
    EXPECT_EQ(iRight->getLastChild(), lastRight);
}

/** Compares the attributes of two elements, in the map's order. */
void ExpectSameAttributes(DOMNode* iLeft, DOMNode* iRight) {
    const xercesc::DOMNamedNodeMap* left = iLeft->getAttributes();
    const xercesc::DOMNamedNodeMap* right = iRight->getAttributes();
    ASSERT_EQ(left->getLength(), right->getLength());
    for (XMLSize_t i = 0; i < left->getLength(); ++i) {
        const auto* leftAttribute = static_cast<const xercesc::DOMAttr*>(left->item(i));
        const auto* rightAttribute = static_cast<const xercesc::DOMAttr*>(right->item(i));
        EXPECT_EQ(std::u16string(leftAttribute->getName()), rightAttribute->getName());
        EXPECT_EQ(std::u16string(leftAttribute->getValue()), rightAttribute->getValue());
        EXPECT_EQ(leftAttribute->getOwnerElement(), iLeft);
        EXPECT_EQ(leftAttribute->getSpecified(), rightAttribute->getSpecified());
        EXPECT_EQ(leftAttribute->getParentNode(), rightAttribute->getParentNode());
        ASSERT_NE(leftAttribute->getFirstChild(), nullptr);
        EXPECT_EQ(leftAttribute->getFirstChild()->getParentNode(), leftAttribute);
        EXPECT_EQ(leftAttribute->getFirstChild()->getNextSibling(), nullptr);
        EXPECT_EQ(leftAttribute->getFirstChild()->getPreviousSibling(), nullptr);
        EXPECT_EQ(left->getNamedItem(leftAttribute->getName()), leftAttribute);
    }
}

std::vector<DOMNode*> Elements(const DOM_Document& iDocument) {
    const DOM_NodeList list = iDocument.getElementsByTagName("*");
    std::vector<DOMNode*> elements;
    for (std::size_t i = 0; i < list.getLength(); ++i) {
        elements.push_back(list.item(i).getNative());
    }
    return elements;
}

class BexTreeBuilderTrees : public testing::TestWithParam<unsigned int> {};

TEST_P(BexTreeBuilderTrees, AreTheSameEitherWay) {
    for (unsigned int seed = GetParam(); seed < GetParam() + 100; ++seed) {
        SCOPED_TRACE(seed);
        const DOM_Document fastest = Built(seed, Access::Fastest);
        const DOM_Document checked = Built(seed, Access::Checked);
        ASSERT_TRUE(fastest.getNative()->isEqualNode(checked.getNative()));
        ASSERT_TRUE(checked.getNative()->isEqualNode(fastest.getNative()));
        const DOMNode* left = fastest.getNative();
        const DOMNode* right = checked.getNative();
        for (const DOMNode *l = left->getFirstChild(), *r = right->getFirstChild(); l != nullptr;
             l = l->getNextSibling(), r = r->getNextSibling()) {
            ExpectSameLinks(l, r, left, right);
        }
        const std::vector<DOMNode*> leftElements = Elements(fastest);
        const std::vector<DOMNode*> rightElements = Elements(checked);
        ASSERT_EQ(leftElements.size(), rightElements.size());
        for (std::size_t i = 0; i < leftElements.size(); ++i) {
            ExpectSameAttributes(leftElements[i], rightElements[i]);
        }
    }
}

TEST_P(BexTreeBuilderTrees, TakeLaterChangesAlike) {
    for (unsigned int seed = GetParam(); seed < GetParam() + 20; ++seed) {
        SCOPED_TRACE(seed);
        DOM_Document documents[] = {Built(seed, Access::Fastest), Built(seed, Access::Checked)};
        for (DOM_Document& document : documents) {
            std::mt19937 random(seed);
            for (DOMNode* native : Elements(document)) {
                DOM_Node node(native);
                DOM_Element element(node);
                element.setAttribute("b", "changed");
                element.setAttribute("zz", "new");
                element.removeAttribute("Id");
                element.appendChild(document.createElement("added"));
                element.insertBefore(document.createTextNode("first"), element.getFirstChild());
                if (random() % 3 == 0) {
                    element.removeChild(element.getLastChild());
                }
                if (random() % 4 == 0) {
                    element.removeChild(element.getFirstChild());
                }
            }
            document.normalize();
        }
        EXPECT_TRUE(documents[0].getNative()->isEqualNode(documents[1].getNative()));
        ExpectSameLinks(documents[0].getNative()->getFirstChild(), documents[1].getNative()->getFirstChild(),
                        documents[0].getNative(), documents[1].getNative());
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, BexTreeBuilderTrees, testing::Values(0U, 1000U, 2000U, 3000U));

class BexTreeBuilderAccess : public testing::TestWithParam<Access> {};

TEST_P(BexTreeBuilderAccess, JoinsTextsThatFollowEachOther) {
    DOM_Document document = DOM_Document::createDocument();
    BexTreeBuilder builder(document, GetParam());
    builder.OpenElement(u"a");
    builder.AddText("one ");
    builder.AddText(std::u16string_view(u"two"));
    builder.AddComment(u"c");
    builder.AddText(static_cast<const char*>(nullptr));
    builder.CloseElement();
    const DOM_Element root = document.getDocumentElement();
    EXPECT_TRUE(root.getFirstChild().getNodeValue() == "one two");
    EXPECT_EQ(root.getFirstChild().getNextSibling().getNodeType(), DOM_Node::COMMENT_NODE);
    EXPECT_EQ(root.getLastChild().getNodeType(), DOM_Node::TEXT_NODE);
    EXPECT_EQ(root.getLastChild().getNodeValue().length(), 0U);
}

TEST_P(BexTreeBuilderAccess, NarrowTextIsIso88591) {
    DOM_Document document = DOM_Document::createDocument();
    BexTreeBuilder builder(document, GetParam());
    builder.OpenElement(u"a");
    builder.AddAttribute(u"b", "\xe9\xff");
    builder.AddAttribute(u"c", static_cast<const char*>(nullptr));
    builder.CloseElement();
    EXPECT_TRUE(document.getDocumentElement().getAttribute("b") == DOMString(u"\u00e9\u00ff"));
    EXPECT_TRUE(document.getDocumentElement().hasAttribute("c"));
    EXPECT_EQ(document.getDocumentElement().getAttribute("c").length(), 0U);
}

TEST_P(BexTreeBuilderAccess, KeepsTheDocumentAlive) {
    std::unique_ptr<BexTreeBuilder> builder;
    DOM_Node root;
    {
        DOM_Document document = DOM_Document::createDocument();
        builder = std::make_unique<BexTreeBuilder>(document, GetParam());
        builder->OpenElement(u"a");
        root = document.getDocumentElement();
    }
    builder->AddText("text");
    builder->CloseElement();
    builder.reset();
    EXPECT_TRUE(root.getFirstChild().getNodeValue() == "text");
}

INSTANTIATE_TEST_SUITE_P(Either, BexTreeBuilderAccess, testing::Values(Access::Fastest, Access::Checked));

}  // namespace
