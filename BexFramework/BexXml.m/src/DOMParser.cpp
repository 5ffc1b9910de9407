#include "DOMParser.h"

#include "BexMemorySource.h"
#include "BexUnicodeChar.h"
#include "BexXMLParser.h"
#include "NameChains.h"
#include "ParseArena.h"
#include "TreeParser.h"
#include "XmlEncoding.h"
#include "XmlGuard.h"

#include <xercesc/dom/DOMDocumentType.hpp>
#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/EntityResolver.hpp>
#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XMLChar.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

/** What is wrong with a text, and where. */
struct ParseError {
    DOMString text;
    unsigned long line = 0;
    unsigned long column = 0;
};

struct ReleaseDocument {
    void operator()(xercesc::DOMDocument* iDocument) const { iDocument->release(); }
};
using OwnedDocument = std::unique_ptr<xercesc::DOMDocument, ReleaseDocument>;

/** What the exception in flight says, when it is one of Xerces-C's; lets go on that memory ended. */
ParseError Explain() {
    try {
        throw;
    } catch (const xercesc::SAXParseException& error) {
        return {DOMString(error.getMessage()), static_cast<unsigned long>(error.getLineNumber()),
                static_cast<unsigned long>(error.getColumnNumber())};
    } catch (const xercesc::SAXException& error) {
        return {DOMString(error.getMessage())};
    } catch (const xercesc::XMLException& error) {
        return {DOMString(error.getMessage())};
    } catch (const xercesc::DOMException& error) {
        return {DOMString(error.getMessage())};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        return {DOMString("the input cannot be read")};
    }
}

/** Ends the parsing at the first error. */
class StopAtError : public xercesc::ErrorHandler {
public:
    // GCOVR_EXCL_START: demanded by the interface; warnings and errors come from validation, and nothing is validated
    void warning(const xercesc::SAXParseException& /*iWarning*/) override {}
    void error(const xercesc::SAXParseException& iError) override { throw iError; }
    void resetErrors() override {}
    // GCOVR_EXCL_STOP
    void fatalError(const xercesc::SAXParseException& iError) override { throw iError; }
};

/** Gives an empty text for whatever the parser would look up outside. */
class ResolveToNothing : public xercesc::EntityResolver {
public:
    // GCOVR_EXCL_START: a second bolt; of what the first lets through, nothing names anything outside
    xercesc::InputSource* resolveEntity(const XMLCh* /*iPublicId*/, const XMLCh* /*iSystemId*/) override {
        return new BexMemorySource(std::string_view(""), xercesc::XMLUni::fgZeroLenString);
    }
    // GCOVR_EXCL_STOP
};

/** The bytes of a source: where they are, when it tells, else read into @p ioBuffer. */
std::string_view BytesOf(const xercesc::InputSource& iSource, std::string& ioBuffer) {
    if (const auto* memory = dynamic_cast<const BexMemorySource*>(&iSource)) {
        return memory->Bytes();
    }
    constexpr std::size_t kBlock = 65536;
    const std::unique_ptr<xercesc::BinInputStream> stream(iSource.makeStream());
    if (stream == nullptr) {
        throw ParseError{DOMString("the input cannot be opened")};
    }
    std::size_t length = 0;
    while (true) {
        ioBuffer.resize(length + kBlock);
        const XMLSize_t read = stream->readBytes(reinterpret_cast<XMLByte*>(ioBuffer.data()) + length, kBlock);
        length += read;
        if (read == 0) {
            ioBuffer.resize(length);
            return ioBuffer;
        }
    }
}

bool IsUtf8(const XmlEncoding& iEncoding) {
    return iEncoding.name.compare(0, 3, u"UTF") == 0;
}

/** How many columns a unit of a text makes: as Xerces-C counts them, one for each unit of UTF-16. */
unsigned long ColumnsOf(char iByte, const XmlEncoding& iEncoding) {
    const auto byte = static_cast<unsigned char>(iByte);
    if (!IsUtf8(iEncoding) || byte < 0x80) {
        return 1;
    }
    const bool isContinuation = byte < 0xC0;
    const bool isBeyondFirstPlane = byte >= 0xF0;
    return isContinuation ? 0 : isBeyondFirstPlane ? 2 : 1;
}

