#include <BexQorTrace.h>
#include <BexQorTraceStep.h>
#include <BexUnicodeString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <ostream>
#include <string>
#include <string_view>

namespace {

thread_local long allocations = 0;
thread_local long blocksInUse = 0;
thread_local long allocationsLeft = -1;  // -1: no end; 0: the next one fails

[[gnu::noinline]] void* TakeMemory(std::size_t iSize) noexcept {
    ++allocations;
    if (allocationsLeft == 0) {
        return nullptr;
    }
    if (allocationsLeft > 0) {
        --allocationsLeft;
    }
    void* memory = std::malloc(iSize == 0 ? 1 : iSize);
    blocksInUse += memory != nullptr ? 1 : 0;
    return memory;
}

void* TakeMemoryOrThrow(std::size_t iSize) {
    if (void* memory = TakeMemory(iSize)) {
        return memory;
    }
    throw std::bad_alloc();
}

[[gnu::noinline]] void GiveMemoryBack(void* iMemory) noexcept {
    blocksInUse -= iMemory != nullptr ? 1 : 0;
    std::free(iMemory);
}

}  // namespace

// The allocation operators of this whole program, the loaded libraries included.
void* operator new(std::size_t iSize) {
    return TakeMemoryOrThrow(iSize);
}
void* operator new[](std::size_t iSize) {
    return TakeMemoryOrThrow(iSize);
}
void* operator new(std::size_t iSize, const std::nothrow_t& /*iTag*/) noexcept {
    return TakeMemory(iSize);
}
void* operator new[](std::size_t iSize, const std::nothrow_t& /*iTag*/) noexcept {
    return TakeMemory(iSize);
}
void operator delete(void* iMemory) noexcept {
    GiveMemoryBack(iMemory);
}
void operator delete[](void* iMemory) noexcept {
    GiveMemoryBack(iMemory);
}
void operator delete(void* iMemory, std::size_t /*iSize*/) noexcept {
    GiveMemoryBack(iMemory);
}
void operator delete[](void* iMemory, std::size_t /*iSize*/) noexcept {
    GiveMemoryBack(iMemory);
}
void operator delete(void* iMemory, const std::nothrow_t& /*iTag*/) noexcept {
    GiveMemoryBack(iMemory);
}
void operator delete[](void* iMemory, const std::nothrow_t& /*iTag*/) noexcept {
    GiveMemoryBack(iMemory);
}

namespace {

/** Counts what reaches it without allocating anything itself. */
struct CountingSink {
    int calls = 0;
    int rightTexts = 0;

    static void Take(const char* /*iChannel*/, const char* iText, int iLength, void* iData) {
        auto& self = *static_cast<CountingSink*>(iData);
        ++self.calls;
        const std::string_view text(iText, static_cast<std::size_t>(iLength));
        self.rightTexts += text == ">> outer\n" || text == "  >> inner\n" || text == "  << inner\n" ||
                                   text == "<< outer\n" || text == "    a long message [?] 42\n"
                               ? 1
                               : 0;
    }
};

class TraceCost : public testing::Test {
protected:
    TraceCost() { BexQorTrace::SetSink(&CountingSink::Take, &sink); }
    ~TraceCost() override { BexQorTrace::SetSink(nullptr, nullptr); }

    void Trace() {
        const BexQorTraceStep outer(channel, "outer");
        BexQorTraceStep inner(channel, "inner");
        inner << "a long message [" << wide << "] " << 42 << std::endl;
    }

    CountingSink sink;
    BexQorTrace channel{"Cost", "", "STDOUT", 0};
    const BexUnicodeString wide{u"\u20AC", 1};
};

TEST_F(TraceCost, OffAllocatesNothingAndConvertsNothing) {
    const BexUnicodeString longWide(std::u16string(1000, u'\u20AC').c_str(), 1000);
    const std::string longText(1000, 'x');
    const long before = allocations;
    for (int i = 0; i < 1000; ++i) {
        BexQorTraceStep step(channel, "a name that would not fit into a short string");
        step << longWide << longText << std::u16string_view(u"text") << "text" << 'c' << 1 << 2U << 3L << 4UL << "\n"
             << std::endl;
    }
    EXPECT_EQ(allocations, before);
    EXPECT_EQ(sink.calls, 0);
}

TEST_F(TraceCost, TheCountOfAllocationsSeesTheLibrary) {
    const long before = allocations;
    const BexUnicodeString copy(wide);
    EXPECT_GT(allocations, before) << "a wide string that the library copies needs memory";
}

TEST_F(TraceCost, WithoutMemoryNothingReachesTheCallerAndTracingGoesOnAfterwards) {
    BexQorTrace::SetOn("Cost", 1);
    bool cameThrough = false;
    for (long limit = 0; !cameThrough && limit < 200; ++limit) {
        sink = CountingSink();
        const long before = allocations;
        allocationsLeft = limit;
        Trace();
        allocationsLeft = -1;
        cameThrough = allocations - before <= limit;
        EXPECT_EQ(sink.rightTexts, sink.calls) << "a line that arrives is whole, limit " << limit;
        EXPECT_LE(sink.calls, 5) << limit;

        sink = CountingSink();
        Trace();
        EXPECT_EQ(sink.rightTexts, 5) << "after a shortage at allocation " << limit;
        EXPECT_EQ(sink.calls, 5) << limit;
    }
    EXPECT_TRUE(cameThrough);
}

TEST_F(TraceCost, ManyStepsLeaveNothingBehind) {
    BexQorTrace::SetOn("Cost", 1);
    Trace();
    const long before = blocksInUse;
    for (int i = 0; i < 100; ++i) {
        Trace();
    }
    EXPECT_EQ(blocksInUse, before);
}

TEST_F(TraceCost, ChannelsLeaveNothingBehind) {
    const auto buildAndTrace = [] {
        BexQorTrace passing("A name that would not fit into a short string", "The same goes for its title", "", 64);
        BexQorTrace::SetOn("A name that would not fit into a short string", 1);
        const BexQorTraceStep step(passing, "step");
    };
    buildAndTrace();
    const long before = blocksInUse;
    for (int i = 0; i < 100; ++i) {
        buildAndTrace();
    }
    EXPECT_EQ(blocksInUse, before);
}

}  // namespace
