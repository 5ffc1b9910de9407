#ifndef BexDom_H
#define BexDom_H

/**
 * @file
 * The whole value-handle DOM over Xerces-C. Hosts include this header only.
 */

#include "BexTreeBuilder.h"
#include "DOMParser.h"
#include "DOMString.h"
#include "DOM_Attr.h"
#include "DOM_CDATASection.h"
#include "DOM_CharacterData.h"
#include "DOM_Comment.h"
#include "DOM_Document.h"
#include "DOM_DocumentFragment.h"
#include "DOM_Element.h"
#include "DOM_EntityReference.h"
#include "DOM_NamedNodeMap.h"
#include "DOM_Node.h"
#include "DOM_NodeList.h"
#include "DOM_ProcessingInstruction.h"
#include "DOM_Text.h"

#endif
