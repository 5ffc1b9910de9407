#ifndef XmlGuard_H
#define XmlGuard_H

#include <cstddef>
#include <string_view>
#include <vector>

/** A stretch of a text, in its units. */
struct XmlRange {
    std::size_t start = 0;
    std::size_t end = 0;  ///< behind it
};

/** The document type declaration of a text. */
struct XmlDocumentType {
    XmlRange whole;       ///< empty when there is none
    XmlRange name;        ///< of the root element
    XmlRange publicId;    ///< without its quotes; empty when there is none
    XmlRange systemId;    ///< without its quotes; empty when there is none
    int nodesBefore = 0;  ///< comments and processing instructions in front of it
    bool hasPublicId = false;
    bool hasSystemId = false;
};

/** What XmlGuard found in a text. */
struct XmlFinding {
    const char* error = nullptr;           ///< what is refused, in words; null when nothing is
    std::size_t position = 0;              ///< of the error, in units of the text
    XmlDocumentType documentType;          ///< what may stand there: a name and where an external subset would be
    std::vector<XmlRange> elementNames;    ///< where each distinct name of an element first stands; after no error
    std::vector<XmlRange> attributeNames;  ///< the same for attributes
};

/** The bounds that XmlGuard keeps. */
struct XmlLimits {
    int depth;       ///< elements open at the same time
    int attributes;  ///< attributes of one element
    int names;       ///< distinct element names, and distinct attribute names
};

/**
 * Looks through an XML text before it is parsed, for what the parser would take quadratic time for, accept in silence
 * or follow to other files: too deep nesting, too many attributes or names, NUL characters, document types that
 * declare.
 *
 * It sees tags and quotes wherever the parser sees them. Where the text is not well-formed it may stop: the parser
 * stops there as well. Takes linear time, and memory for the distinct names only.
 *
 * @param iText in UTF-8, in UTF-16, or in an encoding of one byte a character whose first half is ASCII
 * @param iIsUtf8 whether bytes are UTF-8
 */
template <typename Unit>
XmlFinding GuardXml(std::basic_string_view<Unit> iText, bool iIsUtf8, const XmlLimits& iLimits);

extern template XmlFinding GuardXml(std::string_view iText, bool iIsUtf8, const XmlLimits& iLimits);
extern template XmlFinding GuardXml(std::u16string_view iText, bool iIsUtf8, const XmlLimits& iLimits);

#endif
