#ifndef Unicode_H
#define Unicode_H

#include <BexUnicodeString.h>

#include <cstddef>
#include <string>
#include <string_view>

/** @return one character as UTF-8. */
std::string ToUtf8(char32_t iCode);
/** @return UTF-16 text as UTF-8; half a surrogate pair becomes U+FFFD. */
std::string ToUtf8(std::u16string_view iUnits);

/** @return a text of the library as UTF-8, in the same way; null gives an empty one. */
std::string ToUtf8(const BexUnicodeString& iText);
/** @return well-formed UTF-8 text as UTF-16. */
std::u16string ToUtf16(std::string_view iText);

/** @return how many bytes the first character of a text has that is not empty; 0 when it is no well-formed UTF-8. */
std::size_t LengthOfCharacter(std::string_view iText);
/** @return whether a text is well-formed UTF-8. */
bool IsUtf8(std::string_view iText);

/** @return why a character cannot be in a document that the library writes, or an empty text when it can. */
std::string WhyNotInDocument(char32_t iCode);

/** @return UTF-8 text at a length that can be read: cut between two characters, with "..." behind it, when longer. */
std::string Shortened(std::string_view iText, std::size_t iLength);

/**
 * Takes the next character off UTF-8 text that is known to be well-formed.
 * @param ioText loses its first character; must not be empty
 */
char32_t TakeCharacter(std::string_view& ioText);

#endif
