#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMDocumentType.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <RunOnThreads.h>
#include <TemporaryDirectory.h>
#include <XmlText.h>
#include <algorithm>
#include <atomic>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void Parse(DOMParser& ioParser, const std::string& iText) {
    const TextSource source(iText);
    ioParser.parse(source.Get());
}

/** The tree as "name(child,child)", text in quotes, comments as !text, instructions as ?target data. */
std::string Shape(const DOM_Node& iNode) {
    switch (iNode.getNodeType()) {
        case DOM_Node::TEXT_NODE:
            return "'" + Narrow(iNode.getNodeValue()) + "'";
        case DOM_Node::CDATA_SECTION_NODE:
            return "[" + Narrow(iNode.getNodeValue()) + "]";
        case DOM_Node::COMMENT_NODE:
            return "!" + Narrow(iNode.getNodeValue());
        case DOM_Node::PROCESSING_INSTRUCTION_NODE:
            return "?" + Narrow(iNode.getNodeName()) + " " + Narrow(iNode.getNodeValue());
        default:
            break;
    }
    std::string below;
    for (DOM_Node child = iNode.getFirstChild(); child != 0; child = child.getNextSibling()) {
        if (child.getNodeType() != DOM_Node::DOCUMENT_TYPE_NODE) {
            below += (below.empty() ? "" : ",") + Shape(child);
        }
    }
    return Narrow(iNode.getNodeName()) + (below.empty() ? "" : "(" + below + ")");
}

/** A source whose stream behaves as the test wants. */
class ScriptedSource : public InputSource {
public:
    using Read = std::function<XMLSize_t(XMLByte*, XMLSize_t)>;
    explicit ScriptedSource(Read iRead) : InputSource(StartedMemory()), read(std::move(iRead)) {}

    xercesc::BinInputStream* makeStream() const override { return read ? new Stream(read) : nullptr; }

private:
    /** Xerces-C's own sources take memory from it, so they can only be built when it is started. */
    static xercesc::MemoryManager* StartedMemory() {
        BexXMLParser::Initialize();
        return xercesc::XMLPlatformUtils::fgMemoryManager;
    }

    class Stream : public xercesc::BinInputStream {
    public:
        explicit Stream(Read iRead) : read(std::move(iRead)) {}
        XMLFilePos curPos() const override { return position; }
        XMLSize_t readBytes(XMLByte* const oBytes, const XMLSize_t iMost) override {
            const XMLSize_t count = read(oBytes, iMost);
            position += count;
            return count;
        }
        const XMLCh* getContentType() const override { return nullptr; }

    private:
        Read read;
        XMLFilePos position = 0;
    };

    Read read;
};

/** Gives a text in pieces of a size, then does what the test wants at its end. */
ScriptedSource::Read Pieces(const std::string& iText, std::size_t iSize, const std::function<void()>& iAtEnd = {}) {
    return [iText, iSize, iAtEnd, given = std::size_t{0}](XMLByte* oBytes, XMLSize_t iMost) mutable {
        const std::size_t count = std::min({iText.size() - given, iSize, std::size_t{iMost}});
        if (count == 0 && iAtEnd) {
            iAtEnd();
        }
        std::memcpy(oBytes, iText.data() + given, count);
        given += count;
        return XMLSize_t{count};
    };
}

}  // namespace

TEST(DomParser, HasNoDocumentBeforeAnythingIsParsed) {
    const DOMParser parser;
    EXPECT_TRUE(parser.getDocument().isNull());
    EXPECT_EQ(parser.getErrorText().length(), 0U);
    EXPECT_EQ(parser.getErrorLine(), 0U);
    EXPECT_EQ(parser.getErrorColumn(), 0U);
}

