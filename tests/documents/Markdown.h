#ifndef Markdown_H
#define Markdown_H

#include <string>
#include <vector>

/** A block of code in a document. */
struct CodeBlock {
    std::string document;  ///< its path below the sources
    int line = 0;          ///< of the first line inside, from 1
    std::string language;  ///< what stands behind the opening fence; empty for a block that is only indented
    std::vector<std::string> lines;

    /** @return document:line, for messages. */
    std::string Place() const { return document + ":" + std::to_string(line); }
    std::string Text() const;
};

/** @return the README, the change log, the pages of docs and the README files of the examples, sorted. */
std::vector<std::string> Documents();

/** @return the code blocks of a document, in their order. */
std::vector<CodeBlock> CodeBlocks(const std::string& iDocument);

/** @return the code blocks of all documents that are in a language. */
std::vector<CodeBlock> CodeBlocksIn(const std::string& iLanguage);

/** @return the lines of a file. */
std::vector<std::string> LinesOf(const std::string& iPath);

/** @return the lines without the blanks that all of them begin with. */
std::vector<std::string> Unindented(std::vector<std::string> iLines);

#endif