unsigned long ColumnsOf(char16_t /*iUnit*/, const XmlEncoding& /*iEncoding*/) {
    return 1;
}

/** The error at a place in a text, with its line and column. Lines end as XML's do. */
template <typename Unit>
ParseError ErrorAt(std::basic_string_view<Unit> iText, const XmlEncoding& iEncoding, const char* iError,
                   std::size_t iPosition) {
    ParseError error{DOMString(iError), 1, 1};
    for (std::size_t i = 0; i < iPosition; ++i) {
        const Unit unit = iText[i];
        const bool isInLineEnd = unit == Unit{'\r'} && i + 1 < iText.size() && iText[i + 1] == Unit{'\n'};
        if (isInLineEnd) {
            continue;
        }
        if (unit == Unit{'\n'} || unit == Unit{'\r'}) {
            ++error.line;
            error.column = 1;
        } else {
            error.column += ColumnsOf(unit, iEncoding);
        }
    }
    return error;
}

/**
 * A copy without the document type declaration, each of whose characters but line ends becomes a blank. What stands
 * there between name and identifiers and is no ASCII is white space of XML 1.1 and stays, so that the parser judges it.
 */
template <typename Unit>
std::basic_string<Unit> WithoutDocumentType(std::basic_string_view<Unit> iText, const XmlDocumentType& iType) {
    std::basic_string<Unit> copy(iText);
    const auto isIn = [](const XmlRange& iRange, std::size_t iPos) {
        return iPos >= iRange.start && iPos < iRange.end;
    };
    for (std::size_t i = iType.whole.start; i < iType.whole.end; ++i) {
        Unit& unit = copy[i];
        const bool isText = isIn(iType.name, i) || isIn(iType.publicId, i) || isIn(iType.systemId, i);
        const bool isSpaceOf11 = !isText && BexUnicodeChar(unit).Code() >= 0x80U;
        if (unit != Unit{'\n'} && unit != Unit{'\r'} && !isSpaceOf11) {
            unit = Unit{' '};
        }
    }
    return copy;
}

/** Has Xerces-C build the tree. The encoding is forced, so that the parser sees the characters that were looked
 * through. */
OwnedDocument Build(std::string_view iBytes, const XMLCh* iEncoding, const XMLCh* iSystemId) {
    // The identifier is given once: setting another one, Xerces-C frees the first before there is memory for it.
    BexMemorySource source(iBytes, iSystemId == nullptr ? xercesc::XMLUni::fgZeroLenString : iSystemId);
    source.setEncoding(iEncoding);
    StopAtError errors;
    ResolveToNothing resolver;
    ParseArena memory;
    TreeParser parser(memory);
    parser.setEntityResolver(&resolver);
    parser.setErrorHandler(&errors);
    try {
        parser.parse(source);
    } catch (...) {
        throw Explain();  // here, because what Xerces-C throws is in the memory of this call
    }
    return OwnedDocument(parser.TakeDocument());
}

/** Part of a text in UTF-16, whatever the text is in. */
std::u16string Utf16Of(std::u16string_view iText, XmlRange iRange, const XmlEncoding& /*iEncoding*/) {
    return std::u16string(iText.substr(iRange.start, iRange.end - iRange.start));
}

std::u16string Utf16Of(std::string_view iText, XmlRange iRange, const XmlEncoding& iEncoding) {
    std::u16string part;
    // GCOVR_EXCL_START: the parser has read the rest in that encoding, and between ASCII characters no other is cut
    if (!DecodeXml(iText.substr(iRange.start, iRange.end - iRange.start), iEncoding, part)) {
        throw ParseError{DOMString("the text does not follow its encoding")};
    }
    // GCOVR_EXCL_STOP
    return part;
}

/** The names at these places in UTF-16, each followed by a NUL character. */
template <typename Unit>
std::u16string NamesAt(std::basic_string_view<Unit> iText, const std::vector<XmlRange>& iPlaces,
                       const XmlEncoding& iEncoding) {
    std::basic_string<Unit> names;
    for (const XmlRange& place : iPlaces) {
        names.append(iText.substr(place.start, place.end - place.start)).push_back(Unit{0});
    }
    return Utf16Of(std::basic_string_view<Unit>(names), {0, names.size()}, iEncoding);
}

