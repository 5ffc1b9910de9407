#ifndef TreeNodes_H
#define TreeNodes_H

#include <xercesc/dom/DOMDocument.hpp>

#include <memory>
#include <string_view>

/**
 * Puts nodes into the tree of an empty document, from its root down. The operations are BexTreeBuilder's; texts are
 * NUL-terminated.
 */
class TreeNodes {
public:
    /** Through the public interface of Xerces-C. */
    static std::unique_ptr<TreeNodes> Checked(xercesc::DOMDocument& ioDocument);
    /** Through the classes behind that interface, where the build has them, else as Checked(). */
    static std::unique_ptr<TreeNodes> Fastest(xercesc::DOMDocument& ioDocument);

    TreeNodes() = default;
    virtual ~TreeNodes() = default;
    TreeNodes(const TreeNodes&) = delete;
    TreeNodes& operator=(const TreeNodes&) = delete;

    virtual void OpenElement(const XMLCh* iName) = 0;
    virtual void AddAttribute(const XMLCh* iName, const XMLCh* iValue, std::size_t iLength) = 0;
    virtual void AddText(std::u16string_view iText) = 0;
    virtual void AddCDATASection(std::u16string_view iText) = 0;
    virtual void AddComment(const XMLCh* iText) = 0;
    virtual void AddProcessingInstruction(const XMLCh* iTarget, const XMLCh* iData) = 0;
    virtual void CloseElement() = 0;
};

#endif
