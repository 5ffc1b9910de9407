#ifndef CodePage_H
#define CodePage_H

#include <string>
#include <vector>

/** The description of a code of findings, a section of a page in the documents. */
struct CodeSection {
    std::string id;
    std::string title;
    std::string text;

    /** @return the severity that it tells, "error", "warning" or "note". */
    std::string Severity() const;
    /** @return its example, a block of code in a language; empty when it is in words. */
    std::string Example(const std::string& iLanguage) const;
    /** Expects what every section has: a severity, an example in a block of this language or in words, and advice. */
    void ExpectWhole(const std::string& iLanguage) const;
};

/** @return the sections of a page in the documents. */
std::vector<CodeSection> CodeSections(const std::string& iPage);

#endif
