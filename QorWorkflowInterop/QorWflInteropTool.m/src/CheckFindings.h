#ifndef CheckFindings_H
#define CheckFindings_H

#include "Severity.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

/** Everything that can be found in a document. The numbers that users know them by are in CodeInfo. */
enum class Code {
    NotWellFormed,
    BeyondLimit,
    DocumentTypeDeclares,
    EntityNotDeclared,
    EncodingNotFollowed,
    NulCharacter,
    CannotBeRead,
    RequiredMissing,
    RequiredUnderOtherName,
    ElementIgnored,
    AttributeIgnored,
    ProcessIgnored,
    ActivityIgnored,
    ParticipantIgnored,
    RepeatedElementIgnored,
    EntryRepeated,
    EntryIgnored,
    NameNotQuite,
    TextIgnored,
    DocumentTypePassed,
    RootName,
    TextCut,
    TextInCDataSection,
    NumberNotConverted,
    NumberCut,
    OutsideEncoding,
    BlanksInAttribute,
    AttributeMissing,
    ElementMissing,
    ParticipantsMissing,
    RecordTextQuote,
    RecordTextLength,
    RecordTextOutOfStep,
    WrittenAttributeBlanks,
    WrittenCarriageReturn,
    WrittenEmptyText,
    WrittenControlCharacter,
};

/** What a code means to users. */
struct CodeInfo {
    Code code;
    const char* id;  ///< "QW101", which never changes its meaning
    Severity severity;
    const char* title;      ///< a few words
    const char* help;       ///< what it means and what to do, in sentences
    const char* lost = "";  ///< what a document loses by it, in the singular; empty for nothing that was in it
};

/** All codes, in the order of their numbers, which is the order of the enumeration. */
std::span<const CodeInfo> AllCodes();
const CodeInfo& InfoOf(Code iCode);

/** A place in a text; line and column count from 1, line ends of every kind alike. Line 0: no place is known. */
struct TextPlace {
    unsigned long line = 0;
    unsigned long column = 0;  ///< in characters
};

/** One thing that was found. The texts are UTF-8 and safe for a terminal. */
struct Finding {
    Code code;
    TextPlace place;
    std::string path;  ///< of the element, such as "/Package/Participants/Participant[2]"; empty when there is none
    std::string message;
    std::string hint;
};

/** The findings of one document. Of each code the first kMostOfACode are kept, the others counted. */
class FindingList {
public:
    static constexpr std::size_t kMostOfACode = 100;

    /** @return whether one more finding of a code would be kept; otherwise it is counted here. */
    bool Takes(Code iCode);
    /** Keeps a finding for which Takes() gave true. */
    void Add(Finding iFinding);
    /** Puts the findings in the order of their places, those of one place in the order of their codes. */
    void Sort();

    const std::vector<Finding>& Kept() const { return kept; }
    /** @return how many there are of a code, kept or not. */
    std::size_t Count(Code iCode) const;
    /** @return how many there are of a severity, kept or not. */
    std::size_t Count(Severity iSeverity) const;
    /** @return how many of a code were not kept. */
    std::size_t Left(Code iCode) const;

private:
    std::vector<Finding> kept;
    std::array<std::size_t, static_cast<std::size_t>(Code::WrittenControlCharacter) + 1> counts{};
};

#endif
