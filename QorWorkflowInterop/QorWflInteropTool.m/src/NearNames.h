#ifndef NearNames_H
#define NearNames_H

#include <string>
#include <string_view>

/** @return whether a name is another one but for a namespace prefix and the case of letters, and not that one itself.
 */
bool IsNearly(std::u16string_view iName, std::u16string_view iOther);

/** @return in words how a name that is nearly another one differs from it. */
std::string Difference(std::u16string_view iName);

#endif
