#include "TreeParser.h"

#include "BexXmlMemory.h"

#include <xercesc/framework/XMLAttr.hpp>
#include <xercesc/framework/XMLElementDecl.hpp>
#include <xercesc/util/RefVectorOf.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <string_view>
#include <utility>

TreeParser::TreeParser(xercesc::MemoryManager& ioMemory) : XercesDOMParser(nullptr, &ioMemory) {
    useScanner(xercesc::XMLUni::fgWFXMLScanner);
    setValidationScheme(Val_Never);
    setLoadExternalDTD(false);
    setDisableDefaultEntityResolution(true);
}

TreeParser::~TreeParser() {
    if (document != nullptr) {
        document->release();
    }
}

xercesc::DOMDocument* TreeParser::TakeDocument() {
    return std::exchange(document, nullptr);
}

void TreeParser::startDocument() {
    document = BexXmlMemory::NewDocument();
    document->setStrictErrorChecking(false);
    nodes = TreeNodes::Fastest(*document);
}

void TreeParser::endDocument() {
    document->setStrictErrorChecking(true);
}

void TreeParser::XMLDecl(const XMLCh* const iVersion, const XMLCh* const /*iEncoding*/, const XMLCh* const iStandalone,
                         const XMLCh* const /*iActualEncoding*/) {
    document->setXmlVersion(iVersion);
    document->setXmlStandalone(iStandalone != nullptr && iStandalone == std::u16string_view(u"yes"));
}

void TreeParser::startElement(const xercesc::XMLElementDecl& iDeclaration, const unsigned int /*iUriId*/,
                              const XMLCh* const /*iPrefix*/, const xercesc::RefVectorOf<xercesc::XMLAttr>& iAttributes,
                              const XMLSize_t iCount, const bool iIsEmpty, const bool /*iIsRoot*/) {
    nodes->OpenElement(iDeclaration.getFullName());
    for (XMLSize_t i = 0; i < iCount; ++i) {
        const xercesc::XMLAttr& attribute = *iAttributes.elementAt(i);
        nodes->AddAttribute(attribute.getQName(), attribute.getValue(),
                            std::u16string_view(attribute.getValue()).size());
    }
    if (iIsEmpty) {
        nodes->CloseElement();  // nothing else will tell its end
    }
}

void TreeParser::endElement(const xercesc::XMLElementDecl& /*iDeclaration*/, const unsigned int /*iUriId*/,
                            const bool /*iIsRoot*/, const XMLCh* const /*iPrefix*/) {
    nodes->CloseElement();
}

void TreeParser::docCharacters(const XMLCh* const iText, const XMLSize_t iLength, const bool iIsCDATASection) {
    const std::u16string_view text(iText, iLength);
    if (iIsCDATASection) {
        nodes->AddCDATASection(text);
    } else {
        nodes->AddText(text);
    }
}

void TreeParser::docComment(const XMLCh* const iText) {
    nodes->AddComment(iText);
}

void TreeParser::docPI(const XMLCh* const iTarget, const XMLCh* const iData) {
    nodes->AddProcessingInstruction(iTarget, iData);
}
