#include "QorWflActionManagerBase.h"

#include "QorWflUrlUtil.h"
#include "QorWflUuidLayout.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

BexQorTrace trace("WFInterop", "WFInterop", "STDOUT", 1024);

// ---------------------------------------------------------------------------------------------------- resources

constexpr const char* kPropertyFile = "QorWflActionManager";
constexpr const char* kPriorityPrefix = "actionPriority.";

/** Takes over a text setting of the file when the key is its own. */
bool TakeText(const BexUnicodeString& iKey, const BexUnicodeString& iValue, const char* iName, const char* iMessage,
              BexUnicodeString& oMember, BexQorTraceStep& ioStep) {
    if (iKey != iName) {
        return false;
    }
    oMember = iValue;
    ioStep << iMessage << std::endl;
    return true;
}

/** The word at the same place of a parallel list, or the text itself when it is not listed. */
BexUnicodeString Translate(const BexUnicodeString& iText, const BexListValBexUnicodeString& iFrom,
                           const BexListValBexUnicodeString& iTo) {
    const int position = iFrom.Locate(iText);
    return position > 0 ? iTo[position] : iText;
}

/**
 * Ends the process when a condition does not hold, in every build type. The path and the line are those that support
 * staff know this failure by.
 */
void Assert(bool iCondition, const char* iText) {
    // GCOVR_EXCL_START: death tests go here, and a process that aborts leaves no counts behind
    if (!iCondition) {
        std::fprintf(stderr, "%s:%d: Assertion `%s' failed.\n",
                     "QorWorkflowInterop/QorWflInteropUtil.m/src/QorWflActionManagerBase", 195, iText);
        std::abort();
    }
    // GCOVR_EXCL_STOP
}

}  // namespace

QorWflActionManagerBase::QorWflActionManagerBase()
    : actionType("Design"),
      startStatus("DSGproposed"),
      runStatus("DSGin work"),
      completeStatus("DSGcompleted"),
      abortStatus("rejected"),
      bypassStatus("obsoleted"),
      specialDataNames{"MISSING", "AMBIGUOUS"} {
    const BexQorTraceStep step(trace, "QorWflActionManagerBase::QorWflActionManagerBase");
    internalPriorities.Append("1");
    exportedPriorities.Append("Low");
    internalPriorities.Append("2");
    exportedPriorities.Append("Medium");
    internalPriorities.Append("3");
    exportedPriorities.Append("High");
}

QorWflActionManagerBase::~QorWflActionManagerBase() = default;

void QorWflActionManagerBase::InitResources(QorWflPropertyFile& ioProperties) {
    BexQorTraceStep step(trace, "QorWflActionManagerBase::InitResources");
    ioProperties.SetValue("actionObjects.VERANT_QORModel.*", "KIRVA_MODEL.C_NICKNAME");
    ioProperties.SetValue("actionObjects.VERANT_QORDocument.*", "DOC*.S_TYPE_REP");
    ioProperties.SetValue("actionObjects.VERANT_QORFeature.*", "FEAT*.C_NAME");
    ioProperties.Read(kPropertyFile);  // without a file the defaults stay
    BexListValBexUnicodeString internalCodes;
    BexListValBexUnicodeString exportedWords;
    bool isFirstPriority = true;
    for (int i = 1; i <= ioProperties.GetNKeys(); ++i) {
        const BexUnicodeString key = ioProperties.GetKey(i);
        const BexUnicodeString value = ioProperties.GetValue(i);
        step << "Read property [" << key << "]=[" << value << "]" << std::endl;
        if (TakeText(key, value, "actionType", "Action type set", actionType, step) ||
            TakeText(key, value, "actionStatus.start", "Starting maturity set", startStatus, step) ||
            TakeText(key, value, "actionStatus.run", "Running maturity set", runStatus, step) ||
            TakeText(key, value, "actionStatus.complete", "Complete maturity set", completeStatus, step) ||
            TakeText(key, value, "actionStatus.abort", "Aborted maturity set", abortStatus, step) ||
            TakeText(key, value, "actionStatus.bypass", "Bypassed maturity set", bypassStatus, step) ||
            TakeText(key, value, "dataName.missing", "Missing data marker set", specialDataNames[0], step) ||
            TakeText(key, value, "dataName.ambiguous", "Ambiguous data marker set", specialDataNames[1], step)) {
            continue;
        }
        const int prefixLength = static_cast<int>(std::strlen(kPriorityPrefix));
        if (key.SubString(0, prefixLength) == kPriorityPrefix) {
            if (isFirstPriority) {
                isFirstPriority = false;
                step << "Priority mapping resetted" << std::endl;  // worded so in every log
            }
            step << "Priority mapping added" << std::endl;
            internalCodes.Append(key.SubString(prefixLength, INT_MAX));
            exportedWords.Append(value);
        }
    }
    if (!isFirstPriority) {
        internalPriorities = std::move(internalCodes);  // both or none, also when memory ends
        exportedPriorities = std::move(exportedWords);
    }
}

