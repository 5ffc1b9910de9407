#ifndef XmlNode_H
#define XmlNode_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

/** A node of an XML tree as plain data in UTF-8, whatever parser it comes from. */
struct XmlNode {
    enum class Kind { Document, Element, Text, Comment, Instruction };

    Kind kind = Kind::Document;
    std::string name;                               ///< of an element, the target of an instruction
    std::string value;                              ///< of a text, comment or instruction
    std::map<std::string, std::string> attributes;  ///< of an element
    std::vector<XmlNode> children;                  ///< of an element or the document

    /** Adds text, to the text that is last if there is one. CDATA sections count as text. */
    void AddText(std::string_view iText);
    /** Adds a node of another kind. @return the node, valid until the next one is added. */
    XmlNode& Add(Kind iKind, std::string iName, std::string iValue = "");

    /** The tree as lines, which print and compare. */
    std::string Print() const;
};

/** Text in UTF-16 as UTF-8; half a surrogate pair becomes U+FFFD. */
std::string Utf8Of(std::u16string_view iUnits);

/** A text as a parser hands it on: CR LF and CR are LF. */
std::string WithLineFeeds(std::string_view iText);
/** An attribute's value as a parser hands it on: LF and tab are blanks besides. */
std::string AsAttribute(std::string_view iText);

#endif
