#ifndef BexNarrowText_H
#define BexNarrowText_H

#include "BexExport.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

/**
 * Narrow text of up to INT_MAX bytes, NUL bytes included, with a NUL character behind it: what a BexUnicodeString keeps
 * its 8-bit text in, and what text is gathered in that is to become one without a copy.
 *
 * Up to 31 bytes live inside the object, which names, numbers, dates and most values fit; only longer text takes memory
 * of its own.
 *
 * Memory that cannot be had leaves every operation as std::bad_alloc, a length above INT_MAX as std::length_error, with
 * the text unchanged. Threads: any number may use one text that nobody changes.
 */
class BEX_EXPORT BexNarrowText {
public:
    /** An empty text. */
    BexNarrowText() noexcept { place.inside[0] = '\0'; }
    /** A copy of @p iText. */
    explicit BexNarrowText(std::string_view iText) {
        place.inside[0] = '\0';
        Append(iText);
    }
    /** A copy. */
    BexNarrowText(const BexNarrowText& iOther) : BexNarrowText(iOther.View()) {}
    /** Takes over the text of @p ioOther, which is empty afterwards. */
    BexNarrowText(BexNarrowText&& ioOther) noexcept
        : place(ioOther.place), length(ioOther.length), isOutside(ioOther.isOutside) {
        ioOther.Forget();
    }
    ~BexNarrowText() {
        if (isOutside) {
            ::operator delete(place.outside.text);
        }
    }
    /** Becomes a copy. */
    BexNarrowText& operator=(const BexNarrowText& iOther) {
        Assign(iOther.View());
        return *this;
    }
    /** Takes over the text of @p ioOther, which is empty afterwards. */
    BexNarrowText& operator=(BexNarrowText&& ioOther) noexcept {
        if (this != &ioOther) {
            Clear();
            place = ioOther.place;
            length = ioOther.length;
            isOutside = ioOther.isOutside;
            ioOther.Forget();
        }
        return *this;
    }

    /** @return the text; valid until it changes or dies. */
    std::string_view View() const noexcept { return std::string_view(CString(), length); }
    /** @return the text with the NUL character behind it; valid until it changes or dies. */
    const char* CString() const noexcept { return isOutside ? place.outside.text : place.inside; }
    /** @return the number of bytes. */
    std::size_t Length() const noexcept { return length; }

    /** Becomes a copy of @p iText, which may be part of this text. */
    void Assign(std::string_view iText);
    /** Adds a copy of @p iText, which may be part of this text. */
    void Append(std::string_view iText);
    /** Adds one byte. */
    void Append(char iByte) { *Extend(1) = iByte; }
    /**
     * Adds bytes that the caller writes.
     * @return where @p iLength bytes are to be written before anything else is done with the text.
     */
    char* Extend(std::size_t iLength);
    /** Has room for a text of @p iLength bytes, so that growing to it takes no memory any more. */
    void Reserve(std::size_t iLength);
    /** Keeps the first @p iLength bytes, all if there are not so many; the memory stays. */
    void Shorten(std::size_t iLength) noexcept {
        if (iLength < length) {
            EndAt(iLength);
        }
    }
    /** Becomes empty and gives its memory back. */
    void Clear() noexcept {
        if (isOutside) {
            ::operator delete(place.outside.text);
        }
        Forget();
    }

private:
    static constexpr std::size_t kInside = 31;

    struct Block {
        char* text;  // owned
        std::size_t capacity;
    };
    union Place {
        char inside[kInside + 1];
        Block outside;
    };

    char* Bytes() noexcept { return isOutside ? place.outside.text : place.inside; }
    std::size_t Capacity() const noexcept { return isOutside ? place.outside.capacity : kInside; }
    void EndAt(std::size_t iLength) noexcept {
        length = static_cast<std::uint32_t>(iLength);
        Bytes()[iLength] = '\0';
    }
    /** Empty, without giving anything back. */
    void Forget() noexcept {
        length = 0;
        isOutside = false;
        place.inside[0] = '\0';
    }
    std::size_t GrownCapacity(std::size_t iMore) const;

    Place place;
    std::uint32_t length = 0;
    bool isOutside = false;  // which of the two places holds the text
};

#endif
