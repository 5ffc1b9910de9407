#include "XpdlReading.h"

#include <XpdlNames.h>
#include <algorithm>
#include <array>

namespace {

bool IsCalled(const Role& iRole, std::u16string_view iName) {
    return iRole.name == iName;
}

/** Where a text field of a record is; null for a number. */
BexUnicodeString* TextOf(ActivityInfo& ioRecord, Field iField, std::size_t iItem) {
    switch (iField) {
        case Field::Participant:
            return &ioRecord.participant;
        case Field::ParticipantType:
            return &ioRecord.participantType;
        case Field::ProcessId:
            return &ioRecord.process.id;
        case Field::ProcessName:
            return &ioRecord.process.name;
        case Field::DurationUnit:
            return &ioRecord.durationUnit;
        case Field::DataName:
            return &ioRecord.process.datas[iItem].name;
        case Field::DataType:
            return &ioRecord.process.datas[iItem].type;
        case Field::DataValue:
            return &ioRecord.process.datas[iItem].value;
        case Field::DataExtid:
            return &ioRecord.process.datas[iItem].extid;
        case Field::Id:
            return &ioRecord.id;
        case Field::Name:
            return &ioRecord.name;
        case Field::Abstract:
            return &ioRecord.abstract;
        case Field::Owner:
            return &ioRecord.owner;
        case Field::Priority:
            return &ioRecord.priority;
        case Field::Documentation:
            return &ioRecord.documentation;
        case Field::Inputs:
            return &ioRecord.inputs[iItem];
        case Field::Outputs:
            return &ioRecord.outputs[iItem];
        case Field::Status:
            return &ioRecord.status;
        case Field::Extid:
            return &ioRecord.extid;
        case Field::Context:
            return &ioRecord.process.context;
        case Field::Duration:
        case Field::Generation:
            break;
    }
    return nullptr;
}

}  // namespace

BexUnicodeString NarrowValue(std::u16string_view iText) {
    return BexUnicodeString(BexUnicodeString(iText.data(), static_cast<int>(iText.size())).ConvertToChar());
}

std::optional<long> NumberOf(Field iField, std::u16string_view iText) {
    const BexUnicodeString text = NarrowValue(iText);
    long number = 0;
    int small = 0;
    if (iField == Field::Generation) {
        return text.ConvertToNum(&small, "%d") == 0 ? std::optional<long>(small) : std::nullopt;
    }
    return text.ConvertToNum(&number, "%ld") == 0 ? std::optional<long>(number) : std::nullopt;
}

XpdlReading::XpdlReading(const PositionedDocument& iDocument)
    : document(iDocument), roles(iDocument.Elements().size(), nullptr) {
    Take(PackageRole(), 0);
}

/** Takes an element for what it is. Goes as deep as the roles go, however deep the document is. */
void XpdlReading::Take(const Role& iRole, std::size_t iElement) {
    roles[iElement] = &iRole;
    taken.push_back(iElement);
    if (!iRole.attributesAbove.empty()) {
        TakeAttributes(iRole.attributesAbove, document[iElement].parent);
    }
    TakeAttributes(iRole.attributes, iElement);
    if (iRole.text.has_value()) {
        TakeText(*iRole.text, iElement);
    }
    for (const Role& child : iRole.children) {
        TakeChild(child, iElement);
    }
    if (!iRole.entries.empty()) {
        TakeEntries(iRole, iElement);
    }
}

void XpdlReading::TakeChild(const Role& iRole, std::size_t iParent) {
    std::size_t child = document.FindChild(iParent, iRole.name);
    Prepare(iRole, iParent, child != kNone);
    if (child == kNone && iRole.presence == Role::Required) {
        missing.push_back({iParent, &iRole});
    }
    while (child != kNone) {
        Take(iRole, child);
        if (IsCalled(iRole, Xpdl::kDataField)) {
            ++dataField;
        }
        child = iRole.isEach ? document.FindChild(iParent, iRole.name, child) : kNone;
    }
}

/** What the reader does with lists and with the participant before it looks into an element, or when there is none. */
void XpdlReading::Prepare(const Role& iRole, std::size_t iParent, bool iIsThere) {
    if (IsCalled(iRole, Xpdl::kParticipants) && !iIsThere) {
        hasNoParticipants = true;
        resetsParticipant = !Stops();
    } else if (IsCalled(iRole, Xpdl::kDataFields) && !iIsThere && !Stops()) {
        dataCount = 0;
    } else if (IsCalled(iRole, Xpdl::kDataField) && !Stops()) {
        std::size_t count = 0;
        for (std::size_t field = document.FindChild(iParent, iRole.name); field != kNone;
             field = document.FindChild(iParent, iRole.name, field)) {
            ++count;
        }
        dataCount = count;
    }
}

void XpdlReading::TakeAttributes(const std::vector<RoleAttribute>& iAttributes, std::size_t iElement) {
    for (const RoleAttribute& attribute : iAttributes) {
        if (attribute.field.has_value()) {
            AddAttributeValue(*attribute.field, iElement, attribute.name, dataField);
        }
    }
}

void XpdlReading::AddAttributeValue(Field iField, std::size_t iElement, std::u16string_view iAttribute,
                                    std::size_t iItem) {
    ReadValue value{.field = iField, .item = iItem, .element = iElement, .place = document[iElement].place};
    value.isRead = !Stops();
    value.attribute = document.FindAttribute(iElement, iAttribute);
    value.attributeName = iAttribute;
    value.isMissing = value.attribute == kNone;
    if (!value.isMissing) {
        const PositionedAttribute& attribute = document.Attribute(value.attribute);
        value.text = attribute.value;
        value.place = attribute.place;
    }
    values.push_back(value);
}

