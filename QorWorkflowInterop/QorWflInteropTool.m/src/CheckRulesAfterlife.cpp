#include "CheckRules.h"

#include <algorithm>
#include <string_view>

namespace {

// The text form of a record, as its reader in the library takes it.
constexpr std::size_t kLongestText = 79;
constexpr std::size_t kLongestSkip = 9999;  // after so many characters the rest of a line, its quote included, is left

/** Calls @p iTake with each value that a field gets in the end. */
template <typename Take>
void ForEachValue(Inspection& ioInspection, Take iTake) {
    for (const ReadValue& value : ioInspection.reading.Values()) {
        if (value.winner == kNone && !value.isMissing && InfoOf(value.field).kind != FieldInfo::AsNumber) {
            iTake(value);
        }
    }
}

std::string FieldName(const ReadValue& iValue) {
    return InfoOf(iValue.field).name;
}

bool HasAnyOf(std::u16string_view iText, std::u16string_view iUnits) {
    return iText.find_first_of(iUnits) != std::u16string_view::npos;
}

/** Where the reader of the text form cuts a value. */
std::size_t CutOf(std::u16string_view iText) {
    return std::min({iText.find(u'"'), kLongestText, iText.size()});
}

void FindRecordTextCuts(Inspection& ioInspection) {
    ForEachValue(ioInspection, [&ioInspection](const ReadValue& iValue) {
        const std::size_t cut = CutOf(iValue.text);
        if (!InfoOf(iValue.field).isInRecordText || cut == iValue.text.size()) {
            return;
        }
        const bool isQuote = iValue.text[cut] == u'"';
        ioInspection.Report(
            isQuote ? Code::RecordTextQuote : Code::RecordTextLength, iValue.place, iValue.element, [&] {
                const std::string field = FieldName(iValue);
                return Explanation{
                    (isQuote ? "the field " + field + " has a double quote"
                             : "the field " + field + " has " + std::to_string(iValue.text.size()) + " characters") +
                        "; the text form of the record gives back the first " + std::to_string(cut),
                    isQuote ? "use other quotes, or another form" : "use another form"};
            });
    });
}

void FindRecordTextOutOfStep(Inspection& ioInspection) {
    ForEachValue(ioInspection, [&ioInspection](const ReadValue& iValue) {
        const std::u16string_view rest = iValue.text.substr(CutOf(iValue.text));
        const bool hasLineEnd = HasAnyOf(rest, u"\n");
        if (!InfoOf(iValue.field).isInRecordText || (!hasLineEnd && rest.size() < kLongestSkip)) {
            return;
        }
        ioInspection.Report(Code::RecordTextOutOfStep, iValue.place, iValue.element, [&] {
            return Explanation{"the field " + FieldName(iValue) + " has " +
                                   (hasLineEnd ? "a line end" : "more characters than are skipped") +
                                   " behind the place where the text form of the record cuts it; what follows can get "
                                   "into other fields",
                               "use another form, or a shorter value"};
        });
    });
}

void FindWrittenAttributes(Inspection& ioInspection) {
    ForEachValue(ioInspection, [&ioInspection](const ReadValue& iValue) {
        if (InfoOf(iValue.field).kind == FieldInfo::AsAttribute && HasAnyOf(iValue.text, u"\t\n\r")) {
            ioInspection.Report(Code::WrittenAttributeBlanks, iValue.place, iValue.element, [&iValue] {
                return Explanation{"the field " + FieldName(iValue) +
                                       " has line ends or tabs, which become blanks in a document written from it",
                                   "use blanks"};
            });
        }
    });
}

void FindWrittenCarriageReturns(Inspection& ioInspection) {
    ForEachValue(ioInspection, [&ioInspection](const ReadValue& iValue) {
        if (InfoOf(iValue.field).kind == FieldInfo::AsText && HasAnyOf(iValue.text, u"\r")) {
            ioInspection.Report(Code::WrittenCarriageReturn, iValue.place, iValue.element, [&iValue] {
                return Explanation{"the field " + FieldName(iValue) +
                                       " has carriage returns, which become line feeds in a document written from it",
                                   "use line feeds"};
            });
        }
    });
}

void FindWrittenEmptyTexts(Inspection& ioInspection) {
    ForEachValue(ioInspection, [&ioInspection](const ReadValue& iValue) {
        if (InfoOf(iValue.field).kind == FieldInfo::AsText && iValue.text.empty()) {
            ioInspection.Report(Code::WrittenEmptyText, iValue.place, iValue.element, [&iValue] {
                return Explanation{"the field " + FieldName(iValue) +
                                       " becomes empty; a document written from it gives back a line feed",
                                   "leave the element out where it is optional"};
            });
        }
    });
}

void FindWrittenControlCharacters(Inspection& ioInspection) {
    const auto isRefused = [](char16_t iUnit) {
        return iUnit < 0x20 && iUnit != u'\t' && iUnit != u'\n' && iUnit != u'\r';
    };
    ForEachValue(ioInspection, [&](const ReadValue& iValue) {
        if (!iValue.isStandIn && std::any_of(iValue.text.begin(), iValue.text.end(), isRefused)) {
            ioInspection.Report(Code::WrittenControlCharacter, iValue.place, iValue.element, [&iValue] {
                return Explanation{"the field " + FieldName(iValue) +
                                       " has a control character; a document written from it is refused",
                                   "take the control character out"};
            });
        }
    });
}

constexpr Rule kRules[] = {FindRecordTextCuts,         FindRecordTextOutOfStep, FindWrittenAttributes,
                           FindWrittenCarriageReturns, FindWrittenEmptyTexts,   FindWrittenControlCharacters};

}  // namespace

std::span<const Rule> AfterlifeRules() {
    return kRules;
}
