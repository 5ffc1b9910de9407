#ifndef JsonRecord_H
#define JsonRecord_H

#include "JsonPlace.h"

#include <ActivityInfo.h>

#include <string>

/** The member of a JSON text that holds a record. */
inline constexpr const char* kRecordMember = "record";

/**
 * @return a JSON text with a record as its member "record": every field by its own name, null for a null text. UTF-8,
 * with a line feed at its end.
 */
std::string RecordToJson(const ActivityInfo& iRecord);

/**
 * Fills a fresh record from the object that RecordToJson() writes. A field that is not there keeps its default.
 * @throw Failure with file and place when it is not such an object.
 */
void JsonToRecord(const JsonPlace& iPlace, ActivityInfo& oRecord);

#endif
