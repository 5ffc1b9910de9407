#include "MemoryThatEnds.h"

#include <BexDictionary.h>
#include <BexDom.h>
#include <BexQorTrace.h>
#include <BexQorTraceStep.h>
#include <BexTime.h>
#include <BexTreeBuilder.h>
#include <BexUnicodeString.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <memory>
#include <string>
#include <vector>

namespace {

using MemoryThatEnds::Contract;
using MemoryThatEnds::ForEveryRefusal;

std::string Utf16(const std::string& iAscii) {
    std::string bytes = "\xFF\xFE";
    for (const char character : iAscii) {
        bytes += character;
        bytes += '\0';
    }
    return bytes;
}

/** A parser and what it is to read. */
struct Parsing {
    explicit Parsing(const std::string& iText) : source(iText) {}
    TextSource source;
    DOMParser parser;
};

TEST(FrameworkMemoryEnds, ParserHasAWholeDocumentOrNone) {
    const std::string elements = "<r><!--c--><?t d?><e a='1' b='2'>text</e><![CDATA[c]]><e c='&lt;'/></r>";
    const std::string texts[] = {elements, "<!DOCTYPE r SYSTEM 'x'>" + elements,
                                 "<?xml version='1.0' encoding='ISO-8859-1'?>" + elements,
                                 Utf16("<?xml version='1.0' encoding='UTF-16'?>" + elements)};
    for (const std::string& text : texts) {
        ForEveryRefusal(
            "DOMParser::parse " + text.substr(0, 40), Contract::kNeverThrow,
            [&] { return std::make_unique<Parsing>(text); },
            [](Parsing& ioState) { ioState.parser.parse(ioState.source.Get()); },
            [](const Parsing& iState, bool isUndisturbed) {
                const DOM_Document document = iState.parser.getDocument();
                EXPECT_TRUE(!isUndisturbed || !document.isNull());
                if (!document.isNull()) {
                    const DOM_Element root = document.getDocumentElement();
                    EXPECT_EQ(root.getChildNodes().getLength(), 5U);
                    EXPECT_TRUE(DOM_Element(root.getLastChild()).getAttribute("c") == "<");
                }
            });
    }
}

TEST(FrameworkMemoryEnds, ParserThatCannotExplainAnErrorHasNoDocumentEither) {
    for (const char* text : {"<a>", "<a></b>", "<a b='1' b='2'/>", "", "<a>&x;</a>", "\xFF"}) {
        ForEveryRefusal(
            std::string("DOMParser::parse ") + text, Contract::kNeverThrow,
            [&] { return std::make_unique<Parsing>(text); },
            [](Parsing& ioState) { ioState.parser.parse(ioState.source.Get()); },
            [](const Parsing& iState, bool isUndisturbed) {
                EXPECT_TRUE(iState.parser.getDocument().isNull());
                EXPECT_TRUE(!isUndisturbed || iState.parser.getErrorText().length() > 0);
            });
    }
}

TEST(FrameworkMemoryEnds, InputSourceIsThereOrNot) {
    ForEveryRefusal("CreateMemBufInputSource", [] {
        const std::unique_ptr<InputSource> source(BexXMLParser::CreateMemBufInputSource("<a/>", 4, "a name"));
        return source != nullptr;
    });
}

/** Every kind of node, put together through the handles. */
DOM_Document BuiltByHand() {
    DOM_Document document = DOM_Document::createDocument();
    document.appendChild(document.createComment("a comment"));
    DOM_Element root = document.createElement("root");
    document.appendChild(root);
    root.setAttribute("name", "a value");
    root.setAttributeNode(document.createAttribute("other"));
    root.appendChild(document.createTextNode("some "));
    root.appendChild(document.createTextNode("text"));
    root.appendChild(document.createCDATASection("some data"));
    root.appendChild(document.createProcessingInstruction("target", "data"));
    root.appendChild(document.createElementNS("urn:a", "p:element"));
    DOM_DocumentFragment fragment = document.createDocumentFragment();
    fragment.appendChild(document.createElement("in-fragment"));
    root.appendChild(fragment);
    root.replaceChild(document.createElement("replaced"), root.getLastChild());
    root.insertBefore(document.createElement("inserted"), root.getFirstChild());
    root.normalize();
    return document;
}

TEST(FrameworkMemoryEnds, TreesAreBuiltOrNot) {
    ForEveryRefusal("building by hand", [] {
        const DOM_Document document = BuiltByHand();
        return document.getDocumentElement().getChildNodes().getLength();
    });
    ForEveryRefusal("BexTreeBuilder", [] {
        const DOM_Document document = DOM_Document::createDocument();
        BexTreeBuilder builder(document);
        builder.OpenElement(u"root");
        for (int i = 0; i < 20; ++i) {
            builder.OpenElement(u"element");
            builder.AddAttribute(u"name", "a narrow value");
            builder.AddText("some text");
            builder.AddCDATASection(u"data");
            builder.AddComment(u"comment");
            builder.AddProcessingInstruction(u"target", u"data");
            builder.CloseElement();
        }
        builder.CloseElement();
        return document.getDocumentElement().getChildNodes().getLength();
    });
}

TEST(FrameworkMemoryEnds, CopiesOfATreeLeaveItAsItIs) {
    const DOM_Document original = BuiltByHand();
    ForEveryRefusal("cloneNode of a document",
                    [&] { return DOM_Document(original.cloneNode(true)).getDocumentElement().getTagName(); });
    ForEveryRefusal("importNode", [&] {
        DOM_Document other = DOM_Document::createDocument();
        return other.importNode(original.getDocumentElement(), true).getChildNodes().getLength();
    });
    ForEveryRefusal("DOMString", [] {
        DOMString text("some narrow text that is long enough");
        text += DOMString(u"and more");
        const std::unique_ptr<char[]> narrow((text + text.substringData(3, 30)).transcode());
        return std::string(narrow.get());
    });
    EXPECT_EQ(original.getDocumentElement().getChildNodes().getLength(), 6U);
}

/** Keeps the lines in memory of its own, so that none is lost to a refusal. */
class Lines {
public:
    Lines() { BexQorTrace::SetSink(&Lines::Take, this); }
    ~Lines() { BexQorTrace::SetSink(nullptr, nullptr); }
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;

