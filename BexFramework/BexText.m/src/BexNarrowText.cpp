#include "BexNarrowText.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

namespace {

constexpr std::size_t kLongest = INT_MAX;  // what the interface of the strings can count

/** Memory for a text of so many bytes and the NUL character behind it. */
char* NewBytes(std::size_t iLength) {
    if (iLength > kLongest) {
        throw std::length_error("BexNarrowText");
    }
    return static_cast<char*>(::operator new(iLength + 1));
}

}  // namespace

void BexNarrowText::Assign(std::string_view iText) {
    if (iText.size() > Capacity()) {
        *this = BexNarrowText(iText);
        return;
    }
    if (!iText.empty()) {
        std::memmove(Bytes(), iText.data(), iText.size());
    }
    EndAt(iText.size());
}

void BexNarrowText::Append(std::string_view iText) {
    if (iText.size() > Capacity() - length) {
        // The former memory is kept until the copies are made, for what is added can be part of it.
        const std::size_t capacity = GrownCapacity(iText.size());
        char* const text = NewBytes(capacity);
        std::memcpy(text, CString(), length);
        std::memcpy(text + length, iText.data(), iText.size());
        if (isOutside) {
            ::operator delete(place.outside.text);
        }
        place.outside = {text, capacity};
        isOutside = true;
    } else if (!iText.empty()) {
        std::memmove(Bytes() + length, iText.data(), iText.size());
    }
    EndAt(length + iText.size());
}

char* BexNarrowText::Extend(std::size_t iLength) {
    if (iLength > Capacity() - length) {
        Reserve(GrownCapacity(iLength));
    }
    char* extension = Bytes() + length;
    EndAt(length + iLength);
    return extension;
}

void BexNarrowText::Reserve(std::size_t iLength) {
    if (iLength > Capacity()) {
        char* const text = NewBytes(iLength);
        std::memcpy(text, CString(), length + 1U);
        if (isOutside) {
            ::operator delete(place.outside.text);
        }
        place.outside = {text, iLength};
        isOutside = true;
    }
}

/** The capacity for so many bytes more: just that of a first text, else in steps that keep appending
 * linear; more than the longest text for what cannot be. */
std::size_t BexNarrowText::GrownCapacity(std::size_t iMore) const {
    if (iMore > kLongest - length) {
        return kLongest + 1;
    }
    if (length == 0) {
        return iMore;
    }
    return std::min(kLongest, std::max(length + iMore, Capacity() + Capacity() / 2));
}
