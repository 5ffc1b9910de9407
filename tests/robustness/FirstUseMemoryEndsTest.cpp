// Memory that ends while XML is used for the first time, when Xerces-C has to be started: nobody ends the process, and
// once there is memory everything works.

#include "MemoryThatEnds.h"
#include "WholeWay.h"

#include <BexDom.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/BinMemInputStream.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <XpdlReply.h>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <new>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

using MemoryThatEnds::Outcome;
using MemoryThatEnds::OutcomeOf;
using RefusedMemory::Mode;

bool ReadsADocument() {
    const std::unique_ptr<InputSource> source(BexXMLParser::CreateMemBufInputSource("<a>text</a>", 11, nullptr));
    DOMParser parser;
    if (source != nullptr) {
        parser.parse(*source);
    }
    return parser.getDocument().getDocumentElement().getTagName() == "a";
}

/** Memory that is there before Xerces-C is started. */
class HostMemory : public xercesc::MemoryManager {
public:
    xercesc::MemoryManager* getExceptionMemoryManager() override { return this; }
    void* allocate(XMLSize_t iSize) override { return ::operator new(iSize); }
    void deallocate(void* iBlock) override { ::operator delete(iBlock); }
};

HostMemory hostMemory;

/** A source of a host, which exists before the framework has done anything. */
class HostSource : public InputSource {
public:
    HostSource() : InputSource(&hostMemory) {}
    xercesc::BinInputStream* makeStream() const override {
        static const std::string text("<a/>");
        return new (&hostMemory) xercesc::BinMemInputStream(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                                            xercesc::BinMemInputStream::BufOpt_Reference, &hostMemory);
    }
};

/**
 * Runs an operation that is the first to use XML, one request refused, in a process of its own.
 * @return the status that the process ends with: 0 when all is well
 */
int StatusAfter(long iGranted, Mode iMode, bool iMayThrow, const std::function<void()>& iOperation) {
    const pid_t child = ::fork();
    if (child == 0) {
        std::cerr.setstate(std::ios_base::failbit);  // the reader reports
        Outcome outcome = Outcome::kDone;
        {
            const RefusedMemory::Refusal refusal(iGranted, iMode);
            outcome = OutcomeOf(iOperation);
        }
        if (outcome == Outcome::kOtherException || (outcome == Outcome::kBadAlloc && !iMayThrow)) {
            std::exit(10);  // something left that may not
        }
        outcome = OutcomeOf(iOperation);
        const bool isStarted = BexXMLParser::Initialize() == 0;
        if (outcome != Outcome::kDone && (isStarted || !iMayThrow)) {
            std::exit(11);  // does not work afterwards
        }
        if (ReadsADocument() != isStarted) {
            std::exit(12);  // started and of no use, or the other way round
        }
        if (QorWflUrlUtil::UrlToActionId("qor://ACTION/A1") != "A1") {
            std::exit(13);  // what does without XML has suffered
        }
        std::exit(isStarted ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

struct FirstUse {
    const char* name;
    bool mayThrow;
    std::function<void()> operation;
};

const std::vector<FirstUse>& FirstUses() {
    static const BexUnicodeString reply(XpdlReply().c_str());
    static const std::vector<FirstUse> uses = {
        {"Initialize", false, [] { BexXMLParser::Initialize(); }},
        {"DOMParser", true, [] { ReadsADocument(); }},
        {"DOMParser of a host's source", false,
         [] {
             DOMParser parser;
             parser.parse(HostSource());
             if (BexXMLParser::Initialize() != 0 && !parser.getDocument().isNull()) {
                 std::exit(14);  // a document from nowhere
             }
         }},
        {"createDocument", true,
         [] {
             DOM_Document document = DOM_Document::createDocument();
             document.appendChild(document.createElement("a"));
         }},
        {"QorWflXmlToActivity", false,
         [] {
             ActivityInfo activity;
             QorWflXmlToActivity(reply, activity);
         }},
        {"QorWflActivityToXml", true,
         [] {
             ActivityInfo activity;
             BexUnicodeString xml;
             QorWflActivityToXml(activity, xml);
         }},
    };
    return uses;
}

class FirstUseMemoryEnds : public testing::TestWithParam<Mode> {};

TEST_P(FirstUseMemoryEnds, ProcessLivesOn) {
    ASSERT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << "this process must not use XML itself";
    for (const FirstUse& use : FirstUses()) {
        int recovered = 0;
        for (long granted = 0; granted < 13000; granted += granted < 20 ? 1 : 797) {
            const int status = StatusAfter(granted, GetParam(), use.mayThrow, use.operation);
            EXPECT_TRUE(status == 0 || status == 1) << use.name << " after " << granted << ": " << status;
            recovered += status == 0 ? 1 : 0;
        }
        EXPECT_GT(recovered, 15) << use.name;
    }
}

TEST_P(FirstUseMemoryEnds, StartThatHasNoMemoryToBeginWithWorksLater) {
    ASSERT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << "this process must not use XML itself";
    for (long granted = 0; granted < 6000; granted += 17) {
        const long before = RefusedMemory::LiveBlocks();
        int result = 0;
        {
            const RefusedMemory::Refusal refusal(granted, GetParam());
            result = BexXMLParser::Initialize();
        }
        ASSERT_EQ(result, static_cast<int>(0x80004005)) << granted;
        ASSERT_EQ(RefusedMemory::LiveBlocks(), before) << granted;
        ASSERT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << granted;
    }
    EXPECT_EQ(StatusAfter(-1, GetParam(), false, FirstUses().front().operation), 0);
}

INSTANTIATE_TEST_SUITE_P(Refused, FirstUseMemoryEnds, testing::Values(Mode::kOnce, Mode::kFromThenOn),
                         [](const testing::TestParamInfo<Mode>& iInfo) {
                             return iInfo.param == Mode::kOnce ? "Once" : "FromThenOn";
                         });

}  // namespace
