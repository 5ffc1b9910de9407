#include "TextTable.h"

#include "SafeText.h"

#include <algorithm>

namespace {

constexpr const char* kIndent = "  ";
constexpr const char* kGap = "  ";

/** The number of characters of a text. */
std::size_t Width(const std::string& iText) {
    return static_cast<std::size_t>(std::count_if(
        iText.begin(), iText.end(), [](char iByte) { return (static_cast<unsigned char>(iByte) & 0xC0U) != 0x80U; }));
}

}  // namespace

void TextTable::Add(const std::vector<std::string>& iCells) {
    std::vector<std::string>& row = rows.emplace_back();
    std::transform(iCells.begin(), iCells.end(), std::back_inserter(row), &SafeText);
}

std::string TextTable::Text() const {
    std::vector<std::size_t> widths;
    for (const std::vector<std::string>& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], Width(row[i]));
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        std::string line = kIndent;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += (i == 0 ? "" : kGap) + row[i] + std::string(widths[i] - Width(row[i]), ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}
