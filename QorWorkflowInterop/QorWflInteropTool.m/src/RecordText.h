#ifndef RecordText_H
#define RecordText_H

#include <ActivityInfo.h>

#include <string>
#include <vector>

/**
 * @param iFileName what messages call the record
 * @return a record in its text form, with a line feed at its end.
 * @throw Failure when a text of the record has a character that is outside ISO-8859-1.
 */
std::string RecordToText(const ActivityInfo& iRecord, const std::string& iFileName);

/**
 * Fills a fresh record from its text form, through the library's reader, which goes by the order of the lines alone. So
 * the labels are compared here, or values could land in fields that they are not for.
 * @return what the reader has cut off, a message for each value, with file and line.
 * @throw Failure with file and line where another line stands than the form has there.
 */
std::vector<std::string> TextToRecord(const std::string& iText, const std::string& iFileName, ActivityInfo& oRecord);

#endif
