#ifndef NameChains_H
#define NameChains_H

#include <cstddef>
#include <string>

/**
 * Xerces-C finds names in tables whose hash everybody can compute. Names that were chosen for it all come to the same
 * place, in a chain that is walked for each of their occurrences, which takes seconds where others take milliseconds.
 */
namespace NameChains {

/** So many names may stand in one chain of a document's table, several times what names that nobody chose come to. */
constexpr std::size_t kLongestInDocument = 512;

/**
 * The same for the scanner's table of element names. With 14,079 places, a multiple of 19 twice as its hash is of 38,
 * it has chains of up to 600 also for numbered names that end alike.
 */
constexpr std::size_t kLongestInScanner = 1024;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/**
 * Looks for a chain that is too long, in the tables that hold these names when they come in this order.
 * @param iElements distinct names of elements, each followed by a NUL character
 * @param iAttributes distinct names of attributes, likewise; what is an element's name too is in the tables once
 * @return the place of the name that is one too many, the attributes' counted behind the elements'; or kNone.
 */
std::size_t FindTooLong(const std::u16string& iElements, const std::u16string& iAttributes);

}  // namespace NameChains

#endif