BexUnicodeString QorWflActionManagerBase::GetExportedPriority(const BexUnicodeString& iInternal) {
    BexQorTraceStep step(trace, "QorWflActionManagerBase::GetExportedPriority");
    BexUnicodeString exported = Translate(iInternal, internalPriorities, exportedPriorities);
    step << "Internal=[" << iInternal << "] Exported=[" << exported << "]" << std::endl;
    return exported;
}

BexUnicodeString QorWflActionManagerBase::GetInternalPriority(const BexUnicodeString& iExported) {
    BexQorTraceStep step(trace, "QorWflActionManagerBase::GetInternalPriority");
    BexUnicodeString internal = Translate(iExported, exportedPriorities, internalPriorities);
    step << "Exported=[" << iExported << "] Internal=[" << internal << "]" << std::endl;
    return internal;
}

BexUnicodeString QorWflActionManagerBase::GetSpecialDataName(int iId) {
    const BexQorTraceStep step(trace, "QorWflActionManagerBase::GetSpecialDataName");
    Assert(iId > 0 && iId <= 2, "iId>0 && iId<=2");
    return "/" + specialDataNames[iId - 1] + "/";
}

// ---------------------------------------------------------------------------------------------------- action
// information

namespace {

/** What the action tells about an attached object. */
struct AttachedObject {
    AttachedObject(const QorWflActionItf& iAction, int iIndex) {
        iAction.GetObject(iIndex, uuid, type, direction, nickname, name);
        if (name.IsNull() != 0) {
            BexUnicodeString number;
            number.BuildFromNum(iIndex, "%d");
            name = "*AUTO_ID#" + number;
        }
    }

    bool IsProduct() const { return type == "Product"; }
    /** Whether it is of a type that takes part in the activity's data. */
    bool IsData() const { return type == "Part" || type == "Model" || type == "Document" || type == "Feature"; }

    _SEQUENCE_octet uuid;
    BexUnicodeString type;
    BexUnicodeString direction;
    BexUnicodeString nickname;
    BexUnicodeString name;
};

/** What the first look at an action's objects gives. */
struct ObjectSummary {
    _SEQUENCE_octet productUuid;
    BexUnicodeString productNickname;
    BexListValBexUnicodeString inputs;
    BexListValBexUnicodeString outputs;
};

/** Takes what the context entries tell; the last of a kind counts. Gives the name of the configuration. */
BexUnicodeString TakeContexts(const QorWflActionItf& iAction, ActivityInfo& oInfo) {
    BexUnicodeString configuration;
    const int count = iAction.GetContextCount();
    for (int i = 0; i < count; ++i) {
        BexUnicodeString kind;
        BexUnicodeString value;
        BexUnicodeString extra;
        iAction.GetContext(i + 1, kind, value, extra);
        if (kind == "Config") {
            configuration = value;
        } else if (kind == "WFProcess") {
            oInfo.process.id = value;
        } else if (kind == "WFActivity") {
            oInfo.id = value;
        }
    }
    return configuration;
}

/** Finds the product, the last one counting, and the names of the inputs and outputs. */
ObjectSummary SummarizeObjects(const QorWflActionItf& iAction, int iCount) {
    ObjectSummary summary;
    for (int j = 0; j < iCount; ++j) {
        const AttachedObject object(iAction, j + 1);
        if (object.IsProduct()) {
            summary.productUuid = object.uuid;
            summary.productNickname = object.nickname;
        } else if (object.IsData() && object.direction == "I") {
            summary.inputs.Append(object.name);
        } else if (object.IsData() && object.direction == "O") {
            summary.outputs.Append(object.name);
        }
    }
    return summary;
}

/** The bytes of an UUID, a copy; too few of them end the process, by the buffer's own check. */
struct UuidBytes {
    explicit UuidBytes(const _SEQUENCE_octet& iUuid) {
        for (int i = 0; i < QorWflUuidLayout::kBlockSize; ++i) {
            bytes[i] = static_cast<char>(iUuid[static_cast<unsigned long>(i)]);
        }
    }
    char bytes[QorWflUuidLayout::kBlockSize];
};

void TakeProcessContext(const ObjectSummary& iSummary, const BexUnicodeString& iConfiguration, ActivityInfo& oInfo) {
    if (iSummary.productUuid.length() != static_cast<unsigned long>(QorWflUuidLayout::kBlockSize)) {
        return;
    }
    BexUnicodeString url = QorWflUrlUtil::ContextUrl(UuidBytes(iSummary.productUuid).bytes, iConfiguration);
    QorWflUrlUtil::AddUrlParm(url, "Nickname", iSummary.productNickname);
    oInfo.process.context = std::move(url);
}

void CopyNames(const BexListValBexUnicodeString& iNames, BexUnicodeString* oNames) {
    for (int i = 1; i <= iNames.Size(); ++i) {
        oNames[i - 1] = iNames[i];
    }
}

/** The names of the inputs and, behind them, the outputs, each once. */
BexListValBexUnicodeString DataNames(const ObjectSummary& iSummary) {
    BexListValBexUnicodeString names(iSummary.inputs);
    for (int i = 1; i <= iSummary.outputs.Size(); ++i) {
        names.Append(iSummary.outputs[i]);
    }
    names.RemoveDuplicates();
    return names;
}

void FillData(const AttachedObject& iObject, const QorWflObjectNameHandlerBase& iHandler, DataInfo& oData) {
    const UuidBytes uuid(iObject.uuid);
    oData.name = iObject.name;
    BexUnicodeString url = QorWflUrlUtil::InstanceUrl(uuid.bytes);
    QorWflUrlUtil::AddUrlParm(url, "Nickname", iObject.nickname);
    oData.extid = std::move(url);
    oData.type = iHandler.GetExternalType(uuid.bytes);
    oData.value = iObject.nickname;
}

}  // namespace

