#ifndef QorWflXmlToActivity_H
#define QorWflXmlToActivity_H

#include "ActivityInfo.h"

/**
 * Fills an activity from the text of an XPDL document.
 *
 * Elements are found by their tags, the first of a tag counts, and what is not looked for is ignored; the record is
 * not cleared first, so a field whose optional element is missing keeps its value. The text may come from anywhere: it
 * is read by DOMParser, with that parser's limits.
 *
 * No exception leaves the function and no result tells of a failure. A text that is not a document writes "getDocument
 * failed" to standard error and leaves the record untouched; a required element that is missing ends the reading, and
 * the record keeps what was read up to there.
 *
 * While the trace channel "WFInteropXML" is on, the record is written to standard output in its text form.
 * Keeps no state, so with that channel off several threads may read documents into records of their own.
 *
 * @param iXml the document
 * @param oActivity the record to fill
 */
QORWFL_EXPORT void QorWflXmlToActivity(const BexUnicodeString& iXml, ActivityInfo& oActivity);

#endif
