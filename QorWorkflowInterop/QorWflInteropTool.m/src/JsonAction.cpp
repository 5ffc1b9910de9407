#include "JsonAction.h"

#include "JsonRecord.h"
#include "JsonUuid.h"

#include <algorithm>
#include <limits>

namespace {

constexpr const char* kProduct = "Product";
constexpr const char* kTypes[] = {kProduct, "Part", "Model", "Document", "Feature"};

JsonAction::Context ReadContext(const JsonPlace& iPlace) {
    iPlace.RequireObject({"kind", "value"});
    return {iPlace.Member("kind").Text(), iPlace.Member("value").Text()};
}

BexUnicodeString ReadType(const JsonPlace& iPlace) {
    BexUnicodeString type = iPlace.Text();
    if (iPlace.IsAbsent() || std::find(std::begin(kTypes), std::end(kTypes), type) == std::end(kTypes)) {
        iPlace.RefuseOther("one of \"Product\", \"Part\", \"Model\", \"Document\" and \"Feature\"");
    }
    return type;
}

BexUnicodeString ReadDirection(const JsonPlace& iPlace) {
    BexUnicodeString direction = iPlace.Text();
    if (!iPlace.IsAbsent() && direction != "I" && direction != "O") {
        iPlace.RefuseOther("\"I\" (input), \"O\" (output) or nothing");
    }
    return direction;
}

JsonAction::Object ReadObject(const JsonPlace& iPlace) {
    iPlace.RequireObject({"type", "direction", "nickname", "name", "uuid"});
    JsonAction::Object object;
    object.type = ReadType(iPlace.Member("type"));
    object.direction = ReadDirection(iPlace.Member("direction"));
    object.nickname = iPlace.Member("nickname").Text();
    object.name = iPlace.Member("name").Text();
    const JsonPlace uuid = iPlace.Member("uuid");
    if (!uuid.IsAbsent() || object.type != kProduct) {
        object.uuid = ReadJsonUuid(uuid);
    }
    return object;
}

template <typename Entry>
std::vector<Entry> ReadList(const JsonPlace& iPlace, Entry (*iRead)(const JsonPlace&)) {
    std::vector<Entry> entries;
    const std::size_t size = iPlace.GetListSize();
    entries.reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        entries.push_back(iRead(iPlace.Element(i)));
    }
    return entries;
}

/** The members of an action, and the one that stands in their place. */
const std::vector<std::string_view> kMembers = {
    "id",       "abstract",     "priority",      "owner",       "name",     "status",  "generation",
    "duration", "durationUnit", "documentation", "processName", "contexts", "objects", kRecordMember};

template <typename Number>
std::optional<Number> ReadNumber(const JsonPlace& iPlace) {
    const std::optional<long> number =
        iPlace.WholeNumber(std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max());
    return number ? std::optional<Number>(static_cast<Number>(*number)) : std::nullopt;
}

}  // namespace

JsonAction ReadJsonAction(const JsonPlace& iDocument) {
    iDocument.RequireObject(kMembers);
    JsonAction action;
    action.id = iDocument.Member("id").Text();
    action.abstract = iDocument.Member("abstract").Text();
    action.priority = iDocument.Member("priority").Text();
    action.owner = iDocument.Member("owner").Text();
    action.name = iDocument.Member("name").Text();
    action.status = iDocument.Member("status").Text();
    action.generation = ReadNumber<int>(iDocument.Member("generation"));
    action.duration = ReadNumber<long>(iDocument.Member("duration"));
    action.durationUnit = iDocument.Member("durationUnit").Text();
    action.documentation = iDocument.Member("documentation").Text();
    action.processName = iDocument.Member("processName").Text();
    action.contexts = ReadList(iDocument.Member("contexts"), &ReadContext);
    action.objects = ReadList(iDocument.Member("objects"), &ReadObject);
    return action;
}

void RequireNoAction(const JsonPlace& iDocument) {
    iDocument.RequireObject(kMembers);
    for (const std::string_view name : kMembers) {
        const JsonPlace member = iDocument.Member(name);
        if (name != kRecordMember && !member.IsAbsent()) {
            member.Refuse("belongs to an action, and a record stands beside it; expected one of the two");
        }
    }
}
