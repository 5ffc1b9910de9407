#include "PositionedDocument.h"

#include "SafeText.h"
#include "Unicode.h"

#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <XmlEncoding.h>
#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

/** A document as UTF-8, without a byte order mark; by the rules by which the library's parser reads it. */
std::string DecodedText(const std::string& iBytes) {
    const XmlEncoding encoding = DetectXmlEncoding(iBytes, std::u16string_view());
    const std::string_view bytes = std::string_view(iBytes).substr(encoding.markLength);
    if (encoding.name == u"UTF-8") {
        return std::string(bytes);
    }
    std::u16string units;
    if (!DecodeXml(bytes, encoding, units)) {
        throw std::logic_error("the document is read, but its characters are not known");
    }
    return ToUtf8(units);
}

std::u16string_view ViewOf(const XMLCh* iText) {
    return iText == nullptr ? std::u16string_view() : std::u16string_view(iText);
}

/** The next element in the order of start tags, or null. */
xercesc::DOMNode* NextElement(xercesc::DOMNode* iElement) {
    const auto firstElement = [](xercesc::DOMNode* ioNode) {
        while (ioNode != nullptr && ioNode->getNodeType() != xercesc::DOMNode::ELEMENT_NODE) {
            ioNode = ioNode->getNextSibling();
        }
        return ioNode;
    };
    xercesc::DOMNode* next = firstElement(iElement->getFirstChild());
    while (next == nullptr && iElement != nullptr && iElement->getNodeType() == xercesc::DOMNode::ELEMENT_NODE) {
        next = firstElement(iElement->getNextSibling());
        iElement = iElement->getParentNode();
    }
    return next;
}

/** The first text below an element. */
std::optional<std::u16string_view> FirstText(const xercesc::DOMNode& iElement) {
    for (const xercesc::DOMNode* child = iElement.getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        if (child->getNodeType() == xercesc::DOMNode::TEXT_NODE) {
            return ViewOf(child->getNodeValue());
        }
    }
    return std::nullopt;
}

[[noreturn]] void FailToMatch() {
    throw std::logic_error("the places in the document and its tree do not match");
}

}  // namespace

PositionedDocument::PositionedDocument(const std::string& iBytes, const DOM_Document& iDocument)
    : document(iDocument), text(DecodedText(iBytes)), marks(ScanMarkup(text)) {
    TakeTree();
    NumberSiblings();
}

/** Goes through the tree and the marks side by side: both have the elements in the order of their start tags. */
void PositionedDocument::TakeTree() {
    std::vector<std::size_t> lastChild(marks.elements.size(), kNone);
    elements.reserve(marks.elements.size());
    attributes.reserve(marks.attributes.size());
    for (xercesc::DOMNode* node = document.getDocumentElement().getNative(); node != nullptr;
         node = NextElement(node)) {
        const std::size_t index = elements.size();
        if (index == marks.elements.size() || (marks.elements[index].parent == kNone) != (index == 0)) {
            FailToMatch();
        }
        const ElementMark& mark = marks.elements[index];
        PositionedElement element;
        element.name = ViewOf(node->getNodeName());
        element.place = mark.place;
        element.parent = mark.parent;
        element.firstAttribute = mark.firstAttribute;
        element.attributeCount = mark.attributeCount;
        element.firstContent = mark.firstContent;
        element.text = FirstText(*node);
        elements.push_back(element);
        if (mark.parent != kNone) {
            std::size_t& last = lastChild[mark.parent];
            (last == kNone ? elements[mark.parent].firstChild : elements[last].nextSibling) = index;
            last = index;
        }
        for (std::size_t i = 0; i < mark.attributeCount; ++i) {
            const AttributeMark& attribute = marks.attributes[mark.firstAttribute + i];
            const std::u16string name = ToUtf16(attribute.name);
            const xercesc::DOMNode* found = node->getAttributes()->getNamedItem(name.c_str());
            if (found == nullptr) {
                FailToMatch();
            }
            attributes.push_back({ViewOf(found->getNodeName()), ViewOf(found->getNodeValue()), attribute.place,
                                  attribute.hasLineEndOrTab});
        }
    }
    if (elements.size() != marks.elements.size()) {
        FailToMatch();
    }
    for (std::size_t i = elements.size(); i-- > 1;) {
        elements[elements[i].parent].elementsBelow += elements[i].elementsBelow + 1;
    }
}

/** Numbers the children of each element within their names. */
void PositionedDocument::NumberSiblings() {
    std::vector<std::size_t> children;
    for (const PositionedElement& parent : elements) {
        children.clear();
        for (std::size_t child = parent.firstChild; child != kNone; child = elements[child].nextSibling) {
            children.push_back(child);
        }
        std::sort(children.begin(), children.end(), [this](std::size_t iLeft, std::size_t iRight) {
            const int order = elements[iLeft].name.compare(elements[iRight].name);
            return order != 0 ? order < 0 : iLeft < iRight;
        });
        for (std::size_t i = 1; i < children.size(); ++i) {
            PositionedElement& before = elements[children[i - 1]];
            PositionedElement& element = elements[children[i]];
            if (before.name == element.name) {
                element.number = before.number + 1;
                element.isAlone = false;
                before.isAlone = false;
            }
        }
    }
}

std::size_t PositionedDocument::FindAttribute(std::size_t iElement, std::u16string_view iName) const {
    const PositionedElement& element = elements[iElement];
    for (std::size_t i = element.firstAttribute; i < element.firstAttribute + element.attributeCount; ++i) {
        if (attributes[i].name == iName) {
            return i;
        }
    }
    return kNone;
}

std::size_t PositionedDocument::FindChild(std::size_t iElement, std::u16string_view iName, std::size_t iBehind) const {
    std::size_t child = iBehind == kNone ? elements[iElement].firstChild : elements[iBehind].nextSibling;
    while (child != kNone && elements[child].name != iName) {
        child = elements[child].nextSibling;
    }
    return child;
}

std::string PositionedDocument::Path(std::size_t iElement, std::u16string_view iMissing) const {
    std::vector<std::size_t> way;
    for (std::size_t element = iElement; element != kNone; element = elements[element].parent) {
        way.push_back(element);
    }
    std::string path;
    std::reverse(way.begin(), way.end());
    for (const std::size_t step : way) {
        const PositionedElement& element = elements[step];
        path += '/' + SafeName(element.name);
        if (!element.isAlone) {
            path += '[' + std::to_string(element.number) + ']';
        }
    }
    if (!iMissing.empty()) {
        path += '/' + SafeName(iMissing);
    }
    return path;
}
