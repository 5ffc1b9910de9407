#ifndef NaiveXpdlReader_H
#define NaiveXpdlReader_H

#include "XmlNode.h"

#include <ActivityInfo.h>

/**
 * Fills a record from the tree of an XPDL document, as another parser gives it: step by step and independent of the
 * library's reader, to judge it by. What was read before a required element is found missing stays.
 *
 * The tree has no CDATA sections, so a text is what stands before the first node of another kind; documents with such
 * sections in them are no case for this reader.
 */
void ReadXpdlNaively(const XmlNode& iDocument, ActivityInfo& ioActivity);

#endif
