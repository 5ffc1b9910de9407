#ifndef PropertyEntries_H
#define PropertyEntries_H

#include <QorWflPropertyFile.h>

#include <string>
#include <utility>
#include <vector>

/** Keys and values in the order of the table, as narrow text. */
using PropertyEntries = std::vector<std::pair<std::string, std::string>>;

/** The narrow text of a string, NUL characters included. */
inline std::string NarrowText(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

/** A string of these bytes, NUL bytes included. */
inline BexUnicodeString StringOf(const std::string& iBytes) {
    return BexUnicodeString(iBytes.data(), static_cast<int>(iBytes.size()));
}

/** The whole table. */
inline PropertyEntries EntriesOf(const QorWflPropertyFile& iProperties) {
    PropertyEntries entries;
    for (int i = 1; i <= iProperties.GetNKeys(); ++i) {
        entries.emplace_back(NarrowText(iProperties.GetKey(i)), NarrowText(iProperties.GetValue(i)));
    }
    return entries;
}

#endif
