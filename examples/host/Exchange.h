#ifndef Exchange_H
#define Exchange_H

#include "HostActionManager.h"
#include "HostLog.h"
#include "HostMessenger.h"
#include "Store.h"

/** What came of an exchange. */
struct Outcome {
    int done = 0;
    int failed = 0;
};

/** Sends the documents of all open actions. One that fails is logged and does not keep the others back. */
Outcome ExportOpenActions(Store& ioStore, HostActionManager& ioManager, HostMessenger& ioMessenger, HostLog& ioLog);

/** Takes the waiting replies into the store. One that cannot be used is logged and stays where it is. */
Outcome ImportReplies(Store& ioStore, HostActionManager& ioManager, HostMessenger& ioMessenger, HostLog& ioLog);

#endif
