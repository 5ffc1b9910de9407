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
    } catch (...) {
        // no source of randomness: the clock and the stack's address have to do
        secret.second ^= secret.first;  // GCOVR_EXCL_LINE: machines that tests run on have a source
    }
    secret.second |= 1U;
    return secret;
}

/** Both halves of a product of 128 bits, folded: every bit of the factors reaches every bit of the result. */
std::uint64_t Mix(std::uint64_t iLeft, std::uint64_t iRight) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide{iLeft} * iRight;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
#else  // 32-bit machines: out of four products of halves
    constexpr std::uint64_t kLowHalf = 0xFFFFFFFFU;
    const std::uint64_t lowLow = (iLeft & kLowHalf) * (iRight & kLowHalf);
    const std::uint64_t highLow = (iLeft >> 32U) * (iRight & kLowHalf);
    const std::uint64_t lowHigh = (iLeft & kLowHalf) * (iRight >> 32U);
    const std::uint64_t middle = (lowLow >> 32U) + (highLow & kLowHalf) + lowHigh;  // at most 2^64 - 1
    const std::uint64_t high = (iLeft >> 32U) * (iRight >> 32U) + (highLow >> 32U) + (middle >> 32U);
    return ((middle << 32U) | (lowLow & kLowHalf)) ^ high;
#endif
}

template <typename Word>
std::uint64_t WordAt(const unsigned char* iBytes) noexcept {
    Word word;
    std::memcpy(&word, iBytes, sizeof word);
    return word;
}

}  // namespace

std::uint64_t KeyedHash(const void* iBytes, std::size_t iLength) noexcept {
    static const Secret secret = MakeSecret();
    const auto* bytes = static_cast<const unsigned char*>(iBytes);
    std::uint64_t hash = secret.first ^ iLength;
    std::size_t left = iLength;
    for (; left > 16; left -= 16, bytes += 16) {
        hash = Mix(WordAt<std::uint64_t>(bytes) ^ secret.second, WordAt<std::uint64_t>(bytes + 8) ^ hash);
    }
    // The rest is read as two words that overlap where it is shorter than both; the length tells such texts apart.
    std::uint64_t first = 0;
    std::uint64_t last = 0;
    if (left >= 8) {
        first = WordAt<std::uint64_t>(bytes);
        last = WordAt<std::uint64_t>(bytes + left - 8);
    } else if (left >= 4) {
        first = WordAt<std::uint32_t>(bytes);
        last = WordAt<std::uint32_t>(bytes + left - 4);
    } else if (left > 0) {
        first = bytes[0];
        last = (std::uint64_t{bytes[left / 2]} << 8U) | bytes[left - 1];
    }
    hash = Mix(first ^ secret.second, last ^ hash);
    return Mix(hash, secret.second);
}
