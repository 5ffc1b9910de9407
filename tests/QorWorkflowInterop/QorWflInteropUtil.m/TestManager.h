#ifndef TestManager_H
#define TestManager_H

#include <QorWflActionManagerBase.h>
#include <QorWflObjectNameHandlerBase.h>

#include <string>
#include <vector>

/** A handler whose tables can be looked at. */
class TestHandler final : public QorWflObjectNameHandlerBase {
public:
    using QorWflObjectNameHandlerBase::environments;
    using QorWflObjectNameHandlerBase::externalTypes;
    using QorWflObjectNameHandlerBase::nameAttributes;
    using QorWflObjectNameHandlerBase::objectKeys;
    using QorWflObjectNameHandlerBase::objectKinds;
    using QorWflObjectNameHandlerBase::tables;
    using QorWflObjectNameHandlerBase::typeKeys;

    BexUnicodeString GetObjectName(const char* /*iUuid*/) const override { return BexUnicodeString("a name"); }
};

/** A manager whose vocabulary can be looked at, with a handler of its own. */
class TestManager final : public QorWflActionManagerBase {
public:
    using QorWflActionManagerBase::abortStatus;
    using QorWflActionManagerBase::actionType;
    using QorWflActionManagerBase::bypassStatus;
    using QorWflActionManagerBase::completeStatus;
    using QorWflActionManagerBase::exportedPriorities;
    using QorWflActionManagerBase::internalPriorities;
    using QorWflActionManagerBase::runStatus;
    using QorWflActionManagerBase::specialDataNames;
    using QorWflActionManagerBase::startStatus;

    TestHandler handler;
    std::vector<std::string>* calls = nullptr;  ///< where requests for the handler are noted; null: nowhere

    QorWflObjectNameHandlerBase* GetObjectNameHandler() override {
        if (calls != nullptr) {
            calls->emplace_back("GetObjectNameHandler");
        }
        return &handler;
    }
};

#endif
