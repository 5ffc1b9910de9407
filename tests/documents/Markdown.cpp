#include "Markdown.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

bool StartsWith(const std::string& iText, const char* iStart) {
    return iText.rfind(iStart, 0) == 0;
}

bool IsBlank(const std::string& iLine) {
    return iLine.find_first_not_of(' ') == std::string::npos;
}

/** Whether a line opens an entry of a list, behind which indented lines are text. */
bool IsListEntry(const std::string& iLine) {
    const std::size_t text = iLine.find_first_not_of(' ');
    return text != std::string::npos &&
           (iLine.compare(text, 2, "- ") == 0 || iLine.find(". ") == iLine.find_first_not_of("0123456789", text));
}

}  // namespace

std::string CodeBlock::Text() const {
    std::string text;
    for (const std::string& textLine : lines) {
        text += textLine + "\n";
    }
    return text;
}

std::vector<std::string> LinesOf(const std::string& iPath) {
    std::ifstream file(iPath, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + iPath);
    }
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> Documents() {
    const fs::path root = SOURCE_DIR;
    std::vector<std::string> documents{"CHANGELOG.md", "README.md"};
    for (const char* folder : {"docs", "examples"}) {
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / folder)) {
            if (entry.path().extension() == ".md") {
                documents.push_back(entry.path().lexically_relative(root).string());
            }
        }
    }
    std::sort(documents.begin(), documents.end());
    return documents;
}

std::vector<CodeBlock> CodeBlocks(const std::string& iDocument) {
    std::vector<CodeBlock> blocks;
    bool fenced = false;
    bool indented = false;
    bool list = false;
    bool blankBefore = true;
    int number = 0;
    for (const std::string& line : LinesOf(std::string(SOURCE_DIR) + "/" + iDocument)) {
        ++number;
        if (StartsWith(line, "```")) {
            fenced = !fenced;
            indented = false;
            if (fenced) {
                blocks.push_back({iDocument, number + 1, line.substr(3), {}});
            }
        } else if (fenced) {
            blocks.back().lines.push_back(line);
        } else if (StartsWith(line, "    ") && !IsBlank(line) && !list && (blankBefore || indented)) {
            if (!indented) {
                blocks.push_back({iDocument, number, "", {}});
                indented = true;
            }
            blocks.back().lines.push_back(line);
        } else if (!IsBlank(line)) {
            indented = false;
            list = IsListEntry(line) || (list && line[0] == ' ');
        }
        blankBefore = IsBlank(line);
    }
    if (fenced) {
        throw std::runtime_error(iDocument + ": a code block that does not end");
    }
    return blocks;
}

std::vector<CodeBlock> CodeBlocksIn(const std::string& iLanguage) {
    std::vector<CodeBlock> found;
    for (const std::string& document : Documents()) {
        for (const CodeBlock& block : CodeBlocks(document)) {
            if (block.language == iLanguage) {
                found.push_back(block);
            }
        }
    }
    return found;
}

std::vector<std::string> Unindented(std::vector<std::string> iLines) {
    std::size_t common = std::string::npos;
    for (const std::string& line : iLines) {
        common = std::min(common, line.find_first_not_of(' '));  // npos for a blank line, which counts for nothing
    }
    for (std::string& line : iLines) {
        line.erase(0, IsBlank(line) ? line.size() : common);
    }
    return iLines;
}
