#ifndef DOMParser_H
#define DOMParser_H

#include "BexExport.h"
#include "DOMString.h"
#include "DOM_Document.h"

#include <xercesc/sax/InputSource.hpp>

/**
 * A non-validating XML parser that is safe on texts from outside the process.
 *
 * It opens no file and no connection whatever the document names, installs nothing process-wide, and no exception
 * leaves parse(). After any error, at any place in the text, there is no document, never part of one. Errors are,
 * besides what XML calls one:
 * - a document type with an internal subset (one that only names an external subset is read past, nothing is loaded),
 *   and a reference to an entity other than XML's five;
 * - elements nested deeper than kMaxDepth, more than kMaxAttributes on one element, more than kMaxNames distinct
 *   element names or distinct attribute names, or more than 512 of them chosen to have one hash in Xerces-C;
 * - a NUL character anywhere, half of a surrogate pair, and text that ends within a character.
 * Everything else takes time and memory in proportion to the text.
 *
 * A parser belongs to one thread at a time; any number of parsers may work side by side.
 */
class BEX_EXPORT DOMParser {
public:
    static constexpr int kMaxDepth = 1024;       ///< elements open at the same time
    static constexpr int kMaxAttributes = 1024;  ///< attributes of one element
    static constexpr int kMaxNames = 16384;      ///< distinct element names, and distinct attribute names, of a text

    DOMParser();
    ~DOMParser();
    DOMParser(const DOMParser&) = delete;  // a parser is an activity, not a value
    DOMParser& operator=(const DOMParser&) = delete;

    /**
     * Reads a document. What an earlier call read is let go first.
     * @param iSource where the text comes from; its encoding, when set, wins over what the text says of itself
     * @param iReuseGrammar has no effect, as no grammar is read
     */
    void parse(const xercesc::InputSource& iSource, bool iReuseGrammar = false);
    /** @return the document that the last parse() read, null after an error and before any parse(). */
    DOM_Document getDocument() const { return document; }

    /** @return what was wrong with the last text, in words; empty when nothing was, or no memory was left for words. */
    const DOMString& getErrorText() const { return errorText; }
    /** @return the line of the error, from 1, or 0 when there was none or its place is not known. */
    unsigned long getErrorLine() const { return errorLine; }
    /** @return the column of the error, from 1, or 0 when there was none or its place is not known. */
    unsigned long getErrorColumn() const { return errorColumn; }

private:
    void ParseOrExplain(const xercesc::InputSource& iSource);
    void Fail(DOMString iText, unsigned long iLine, unsigned long iColumn);

    DOM_Document document;
    DOMString errorText;
    unsigned long errorLine = 0;
    unsigned long errorColumn = 0;
};

#endif
