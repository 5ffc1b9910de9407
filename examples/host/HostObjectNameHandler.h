#ifndef HostObjectNameHandler_H
#define HostObjectNameHandler_H

#include "Store.h"

#include <QorWflObjectNameHandlerBase.h>

/** Finds the names of objects in the store. */
class HostObjectNameHandler final : public QorWflObjectNameHandlerBase {
public:
    explicit HostObjectNameHandler(const Store& iStore) : store(iStore) {}

    /** @return the value of the attribute that the property file names for objects of this kind; null without one. */
    BexUnicodeString GetObjectName(const char* iUuid) const override;

private:
    const Store& store;
};

#endif
