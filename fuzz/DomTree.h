#ifndef DomTree_H
#define DomTree_H

#include "XmlNode.h"

#include <BexDom.h>

/** What of a tree is taken: what it holds, or what is left of it when it has been written and read. */
enum class TreeForm { AsItIs, AsReadBack };

/** The plain data of a document of the library. */
XmlNode TreeOf(const DOM_Document& iDocument, TreeForm iForm);

/**
 * Writes a document with WriteXML(), holds the text to that of the naive writer and, when it is XML, to what the
 * library and two other parsers read from it; ends the process where they differ.
 */
void CheckWrittenTree(DOM_Document& ioDocument);

#endif
