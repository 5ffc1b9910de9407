#include "XpdlText.h"

#include "Failure.h"
#include "RecordFields.h"
#include "RequiredElements.h"
#include "Unicode.h"

#include <BexXMLParser.h>
#include <DOMParser.h>
#include <QorWflActivityToXml.h>
#include <QorWflXmlToActivity.h>

#include <memory>
#include <string_view>

namespace {

constexpr std::string_view kCreatedStart = "<Created>";
constexpr std::string_view kCreatedEnd = "</Created>";

/** Why a text in UTF-8 could not be in a document as it is, or an empty text. */
std::string WhyTextNotInDocument(std::string_view iUtf8) {
    while (!iUtf8.empty()) {
        if (std::string why = WhyNotInDocument(TakeCharacter(iUtf8)); !why.empty()) {
            return why;
        }
    }
    return "";
}

/** A text between tags, as the library writes it. */
std::string Escaped(const std::string& iUtf8) {
    std::string escaped;
    for (std::string_view rest = iUtf8; !rest.empty();) {
        const char32_t code = TakeCharacter(rest);
        switch (code) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += static_cast<char>(code);
        }
    }
    return escaped;
}

}  // namespace

DOM_Document ParseDocument(const std::string& iText, const std::string& iFileName) {
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(iText.data(), static_cast<int>(iText.size()), iFileName.c_str()));
    if (!source) {
        throw Failure(iFileName + ": the XML parser cannot be started");
    }
    DOMParser parser;
    parser.parse(*source);
    if (parser.getDocument() == nullptr) {
        std::string place = iFileName;
        if (parser.getErrorLine() != 0) {
            place += ':' + std::to_string(parser.getErrorLine()) + ':' + std::to_string(parser.getErrorColumn());
        }
        throw Failure(place + ": " + ToUtf8(parser.getErrorText().view()));
    }
    return parser.getDocument();
}

std::optional<std::string> XpdlToRecord(const std::string& iText, const std::string& iFileName, ActivityInfo& oRecord) {
    const DOM_Document document = ParseDocument(iText, iFileName);
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iText), oRecord);
    return FindMissingElement(document);
}

std::string RecordToXpdl(const ActivityInfo& iRecord, const std::optional<std::string>& iCreated,
                         const std::string& iFileName) {
    for (const NamedText& each : TextsOf(iRecord)) {
        if (const std::string why = WhyTextNotInDocument(ToUtf8(*each.text)); !why.empty()) {
            throw Failure(iFileName + ": " + each.name + ": " + why);
        }
    }
    BexUnicodeString document;
    QorWflActivityToXml(iRecord, document);
    std::string text(document.NarrowView());
    if (iCreated) {
        // The header, which holds no text of the record, comes first; so the first such element is the document's own.
        const std::size_t start = text.find(kCreatedStart) + kCreatedStart.size();
        text.replace(start, text.find(kCreatedEnd, start) - start, Escaped(*iCreated));
    }
    return text;
}

std::string WhyNotCreated(const std::string& iCreated) {
    if (iCreated.empty()) {
        return "is empty";
    }
    return IsUtf8(iCreated) ? WhyTextNotInDocument(iCreated) : "is not in UTF-8";
}
