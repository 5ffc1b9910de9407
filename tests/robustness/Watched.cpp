#include "Watched.h"

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <locale.h>
#include <pthread.h>

// Calls are noted in plain memory: some come before any object of this program is built.
namespace {

constexpr int kMost = 4096;

struct Noted {
    const char* function;
    char name[64];
    void* caller;
};

Noted noted[kMost];
int count = 0;

void Note(const char* iFunction, const char* iName, void* iCaller) {
    if (count < kMost) {
        Noted& one = noted[count];
        one.function = iFunction;
        std::strncpy(one.name, iName == nullptr ? "" : iName, sizeof one.name - 1);
        one.caller = iCaller;
        ++count;
    }
}

template <typename Function>
Function* Next(const char* iName) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, iName));
}

std::string LibraryOf(void* iCaller) {
    Dl_info info{};
    if (::dladdr(iCaller, &info) == 0 || info.dli_fname == nullptr) {
        return "";
    }
    const std::string path = info.dli_fname;
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

#define SEEN extern "C" __attribute__((visibility("default"), noinline))

SEEN char* getenv(const char* iName) noexcept {
    Note("getenv", iName, __builtin_return_address(0));
    return Next<char*(const char*)>("getenv")(iName);
}

SEEN char* secure_getenv(const char* iName) noexcept {
    Note("secure_getenv", iName, __builtin_return_address(0));
    return Next<char*(const char*)>("secure_getenv")(iName);
}

SEEN int setenv(const char* iName, const char* iValue, int iReplaces) noexcept {
    Note("setenv", iName, __builtin_return_address(0));
    return Next<int(const char*, const char*, int)>("setenv")(iName, iValue, iReplaces);
}

SEEN int pthread_create(pthread_t* oThread, const pthread_attr_t* iAttributes, void* (*iRoutine)(void*),
                        void* iArgument) noexcept {
    Note("pthread_create", "", __builtin_return_address(0));
    return Next<int(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*)>("pthread_create")(oThread, iAttributes,
                                                                                                   iRoutine, iArgument);
}

SEEN sighandler_t signal(int iSignal, sighandler_t iHandler) noexcept {
    Note("signal", "", __builtin_return_address(0));
    return Next<sighandler_t(int, sighandler_t)>("signal")(iSignal, iHandler);
}

SEEN int sigaction(int iSignal, const struct sigaction* iNew, struct sigaction* oOld) noexcept {
    if (iNew != nullptr) {
        Note("sigaction", "", __builtin_return_address(0));
    }
    return Next<int(int, const struct sigaction*, struct sigaction*)>("sigaction")(iSignal, iNew, oOld);
}

SEEN char* setlocale(int iCategory, const char* iLocale) noexcept {
    if (iLocale != nullptr) {
        Note("setlocale", iLocale, __builtin_return_address(0));
    }
    return Next<char*(int, const char*)>("setlocale")(iCategory, iLocale);
}

SEEN locale_t uselocale(locale_t iLocale) noexcept {
    if (iLocale != nullptr) {
        Note("uselocale", "", __builtin_return_address(0));
    }
    return Next<locale_t(locale_t)>("uselocale")(iLocale);
}

namespace Watched {

std::vector<Call> TakeCalls() {
    std::vector<Call> calls;
    const int taken = count;
    for (int i = 0; i < taken; ++i) {
        const std::string name = noted[i].name;
        calls.push_back({noted[i].function + (name.empty() ? "" : " " + name), LibraryOf(noted[i].caller)});
    }
    count = 0;
    return calls;
}

}  // namespace Watched
