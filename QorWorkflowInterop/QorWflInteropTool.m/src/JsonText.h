#ifndef JsonText_H
#define JsonText_H

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

/** How many objects and lists may be open at the same time in a JSON text. */
constexpr int kMaxJsonDepth = 64;

/**
 * Parses JSON text, in which no object may have a member twice.
 * @param iText UTF-8
 * @param iFileName what messages call the text
 * @throw Failure with file, line and column when the text is no JSON or nested deeper than kMaxJsonDepth.
 */
nlohmann::json ParseJson(std::string_view iText, const std::string& iFileName);

#endif
