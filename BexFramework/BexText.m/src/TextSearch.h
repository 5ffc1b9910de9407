#ifndef TextSearch_H
#define TextSearch_H

#include <cstddef>
#include <string_view>
#include <vector>

/**
 * Linear search in text of any code unit, whatever text and pattern are (Knuth, Morris and Pratt): the standard
 * library's own takes time in proportion to the product of both on periodic text.
 */
namespace TextSearch {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/** For each beginning of the pattern, the length of its longest proper beginning that it also ends with. */
template <typename Unit>
std::vector<std::size_t> Borders(std::basic_string_view<Unit> iPattern) {
    std::vector<std::size_t> borders(iPattern.size(), 0);
    std::size_t matched = 0;
    for (std::size_t i = 1; i < iPattern.size(); ++i) {
        while (matched > 0 && iPattern[i] != iPattern[matched]) {
            matched = borders[matched - 1];
        }
        if (iPattern[i] == iPattern[matched]) {
            ++matched;
        }
        borders[i] = matched;
    }
    return borders;
}

/** @return where the first (or last) occurrence of a pattern of two units or more begins, or kNone. */
template <typename Unit>
std::size_t FindPattern(std::basic_string_view<Unit> iText, std::basic_string_view<Unit> iPattern, bool iLast) {
    if (iPattern.size() > iText.size()) {
        return kNone;
    }
    const std::vector<std::size_t> borders = Borders(iPattern);
    std::size_t found = kNone;
    std::size_t matched = 0;
    for (std::size_t i = 0; i < iText.size(); ++i) {
        while (matched > 0 && iText[i] != iPattern[matched]) {
            matched = borders[matched - 1];
        }
        if (iText[i] == iPattern[matched]) {
            ++matched;
        }
        if (matched == iPattern.size()) {
            found = i + 1 - matched;
            if (!iLast) {
                return found;
            }
            matched = borders[matched - 1];
        }
    }
    return found;
}

/** @return where the first (or last) occurrence of a pattern begins, or kNone; an empty pattern is nowhere. */
template <typename Unit>
std::size_t Find(std::basic_string_view<Unit> iText, std::basic_string_view<Unit> iPattern, bool iLast) {
    if (iPattern.empty()) {
        return kNone;
    }
    if (iPattern.size() == 1) {
        return iLast ? iText.rfind(iPattern[0]) : iText.find(iPattern[0]);
    }
    return FindPattern(iText, iPattern, iLast);
}

}  // namespace TextSearch

#endif
