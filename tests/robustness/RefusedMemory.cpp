#include "RefusedMemory.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> liveBlocks{0};
std::atomic<std::size_t> requestedBytes{0};

// Of this thread; plain values, because they are looked at before and while anything else is built.
thread_local long requestsGranted = -1;  // until the refusal; negative: nothing is refused
thread_local bool refusesOn = false;
thread_local bool hasRefused = false;

/** Whether a request is granted. */
bool IsGranted(std::size_t iBytes) noexcept {
    if (requestsGranted == 0) {
        hasRefused = true;
        if (!refusesOn) {
            requestsGranted = -1;
        }
        errno = ENOMEM;
        return false;
    }
    if (requestsGranted > 0) {
        --requestsGranted;
    }
    requestedBytes += iBytes;
    return true;
}

void* Counted(void* iBlock) noexcept {
    liveBlocks += iBlock != nullptr ? 1 : 0;
    return iBlock;
}

}  // namespace

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)

namespace {

void* Request(std::size_t iBytes) noexcept {
    return IsGranted(iBytes) ? Counted(std::malloc(iBytes == 0 ? 1 : iBytes)) : nullptr;
}

void Release(void* iBlock) noexcept {
    liveBlocks -= iBlock != nullptr ? 1 : 0;
    std::free(iBlock);
}

void* OrThrow(void* iBlock) {
    if (iBlock == nullptr) {
        throw std::bad_alloc();
    }
    return iBlock;
}

}  // namespace

// Not inlined: the compiler would take the halves of a pair for strangers where it sees only one of them.
[[gnu::noinline]] void* operator new(std::size_t iBytes) {
    return OrThrow(Request(iBytes));
}
[[gnu::noinline]] void* operator new[](std::size_t iBytes) {
    return OrThrow(Request(iBytes));
}
[[gnu::noinline]] void* operator new(std::size_t iBytes, const std::nothrow_t&) noexcept {
    return Request(iBytes);
}
[[gnu::noinline]] void* operator new[](std::size_t iBytes, const std::nothrow_t&) noexcept {
    return Request(iBytes);
}
[[gnu::noinline]] void operator delete(void* iBlock) noexcept {
    Release(iBlock);
}
[[gnu::noinline]] void operator delete[](void* iBlock) noexcept {
    Release(iBlock);
}
[[gnu::noinline]] void operator delete(void* iBlock, std::size_t) noexcept {
    Release(iBlock);
}
[[gnu::noinline]] void operator delete[](void* iBlock, std::size_t) noexcept {
    Release(iBlock);
}
[[gnu::noinline]] void operator delete(void* iBlock, const std::nothrow_t&) noexcept {
    Release(iBlock);
}
[[gnu::noinline]] void operator delete[](void* iBlock, const std::nothrow_t&) noexcept {
    Release(iBlock);
}

#else

// The C library's own functions under the names that it keeps for those who take the place of the others.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
void __libc_free(void*);

__attribute__((visibility("default"))) void* malloc(std::size_t iBytes) noexcept {
    return IsGranted(iBytes) ? Counted(__libc_malloc(iBytes)) : nullptr;
}

__attribute__((visibility("default"))) void* calloc(std::size_t iCount, std::size_t iBytes) noexcept {
    return IsGranted(iCount * iBytes) ? Counted(__libc_calloc(iCount, iBytes)) : nullptr;
}

__attribute__((visibility("default"))) void* realloc(void* iBlock, std::size_t iBytes) noexcept {
    if (!IsGranted(iBytes)) {
        return nullptr;
    }
    void* block = __libc_realloc(iBlock, iBytes);
    liveBlocks += iBlock == nullptr && block != nullptr ? 1 : 0;
    liveBlocks -= iBlock != nullptr && iBytes == 0 ? 1 : 0;
    return block;
}

__attribute__((visibility("default"))) void* memalign(std::size_t iAlignment, std::size_t iBytes) noexcept {
    return IsGranted(iBytes) ? Counted(__libc_memalign(iAlignment, iBytes)) : nullptr;
}

__attribute__((visibility("default"))) void* aligned_alloc(std::size_t iAlignment, std::size_t iBytes) noexcept {
    return memalign(iAlignment, iBytes);
}

__attribute__((visibility("default"))) int posix_memalign(void** oBlock, std::size_t iAlignment,
                                                          std::size_t iBytes) noexcept {
    *oBlock = memalign(iAlignment, iBytes);
    return *oBlock == nullptr ? ENOMEM : 0;
}

__attribute__((visibility("default"))) void free(void* iBlock) noexcept {
    liveBlocks -= iBlock != nullptr ? 1 : 0;
    __libc_free(iBlock);
}
}

#endif

namespace RefusedMemory {

long LiveBlocks() {
    return liveBlocks;
}

std::size_t RequestedBytes() {
    return requestedBytes;
}

Refusal::Refusal(long iGranted, Mode iMode) {
    hasRefused = false;
    refusesOn = iMode == Mode::kFromThenOn;
    requestsGranted = iGranted;
}

Refusal::~Refusal() {
    requestsGranted = -1;
}

bool Refusal::Happened() const {
    return hasRefused;
}

}  // namespace RefusedMemory
