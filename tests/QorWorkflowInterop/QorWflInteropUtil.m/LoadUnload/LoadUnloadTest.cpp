#include "EnvironmentVariable.h"

#include <ActivityInfo.h>
#include <BexDictionary.h>
#include <BexMetaClass.h>
#include <BexQorTrace.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace {

using testing::IsNull;
using testing::NotNull;
using testing::StartsWith;

// A sanitizer keeps a little memory for every library loaded; its own search for leaks takes the place of counting.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryIsCounted = false;
#else
constexpr bool kMemoryIsCounted = true;
#endif

// This program is not linked to the library, so that closing it the last time unloads it.
constexpr const char* kLibrary = INTEROP_LIBRARY;
constexpr GUID kMessenger = {0x9EFAB7A5, 0xA17F, 0x0000, {0x02, 0x80, 0x03, 0x0B, 0x23, 0x00, 0x00, 0x00}};
constexpr const char* kMessengerName = "QorIWflInteropMessenger";
constexpr const char* kChannels[] = {"WFInterop", "WFInteropUrl", "WFInteropXML"};

void* Load() {
    void* library = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    EXPECT_THAT(library, NotNull()) << ::dlerror();
    return library;
}

bool IsMapped() {
    void* library = ::dlopen(kLibrary, RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) {
        ::dlclose(library);
    }
    return library != nullptr;
}

void ExpectEverythingThere() {
    for (const char* channel : kChannels) {
        EXPECT_EQ(BexQorTrace::SetOn(channel, 0), 1) << channel;
    }
    const BexMetaClass* meta = FindInDictionary(kMessenger);
    ASSERT_THAT(meta, NotNull());
    EXPECT_TRUE(meta->GetId() == kMessenger);
    EXPECT_STREQ(meta->GetName(), kMessengerName);
    EXPECT_EQ(FindInDictionary(kMessengerName), meta);
}

void ExpectNothingThere() {
    EXPECT_FALSE(IsMapped());
    for (const char* channel : kChannels) {
        EXPECT_EQ(BexQorTrace::SetOn(channel, 0), 0) << channel;
    }
    EXPECT_THAT(FindInDictionary(kMessenger), IsNull());
    EXPECT_THAT(FindInDictionary(kMessengerName), IsNull());
}

std::size_t HeapBytesInUse() {
    const struct mallinfo2 heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

std::size_t ResidentBytes() {
    std::ifstream statm("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    statm >> size >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

TEST(LoadUnload, AThousandTimesLeavesNothingBehind) {
    constexpr int kWarmUp = 100;
    constexpr int kRounds = 1000;
    std::size_t heap = 0;
    std::size_t resident = 0;
    ExpectNothingThere();
    for (int round = 1; round <= kRounds && !HasFailure(); ++round) {
        void* library = Load();
        ExpectEverythingThere();
        ASSERT_EQ(::dlclose(library), 0);
        ExpectNothingThere();
        if (round == kWarmUp) {
            heap = HeapBytesInUse();
            resident = ResidentBytes();
        }
    }
    ASSERT_FALSE(HasFailure());
    if (kMemoryIsCounted) {
        EXPECT_LT(HeapBytesInUse(), heap + (kRounds - kWarmUp)) << "not a byte a round";
        EXPECT_LT(ResidentBytes(), resident + (kRounds - kWarmUp) * 256) << "no page in sixteen rounds";
    }
}

TEST(LoadUnload, PrintsNothing) {
    for (const char* channels : {"", "*", "WFInterop,WFInteropUrl,WFInteropXML"}) {
        const EnvironmentVariable variable("BexQorTrace", channels);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        ::dlclose(Load());
        std::cout.flush();
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << channels;
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << channels;
    }
}

TEST(LoadUnload, StaysLoadedUntilTheLastClose) {
    void* once = Load();
    void* twice = Load();
    EXPECT_EQ(once, twice);
    ExpectEverythingThere();
    EXPECT_EQ(::dlclose(twice), 0);
    ExpectEverythingThere();
    EXPECT_EQ(::dlclose(once), 0);
    ExpectNothingThere();
}

/** The operations on records of a library that this program is not linked to. */
class Records {
public:
    explicit Records(void* iLibrary)
        : build(Find<void (*)(void*)>(iLibrary, "_ZN12ActivityInfoC1Ev")),
          destroy(Find<void (*)(void*)>(iLibrary, "_ZN12ActivityInfoD1Ev")),
          writeActivity(Find<std::ostream& (*)(std::ostream&, const void*)>(iLibrary, "_ZlsRSoRK12ActivityInfo")),
          writeData(Find<std::ostream& (*)(std::ostream&, const DataInfo&)>(iLibrary, "_ZlsRSoRK8DataInfo")) {}

    std::string EmptyActivityWritten() const {
        alignas(ActivityInfo) unsigned char activity[sizeof(ActivityInfo)];
        std::ostringstream stream;
        build(activity);
        writeActivity(stream, activity);
        destroy(activity);
        return stream.str();
    }
    std::string EmptyDataWritten() const {
        std::ostringstream stream;
        writeData(stream, DataInfo());
        return stream.str();
    }

private:
    template <typename Function>
    static Function Find(void* iLibrary, const char* iName) {
        void* function = ::dlsym(iLibrary, iName);
        if (function == nullptr) {
            throw std::runtime_error(::dlerror());
        }
        return reinterpret_cast<Function>(function);
    }

    void (*build)(void*);
    void (*destroy)(void*);
    std::ostream& (*writeActivity)(std::ostream&, const void*);
    std::ostream& (*writeData)(std::ostream&, const DataInfo&);
};

TEST(LoadUnload, LabelPrefixOfRecordsIsEmptyAfterEachLoad) {
    for (int round = 0; round < 3; ++round) {
        void* library = Load();
        const Records records(library);
        EXPECT_THAT(records.EmptyDataWritten(), StartsWith("name=\"\";\n")) << round;
        EXPECT_THAT(records.EmptyActivityWritten(), StartsWith("id=\"\";\n")) << round;
        EXPECT_THAT(records.EmptyDataWritten(), StartsWith("outputs.name=\"\";\n")) << round;
        ASSERT_EQ(::dlclose(library), 0);
        ASSERT_FALSE(IsMapped());
    }
}

TEST(LoadUnload, LeavesTheEntriesAndChannelsOfOthers) {
    constexpr GUID kOther = {0x5E570005, 5, 5, {5, 5, 5, 5, 5, 5, 5, 5}};
    BexMetaClass meta(kOther, "TestOther", nullptr, nullptr, BexTypeOfClassInterface);
    const BexFillDictionary fill(kOther, CLSID_BexMetaClass, &meta, nullptr);
    const BexQorTrace sameName("WFInteropUrl", "", "STDOUT", 0);
    void* library = Load();
    EXPECT_EQ(BexQorTrace::SetOn("WFInteropUrl", 0), 2);
    ASSERT_EQ(::dlclose(library), 0);
    EXPECT_EQ(BexQorTrace::SetOn("WFInteropUrl", 0), 1);
    EXPECT_EQ(FindInDictionary(kOther), &meta);
    EXPECT_EQ(FindInDictionary("TestOther"), &meta);
}

}  // namespace