TEST(DomParser, BuildsTheTreeOfTheText) {
    struct Case {
        std::string text;
        std::string shape;
    };
    const Case cases[] = {
        {"<a/>", "#document(a)"},
        {"<a></a>", "#document(a)"},
        {"<a> </a>", "#document(a(' '))"},
        {"<a>\n  <b/>\n</a>\n", "#document(a('\n  ',b,'\n'))"},
        {"<a>x<!--c-->y</a>", "#document(a('x',!c,'y'))"},
        {"<a>x<![CDATA[<y>]]>z</a>", "#document(a('x',[<y>],'z'))"},
        {"<a>x<?p d?>y</a>", "#document(a('x',?p d,'y'))"},
        {"<!--before--><?p d?><a/><!--behind--><?q?>", "#document(!before,?p d,a,!behind,?q )"},
        {"<a>&lt;&gt;&amp;&quot;&apos;</a>", "#document(a('<>&\"''))"},
        {"<a>&#65;&#x42;&#xE9;</a>", "#document(a('AB\xE9'))"},
        {"<a>1 &amp; 2 &lt; 3</a>", "#document(a('1 & 2 < 3'))"},
        {"<a>one\r\ntwo\rthree</a>", "#document(a('one\ntwo\nthree'))"},
        {"<p:a><q:b/></p:a>", "#document(p:a(q:b))"},
        {"<?xml version='1.0'?><a/>", "#document(a)"},
        {"<?xml version=\"1.0\" standalone=\"yes\" ?>\n<a/>", "#document(a)"},
        {"<A><a/></A>", "#document(A(a))"},
        {"<a-b.c_d1><_/></a-b.c_d1>", "#document(a-b.c_d1(_))"},
    };
    for (const Case& one : cases) {
        const DOM_Document document = Parsed(one.text);
        ASSERT_FALSE(document.isNull()) << one.text;
        EXPECT_EQ(Shape(document), one.shape) << one.text;
    }
}

TEST(DomParser, ReadsAttributes) {
    const DOM_Document document = Parsed("<a z='1' b=\"&lt;&quot;'\" x:y='&#233;' n='a\tb\nc' e=''/>");
    const DOM_Element root = document.getDocumentElement();
    EXPECT_EQ(root.getAttributes().getLength(), 5U);
    EXPECT_EQ(Narrow(root.getAttribute("z")), "1");
    EXPECT_EQ(Narrow(root.getAttribute("b")), "<\"'");
    EXPECT_EQ(Narrow(root.getAttribute("x:y")), "\xE9");
    EXPECT_EQ(Narrow(root.getAttribute("n")), "a b c");
    EXPECT_TRUE(root.hasAttribute("e"));
    EXPECT_EQ(Narrow(root.getAttributes().item(0).getNodeName()), "b");
}

TEST(DomParser, KeepsALongTextInOneNode) {
    std::string text;
    std::string escaped;
    for (int count = 0; count < 100000; ++count) {
        text += count % 7 == 0 ? "&" : "x";
        escaped += count % 7 == 0 ? "&amp;" : "x";
    }
    const DOM_Document document = Parsed("<a>" + escaped + "</a>");
    ASSERT_FALSE(document.isNull());
    EXPECT_EQ(document.getDocumentElement().getChildNodes().getLength(), 1U);
    EXPECT_EQ(Narrow(document.getDocumentElement().getFirstChild().getNodeValue()), text);
}

TEST(DomParser, TextThatIsNotADocumentGivesNone) {
    const std::string texts[] = {
        "",
        " ",
        "text",
        "<",
        "<a",
        "<a>",
        "</a>",
        "<a></b>",
        "<a/><b/>",
        "<a/>text",
        "text<a/>",
        "<a><b></a></b>",
        "<a b></a>",
        "<a b=c/>",
        "<a b='1' b='2'/>",
        "<a b='<'/>",
        "<a>&</a>",
        "<a>&amp</a>",
        "<a>]]></a>",
        "<a><!-- -- --></a>",
        "<a><![CDATA[</a>",
        "<!--only a comment-->",
        "<?only an-instruction?>",
        " <?xml version='1.0'?><a/>",
        "<a><?xml version='1.0'?></a>",
        "<?xml version='9.9'?><a/>",
        "<?xml encoding='UTF-8'?><a/>",
        "<a>&#0;</a>",
        "<a>&#xD800;</a>",
        "<a>&#x110000;</a>",
        "<a>&#1;</a>",
        "<a>\x01</a>",
        "<a b='\x01'/>",
        "<1a/>",
        "<a><!DOCTYPE a></a>",
    };
    for (const std::string& text : texts) {
        EXPECT_TRUE(Parsed(text).isNull()) << text;
    }
}

