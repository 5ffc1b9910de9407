// Memory that ends while a step traces: lines are lost, but whole, and the step goes on.

#include "MemoryThatEnds.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>

namespace {

using MemoryThatEnds::Contract;
using MemoryThatEnds::ForEveryRefusal;

/** Takes what is traced into room that is there from the start. */
class RoomyTrace {
public:
    RoomyTrace() { BexQorTrace::SetSink(&RoomyTrace::Take, this); }
    ~RoomyTrace() { BexQorTrace::SetSink(nullptr, nullptr); }
    RoomyTrace(const RoomyTrace&) = delete;
    RoomyTrace& operator=(const RoomyTrace&) = delete;

    std::string Text() const { return std::string(text, length); }
    void Clear() { length = 0; }

private:
    static void Take(const char* /*iChannel*/, const char* iText, int iLength, void* iData) {
        auto& self = *static_cast<RoomyTrace*>(iData);
        const auto size = static_cast<std::size_t>(iLength);
        ASSERT_LE(self.length + size, sizeof self.text);
        std::memcpy(self.text + self.length, iText, size);
        self.length += size;
    }

    char text[4096];
    std::size_t length = 0;
};

const std::string kLong(300, 'x');  // of no use to a string without memory
const std::u16string kLongUnits(300, u'x');

/** Runs steps with memory that ends and expects each line whole or not at all. */
template <typename Trace>
void ExpectWholeLines(const std::string& iName, const Trace& iTrace) {
    BexQorTrace channel("MemoryEnds", "", "STDOUT", 1);
    BexQorTrace::SetOn("MemoryEnds", 1);
    RoomyTrace lines;
    iTrace(channel);
    const std::string whole = lines.Text();
    ForEveryRefusal(
        iName, Contract::kNeverThrow, [] { return std::make_unique<int>(0); },
        [&](int& /*ioState*/) {
            lines.Clear();
            iTrace(channel);
        },
        [&](const int& /*iState*/, bool isUndisturbed) {
            const std::string seen = lines.Text();
            if (isUndisturbed) {
                EXPECT_EQ(seen, whole);
            }
            for (std::size_t start = 0; start < seen.size();) {
                const std::size_t end = seen.find('\n', start) + 1;
                ASSERT_NE(end, 0U) << "a line without its end";
                EXPECT_NE(whole.find(seen.substr(start, end - start)), std::string::npos)
                    << "a line with a hole: " << seen.substr(start, end - start);
                start = end;
            }
        });
}

TEST(TraceMemoryEnds, LinesOfUtf16TextAreWholeOrLost) {
    ExpectWholeLines("units", [](BexQorTrace& ioChannel) {
        BexQorTraceStep step(ioChannel, "step");
        step << "before" << std::u16string_view(kLongUnits) << "behind" << std::endl;
        step << "next" << std::endl;
    });
}

TEST(TraceMemoryEnds, MessagesWithoutAnEndAreWholeOrLostWhenTheStepCloses) {
    for (std::size_t length = 1; length < kLong.size(); ++length) {  // at some lengths the line end needs memory
        const std::string message = kLong.substr(0, length);
        ExpectWholeLines("a message of " + std::to_string(length), [&message](BexQorTrace& ioChannel) {
            BexQorTraceStep step(ioChannel, "step");
            step << message;
        });
    }
}

TEST(TraceMemoryEnds, ClosingLinesAreWholeOrLost) {
    ExpectWholeLines("closing", [](BexQorTrace& ioChannel) {
        const BexQorTraceStep outer(ioChannel, kLong.c_str());
        const BexQorTraceStep inner(ioChannel, kLong.c_str());
    });
}

}  // namespace
