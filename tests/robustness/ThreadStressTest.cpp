#include "WholeWay.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <gtest/gtest.h>

#include <EnvironmentVariable.h>
#include <RunOnThreads.h>
#include <TemporaryDirectory.h>
#include <atomic>
#include <chrono>
#include <functional>
#include <sstream>
#include <string>
#include <thread>

namespace {

constexpr int kThreads = 12;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int kRounds = 15;
#else
constexpr int kRounds = 150;
#endif

/** Takes the lines of a trace; two calls at once, or one that is not a whole line, is a fault. */
class WatchingSink {
public:
    WatchingSink() { BexQorTrace::SetSink(&WatchingSink::Take, this); }
    ~WatchingSink() { BexQorTrace::SetSink(nullptr, nullptr); }
    WatchingSink(const WatchingSink&) = delete;
    WatchingSink& operator=(const WatchingSink&) = delete;

    long Lines() const { return lines; }
    long Faults() const { return faults; }

private:
    /** Whether a line is one that the library writes: a step or a message at its indentation, and one line feed. */
    static bool IsWhole(const std::string& iLine) {
        const std::size_t start = iLine.find_first_not_of(' ');
        return start != std::string::npos && start % 2 == 0 && iLine.find('\n') == iLine.size() - 1;
    }

    static void Take(const char* /*iChannel*/, const char* iText, int iLength, void* ioSink) {
        auto& self = *static_cast<WatchingSink*>(ioSink);
        if (self.inside.exchange(true)) {
            ++self.faults;
        }
        self.faults += IsWhole(std::string(iText, static_cast<std::size_t>(iLength))) ? 0 : 1;
        ++self.lines;
        self.inside = false;
    }

    std::atomic<bool> inside{false};
    std::atomic<long> lines{0};
    std::atomic<long> faults{0};
};

class ThreadStress : public testing::Test {
protected:
    const TemporaryDirectory directory;
    const std::string file = directory.Write("QorWflActionManager",
                                             "actionPriority.1 = Low\n"
                                             "actionPriority.2 = Normal\n"
                                             "actionObjects.Part.* = PART_LIST.C_PART_NUMBER\n");
    const EnvironmentVariable path{"BexMsgCatalogPath", directory.Path().c_str()};
    // Without TZ the C library takes the zone in anew each time, under a lock that ThreadSanitizer does not know.
    const EnvironmentVariable zone{"TZ", "UTC0"};
    const std::string recordText = WholeWay::RecordText();
};

TEST_F(ThreadStress, EverythingOnObjectsOfEachThreadGivesTheSameAsAlone) {
    const std::string expected = WholeWay::Once(recordText);
    std::atomic<int> wrong{0};
    RunOnThreads(kThreads, [&](int) {
        for (int round = 0; round < kRounds; ++round) {
            wrong += WholeWay::Once(recordText) == expected ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST_F(ThreadStress, SharedManagerHandlerRecordTreeAndTableAreRead) {
    const auto manager = WholeWay::ConfiguredManager();
    const TestHandler& handler = manager->handler;
    QorWflPropertyFile properties;
    properties.Read("QorWflActionManager");
    const TestAction action = WholeWay::Action();
    ActivityInfo record;
    manager->GetActionInfo(&action, record);
    BexUnicodeString xml;
    QorWflActivityToXml(record, xml);
    DOM_Document tree = DOM_Document::createDocument();
    tree.appendChild(tree.createElement("root"));
    const std::string block = UuidBlock("PDM1", "PROD", "PART_LIST");
    const std::string expected = WholeWay::OutAndBack(*manager);
    const std::string document = WholeWay::Document(record);
    std::atomic<int> wrong{0};
    RunOnThreads(kThreads, [&](int) {
        for (int round = 0; round < kRounds; ++round) {
            wrong += WholeWay::OutAndBack(*manager) == expected ? 0 : 1;
            wrong += WholeWay::Document(record) == document ? 0 : 1;
            wrong += properties.GetValue(3) == "PART_LIST.C_PART_NUMBER" ? 0 : 1;
            wrong += handler.GetExternalType(block.c_str()) == "Part" ? 0 : 1;
            DOM_Node node = tree;
            DOMString text;
            WriteXML(node, text);
            ActivityInfo back;
            QorWflXmlToActivity(xml, back);
            wrong += back.extid == record.extid && text.length() > 0 ? 0 : 1;
        }
    });
    EXPECT_EQ(wrong, 0);
}

TEST_F(ThreadStress, ChannelsAndSinksChangeWhileEverythingRuns) {
    const std::string expected = WholeWay::Once(recordText);
    std::atomic<int> wrong{0};
    std::atomic<bool> stop{false};
    testing::internal::CaptureStdout();  // where lines go while there is no sink
    long lines = 0;
    long faults = 0;
    std::thread switching([&] {
        for (int round = 0; !stop; ++round) {
            BexQorTrace::SetOn("WFInterop", round % 2);
            BexQorTrace::SetOn("WFInteropUrl", (round / 2) % 2);
            const WatchingSink sink;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            lines += sink.Lines();
            faults += sink.Faults();
        }
    });
    BexQorTrace silent("ThreadStress", "", "", 0);  // its lines go to a sink or nowhere
    RunOnThreads(kThreads, [&](int iThread) {
        for (int round = 0; round < kRounds; ++round) {
            BexQorTrace::SetOn("ThreadStress", (iThread + round) % 2);
            BexQorTraceStep step(silent, "a round");
            step << "round " << round << " of thread " << iThread << std::endl;
            wrong += WholeWay::Urls().empty() ? 1 : 0;
            wrong += WholeWay::Once(recordText) == expected ? 0 : 1;
        }
    });
    stop = true;
    switching.join();
    BexQorTrace::SetOn("WFInterop", 0);
    BexQorTrace::SetOn("WFInteropUrl", 0);
    std::istringstream named(testing::internal::GetCapturedStdout());
    for (std::string line; std::getline(named, line);) {
        const std::size_t start = line.find_first_not_of(' ');
        EXPECT_TRUE(start != std::string::npos && start % 2 == 0) << line;
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(faults, 0);
    EXPECT_GT(lines, 0);
}

TEST_F(ThreadStress, TracesOfAllThreadsComeInWholeLines) {
    const WatchingSink sink;
    BexQorTrace::SetOn("WFInterop", 1);
    BexQorTrace::SetOn("WFInteropUrl", 1);
    RunOnThreads(kThreads, [&](int) {
        for (int round = 0; round < kRounds / 5; ++round) {
            WholeWay::OutAndBack(*WholeWay::ConfiguredManager());
        }
    });
    BexQorTrace::SetOn("WFInterop", 0);
    BexQorTrace::SetOn("WFInteropUrl", 0);
    EXPECT_EQ(sink.Faults(), 0);
    EXPECT_GT(sink.Lines(), kThreads * kRounds);
}

}  // namespace