void XpdlReading::TakeText(Field iField, std::size_t iElement) {
    const PositionedElement& element = document[iElement];
    ReadValue value{.field = iField, .item = dataField, .element = iElement, .place = element.place};
    value.isRead = !Stops();
    value.text = element.text.value_or(std::u16string_view());
    for (std::size_t content = element.firstContent; content != kNone; content = document.Content(content).next) {
        if (document.Content(content).kind == ContentMark::Text) {
            value.place = document.Content(content).place;
            break;
        }
    }
    values.push_back(value);
    if (iField == Field::Owner && hasNoParticipants) {
        value.isStandIn = true;
        value.field = Field::Participant;
        values.push_back(value);
        value.field = Field::ParticipantType;
        value.text = u"HUMAN";
        values.push_back(value);
    }
}

void XpdlReading::TakeEntries(const Role& iRole, std::size_t iElement) {
    const std::size_t first = values.size();
    std::size_t inputs = 0;
    std::size_t outputs = 0;
    for (std::size_t entry = document.FindChild(iElement, Xpdl::kExtendedAttribute); entry != kNone;
         entry = document.FindChild(iElement, Xpdl::kExtendedAttribute, entry)) {
        const std::size_t name = document.FindAttribute(entry, Xpdl::kName);
        const auto role =
            std::find_if(iRole.entries.begin(), iRole.entries.end(), [this, name](const RoleEntry& iEntry) {
                return name != kNone && document.Attribute(name).value == iEntry.name;
            });
        if (role != iRole.entries.end()) {
            const std::size_t item = role->field == Field::Inputs    ? inputs++
                                     : role->field == Field::Outputs ? outputs++
                                                                     : dataField;
            AddAttributeValue(role->field, entry, Xpdl::kValue, item);
        }
    }
    FindWinners(iRole, first);
    const bool hasLists = std::any_of(iRole.entries.begin(), iRole.entries.end(),
                                      [](const RoleEntry& iEntry) { return iEntry.field == Field::Inputs; });
    if (hasLists && !Stops()) {
        inputCount = inputs;
        outputCount = outputs;
    }
}

/** Tells each of the values from @p iFirst on, which are of one element, which value of its field counts. */
void XpdlReading::FindWinners(const Role& iRole, std::size_t iFirst) {
    for (const RoleEntry& entry : iRole.entries) {
        if (entry.winner == RoleEntry::Each) {
            continue;
        }
        std::size_t winner = kNone;
        for (std::size_t i = iFirst; i < values.size(); ++i) {
            const bool isNumber = InfoOf(entry.field).kind == FieldInfo::AsNumber;
            const bool mayWin = values[i].field == entry.field &&
                                (!isNumber || NumberOf(entry.field, values[i].text).has_value()) &&
                                (winner == kNone || entry.winner == RoleEntry::Last);
            winner = mayWin ? i : winner;
        }
        for (std::size_t i = iFirst; i < values.size(); ++i) {
            if (values[i].field == entry.field && i != winner) {
                values[i].winner = winner;
            }
        }
    }
}

std::string XpdlReading::PathOf(const MissingElement& iMissing) const {
    return document.Path(iMissing.parent, iMissing.role->name);
}

void XpdlReading::Apply(ActivityInfo& ioRecord) const {
    if (resetsParticipant) {
        ioRecord.participant.Reset();
        ioRecord.participantType.Reset();
    }
    if (dataCount.has_value()) {
        ioRecord.process.SetDataNumber(static_cast<int>(*dataCount));
    }
    if (inputCount.has_value()) {
        ioRecord.SetInputNumber(static_cast<int>(*inputCount));
        ioRecord.SetOutputNumber(static_cast<int>(*outputCount));
    }
    for (const ReadValue& value : values) {
        if (!value.isRead || value.winner != kNone) {
            continue;
        }
        if (BexUnicodeString* text = TextOf(ioRecord, value.field, value.item)) {
            *text = NarrowValue(value.text);
        } else if (const std::optional<long> number = NumberOf(value.field, value.text)) {
            if (value.field == Field::Duration) {
                ioRecord.duration = *number;
            } else {
                ioRecord.generation = static_cast<int>(*number);
            }
        }
    }
}

bool XpdlReading::IsSet(const FieldInfo& iField) const {
    if (iField.group != nullptr) {
        return iField.field == Field::Inputs || iField.field == Field::Outputs ? inputCount.has_value()
                                                                               : dataCount.has_value();
    }
    if (resetsParticipant && (iField.field == Field::Participant || iField.field == Field::ParticipantType)) {
        return true;
    }
    return std::any_of(values.begin(), values.end(), [&iField](const ReadValue& iValue) {
        return iValue.field == iField.field && iValue.isRead &&
               (iField.kind != FieldInfo::AsNumber || NumberOf(iField.field, iValue.text).has_value());
    });
}

std::vector<std::string> XpdlReading::FieldsThatAre(bool iSet) const {
    std::vector<std::string> names;
    for (const FieldInfo& field : AllFields()) {
        if (IsSet(field) == iSet) {
            AddName(field, names);
        }
    }
    return names;
}

std::vector<std::string> XpdlReading::KeptFields() const {
    return FieldsThatAre(false);
}

std::vector<std::string> XpdlReading::SetFields() const {
    return FieldsThatAre(true);
}
