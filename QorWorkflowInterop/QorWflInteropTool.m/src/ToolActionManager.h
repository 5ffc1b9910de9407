#ifndef ToolActionManager_H
#define ToolActionManager_H

#include "JsonAction.h"
#include "ToolObjectNameHandler.h"

#include <QorWflActionManagerBase.h>

#include <optional>
#include <string>

/** The command's action manager: fills records from actions in JSON, in the words of a property file. */
class ToolActionManager final : public QorWflActionManagerBase {
public:
    /**
     * Takes the vocabulary and the object types from a property file.
     * @param iConfig the file, or the folder it is in; without one the library looks for it along `BexMsgCatalogPath`
     * @throw Failure when a file is given and cannot be read.
     */
    explicit ToolActionManager(const std::optional<std::string>& iConfig);

    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return &handler; }

    /** Fills a fresh record; what the action does not tell stays as the record has it. */
    void FillRecord(const JsonAction& iAction, ActivityInfo& oRecord);

private:
    BexUnicodeString Maturity(const BexUnicodeString& iStatus) const;

    ToolObjectNameHandler handler;
};

#endif
