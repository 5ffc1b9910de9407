#ifndef FindingText_H
#define FindingText_H

#include "Severity.h"

#include <string>

/** Findings as lines for people, of one layout whatever they are about, with colours or without. */
class FindingText {
public:
    explicit FindingText(bool iColours) : colours(iColours) {}

    /** @return "PLACE: SEVERITY: MESSAGE [CODE]" with a line end. The texts have to be safe for a terminal. */
    std::string Line(const std::string& iPlace, Severity iSeverity, const std::string& iMessage,
                     const char* iCode) const;
    /** @return a line below such a line, "NAME: TEXT"; nothing for an empty text. */
    static std::string Detail(const char* iName, const std::string& iText);
    /** @return a text that stands out. */
    std::string Bold(const std::string& iText) const;

private:
    std::string Painted(const char* iStart, const std::string& iText) const;

    bool colours;
};

#endif
