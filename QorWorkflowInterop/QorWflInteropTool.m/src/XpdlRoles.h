#ifndef XpdlRoles_H
#define XpdlRoles_H

#include "CheckFindings.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/** The fields of an activity's record, those of its process and its data fields included. */
enum class Field {
    Participant,
    ParticipantType,
    ProcessId,
    ProcessName,
    DurationUnit,
    DataName,
    DataType,
    DataValue,
    DataExtid,
    Id,
    Name,
    Abstract,
    Owner,
    Priority,
    Duration,
    Documentation,
    Inputs,
    Outputs,
    Status,
    Extid,
    Generation,
    Context,
};

/** What becomes of a field's value behind the reading. */
struct FieldInfo {
    enum Kind { AsAttribute, AsText, AsNumber };  ///< how a document holds it
    Field field;
    const char* name;  ///< as the record's text form labels it
    Kind kind;
    bool isInRecordText;
    const char* group = nullptr;  ///< the list of the record that it belongs to, "inputs"; null for none
};

/** All fields, in the order of the enumeration, which is the order in which they are read. */
std::span<const FieldInfo> AllFields();
const FieldInfo& InfoOf(Field iField);
/** Adds what a record calls a field to names in the order of AllFields(); a list is added once. */
void AddName(const FieldInfo& iField, std::vector<std::string>& ioNames);

/** An attribute that the reader looks for. */
struct RoleAttribute {
    std::u16string_view name;
    std::optional<Field> field;  ///< none for one that is only compared
};

/** An extended attribute that the reader looks for, by its "Name". */
struct RoleEntry {
    enum Winner { First, Last, Each };
    std::u16string_view name;
    Field field;
    Winner winner;  ///< which one counts when there are several
};

/** What the reader does with an element that it looks for. */
struct Role {
    enum Presence { Required, Optional, Written };  ///< Written: by this library, and read by nobody
    std::u16string_view name;
    Presence presence = Required;
    bool isEach = false;                               ///< every element of the name is read, not the first alone
    Code whenRepeated = Code::RepeatedElementIgnored;  ///< what a second one is
    std::vector<RoleAttribute> attributes = {};
    std::vector<RoleAttribute> attributesAbove = {};  ///< of the parent, read when this one was found
    bool hasText = false;                             ///< its text is read
    std::optional<Field> text = {};                   ///< the field that takes it
    std::vector<RoleEntry> entries = {};              ///< of its extended attributes
    std::vector<Role> children = {};                  ///< in the order in which the reader looks for them
};

/** The role of the root. What the reader looks for in a document hangs on it, in the order of the reading. */
const Role& PackageRole();

#endif
