#include "ToolObjectNameHandler.h"

BexUnicodeString ToolObjectNameHandler::GetObjectName(const char* /*iUuid*/) const {
    return BexUnicodeString();
}
