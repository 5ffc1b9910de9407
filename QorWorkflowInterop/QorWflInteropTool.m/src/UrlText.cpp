#include "UrlText.h"

#include <QorWflUrlUtil.h>

#include <algorithm>

namespace {

constexpr std::size_t kEscapeLength = 3;
constexpr std::u16string_view kHexDigits = u"0123456789ABCDEFabcdef";

/** Whether an escape has its two digits. */
bool IsWholeEscape(std::u16string_view iEscape) {
    return iEscape.size() == kEscapeLength && iEscape.find_first_not_of(kHexDigits, 1) == std::u16string_view::npos;
}

}  // namespace

std::u16string UnitsOf(const BexUnicodeString& iText) {
    std::u16string units(iText.WideView());
    for (const char character : iText.NarrowView()) {
        units += static_cast<char16_t>(static_cast<unsigned char>(character));
    }
    return units;
}

BexUnicodeString TextOf(std::u16string_view iUnits) {
    return BexUnicodeString(iUnits.data(), static_cast<int>(iUnits.size()));
}

BexUnicodeString DecodeUrlText(const BexUnicodeString& iText) {
    // Of a short action URL all that follows the prefix is decoded, whatever it is.
    return QorWflUrlUtil::UrlToActionId(TextOf(kShortActionPrefix) + iText);
}

DecodedText::DecodedText(std::u16string_view iUrl, std::size_t iStart, std::size_t iEnd) : end(iEnd) {
    std::size_t at = iStart;
    while (at < iEnd) {
        const bool isEscape = iUrl[at] == u'%';
        const std::size_t length = std::min(isEscape ? kEscapeLength : 1, iEnd - at);
        const std::u16string_view token = iUrl.substr(at, length);
        if (isEscape && !IsWholeEscape(token)) {
            badEscapes.push_back(at);
        }
        if (isEscape) {
            text += UnitsOf(DecodeUrlText(TextOf(token)));
        } else {
            text += token == u"+" ? u' ' : token.front();
        }
        places.resize(text.size(), places.empty() ? iStart : at);
        at += length;
    }
}

std::size_t DecodedText::PlaceOf(std::size_t iIndex) const {
    return iIndex < places.size() ? places[iIndex] : end;
}
