#ifndef UrlReading_H
#define UrlReading_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/** A part of a URL. Positions count UTF-16 code units from 0, as the library does. */
struct UrlPiece {
    std::size_t start;
    std::size_t length;
    std::string name;     ///< what the part is
    std::string meaning;  ///< what it says once decoded and without padding, as UTF-8; empty for a mark
};

/** One way in which the library reads a URL. */
struct UrlReading {
    bool isAccepted = false;
    std::string code;    ///< why not, in a word that stays the same; empty when accepted
    std::string reason;  ///< the same in a sentence
    std::size_t at = 0;  ///< the position where the reading stopped; for one not accepted
    std::vector<UrlPiece> pieces;
    std::vector<std::string> remarks;  ///< what the library lets pass though it may not have been meant
};

/**
 * Follows the library's reading of a URL as an action's, piece by piece. @return the reading; whether it is accepted is
 * the library's to say, here it is when there is no code.
 */
UrlReading ReadAsAction(std::u16string_view iUrl);
/** The same for its reading as an object instance's. */
UrlReading ReadAsInstance(std::u16string_view iUrl);

#endif
