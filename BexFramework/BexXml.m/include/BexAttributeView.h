#ifndef BexAttributeView_H
#define BexAttributeView_H

#include "BexExport.h"

#include <xercesc/dom/DOMNode.hpp>

#include <string_view>

/**
 * The name and the value of an attribute as they stand in the tree, for code that walks many of them. They are valid
 * until the tree changes. Threads: any number may look at one tree that nobody changes.
 */
struct BEX_EXPORT BexAttributeView {
    /** Looks at @p iAttribute, a node of that type, in the fastest way that the build has. */
    static BexAttributeView Of(const xercesc::DOMNode& iAttribute);
    /** The same through the public interface of Xerces-C. */
    static BexAttributeView Checked(const xercesc::DOMNode& iAttribute);

    const XMLCh* name;          ///< NUL-terminated, never null; a document keeps each name at one address
    std::u16string_view value;  ///< may have NUL characters in it
};

#endif