TEST(DomParser, CutTextGivesNoDocument) {
    const std::string text =
        "<?xml version='1.0' encoding='ISO-8859-1'?><!DOCTYPE a SYSTEM 'x'><!--c--><a b='1&lt;' c=\"2\"><!--d-->text "
        "&#65; "
        "&amp;<b/><![CDATA[data]]><?target data?><c>more</c></a>";
    ASSERT_FALSE(Parsed(text).isNull());
    for (std::size_t length = 0; length < text.size(); ++length) {
        EXPECT_TRUE(Parsed(text.substr(0, length)).isNull()) << text.substr(0, length);
    }
}

TEST(DomParser, NulAnywhereGivesNoDocument) {
    const std::string text =
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<!--c-->\n<a b='1'>text &#65;<![CDATA[d]]><?t "
        "d?><b/></a>\n<!--e-->\n ";
    ASSERT_FALSE(Parsed(text).isNull());
    for (std::size_t at = 0; at <= text.size(); ++at) {
        std::string damaged = text;
        damaged.insert(at, 1, '\0');
        EXPECT_TRUE(Parsed(damaged).isNull()) << "inserted at " << at;
        damaged = text + std::string(at, ' ') + '\0' + "<b>";
        EXPECT_TRUE(Parsed(damaged).isNull()) << at << " blanks behind the root";
    }
    EXPECT_TRUE(Parsed(std::string("<a/>\0", 5)).isNull());
    EXPECT_TRUE(Parsed(std::string("<a/>\0\0\0\0", 8)).isNull());
    EXPECT_TRUE(Parsed(std::string(100, '\0')).isNull());
}

TEST(DomParser, NulFarBehindTheRootGivesNoDocument) {
    for (const std::size_t blanks : {1000UL, 16383UL, 16384UL, 49152UL, 200000UL, 1000000UL}) {
        const std::string text = "<a/>" + std::string(blanks, ' ');
        EXPECT_FALSE(Parsed(text).isNull()) << blanks;
        EXPECT_TRUE(Parsed(text + '\0').isNull()) << blanks;
        EXPECT_TRUE(Parsed(text + '\0' + "<b/>").isNull()) << blanks;
    }
}

TEST(DomParser, ErrorFarBehindTheRootGivesNoDocument) {
    for (const char* tail : {"x", "<b/>", "</a>", "&amp;", "<![CDATA[]]>", "<!-- ", "<?t", "<"}) {
        EXPECT_TRUE(Parsed("<a/>" + std::string(300000, '\n') + tail).isNull()) << tail;
    }
}

TEST(DomParser, EntityOtherThanXmlsFiveGivesNoDocument) {
    for (const char* text : {"<a>&x;</a>", "<a b='&x;'/>", "<a>&nbsp;</a>", "<!DOCTYPE a SYSTEM 'x'><a>&x;</a>",
                             "<!DOCTYPE a SYSTEM 'x'><a b='&x;'/>", "<!DOCTYPE a PUBLIC 'p' 'x'><a>&nbsp;</a>",
                             "<?xml version='1.0' standalone='no'?><!DOCTYPE a SYSTEM 'x'><a>&x;</a>"}) {
        EXPECT_TRUE(Parsed(text).isNull()) << text;
    }
}

