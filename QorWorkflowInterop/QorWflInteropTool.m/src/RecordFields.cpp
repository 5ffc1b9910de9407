#include "RecordFields.h"

namespace {

template <typename Record, std::size_t Count>
void Append(const std::string& iPrefix, const Record& iRecord, const TextField<Record> (&iFields)[Count],
            std::vector<NamedText>& ioTexts) {
    for (const auto& field : iFields) {
        ioTexts.push_back({iPrefix + std::string(field.name), &(iRecord.*field.member)});
    }
}

void Append(const std::string& iPrefix, const BexUnicodeString* iNames, int iCount, std::vector<NamedText>& ioTexts) {
    for (int i = 0; i < iCount; ++i) {
        ioTexts.push_back({iPrefix + std::to_string(i + 1) + ".name", &iNames[i]});
    }
}

}  // namespace

std::vector<NamedText> TextsOf(const ActivityInfo& iRecord) {
    std::vector<NamedText> texts;
    for (const ActivityField& field : kActivityFields) {
        if (const auto* member = std::get_if<BexUnicodeString ActivityInfo::*>(&field.member)) {
            texts.push_back({std::string(field.name), &(iRecord.**member)});
        }
    }
    Append("process.", iRecord.process, kProcessFields, texts);
    for (int i = 0; i < iRecord.process.dataNumber; ++i) {
        Append("process.datas." + std::to_string(i + 1) + '.', iRecord.process.datas[i], kDataFields, texts);
    }
    Append("inputs.", iRecord.inputs, iRecord.inputNumber, texts);
    Append("outputs.", iRecord.outputs, iRecord.outputNumber, texts);
    return texts;
}
