#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include <cstddef>
#include <dlfcn.h>
#include <malloc.h>

namespace {

using testing::NotNull;
using xercesc::XMLPlatformUtils;

// A sanitizer keeps a little memory for every library loaded; its own search for leaks takes the place of counting.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryIsCounted = false;
#else
constexpr bool kMemoryIsCounted = true;
#endif

// This program is linked to neither library: both come and go together. Xerces-C stays, as in a host that uses it.
constexpr const char* kLibrary = INTEROP_LIBRARY;
constexpr const char* kFramework = FRAMEWORK_LIBRARY;
constexpr const char* kInitializeXml = "_ZN12BexXMLParser10InitializeEv";

bool IsMapped(const char* iLibrary) {
    void* library = ::dlopen(iLibrary, RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) {
        ::dlclose(library);
    }
    return library != nullptr;
}

std::size_t HeapBytesInUse() {
    const struct mallinfo2 heap = ::mallinfo2();
    return heap.uordblks + heap.hblkhd;
}

/** Xerces-C has its memory manager from its first start to its last end. */
bool IsXercesStarted() {
    return XMLPlatformUtils::fgMemoryManager != nullptr;
}

void LoadAndUnload(bool iStartXml) {
    void* library = ::dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    ASSERT_THAT(library, NotNull()) << ::dlerror();
    EXPECT_TRUE(IsMapped(kFramework));
    if (iStartXml) {
        using Initialize = int (*)();
        const auto initialize = reinterpret_cast<Initialize>(::dlsym(library, kInitializeXml));
        ASSERT_THAT(initialize, NotNull()) << ::dlerror();
        EXPECT_EQ(initialize(), 0);
        EXPECT_EQ(initialize(), 0);
        EXPECT_TRUE(IsXercesStarted());
    }
    ASSERT_EQ(::dlclose(library), 0);
    EXPECT_FALSE(IsMapped(kLibrary));
    EXPECT_FALSE(IsMapped(kFramework));
}

class WholeUnload : public testing::TestWithParam<bool> {};

TEST_P(WholeUnload, TakesTheFrameworkAlongAndLeavesNothing) {
    constexpr int kRounds = 1000;
    std::size_t heap = 0;
    for (int round = -20; round < kRounds && !HasFailure(); ++round) {
        if (round == 0) {
            heap = HeapBytesInUse();
        }
        LoadAndUnload(GetParam());
        EXPECT_FALSE(IsXercesStarted());
    }
    ASSERT_FALSE(HasFailure());
    if (kMemoryIsCounted) {
        EXPECT_LT(HeapBytesInUse(), heap + 8 * kRounds) << "less than any leak would take";
    }
}

TEST_P(WholeUnload, LeavesXercesToAHostThatStartedIt) {
    XMLPlatformUtils::Initialize();
    for (int round = 0; round < 3 && !HasFailure(); ++round) {
        LoadAndUnload(GetParam());
        ASSERT_TRUE(IsXercesStarted());
        XMLCh* text = xercesc::XMLString::transcode("still here");
        EXPECT_EQ(xercesc::XMLString::stringLen(text), 10U);
        xercesc::XMLString::release(&text);
    }
    XMLPlatformUtils::Terminate();
    EXPECT_FALSE(IsXercesStarted()) << "no start is left over";
}

INSTANTIATE_TEST_SUITE_P(LoadUnload, WholeUnload, testing::Bool(), [](const testing::TestParamInfo<bool>& iInfo) {
    return iInfo.param ? "XmlStarted" : "XmlNotStarted";
});

}  // namespace
