#include "Bench.h"
#include "Inputs.h"

#include <QorWflActionManagerBase.h>
#include <QorWflUuidLayout.h>

#include <benchmark/benchmark.h>

namespace {

class Manager final : public QorWflActionManagerBase {
public:
    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return &handler; }

private:
    Inputs::Handler handler;
};

// ---------------------------------------------------------------------------------------------------- plain structs

struct PlainData {
    std::string name;
    std::string type;
    std::string extid;
    std::string value;
};

/** A record without any of our types. */
struct PlainActivity {
    std::string id;
    std::string abstract;
    std::string priority;
    std::string extid;
    std::string owner;
    std::string participant;
    std::string participantType;
    std::string processId;
    std::vector<PlainData> datas;
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
};

std::string ModelUrl(int iIndex) {
    const std::string digits = Inputs::Digits(iIndex);
    std::string url = "LumenUID://Legacy+QOR1/PROD1/DESIGN++#PROD1+++#KIRVA_MODEL+++++++#" + digits + "#" + digits +
                      ".KIRVA_MODEL?Nickname=";
    for (const char character : Inputs::DataValue(iIndex)) {
        url += character == ' ' ? '+' : character;
    }
    return url;
}

/** The texts that the record of an action of some size has to hold. */
PlainActivity Expected(int iSize) {
    PlainActivity activity{"Activity-1",
                           "Check stress & weight of the <new> ribs",
                           "High",
                           "LumenUID://Legacy+QOR1/default/ACT-4711.ACTION",
                           "jdoe",
                           "jdoe",
                           "HUMAN",
                           "Process-1",
                           {},
                           {},
                           {}};
    for (int i = 0; i < iSize; ++i) {
        activity.datas.push_back({Inputs::DataName(i), "VERANT_QORModel", ModelUrl(i), Inputs::DataValue(i)});
        (i < (iSize + 1) / 2 ? activity.inputs : activity.outputs).push_back(Inputs::DataName(i));
    }
    return activity;
}

/** Fills a plain record with finished texts, field by field. */
void FillWithTexts(const PlainActivity& iTexts, PlainActivity& oActivity) {
    oActivity.id = iTexts.id;
    oActivity.abstract = iTexts.abstract;
    oActivity.priority = iTexts.priority;
    oActivity.extid = iTexts.extid;
    oActivity.owner = iTexts.owner;
    oActivity.participant = iTexts.participant;
    oActivity.participantType = iTexts.participantType;
    oActivity.processId = iTexts.processId;
    oActivity.datas.resize(iTexts.datas.size());
    for (std::size_t i = 0; i < iTexts.datas.size(); ++i) {
        oActivity.datas[i].name = iTexts.datas[i].name;
        oActivity.datas[i].type = iTexts.datas[i].type;
        oActivity.datas[i].extid = iTexts.datas[i].extid;
        oActivity.datas[i].value = iTexts.datas[i].value;
    }
    oActivity.inputs = iTexts.inputs;
    oActivity.outputs = iTexts.outputs;
}

/** The long URL of an object, without a call of ours. */
std::string BuiltUrl(const char* iUuid, const char* iNickname) {
    using namespace QorWflUuidLayout;
    const auto width = [iUuid](Field iField) {
        int unpadded = iField.width;
        while (unpadded > 0 && iUuid[iField.offset + unpadded - 1] == ' ') {
            --unpadded;
        }
        return static_cast<std::size_t>(unpadded);
    };
    std::string url("LumenUID://Legacy+QOR1/");
    const auto add = [&url](std::string_view iText) {
        for (const char character : iText) {
            url += character == ' ' ? '+' : character;
        }
    };
    url.append(iUuid + kKienv.offset, width(kKienv)).append("/");
    for (const Field field : {kDbName, kKienv, kKitab}) {
        add(std::string_view(iUuid + field.offset, static_cast<std::size_t>(field.width)));
        url += '#';
    }
    for (const Field field : {kXCoid, kXCompid}) {
        for (int i = 0; i < field.width; ++i) {
            constexpr char kDigits[] = "0123456789ABCDEF";
            const auto byte = static_cast<unsigned char>(iUuid[field.offset + i]);
            url += kDigits[byte / 16];
            url += kDigits[byte % 16];
        }
        url += field.offset == kXCoid.offset ? '#' : '.';
    }
    url.append(iUuid + kKitab.offset, width(kKitab)).append("?Nickname=");
    add(iNickname);
    return url;
}

