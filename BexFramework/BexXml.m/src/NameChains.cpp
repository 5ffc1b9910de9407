#include "NameChains.h"

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>

namespace {

using Hashes = std::vector<XMLSize_t>;

constexpr std::size_t kPlacesOfDocument = 257;  // in a document's table of the names of all its nodes, which stays so
constexpr std::size_t kPlacesOfScanner = 109;   // at first, in the scanner's table of element names

/** Appends the hashes of the names before a table reduces them to its size. */
void AddHashes(std::u16string_view iNames, Hashes& ioHashes) {
    while (!iNames.empty()) {
        ioHashes.push_back(xercesc::XMLString::hash(iNames.data(), std::numeric_limits<XMLSize_t>::max()));
        iNames.remove_prefix(iNames.find(u'\0') + 1);
    }
}

/** Puts the first @p iCount names into a table, up to one too many in one place. */
std::size_t FindTooLongIn(std::size_t iPlaces, const Hashes& iHashes, std::size_t iCount) {
    std::vector<std::uint16_t> lengths(iPlaces);
    for (std::size_t i = 0; i < iCount; ++i) {
        if (++lengths[iHashes[i] % iPlaces] > NameChains::kLongest) {
            return i;
        }
    }
    return NameChains::kNone;
}

/** The scanner's table grows to twice as many places and one when it is three quarters full. */
std::size_t FindTooLongInScanner(const Hashes& iHashes) {
    std::size_t found = NameChains::kNone;
    std::size_t count = 0;
    for (std::size_t places = kPlacesOfScanner; found == NameChains::kNone && count < iHashes.size();
         places = places * 2 + 1) {
        count = std::min(places * 3 / 4, iHashes.size());
        found = FindTooLongIn(places, iHashes, count);
    }
    return found;
}

}  // namespace

std::size_t NameChains::FindTooLong(const std::u16string& iElements, const std::u16string& iAttributes) {
    Hashes hashes;
    AddHashes(iElements, hashes);
    const std::size_t found = FindTooLongInScanner(hashes);
    if (found != kNone) {
        return found;
    }
    AddHashes(iAttributes, hashes);
    return FindTooLongIn(kPlacesOfDocument, hashes, hashes.size());
}