/** Refuses names that were chosen to make the parser slow. */
template <typename Unit>
void CheckNames(std::basic_string_view<Unit> iText, const XmlFinding& iFinding, const XmlEncoding& iEncoding) {
    const auto& elements = iFinding.elementNames;
    const auto& attributes = iFinding.attributeNames;
    if (elements.size() + attributes.size() <= NameChains::kLongestInDocument) {
        return;
    }
    const std::size_t found = NameChains::FindTooLong(NamesAt(iText, elements, iEncoding),  //
                                                      NamesAt(iText, attributes, iEncoding));
    if (found != NameChains::kNone) {
        const XmlRange& place = found < elements.size() ? elements[found] : attributes[found - elements.size()];
        throw ErrorAt(iText, iEncoding, "too many names have the same hash", place.start);
    }
}

/** Whether a text has only characters that may stand in a document as they are. */
bool HasOnlyXmlCharacters(std::u16string_view iText, bool iIsXml11) {
    for (std::size_t i = 0; i < iText.size(); ++i) {
        const char16_t unit = iText[i];
        const char16_t next = i + 1 < iText.size() ? iText[i + 1] : u'\0';
        const bool isPair = unit >= 0xD800 && unit <= 0xDBFF && next >= 0xDC00 && next <= 0xDFFF;
        const bool isControl = iIsXml11 && unit >= 0x7F && unit <= 0x9F && unit != 0x85;
        if (!isPair && (!xercesc::XMLChar1_0::isXMLChar(unit) || isControl)) {
            return false;
        }
        i += isPair ? 1 : 0;
    }
    return true;
}

/** Puts the document type back into the tree, where it stood in the text. */
template <typename Unit>
void AddDocumentType(xercesc::DOMDocument& ioDocument, std::basic_string_view<Unit> iText, const XmlDocumentType& iType,
                     const XmlEncoding& iEncoding) {
    const std::u16string name = Utf16Of(iText, iType.name, iEncoding);
    const std::u16string publicId = Utf16Of(iText, iType.publicId, iEncoding);
    const std::u16string systemId = Utf16Of(iText, iType.systemId, iEncoding);
    const bool isXml11 = xercesc::XMLString::equals(ioDocument.getXmlVersion(), u"1.1");  // null without one
    if (!HasOnlyXmlCharacters(systemId, isXml11)) {
        throw ErrorAt(iText, iEncoding, "a character of the document type is not allowed", iType.systemId.start);
    }
    xercesc::DOMNode* behind = ioDocument.getFirstChild();
    for (int i = 0; i < iType.nodesBefore && behind != nullptr; ++i) {
        behind = behind->getNextSibling();
    }
    ioDocument.insertBefore(ioDocument.createDocumentType(name.c_str(), iType.hasPublicId ? publicId.c_str() : nullptr,
                                                          iType.hasSystemId ? systemId.c_str() : nullptr),
                            behind);
}

/** Whether a text begins with a byte order mark, which Xerces-C would skip in silence. */
bool BeginsWithMark(std::string_view iText, const XmlEncoding& iEncoding) {
    return IsUtf8(iEncoding) && iText.substr(0, 3) == "\xEF\xBB\xBF";
}

bool BeginsWithMark(std::u16string_view iText, const XmlEncoding& /*iEncoding*/) {
    return iText.substr(0, 1) == u"\uFEFF";
}

/** The position of the first half of a surrogate pair that stands alone, or the length. */
std::size_t FirstLoneSurrogate(std::u16string_view iText) {
    const auto isFirst = [](char16_t iUnit) { return iUnit >= 0xD800 && iUnit <= 0xDBFF; };
    const auto isSecond = [](char16_t iUnit) { return iUnit >= 0xDC00 && iUnit <= 0xDFFF; };
    for (std::size_t i = 0; i < iText.size(); ++i) {
        if (isFirst(iText[i]) && i + 1 < iText.size() && isSecond(iText[i + 1])) {
            ++i;
        } else if (isFirst(iText[i]) || isSecond(iText[i])) {
            return i;
        }
    }
    return iText.size();
}

