#ifndef HostActionManager_H
#define HostActionManager_H

#include "HostObjectNameHandler.h"
#include "Store.h"

#include <QorWflActionManagerBase.h>

/** Turns actions of the store into records: what the base class takes from an action, and what only this host knows. */
class HostActionManager final : public QorWflActionManagerBase {
public:
    /** Reads the property file; after that, the manager is only read. */
    explicit HostActionManager(const Store& iStore);

    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return &handler; }

    /** Fills a fresh record. */
    void FillRecord(const Action& iAction, ActivityInfo& oRecord);

    /** @return the store's status for a maturity of the workflow tool; null when the property file has no such word. */
    BexUnicodeString StatusOf(const BexUnicodeString& iMaturity) const;

    /** @return when an action is due that begins at its planned start and takes so long. */
    static BexUnicodeString Due(const Action& iAction, int iDuration, const BexUnicodeString& iUnit);

private:
    HostObjectNameHandler handler;
};

#endif
