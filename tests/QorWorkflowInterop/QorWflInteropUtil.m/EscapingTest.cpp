#include <BexDom.h>
#include <BexXMLParser.h>
#include <QorWflActivityToXml.h>
#include <QorWflInteropInfo.h>
#include <WriteXML.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

// Texts are written several characters at a time, so every kind of character is tried at every place.

namespace {

constexpr std::size_t kLongest = 40;
constexpr std::u16string_view kInteresting(u"&<>\"'\x00e4\x00ff\x0100\x20ac\x7f26\x2600\xd83d\xff3c $%=#;?@\x7f");

/** What a character is in a document. */
std::u16string Escaped(char16_t iUnit) {
    switch (iUnit) {
        case u'&':
            return u"&amp;";
        case u'<':
            return u"&lt;";
        case u'>':
            return u"&gt;";
        case u'"':
            return u"&quot;";
        default:
            return std::u16string(1, iUnit);
    }
}

std::u16string Escaped(std::u16string_view iText) {
    std::u16string escaped;
    for (const char16_t unit : iText) {
        escaped += Escaped(unit);
    }
    return escaped;
}

std::string Narrow(std::u16string_view iText) {
    std::string narrow;
    for (const char16_t unit : iText) {
        narrow += unit > 0xFF ? '?' : static_cast<char>(unit);
    }
    return narrow;
}

/** Calls a function with texts of every length that have one interesting character at one place, or two of them. */
template <typename Function>
void ForEachText(Function iFunction) {
    for (std::size_t length = 0; length <= kLongest; ++length) {
        iFunction(std::u16string(length, u'a'));
        for (std::size_t place = 0; place < length; ++place) {
            for (const char16_t unit : kInteresting) {
                std::u16string text(length, u'a');
                text[place] = unit;
                iFunction(text);
                text.back() = u'<';
                iFunction(text);
            }
        }
    }
}

TEST(Escaping, EveryCharacterAtEveryPlaceOfATextAndOfAnAttribute) {
    BexXMLParser::Initialize();
    ForEachText([](const std::u16string& iText) {
        DOM_Document document = DOM_Document::createDocument();
        DOM_Element element = document.createElement("e");
        element.setAttribute("a", DOMString(iText.c_str()));
        element.appendChild(document.createTextNode(DOMString(iText.c_str())));
        DOMString written;
        WriteXML(element, written);
        ASSERT_EQ(written.view(), u"<e a = \"" + Escaped(iText) + u"\">" + Escaped(iText) + u"</e>");
    });
}

TEST(Escaping, EveryCharacterAtEveryPlaceOfANarrowDocument) {
    ForEachText([](const std::u16string& iText) {
        ActivityInfo activity;
        activity.name = BexUnicodeString(iText.data(), static_cast<int>(iText.size()));
        BexUnicodeString document;
        QorWflActivityToXml(activity, document);
        const std::string expected = "Name = \"" + Narrow(Escaped(iText)) + "\"";
        ASSERT_NE(document.NarrowView().find(expected), std::string_view::npos) << expected;
    });
}

TEST(Escaping, LongTextsOfEveryLengthAroundTheSizesInWhichTheyAreGathered) {
    BexXMLParser::Initialize();
    for (const std::size_t middle : {1024U, 2048U, 4096U, 8192U}) {
        for (std::size_t length = middle - 12; length <= middle + 12; ++length) {
            std::u16string text(length, u'b');
            text.front() = u'&';
            text.back() = u'>';
            DOM_Document document = DOM_Document::createDocument();
            DOM_Element element = document.createElement("e");
            element.appendChild(document.createTextNode(DOMString(text.c_str())));
            element.appendChild(document.createComment(DOMString(text.c_str())));
            DOMString written;
            WriteXML(element, written);
            ASSERT_EQ(written.view(), u"<e>" + Escaped(text) + u"<!--" + text + u"--></e>") << length;
        }
    }
}

}  // namespace
