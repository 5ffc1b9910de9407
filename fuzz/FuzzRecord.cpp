#include "FuzzRecord.h"

namespace {

constexpr unsigned kListLengths = 8;

}  // namespace

void FillRecord(FuzzBytes& ioBytes, ActivityInfo& oActivity) {
    oActivity.process.SetDataNumber(static_cast<int>(ioBytes.Below(kListLengths)));
    oActivity.SetInputNumber(static_cast<int>(ioBytes.Below(kListLengths)));
    oActivity.SetOutputNumber(static_cast<int>(ioBytes.Below(kListLengths)));
    oActivity.generation = static_cast<int>(ioBytes.Number());
    oActivity.duration = ioBytes.Number();
    ForEachText(oActivity, [&ioBytes](BexUnicodeString& oText) { oText = ioBytes.AnyString(); });
}

std::string Printed(const ActivityFields& iFields) {
    std::string text;
    for (const auto& [name, value] : iFields) {
        text += name;
        text += " ";
        text += value;
        text += "\n";
    }
    return text;
}
