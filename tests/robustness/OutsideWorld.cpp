#include "OutsideWorld.h"

#include <cstdarg>
#include <cstdio>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/types.h>

namespace {

std::mutex lock;
bool isNoting = false;
std::vector<std::string>* calls = nullptr;

void Note(const char* iFunction, const char* iWhat) {
    const std::lock_guard<std::mutex> guard(lock);
    if (isNoting) {
        isNoting = false;  // what the noting itself may open is no matter
        calls->push_back(std::string(iFunction) + " " + (iWhat == nullptr ? "" : iWhat));
        isNoting = true;
    }
}

/** The function whose place was taken. */
template <typename Function>
Function* Next(const char* iName) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, iName));
}

}  // namespace

OutsideWorld::OutsideWorld() {
    const std::lock_guard<std::mutex> guard(lock);
    calls = new std::vector<std::string>();
    isNoting = true;
}

OutsideWorld::~OutsideWorld() {
    const std::lock_guard<std::mutex> guard(lock);
    isNoting = false;
    delete calls;
    calls = nullptr;
}

std::vector<std::string> OutsideWorld::Calls() const {
    const std::lock_guard<std::mutex> guard(lock);
    return *calls;
}

#define SEEN extern "C" __attribute__((visibility("default")))

// The modes of files that are created go along whether they are asked for or not, as in the C library itself.
#define OPENING(NAME)                                                        \
    SEEN int NAME(const char* iName, int iFlags, ...) {                      \
        std::va_list arguments;                                              \
        va_start(arguments, iFlags);                                         \
        const mode_t mode = va_arg(arguments, mode_t);                       \
        va_end(arguments);                                                   \
        Note(#NAME, iName);                                                  \
        return Next<int(const char*, int, ...)>(#NAME)(iName, iFlags, mode); \
    }

#define OPENING_AT(NAME)                                                                      \
    SEEN int NAME(int iDirectory, const char* iName, int iFlags, ...) {                       \
        std::va_list arguments;                                                               \
        va_start(arguments, iFlags);                                                          \
        const mode_t mode = va_arg(arguments, mode_t);                                        \
        va_end(arguments);                                                                    \
        Note(#NAME, iName);                                                                   \
        return Next<int(int, const char*, int, ...)>(#NAME)(iDirectory, iName, iFlags, mode); \
    }

OPENING(open)
OPENING(open64)
OPENING_AT(openat)
OPENING_AT(openat64)

SEEN int creat(const char* iName, mode_t iMode) {
    Note("creat", iName);
    return Next<int(const char*, mode_t)>("creat")(iName, iMode);
}

SEEN FILE* fopen(const char* iName, const char* iMode) {
    Note("fopen", iName);
    return Next<FILE*(const char*, const char*)>("fopen")(iName, iMode);
}

SEEN FILE* fopen64(const char* iName, const char* iMode) {
    Note("fopen64", iName);
    return Next<FILE*(const char*, const char*)>("fopen64")(iName, iMode);
}

SEEN FILE* freopen(const char* iName, const char* iMode, FILE* iFile) {
    Note("freopen", iName);
    return Next<FILE*(const char*, const char*, FILE*)>("freopen")(iName, iMode, iFile);
}

SEEN DIR* opendir(const char* iName) {
    Note("opendir", iName);
    return Next<DIR*(const char*)>("opendir")(iName);
}

SEEN FILE* popen(const char* iCommand, const char* iMode) {
    Note("popen", iCommand);
    return Next<FILE*(const char*, const char*)>("popen")(iCommand, iMode);
}

SEEN int system(const char* iCommand) {
    Note("system", iCommand);
    return Next<int(const char*)>("system")(iCommand);
}

SEEN int socket(int iDomain, int iType, int iProtocol) noexcept {
    Note("socket", "");
    return Next<int(int, int, int)>("socket")(iDomain, iType, iProtocol);
}

SEEN int socketpair(int iDomain, int iType, int iProtocol, int* oSockets) noexcept {
    Note("socketpair", "");
    return Next<int(int, int, int, int*)>("socketpair")(iDomain, iType, iProtocol, oSockets);
}

SEEN int connect(int iSocket, const sockaddr* iAddress, socklen_t iLength) {
    Note("connect", "");
    return Next<int(int, const sockaddr*, socklen_t)>("connect")(iSocket, iAddress, iLength);
}

SEEN ssize_t sendto(int iSocket, const void* iBytes, size_t iLength, int iFlags, const sockaddr* iAddress,
                    socklen_t iAddressLength) {
    Note("sendto", "");
    return Next<ssize_t(int, const void*, size_t, int, const sockaddr*, socklen_t)>("sendto")(
        iSocket, iBytes, iLength, iFlags, iAddress, iAddressLength);
}

SEEN int getaddrinfo(const char* iNode, const char* iService, const addrinfo* iHints, addrinfo** oResults) {
    Note("getaddrinfo", iNode);
    return Next<int(const char*, const char*, const addrinfo*, addrinfo**)>("getaddrinfo")(iNode, iService, iHints,
                                                                                           oResults);
}

SEEN hostent* gethostbyname(const char* iName) {
    Note("gethostbyname", iName);
    return Next<hostent*(const char*)>("gethostbyname")(iName);
}

SEEN int gethostbyname_r(const char* iName, hostent* oHost, char* iBuffer, size_t iLength, hostent** oResult,
                         int* oError) {
    Note("gethostbyname_r", iName);
    return Next<int(const char*, hostent*, char*, size_t, hostent**, int*)>("gethostbyname_r")(
        iName, oHost, iBuffer, iLength, oResult, oError);
}
