#include "LoadedConfig.h"

#include "Configuration.h"
#include "Failure.h"
#include "Files.h"
#include "NamelessFile.h"

#include <QorWflActionManagerBase.h>
#include <QorWflObjectNameHandlerBase.h>

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace {

constexpr const char* kStandardInput = "-";

/** A handler that shows what it holds. */
class Handler final : public QorWflObjectNameHandlerBase {
public:
    BexUnicodeString GetObjectName(const char* /*iUuid*/) const override { return BexUnicodeString(); }

    int Count() const { return objectKeys.Size(); }
    ObjectMapping Mapping(int iIndex) const {
        return {externalTypes[iIndex],  environments[iIndex], objectKinds[iIndex], tables[iIndex],
                nameAttributes[iIndex], typeKeys[iIndex],     objectKeys[iIndex]};
    }
};

}  // namespace

/** A manager that shows what it holds, with its handler. */
class LoadedConfig::Manager final : public QorWflActionManagerBase {
public:
    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return &handler; }

    void Load(QorWflPropertyFile& ioProperties) {
        InitResources(ioProperties);
        handler.Init(ioProperties);
    }
    const BexUnicodeString& ActionType() const { return actionType; }
    std::vector<MaturityWord> Maturities() const {
        return {{"start", startStatus},
                {"run", runStatus},
                {"complete", completeStatus},
                {"abort", abortStatus},
                {"bypass", bypassStatus}};
    }
    std::vector<PriorityWord> Priorities() const {
        std::vector<PriorityWord> priorities;
        for (int i = 1; i <= internalPriorities.Size(); ++i) {
            priorities.push_back({internalPriorities[i], exportedPriorities[i]});
        }
        return priorities;
    }

    Handler handler;
};

LoadedConfig::LoadedConfig(const std::optional<std::string>& iConfig) : manager(std::make_unique<Manager>()) {
    if (iConfig == kStandardInput) {
        fileName = InputName(kStandardInput);
        content = ReadInput(kStandardInput);
        const NamelessFile file(content);
        const Configuration chosen(file.Path());
        manager->Load(properties);
    } else if (iConfig) {
        fileName = FindPropertyFile(*iConfig);
        content = ReadInput(fileName);
        const Configuration chosen(fileName);
        manager->Load(properties);
    } else {
        search = SearchPropertyFile();
        fileName = search->Found().value_or("");
        if (!fileName.empty() && ::access(fileName.c_str(), R_OK) != 0) {
            whyNotOpened = std::strerror(errno);
        } else if (!fileName.empty()) {
            content = ReadInput(fileName);
        }
        manager->Load(properties);
    }
}

LoadedConfig::~LoadedConfig() = default;

BexUnicodeString LoadedConfig::ActionType() const {
    return manager->ActionType();
}

std::vector<MaturityWord> LoadedConfig::Maturities() const {
    return manager->Maturities();
}

std::vector<PriorityWord> LoadedConfig::Priorities() const {
    return manager->Priorities();
}

BexUnicodeString LoadedConfig::MissingMarker() const {
    return manager->GetSpecialDataName(1);
}

BexUnicodeString LoadedConfig::AmbiguousMarker() const {
    return manager->GetSpecialDataName(2);
}

std::vector<ObjectMapping> LoadedConfig::Mappings() const {
    std::vector<ObjectMapping> mappings;
    for (int i = 1; i <= properties.GetNKeys(); ++i) {
        // The handler takes the usable keys in the order of the table; which these are it tells one by one.
        if (MappingOf(properties.GetKey(i), properties.GetValue(i))) {
            mappings.push_back(manager->handler.Mapping(static_cast<int>(mappings.size()) + 1));
            mappings.back().property = i;
        }
    }
    return mappings;
}

BexUnicodeString LoadedConfig::ExternalType(const BexUnicodeString& iEnvironment,
                                            const BexUnicodeString& iTable) const {
    return manager->handler.GetExternalType(iEnvironment, iTable);
}

BexUnicodeString LoadedConfig::NameAttribute(const BexUnicodeString& iType, const BexUnicodeString& iEnvironment,
                                             const BexUnicodeString& iTable) const {
    return manager->handler.GetNameAttribute(iType, iEnvironment, iTable);
}

std::optional<ObjectMapping> MappingOf(const BexUnicodeString& iKey, const BexUnicodeString& iValue) {
    QorWflPropertyFile single;
    single.SetValue(iKey, iValue);
    Handler handler;
    handler.Init(single);
    return handler.Count() == 0 ? std::nullopt : std::optional(handler.Mapping(1));
}
