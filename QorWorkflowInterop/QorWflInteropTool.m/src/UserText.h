#ifndef UserText_H
#define UserText_H

#include <BexUnicodeString.h>

#include <string>
#include <string_view>

/**
 * A text that a person typed, as a word of the command line or as a line of an input, for the library.
 * @param iText UTF-8; bytes that are none are taken as ISO-8859-1
 */
BexUnicodeString FromUser(std::string_view iText);

/**
 * The same for a text that a URL has to carry, which the library writes with the low 8 bits of each character.
 * @param iWhat what messages call the text
 * @throw Failure for a character outside ISO-8859-1.
 */
BexUnicodeString FromUserForUrl(std::string_view iText, const std::string& iWhat);

/** @return ISO-8859-1 bytes as UTF-8. */
std::string Latin1ToUtf8(std::string_view iBytes);

#endif
