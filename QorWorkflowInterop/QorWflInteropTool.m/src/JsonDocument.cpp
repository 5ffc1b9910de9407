#include "JsonDocument.h"

#include <nlohmann/json.hpp>

std::string JsonDocument(const nlohmann::ordered_json& iDocument) {
    constexpr int kIndent = 2;
    return iDocument.dump(kIndent, ' ', true, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}
