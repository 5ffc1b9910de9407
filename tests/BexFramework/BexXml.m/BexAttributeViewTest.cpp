#include <BexAttributeView.h>
#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>

#include <string>

namespace {

constexpr char16_t kName[] = u"name";

/** An element with one attribute, whose value a test chooses. */
class BexAttributeViewTest : public testing::Test {
protected:
    BexAttributeViewTest() {
        BexXMLParser::Initialize();
        document = DOM_Document::createDocument();
        element = document.createElement("element");
        document.appendChild(element);
    }

    const xercesc::DOMNode& Attribute() const { return *element.getAttributes().item(0).getNative(); }

    /** Expects both ways of looking to find the attribute with that value. */
    void ExpectValue(std::u16string_view iValue) const {
        for (const BexAttributeView& view :
             {BexAttributeView::Of(Attribute()), BexAttributeView::Checked(Attribute())}) {
            EXPECT_EQ(std::u16string_view(view.name), kName);
            EXPECT_EQ(view.value, iValue);
        }
    }

    DOM_Document document;
    DOM_Element element;
};

TEST_F(BexAttributeViewTest, ShowsAValueOfOneText) {
    for (const std::u16string value : {u"", u"a", u"<&>\"", u"\u00e4\u20ac"}) {
        element.setAttribute(DOMString(kName), DOMString(value.c_str()));
        ExpectValue(value);
    }
    element.setAttribute(DOMString(kName), DOMString(std::u16string(100'000, u'x').c_str()));
    ExpectValue(std::u16string(100'000, u'x'));
}

TEST_F(BexAttributeViewTest, ShowsAValueWithoutAnyText) {
    element.setAttribute(DOMString(kName), "value");
    DOM_Node attribute = element.getAttributes().item(0);
    attribute.removeChild(attribute.getFirstChild());
    ExpectValue(u"");
}

TEST_F(BexAttributeViewTest, ShowsAValueOfSeveralTexts) {
    element.setAttribute(DOMString(kName), "one");
    DOM_Node attribute = element.getAttributes().item(0);
    attribute.appendChild(document.createTextNode("two"));
    ExpectValue(u"onetwo");
}

TEST_F(BexAttributeViewTest, ShowsAValueOfAReferenceToNothingAndOfATextBehindIt) {
    element.setAttribute(DOMString(kName), "value");
    DOM_Node attribute = element.getAttributes().item(0);
    attribute.replaceChild(document.createEntityReference("unknown"), attribute.getFirstChild());
    ExpectValue(u"");
    attribute.appendChild(document.createTextNode("and a text"));
    ExpectValue(u"and a text");
}

TEST_F(BexAttributeViewTest, ShowsTheSameAddressForANameOfADocument) {
    element.setAttribute(DOMString(kName), "one");
    DOM_Element other = document.createElement("other");
    other.setAttribute(DOMString(kName), "two");
    EXPECT_EQ(BexAttributeView::Of(Attribute()).name,
              BexAttributeView::Of(*other.getAttributes().item(0).getNative()).name);
}

}  // namespace
