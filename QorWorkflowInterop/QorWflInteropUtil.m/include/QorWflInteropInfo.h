#ifndef QorWflInteropInfo_H
#define QorWflInteropInfo_H

#include "ActivityInfo.h"
#include "DataInfo.h"
#include "ProcessInfo.h"

#include <iosfwd>

/**
 * @file
 * The activity records and their text form: labelled lines, meant for people and for the readers here.
 *
 * A writer puts a label before each value, each line ends in ";" and, but for the last line of a record, in a line feed
 * and a flush. A reader skips the labels unread and takes the values by their order. `participant` and
 * `participantType` are not part of the form.
 *
 * A value is cut at 79 characters or at a quote character when it is read; a null text is read back as an empty one.
 *
 * The label prefix ("process.", "inputs.1." ...) is one text shared by the whole library, and writing an ActivityInfo
 * leaves it as last set: a DataInfo or ProcessInfo written by itself afterwards carries that prefix. Hosts rely on
 * that. So records are written on one thread at a time; reading has no such limit.
 *
 * Every operator returns the stream it was given. Trouble shows in the stream's state: at the end of the text, where no
 * number stands, with a count above 4096 that the rest of the text cannot hold, or when memory for a list cannot be had
 * (that list stays empty), the fail state is set; what follows is read as empty texts and 0, the elements of a list
 * that was begun included. No exception leaves an operator unless the stream's own exception mask asks for it.
 */

/** Writes four lines: name, type, extid, value. */
QORWFL_EXPORT std::ostream& operator<<(std::ostream& ioStream, const DataInfo& iData);
/** Reads four texts. */
QORWFL_EXPORT std::istream& operator>>(std::istream& ioStream, DataInfo& oData);
/** Writes id, name, context and the data fields. */
QORWFL_EXPORT std::ostream& operator<<(std::ostream& ioStream, const ProcessInfo& iProcess);
/** Reads id, name, context and the data fields. */
QORWFL_EXPORT std::istream& operator>>(std::istream& ioStream, ProcessInfo& oProcess);
/** Writes the activity, its process, its inputs and its outputs. */
QORWFL_EXPORT std::ostream& operator<<(std::ostream& ioStream, const ActivityInfo& iActivity);
/** Reads the activity, its process, its inputs and its outputs; participant and participantType are left alone. */
QORWFL_EXPORT std::istream& operator>>(std::istream& ioStream, ActivityInfo& oActivity);

#endif
