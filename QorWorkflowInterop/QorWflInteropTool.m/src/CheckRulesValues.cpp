#include "CheckRules.h"
#include "NearNames.h"
#include "SafeText.h"

#include <XpdlNames.h>
#include <algorithm>
#include <cstdio>

namespace {

/** The fields that the elements of a role hold, in words. */
void AddFields(const Role& iRole, std::string& ioNames) {
    const auto add = [&ioNames](Field iField) {
        ioNames += std::string(ioNames.empty() ? "" : ", ") + InfoOf(iField).name;
    };
    if (iRole.text.has_value()) {
        add(*iRole.text);
    }
    for (const RoleEntry& entry : iRole.entries) {
        add(entry.field);
    }
    for (const Role& child : iRole.children) {
        AddFields(child, ioNames);
    }
}

void ReportNoParticipants(Inspection& ioInspection, std::size_t iPackage) {
    const std::vector<ReadValue>& values = ioInspection.reading.Values();
    const bool hasPerformer =
        std::any_of(values.begin(), values.end(), [](const ReadValue& iValue) { return iValue.isStandIn; });
    ioInspection.Report(Code::ParticipantsMissing, ioInspection.document[iPackage].place, iPackage, [hasPerformer] {
        return Explanation{
            hasPerformer ? "there are no Participants; the performer stands in as participant, of type HUMAN"
                         : "there are no Participants and no performer; participant and participantType become null",
            "add Participants with a Participant"};
    });
}

void FindMissingOptionalElements(Inspection& ioInspection) {
    for (const std::size_t element : ioInspection.reading.Taken()) {
        for (const Role& role : ioInspection.reading.RoleOf(element)->children) {
            if (role.presence != Role::Optional || role.isEach ||
                ioInspection.document.FindChild(element, role.name) != kNone) {
                continue;
            }
            if (role.name == Xpdl::kParticipants) {
                ReportNoParticipants(ioInspection, element);
                continue;
            }
            ioInspection.Report(Code::ElementMissing, ioInspection.document[element].place, element, [&role] {
                std::string fields;
                AddFields(role, fields);
                return Explanation{
                    "there is no " + SafeName(role.name) + "; the field " + fields + " keeps the value that it had",
                    "add the element if the field is to be set"};
            });
        }
    }
}

/** Extended attributes that could be there and are not. */
void FindMissingEntries(Inspection& ioInspection) {
    std::vector<unsigned> found(ioInspection.document.Elements().size(), 0);  // a bit for each field, by element
    const auto bit = [](Field iField) { return 1U << static_cast<unsigned>(iField); };
    for (const ReadValue& value : ioInspection.reading.Values()) {
        found[ioInspection.document[value.element].parent] |= bit(value.field);  // the root itself has no value
    }
    for (const std::size_t element : ioInspection.reading.Taken()) {
        for (const RoleEntry& entry : ioInspection.reading.RoleOf(element)->entries) {
            if (entry.winner == RoleEntry::Each || (found[element] & bit(entry.field)) != 0) {
                continue;
            }
            ioInspection.Report(Code::ElementMissing, ioInspection.document[element].place, element, [&entry] {
                return Explanation{
                    "there is no extended attribute " + SafeName(entry.name) + "; the field " +
                        InfoOf(entry.field).name +
                        (entry.winner == RoleEntry::First ? " stays empty" : " keeps the value that it had"),
                    "add <ExtendedAttribute Name=\"" + SafeName(entry.name) +
                        "\" Value=\"...\"/> if the field is to be set"};
            });
        }
    }
}

void FindMissingAttributes(Inspection& ioInspection) {
    for (const ReadValue& value : ioInspection.reading.Values()) {
        if (value.isMissing) {
            ioInspection.Report(Code::AttributeMissing, value.place, value.element, [&value, &ioInspection] {
                return Explanation{"attribute " + SafeName(value.attributeName) + " of " +
                                       SafeName(ioInspection.document[value.element].name) + " is missing; the field " +
                                       InfoOf(value.field).name + " becomes empty",
                                   "add the attribute if the field has a value"};
            });
        }
    }
}

void FindRepeatedEntries(Inspection& ioInspection) {
    const std::vector<ReadValue>& values = ioInspection.reading.Values();
    for (const ReadValue& value : values) {
        if (value.winner == kNone) {
            continue;
        }
        const TextPlace place = ioInspection.document[value.element].place;
        ioInspection.Report(Code::EntryRepeated, place, value.element, [&] {
            const ReadValue& winner = values[value.winner];
            const TextPlace winning = ioInspection.document[winner.element].place;
            return Explanation{"the value " + Quoted(value.text) + " of " + InfoOf(value.field).name +
                                   " is not used; the extended attribute in line " + std::to_string(winning.line) +
                                   ", with " + Quoted(winner.text) + ", wins",
                               "take one of the two out"};
        });
    }
}

/** Reports an extended attribute whose name the reader does not look for. */
void CheckEntry(Inspection& ioInspection, const Role& iRole, std::size_t iEntry) {
    const std::size_t name = ioInspection.document.FindAttribute(iEntry, Xpdl::kName);
    const std::u16string_view text =
        name == kNone ? std::u16string_view() : ioInspection.document.Attribute(name).value;
    const auto isCalled = [text](const RoleEntry& iKnown) { return iKnown.name == text; };
    if (std::any_of(iRole.entries.begin(), iRole.entries.end(), isCalled)) {
        return;
    }
    ioInspection.Report(Code::EntryIgnored, ioInspection.document[iEntry].place, iEntry, [&] {
        const auto nearly = std::find_if(iRole.entries.begin(), iRole.entries.end(),
                                         [text](const RoleEntry& iKnown) { return IsNearly(text, iKnown.name); });
        return Explanation{name == kNone ? "an extended attribute without Name is ignored"
                                         : "extended attribute " + Quoted(text) + " is ignored",
                           nearly != iRole.entries.end()
                               ? "write Name=\"" + SafeName(nearly->name) + "\" if that is what is meant"
                               : "nothing to do unless its value is wanted in the record"};
    });
}

void FindIgnoredEntries(Inspection& ioInspection) {
    for (const std::size_t element : ioInspection.reading.Taken()) {
        const std::size_t parent = ioInspection.document[element].parent;
        if (parent != kNone && !ioInspection.reading.RoleOf(parent)->entries.empty()) {
            CheckEntry(ioInspection, *ioInspection.reading.RoleOf(parent), element);
        }
    }
}

bool IsBlank(std::string_view iText) {
    return iText.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/** What stands between two pieces of a text, by what comes before the second. */
const char* CutBy(ContentMark::Kind iBefore) {
    switch (iBefore) {
        case ContentMark::Comment:
            return "a comment";
        case ContentMark::Instruction:
            return "a processing instruction";
        case ContentMark::CDataSection:
            return "a CDATA section";
        case ContentMark::Text:
            break;
    }
    return "an element";
}

/** Goes through the pieces of the text of one element. */
void FindLostPieces(Inspection& ioInspection, std::size_t iElement) {
    const PositionedDocument& document = ioInspection.document;
    const std::u16string_view read = document[iElement].text.value_or(std::u16string_view());
    bool hasText = false;
    ContentMark::Kind before = ContentMark::Text;
    for (std::size_t i = document[iElement].firstContent; i != kNone; i = document.Content(i).next) {
        const ContentMark& content = document.Content(i);
        const bool isText = content.kind == ContentMark::Text;
        if (isText && hasText && !IsBlank(content.raw)) {
            ioInspection.Report(Code::TextCut, content.place, iElement, [&] {
                return Explanation{std::string("the text is cut by ") + CutBy(before) + "; only " + Quoted(read) +
                                       " is read, not what begins here",
                                   "write the text in one piece"};
            });
        } else if (content.kind == ContentMark::CDataSection && !IsBlank(content.raw)) {
            ioInspection.Report(Code::TextInCDataSection, content.place, iElement, [&] {
                return Explanation{
                    "the text in this CDATA section is not read; " +
                        (read.empty() ? "the field gets nothing of it" : "the field gets " + Quoted(read) + " alone"),
                    "write it as plain text, with &lt; and &amp;"};
            });
        }
        hasText = hasText || isText;
        before = content.kind;
    }
}

void FindCutTexts(Inspection& ioInspection) {
    for (const std::size_t element : ioInspection.reading.Taken()) {
        if (ioInspection.reading.RoleOf(element)->text.has_value()) {
            FindLostPieces(ioInspection, element);
        }
    }
}

/** What stands behind the number that a text begins with. */
std::u16string_view BehindNumber(std::u16string_view iText) {
    constexpr std::u16string_view kSpace(u" \t\n\v\f\r");
    std::size_t at = std::min(iText.find_first_not_of(kSpace), iText.size());
    at += at < iText.size() && (iText[at] == u'-' || iText[at] == u'+') ? 1 : 0;
    at = std::min(iText.find_first_not_of(u"0123456789", at), iText.size());
    const std::u16string_view rest = iText.substr(at);
    return rest.substr(std::min(rest.find_first_not_of(kSpace), rest.size()));
}

void FindNumbers(Inspection& ioInspection) {
    for (const ReadValue& value : ioInspection.reading.Values()) {
        if (InfoOf(value.field).kind != FieldInfo::AsNumber || value.isMissing) {
            continue;
        }
        if (!NumberOf(value.field, value.text).has_value()) {
            ioInspection.Report(Code::NumberNotConverted, value.place, value.element, [&value] {
                return Explanation{Quoted(value.text) + " is no number that fits; it does not change the field " +
                                       InfoOf(value.field).name,
                                   "write a decimal number"};
            });
        } else if (value.winner == kNone && !BehindNumber(value.text).empty()) {
            ioInspection.Report(Code::NumberCut, value.place, value.element, [&value] {
                return Explanation{"the field " + std::string(InfoOf(value.field).name) + " becomes " +
                                       std::to_string(*NumberOf(value.field, value.text)) + "; the rest of " +
                                       Quoted(value.text) + " is not read",
                                   "write the number alone"};
            });
        }
    }
}

bool IsOutside(char16_t iUnit) {
    return iUnit > 0xFF;
}

/** The code of the first character that ISO-8859-1 does not have, as "U+20AC". */
std::string FirstOutside(std::u16string_view iText) {
    const std::size_t at =
        static_cast<std::size_t>(std::find_if(iText.begin(), iText.end(), IsOutside) - iText.begin());
    unsigned code = iText[at];
    if (code >= 0xD800 && code < 0xDC00 && at + 1 < iText.size()) {
        code = 0x10000 + ((code - 0xD800) << 10) + (iText[at + 1] - 0xDC00U);
    }
    char text[16];
    std::snprintf(text, sizeof text, "U+%04X", code);
    return text;
}

void FindCharactersOutside(Inspection& ioInspection) {
    for (const ReadValue& value : ioInspection.reading.Values()) {
        const auto count = std::count_if(value.text.begin(), value.text.end(), IsOutside);
        if (value.winner != kNone || value.isStandIn || count == 0) {
            continue;
        }
        ioInspection.Report(Code::OutsideEncoding, value.place, value.element, [&value, count] {
            return Explanation{"the field " + std::string(InfoOf(value.field).name) + " gets " + std::to_string(count) +
                                   (count == 1 ? " question mark" : " question marks") +
                                   " for characters outside ISO-8859-1, the first of them " + FirstOutside(value.text),
                               "write characters that ISO-8859-1 has"};
        });
    }
}

void FindBlanksInAttributes(Inspection& ioInspection) {
    for (const ReadValue& value : ioInspection.reading.Values()) {
        if (value.winner != kNone || value.attribute == kNone ||
            !ioInspection.document.Attribute(value.attribute).hasLineEndOrTab) {
            continue;
        }
        ioInspection.Report(Code::BlanksInAttribute, value.place, value.element, [&value] {
            return Explanation{"line ends and tabs in this attribute are read as blanks into the field " +
                                   std::string(InfoOf(value.field).name),
                               "write &#10; and &#9;, or one blank"};
        });
    }
}

constexpr Rule kRules[] = {
    FindMissingOptionalElements, FindMissingEntries, FindMissingAttributes, FindRepeatedEntries,
    FindIgnoredEntries,          FindCutTexts,       FindNumbers,           FindCharactersOutside,
    FindBlanksInAttributes};

}  // namespace

std::span<const Rule> ValueRules() {
    return kRules;
}
