#include "Inputs.h"

#include <QorWflActivityToXml.h>
#include <QorWflUuidLayout.h>

#include <cstdio>
#include <map>

namespace {

constexpr int kLargestKept = 100'000;
constexpr std::size_t kUrlLength = 110;

/** The thing of a size, kept unless it is a very large one. */
template <typename Thing, typename Make>
std::shared_ptr<const Thing> Kept(std::map<int, std::shared_ptr<const Thing>>& ioKept, int iSize, Make iMake) {
    if (iSize > kLargestKept) {
        return iMake(iSize);
    }
    std::shared_ptr<const Thing>& kept = ioKept[iSize];
    if (kept == nullptr) {
        kept = iMake(iSize);
    }
    return kept;
}

/** A long instance URL with a nickname, made up to its length. */
std::string DataUrl(int iIndex) {
    const std::string digits = Inputs::Digits(iIndex);
    std::string url = "LumenUID://Legacy+QOR1/PROD1/DESIGN++#PROD1+++#KIRVA_MODEL+++++++#" + digits + "#" + digits;
    url.resize(kUrlLength, 'N');
    return url;
}

int InputCount(int iSize) {
    return (iSize + 1) / 2;
}

std::shared_ptr<const ActivityInfo> MakeActivity(int iSize) {
    auto activity = std::make_shared<ActivityInfo>();
    activity->id = "Activity-1";
    activity->name = "Review the wing box";
    activity->abstract = "Check stress & weight of the <new> ribs";
    activity->priority = "High";
    activity->extid = "LumenUID://Legacy+QOR1/default/ACT-4711.ACTION";
    activity->status = "DSGin work";
    activity->duration = 14;
    activity->durationUnit = "D";
    activity->owner = "jdoe";
    activity->participant = "jdoe";
    activity->participantType = "HUMAN";
    activity->documentation = "See \"procedure 12\" of the handbook";
    activity->process.id = "Process-1";
    activity->process.name = "Release of the wing box";
    activity->process.context = (DataUrl(0) + "?context=CONF1&Nickname=WING").c_str();
    activity->process.SetDataNumber(iSize);
    for (int i = 0; i < iSize; ++i) {
        DataInfo& data = activity->process.datas[i];
        data.name = Inputs::DataName(i).c_str();
        data.type = "VERANT_QORModel";
        data.extid = DataUrl(i).c_str();
        data.value = Inputs::DataValue(i).c_str();
    }
    activity->SetInputNumber(InputCount(iSize));
    activity->SetOutputNumber(iSize - InputCount(iSize));
    for (int i = 0; i < iSize; ++i) {
        const int output = i - InputCount(iSize);
        (output < 0 ? activity->inputs[i] : activity->outputs[output]) = activity->process.datas[i].name;
    }
    return activity;
}

std::shared_ptr<const BexUnicodeString> MakeDocument(int iSize) {
    auto document = std::make_shared<BexUnicodeString>();
    QorWflActivityToXml(*Inputs::Activity(iSize), *document);
    return document;
}

void AddText(std::string& ioTexts, const BexUnicodeString& iText) {
    ioTexts += std::to_string(iText.GetLengthInChar());
    ioTexts += ' ';
    ioTexts += iText.ConvertToChar();
    ioTexts += '\n';
}

}  // namespace

std::shared_ptr<const ActivityInfo> Inputs::Activity(int iSize) {
    static std::map<int, std::shared_ptr<const ActivityInfo>> kept;
    return Kept(kept, iSize, MakeActivity);
}

std::shared_ptr<const BexUnicodeString> Inputs::Document(int iSize) {
    static std::map<int, std::shared_ptr<const BexUnicodeString>> kept;
    return Kept(kept, iSize, MakeDocument);
}

