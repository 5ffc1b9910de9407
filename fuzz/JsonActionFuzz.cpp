#include "Failure.h"
#include "FuzzTarget.h"
#include "JsonAction.h"
#include "JsonPlace.h"
#include "JsonRecord.h"
#include "JsonText.h"
#include "PropertyCheck.h"
#include "PropertyEntries.h"
#include "ToolActionManager.h"
#include "Unicode.h"
#include "UrlTesting.h"
#include "WholeWay.h"
#include "XmlNode.h"

#include <QorWflUuidLayout.h>

#include <nlohmann/json.hpp>

#include <CapturedStream.h>
#include <EnvironmentVariable.h>
#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>

namespace {

using nlohmann::json;
using PropertyCheck::Expect;
using PropertyCheck::ExpectEqual;

const std::string kFileName = "action.json";

json TextOf(const BexUnicodeString& iText) {
    if (iText.IsNull() != 0) {
        return nullptr;
    }
    const std::string narrow = NarrowText(iText);
    std::u16string units;
    for (const char character : narrow) {
        units += static_cast<char16_t>(static_cast<unsigned char>(character));
    }
    return Utf8Of(units);
}

/** UTF-8 that holds nothing above 0xFF, in ISO-8859-1. */
std::string NarrowOf(const std::string& iUtf8) {
    std::string narrow;
    for (std::string_view rest = iUtf8; !rest.empty();) {
        narrow += static_cast<char>(TakeCharacter(rest));
    }
    return narrow;
}

std::string HexOf(std::string_view iBytes) {
    const char* const kDigits = "0123456789abcdef";
    std::string hex;
    for (const char character : iBytes) {
        const auto code = static_cast<unsigned char>(character);
        hex += kDigits[code / 16];
        hex += kDigits[code % 16];
    }
    return hex;
}

json UuidOf(const std::string& iBlock) {
    using namespace QorWflUuidLayout;
    const auto part = [&iBlock](Field iField) {
        return std::string_view(iBlock).substr(static_cast<std::size_t>(iField.offset),
                                               static_cast<std::size_t>(iField.width));
    };
    const auto text = [&part](Field iField) { return TextOf(StringOf(std::string(part(iField)))); };
    return {{"dbName", text(kDbName)},
            {"environment", text(kKienv)},
            {"table", text(kKitab)},
            {"coid", HexOf(part(kXCoid))},
            {"compid", HexOf(part(kXCompid))}};
}

/** The UUID that a text or an object gives, with the blanks that fill a field taken away and small digits. */
json PlainUuid(const json& iUuid) {
    if (iUuid.is_string()) {
        const std::string url = NarrowOf(iUuid.get_ref<const std::string&>());
        return PlainUuid(UuidOf(UrlTesting::UrlToUuid(url).value_or(std::string(QorWflUuidLayout::kBlockSize, '\0'))));
    }
    json plain = iUuid;
    for (const char* member : {"dbName", "environment", "table"}) {
        std::string text = plain.at(member);
        plain[member] = text.erase(text.find_last_not_of(' ') + 1);
    }
    for (const char* member : {"coid", "compid"}) {
        std::string digits = plain.at(member);
        std::transform(digits.begin(), digits.end(), digits.begin(), [](char iDigit) {
            return iDigit >= 'A' && iDigit <= 'F' ? static_cast<char>(iDigit + ('a' - 'A')) : iDigit;
        });
        plain[member] = digits;
    }
    return plain;
}

/** An action that was accepted, without what says nothing and with each UUID in one form. */
json Plain(const json& iValue) {
    if (!iValue.is_object()) {
        return iValue;
    }
    json plain = json::object();
    for (const auto& [name, member] : iValue.items()) {
        if (member.is_null() || (member.is_array() && member.empty())) {
            continue;
        }
        if (name == "uuid") {
            plain[name] = PlainUuid(member);
        } else if (member.is_array()) {
            for (const json& element : member) {
                plain[name].push_back(Plain(element));
            }
        } else {
            plain[name] = member;
        }
    }
    return plain;
}

/** The action as JSON again. */
json JsonOf(const JsonAction& iAction) {
    json contexts = json::array();
    for (const JsonAction::Context& context : iAction.contexts) {
        contexts.push_back({{"kind", TextOf(context.kind)}, {"value", TextOf(context.value)}});
    }
    json objects = json::array();
    for (const JsonAction::Object& object : iAction.objects) {
        Expect(object.uuid.size() == 50 || (object.uuid.empty() && object.type == "Product"),
               "an object has a UUID block, but for products");
        objects.push_back({{"type", TextOf(object.type)},
                           {"direction", TextOf(object.direction)},
                           {"nickname", TextOf(object.nickname)},
                           {"name", TextOf(object.name)},
                           {"uuid", object.uuid.empty() ? json() : UuidOf(object.uuid)}});
    }
    return {{"id", TextOf(iAction.id)},
            {"abstract", TextOf(iAction.abstract)},
            {"priority", TextOf(iAction.priority)},
            {"owner", TextOf(iAction.owner)},
            {"name", TextOf(iAction.name)},
            {"status", TextOf(iAction.status)},
            {"generation", iAction.generation ? json(*iAction.generation) : json()},
            {"duration", iAction.duration ? json(*iAction.duration) : json()},
            {"durationUnit", TextOf(iAction.durationUnit)},
            {"documentation", TextOf(iAction.documentation)},
            {"processName", TextOf(iAction.processName)},
            {"contexts", contexts},
            {"objects", objects}};
}

/** A message names the file and says something, in no more than a few times the text, in sound UTF-8. */
void CheckMessage(const std::string& iMessage, const std::string& iText) {
    Expect(iMessage.rfind(kFileName + ":", 0) == 0 && iMessage.size() > kFileName.size() + 2,
           "a message names the file and the reason");
    Expect(iMessage.size() < 1000 + 3 * iText.size(), "a message is not much longer than the text");
    try {
        Expect(!json(iMessage).dump().empty(), "a message can be shown");
    } catch (const json::exception&) {
        PropertyCheck::Fail("a message is UTF-8: " + PropertyCheck::Printable(iMessage));
    }
}

/** The action that a text tells, or nothing. */
std::optional<JsonAction> Read(const std::string& iText) {
    try {
        const json document = ParseJson(iText, kFileName);
        if (document.is_object() && document.contains(kRecordMember)) {
            return std::nullopt;  // a record, which others read
        }
        return ReadJsonAction(JsonPlace(document, kFileName));
    } catch (const Failure& failure) {
        CheckMessage(failure.what(), iText);
        return std::nullopt;
    }
}

ToolActionManager& Manager() {
    static const EnvironmentVariable path("BexMsgCatalogPath", EXAMPLES_DIR);
    static ToolActionManager manager(std::nullopt);
    return manager;
}

}  // namespace

/** The bytes are the JSON of an action. */
int LLVMFuzzerTestOneInput(const std::uint8_t* iData, std::size_t iSize) {
    const std::string text(reinterpret_cast<const char*>(iData), iSize);
    const std::optional<JsonAction> action = Read(text);
    if (!action) {
        return 0;
    }
    const json told = JsonOf(*action);
    ExpectEqual("an action is what its text tells", Plain(told).dump(1), Plain(json::parse(text)).dump(1));
    const std::optional<JsonAction> again = Read(told.dump());
    Expect(again.has_value(), "an action that was read can be told again");
    ExpectEqual("and reads back the same", JsonOf(*again).dump(1), told.dump(1));

    const CapturedStream errors(std::cerr);
    ActivityInfo record;
    Manager().FillRecord(*action, record);
    CheckWholeWay(record);
    return 0;
}
