#ifndef XmlText_H
#define XmlText_H

#include <BexDom.h>
#include <BexXMLParser.h>

#include <cstring>
#include <memory>
#include <string>

/** The narrow form of a text of the DOM. */
inline std::string Narrow(const DOMString& iText) {
    const std::unique_ptr<char[]> text(iText.transcode());
    return std::string(text.get(), iText.length());
}

/** The code units of a text of the DOM. */
inline std::u16string Units(const DOMString& iText) {
    return std::u16string(iText.rawBuffer(), iText.length());
}

/** A text in a heap block of exactly its size, so that a reader that goes one byte too far is seen, as a source. */
class TextSource {
public:
    explicit TextSource(const std::string& iText)
        : bytes(new char[iText.size()]),
          source(BexXMLParser::CreateMemBufInputSource(Filled(iText), static_cast<int>(iText.size()), "text")) {}

    InputSource& Get() const { return *source; }

private:
    const char* Filled(const std::string& iText) {
        std::memcpy(bytes.get(), iText.data(), iText.size());
        return bytes.get();
    }

    std::unique_ptr<char[]> bytes;
    std::unique_ptr<InputSource> source;
};

/** The document that a new parser reads from a text, or null. */
inline DOM_Document Parsed(const std::string& iText) {
    const TextSource source(iText);
    DOMParser parser;
    parser.parse(source.Get());
    return parser.getDocument();
}

/** What a new parser finds wrong with a text, line and column in front, or "". */
inline std::string ErrorOf(const std::string& iText) {
    const TextSource source(iText);
    DOMParser parser;
    parser.parse(source.Get());
    if (!parser.getDocument().isNull()) {
        return "";
    }
    return std::to_string(parser.getErrorLine()) + ":" + std::to_string(parser.getErrorColumn()) + ": " +
           Narrow(parser.getErrorText());
}

#endif
