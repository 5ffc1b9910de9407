#include "CheckFindings.h"

namespace {

constexpr std::array kCodes = {
    CodeInfo{Code::NotWellFormed, "QW001", Severity::Error, "not well-formed",
             "The text breaks a rule of XML, and the reader takes nothing of it. Repair it at the place that is told; "
             "what follows may be wrong as well."},
    CodeInfo{
        Code::BeyondLimit, "QW002", Severity::Error, "beyond a limit",
        "The reader refuses elements more than 1,024 deep, more than 1,024 attributes of an element, and more than "
        "16,384 distinct names of elements or of attributes. Have the sender write less."},
    CodeInfo{Code::DocumentTypeDeclares, "QW003", Severity::Error, "document type with declarations",
             "The reader refuses a document type that declares something itself or is not well-formed. Take the "
             "document type out and write what its entities stand for."},
    CodeInfo{
        Code::EntityNotDeclared, "QW004", Severity::Error, "unknown entity",
        "The reader knows the entities amp, lt, gt, quot and apos alone. Write the character itself or a character "
        "reference such as &#228;."},
    CodeInfo{Code::EncodingNotFollowed, "QW005", Severity::Error, "encoding not known or not followed",
             "The bytes are not in the encoding that the document declares (UTF-8 if it declares none), or that "
             "encoding is not known. Declare the encoding in which the document was saved."},
    CodeInfo{Code::NulCharacter, "QW006", Severity::Error, "NUL character",
             "A NUL character is not allowed anywhere in a document. Often a document in UTF-16 was cut or joined with "
             "another, or declares another encoding than it has."},
    CodeInfo{Code::CannotBeRead, "QW007", Severity::Error, "cannot be opened or read",
             "The file is not there, is a folder, may not be read, or has more than 2,147,483,647 bytes."},
    CodeInfo{Code::RequiredMissing, "QW101", Severity::Error, "required element missing",
             "The reader stops at the first required element that is not there; the fields that it would have read "
             "from there on stay as they were. Add the element; it may be empty."},
    CodeInfo{Code::RequiredUnderOtherName, "QW102", Severity::Error, "required element under another name",
             "The reader compares names as they stand: with a namespace prefix or with letters of another case the "
             "element is another one. Write the name without prefix, as the reader looks for it."},
    CodeInfo{Code::ElementIgnored, "QW201", Severity::Note, "element ignored",
             "The reader does not look for the element and passes over everything in it. Nothing has to be done unless "
             "something in it is to get into the record.",
             "element"},
    CodeInfo{Code::AttributeIgnored, "QW202", Severity::Note, "attribute ignored",
             "The reader takes the element, but does not look for this attribute. Nothing has to be done unless its "
             "value is to get into the record.",
             "attribute"},
    CodeInfo{Code::ProcessIgnored, "QW203", Severity::Warning, "further process ignored",
             "The reader takes the first WorkflowProcess alone. Send a document for each process.", "process"},
    CodeInfo{Code::ActivityIgnored, "QW204", Severity::Warning, "further activity ignored",
             "The reader takes the first Activity of the process alone. Send a document for each activity, or put the "
             "one that is meant first.",
             "activity"},
    CodeInfo{Code::ParticipantIgnored, "QW205", Severity::Warning, "further participant ignored",
             "The reader takes the first Participant alone. Put the one that is meant first.", "participant"},
    CodeInfo{Code::RepeatedElementIgnored, "QW206", Severity::Warning, "repeated element ignored",
             "The reader takes the first element of this name alone. Join the two, or take one out.",
             "repeated element"},
    CodeInfo{Code::EntryRepeated, "QW207", Severity::Warning, "extended attribute repeated",
             "Of several extended attributes of one name one counts: the first in a data field, elsewhere the last. "
             "Take the others out.",
             "repeated extended attribute"},
    CodeInfo{Code::EntryIgnored, "QW208", Severity::Note, "extended attribute ignored",
             "The reader does not look for an extended attribute of this name. Names are compared as they stand.",
             "extended attribute"},
    CodeInfo{Code::NameNotQuite, "QW209", Severity::Warning, "name differs by prefix or case",
             "But for its namespace prefix or the case of its letters the reader would look for this element or "
             "attribute; so it is ignored. Write the name as the reader looks for it.",
             "misnamed part"},
    CodeInfo{Code::TextIgnored, "QW210", Severity::Warning, "text where none is read",
             "The reader takes no text from this element. Put the text where it is read.", "text"},
    CodeInfo{Code::DocumentTypePassed, "QW211", Severity::Note, "document type not followed",
             "The reader reads past a document type that names another file, and loads nothing. Default values that "
             "the other file declares are not there.",
             "document type"},
    CodeInfo{Code::RootName, "QW212", Severity::Note, "root not called Package",
             "The reader takes a root of any name for the package. Another name may mean that this is another kind of "
             "document."},
    CodeInfo{Code::TextCut, "QW301", Severity::Warning, "text cut",
             "The reader takes the first piece of text and leaves what stands behind a comment, an element, a "
             "processing instruction or a CDATA section. Write the text in one piece.",
             "piece of text"},
    CodeInfo{Code::TextInCDataSection, "QW302", Severity::Warning, "text in a CDATA section not read",
             "The reader takes plain text alone. Write &lt; and &amp; instead of a CDATA section.",
             "text in a CDATA section"},
    CodeInfo{Code::NumberNotConverted, "QW303", Severity::Warning, "not a number",
             "The text does not begin with a decimal number, or the number does not fit; the field keeps its value. "
             "Write the number in digits.",
             "number"},
    CodeInfo{Code::NumberCut, "QW304", Severity::Warning, "number with more behind it",
             "The reader takes the number in front and leaves the rest. Write the number alone.", "rest of a number"},
    CodeInfo{Code::OutsideEncoding, "QW305", Severity::Warning, "character outside ISO-8859-1",
             "Records hold ISO-8859-1; every other character becomes a question mark. Write the value with characters "
             "that the encoding has.",
             "value with other characters"},
    CodeInfo{Code::BlanksInAttribute, "QW306", Severity::Warning, "line end or tab in an attribute",
             "XML makes a blank of a line end or tab that stands in an attribute as it is. Write &#10; or &#9;, or one "
             "blank if that is what is meant.",
             "attribute with line ends or tabs"},
    CodeInfo{Code::AttributeMissing, "QW307", Severity::Note, "attribute missing",
             "The attribute is not there, so the field becomes an empty text. Add the attribute if it has a value."},
    CodeInfo{Code::ElementMissing, "QW308", Severity::Note, "optional element missing",
             "The element is not there, so the field keeps the value that it had before the reading. Add the element "
             "if the field is to be set."},
    CodeInfo{Code::ParticipantsMissing, "QW309", Severity::Note, "no participants",
             "Without Participants the performer stands in as a participant of type HUMAN; without a performer both "
             "fields become null. Add a Participants element."},
    CodeInfo{Code::RecordTextQuote, "QW401", Severity::Warning, "quote in a value",
             "In the text form of a record a value ends at its first double quote when it is read back. Keep such "
             "values out of that form, or use other quotes."},
    CodeInfo{Code::RecordTextLength, "QW402", Severity::Warning, "value of more than 79 characters",
             "In the text form of a record a value is cut to 79 characters when it is read back. Keep such values out "
             "of that form."},
    CodeInfo{Code::RecordTextOutOfStep, "QW403", Severity::Warning, "value that brings the record text out of step",
             "Behind the place where the text form cuts the value comes a line end, or as much as its reader skips. "
             "What follows can get into other fields when it is read back. Keep such values out of that form."},
    CodeInfo{Code::WrittenAttributeBlanks, "QW404", Severity::Warning, "line end or tab for an attribute",
             "The value holds a line end or tab. Written to a document it stands in an attribute, where the next "
             "reader finds a blank. Use a blank."},
    CodeInfo{Code::WrittenCarriageReturn, "QW405", Severity::Warning, "carriage return in a text",
             "The value holds a carriage return. Written to a document the next reader finds a line feed in its place. "
             "Use a line feed."},
    CodeInfo{Code::WrittenEmptyText, "QW406", Severity::Note, "empty text",
             "The element has no text, so the field becomes empty. Written to a document the next reader finds a line "
             "feed in it. Leave the element out where it is optional."},
    CodeInfo{Code::WrittenControlCharacter, "QW407", Severity::Warning, "control character",
             "XML 1.1 has this character, XML 1.0 has not. Written to a document, which is XML 1.0, the next reader "
             "refuses it as a whole. Take the character out."},
};

constexpr bool AreInOrder() {
    for (std::size_t i = 0; i < kCodes.size(); ++i) {
        if (static_cast<std::size_t>(kCodes[i].code) != i) {
            return false;
        }
    }
    return kCodes.size() == static_cast<std::size_t>(Code::WrittenControlCharacter) + 1;
}
static_assert(AreInOrder(), "InfoOf() finds a code by its position");

}  // namespace

std::span<const CodeInfo> AllCodes() {
    return kCodes;
}

const CodeInfo& InfoOf(Code iCode) {
    return kCodes[static_cast<std::size_t>(iCode)];
}
