#ifndef RecordFields_H
#define RecordFields_H

#include <ActivityInfo.h>

#include <string>
#include <string_view>
#include <variant>
#include <vector>

/** @file The fields of the records by the names that people see: one home for all that walks through a record. */

/** A text field of a record. */
template <typename Record>
struct TextField {
    std::string_view name;
    BexUnicodeString Record::*member;
};

/** A field of an activity that is no list: a text or a number. */
struct ActivityField {
    std::string_view name;
    std::variant<BexUnicodeString ActivityInfo::*, int ActivityInfo::*, long ActivityInfo::*> member;
};

inline constexpr TextField<DataInfo> kDataFields[] = {
    {"name", &DataInfo::name}, {"type", &DataInfo::type}, {"extid", &DataInfo::extid}, {"value", &DataInfo::value}};

inline constexpr TextField<ProcessInfo> kProcessFields[] = {
    {"id", &ProcessInfo::id}, {"name", &ProcessInfo::name}, {"context", &ProcessInfo::context}};

inline constexpr ActivityField kActivityFields[] = {
    {"id", &ActivityInfo::id},
    {"name", &ActivityInfo::name},
    {"generation", &ActivityInfo::generation},
    {"abstract", &ActivityInfo::abstract},
    {"priority", &ActivityInfo::priority},
    {"extid", &ActivityInfo::extid},
    {"status", &ActivityInfo::status},
    {"duration", &ActivityInfo::duration},
    {"durationUnit", &ActivityInfo::durationUnit},
    {"owner", &ActivityInfo::owner},
    {"participant", &ActivityInfo::participant},
    {"participantType", &ActivityInfo::participantType},
    {"documentation", &ActivityInfo::documentation},
};

/** A text of a record, with the name that the record text form has for it, such as "process.datas.2.value". */
struct NamedText {
    std::string name;
    const BexUnicodeString* text;
};

/** @return every text of a record, those of its lists included. A view: the record must live as long. */
std::vector<NamedText> TextsOf(const ActivityInfo& iRecord);

#endif
