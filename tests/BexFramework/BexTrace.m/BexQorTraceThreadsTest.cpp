#include "RecordingSink.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>
#include <BexUnicodeString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <RunOnThreads.h>
#include <atomic>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::SizeIs;

constexpr int kThreads = 8;
constexpr int kRounds = 500;

/** A step with two messages put together from many pieces; every line carries the thread and the round. */
void TraceRound(BexQorTrace& ioChannel, int iThread, int iRound) {
    const std::string name = "T" + std::to_string(iThread) + " R" + std::to_string(iRound);
    BexQorTraceStep step(ioChannel, name.c_str());
    step << "T" << iThread << ' ' << BexUnicodeString("R") << iRound << " first" << std::endl;
    step << std::string("T") << static_cast<long>(iThread) << " R" << static_cast<unsigned>(iRound) << " second\n";
}

/** What TraceRound() writes, all rounds of one thread. */
std::vector<std::string> LinesOfThread(int iThread) {
    std::vector<std::string> lines;
    for (int round = 0; round < kRounds; ++round) {
        const std::string name = "T" + std::to_string(iThread) + " R" + std::to_string(round);
        lines.push_back(">> " + name);
        lines.push_back("  " + name + " first");
        lines.push_back("  " + name + " second");
        lines.push_back("<< " + name);
    }
    return lines;
}

/** Each thread's lines in their order; a line that is not whole finds no thread or breaks the order of one. */
void ExpectWholeLines(const std::vector<std::string>& iLines) {
    std::map<std::string, std::vector<std::string>> linesOf;
    for (const std::string& line : iLines) {
        const std::size_t start = line.find('T');
        ASSERT_NE(start, std::string::npos) << line;
        linesOf[line.substr(start, 2)].push_back(line);
    }
    EXPECT_THAT(linesOf, SizeIs(kThreads));
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(linesOf["T" + std::to_string(i)], LinesOfThread(i));
    }
}

TEST(TraceThreads, LinesReachTheSinkWholeAndOneAtATime) {
    BexQorTrace channel("Threads", "", "STDOUT", 64);
    BexQorTrace::SetOn("Threads", 1);
    RecordingSink sink;  // keeps its calls in a plain vector: two calls at once would race
    RunOnThreads(kThreads, [&channel](int iThread) {
        for (int round = 0; round < kRounds; ++round) {
            TraceRound(channel, iThread, round);
        }
    });
    std::vector<std::string> lines;
    for (const std::string& text : sink.Texts()) {
        ASSERT_FALSE(text.empty());
        ASSERT_EQ(text.find('\n'), text.size() - 1) << "one call a line";
        lines.push_back(text.substr(0, text.size() - 1));
    }
    ExpectWholeLines(lines);
}

TEST(TraceThreads, LinesReachStandardOutputWholeFromSeveralChannels) {
    BexQorTrace even("ThreadsEven", "", "STDOUT", 64);
    BexQorTrace odd("ThreadsOdd", "", "STDOUT", 0);
    BexQorTrace::SetOn("ThreadsEven", 1);
    BexQorTrace::SetOn("ThreadsOdd", 1);
    testing::internal::CaptureStdout();
    RunOnThreads(kThreads, [&even, &odd](int iThread) {
        for (int round = 0; round < kRounds; ++round) {
            TraceRound(iThread % 2 == 0 ? even : odd, iThread, round);
        }
    });
    std::cout.flush();
    std::istringstream text(testing::internal::GetCapturedStdout());
    std::vector<std::string> lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line);
    }
    ExpectWholeLines(lines);
}

TEST(TraceThreads, IndentationBelongsToTheThread) {
    BexQorTrace channel("Threads", "", "STDOUT", 0);
    BexQorTrace::SetOn("Threads", 1);
    RecordingSink sink;
    {
        BexQorTraceStep outer(channel, "outer");
        outer << "begun";
        std::thread([&channel] {
            BexQorTraceStep other(channel, "other thread");
            other << "message" << std::endl;
        }).join();
        outer << " and ended" << std::endl;
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> outer\n", ">> other thread\n", "  message\n", "<< other thread\n",
                                          "  begun and ended\n", "<< outer\n"));
}

struct GuardedSink {
    std::atomic<bool> set{false};
    std::atomic<int> inside{0};
    std::atomic<int> faults{0};
    std::atomic<int> calls{0};

    static void Take(const char* /*iChannel*/, const char* /*iText*/, int /*iLength*/, void* iData) {
        auto& self = *static_cast<GuardedSink*>(iData);
        if (!self.set || self.inside.fetch_add(1) != 0) {
            ++self.faults;
        }
        ++self.calls;
        std::this_thread::yield();
        --self.inside;
    }
};

TEST(TraceThreads, AFormerSinkIsAtRestWhenSetSinkIsBack) {
    BexQorTrace channel("Threads", "", "", 0);
    BexQorTrace::SetOn("Threads", 1);
    std::atomic<bool> stop{false};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
        threads.emplace_back([&channel, &stop] {
            while (!stop) {
                BexQorTraceStep step(channel, "step");
                step << "message" << std::endl;
            }
        });
    }
    GuardedSink sinks[2];
    for (int round = 0; round < 200; ++round) {
        GuardedSink& current = sinks[round % 2];
        GuardedSink& former = sinks[1 - round % 2];
        current.set = true;
        BexQorTrace::SetSink(&GuardedSink::Take, &current);
        former.set = false;
        while (current.calls == 0) {
            std::this_thread::yield();
        }
        current.calls = 0;
    }
    BexQorTrace::SetSink(nullptr, nullptr);
    sinks[0].set = false;
    sinks[1].set = false;
    stop = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(sinks[0].faults, 0);
    EXPECT_EQ(sinks[1].faults, 0);
}

TEST(TraceThreads, ChannelsComeAndGoAndSwitchOnEveryThread) {
    RecordingSink sink;
    std::atomic<int> wrong{0};
    RunOnThreads(kThreads, [&wrong](int iThread) {
        const std::string own = "Threads" + std::to_string(iThread);
        for (int round = 0; round < kRounds; ++round) {
            BexQorTrace channel(own.c_str(), "", "", 0);
            BexQorTrace shared("ThreadsShared", "", "", 0);
            wrong += BexQorTrace::SetOn(own.c_str(), 1) != 1 ? 1 : 0;
            const int count = BexQorTrace::SetOn("ThreadsShared", round % 2);
            wrong += count < 1 || count > kThreads ? 1 : 0;
            const BexQorTraceStep step(channel, "own");
            const BexQorTraceStep inner(shared, "shared");
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(BexQorTrace::SetOn("ThreadsShared", 0), 0);
    std::size_t ownLines = 0;
    for (const RecordingSink::Call& call : sink.Calls()) {
        ownLines += call.channel != "ThreadsShared" ? 1 : 0;
    }
    EXPECT_EQ(ownLines, 2U * kThreads * kRounds);
}

}  // namespace
