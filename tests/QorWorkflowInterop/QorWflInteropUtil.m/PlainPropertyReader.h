#ifndef PlainPropertyReader_H
#define PlainPropertyReader_H

#include "PropertyEntries.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

/** The reading of property files once more, in the plainest way and independent of the library, to judge it by. */
namespace PlainPropertyReader {

inline std::vector<std::string> PhysicalLines(std::string iText) {
    std::vector<std::string> lines;
    while (!iText.empty()) {
        const std::size_t end = std::min(iText.find('\n'), iText.size());
        lines.push_back(iText.substr(0, end));
        iText.erase(0, end + 1);
    }
    return lines;
}

inline std::vector<std::string> LogicalLines(std::vector<std::string> iPhysical) {
    std::vector<std::string> lines;
    while (!iPhysical.empty()) {
        std::string line = iPhysical.front();
        iPhysical.erase(iPhysical.begin());
        while (!line.empty() && line.back() == '\\') {
            line.pop_back();
            if (!iPhysical.empty()) {
                line += iPhysical.front();
                iPhysical.erase(iPhysical.begin());
            }
        }
        lines.push_back(line);
    }
    return lines;
}

inline std::string WithoutBlanks(std::string iText) {
    iText.erase(std::remove(iText.begin(), iText.end(), ' '), iText.end());
    return iText;
}

inline std::string WithoutBlanksAround(std::string iText) {
    while (!iText.empty() && iText.front() == ' ') {
        iText.erase(0, 1);
    }
    while (!iText.empty() && iText.back() == ' ') {
        iText.pop_back();
    }
    return iText;
}

inline void Set(PropertyEntries& ioEntries, const std::string& iKey, const std::string& iValue) {
    for (auto& [key, value] : ioEntries) {
        if (key == iKey) {
            value = iValue;
            return;
        }
    }
    ioEntries.emplace_back(iKey, iValue);
}

/** What a text sets, found in the plainest way: the judge of the reader under test. */
inline PropertyEntries PlainRead(const std::string& iText) {
    PropertyEntries entries;
    for (const std::string& line : LogicalLines(PhysicalLines(iText))) {
        const bool isComment = WithoutBlanks(line).rfind('/', 0) == 0;
        const std::size_t equals = line.find('=');
        if (isComment || equals == std::string::npos || equals == 0) {
            continue;
        }
        std::string value = WithoutBlanksAround(line.substr(equals + 1));
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
            value = value.substr(1, value.size() - 2);
        }
        Set(entries, WithoutBlanks(line.substr(0, equals)), value);
    }
    return entries;
}

}  // namespace PlainPropertyReader

#endif
