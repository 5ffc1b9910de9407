#include "JsonPlace.h"

#include "Failure.h"
#include "Unicode.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>

namespace {

using nlohmann::json;

const json kAbsent;
constexpr std::size_t kMaxExcerptLength = 80;

/** A value in the words of a message. */
std::string Found(const json& iValue) {
    switch (iValue.type()) {
        case json::value_t::null:
            return "nothing";
        case json::value_t::object:
            return "an object";
        case json::value_t::array:
            return "a list";
        case json::value_t::string:
            return Shortened(iValue.dump(), kMaxExcerptLength);
        case json::value_t::boolean:
            return iValue.get<bool>() ? "true" : "false";
        default:
            return "the number " + iValue.dump();
    }
}

/** A member name as a part of a JSON pointer. */
std::string PointerPart(std::string_view iName) {
    std::string part = "/";
    for (const char c : iName) {
        part += c == '~' ? "~0" : c == '/' ? "~1" : std::string(1, c);
    }
    return part;
}

}  // namespace

JsonPlace::JsonPlace(const json& iDocument, const std::string& iFileName) : JsonPlace(iDocument, iFileName, "") {}

JsonPlace::JsonPlace(const json& iValue, const std::string& iFileName, std::string iPointer)
    : value(&iValue), fileName(&iFileName), pointer(std::move(iPointer)) {}

bool JsonPlace::IsAbsent() const {
    return value->is_null();
}

bool JsonPlace::IsObject() const {
    return value->is_object();
}

bool JsonPlace::IsText() const {
    return value->is_string();
}

void JsonPlace::RequireObject(const std::vector<std::string_view>& iMembers) const {
    if (!IsObject()) {
        RefuseOther("an object");
    }
    for (const auto& [name, member] : value->items()) {
        if (std::find(iMembers.begin(), iMembers.end(), name) == iMembers.end()) {
            std::string known;
            for (const std::string_view each : iMembers) {
                known += (known.empty() ? "" : ", ") + std::string(each);
            }
            JsonPlace(member, *fileName, pointer + PointerPart(name)).Refuse("unknown member; known are " + known);
        }
    }
}

JsonPlace JsonPlace::Member(std::string_view iName) const {
    const auto found = value->find(std::string(iName));
    return JsonPlace(found == value->end() ? kAbsent : *found, *fileName, pointer + PointerPart(iName));
}

std::size_t JsonPlace::GetListSize() const {
    if (!IsAbsent() && !value->is_array()) {
        RefuseOther("a list");
    }
    return value->size();
}

JsonPlace JsonPlace::Element(std::size_t iIndex) const {
    return JsonPlace((*value)[iIndex], *fileName, pointer + '/' + std::to_string(iIndex));
}

BexUnicodeString JsonPlace::Text() const {
    return IsAbsent() ? BexUnicodeString() : BexUnicodeString::FromNarrow(RequiredText());
}

BexUnicodeString JsonPlace::AnyText() const {
    if (IsAbsent()) {
        return BexUnicodeString();
    }
    RequireText();
    const std::u16string text = ToUtf16(value->get_ref<const std::string&>());
    return BexUnicodeString(text.data(), static_cast<int>(text.size()));
}

std::string JsonPlace::RequiredText() const {
    RequireText();
    std::string_view rest = value->get_ref<const std::string&>();
    std::string text;
    text.reserve(rest.size());
    while (!rest.empty()) {
        const char32_t code = TakeCharacter(rest);
        if (const std::string why = WhyNotInDocument(code); !why.empty()) {
            Refuse(why);
        }
        text += static_cast<char>(code);
    }
    return text;
}

void JsonPlace::RequireText() const {
    if (!value->is_string()) {
        RefuseOther("a text");
    }
}

std::optional<long> JsonPlace::WholeNumber(long iLeast, long iMost) const {
    if (IsAbsent()) {
        return std::nullopt;
    }
    const bool fits = value->is_number_integer() &&
                      (!value->is_number_unsigned() || std::in_range<std::int64_t>(value->get<std::uint64_t>()));
    if (!fits || value->get<std::int64_t>() < iLeast || value->get<std::int64_t>() > iMost) {
        RefuseOther("a whole number from " + std::to_string(iLeast) + " to " + std::to_string(iMost));
    }
    return static_cast<long>(value->get<std::int64_t>());
}

void JsonPlace::Refuse(const std::string& iReason) const {
    throw Failure(*fileName + ": " + (pointer.empty() ? "" : pointer + ": ") + iReason);
}

void JsonPlace::RefuseOther(const std::string& iExpected) const {
    Refuse("expected " + iExpected + ", found " + Found(*value));
}
