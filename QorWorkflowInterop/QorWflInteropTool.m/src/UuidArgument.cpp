#include "UuidArgument.h"

#include "JsonPlace.h"
#include "JsonText.h"
#include "JsonUuid.h"
#include "SafeText.h"
#include "Unicode.h"
#include "UserText.h"

#include <QorWflUuidLayout.h>

#include <nlohmann/json.hpp>

namespace {

/** The block of 100 hexadecimal digits, nothing for another text. */
std::optional<std::string> BlockOfDigits(const std::string& iText) {
    constexpr std::size_t kLength = 2 * static_cast<std::size_t>(QorWflUuidLayout::kBlockSize);
    if (iText.size() != kLength || iText.find_first_not_of("0123456789ABCDEFabcdef") != std::string::npos) {
        return std::nullopt;
    }
    std::string block;
    for (std::size_t i = 0; i < kLength; i += 2) {
        block += static_cast<char>(std::stoi(iText.substr(i, 2), nullptr, 16));
    }
    return block;
}

}  // namespace

std::string ReadUuidArgument(const std::string& iText) {
    if (const std::optional<std::string> block = BlockOfDigits(iText)) {
        return *block;
    }
    const std::string text = ToUtf8(FromUser(iText));
    const std::string name = "UUID " + Quoted(text);
    const bool isObject =
        text.find_first_not_of(" \t") != std::string::npos && text[text.find_first_not_of(" \t")] == '{';
    const nlohmann::json document = isObject ? ParseJson(text, name) : nlohmann::json(text);
    return ReadJsonUuid(JsonPlace(document, name));
}

std::string ReadUuidFields(const UuidFields& iFields) {
    nlohmann::json document = nlohmann::json::object();
    const auto put = [&document](const char* iName, const std::optional<std::string>& iValue) {
        if (iValue) {
            document[iName] = ToUtf8(FromUser(*iValue));
        }
    };
    put("dbName", iFields.dbName);
    put("environment", iFields.environment);
    put("table", iFields.table);
    put("coid", iFields.coid);
    put("compid", iFields.compid);
    return ReadJsonUuid(JsonPlace(document, "options"));
}
