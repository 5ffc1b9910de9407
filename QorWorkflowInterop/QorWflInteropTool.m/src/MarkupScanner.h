#ifndef MarkupScanner_H
#define MarkupScanner_H

#include "CheckFindings.h"

#include <cstddef>
#include <string_view>
#include <vector>

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/** An attribute as it stands in the text. */
struct AttributeMark {
    std::string_view name;
    TextPlace place;               ///< of the name
    bool hasLineEndOrTab = false;  ///< stands in the value as it is, not as a character reference
};

/** What stands in an element beside other elements. */
struct ContentMark {
    enum Kind { Text, CDataSection, Comment, Instruction };
    Kind kind;
    TextPlace place;
    std::string_view raw;      ///< between the marks of its kind, references as they stand
    std::size_t next = kNone;  ///< the next one of the same element
};

/** An element as it stands in the text. */
struct ElementMark {
    TextPlace place;  ///< of its "<"
    std::size_t parent = kNone;
    std::size_t firstAttribute = 0;
    std::size_t attributeCount = 0;
    std::size_t firstContent = kNone;
};

/** Where the markup of a document stands. */
struct DocumentMarks {
    std::vector<ElementMark> elements;  ///< in the order of their start tags
    std::vector<AttributeMark> attributes;
    std::vector<ContentMark> contents;
    TextPlace documentType;  ///< line 0 when there is none
};

/**
 * Looks through a document for where its markup stands, which the tree of a parser does not tell. Takes linear time.
 * @param iText UTF-8 without a byte order mark; the marks point into it. It has to be well-formed, with a document type
 *        that declares nothing; otherwise the marks are of no use, but nothing outside the text is touched.
 */
DocumentMarks ScanMarkup(std::string_view iText);

#endif
