#include "NearestName.h"

#include <algorithm>
#include <numeric>

namespace {

/** A longer text is none of the names, however near, and the work grows with its length. */
constexpr std::size_t kMaxLength = 200;

char Lower(char iCharacter) {
    return iCharacter >= 'A' && iCharacter <= 'Z' ? static_cast<char>(iCharacter - 'A' + 'a') : iCharacter;
}

}  // namespace

std::size_t EditDistance(std::string_view iText, std::string_view iOther) {
    std::vector<std::size_t> row(iOther.size() + 1);  // distances of the part of iText to each part of iOther
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char character : iText) {
        std::size_t diagonal = row[0]++;
        for (std::size_t i = 1; i < row.size(); ++i) {
            const std::size_t replaced = diagonal + (Lower(character) == Lower(iOther[i - 1]) ? 0 : 1);
            diagonal = row[i];
            row[i] = std::min({row[i] + 1, row[i - 1] + 1, replaced});
        }
    }
    return row.back();
}

std::string NearestName(std::string_view iText, const std::vector<std::string>& iNames) {
    std::string nearest;
    if (iText.size() > kMaxLength) {
        return nearest;
    }
    std::size_t least = iText.size() / 3 + 1;  // a third of the characters may be wrong
    for (const std::string& name : iNames) {
        const std::size_t distance = EditDistance(iText, name);
        if (distance < least) {
            least = distance;
            nearest = name;
        }
    }
    return nearest;
}
