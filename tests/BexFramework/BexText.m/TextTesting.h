#ifndef TextTesting_H
#define TextTesting_H

#include <BexUnicodeString.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

/** A string of these code units. */
inline BexUnicodeString Units(std::u16string_view iUnits) {
    return BexUnicodeString(iUnits.data(), static_cast<int>(iUnits.size()));
}

/** The code units of a string, one by one. */
inline std::u16string UnitsOf(const BexUnicodeString& iText) {
    std::u16string units;
    for (int pos = 0; pos < iText.GetLengthInChar(); ++pos) {
        units += iText[pos].Code();
    }
    return units;
}

/** Every text of up to @p iLength letters of the alphabet, the empty one first. */
inline std::vector<std::u16string> TextsOf(std::u16string_view iAlphabet, std::size_t iLength) {
    std::vector<std::u16string> texts = {u""};
    for (std::size_t next = 0; next < texts.size(); ++next) {
        if (texts[next].size() < iLength) {
            for (const char16_t letter : iAlphabet) {
                texts.push_back(texts[next] + letter);
            }
        }
    }
    return texts;
}

/** Whether some unit does not fit a byte. */
inline bool HasWideUnit(const std::u16string& iUnits) {
    return std::any_of(iUnits.begin(), iUnits.end(), [](char16_t iUnit) { return iUnit > 0xFF; });
}

#endif
