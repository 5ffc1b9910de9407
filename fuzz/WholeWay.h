#ifndef WholeWay_H
#define WholeWay_H

#include <ActivityInfo.h>

/**
 * Writes a record as a document, reads that with the library and with two other parsers, and holds the results to what
 * the record says and to one another; ends the process where they differ. What a document cannot carry (NUL characters
 * and what stands behind them, characters above 0xFF, texts that are empty) is expected to come back as documented; a
 * control character that XML has no place for, to make the document unreadable for everybody.
 */
void CheckWholeWay(const ActivityInfo& iActivity);

#endif
