#include "TreeNodes.h"

#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMComment.hpp>
#include <xercesc/dom/DOMElement.hpp>
#include <xercesc/dom/DOMProcessingInstruction.hpp>
#include <xercesc/dom/DOMText.hpp>

#include <string>

namespace {

/** Builds with the calls that every user of Xerces-C has. */
class CheckedTreeNodes : public TreeNodes {
public:
    explicit CheckedTreeNodes(xercesc::DOMDocument& ioDocument) : document(ioDocument), open(&ioDocument) {}

    void OpenElement(const XMLCh* iName) override { open = open->appendChild(document.createElement(iName)); }
    void AddAttribute(const XMLCh* iName, const XMLCh* iValue, std::size_t /*iLength*/) override {
        static_cast<xercesc::DOMElement*>(open)->setAttribute(iName, iValue);
    }
    void AddText(std::u16string_view iText) override {
        xercesc::DOMNode* last = open->getLastChild();
        const std::u16string text(iText);
        if (last != nullptr && last->getNodeType() == xercesc::DOMNode::TEXT_NODE) {
            static_cast<xercesc::DOMText*>(last)->appendData(text.c_str());
        } else {
            open->appendChild(document.createTextNode(text.c_str()));
        }
    }
    void AddCDATASection(std::u16string_view iText) override {
        open->appendChild(document.createCDATASection(std::u16string(iText).c_str()));
    }
    void AddComment(const XMLCh* iText) override { open->appendChild(document.createComment(iText)); }
    void AddProcessingInstruction(const XMLCh* iTarget, const XMLCh* iData) override {
        open->appendChild(document.createProcessingInstruction(iTarget, iData));
    }
    void CloseElement() override { open = open->getParentNode(); }

private:
    xercesc::DOMDocument& document;
    xercesc::DOMNode* open;  // what nodes are put below
};

}  // namespace

std::unique_ptr<TreeNodes> TreeNodes::Checked(xercesc::DOMDocument& ioDocument) {
    return std::make_unique<CheckedTreeNodes>(ioDocument);
}

#if !BEX_DIRECT_NODES
std::unique_ptr<TreeNodes> TreeNodes::Fastest(xercesc::DOMDocument& ioDocument) {
    return Checked(ioDocument);
}
#endif
