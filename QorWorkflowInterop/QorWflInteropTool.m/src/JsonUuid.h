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

/** Where the fields of a UUID block stand, each by itself. */
struct UuidPlaces {
    JsonPlace dbName;
    JsonPlace environment;
    JsonPlace table;
    JsonPlace coid;
    JsonPlace compid;
};

/** The UUID block of these fields. @throw Failure as ReadJsonUuid() does. */
std::string ReadUuidPlaces(const UuidPlaces& iPlaces);

#endif
