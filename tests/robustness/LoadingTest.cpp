// What loading and using the libraries does to the process around them. This program is linked to none of them.

#include "Watched.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <functional>
#include <malloc.h>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using testing::IsEmpty;
using testing::IsSubsetOf;

// A sanitizer keeps a little memory for every library loaded; its own search for leaks takes the place of counting.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryIsCounted = false;
constexpr int kRounds = 30;
#else
constexpr bool kMemoryIsCounted = true;
constexpr int kRounds = 800;  // the loader and the allocator keep a little more for hundreds of them
#endif

constexpr const char* kPlugin = PLUGIN_LIBRARY;
constexpr const char* kInterop = INTEROP_LIBRARY;
constexpr const char* kFramework = FRAMEWORK_LIBRARY;

using Use = std::size_t (*)();

void* Load() {
    void* library = ::dlopen(kPlugin, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(library, nullptr) << ::dlerror();
    return library;
}

Use UseOf(void* iLibrary) {
    return reinterpret_cast<Use>(::dlsym(iLibrary, "UseEverything"));
}

bool IsMapped(const char* iLibrary) {
    void* library = ::dlopen(iLibrary, RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) {
        ::dlclose(library);
    }
    return library != nullptr;
}

/** What a library is called, without folders and version. */
bool IsOurs(const std::string& iLibrary) {
    return iLibrary.find("libBexFramework") == 0 || iLibrary.find("libQorWflInteropUtil") == 0;
}

/** The calls of our own libraries, and of those that they bring along when @p iWithOthers. */
std::set<std::string> Calls(const std::string& iFunction, bool iWithOthers) {
    std::set<std::string> found;
    for (const Watched::Call& call : Watched::TakeCalls()) {
        if (call.what.compare(0, iFunction.size(), iFunction) == 0 && (iWithOthers || IsOurs(call.library))) {
            found.insert(call.what);
        }
    }
    return found;
}

/** Everything of the process that a library could change behind its host's back. */
std::string StateOfTheProcess() {
    std::ostringstream state;
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) == 0) {
            state << number << ":" << reinterpret_cast<void*>(action.sa_handler) << ":" << action.sa_flags << " ";
        }
    }
    sigset_t blocked;
    ::sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (int number = 1; number < NSIG; ++number) {
        state << sigismember(&blocked, number);
    }
    state << "\n" << std::setlocale(LC_ALL, nullptr) << "\n";
    std::vector<char> folder(4096);
    state << ::getcwd(folder.data(), folder.size()) << "\n";
    for (char** variable = environ; *variable != nullptr; ++variable) {
        state << *variable << "\n";
    }
    int threads = 0;
    if (DIR* tasks = ::opendir("/proc/self/task")) {
        while (const dirent* task = ::readdir(tasks)) {
            threads += task->d_name[0] != '.' ? 1 : 0;
        }
        ::closedir(tasks);
    }
    state << threads << " threads\n";
    return state.str();
}

/** Runs something and gives what it wrote to standard output and standard error. */
std::string Written(const std::function<void()>& iWork) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    iWork();
    return testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr();
}

TEST(Loading, WhatIsWatchedForIsSeen) {
    Watched::TakeCalls();
    const char* const value = std::getenv("HOME");
    static_cast<void>(value);
    std::signal(SIGUSR2, std::signal(SIGUSR2, SIG_IGN));
    std::setlocale(LC_NUMERIC, "C");
    std::set<std::string> calls;
    for (const Watched::Call& call : Watched::TakeCalls()) {
        calls.insert(call.what);
    }
    EXPECT_THAT((std::set<std::string>{"getenv HOME", "signal", "setlocale C"}), IsSubsetOf(calls));
}

TEST(Loading, ChangesNothingOfTheProcessAndPrintsNothing) {
    const std::string before = StateOfTheProcess();
    void* library = nullptr;
    EXPECT_EQ(Written([&] { library = Load(); }), "");
    EXPECT_EQ(StateOfTheProcess(), before);
    EXPECT_EQ(Written([&] { UseOf(library)(); }), "");
    EXPECT_EQ(StateOfTheProcess(), before) << "using everything does not either";
    EXPECT_EQ(Written([&] { ::dlclose(library); }), "");
    EXPECT_EQ(StateOfTheProcess(), before);
}

TEST(Loading, OursReadTheDocumentedVariablesOnly) {
    Watched::TakeCalls();
    void* library = Load();
    EXPECT_EQ(Calls("getenv", false), std::set<std::string>{"getenv BexQorTrace"});
    UseOf(library)();
    EXPECT_EQ(Calls("getenv", false), std::set<std::string>{"getenv BexMsgCatalogPath"});
    UseOf(library)();
    EXPECT_THAT(Calls("secure_getenv", false), IsEmpty());
    ::dlclose(library);
    EXPECT_THAT(Calls("getenv", false), IsEmpty());
}

TEST(Loading, NobodyStartsThreadsSetsHandlersOrLocales) {
    for (const char* function : {"pthread_create", "signal", "sigaction", "setlocale", "uselocale", "setenv"}) {
        Watched::TakeCalls();
        void* library = Load();
        UseOf(library)();
        ::dlclose(library);
        EXPECT_THAT(Calls(function, true), IsEmpty()) << function << ", libraries that are brought along included";
    }
}

std::size_t HeapInUse() {
    const struct mallinfo2 now = ::mallinfo2();
    return now.uordblks + now.hblkhd;
}

TEST(Loading, HundredsOfTimesWithEverythingUsedLeavesNothing) {
    constexpr int kQuarter = kRounds / 4;
    std::size_t expected = 0;
    std::size_t early = SIZE_MAX;  // the least in the third quarter; the allocator keeps now more, now less
    std::size_t late = SIZE_MAX;   // the least in the last quarter
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        void* library = Load();
        ASSERT_NE(UseOf(library), nullptr);
        const std::size_t result = UseOf(library)();
        expected = expected == 0 ? result : expected;
        ASSERT_EQ(result, expected);
        ASSERT_EQ(::dlclose(library), 0);
        ASSERT_FALSE(IsMapped(kPlugin));
        ASSERT_FALSE(IsMapped(kInterop));
        ASSERT_FALSE(IsMapped(kFramework));
        if (round / kQuarter == 2) {
            early = std::min(early, HeapInUse());
        } else if (round / kQuarter >= 3) {
            late = std::min(late, HeapInUse());
        }
    }
    if (kMemoryIsCounted && !HasFailure()) {
        constexpr std::size_t kHalfOfTheSmallestBlock = 16;
        EXPECT_LT(late, early + kHalfOfTheSmallestBlock * kQuarter) << "less than any leak would take";
    }
}

}  // namespace
