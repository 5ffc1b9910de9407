// What only the first use, the stack or the end of a process shows. Each check has a process to itself.

#include "WholeWay.h"

#include <BexQorTrace.h>
#include <BexXMLParser.h>

#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>

#include <EnvironmentVariable.h>
#include <RunOnThreads.h>
#include <SmallStackThread.h>
#include <TemporaryDirectory.h>
#include <XmlText.h>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

/** Runs a check as the first thing of a process of its own, which then ends as processes do. */
void ExpectWorksAlone(const std::function<bool()>& iCheck) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(iCheck() ? 0 : 1), testing::ExitedWithCode(0), "");
}

/** Whether everything works, to the end. */
bool EverythingWorks() {
    const std::string once = WholeWay::Once(WholeWay::RecordText());
    return once == WholeWay::Once(WholeWay::RecordText()) && once.find("VERANT_QORModel") != std::string::npos;
}

/** The status that a child ends with which runs a check, -1 when it does not end within a minute. */
int ForkedStatus(const std::function<bool()>& iCheck) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::alarm(60);  // one that waits for a lock for ever
        ::_exit(iCheck() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

TEST(FirstUse, MayBeOnSixteenThreadsAtOnce) {
    // Without TZ the C library takes the zone in anew each time, under a lock that ThreadSanitizer does not know.
    const EnvironmentVariable zone("TZ", "UTC0");
    ExpectWorksAlone([] {
        const std::function<bool()> uses[] = {
            [] { return !Parsed("<a/>").isNull(); },
            [] { return WholeWay::Tree().find("<root") != std::string::npos; },
            [] {
                ActivityInfo activity;
                QorWflXmlToActivity("<Package/>", activity);
                return activity.id.IsNull() != 0;
            },
            [] { return WholeWay::OutAndBack(*WholeWay::ConfiguredManager()).find("smith") != std::string::npos; },
        };
        constexpr int kThreads = 16;
        std::atomic<int> good{0};
        RunOnThreads(kThreads, [&](int iThread) { good += uses[iThread % 4]() ? 1 : 0; });
        return good == kThreads;
    });
}

TEST(SmallStack, HoldsEverything) {
    ExpectWorksAlone([] {
        bool works = false;
        SmallStackThread::Run([&works] { works = EverythingWorks(); });
        return works;
    });
}

TEST(SmallStack, HoldsEverythingWithTheTraceOn) {
    ExpectWorksAlone([] {
        BexQorTrace::SetSink([](const char*, const char*, int, void*) {}, nullptr);
        for (const char* channel : {"WFInterop", "WFInteropUrl", "WFInteropXML"}) {
            BexQorTrace::SetOn(channel, 1);
        }
        std::cout.setstate(std::ios_base::failbit);  // where the reader writes its record
        bool works = false;
        SmallStackThread::Run([&works] { works = EverythingWorks(); });
        return works;
    });
}

TEST(Fork, ChildUsesEverythingBeforeItsParentDoes) {
    ExpectWorksAlone([] { return ForkedStatus(&EverythingWorks) == 0 && EverythingWorks(); });
}

TEST(Fork, ChildUsesEverythingAfterItsParentDid) {
    ExpectWorksAlone([] {
        const DOM_Document document = Parsed("<before/>");
        return EverythingWorks() &&
               ForkedStatus([&document] {
                   return EverythingWorks() && document.getDocumentElement().getTagName() == "before";
               }) == 0 &&
               EverythingWorks();
    });
}

TEST(Fork, ChildUsesEverythingWhenOtherThreadsAreAtRest) {
    ExpectWorksAlone([] {
        std::atomic<bool> isUsed{false};
        std::atomic<bool> stop{false};
        std::thread other([&] {
            EverythingWorks();
            isUsed = true;
            while (!stop) {
                std::this_thread::yield();
            }
        });
        while (!isUsed) {
            std::this_thread::yield();
        }
        const int status = ForkedStatus(&EverythingWorks);
        stop = true;
        other.join();
        return status == 0;
    });
}

TEST(Fork, MayHappenWithinASinkAndWithinAnAction) {
    struct ForkingAction final : QorWflActionItf {
        mutable int status = -2;
        BexUnicodeString GetAbstract() const override { return "forked"; }
        BexUnicodeString GetPriority() const override { return "1"; }
        BexUnicodeString GetStatus() const override { return ""; }
        BexUnicodeString GetActionId() const override { return "A1"; }
        BexUnicodeString GetOwner() const override {
            status = ForkedStatus(&EverythingWorks);
            return "smith";
        }
        int GetContextCount() const override { return 0; }
        void GetContext(int, BexUnicodeString&, BexUnicodeString&, BexUnicodeString&) const override {}
        int GetObjectCount() const override { return 0; }
        void GetObject(int, _SEQUENCE_octet&, BexUnicodeString&, BexUnicodeString&, BexUnicodeString&,
                       BexUnicodeString&) const override {}
    };
    ExpectWorksAlone([] {
        const auto manager = WholeWay::ConfiguredManager();
        const ForkingAction action;
        ActivityInfo activity;
        manager->GetActionInfo(&action, activity);
        if (action.status != 0 || activity.owner != "smith") {
            return false;
        }
        static int sinkStatus = -2;
        BexQorTrace::SetSink(
            [](const char*, const char*, int, void*) {
                if (sinkStatus == -2) {
                    sinkStatus = -3;
                    sinkStatus = ForkedStatus(&EverythingWorks);
                }
            },
            nullptr);
        BexQorTrace::SetOn("WFInteropUrl", 1);
        WholeWay::Urls();
        BexQorTrace::SetOn("WFInteropUrl", 0);
        BexQorTrace::SetSink(nullptr, nullptr);
        return sinkStatus == 0 && EverythingWorks();
    });
}

TEST(XercesOfTheHost, MayBeStartedBeforeAndEndedBehind) {
    ExpectWorksAlone([] {
        xercesc::XMLPlatformUtils::Initialize();
        const bool works = EverythingWorks();
        xercesc::XMLPlatformUtils::Terminate();
        return works && EverythingWorks();
    });
}

TEST(XercesOfTheHost, MayBeStartedBehindAndEndedBefore) {
    ExpectWorksAlone([] {
        const bool works = EverythingWorks();
        xercesc::XMLPlatformUtils::Initialize();
        xercesc::XMLPlatformUtils::Terminate();
        return works && EverythingWorks();
    });
}

TEST(XercesOfTheHost, MayBeStartedAndEndedBeforeTheFirstUse) {
    ExpectWorksAlone([] {
        xercesc::XMLPlatformUtils::Initialize();
        xercesc::XMLPlatformUtils::Terminate();
        return EverythingWorks();
    });
}

TEST(XercesOfTheHost, MayBeEndedWhenTheProcessEnds) {
    ExpectWorksAlone([] {
        xercesc::XMLPlatformUtils::Initialize();
        std::atexit([] { xercesc::XMLPlatformUtils::Terminate(); });
        return EverythingWorks();
    });
    ExpectWorksAlone([] {
        const bool works = EverythingWorks();
        xercesc::XMLPlatformUtils::Initialize();
        std::atexit([] { xercesc::XMLPlatformUtils::Terminate(); });
        return works;
    });
}

TEST(XercesOfTheHost, HandlesMayLiveUntilTheProcessEnds) {
    ExpectWorksAlone([] {
        static DOM_Document early;  // destroyed behind what the first use leaves to be destroyed
        early = Parsed("<early/>");
        static const DOM_Document late = Parsed("<late/>");  // and before it
        return early.getDocumentElement().getTagName() == "early" && !late.isNull();
    });
}
