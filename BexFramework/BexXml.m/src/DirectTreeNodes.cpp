// Built only against the releases of Xerces-C whose implementation headers it was written for (see the module's part in
// BexFramework/CMakeLists.txt). Three quarters of the time that building a tree through the public interface takes go
// into finding out, for each node linked, what kind it is; here that is known.

#include "TreeNodes.h"

#include <xercesc/dom/DOMCDATASection.hpp>
#include <xercesc/dom/DOMComment.hpp>
#include <xercesc/dom/DOMProcessingInstruction.hpp>
#include <xercesc/dom/impl/DOMAttrImpl.hpp>
#include <xercesc/dom/impl/DOMAttrMapImpl.hpp>
#include <xercesc/dom/impl/DOMCasts.hpp>
#include <xercesc/dom/impl/DOMDocumentImpl.hpp>
#include <xercesc/dom/impl/DOMElementImpl.hpp>
#include <xercesc/dom/impl/DOMNodeVector.hpp>
#include <xercesc/dom/impl/DOMTextImpl.hpp>
#include <xercesc/util/XMLString.hpp>

#include <string>
#include <vector>

namespace {

using xercesc::DOMDocumentImpl;
using xercesc::DOMMemoryManager;

/** Reaches the nodes of an attribute map, which the map keeps sorted by name. */
class AttributeMap : public xercesc::DOMAttrMapImpl {
public:
    static xercesc::DOMNodeVector* NodesOf(xercesc::DOMAttrMapImpl& ioMap) { return ioMap.*(&AttributeMap::fNodes); }
};

/** Hangs the only child below an attribute, as the first child of an element is hung. */
void LinkFirst(xercesc::DOMNode& iParent, xercesc::DOMParentNode& ioChildren, xercesc::DOMNode& iChild,
               xercesc::DOMNodeImpl& ioNode, xercesc::DOMChildNode& ioSiblings) {
    ioNode.fOwnerNode = &iParent;
    ioNode.isOwned(true);
    ioNode.isFirstChild(true);
    ioSiblings.previousSibling = &iChild;  // of the first child: the last one
    ioChildren.fFirstChild = &iChild;
}

/** Creates nodes and links them without a look at what is known: all of them are new, of one document, and in order. */
class DirectTreeNodes : public TreeNodes {
public:
    explicit DirectTreeNodes(DOMDocumentImpl& ioDocument) : document(ioDocument) {}

    void OpenElement(const XMLCh* iName) override {
        auto* element = new (&document, DOMMemoryManager::ELEMENT_OBJECT) xercesc::DOMElementImpl(&document, iName);
        if (levels.empty()) {
            document.appendChild(element);
        } else {
            Link(*element, element->fNode, element->fChild, nullptr);
        }
        levels.push_back({element, nullptr, nullptr, nullptr, nullptr});
    }

    void AddAttribute(const XMLCh* iName, const XMLCh* iValue, std::size_t iLength) override {
        xercesc::DOMElementImpl& element = *levels.back().element;
        auto* attribute = new (&document, DOMMemoryManager::ATTR_OBJECT) xercesc::DOMAttrImpl(&document, iName);
        auto* text = new (&document, DOMMemoryManager::TEXT_OBJECT) xercesc::DOMTextImpl(&document, iValue, iLength);
        LinkFirst(*attribute, attribute->fParent, *text, text->fNode, text->fChild);
        attribute->fNode.isSpecified(true);
        attribute->fNode.fOwnerNode = &element;
        attribute->fNode.isOwned(true);
        Insert(*element.fAttributes, *attribute);
    }

    void AddText(std::u16string_view iText) override {
        if (xercesc::DOMTextImpl* last = levels.back().lastText) {
            last->appendDataFast(iText.data(), iText.size());
            return;
        }
        auto* text =
            new (&document, DOMMemoryManager::TEXT_OBJECT) xercesc::DOMTextImpl(&document, iText.data(), iText.size());
        Link(*text, text->fNode, text->fChild, text);
    }

