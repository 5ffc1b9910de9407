#include "ConfigCodes.h"

#include <array>
#include <cstddef>

namespace {

constexpr std::array kCodes = {
    ConfigCodeInfo{ConfigCode::NoFile, "QC001", Severity::Warning, "no property file"},
    ConfigCodeInfo{ConfigCode::NotOpened, "QC002", Severity::Error, "file that cannot be opened"},
    ConfigCodeInfo{ConfigCode::ByteOrderMarkInKey, "QC101", Severity::Error, "byte order mark in a key"},
    ConfigCodeInfo{ConfigCode::ByteOrderMark, "QC102", Severity::Warning, "byte order mark"},
    ConfigCodeInfo{ConfigCode::CarriageReturn, "QC103", Severity::Error, "carriage return in a value"},
    ConfigCodeInfo{ConfigCode::AccidentalComment, "QC104", Severity::Warning, "setting behind a single slash"},
    ConfigCodeInfo{ConfigCode::SwallowedSetting, "QC105", Severity::Warning, "setting joined to a comment"},
    ConfigCodeInfo{ConfigCode::JoinedSetting, "QC106", Severity::Warning, "setting joined to a value"},
    ConfigCodeInfo{ConfigCode::OpenContinuation, "QC107", Severity::Warning, "backslash at the end of the file"},
    ConfigCodeInfo{ConfigCode::NoContinuation, "QC108", Severity::Warning, "backslash with a blank behind it"},
    ConfigCodeInfo{ConfigCode::NoSetting, "QC109", Severity::Warning, "line without a setting"},
    ConfigCodeInfo{ConfigCode::UnknownKey, "QC201", Severity::Warning, "unknown key"},
    ConfigCodeInfo{ConfigCode::ForeignKey, "QC202", Severity::Note, "key of another program"},
    ConfigCodeInfo{ConfigCode::EmptyKey, "QC203", Severity::Warning, "empty key"},
    ConfigCodeInfo{ConfigCode::TabInKey, "QC204", Severity::Error, "tab or carriage return in a key"},
    ConfigCodeInfo{ConfigCode::SetTwice, "QC205", Severity::Warning, "key set twice"},
    ConfigCodeInfo{ConfigCode::EmptyValue, "QC206", Severity::Warning, "empty value"},
    ConfigCodeInfo{ConfigCode::TabAroundValue, "QC207", Severity::Warning, "tab around a value"},
    ConfigCodeInfo{ConfigCode::UnpairedQuote, "QC208", Severity::Warning, "quote at one end"},
    ConfigCodeInfo{ConfigCode::ControlCharacter, "QC209", Severity::Warning, "control character"},
    ConfigCodeInfo{ConfigCode::Utf8, "QC210", Severity::Warning, "line in UTF-8"},
    ConfigCodeInfo{ConfigCode::PrioritiesReplaced, "QC211", Severity::Note, "built-in priorities replaced"},
    ConfigCodeInfo{ConfigCode::PriorityWordTwice, "QC212", Severity::Warning, "word of two priorities"},
    ConfigCodeInfo{ConfigCode::PriorityWithoutCode, "QC213", Severity::Note, "priority without a code"},
    ConfigCodeInfo{ConfigCode::UnusableMapping, "QC301", Severity::Error, "unusable mapping"},
    ConfigCodeInfo{ConfigCode::NeverAsked, "QC302", Severity::Warning, "environment or table that no object has"},
    ConfigCodeInfo{ConfigCode::LiteralStar, "QC303", Severity::Warning, "star that stands for itself"},
    ConfigCodeInfo{ConfigCode::NoAttribute, "QC304", Severity::Warning, "mapping without a name attribute"},
    ConfigCodeInfo{ConfigCode::ShadowedMapping, "QC305", Severity::Warning, "shadowed mapping"},
    ConfigCodeInfo{ConfigCode::LostAttribute, "QC306", Severity::Warning, "name attribute lost"},
};

constexpr bool AreInOrder() {
    for (std::size_t i = 0; i < kCodes.size(); ++i) {
        if (static_cast<std::size_t>(kCodes[i].code) != i) {
            return false;
        }
    }
    return kCodes.size() == static_cast<std::size_t>(ConfigCode::LostAttribute) + 1;
}
static_assert(AreInOrder(), "InfoOf() finds a code by its position");

}  // namespace

const ConfigCodeInfo& InfoOf(ConfigCode iCode) {
    return kCodes[static_cast<std::size_t>(iCode)];
}