int QorWflActionManagerBase::GetActionInfo(const QorWflActionItf* iAction, ActivityInfo& oInfo) {
    const BexQorTraceStep step(trace, "QorWflActionManagerBase::GetActionInfo");
    if (iAction == nullptr) {
        return 0;
    }
    oInfo.abstract = iAction->GetAbstract();
    oInfo.priority = GetExportedPriority(iAction->GetPriority());
    oInfo.extid = QorWflUrlUtil::ActionUrl(iAction->GetActionId());
    oInfo.owner = iAction->GetOwner();
    oInfo.participant = oInfo.owner;
    oInfo.participantType = "HUMAN";
    const BexUnicodeString configuration = TakeContexts(*iAction, oInfo);
    const int objectCount = iAction->GetObjectCount();
    const ObjectSummary summary = SummarizeObjects(*iAction, objectCount);
    TakeProcessContext(summary, configuration, oInfo);
    oInfo.SetInputNumber(summary.inputs.Size());
    oInfo.SetOutputNumber(summary.outputs.Size());
    CopyNames(summary.inputs, oInfo.inputs);
    CopyNames(summary.outputs, oInfo.outputs);
    const BexListValBexUnicodeString dataNames = DataNames(summary);
    oInfo.process.SetDataNumber(dataNames.Size());
    for (int j = 0; j < objectCount; ++j) {
        const AttachedObject object(*iAction, j + 1);
        const int position = object.IsData() ? dataNames.Locate(object.name) : 0;
        if (position > 0) {
            FillData(object, *GetObjectNameHandler(), oInfo.process.datas[position - 1]);
        }
    }
    return 0;
}

// ---------------------------------------------------------------------------------------------------- dates

namespace {

constexpr int kMonths = 12;

/** A number of years or the like in the range of an int; BexTime's own range is far within. */
int ClampToInt(std::int64_t iNumber) {
    return static_cast<int>(std::clamp<std::int64_t>(iNumber, INT_MIN, INT_MAX));
}

/** The same day of the month and time of day in another year and month; BexTime makes a date of an impossible day. */
BexTime WithYearAndMonth(const BexTime& iTime, std::int64_t iYear, int iMonth) {
    return BexTime(ClampToInt(iYear), iMonth, iTime.GetDay(), iTime.GetHour(), iTime.GetMinute(), iTime.GetSecond());
}

BexTime Later(const BexTime& iStart, int iDuration, const BexUnicodeString& iUnit) {
    BexTime result(iStart);
    if (iUnit == "Y") {
        result = WithYearAndMonth(iStart, std::int64_t{iStart.GetYear()} + iDuration, iStart.GetMonth());
    } else if (iUnit == "M") {
        const std::int64_t months = std::int64_t{iStart.GetMonth()} + iDuration - 1;
        result = WithYearAndMonth(iStart, iStart.GetYear() + months / kMonths, static_cast<int>(months % kMonths) + 1);
    } else if (iUnit == "D") {
        result += BexTimeSpan(iDuration, 0, 0, 0);
    } else if (iUnit == "h") {
        result += BexTimeSpan(0, iDuration, 0, 0);
    } else if (iUnit == "m") {
        result += BexTimeSpan(0, 0, iDuration, 0);
    } else if (iUnit == "s") {
        result += BexTimeSpan(0, 0, 0, iDuration);
    }
    return result;
}

}  // namespace

BexUnicodeString QorWflActionManagerBase::GetDateImage(const BexTime& iTime) {
    return iTime.ConvertToString("%Y-%m-%d-%H.%M.%S");
}

BexTime QorWflActionManagerBase::GetNextDate(const BexTime& iStart, int iDuration, const BexUnicodeString& iUnit) {
    BexQorTraceStep step(trace, "QorWflActionManagerBase::GetNextDate");
    if (step.IsOn() != 0) {
        step << "Start date=[" << GetDateImage(iStart) << "]" << std::endl;
        step << "Duration=" << iDuration << " " << iUnit << std::endl;
    }
    const BexTime result = iDuration > 0 ? Later(iStart, iDuration, iUnit) : iStart;
    if (step.IsOn() != 0) {
        step << "End date=[" << GetDateImage(result) << "]" << std::endl;
    }
    return result;
}
