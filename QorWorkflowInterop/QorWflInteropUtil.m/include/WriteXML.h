#ifndef WriteXML_H
#define WriteXML_H

#include "QorWflExport.h"

#include <BexDom.h>

/**
 * Writes a document tree, or any part of one, as XML text.
 *
 * No indentation, no namespaces, no repair: `Name = "value"` with blanks around the equals sign, `&`, `<`, `>` and the
 * quote character as entity references, everything else as the tree holds it. A document begins with a declaration that
 * names ISO-8859-1; turning the text into those bytes is the caller's.
 *
 * An element, CDATA section, processing instruction, comment or document replaces what @p out held; a text or the
 * expansion of an entity reference is appended to it; any other node and a null handle leave it alone.
 *
 * Takes time in proportion to the text and no more stack for a deep tree than for a flat one. Several threads may write
 * trees that nobody changes. Memory that cannot be had is std::bad_alloc.
 *
 * @param node the node to write, with everything below it
 * @param out receives the text
 * @return 0.
 */
QORWFL_EXPORT int WriteXML(DOM_Node& node, DOMString& out);

#endif
