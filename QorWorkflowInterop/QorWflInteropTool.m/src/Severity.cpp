#include "Severity.h"

const char* NameOf(Severity iSeverity) {
    switch (iSeverity) {
        case Severity::Error:
            return "error";
        case Severity::Warning:
            return "warning";
        case Severity::Note:
            break;
    }
    return "note";
}