/** Looks through a text and builds its tree. @p iUnits is the name of its units as an encoding of bytes. */
template <typename Unit>
OwnedDocument ReadText(std::basic_string_view<Unit> iText, const XmlEncoding& iEncoding, const XMLCh* iUnits,
                       const XMLCh* iSystemId) {
    if (BeginsWithMark(iText, iEncoding)) {  // the one that may stand there has been taken off
        throw ErrorAt(iText, iEncoding, "a second byte order mark is not allowed", 0);
    }
    const XmlLimits limits{DOMParser::kMaxDepth, DOMParser::kMaxAttributes, DOMParser::kMaxNames};
    const XmlFinding finding = GuardXml(iText, IsUtf8(iEncoding), limits);
    if (finding.error != nullptr) {
        throw ErrorAt(iText, iEncoding, finding.error, finding.position);
    }
    CheckNames(iText, finding, iEncoding);
    const bool hasDocumentType = finding.documentType.whole.end > 0;
    std::basic_string<Unit> copy;
    std::basic_string_view<Unit> text = iText;
    if (hasDocumentType) {
        copy = WithoutDocumentType(iText, finding.documentType);
        text = copy;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(Unit));
    OwnedDocument document = Build(bytes, iUnits, iSystemId);
    if (hasDocumentType) {
        AddDocumentType(*document, iText, finding.documentType, iEncoding);
    }
    return document;
}

/** Finds out what the bytes of a source mean, and reads them. */
OwnedDocument Read(const xercesc::InputSource& iSource) {
    std::string buffer;
    std::string_view bytes = BytesOf(iSource, buffer);
    const XMLCh* given = iSource.getEncoding();
    const XmlEncoding encoding = DetectXmlEncoding(bytes, given == nullptr ? std::u16string_view() : given);
    bytes.remove_prefix(encoding.markLength);
    if (encoding.isAsciiBased) {
        const std::size_t valid = IsUtf8(encoding) ? FirstInvalidUtf8(bytes) : bytes.size();
        if (valid < bytes.size()) {
            throw ErrorAt(bytes, encoding, "the text is not in UTF-8", valid);
        }
        return ReadText(bytes, encoding, encoding.name.c_str(), iSource.getSystemId());
    }
    std::u16string text;
    if (!DecodeXml(bytes, encoding, text)) {
        throw ParseError{DOMString("the encoding is not known or the text does not follow it")};
    }
    const std::size_t valid = FirstLoneSurrogate(text);
    if (valid < text.size()) {
        throw ErrorAt(std::u16string_view(text), encoding, "half of a surrogate pair stands alone", valid);
    }
    return ReadText(std::u16string_view(text), encoding, xercesc::XMLUni::fgXMLChEncodingString, iSource.getSystemId());
}

}  // namespace

DOMParser::DOMParser() = default;

DOMParser::~DOMParser() = default;

void DOMParser::parse(const xercesc::InputSource& iSource, bool /*iReuseGrammar*/) {
    document = DOM_Document();
    Fail(DOMString(), 0, 0);
    try {
        ParseOrExplain(iSource);
    } catch (...) {  // memory that cannot be had, even for an explanation
        document = DOM_Document();
    }
}

/** Reads the document, or keeps what was wrong. */
void DOMParser::ParseOrExplain(const xercesc::InputSource& iSource) {
    try {
        if (BexXMLParser::Initialize() != 0) {
            throw ParseError{DOMString("Xerces-C cannot be started")};
        }
        document = DOM_Document::Own(Read(iSource).release());
    } catch (const ParseError& error) {
        Fail(error.text, error.line, error.column);
    } catch (...) {
        const ParseError error = Explain();
        Fail(error.text, error.line, error.column);
    }
}

void DOMParser::Fail(DOMString iText, unsigned long iLine, unsigned long iColumn) {
    errorText = std::move(iText);
    errorLine = iLine;
    errorColumn = iColumn;
}
