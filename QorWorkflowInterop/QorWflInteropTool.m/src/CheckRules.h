#ifndef CheckRules_H
#define CheckRules_H

#include "CheckFindings.h"
#include "XpdlReading.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <utility>

/** What a finding says. */
struct Explanation {
    std::string message;
    std::string hint;
};

/** A document that is being looked at, and what was found in it so far. */
class Inspection {
public:
    /** The two live as long as the inspection. */
    Inspection(const XpdlReading& iReading, FindingList& ioFindings)
        : reading(iReading), document(iReading.Document()), findings(ioFindings) {}

    const XpdlReading& reading;
    const PositionedDocument& document;

    /**
     * Reports something about an element. @p iExplain gives the Explanation; neither it nor the path costs anything
     * when the finding is one too many.
     * @param iElement kNone for the document itself
     * @param iMissing the name of an element below it that is not there, and that the finding is about
     */
    template <typename Explain>
    void Report(Code iCode, TextPlace iPlace, std::size_t iElement, Explain iExplain,
                std::u16string_view iMissing = {}) {
        if (findings.Takes(iCode)) {
            Explanation explanation = iExplain();
            findings.Add({iCode, iPlace, document.Path(iElement, iMissing), std::move(explanation.message),
                          std::move(explanation.hint)});
        }
    }

private:
    FindingList& findings;
};

/** Looks for findings of one kind, in linear time. */
using Rule = void (*)(Inspection&);

/** What is missing, ignored or not found. */
std::span<const Rule> StructureRules();
/** What happens to values when they are read. */
std::span<const Rule> ValueRules();
/** What happens to values behind the reading: in the text form of a record, and in a document written from it. */
std::span<const Rule> AfterlifeRules();

#endif
