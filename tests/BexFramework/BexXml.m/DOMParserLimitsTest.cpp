#include <BexDom.h>

#include <gtest/gtest.h>

#include <ProcessorTime.h>
#include <SmallStackThread.h>
#include <XmlText.h>
#include <algorithm>
#include <string>

namespace {

std::string Nested(int iDepth) {
    std::string text;
    for (int depth = 0; depth < iDepth; ++depth) {
        text += "<a>";
    }
    for (int depth = 0; depth < iDepth; ++depth) {
        text += "</a>";
    }
    return text;
}

std::string ElementWithAttributes(const std::string& iName, int iFirst, int iCount) {
    std::string text = "<" + iName;
    for (int number = iFirst; number < iFirst + iCount; ++number) {
        text += " n" + std::to_string(number) + "=''";
    }
    return text + "/>";
}

std::string ElementsOfNames(int iFirst, int iCount) {
    std::string text;
    for (int number = iFirst; number < iFirst + iCount; ++number) {
        text += "<n" + std::to_string(number) + "/>";
    }
    return text;
}

/** A document of that many distinct element names. */
std::string ManyElementNames(int iCount) {
    return "<n0>" + ElementsOfNames(1, iCount - 1) + "</n0>";
}

std::string InstructionsOfNames(int iCount) {
    std::string text;
    for (int number = 0; number < iCount; ++number) {
        text += "<?n" + std::to_string(number) + " d?>";
    }
    return text;
}

std::string ElementsOfAttributeNames(int iCount) {
    std::string text;
    for (int number = 0; number < iCount; number += 512) {
        text += ElementWithAttributes("e", number, std::min(512, iCount - number));
    }
    return text;
}

/** A document of that many distinct attribute names. */
std::string ManyAttributeNames(int iCount) {
    return "<r>" + ElementsOfAttributeNames(iCount) + "</r>";
}

std::string Repeated(const std::string& iText, int iCount) {
    std::string text;
    text.reserve(iText.size() * static_cast<std::size_t>(iCount));
    for (int count = 0; count < iCount; ++count) {
        text += iText;
    }
    return text;
}

}  // namespace

TEST(DomParserLimits, AreThosePromised) {
    EXPECT_EQ(DOMParser::kMaxDepth, 1024);
    EXPECT_EQ(DOMParser::kMaxAttributes, 1024);
    EXPECT_EQ(DOMParser::kMaxNames, 16384);
}

TEST(DomParserLimits, DepthUpToTheLimitIsRead) {
    EXPECT_FALSE(Parsed(Nested(1023)).isNull());
    EXPECT_FALSE(Parsed(Nested(1024)).isNull());
    EXPECT_TRUE(Parsed(Nested(1025)).isNull());
}

TEST(DomParserLimits, ElementWithoutContentCountsForTheDepth) {
    const auto withInnermost = [](int iOuter) { return Repeated("<a>", iOuter) + "<b/>" + Repeated("</a>", iOuter); };
    EXPECT_FALSE(Parsed(withInnermost(1022)).isNull());
    EXPECT_FALSE(Parsed(withInnermost(1023)).isNull());
    EXPECT_TRUE(Parsed(withInnermost(1024)).isNull());
}

TEST(DomParserLimits, DepthIsThatOfOpenElementsNotOfAllBefore) {
    const std::string branch = Repeated("<a>", 1023) + Repeated("</a>", 1023);
    EXPECT_FALSE(Parsed("<r>" + branch + branch + branch + "</r>").isNull());
    EXPECT_FALSE(Parsed("<r>" + Repeated("<a/>", 5000) + branch + "</r>").isNull());
    EXPECT_TRUE(Parsed("<r>" + branch + "<a>" + branch + "</a></r>").isNull());
}

TEST(DomParserLimits, HoldBehindWhateverIsSkipped) {
    for (const char* skipped : {"<!---->", "<!--c-->", "<?t?>", "<!DOCTYPE a>", "<!DOCTYPE a PUBLIC '' ''>"}) {
        EXPECT_FALSE(Parsed(skipped + Nested(1024)).isNull()) << skipped;
        EXPECT_TRUE(Parsed(skipped + Nested(1025)).isNull()) << skipped;
    }
    EXPECT_TRUE(Parsed("<a><![CDATA[]]>" + Nested(1024) + "</a>").isNull());
}

