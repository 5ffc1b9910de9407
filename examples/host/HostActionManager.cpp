#include "HostActionManager.h"

#include "StoreAction.h"

HostActionManager::HostActionManager(const Store& iStore) : handler(iStore) {
    QorWflPropertyFile properties;
    InitResources(properties);
    handler.Init(properties);  // the same table, behind InitResources: its defaults come from there
}

void HostActionManager::FillRecord(const Action& iAction, ActivityInfo& oRecord) {
    const StoreAction shown(iAction, handler);
    GetActionInfo(&shown, oRecord);

    oRecord.name = iAction.name;
    oRecord.generation = iAction.generation;
    oRecord.status = iAction.status == "run" ? runStatus : startStatus;
    oRecord.duration = iAction.duration;
    oRecord.durationUnit = iAction.unit;
    oRecord.process.name = iAction.processName;
    // The document has no place for dates, so people find them in the text.
    oRecord.documentation = "Planned from " + GetDateImage(iAction.plannedStart) + " to " +
                            Due(iAction, iAction.duration, iAction.unit) + ".";
    if (!iAction.documentation.IsEmpty()) {
        oRecord.documentation += "\n" + iAction.documentation;
    }
}

BexUnicodeString HostActionManager::StatusOf(const BexUnicodeString& iMaturity) const {
    const struct {
        const BexUnicodeString& maturity;
        const char* status;
    } words[] = {{startStatus, "start"},
                 {runStatus, "run"},
                 {completeStatus, "complete"},
                 {abortStatus, "abort"},
                 {bypassStatus, "bypass"}};
    for (const auto& word : words) {
        if (word.maturity == iMaturity) {
            return word.status;
        }
    }
    return BexUnicodeString();
}

BexUnicodeString HostActionManager::Due(const Action& iAction, int iDuration, const BexUnicodeString& iUnit) {
    return GetDateImage(GetNextDate(iAction.plannedStart, iDuration, iUnit));
}
