#ifndef SafeText_H
#define SafeText_H

#include <cstddef>
#include <string>
#include <string_view>

/**
 * A text from outside in a form that a terminal shows and does not obey: control characters, marks that turn the
 * direction of writing or end a line, and bytes that are no UTF-8 become "\xNN" or "\u{NNNN}".
 */
std::string SafeText(std::string_view iUtf8);
/** The same of UTF-16 text. */
std::string SafeText(std::u16string_view iUnits);

/** A text in single quotes, safe and of a length that can be read. */
std::string Quoted(std::u16string_view iUnits);

/** A name, such as an element's, safe and of a length that can be read. */
std::string SafeName(std::u16string_view iName);

#endif
