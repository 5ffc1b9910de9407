#ifndef PositionedDocument_H
#define PositionedDocument_H

#include "MarkupScanner.h"

#include <BexDom.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** An attribute: what the parser made of it, and where it stands. */
struct PositionedAttribute {
    std::u16string_view name;
    std::u16string_view value;
    TextPlace place;
    bool hasLineEndOrTab = false;  ///< stands in the value as it is; the parser made blanks of it
};

/** An element: what the parser made of it, where it stands, and what stands around it. */
struct PositionedElement {
    std::u16string_view name;
    TextPlace place;
    std::size_t parent = kNone;
    std::size_t firstChild = kNone;
    std::size_t nextSibling = kNone;
    std::size_t firstAttribute = 0;
    std::size_t attributeCount = 0;
    std::size_t firstContent = kNone;
    std::optional<std::u16string_view> text;  ///< its first plain text
    std::size_t number = 1;                   ///< among its siblings of the same name
    bool isAlone = true;                      ///< whether it has no sibling of the same name
    std::size_t elementsBelow = 0;
};

/**
 * A document as the library's parser read it, together with the places in its text. Names and values are the parser's
 * own, so whatever is said about them is about what the library sees.
 */
class PositionedDocument {
public:
    /**
     * @param iBytes the document, in any encoding
     * @param iDocument what the library's parser made of it
     * @throw std::logic_error when the two are not the same document.
     */
    PositionedDocument(const std::string& iBytes, const DOM_Document& iDocument);
    PositionedDocument(const PositionedDocument&) = delete;  // its views point into it
    PositionedDocument& operator=(const PositionedDocument&) = delete;

    /** The elements in the order of their start tags; the first is the root. */
    const std::vector<PositionedElement>& Elements() const { return elements; }
    const PositionedElement& operator[](std::size_t iElement) const { return elements[iElement]; }
    const PositionedAttribute& Attribute(std::size_t iAttribute) const { return attributes[iAttribute]; }
    const ContentMark& Content(std::size_t iContent) const { return marks.contents[iContent]; }
    /** Where the document type stands; line 0 when there is none. */
    TextPlace DocumentType() const { return marks.documentType; }

    /** @return the attribute of that name, or kNone. */
    std::size_t FindAttribute(std::size_t iElement, std::u16string_view iName) const;
    /** @return the first child element of that name, or, behind a child, the next one; kNone when there is none. */
    std::size_t FindChild(std::size_t iElement, std::u16string_view iName, std::size_t iBehind = kNone) const;
    /**
     * The path of an element as XPath has it: "/Package/Participants/Participant[2]", numbered where siblings have the
     * same name; empty for kNone.
     * @param iMissing when not empty, the path is that of an element of this name below it, which is not there
     */
    std::string Path(std::size_t iElement, std::u16string_view iMissing = {}) const;

private:
    void TakeTree();
    void NumberSiblings();

    DOM_Document document;
    std::string text;  // UTF-8
    DocumentMarks marks;
    std::vector<PositionedElement> elements;
    std::vector<PositionedAttribute> attributes;
};

#endif
