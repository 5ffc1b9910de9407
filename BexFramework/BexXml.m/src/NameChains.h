#ifndef NameChains_H
#define NameChains_H

#include <cstddef>
#include <string>
#include <vector>

/**
 * Xerces-C finds names in tables whose hash everybody can compute. Names that were chosen for it all come to the same
 * place, in a chain that is walked for each of their occurrences, which takes seconds where others take milliseconds.
 */
namespace NameChains {

/**
 * A chain may have so many names: several times what any other names come to, and no more than what parsing bears.
 * Fewer names than these need no look at all.
 */
constexpr std::size_t kLongest = 512;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/**
 * Looks for a chain that is too long, in the tables that hold these names when they come in this order.
 * @param iElements distinct names of elements, each followed by a NUL character
 * @param iAttributes distinct names of attributes, likewise
 * @return the place of the name that is one too many, the attributes' counted behind the elements'; or kNone.
 */
std::size_t FindTooLong(const std::u16string& iElements, const std::u16string& iAttributes);

}  // namespace NameChains

#endif
