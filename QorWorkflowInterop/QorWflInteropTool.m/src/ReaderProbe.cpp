#include "ReaderProbe.h"

#include "RecordFields.h"

#include <QorWflXmlToActivity.h>

#include <stdexcept>
#include <variant>

namespace {

/** A value that no document gives a field: XML has no NUL character. */
const BexUnicodeString& Marker() {
    static const BexUnicodeString kMarker("\0old", 4);
    return kMarker;
}

/** Gives every field of a record, and every list, a value of its own. */
void Mark(ActivityInfo& oRecord) {
    for (const ActivityField& field : kActivityFields) {
        if (const auto* text = std::get_if<BexUnicodeString ActivityInfo::*>(&field.member)) {
            oRecord.** text = Marker();
        }
    }
    for (const auto& field : kProcessFields) {
        oRecord.process.*field.member = Marker();
    }
    oRecord.duration = -715827883;
    oRecord.generation = -306783379;
    oRecord.process.SetDataNumber(1);
    oRecord.process.datas[0].name = Marker();
    oRecord.SetInputNumber(1);
    oRecord.inputs[0] = Marker();
    oRecord.SetOutputNumber(1);
    oRecord.outputs[0] = Marker();
}

void Require(bool iIsSame, const std::string& iField) {
    if (!iIsSame) {
        throw std::logic_error("this command and the library's reader disagree about the field " + iField +
                               "; please report this together with the document");
    }
}

void RequireSameRecord(const ActivityInfo& iLeft, const ActivityInfo& iRight) {
    Require(iLeft.duration == iRight.duration, "duration");
    Require(iLeft.generation == iRight.generation, "generation");
    Require(iLeft.process.dataNumber == iRight.process.dataNumber, "process.datas");
    Require(iLeft.inputNumber == iRight.inputNumber, "inputs");
    Require(iLeft.outputNumber == iRight.outputNumber, "outputs");
    const std::vector<NamedText> left = TextsOf(iLeft);
    const std::vector<NamedText> right = TextsOf(iRight);
    for (std::size_t i = 0; i < left.size(); ++i) {
        Require(*left[i].text == *right[i].text && left[i].text->IsNull() == right[i].text->IsNull(), left[i].name);
    }
}

}  // namespace

void CompareWithReader(const std::string& iBytes, const XpdlReading& iReading) {
    ActivityInfo expected;
    Mark(expected);
    iReading.Apply(expected);
    ActivityInfo actual;
    Mark(actual);
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iBytes), actual);
    RequireSameRecord(expected, actual);
}
