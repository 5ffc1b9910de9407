#ifndef QorWflActivityToXml_H
#define QorWflActivityToXml_H

#include "ActivityInfo.h"

/**
 * Writes an activity as an XPDL 0.02 document: ISO-8859-1 text with one package, participant, process and activity, and
 * a line feed between any two adjacent tags.
 *
 * A field is written up to its first NUL character, characters above 0xFF as question marks. The `Created` text is the
 * current local time; everything else depends on the record alone. Keeps no state, so several threads may write
 * records of their own.
 *
 * @param iActivity the record; its counts must match its arrays
 * @param oXml receives the document; what it held is gone
 *
 * Memory that cannot be had is std::bad_alloc, with @p oXml null; where Xerces-C cannot be started, @p oXml is null.
 */
QORWFL_EXPORT void QorWflActivityToXml(const ActivityInfo& iActivity, BexUnicodeString& oXml);

#endif
