#include "NameChains.h"

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

namespace {

using Names = std::vector<std::u16string_view>;

constexpr std::size_t kPlacesOfDocument = 257;  // in a document's table of the names of all its nodes, which stays so
constexpr std::size_t kPlacesOfScanner = 109;   // at first, in the scanner's table of element names

/** The names that stand in a text one behind the other; a NUL character follows each, behind its view too. */
Names Split(std::u16string_view iNames) {
    Names names;
    while (!iNames.empty()) {
        const std::size_t length = iNames.find(u'\0');
        names.push_back(iNames.substr(0, length));
        iNames.remove_prefix(length + 1);
    }
    return names;
}

/** The hash of a name before a table reduces it to its size. */
XMLSize_t HashOf(std::u16string_view iName) {
    return xercesc::XMLString::hash(iName.data(), std::numeric_limits<XMLSize_t>::max());
}

/** The chains of a table of a fixed number of places. */
class Chains {
public:
    Chains(std::size_t iPlaces, std::size_t iLongest) : lengths(iPlaces), longest(iLongest) {}

    /** @return false when the chain of that name is too long now. */
    bool Add(XMLSize_t iHash) { return ++lengths[iHash % lengths.size()] <= longest; }

private:
    std::vector<std::uint16_t> lengths;
    std::size_t longest;
};

/** The scanner's table grows to twice as many places and one when it is three quarters full. */
std::size_t FindTooLongInScanner(const Names& iElements) {
    std::vector<XMLSize_t> hashes;
    std::transform(iElements.begin(), iElements.end(), std::back_inserter(hashes), HashOf);
    std::size_t count = 0;
    for (std::size_t places = kPlacesOfScanner; count < hashes.size(); places = places * 2 + 1) {
        count = std::min(places * 3 / 4, hashes.size());
        Chains chains(places, NameChains::kLongestInScanner);
        for (std::size_t i = 0; i < count; ++i) {
            if (!chains.Add(hashes[i])) {
                return i;
            }
        }
    }
    return NameChains::kNone;
}

std::size_t FindTooLongInDocument(const Names& iElements, const Names& iAttributes) {
    Chains chains(kPlacesOfDocument, NameChains::kLongestInDocument);
    for (std::size_t i = 0; i < iElements.size(); ++i) {
        if (!chains.Add(HashOf(iElements[i]))) {
            return i;
        }
    }
    Names sorted(iElements);
    std::sort(sorted.begin(), sorted.end());
    for (std::size_t i = 0; i < iAttributes.size(); ++i) {
        const bool isNew = !std::binary_search(sorted.begin(), sorted.end(), iAttributes[i]);
        if (isNew && !chains.Add(HashOf(iAttributes[i]))) {
            return iElements.size() + i;
        }
    }
    return NameChains::kNone;
}

}  // namespace

std::size_t NameChains::FindTooLong(const std::u16string& iElements, const std::u16string& iAttributes) {
    const Names elements = Split(iElements);
    const std::size_t found = FindTooLongInScanner(elements);
    return found != kNone ? found : FindTooLongInDocument(elements, Split(iAttributes));
}
