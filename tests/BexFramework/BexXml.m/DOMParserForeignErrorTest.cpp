// Sources that fail: what Xerces-C's own exceptions say is what the parser tells.

#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/RuntimeException.hpp>

#include <XmlText.h>
#include <functional>
#include <stdexcept>
#include <string>

namespace {

/** A source that cannot be opened, for a reason of the test's choice. */
class ClosedSource : public InputSource {
public:
    explicit ClosedSource(std::function<void()> iFail) : InputSource(Memory()), fail(std::move(iFail)) {}
    xercesc::BinInputStream* makeStream() const override {
        fail();
        return nullptr;
    }

private:
    /** Xerces-C's own sources take memory from it, so they can only be built when it is started. */
    static xercesc::MemoryManager* Memory() {
        BexXMLParser::Initialize();
        return xercesc::XMLPlatformUtils::fgMemoryManager;
    }
    std::function<void()> fail;
};

TEST(DomParserForeignError, TextOfTheExceptionIsTold) {
    const struct {
        const char* name;
        std::function<void()> fail;
        const char* text;
        unsigned long line;
        unsigned long column;
    } cases[] = {
        {"a SAX exception", [] { throw xercesc::SAXException(DOMString("no such thing").rawBuffer()); },
         "no such thing", 0, 0},
        {"a SAX exception with a place",
         [] {
             const DOMString id("id");
             throw xercesc::SAXParseException(DOMString("wrong here").rawBuffer(), id.rawBuffer(), id.rawBuffer(), 7,
                                              9);
         },
         "wrong here", 7, 9},
        {"a DOM exception",
         [] {
             DOM_Document document = DOM_Document::createDocument();
             document.createElement("<");
         },
         nullptr, 0, 0},
        {"an exception of its utilities",
         [] { throw xercesc::RuntimeException(__FILE__, __LINE__, xercesc::XMLExcepts::File_CouldNotOpenFile); },
         nullptr, 0, 0},
        {"an exception of the host", [] { throw std::runtime_error("the disk is gone"); }, "the input cannot be read",
         0, 0},
        {"no exception at all", [] { throw 1; }, "the input cannot be read", 0, 0},
        {"no exception", [] {}, "the input cannot be opened", 0, 0},
    };
    for (const auto& each : cases) {
        DOMParser parser;
        EXPECT_NO_THROW(parser.parse(ClosedSource(each.fail))) << each.name;
        EXPECT_TRUE(parser.getDocument().isNull()) << each.name;
        EXPECT_GT(parser.getErrorText().length(), 0U) << each.name;
        if (each.text != nullptr) {
            EXPECT_EQ(Narrow(parser.getErrorText()), each.text) << each.name;
        }
        EXPECT_EQ(parser.getErrorLine(), each.line) << each.name;
        EXPECT_EQ(parser.getErrorColumn(), each.column) << each.name;
    }
}

}  // namespace
