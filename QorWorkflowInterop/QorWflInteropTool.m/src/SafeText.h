#ifndef SafeText_H
#define SafeText_H

#include <string>
#include <string_view>

/**
 * A text from outside in a form that a terminal shows in one line and does not obey: control characters, marks that
 * turn the direction of writing, invisible ones and such as no text has, and bytes that are no UTF-8, become "\xNN" or
 * "\u{NNNN}". A text that is safe stays as it is.
 */
std::string SafeText(std::string_view iUtf8);

/** A text in double quotes, safe and of a length that can be read; for messages. */
std::string Quoted(std::string_view iUtf8);
/** The same of UTF-16 text. */
std::string Quoted(std::u16string_view iUnits);

/** A name, such as an element's, safe and of a length that can be read. */
std::string SafeName(std::u16string_view iName);

#endif
