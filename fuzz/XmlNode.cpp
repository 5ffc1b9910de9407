#include "XmlNode.h"

#include "PropertyCheck.h"

#include <cstddef>

void XmlNode::AddText(std::string_view iText) {
    if (iText.empty()) {
        return;
    }
    if (children.empty() || children.back().kind != Kind::Text) {
        Add(Kind::Text, "");
    }
    children.back().value += iText;
}

XmlNode& XmlNode::Add(Kind iKind, std::string iName, std::string iValue) {
    XmlNode& node = children.emplace_back();
    node.kind = iKind;
    node.name = std::move(iName);
    node.value = std::move(iValue);
    return node;
}

std::string XmlNode::Print() const {
    const char* const kKinds[] = {"document", "element", "text", "comment", "instruction"};
    std::string text = kKinds[static_cast<int>(kind)];
    text += " " + PropertyCheck::Printable(name) + " " + PropertyCheck::Printable(value);
    for (const auto& [attribute, attributeValue] : attributes) {
        text += " " + PropertyCheck::Printable(attribute) + "=" + PropertyCheck::Printable(attributeValue);
    }
    text += "\n";
    for (const XmlNode& child : children) {
        text += child.Print();
    }
    if (kind == Kind::Element) {
        text += "end\n";
    }
    return text;
}

namespace {

void AddUtf8(std::string& ioText, char32_t iCode) {
    if (iCode < 0x80) {
        ioText += static_cast<char>(iCode);
        return;
    }
    int more = iCode < 0x800 ? 1 : iCode < 0x10000 ? 2 : 3;
    const unsigned lead = more == 1 ? 0xC0 : more == 2 ? 0xE0 : 0xF0;
    ioText += static_cast<char>(lead | iCode >> static_cast<unsigned>(6 * more));
    while (more-- > 0) {
        ioText += static_cast<char>(0x80U | (iCode >> static_cast<unsigned>(6 * more) & 0x3FU));
    }
}

}  // namespace

std::string Utf8Of(std::u16string_view iUnits) {
    std::string text;
    for (std::size_t i = 0; i < iUnits.size(); ++i) {
        char32_t code = iUnits[i];
        if (code >= 0xD800 && code < 0xE000) {
            const bool isPair =
                code < 0xDC00 && i + 1 < iUnits.size() && iUnits[i + 1] >= 0xDC00 && iUnits[i + 1] < 0xE000;
            code = isPair ? 0x10000 + ((code - 0xD800) << 10U) + (iUnits[++i] - 0xDC00U) : 0xFFFD;
        }
        AddUtf8(text, code);
    }
    return text;
}

std::string WithLineFeeds(std::string_view iText) {
    std::string text;
    for (std::size_t i = 0; i < iText.size(); ++i) {
        if (iText[i] != '\r') {
            text += iText[i];
        } else if (i + 1 == iText.size() || iText[i + 1] != '\n') {
            text += '\n';
        }
    }
    return text;
}

std::string AsAttribute(std::string_view iText) {
    std::string text = WithLineFeeds(iText);
    for (char& character : text) {
        if (character == '\n' || character == '\t') {
            character = ' ';
        }
    }
    return text;
}
