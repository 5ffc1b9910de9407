#include "ToolActionManager.h"

#include "Configuration.h"
#include "JsonActionItf.h"

ToolActionManager::ToolActionManager(const std::optional<std::string>& iConfig) {
    const std::optional<Configuration> chosen = iConfig ? std::optional<Configuration>(*iConfig) : std::nullopt;
    QorWflPropertyFile properties;
    InitResources(properties);
    handler.Init(properties);
}

void ToolActionManager::FillRecord(const JsonAction& iAction, ActivityInfo& oRecord) {
    const JsonActionItf action(iAction);
    GetActionInfo(&action, oRecord);
    oRecord.name = iAction.name;
    oRecord.status = Maturity(iAction.status);
    oRecord.generation = iAction.generation.value_or(oRecord.generation);
    oRecord.duration = iAction.duration.value_or(oRecord.duration);
    oRecord.durationUnit = iAction.durationUnit;
    oRecord.documentation = iAction.documentation;
    oRecord.process.name = iAction.processName;
}

/** The configured maturity of a status that has one, any other text as it stands. */
BexUnicodeString ToolActionManager::Maturity(const BexUnicodeString& iStatus) const {
    const struct {
        const char* status;
        const BexUnicodeString& maturity;
    } maturities[] = {{"start", startStatus},
                      {"run", runStatus},
                      {"complete", completeStatus},
                      {"abort", abortStatus},
                      {"bypass", bypassStatus}};
    for (const auto& entry : maturities) {
        if (iStatus == entry.status) {
            return entry.maturity;
        }
    }
    return iStatus;
}
