#ifndef JsonUuid_H
#define JsonUuid_H

#include "JsonPlace.h"

#include <string>

/**
 * The UUID block that an action in JSON gives an object.
 * @param iPlace an object with dbName, environment, table, coid and compid, or an instance URL as a text
 * @return the 50 bytes.
 * @throw Failure when it is neither, or the block could not hold what it says.
 */
std::string ReadJsonUuid(const JsonPlace& iPlace);

#endif
