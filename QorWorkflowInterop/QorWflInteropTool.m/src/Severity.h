#ifndef Severity_H
#define Severity_H

/** How bad a finding is. */
enum class Severity { Error, Warning, Note };

/** "error", "warning" or "note". */
const char* NameOf(Severity iSeverity);

#endif
