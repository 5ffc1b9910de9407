#include "FindingText.h"

namespace {

const char* ColourOf(Severity iSeverity) {
    switch (iSeverity) {
        case Severity::Error:
            return "\033[1;31m";
        case Severity::Warning:
            return "\033[1;35m";
        case Severity::Note:
            break;
    }
    return "\033[1;36m";
}

}  // namespace

std::string FindingText::Line(const std::string& iPlace, Severity iSeverity, const std::string& iMessage,
                              const char* iCode) const {
    return iPlace + ": " + Painted(ColourOf(iSeverity), NameOf(iSeverity)) + ": " + iMessage + " [" + iCode + "]\n";
}

std::string FindingText::Detail(const char* iName, const std::string& iText) {
    return iText.empty() ? "" : std::string("    ") + iName + ": " + iText + '\n';
}

std::string FindingText::Bold(const std::string& iText) const {
    return Painted("\033[1m", iText);
}

std::string FindingText::Painted(const char* iStart, const std::string& iText) const {
    return colours ? iStart + iText + "\033[0m" : iText;
}