std::string Inputs::AllTexts(const ActivityInfo& iActivity) {
    const ProcessInfo& process = iActivity.process;
    std::string texts;
    for (const BexUnicodeString* text :
         {&iActivity.id, &iActivity.name, &iActivity.abstract, &iActivity.priority, &iActivity.extid, &iActivity.status,
          &iActivity.durationUnit, &iActivity.owner, &iActivity.participant, &iActivity.participantType,
          &iActivity.documentation, &process.id, &process.name, &process.context}) {
        AddText(texts, *text);
    }
    texts += std::to_string(iActivity.duration) + " " + std::to_string(iActivity.generation) + "\n";
    for (int i = 0; i < process.dataNumber; ++i) {
        AddText(texts, process.datas[i].name);
        AddText(texts, process.datas[i].type);
        AddText(texts, process.datas[i].extid);
        AddText(texts, process.datas[i].value);
    }
    texts += "inputs\n";
    for (int i = 0; i < iActivity.inputNumber; ++i) {
        AddText(texts, iActivity.inputs[i]);
    }
    texts += "outputs\n";
    for (int i = 0; i < iActivity.outputNumber; ++i) {
        AddText(texts, iActivity.outputs[i]);
    }
    return texts;
}

// ---------------------------------------------------------------------------------------------------- actions

std::string Inputs::Digits(int iIndex) {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016X", static_cast<unsigned int>(iIndex));
    return digits;
}

std::string Inputs::DataName(int iIndex) {
    return "Model-" + Digits(iIndex).substr(8);
}

std::string Inputs::DataValue(int iIndex) {
    return "Rib of wing " + Digits(iIndex).substr(8);
}

std::string Inputs::Uuid(const std::string& iTable, std::string_view iDigits) {
    using namespace QorWflUuidLayout;
    std::string uuid = "DESIGN";
    uuid.resize(static_cast<std::size_t>(kKienv.offset), ' ');
    uuid += "PROD1";
    uuid.resize(static_cast<std::size_t>(kKitab.offset), ' ');
    uuid += iTable;
    uuid.resize(static_cast<std::size_t>(kXCoid.offset), ' ');
    for (int twice = 0; twice < 2; ++twice) {
        for (std::size_t i = 0; i < iDigits.size(); i += 2) {
            uuid += static_cast<char>(std::stoi(std::string(iDigits.substr(i, 2)), nullptr, 16));
        }
    }
    return uuid;
}

Inputs::Action::Action(int iSize)
    : abstract("Check stress & weight of the <new> ribs"), priority("3"), id("ACT-4711"), owner("jdoe") {
    objects.reserve(static_cast<std::size_t>(iSize));
    for (int i = 0; i < iSize; ++i) {
        const std::string uuid = Uuid("KIRVA_MODEL", Digits(i));
        objects.push_back({_SEQUENCE_octet(uuid.data(), uuid.size()), i < InputCount(iSize) ? "I" : "O",
                           DataValue(i).c_str(), DataName(i).c_str()});
    }
}

void Inputs::Action::GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                                BexUnicodeString& /*oExtra*/) const {
    static const BexUnicodeString kinds[]{"Config", "WFProcess", "WFActivity"};
    static const BexUnicodeString values[]{"CONF1", "Process-1", "Activity-1"};
    oKind = kinds[iIndex - 1];
    oValue = values[iIndex - 1];
}

void Inputs::Action::GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType,
                               BexUnicodeString& oDirection, BexUnicodeString& oNickname,
                               BexUnicodeString& oName) const {
    const ActionObject& object = objects[static_cast<std::size_t>(iIndex) - 1];
    oUuid = object.uuid;
    oType = "Model";
    oDirection = object.direction;
    oNickname = object.nickname;
    oName = object.name;
}

std::shared_ptr<const Inputs::Action> Inputs::HostAction(int iSize) {
    static std::map<int, std::shared_ptr<const Action>> kept;
    return Kept(kept, iSize, [](int iAny) { return std::make_shared<const Action>(iAny); });
}

Inputs::Handler::Handler() {
    QorWflPropertyFile properties;
    properties.SetValue("actionObjects.VERANT_QORModel.*", "KIRVA_MODEL.C_NICKNAME");
    properties.SetValue("actionObjects.VERANT_QORDocument.*", "DOC*.S_TYPE_REP");
    properties.SetValue("actionObjects.VERANT_QORFeature.*", "FEAT*.C_NAME");
    Init(properties);
}
