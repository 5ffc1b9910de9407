#ifndef Import_H
#define Import_H

#include <string>

/**
 * Writes the record that an XPDL document holds to the standard output, in its labelled text form.
 *
 * A document in which a required element is missing is written as far as the library reads it.
 *
 * @param iDocumentFile the document, "-" for the standard input
 * @throw Failure when the text is no document, when a required element is missing (the record is out then), or when
 *        the output cannot be written.
 */
void Import(const std::string& iDocumentFile);

#endif
