#include "AllocationWatch.h"

#include <array>
#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

std::atomic<long> liveArrays{0};
std::atomic<long> livePlain{0};
std::atomic<std::size_t> requested{0};
std::atomic<std::size_t> failFrom{kNever};
std::atomic<std::size_t> watchedSize{kNever};
std::array<std::atomic<void*>, 64> watched{};
std::atomic<long> requestsBeforeFailure{-1};
std::atomic<bool> releasesAreWatched{false};
std::atomic<std::size_t> releaseCount{0};
std::array<std::atomic<void*>, 64> released{};

void NoteRelease(void* iBlock) noexcept {
    if (releasesAreWatched) {
        const std::size_t place = releaseCount++;
        if (place < released.size()) {
            released[place] = iBlock;
        }
    }
}

void* Allocate(std::size_t iBytes) noexcept {
    if (requestsBeforeFailure >= 0 && requestsBeforeFailure-- == 0) {
        return nullptr;
    }
    requested += iBytes;
    return std::malloc(iBytes == 0 ? 1 : iBytes);
}

void* AllocatePlain(std::size_t iBytes) noexcept {
    void* block = Allocate(iBytes);
    if (block == nullptr) {
        return nullptr;
    }
    ++livePlain;
    if (iBytes == watchedSize) {
        for (std::atomic<void*>& place : watched) {
            void* vacant = nullptr;
            if (place.compare_exchange_strong(vacant, block)) {
                break;
            }
        }
    }
    return block;
}

void* AllocateArray(std::size_t iBytes) noexcept {
    void* block = iBytes >= failFrom ? nullptr : Allocate(iBytes);
    liveArrays += block != nullptr ? 1 : 0;
    return block;
}

void ReleasePlain(void* iBlock) noexcept {
    if (iBlock == nullptr) {
        return;
    }
    --livePlain;
    NoteRelease(iBlock);
    if (watchedSize != kNever) {
        for (std::atomic<void*>& place : watched) {
            void* block = iBlock;
            place.compare_exchange_strong(block, nullptr);
        }
    }
    std::free(iBlock);
}

void ReleaseArray(void* iBlock) noexcept {
    if (iBlock == nullptr) {
        return;
    }
    --liveArrays;
    NoteRelease(iBlock);
    std::free(iBlock);
}

void* OrThrow(void* iBlock) {
    if (iBlock == nullptr) {
        throw std::bad_alloc();
    }
    return iBlock;
}

}  // namespace

void* operator new(std::size_t iBytes) {
    return OrThrow(AllocatePlain(iBytes));
}
void* operator new[](std::size_t iBytes) {
    return OrThrow(AllocateArray(iBytes));
}
void* operator new(std::size_t iBytes, const std::nothrow_t&) noexcept {
    return AllocatePlain(iBytes);
}
void* operator new[](std::size_t iBytes, const std::nothrow_t&) noexcept {
    return AllocateArray(iBytes);
}
void operator delete(void* iBlock) noexcept {
    ReleasePlain(iBlock);
}
void operator delete[](void* iBlock) noexcept {
    ReleaseArray(iBlock);
}
void operator delete(void* iBlock, std::size_t) noexcept {
    ReleasePlain(iBlock);
}
void operator delete[](void* iBlock, std::size_t) noexcept {
    ReleaseArray(iBlock);
}
void operator delete(void* iBlock, const std::nothrow_t&) noexcept {
    ReleasePlain(iBlock);
}
void operator delete[](void* iBlock, const std::nothrow_t&) noexcept {
    ReleaseArray(iBlock);
}

namespace AllocationWatch {

long LiveArrays() {
    return liveArrays;
}

long LiveBlocks() {
    return livePlain + liveArrays;
}

FailingArrays::FailingArrays(std::size_t iBytes) {
    failFrom = iBytes;
}

FailingArrays::~FailingArrays() {
    failFrom = kNever;
}

FailingRequest::FailingRequest(long iBefore) {
    requestsBeforeFailure = iBefore;
}

FailingRequest::~FailingRequest() {
    requestsBeforeFailure = -1;
}

bool FailingRequest::Reached() const {
    return requestsBeforeFailure < 0;
}

Requests::Requests() : before(requested) {}

std::size_t Requests::Bytes() const {
    return requested - before;
}

PlainBlocks::PlainBlocks(std::size_t iBytes) {
    watchedSize = iBytes;
}

PlainBlocks::~PlainBlocks() {
    watchedSize = kNever;
    for (std::atomic<void*>& place : watched) {
        place = nullptr;
    }
}

bool PlainBlocks::Holds(const void* iBlock) const {
    for (const std::atomic<void*>& place : watched) {
        if (iBlock != nullptr && place == iBlock) {
            return true;
        }
    }
    return false;
}

Releases::Releases() {
    for (std::atomic<void*>& place : released) {
        place = nullptr;
    }
    releaseCount = 0;
    releasesAreWatched = true;
}

Releases::~Releases() {
    releasesAreWatched = false;
}

int Releases::PlaceOf(const void* iBlock) const {
    for (std::size_t place = 0; place < released.size(); ++place) {
        if (iBlock != nullptr && released[place] == iBlock) {
            return static_cast<int>(place);
        }
    }
    return -1;
}

}  // namespace AllocationWatch
