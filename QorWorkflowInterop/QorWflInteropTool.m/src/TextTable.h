#ifndef TextTable_H
#define TextTable_H

#include <string>
#include <vector>

/** Rows of texts, which are laid out one below the other in columns. */
class TextTable {
public:
    /** Adds a row. @param iCells UTF-8; control characters are shown as \xNN */
    void Add(const std::vector<std::string>& iCells);
    /** @return the rows, indented by two blanks, each column as wide as its widest text of up to 80 characters; empty
     * without a row. */
    std::string Text() const;

private:
    std::vector<std::vector<std::string>> rows;
};

#endif
