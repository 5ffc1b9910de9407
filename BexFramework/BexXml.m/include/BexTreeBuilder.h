#ifndef BexTreeBuilder_H
#define BexTreeBuilder_H

#include "BexExport.h"
#include "DOM_Document.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

class TreeNodes;

/**
 * Fills an empty document from its root down, many times faster than node by node: for writers and parsers that give
 * names which XML allows, and a tree that is one.
 *
 * Nothing is checked: names have to be XML names, code units not null, an attribute is given once, attributes and text
 * need an open element, and each is closed. The tree is then the same as one built through the handles. Memory that
 * cannot be had is std::bad_alloc; the document may then only be let go. A builder belongs to one thread.
 */
class BEX_EXPORT BexTreeBuilder {
public:
    /** How nodes come into the tree. */
    enum class Access {
        Fastest,  ///< the fastest way that the release of Xerces-C built against allows
        Checked   ///< through the public interface of Xerces-C, which checks everything again
    };

    /** Fills @p iDocument, which is not null, and keeps it alive. */
    explicit BexTreeBuilder(const DOM_Document& iDocument, Access iAccess = Access::Fastest);
    ~BexTreeBuilder();
    BexTreeBuilder(const BexTreeBuilder&) = delete;  // a builder is an activity, not a value
    BexTreeBuilder& operator=(const BexTreeBuilder&) = delete;

    /** Opens an element below the open one, or the root. @param iName NUL-terminated */
    void OpenElement(const XMLCh* iName);
    /** Gives the open element an attribute. @param iName,iValue NUL-terminated */
    void AddAttribute(const XMLCh* iName, const XMLCh* iValue);
    /** The same with narrow text as the value; a null pointer counts as "". */
    void AddAttribute(const XMLCh* iName, const char* iValue);
    /** Adds text below the open element; a text that follows another at once is joined to it. */
    void AddText(std::u16string_view iText);
    /** The same with NUL-terminated narrow text; a null pointer counts as "". */
    void AddText(const char* iText);
    /** Adds a CDATA section below the open element. */
    void AddCDATASection(std::u16string_view iText);
    /** Adds a comment below the open element or, outside the root, the document. @param iText NUL-terminated */
    void AddComment(const XMLCh* iText);
    /** The same with a processing instruction. @param iTarget,iData NUL-terminated */
    void AddProcessingInstruction(const XMLCh* iTarget, const XMLCh* iData);
    /** Closes the open element. */
    void CloseElement();

private:
    const std::u16string& Widen(const char* iText);

    DOM_Document document;
    std::unique_ptr<TreeNodes> nodes;
    std::u16string widened;  // the narrow text given last, in memory that is used again
};

#endif