TEST(DomParserLimits, AttributesUpToTheLimitAreRead) {
    const DOM_Document document = Parsed(ElementWithAttributes("e", 0, 1024));
    ASSERT_FALSE(document.isNull());
    EXPECT_EQ(document.getDocumentElement().getAttributes().getLength(), 1024U);
    EXPECT_FALSE(Parsed(ElementWithAttributes("e", 0, 1023)).isNull());
    EXPECT_TRUE(Parsed(ElementWithAttributes("e", 0, 1025)).isNull());
    EXPECT_TRUE(Parsed("<r><e/>" + ElementWithAttributes("e", 0, 1025) + "</r>").isNull());
}

TEST(DomParserLimits, AttributesAreCountedForEachElement) {
    const std::string element = ElementWithAttributes("e", 0, 1024);
    EXPECT_FALSE(Parsed("<r>" + element + element + element + "</r>").isNull());
}

TEST(DomParserLimits, NamespaceDeclarationsAreAttributes) {
    const std::string declared = ElementWithAttributes("e xmlns='urn:a' xmlns:p='urn:p'", 0, 1022);
    EXPECT_FALSE(Parsed(declared).isNull());
    EXPECT_TRUE(Parsed(ElementWithAttributes("e xmlns='urn:a' xmlns:p='urn:p'", 0, 1023)).isNull());
}

TEST(DomParserLimits, ElementNamesUpToTheLimitAreRead) {
    EXPECT_FALSE(Parsed(ManyElementNames(16383)).isNull());
    EXPECT_FALSE(Parsed(ManyElementNames(16384)).isNull());
    EXPECT_TRUE(Parsed(ManyElementNames(16385)).isNull());
}

TEST(DomParserLimits, AttributeNamesUpToTheLimitAreRead) {
    EXPECT_FALSE(Parsed(ManyAttributeNames(16383)).isNull());
    EXPECT_FALSE(Parsed(ManyAttributeNames(16384)).isNull());
    EXPECT_TRUE(Parsed(ManyAttributeNames(16385)).isNull());
}

TEST(DomParserLimits, ElementNamesAndAttributeNamesAreCountedApart) {
    const std::string attributes = ElementsOfAttributeNames(16384);
    EXPECT_FALSE(Parsed("<r>" + ElementsOfNames(0, 16382) + attributes + "</r>").isNull());
    EXPECT_TRUE(Parsed("<r>" + ElementsOfNames(0, 16383) + attributes + "</r>").isNull());
}

TEST(DomParserLimits, ANameThatComesAgainIsNotCountedAgain) {
    const std::string names = ManyElementNames(16384);
    std::string text = names;
    text.insert(text.size() - 5, names);
    EXPECT_FALSE(Parsed(text).isNull());
    EXPECT_FALSE(Parsed("<r>" + Repeated("<a b=''/>", 40000) + "</r>").isNull());
}

TEST(DomParserLimits, NameOfAnElementIsOneHoweverItsTagsEnd) {
    std::string text = "<r>";
    for (int number = 1; number < 16384; ++number) {
        const std::string name = "n" + std::to_string(number);
        text.append("<" + name + "/><" + name + " /><" + name + " b=''/><" + name + "></" + name + "\n>");
    }
    EXPECT_FALSE(Parsed(text + "</r>").isNull());
    EXPECT_TRUE(Parsed(text + "<n16384/></r>").isNull());
}

TEST(DomParserLimits, NameOfAnAttributeIsOneHoweverItsValueFollows) {
    std::string text = "<r>";
    for (int number = 0; number < 16384; ++number) {
        const std::string name = "x" + std::to_string(number);
        text.append("<e " + name + "=''/><e " + name + " = ''/><e\n" + name + "\n=\t\"\"/>");
    }
    EXPECT_FALSE(Parsed(text + "</r>").isNull());
    EXPECT_TRUE(Parsed(text + "<e x16384=''/></r>").isNull());
}

