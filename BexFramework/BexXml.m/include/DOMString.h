#ifndef DOMString_H
#define DOMString_H

#include "BexExport.h"

#include <xercesc/util/XercesDefs.hpp>

#include <cstddef>
#include <string>
#include <string_view>

/**
 * The text of the DOM: a sequence of UTF-16 code units, by value.
 *
 * A text is null until it is given a value; null has length 0 and equals empty, only isNull() tells them apart.
 * Narrow text is ISO-8859-1 in both directions, whatever the locale: byte b and code unit b are the same. Memory that
 * cannot be had leaves an operation as std::bad_alloc. Threads: any number may read one text that nobody changes.
 */
class BEX_EXPORT DOMString {
public:
    /** A null text. */
    DOMString() = default;
    /** A null text. */
    DOMString(std::nullptr_t) {}
    /** From NUL-terminated narrow text; a null pointer gives a null text. */
    DOMString(const char* iText);
    /** From NUL-terminated UTF-16 text; a null pointer gives a null text. */
    DOMString(const XMLCh* iText);
    /** Exactly @p iLength code units; a null pointer gives a null text. */
    DOMString(const XMLCh* iText, std::size_t iLength);

    /** @return whether the text was never given a value. */
    bool isNull() const { return null; }
    /** @return the number of code units. */
    std::size_t length() const { return units.size(); }
    /** @return the code units with a NUL behind them, never a null pointer; valid until the text changes. */
    const XMLCh* rawBuffer() const { return units.c_str(); }
    /** @return the code units without a copy; valid until the text changes. */
    std::u16string_view view() const { return units; }
    /** @return part of the text, clamped to it; never null. */
    DOMString substringData(std::size_t iOffset, std::size_t iCount) const;
    /** Appends a text. */
    void appendData(const DOMString& iText) { appendData(iText.view()); }
    /** Appends one code unit. */
    void appendData(XMLCh iUnit) { appendData(std::u16string_view(&iUnit, 1)); }
    /** Appends code units. */
    void appendData(std::u16string_view iText) {
        units += iText;
        null = false;
    }
    /** Appends NUL-terminated code units; a null pointer appends nothing. */
    void appendData(const XMLCh* iText) {
        appendData(iText == nullptr ? std::u16string_view() : std::u16string_view(iText));
    }
    /** Makes room for a text of @p iLength code units, so that appending up to there allocates nothing. */
    void reserve(std::size_t iLength) { units.reserve(iLength); }
    /** Becomes empty, keeping the memory. */
    void clear() {
        units.clear();
        null = false;
    }
    /** @return whether both texts have the same code units. */
    bool equals(const DOMString& iText) const { return units == iText.units; }
    /**
     * The narrow text, a question mark for each code unit above 0xFF.
     * @return a new NUL-terminated array, the caller's to delete[].
     */
    [[nodiscard]] char* transcode() const;

    /** As appendData(). */
    DOMString& operator+=(const DOMString& iText) {
        appendData(iText);
        return *this;
    }
    /** As appendData(). */
    DOMString& operator+=(XMLCh iUnit) {
        appendData(iUnit);
        return *this;
    }
    /** @return whether both have the same units; null equals empty. */
    friend bool operator==(const DOMString& iLeft, const DOMString& iRight) { return iLeft.units == iRight.units; }
    /** @return whether they differ. */
    friend bool operator!=(const DOMString& iLeft, const DOMString& iRight) { return iLeft.units != iRight.units; }
    /** @return whether the text is null. */
    friend bool operator==(const DOMString& iText, std::nullptr_t) { return iText.null; }
    /** @return whether the text is not null. */
    friend bool operator!=(const DOMString& iText, std::nullptr_t) { return !iText.null; }
    /** The two texts, one behind the other. */
    friend DOMString operator+(DOMString iLeft, const DOMString& iRight) {
        iLeft += iRight;
        return iLeft;
    }

private:
    std::u16string units;
    bool null = true;
};

#endif
