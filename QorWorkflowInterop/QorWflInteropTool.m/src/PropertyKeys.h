#ifndef PropertyKeys_H
#define PropertyKeys_H

#include <string>
#include <string_view>

/** What the keys of priorities begin with. */
constexpr std::string_view kPriorityPrefix = "actionPriority.";
/** What the keys of object mappings begin with. */
constexpr std::string_view kMappingPrefix = "actionObjects.";

/** @return whether the library asks for a key. */
bool IsKnownKey(std::string_view iKey);

/**
 * @return the key that somebody may have meant by one that the library does not ask for, with CODE, TYPE and
 *         ENVIRONMENT in the place of what is missing; empty when none is near.
 */
std::string NearestKey(std::string_view iKey);

#endif