TEST(DomParserLimits, EachTextIsCountedAnew) {
    DOMParser parser;
    for (int round = 0; round < 3; ++round) {
        std::string text = "<r>";
        for (int number = 0; number < 10000; ++number) {
            text += "<n" + std::to_string(round) + "x" + std::to_string(number) + "/>";
        }
        const TextSource source(text + "</r>");
        parser.parse(source.Get());
        EXPECT_FALSE(parser.getDocument().isNull()) << round;
    }
}

TEST(DomParserLimits, HugeNestingIsRefusedQuickly) {
    for (const std::string& text : {Nested(1000000), Repeated("<a>", 3000000), Repeated("<a b='c'>", 1000000)}) {
        const ProcessorTime time;
        EXPECT_TRUE(Parsed(text).isNull());
        EXPECT_LT(time.Seconds(), ProcessorTime::kQuick);
    }
}

TEST(DomParserLimits, HugeNumbersOfAttributesAndNamesAreRefusedQuickly) {
    for (const std::string& text :
         {ElementWithAttributes("e", 0, 500000), ManyElementNames(500000), ManyAttributeNames(500000)}) {
        const ProcessorTime time;
        EXPECT_TRUE(Parsed(text).isNull());
        EXPECT_LT(time.Seconds(), ProcessorTime::kQuick);
    }
}

TEST(DomParserLimits, OtherwiseLargeTextsAreReadQuickly) {
    struct Case {
        std::string name;
        std::string text;
    };
    const Case cases[] = {
        {"siblings", "<r>" + Repeated("<a/>", 500000) + "</r>"},
        {"siblings far down", Repeated("<a>", 1000) + Repeated("<b/>", 200000) + Repeated("</a>", 1000)},
        {"references", "<r>" + Repeated("&amp;", 500000) + "</r>"},
        {"numeric references", "<r>" + Repeated("&#65;", 500000) + "</r>"},
        {"references in an attribute", "<r a='" + Repeated("&lt;", 500000) + "'/>"},
        {"comments", "<r>" + Repeated("<!--c-->", 300000) + "</r>"},
        {"comments before the root", Repeated("<!--c-->", 300000) + "<r/>"},
        {"instructions", "<r>" + Repeated("<?t d?>", 300000) + "</r>"},
        {"CDATA sections", "<r>" + Repeated("<![CDATA[c]]>", 300000) + "</r>"},
        {"text", "<r>" + std::string(5000000, 'x') + "</r>"},
        {"lines", "<r>" + std::string(3000000, '\n') + "</r>"},
        {"line ends", "<r>" + Repeated("\r\n", 1500000) + "</r>"},
        {"attribute", "<r a='" + std::string(3000000, 'x') + "'/>"},
        {"name", "<" + std::string(1000000, 'n') + "/>"},
        {"attribute name", "<r " + std::string(1000000, 'n') + "=''/>"},
        {"comment", "<!--" + std::string(3000000, 'x') + "--><r/>"},
        {"instruction", "<?t " + std::string(3000000, 'x') + "?><r/>"},
        {"full elements", "<r>" + Repeated(ElementWithAttributes("e", 0, 1000), 100) + "</r>"},
        {"names of instructions", "<r>" + InstructionsOfNames(300000) + "</r>"},
        {"dashes in a comment", "<!--" + Repeated("- ", 1500000) + "--><r/>"},
        {"brackets in a CDATA section", "<r><![CDATA[" + std::string(3000000, ']') + "]]></r>"},
        {"name of an external subset", "<!DOCTYPE r SYSTEM '" + std::string(3000000, 'x') + "'><r/>"},
        {"blanks within a tag", "<r" + std::string(3000000, ' ') + "/>"},
        {"blanks behind the root", "<r/>" + std::string(3000000, ' ')},
    };
    for (const Case& one : cases) {
        const ProcessorTime time;
        EXPECT_FALSE(Parsed(one.text).isNull()) << one.name;
        EXPECT_LT(time.Seconds(), ProcessorTime::kQuick) << one.name;
    }
}

TEST(DomParserLimits, ReadsOnASmallStack) {
    SmallStackThread::Run([] {
        EXPECT_FALSE(Parsed(Nested(1024)).isNull());
        EXPECT_TRUE(Parsed(Nested(100000)).isNull());
    });
}
