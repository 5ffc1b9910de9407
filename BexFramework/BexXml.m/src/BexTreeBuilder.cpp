#include "BexTreeBuilder.h"

#include "Latin1.h"
#include "TreeNodes.h"

BexTreeBuilder::BexTreeBuilder(const DOM_Document& iDocument, Access iAccess) : document(iDocument) {
    auto& native = *static_cast<xercesc::DOMDocument*>(document.getNative());
    nodes = iAccess == Access::Fastest ? TreeNodes::Fastest(native) : TreeNodes::Checked(native);
}

BexTreeBuilder::~BexTreeBuilder() = default;

void BexTreeBuilder::OpenElement(const XMLCh* iName) {
    nodes->OpenElement(iName);
}

void BexTreeBuilder::AddAttribute(const XMLCh* iName, const XMLCh* iValue) {
    nodes->AddAttribute(iName, iValue, std::u16string_view(iValue).size());
}

void BexTreeBuilder::AddAttribute(const XMLCh* iName, const char* iValue) {
    const std::u16string& value = Widen(iValue);
    nodes->AddAttribute(iName, value.c_str(), value.size());
}

void BexTreeBuilder::AddText(std::u16string_view iText) {
    nodes->AddText(iText);
}

void BexTreeBuilder::AddText(const char* iText) {
    nodes->AddText(Widen(iText));
}

void BexTreeBuilder::AddCDATASection(std::u16string_view iText) {
    nodes->AddCDATASection(iText);
}

void BexTreeBuilder::AddComment(const XMLCh* iText) {
    nodes->AddComment(iText);
}

void BexTreeBuilder::AddProcessingInstruction(const XMLCh* iTarget, const XMLCh* iData) {
    nodes->AddProcessingInstruction(iTarget, iData);
}

void BexTreeBuilder::CloseElement() {
    nodes->CloseElement();
}

/** The UTF-16 form of a narrow text, until the next one. */
const std::u16string& BexTreeBuilder::Widen(const char* iText) {
    const std::string_view text = iText == nullptr ? std::string_view() : std::string_view(iText);
    widened.resize(text.size());
    Latin1::Widen(text, widened.data());
    return widened;
}
