#ifndef ActivityFields_H
#define ActivityFields_H

#include <ActivityInfo.h>

#include <map>
#include <string>

/** The fields of a record by name, for comparing and printing whole records. */
using ActivityFields = std::map<std::string, std::string>;

/** A text in quotes, or null. */
inline std::string Shown(const BexUnicodeString& iText) {
    if (iText.IsNull() != 0) {
        return "null";
    }
    return "\"" + std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar())) + "\"";
}

/** Texts in brackets, or null. */
inline std::string Shown(const BexUnicodeString* iTexts, int iCount) {
    if (iTexts == nullptr) {
        return "null";
    }
    std::string shown = "[";
    for (int index = 0; index < iCount; ++index) {
        shown += Shown(iTexts[index]);
    }
    return shown + "]";
}

/** Data fields as {name type extid value}, in brackets, or null. */
inline std::string Shown(const DataInfo* iDatas, int iCount) {
    if (iDatas == nullptr) {
        return "null";
    }
    std::string shown = "[";
    for (int index = 0; index < iCount; ++index) {
        const DataInfo& data = iDatas[index];
        shown +=
            "{" + Shown(data.name) + " " + Shown(data.type) + " " + Shown(data.extid) + " " + Shown(data.value) + "}";
    }
    return shown + "]";
}

/** The texts of a record by name, constant or not; those of its lists are left out. */
template <typename Activity>
auto TextsOf(Activity& ioActivity) {
    auto& process = ioActivity.process;
    return std::map<std::string, decltype(&ioActivity.id)>{
        {"id", &ioActivity.id},
        {"name", &ioActivity.name},
        {"abstract", &ioActivity.abstract},
        {"priority", &ioActivity.priority},
        {"extid", &ioActivity.extid},
        {"status", &ioActivity.status},
        {"durationUnit", &ioActivity.durationUnit},
        {"owner", &ioActivity.owner},
        {"participant", &ioActivity.participant},
        {"participantType", &ioActivity.participantType},
        {"documentation", &ioActivity.documentation},
        {"process.id", &process.id},
        {"process.name", &process.name},
        {"process.context", &process.context},
    };
}

/** Every field of a record, its process included. */
inline ActivityFields FieldsOf(const ActivityInfo& iActivity) {
    ActivityFields fields = {
        {"generation", std::to_string(iActivity.generation)},
        {"duration", std::to_string(iActivity.duration)},
        {"process.datas", Shown(iActivity.process.datas, iActivity.process.dataNumber)},
        {"process.dataNumber", std::to_string(iActivity.process.dataNumber)},
        {"inputs", Shown(iActivity.inputs, iActivity.inputNumber)},
        {"inputNumber", std::to_string(iActivity.inputNumber)},
        {"outputs", Shown(iActivity.outputs, iActivity.outputNumber)},
        {"outputNumber", std::to_string(iActivity.outputNumber)},
    };
    for (const auto& [name, text] : TextsOf(iActivity)) {
        fields[name] = Shown(*text);
    }
    return fields;
}

/** Fields with some of them replaced. */
inline ActivityFields With(ActivityFields iFields, const ActivityFields& iChanges) {
    for (const auto& [name, value] : iChanges) {
        iFields[name] = value;
    }
    return iFields;
}

/** Gives every field of a record a value that nothing else gives it: "old" and the field's name, 11, 22, and lists. */
inline void FillWithOldValues(ActivityInfo& oActivity) {
    for (const auto& [name, text] : TextsOf(oActivity)) {
        *text = ("old " + name).c_str();
    }
    oActivity.generation = 11;
    oActivity.duration = 22;
    oActivity.process.SetDataNumber(1);
    oActivity.process.datas[0].name = "old data";
    oActivity.SetInputNumber(3);
    oActivity.inputs[0] = "old input 1";
    oActivity.inputs[2] = "old input 3";
    oActivity.SetOutputNumber(1);
    oActivity.outputs[0] = "old output";
}

/** The fields of a record that FillWithOldValues() filled. */
inline ActivityFields OldFields() {
    ActivityInfo activity;
    FillWithOldValues(activity);
    return FieldsOf(activity);
}

#endif