    void AddCDATASection(std::u16string_view iText) override {
        LinkChecked(*document.createCDATASection(std::u16string(iText).c_str()));
    }

    void AddComment(const XMLCh* iText) override { LinkChecked(*document.createComment(iText)); }

    void AddProcessingInstruction(const XMLCh* iTarget, const XMLCh* iData) override {
        LinkChecked(*document.createProcessingInstruction(iTarget, iData));
    }

    void CloseElement() override { levels.pop_back(); }

private:
    /** An open element, and the ends of the chain of its children. */
    struct Level {
        xercesc::DOMElementImpl* element;
        xercesc::DOMChildNode* firstSiblings;  // the links of the first child
        xercesc::DOMNode* last;
        xercesc::DOMChildNode* lastSiblings;  // the links of the last child
        xercesc::DOMTextImpl* lastText;       // the last child, when it is text
    };

    /** Hangs a new node behind the last child of the open element. */
    void Link(xercesc::DOMNode& iChild, xercesc::DOMNodeImpl& ioNode, xercesc::DOMChildNode& ioSiblings,
              xercesc::DOMTextImpl* iText) {
        Level& level = levels.back();
        if (level.last == nullptr) {
            LinkFirst(*level.element, level.element->fParent, iChild, ioNode, ioSiblings);
            level.firstSiblings = &ioSiblings;
        } else {
            ioNode.fOwnerNode = level.element;
            ioNode.isOwned(true);
            level.lastSiblings->nextSibling = &iChild;
            ioSiblings.previousSibling = level.last;
            level.firstSiblings->previousSibling = &iChild;
        }
        level.last = &iChild;
        level.lastSiblings = &ioSiblings;
        level.lastText = iText;
    }

    /** Hangs a node of a rare kind where it belongs, by Xerces-C's own way. */
    void LinkChecked(xercesc::DOMNode& iChild) {
        if (levels.empty()) {
            document.appendChild(&iChild);
            return;
        }
        Level& level = levels.back();
        level.element->appendChild(&iChild);
        level.last = &iChild;
        level.lastSiblings = xercesc::castToChildImpl(&iChild);
        level.firstSiblings = level.firstSiblings == nullptr ? level.lastSiblings : level.firstSiblings;
        level.lastText = nullptr;
    }

    /** Puts a new attribute where its name belongs. */
    static void Insert(xercesc::DOMAttrMapImpl& ioMap, xercesc::DOMAttrImpl& iAttribute) {
        constexpr XMLSize_t kUsualNumber = 3;
        if (AttributeMap::NodesOf(ioMap) == nullptr) {
            ioMap.reserve(kUsualNumber);
        }
        xercesc::DOMNodeVector& nodes = *AttributeMap::NodesOf(ioMap);
        XMLSize_t first = 0;
        XMLSize_t behind = nodes.size();
        if (behind > 0 && Precedes(*nodes.elementAt(behind - 1), iAttribute)) {
            first = behind;  // most come in order
        }
        while (first < behind) {
            const XMLSize_t middle = first + (behind - first) / 2;
            if (Precedes(*nodes.elementAt(middle), iAttribute)) {
                first = middle + 1;
            } else {
                behind = middle;
            }
        }
        nodes.insertElementAt(&iAttribute, first);
    }

    static bool Precedes(const xercesc::DOMNode& iNode, const xercesc::DOMAttrImpl& iAttribute) {
        const auto& attribute = static_cast<const xercesc::DOMAttrImpl&>(iNode);
        return xercesc::XMLString::compareString(attribute.fName, iAttribute.fName) < 0;
    }

    DOMDocumentImpl& document;
    std::vector<Level> levels;  // the open elements, from the root down
};

}  // namespace

std::unique_ptr<TreeNodes> TreeNodes::Fastest(xercesc::DOMDocument& ioDocument) {
    if (auto* document = dynamic_cast<DOMDocumentImpl*>(&ioDocument)) {
        return std::make_unique<DirectTreeNodes>(*document);
    }
    return Checked(ioDocument);  // GCOVR_EXCL_LINE: documents of another implementation, which Xerces-C 3.2 has not
}
