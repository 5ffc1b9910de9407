#ifndef NearestName_H
#define NearestName_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/**
 * How many characters have to be inserted, taken out or replaced to make one text of the other. Upper and lower case of
 * ASCII letters count as the same.
 */
std::size_t EditDistance(std::string_view iText, std::string_view iOther);

/**
 * The name that somebody may have meant.
 * @return the nearest of the names, the first of equally near ones; empty when none is so near that a slip of the hand
 *         explains the difference.
 */
std::string NearestName(std::string_view iText, const std::vector<std::string>& iNames);

#endif
