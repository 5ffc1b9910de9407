// Texts with a NUL character, which only the framework's builder puts into a tree: they end there when written.

#include <BexDom.h>
#include <BexTreeBuilder.h>
#include <WriteXML.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <string_view>

namespace {

using namespace std::string_view_literals;

std::string WrittenWithText(std::u16string_view iText) {
    DOM_Document document = DOM_Document::createDocument();
    BexTreeBuilder builder(document);
    builder.OpenElement(u"e");
    builder.AddText(iText);
    builder.CloseElement();
    DOMString text;
    DOM_Element root = document.getDocumentElement();
    EXPECT_EQ(WriteXML(root, text), 0);
    return Narrow(text);
}

TEST(WriteXmlNul, TextEndsAtItsFirstNulCharacter) {
    EXPECT_EQ(WrittenWithText(u"a&b\0c"sv), "<e>a&amp;b</e>");
    EXPECT_EQ(WrittenWithText(u"\0behind"sv), "<e></e>");
    EXPECT_EQ(WrittenWithText(u"seven and more units\0behind, and more units"sv), "<e>seven and more units</e>");
}

}  // namespace