    std::string Text() const { return std::string(text, length); }
    void Clear() { length = 0; }

private:
    static void Take(const char*, const char* iText, int iLength, void* ioLines) {
        auto& self = *static_cast<Lines*>(ioLines);
        for (int i = 0; i < iLength && self.length < sizeof self.text; ++i) {
            self.text[self.length++] = iText[i];
        }
    }

    char text[4096] = {};
    std::size_t length = 0;
};

TEST(FrameworkMemoryEnds, TraceLinesAreWholeOrLost) {
    BexQorTrace channel("MemoryEnds", "", "", 16);
    BexQorTrace::SetOn("MemoryEnds", 1);
    const std::u16string wideText = u"\u20ac and more than fits where it stands";
    const BexUnicodeString wide(wideText.data(), static_cast<int>(wideText.size()));
    const std::vector<std::string> lines = {
        ">> outer",
        "  a message of some length, the number 12345 and ? and more than fits where it "
        "stands",
        "  >> inner",
        "    0.125",
        "  << inner",
        "<< outer"};
    ForEveryRefusal(
        "BexQorTraceStep", Contract::kNeverThrow, [] { return std::make_unique<Lines>(); },
        [&](Lines& ioLines) {
            ioLines.Clear();
            BexQorTraceStep outer(channel, "outer");
            outer << "a message of some length, the number " << 12345 << " and " << wide << std::endl;
            BexQorTraceStep inner(channel, "inner");
            inner << 0.125;
        },
        [&](const Lines& iLines, bool isUndisturbed) {
            std::string expected;
            std::size_t line = 0;
            const std::string text = iLines.Text();
            for (std::size_t start = 0; start < text.size();) {
                const std::size_t end = text.find('\n', start);
                ASSERT_NE(end, std::string::npos);
                const std::string one = text.substr(start, end - start);
                while (line < lines.size() &&
                       lines[line].find(one.substr(one.find_first_not_of(' '))) == std::string::npos) {
                    ++line;
                }
                EXPECT_LT(line, lines.size()) << one;
                start = end + 1;
            }
            for (const std::string& one : lines) {
                expected += one + "\n";
            }
            EXPECT_TRUE(!isUndisturbed || text == expected) << text;
        });
}

TEST(FrameworkMemoryEnds, TraceLineBehindALostOneIsThere) {
    BexQorTrace channel("MemoryEnds", "", "", 16);
    BexQorTrace::SetOn("MemoryEnds", 1);
    const std::string tooLong(1000, 'x');
    const Lines lines;
    {
        BexQorTraceStep step(channel, "step");
        {
            const RefusedMemory::Refusal refusal(0, RefusedMemory::Mode::kFromThenOn);
            step << tooLong << std::endl;
        }
        step << "next" << std::endl;
    }
    EXPECT_EQ(lines.Text(), ">> step\n  next\n<< step\n");
}

TEST(FrameworkMemoryEnds, ChannelsComeOrDoNotCome) {
    ForEveryRefusal("BexQorTrace", [] {
        const BexQorTrace channel("a channel with a name of some length", "a title of some length", "STDOUT", 100);
        return BexQorTrace::SetOn("a channel with a name of some length", 1);
    });
    EXPECT_EQ(BexQorTrace::SetOn("a channel with a name of some length", 1), 0);
}

TEST(FrameworkMemoryEnds, DictionaryHasAnEntryOrNot) {
    static constexpr GUID kIid = {0x5E570099, 5, 5, {5, 5, 5, 5, 5, 5, 5, 5}};
    BexMetaClass meta(kIid, "AnInterfaceWithANameOfSomeLength", nullptr, nullptr, BexTypeOfClassInterface);
    ForEveryRefusal("the dictionary", [&] {
        const BexFillDictionary fill(kIid, CLSID_BexMetaClass, &meta, nullptr);
        AddDictionary(kIid, CLSID_BexMetaClass, "another name of some length", "entry", nullptr, &meta, nullptr,
                      nullptr);
        return FindInDictionary("another name of some length") == &meta && FindInDictionary(kIid) == &meta;
    });
    EXPECT_EQ(FindInDictionary(kIid), nullptr);
}

TEST(FrameworkMemoryEnds, TimeIsShownOrNot) {
    ForEveryRefusal("BexTime", [] { return BexTime(2004, 2, 29).ConvertToString("%Y-%m-%d %H:%M:%S and more text"); });
}

}  // namespace
