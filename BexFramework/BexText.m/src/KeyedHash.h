#ifndef KeyedHash_H
#define KeyedHash_H

#include <cstddef>
#include <cstdint>

/**
 * A hash that nobody outside the process can foresee, so that nobody can choose texts that collide.
 * @return the hash of @p iLength bytes, the same for the same bytes while the process lives.
 */
std::uint64_t KeyedHash(const void* iBytes, std::size_t iLength) noexcept;

#endif