/** Fills a plain record with the same texts, made of what the action tells; each object is asked for once. */
void FillFromAction(const QorWflActionItf& iAction, PlainActivity& oActivity) {
    BexUnicodeString kind;
    BexUnicodeString value;
    BexUnicodeString extra;
    for (int i = 1; i <= iAction.GetContextCount(); ++i) {
        iAction.GetContext(i, kind, value, extra);
        if (kind == "WFProcess") {
            oActivity.processId = value.ConvertToChar();
        } else if (kind == "WFActivity") {
            oActivity.id = value.ConvertToChar();
        }
    }
    oActivity.abstract = iAction.GetAbstract().ConvertToChar();
    oActivity.priority = iAction.GetPriority() == "3" ? "High" : "Low";
    oActivity.extid = "LumenUID://Legacy+QOR1/default/";
    oActivity.extid.append(iAction.GetActionId().ConvertToChar()).append(".ACTION");
    oActivity.owner = iAction.GetOwner().ConvertToChar();
    oActivity.participant = oActivity.owner;
    oActivity.participantType = "HUMAN";
    const int count = iAction.GetObjectCount();
    oActivity.datas.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) {
        _SEQUENCE_octet uuid;
        BexUnicodeString type;
        BexUnicodeString direction;
        BexUnicodeString nickname;
        BexUnicodeString name;
        iAction.GetObject(i, uuid, type, direction, nickname, name);
        oActivity.datas.push_back({name.ConvertToChar(), "VERANT_QORModel",
                                   BuiltUrl(reinterpret_cast<const char*>(&uuid[0]), nickname.ConvertToChar()),
                                   nickname.ConvertToChar()});
        (direction == "I" ? oActivity.inputs : oActivity.outputs).push_back(name.ConvertToChar());
    }
}

BexUnicodeString Text(const std::string& iText) {
    return BexUnicodeString(iText.data(), static_cast<int>(iText.size()));
}

/** The texts of a plain record, as those of ours. */
std::string AllTexts(const PlainActivity& iActivity) {
    ActivityInfo activity;
    activity.id = Text(iActivity.id);
    activity.abstract = Text(iActivity.abstract);
    activity.priority = Text(iActivity.priority);
    activity.extid = Text(iActivity.extid);
    activity.owner = Text(iActivity.owner);
    activity.participant = Text(iActivity.participant);
    activity.participantType = Text(iActivity.participantType);
    activity.process.id = Text(iActivity.processId);
    activity.process.SetDataNumber(static_cast<int>(iActivity.datas.size()));
    for (std::size_t i = 0; i < iActivity.datas.size(); ++i) {
        DataInfo& data = activity.process.datas[i];
        data.name = Text(iActivity.datas[i].name);
        data.type = Text(iActivity.datas[i].type);
        data.extid = Text(iActivity.datas[i].extid);
        data.value = Text(iActivity.datas[i].value);
    }
    activity.SetInputNumber(static_cast<int>(iActivity.inputs.size()));
    for (std::size_t i = 0; i < iActivity.inputs.size(); ++i) {
        activity.inputs[i] = Text(iActivity.inputs[i]);
    }
    activity.SetOutputNumber(static_cast<int>(iActivity.outputs.size()));
    for (std::size_t i = 0; i < iActivity.outputs.size(); ++i) {
        activity.outputs[i] = Text(iActivity.outputs[i]);
    }
    return Inputs::AllTexts(activity);
}

// ---------------------------------------------------------------------------------------------------- timing

void TimeOurs(benchmark::State& ioState, int iSize) {
    const std::shared_ptr<const Inputs::Action> action = Inputs::HostAction(iSize);
    Manager manager;
    for ([[maybe_unused]] auto round : ioState) {
        ActivityInfo activity;
        manager.GetActionInfo(action.get(), activity);
        benchmark::DoNotOptimize(activity.process.datas);
    }
}

void TimeFinishedTexts(benchmark::State& ioState, int iSize) {
    const PlainActivity texts = Expected(iSize);
    for ([[maybe_unused]] auto round : ioState) {
        PlainActivity activity;
        FillWithTexts(texts, activity);
        benchmark::DoNotOptimize(activity.datas.data());
    }
}

void TimeFromAction(benchmark::State& ioState, int iSize) {
    const std::shared_ptr<const Inputs::Action> action = Inputs::HostAction(iSize);
    for ([[maybe_unused]] auto round : ioState) {
        PlainActivity activity;
        FillFromAction(*action, activity);
        benchmark::DoNotOptimize(activity.datas.data());
    }
}

}  // namespace

void Bench::CheckActionInfo() {
    Manager manager;
    for (const int size : kSizes) {
        ActivityInfo ours;
        manager.GetActionInfo(Inputs::HostAction(size).get(), ours);
        PlainActivity finished;
        FillWithTexts(Expected(size), finished);
        RequireSame("records filled with finished texts", Inputs::AllTexts(ours), AllTexts(finished));
        PlainActivity fromAction;
        FillFromAction(*Inputs::HostAction(size), fromAction);
        RequireSame("records filled from the action", Inputs::AllTexts(ours), AllTexts(fromAction));
    }
}

void Bench::AddActionInfo() {
    AddOurs("action", kSizes, TimeOurs);
    Add("action", "plain struct, same action", kSizes, TimeFromAction);
    Add("action", "plain struct, finished texts", kSizes, TimeFinishedTexts);
}
