#include "UuidArgument.h"

#include "Failure.h"
#include "JsonPlace.h"
#include "JsonText.h"
#include "JsonUuid.h"
#include "SafeText.h"
#include "Unicode.h"
#include "UrlText.h"
#include "UserText.h"

#include <QorWflUuidLayout.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t kBlockDigits = 2 * static_cast<std::size_t>(QorWflUuidLayout::kBlockSize);

bool IsHex(std::string_view iText) {
    return iText.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

/** What stands there instead of a UUID. */
std::string Found(const std::string& iText) {
    if (iText.empty()) {
        return "nothing";
    }
    return IsHex(iText) ? std::to_string(iText.size()) + (iText.size() == 1 ? " digit" : " digits") : "none of them";
}

/** The block of 100 hexadecimal digits, nothing for another text. */
std::optional<std::string> BlockOfDigits(const std::string& iText) {
    if (iText.size() != kBlockDigits || !IsHex(iText)) {
        return std::nullopt;
    }
    std::string block;
    for (std::size_t i = 0; i < kBlockDigits; i += 2) {
        block += static_cast<char>(std::stoi(iText.substr(i, 2), nullptr, 16));
    }
    return block;
}

}  // namespace

std::string ReadUuidArgument(const std::string& iText) {
    if (const std::optional<std::string> block = BlockOfDigits(iText)) {
        return *block;
    }
    const BexUnicodeString argument = FromUser(iText);
    const std::string text = ToUtf8(argument);
    const std::string name = "UUID " + Quoted(text);
    const std::string_view start = std::string_view(text).substr(std::min(text.find_first_not_of(" \t"), text.size()));
    if (start.starts_with('{')) {
        const nlohmann::json document = ParseJson(text, name);
        return ReadJsonUuid(JsonPlace(document, name));
    }
    const std::u16string units = UnitsOf(argument);
    if (!units.starts_with(kLongUrlPrefix) && !units.starts_with(kShortUrlPrefix)) {
        throw Failure(name + ": expected an instance URL (LumenUID://Legacy+QOR1/... or qor://...), a JSON object or " +
                      std::to_string(kBlockDigits) + " hexadecimal digits; found " + Found(text));
    }
    const nlohmann::json url(text);
    return ReadJsonUuid(JsonPlace(url, name));
}

std::string ReadUuidFields(const UuidFields& iFields) {
    // An option that was not given is as a member that is not there.
    const auto valueOf = [](const std::optional<std::string>& iValue) {
        return iValue ? nlohmann::json(ToUtf8(FromUser(*iValue))) : nlohmann::json();
    };
    const nlohmann::json values[] = {valueOf(iFields.dbName), valueOf(iFields.environment), valueOf(iFields.table),
                                     valueOf(iFields.coid), valueOf(iFields.compid)};
    const std::string names[] = {"--db-name", "--environment", "--table", "--coid", "--compid"};
    const auto place = [&](std::size_t iIndex) { return JsonPlace(values[iIndex], names[iIndex]); };
    return ReadUuidPlaces({place(0), place(1), place(2), place(3), place(4)});
}
