#include "KeyedHash.h"

#include <chrono>
#include <cstring>
#include <random>

namespace {

/** Two words that differ from process to process. */
struct Secret {
    std::uint64_t first;
    std::uint64_t second;
};

Secret MakeSecret() noexcept {
    const auto now = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    Secret secret{now, reinterpret_cast<std::uintptr_t>(&secret)};
    try {
        std::random_device source;
        secret.first ^= (std::uint64_t{source()} << 32U) | source();
        secret.second ^= (std::uint64_t{source()} << 32U) | source();
    } catch (...) {  // no source of randomness: the clock and the stack's address have to do
        secret.second ^= secret.first;
    }
    secret.second |= 1U;
    return secret;
}

/** Both halves of a product of 128 bits, folded: every bit of the factors reaches every bit of the result. */
std::uint64_t Mix(std::uint64_t iLeft, std::uint64_t iRight) noexcept {
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide{iLeft} * iRight;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
}

}  // namespace

std::uint64_t KeyedHash(const void* iBytes, std::size_t iLength) noexcept {
    static const Secret secret = MakeSecret();
    const auto* bytes = static_cast<const unsigned char*>(iBytes);
    std::uint64_t hash = secret.first ^ iLength;
    while (iLength > 0) {
        const std::size_t part = iLength < 16 ? iLength : 16;
        std::uint64_t words[2] = {0, 0};
        std::memcpy(words, bytes, part);
        hash = Mix(words[0] ^ secret.second, words[1] ^ hash ^ secret.first);
        bytes += part;
        iLength -= part;
    }
    return Mix(hash, secret.second);
}