TEST(DomParser, InternalSubsetGivesNoDocument) {
    for (const char* text : {
             "<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>",
             "<!DOCTYPE a [<!ENTITY x 'y'>]><a/>",
             "<!DOCTYPE a [<!ENTITY % x 'y'> %x;]><a/>",
             "<!DOCTYPE a [<!ENTITY x SYSTEM 'y'>]><a/>",
             "<!DOCTYPE a [<!ATTLIST a b CDATA 'c'>]><a/>",
             "<!DOCTYPE a [<!ELEMENT a ANY>]><a/>",
             "<!DOCTYPE a [<!NOTATION n SYSTEM 'x'>]><a/>",
             "<!DOCTYPE a [<!--comment-->]><a/>",
             "<!DOCTYPE a [<?target data?>]><a/>",
             "<!DOCTYPE a []><a/>",
             "<!DOCTYPE a[ ]><a/>",
             "<!DOCTYPE a SYSTEM 'x' [<!ENTITY x 'y'>]><a/>",
             "<!DOCTYPE a PUBLIC 'p' 'x' []><a/>",
             "<!DOCTYPE a [<!ENTITY l0 'ha'><!ENTITY l1 '&l0;&l0;'><!ENTITY l2 '&l1;&l1;'>]><a>&l2;</a>",
         }) {
        EXPECT_TRUE(Parsed(text).isNull()) << text;
    }
}

TEST(DomParser, DocumentTypeWithoutInternalSubsetIsReadPast) {
    for (const char* text : {
             "<!DOCTYPE a><a>text</a>",
             "<!DOCTYPE a SYSTEM 'no-such-file.dtd'><a>text</a>",
             "<!DOCTYPE a SYSTEM \"http://host.invalid/x.dtd\"><a>text</a>",
             "<!DOCTYPE a SYSTEM 'file:///no/such/file'><a>text</a>",
             "<!DOCTYPE a PUBLIC '-//X//Y' 'no-such-file.dtd'><a>text</a>",
             "<!DOCTYPE a SYSTEM 'x[y]>.dtd'><a>text</a>",
             "<!DOCTYPE a SYSTEM ''><a>text</a>",
             "<!DOCTYPE b SYSTEM 'x'><a>text</a>",
         }) {
        const DOM_Document document = Parsed(text);
        ASSERT_FALSE(document.isNull()) << text;
        EXPECT_EQ(Shape(document.getDocumentElement()), "a('text')") << text;
    }
}

TEST(DomParser, DocumentTypeStandsInTheTreeWhereItStoodInTheText) {
    for (const int before : {0, 1, 2}) {
        const std::string text = std::string(before > 0 ? "<!--c-->" : "") + (before > 1 ? "<?t d?>" : "") +
                                 "<!DOCTYPE a PUBLIC 'p' 's'><!--e--><a/>";
        const DOM_Document document = Parsed(text);
        ASSERT_FALSE(document.isNull()) << text;
        const DOM_NodeList children = document.getChildNodes();
        ASSERT_EQ(children.getLength(), static_cast<unsigned>(before) + 3) << text;
        const DOM_Node type = children.item(static_cast<unsigned>(before));
        ASSERT_EQ(type.getNodeType(), DOM_Node::DOCUMENT_TYPE_NODE) << text;
        const auto* native = static_cast<const xercesc::DOMDocumentType*>(type.getNative());
        EXPECT_EQ(std::u16string_view(native->getName()), u"a");
        EXPECT_EQ(std::u16string_view(native->getPublicId()), u"p");
        EXPECT_EQ(std::u16string_view(native->getSystemId()), u"s");
    }
}

TEST(DomParser, TreeKnowsTheVersionOfItsText) {
    const auto versionOf = [](const DOM_Document& iDocument) {
        return std::u16string(static_cast<const xercesc::DOMDocument*>(iDocument.getNative())->getXmlVersion());
    };
    EXPECT_EQ(versionOf(Parsed("<?xml version='1.0'?><a/>")), u"1.0");
    EXPECT_EQ(versionOf(Parsed("<?xml version='1.1'?><a/>")), u"1.1");
}

TEST(DomParser, TreeRefusesWhatATreeBuiltByHandDoes) {
    DOM_Document document = Parsed("<r><c/></r>");
    DOM_Node root = document.getDocumentElement();
    DOM_Node child = root.getFirstChild();
    EXPECT_THROW(child.appendChild(root), xercesc::DOMException);
    EXPECT_THROW(root.appendChild(Parsed("<o/>").createElement("x")), xercesc::DOMException);
    EXPECT_THROW(root.appendChild(document.createAttribute("a")), xercesc::DOMException);
}

