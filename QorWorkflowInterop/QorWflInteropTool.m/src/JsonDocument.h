#ifndef JsonDocument_H
#define JsonDocument_H

#include <nlohmann/json_fwd.hpp>

#include <string>

/**
 * @return a JSON document as text, indented, with a line feed at its end. It is ASCII: other characters are escaped, so
 *         no control character reaches a terminal. Bytes that are no UTF-8 become U+FFFD.
 */
std::string JsonDocument(const nlohmann::ordered_json& iDocument);

#endif
