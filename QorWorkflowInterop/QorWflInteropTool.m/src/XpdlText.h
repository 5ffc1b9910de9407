#ifndef XpdlText_H
#define XpdlText_H

#include <ActivityInfo.h>
#include <BexDom.h>

#include <optional>
#include <string>

/**
 * Parses a document, for what the library's reader, which has no result, does not tell.
 * @param iText the bytes of the document
 * @param iFileName what messages call it
 * @throw Failure with file, line and column when it is not well-formed or the parser refuses it.
 */
DOM_Document ParseDocument(const std::string& iText, const std::string& iFileName);

/**
 * Fills a fresh record from a document, as far as the library's reader comes.
 * @return the path of the required element whose absence ended the reading, or nothing when all was read.
 * @throw Failure as ParseDocument() does.
 */
std::optional<std::string> XpdlToRecord(const std::string& iText, const std::string& iFileName, ActivityInfo& oRecord);

/**
 * @param iCreated what the document has as its `Created` text, in UTF-8; without it, the current time
 * @param iFileName what messages call the record
 * @return the document of a record.
 * @throw Failure when a text of the record could not be in the document as it is.
 */
std::string RecordToXpdl(const ActivityInfo& iRecord, const std::optional<std::string>& iCreated,
                         const std::string& iFileName);

/** @return what is wrong with such a `Created` text, or an empty text. */
std::string WhyNotCreated(const std::string& iCreated);

#endif