TEST(DomParser, WhatOnlyLooksLikeAnInternalSubsetIsRead) {
    for (const char* text :
         {"<!-- <!DOCTYPE a [<!ENTITY x 'y'>]> --><a>text</a>", "<?p <!DOCTYPE a [<!ENTITY x 'y'>]> ?><a>text</a>"}) {
        EXPECT_FALSE(Parsed(text).isNull()) << text;
    }
    const DOM_Document document = Parsed("<a><![CDATA[<!DOCTYPE a [<!ENTITY x 'y'>]>]]></a>");
    ASSERT_FALSE(document.isNull());
    EXPECT_EQ(Shape(document.getDocumentElement()), "a([<!DOCTYPE a [<!ENTITY x 'y'>]>])");
}

TEST(DomParser, ExternalSubsetThatExistsIsNotRead) {
    const TemporaryDirectory directory;
    const std::string file =
        directory.Write("a.dtd", "<!ELEMENT a ANY><!ATTLIST a added CDATA 'by the file'><!ENTITY x 'by the file'>");
    for (const std::string& name : {file, "file://" + file}) {
        const std::string type = "<!DOCTYPE a SYSTEM '" + name + "'>";
        const DOM_Document document = Parsed(type + "<a>text</a>");
        ASSERT_FALSE(document.isNull());
        EXPECT_FALSE(document.getDocumentElement().hasAttributes());
        EXPECT_TRUE(Parsed(type + "<a>&x;</a>").isNull());
        EXPECT_TRUE(Parsed("<!DOCTYPE a [<!ENTITY x SYSTEM '" + name + "'>]><a>&x;</a>").isNull());
        EXPECT_TRUE(Parsed("<!DOCTYPE a [<!ENTITY % x SYSTEM '" + name + "'> %x;]><a/>").isNull());
    }
}

