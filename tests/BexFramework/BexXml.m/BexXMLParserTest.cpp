#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <RunOnThreads.h>
#include <XmlText.h>
#include <atomic>
#include <climits>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>

namespace {

/** Runs a check as the first thing of a process of its own: the program is started again for it. */
void ExpectWorksFirst(const std::function<bool()>& iCheck) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::_Exit(iCheck() ? 0 : 1), testing::ExitedWithCode(0), "");
}

bool ReadsADocument() {
    const DOM_Document document = Parsed("<a>text</a>");
    return document != 0 && document.getDocumentElement().getTagName() == "a";
}

std::string AllBytes(InputSource& ioSource) {
    const std::unique_ptr<xercesc::BinInputStream> stream(ioSource.makeStream());
    std::string bytes;
    XMLByte buffer[7];
    while (const XMLSize_t count = stream->readBytes(buffer, sizeof buffer)) {
        bytes.append(reinterpret_cast<const char*>(buffer), count);
    }
    return bytes;
}

}  // namespace

TEST(BexXMLParserFirstCall, ReadingWorks) {
    ExpectWorksFirst(&ReadsADocument);
}

TEST(BexXMLParserFirstCall, ReadingWorksWhenTheParserIsBuiltFirst) {
    ExpectWorksFirst([] {
        DOMParser parser;
        const TextSource source("<a/>");
        parser.parse(source.Get());
        return parser.getDocument() != 0;
    });
}

TEST(BexXMLParserFirstCall, DocumentCreationWorks) {
    ExpectWorksFirst([] {
        DOM_Document document = DOM_Document::createDocument();
        document.appendChild(document.createElement("a"));
        return document.getDocumentElement().getTagName() == "a";
    });
}

TEST(BexXMLParserFirstCall, StartingWorks) {
    ExpectWorksFirst([] { return BexXMLParser::Initialize() == 0 && ReadsADocument(); });
}

TEST(BexXMLParserFirstCall, StartingFromManyThreadsWorks) {
    ExpectWorksFirst([] {
        std::atomic<int> good{0};
        RunOnThreads(16, [&good](int) { good += BexXMLParser::Initialize() == 0 && ReadsADocument() ? 1 : 0; });
        return good == 16;
    });
}

TEST(BexXMLParserInitialize, MayBeCalledAnyNumberOfTimes) {
    for (int count = 0; count < 1000; ++count) {
        ASSERT_EQ(BexXMLParser::Initialize(), 0);
    }
    EXPECT_TRUE(ReadsADocument());
}

TEST(BexXMLParserInitialize, IsNotDisturbedByAHostThatStartsAndEndsXercesItself) {
    ASSERT_EQ(BexXMLParser::Initialize(), 0);
    const DOM_Document before = Parsed("<before/>");
    for (int count = 0; count < 3; ++count) {
        xercesc::XMLPlatformUtils::Initialize();
        xercesc::XMLPlatformUtils::Terminate();
        EXPECT_TRUE(ReadsADocument());
    }
    EXPECT_EQ(Narrow(before.getDocumentElement().getTagName()), "before");
}

TEST(BexXMLParserInitialize, LeavesAHostsOwnStartUsable) {
    xercesc::XMLPlatformUtils::Initialize();
    ASSERT_EQ(BexXMLParser::Initialize(), 0);
    xercesc::XMLPlatformUtils::Terminate();
    EXPECT_TRUE(ReadsADocument());
}

TEST(BexXMLParserMemBufInputSource, GivesTheBytesAndTheSystemIdentifier) {
    const std::string text("a\0b\xFFz", 5);
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(text.data(), static_cast<int>(text.size()), "XPDL"));
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(AllBytes(*source), text);
    EXPECT_EQ(AllBytes(*source), text) << "a source can be read again";
    EXPECT_TRUE(xercesc::XMLString::equals(source->getSystemId(), u"XPDL"));
}

TEST(BexXMLParserMemBufInputSource, ReadsNoMoreThanTheLength) {
    const std::string text("<a/>and more");
    const std::unique_ptr<InputSource> source(BexXMLParser::CreateMemBufInputSource(text.data(), 4, "XPDL"));
    ASSERT_NE(source, nullptr);
    EXPECT_EQ(AllBytes(*source), "<a/>");
}

TEST(BexXMLParserMemBufInputSource, DoesNotCopyTheMemory) {
    std::string text("<a/>");
    const std::unique_ptr<InputSource> source(BexXMLParser::CreateMemBufInputSource(text.data(), 4, "XPDL"));
    ASSERT_NE(source, nullptr);
    text[1] = 'b';
    DOMParser parser;
    parser.parse(*source);
    ASSERT_TRUE(parser.getDocument() != 0);
    EXPECT_EQ(Narrow(parser.getDocument().getDocumentElement().getTagName()), "b");

    const std::unique_ptr<xercesc::BinInputStream> stream(source->makeStream());
    text[1] = 'c';
    XMLByte bytes[4];
    ASSERT_EQ(stream->readBytes(bytes, sizeof bytes), sizeof bytes);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(bytes), sizeof bytes), "<c/>") << "its stream does not either";
}

TEST(BexXMLParserMemBufInputSource, IsNullForANullBufferOrANegativeLength) {
    EXPECT_EQ(std::unique_ptr<InputSource>(BexXMLParser::CreateMemBufInputSource(nullptr, 0, "XPDL")), nullptr);
    EXPECT_EQ(std::unique_ptr<InputSource>(BexXMLParser::CreateMemBufInputSource(nullptr, 5, "XPDL")), nullptr);
    EXPECT_EQ(std::unique_ptr<InputSource>(BexXMLParser::CreateMemBufInputSource(nullptr, -1, nullptr)), nullptr);
    EXPECT_EQ(std::unique_ptr<InputSource>(BexXMLParser::CreateMemBufInputSource("<a/>", -1, "XPDL")), nullptr);
    EXPECT_EQ(std::unique_ptr<InputSource>(BexXMLParser::CreateMemBufInputSource("<a/>", INT_MIN, "XPDL")), nullptr);
}

TEST(BexXMLParserMemBufInputSource, TakesAnEmptyBufferAndANullSystemIdentifier) {
    const std::unique_ptr<InputSource> empty(BexXMLParser::CreateMemBufInputSource("", 0, "XPDL"));
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(AllBytes(*empty), "");
    const std::unique_ptr<InputSource> nameless(BexXMLParser::CreateMemBufInputSource("<a/>", 4, nullptr));
    ASSERT_NE(nameless, nullptr);
    DOMParser parser;
    parser.parse(*nameless);
    EXPECT_TRUE(parser.getDocument() != 0);
}
