#include "TextTable.h"

#include "SafeText.h"

#include <algorithm>

namespace {

constexpr const char* kIndent = "  ";
constexpr const char* kGap = "  ";

// Wider texts do not widen the column of the others: a table of one long text and many short ones would be the product
// of the two.
constexpr std::size_t kWidest = 80;

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
            if (const std::size_t width = Width(row[i]); width <= kWidest) {
                widths[i] = std::max(widths[i], width);
            }
        }
    }
    std::string text;
    for (const std::vector<std::string>& row : rows) {
        std::string line = kIndent;
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::size_t width = Width(row[i]);
            line += (i == 0 ? "" : kGap) + row[i] + std::string(widths[i] - std::min(width, widths[i]), ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}