TEST(DomParser, NoFileThatTheTextNamesIsOpened) {
    const TemporaryDirectory directory;
    const std::string pipe = (directory.Path() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int end = ::open(pipe.c_str(), O_RDWR | O_NONBLOCK);
    ASSERT_GE(end, 0);
    const std::string bytes = "<not a document type";
    ASSERT_EQ(::write(end, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    for (const std::string& name : {pipe, "file://" + pipe}) {
        Parsed("<!DOCTYPE a SYSTEM '" + name + "'><a/>");
        Parsed("<!DOCTYPE a PUBLIC 'p' '" + name + "'><a/>");
        Parsed("<!DOCTYPE a [<!ENTITY x SYSTEM '" + name + "'>]><a>&x;</a>");
        Parsed("<!DOCTYPE a [<!ENTITY % x SYSTEM '" + name + "'> %x;]><a/>");
        Parsed("<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:noNamespaceSchemaLocation='" + name +
               "'/>");
        Parsed("<a xmlns='urn:a' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='urn:a " +
               name + "'/>");
        Parsed("<a xmlns:xi='http://www.w3.org/2001/XInclude'><xi:include href='" + name + "' parse='text'/></a>");
        Parsed("<?xml-stylesheet href='" + name + "' type='text/xsl'?><a/>");
        int waiting = 0;
        ASSERT_EQ(::ioctl(end, FIONREAD, &waiting), 0);
        EXPECT_EQ(waiting, static_cast<int>(bytes.size())) << "something read from the pipe";
    }
    ::close(end);
}

TEST(DomParser, SchemaLocationsAndIncludesAreTextLikeAnyOther) {
    const DOM_Document document = Parsed(
        "<a xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:noNamespaceSchemaLocation='no-such.xsd'>"
        "<xi:include xmlns:xi='http://www.w3.org/2001/XInclude' href='no-such.xml'/></a>");
    ASSERT_FALSE(document.isNull());
    EXPECT_EQ(Shape(document), "#document(a(xi:include))");
}

TEST(DomParser, ErrorAfterAGoodDocumentLeavesNone) {
    DOMParser parser;
    for (const char* bad : {"", "<a>", "<a/>x", "<!DOCTYPE a []><a/>", "<a>&x;</a>"}) {
        Parse(parser, "<good/>");
        ASSERT_FALSE(parser.getDocument().isNull());
        Parse(parser, bad);
        EXPECT_TRUE(parser.getDocument().isNull()) << bad;
    }
    Parse(parser, "<good/>");
    Parse(parser, std::string("<a/>\0", 5));
    EXPECT_TRUE(parser.getDocument().isNull());
}

TEST(DomParser, CanBeUsedAgain) {
    DOMParser parser;
    for (int round = 0; round < 50; ++round) {
        const std::string name = "a" + std::to_string(round);
        Parse(parser, "<" + name + "/>");
        ASSERT_FALSE(parser.getDocument().isNull());
        EXPECT_EQ(Narrow(parser.getDocument().getDocumentElement().getTagName()), name);
        Parse(parser, "<" + name);
        EXPECT_TRUE(parser.getDocument().isNull());
    }
}

TEST(DomParser, DocumentOutlivesTheParserAndItsLaterTexts) {
    DOM_Document first;
    DOM_Document second;
    {
        DOMParser parser;
        Parse(parser, "<first>1</first>");
        first = parser.getDocument();
        Parse(parser, "<second>2</second>");
        second = parser.getDocument();
        Parse(parser, "<broken>");
    }
    EXPECT_EQ(Shape(first), "#document(first('1'))");
    EXPECT_EQ(Shape(second), "#document(second('2'))");
    first.getDocumentElement().appendChild(first.createElement("added"));
    EXPECT_EQ(Shape(first), "#document(first('1',added))");
}

TEST(DomParser, GrammarReuseChangesNothing) {
    const TextSource source("<a/>");
    DOMParser parser;
    parser.parse(source.Get(), true);
    EXPECT_FALSE(parser.getDocument().isNull());
    parser.parse(source.Get(), true);
    EXPECT_FALSE(parser.getDocument().isNull());
}

TEST(DomParser, ReadsASourceThatGivesItsTextInPieces) {
    const std::string text = "<?xml version='1.0' encoding='UTF-8'?><a b='1'>t\xC3\xA9xt<!--c--><b/>\xE2\x82\xAC</a>\n";
    for (const std::size_t size : {1UL, 2UL, 3UL, 7UL, 1000UL}) {
        DOMParser parser;
        parser.parse(ScriptedSource(Pieces(text, size)));
        ASSERT_FALSE(parser.getDocument().isNull()) << size;
        EXPECT_EQ(Shape(parser.getDocument()), "#document(a('t\xE9xt',!c,b,'?'))") << size;
    }
}

TEST(DomParser, NothingThatASourceThrowsGetsOut) {
    const std::string good = "<a/>";
    const std::string large = "<a>" + std::string(300000, 'x') + "</a>";
    const std::function<void()> throwers[] = {
        [] { throw std::runtime_error("broken"); },
        [] { throw std::bad_alloc(); },
        [] { throw 42; },
        [] { throw "text"; },
    };
    for (const std::string& text : {std::string(), std::string("<a>"), good, large}) {
        for (const auto& thrower : throwers) {
            DOMParser parser;
            Parse(parser, good);
            EXPECT_NO_THROW(parser.parse(ScriptedSource(Pieces(text, 1000, thrower))));
            EXPECT_TRUE(parser.getDocument().isNull());
            Parse(parser, good);
            EXPECT_FALSE(parser.getDocument().isNull()) << "the parser is usable afterwards";
        }
    }
}

TEST(DomParser, SourceWithoutAStreamGivesNoDocument) {
    DOMParser parser;
    Parse(parser, "<a/>");
    EXPECT_NO_THROW(parser.parse(ScriptedSource(nullptr)));
    EXPECT_TRUE(parser.getDocument().isNull());
}

TEST(DomParser, TellsWhatIsWrongAndWhere) {
    DOMParser parser;
    Parse(parser, "<a>\n  <b>\n</a>");
    EXPECT_GT(parser.getErrorText().length(), 0U);
    EXPECT_EQ(parser.getErrorLine(), 3U);
    EXPECT_GT(parser.getErrorColumn(), 0U);
    Parse(parser, "<a/>");
    EXPECT_EQ(parser.getErrorText().length(), 0U);
    EXPECT_EQ(parser.getErrorLine(), 0U);
    EXPECT_EQ(parser.getErrorColumn(), 0U);
    for (const char* bad : {"", "<!DOCTYPE a []><a/>", "<a>&x;</a>", "<?xml version='1.0' encoding='no-such'?><a/>"}) {
        Parse(parser, bad);
        EXPECT_GT(parser.getErrorText().length(), 0U) << bad;
    }
}

TEST(DomParser, ErrorsFoundBeforeParsingHaveTheirPlaceToo) {
    struct Case {
        std::string before;
        unsigned long line;
        unsigned long column;
    };
    const Case cases[] = {
        {"<a>", 1, 4},
        {"<a>\n", 2, 1},
        {"<a>\r\n", 2, 1},
        {"<a>\r", 2, 1},
        {"<a>\r\r\n\n\rxy", 5, 3},
        {"<a>\n\xC3\xA9", 2, 2},
        {"<a>\xE2\x82\xAC", 1, 5},
        {"<a>\xC3\x80", 1, 5},
        {"<a>\xF0\x9D\x84\x9E", 1, 6},
    };
    DOMParser parser;
    for (const Case& tried : cases) {
        Parse(parser, tried.before + '\0' + "</a>");
        EXPECT_EQ(parser.getErrorLine(), tried.line) << tried.before;
        EXPECT_EQ(parser.getErrorColumn(), tried.column) << tried.before;
        Parse(parser, tried.before + '\xFF' + "</a>");
        EXPECT_EQ(parser.getErrorLine(), tried.line) << tried.before;
        EXPECT_EQ(parser.getErrorColumn(), tried.column) << tried.before;
    }
    const std::string narrow = "<?xml version='1.0' encoding='ISO-8859-1'?>\r\n<a>\xE9\xFF";
    Parse(parser, narrow + '\0' + "</a>");
    EXPECT_EQ(parser.getErrorLine(), 2U);
    EXPECT_EQ(parser.getErrorColumn(), 6U);
    const std::u16string wide = std::u16string(u"\uFEFF<a>\r\n\u00E9\U0001D11E") + u'\0' + u"</a>";
    Parse(parser, std::string(reinterpret_cast<const char*>(wide.data()), wide.size() * 2));
    EXPECT_EQ(parser.getErrorLine(), 2U);
    EXPECT_EQ(parser.getErrorColumn(), 4U);
    for (const std::string& twice : {std::string("\xEF\xBB\xBF\xEF\xBB\xBF"), std::string("\xFF\xFE\xFF\xFE")}) {
        Parse(parser, twice);
        EXPECT_EQ(parser.getErrorLine(), 1U);
        EXPECT_EQ(parser.getErrorColumn(), 1U);
    }
}

TEST(DomParser, TreeIsCheckedByXercesAgainWhenItIsThere) {
    const DOM_Document document = Parsed("<a/>");
    EXPECT_TRUE(static_cast<const xercesc::DOMDocument*>(document.getNative())->getStrictErrorChecking());
}

TEST(DomParser, WorksOnSeveralThreadsAtOnce) {
    std::atomic<int> good{0};
    RunOnThreads(4, [&good](int iThread) {
        for (int round = 0; round < 100; ++round) {
            const std::string value = std::to_string(iThread) + "." + std::to_string(round);
            const DOM_Document document = Parsed("<a>" + value + "</a>");
            const bool broken = Parsed("<a>" + value).isNull();
            good += broken && Shape(document) == "#document(a('" + value + "'))" ? 1 : 0;
        }
    });
    EXPECT_EQ(good, 400);
}
