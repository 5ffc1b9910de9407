#include "XpdlRoles.h"

#include <XpdlNames.h>
#include <array>
#include <utility>

namespace {

constexpr std::array kFields = {
    FieldInfo{Field::Participant, "participant", FieldInfo::AsAttribute, false},
    FieldInfo{Field::ParticipantType, "participantType", FieldInfo::AsAttribute, false},
    FieldInfo{Field::ProcessId, "process.id", FieldInfo::AsAttribute, true},
    FieldInfo{Field::ProcessName, "process.name", FieldInfo::AsAttribute, true},
    FieldInfo{Field::DurationUnit, "durationUnit", FieldInfo::AsAttribute, true},
    FieldInfo{Field::DataName, "process.datas.name", FieldInfo::AsAttribute, true, "process.datas"},
    FieldInfo{Field::DataType, "process.datas.type", FieldInfo::AsAttribute, true, "process.datas"},
    FieldInfo{Field::DataValue, "process.datas.value", FieldInfo::AsText, true, "process.datas"},
    FieldInfo{Field::DataExtid, "process.datas.extid", FieldInfo::AsAttribute, true, "process.datas"},
    FieldInfo{Field::Id, "id", FieldInfo::AsAttribute, true},
    FieldInfo{Field::Name, "name", FieldInfo::AsAttribute, true},
    FieldInfo{Field::Abstract, "abstract", FieldInfo::AsText, true},
    FieldInfo{Field::Owner, "owner", FieldInfo::AsText, true},
    FieldInfo{Field::Priority, "priority", FieldInfo::AsText, true},
    FieldInfo{Field::Duration, "duration", FieldInfo::AsNumber, true},
    FieldInfo{Field::Documentation, "documentation", FieldInfo::AsText, true},
    FieldInfo{Field::Inputs, "inputs", FieldInfo::AsAttribute, true, "inputs"},
    FieldInfo{Field::Outputs, "outputs", FieldInfo::AsAttribute, true, "outputs"},
    FieldInfo{Field::Status, "status", FieldInfo::AsAttribute, true},
    FieldInfo{Field::Extid, "extid", FieldInfo::AsAttribute, true},
    FieldInfo{Field::Generation, "generation", FieldInfo::AsNumber, true},
    FieldInfo{Field::Context, "process.context", FieldInfo::AsAttribute, true},
};

/** An element that this library writes for other readers; nothing of the record is in it. */
Role Written(const char16_t* iName, std::vector<Role> iChildren = {}) {
    Role role{.name = iName, .presence = Role::Written, .children = std::move(iChildren)};
    role.hasText = role.children.empty();
    return role;
}

/** An element that may be missing and whose text is a field. */
Role OptionalText(const char16_t* iName, Field iField) {
    return {.name = iName, .presence = Role::Optional, .hasText = true, .text = iField};
}

/** The extended attributes of an element. */
Role Entries(Role::Presence iPresence, std::vector<RoleEntry> iEntries) {
    return {.name = Xpdl::kExtendedAttributes,
            .presence = iPresence,
            .entries = std::move(iEntries),
            .children = {{.name = Xpdl::kExtendedAttribute,
                          .presence = Role::Optional,
                          .isEach = true,
                          .attributes = {{Xpdl::kName, {}}, {Xpdl::kValue, {}}}}}};
}

Role HeaderRole() {
    return {
        .name = Xpdl::kPackageHeader,
        .children = {{.name = Xpdl::kVendor, .hasText = true}, Written(Xpdl::kXpdlVersion), Written(Xpdl::kCreated)}};
}

Role ParticipantsRole() {
    return {.name = Xpdl::kParticipants,
            .presence = Role::Optional,
            .children = {{.name = Xpdl::kParticipant,
                          .whenRepeated = Code::ParticipantIgnored,
                          .attributes = {{Xpdl::kId, Field::Participant}},
                          .children = {{.name = Xpdl::kParticipantType,
                                        .attributes = {{Xpdl::kType, Field::ParticipantType}}}}}}};
}

Role DataFieldsRole() {
    const Role declaredType{.name = Xpdl::kDeclaredType, .attributes = {{Xpdl::kId, Field::DataType}}};
    return {
        .name = Xpdl::kDataFields,
        .children = {{.name = Xpdl::kDataField,
                      .presence = Role::Optional,
                      .isEach = true,
                      .children = {{.name = Xpdl::kDataType,
                                    .attributesAbove = {{Xpdl::kId, Field::DataName}},
                                    .children = {declaredType}},
                                   {.name = Xpdl::kInitialValue, .hasText = true, .text = Field::DataValue},
                                   Entries(Role::Required, {{Xpdl::kExternId, Field::DataExtid, RoleEntry::First}})}}}};
}

Role SimulationRole() {
    return {.name = Xpdl::kSimulationInformation,
            .presence = Role::Optional,
            .children = {{.name = Xpdl::kTimeEstimation, .children = {OptionalText(Xpdl::kDuration, Field::Duration)}},
                         Written(Xpdl::kCost)}};
}

Role ActivitiesRole() {
    return {
        .name = Xpdl::kActivities,
        .children = {
            {.name = Xpdl::kActivity,
             .whenRepeated = Code::ActivityIgnored,
             .attributes = {{Xpdl::kId, Field::Id}, {Xpdl::kName, Field::Name}},
             .children = {OptionalText(Xpdl::kDescription, Field::Abstract),
                          Written(Xpdl::kImplementation, {Written(Xpdl::kNo)}),
                          OptionalText(Xpdl::kPerformer, Field::Owner), OptionalText(Xpdl::kPriority, Field::Priority),
                          SimulationRole(), OptionalText(Xpdl::kDocumentation, Field::Documentation),
                          Entries(Role::Required, {{Xpdl::kIn, Field::Inputs, RoleEntry::Each},
                                                   {Xpdl::kOut, Field::Outputs, RoleEntry::Each},
                                                   {Xpdl::kStatus, Field::Status, RoleEntry::Last},
                                                   {Xpdl::kExternId, Field::Extid, RoleEntry::Last},
                                                   {Xpdl::kGeneration, Field::Generation, RoleEntry::Last}})}}}};
}

Role ProcessesRole() {
    return {.name = Xpdl::kWorkflowProcesses,
            .children = {{.name = Xpdl::kWorkflowProcess,
                          .whenRepeated = Code::ProcessIgnored,
                          .attributes = {{Xpdl::kId, Field::ProcessId}, {Xpdl::kName, Field::ProcessName}},
                          .children = {{.name = Xpdl::kProcessHeader,
                                        .attributes = {{Xpdl::kDurationUnit, Field::DurationUnit}}},
                                       DataFieldsRole(),
                                       ActivitiesRole(),
                                       Entries(Role::Optional, {{Xpdl::kContext, Field::Context, RoleEntry::Last}})}}}};
}

}  // namespace

std::span<const FieldInfo> AllFields() {
    return kFields;
}

const FieldInfo& InfoOf(Field iField) {
    return kFields[static_cast<std::size_t>(iField)];
}

void AddName(const FieldInfo& iField, std::vector<std::string>& ioNames) {
    const std::string name = iField.group != nullptr ? iField.group : iField.name;
    if (ioNames.empty() || ioNames.back() != name) {
        ioNames.push_back(name);
    }
}

const Role& PackageRole() {
    // The root's identifier and name are written by this library and read by nobody.
    static const Role kRole{.name = Xpdl::kPackage,
                            .attributes = {{Xpdl::kId, {}}, {Xpdl::kName, {}}},
                            .children = {HeaderRole(), ParticipantsRole(), ProcessesRole()}};
    return kRole;
}
