#include "DOMString.h"

#include "Latin1.h"

#include <algorithm>

DOMString::DOMString(const char* iText)
    : units(iText == nullptr ? std::u16string() : Latin1::Widen(iText)), null(iText == nullptr) {}

DOMString::DOMString(const XMLCh* iText) : units(iText == nullptr ? std::u16string() : iText), null(iText == nullptr) {}

DOMString::DOMString(const XMLCh* iText, std::size_t iLength)
    : units(iText == nullptr ? std::u16string() : std::u16string(iText, iLength)), null(iText == nullptr) {}

DOMString DOMString::substringData(std::size_t iOffset, std::size_t iCount) const {
    const std::u16string_view part = view().substr(std::min(iOffset, length()), iCount);
    return DOMString(part.data(), part.size());
}

char* DOMString::transcode() const {
    char* bytes = new char[length() + 1];
    Latin1::Narrow(units, bytes);
    bytes[length()] = '\0';
    return bytes;
}
