#ifndef XmlPiece_H
#define XmlPiece_H

#include <string>
#include <utility>
#include <vector>

/** A piece of a document as plain data that a test may take apart: an element, or what else stands between tags. */
struct XmlPiece {
    enum class Kind { Element, Text, Comment, Section, Instruction };
    using Attributes = std::vector<std::pair<std::string, std::string>>;

    Kind kind = Kind::Element;
    std::string name;  ///< the tag of an element, the content of another piece
    Attributes attributes;
    std::vector<XmlPiece> children;

    /** An element that holds elements. */
    static XmlPiece Element(std::string iTag, Attributes iAttributes, std::vector<XmlPiece> iChildren) {
        return {Kind::Element, std::move(iTag), std::move(iAttributes), std::move(iChildren)};
    }
    /** An element that holds a text. */
    static XmlPiece Element(std::string iTag, const std::string& iText) { return Element(iTag, {}, {Text(iText)}); }
    static XmlPiece Text(std::string iText) { return {Kind::Text, std::move(iText), {}, {}}; }

    /** The piece as it stands in a document. */
    std::string Written() const {
        switch (kind) {
            case Kind::Text:
                return Escaped(name);
            case Kind::Comment:
                return "<!--" + name + "-->";
            case Kind::Section:
                return "<![CDATA[" + name + "]]>";
            case Kind::Instruction:
                return "<?target " + name + "?>";
            case Kind::Element:
                break;
        }
        std::string text = "<" + name;
        for (const auto& [attribute, value] : attributes) {
            text += " " + attribute + "=\"" + Escaped(value) + "\"";
        }
        text += ">";
        for (const XmlPiece& child : children) {
            text += child.Written();
        }
        return text + "</" + name + ">";
    }

private:
    static std::string Escaped(const std::string& iText) {
        std::string text;
        for (const char character : iText) {
            switch (character) {
                case '&':
                    text += "&amp;";
                    break;
                case '<':
                    text += "&lt;";
                    break;
                case '>':
                    text += "&gt;";
                    break;
                case '"':
                    text += "&quot;";
                    break;
                default:
                    text += character;
            }
        }
        return text;
    }
};

#endif
