#ifndef ToolObjectNameHandler_H
#define ToolObjectNameHandler_H

#include <QorWflObjectNameHandlerBase.h>

/** The command's object-name handler: types come from the configuration, names from the action itself. */
class ToolObjectNameHandler final : public QorWflObjectNameHandlerBase {
public:
    /** @return null: the command has no store of objects in which an attribute could be looked up. */
    BexUnicodeString GetObjectName(const char* iUuid) const override;
};

#endif
