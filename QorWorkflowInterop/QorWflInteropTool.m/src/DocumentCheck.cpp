#include "DocumentCheck.h"

#include "CheckRules.h"
#include "Failure.h"
#include "Files.h"
#include "ReaderProbe.h"
#include "SafeText.h"
#include "Unicode.h"

#include <BexXMLParser.h>
#include <DOMParser.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

/** An error of the parser that has a code of its own, by how its message begins. */
struct ParserError {
    std::u16string_view message;
    Code code;
    const char* hint;
};

const ParserError kParserErrors[] = {
    {u"elements are nested too deep", Code::BeyondLimit, "nest no more than 1,024 elements"},
    {u"an element has too many attributes", Code::BeyondLimit, "give an element no more than 1,024 attributes"},
    {u"the text has too many distinct element names", Code::BeyondLimit, "use no more than 16,384 names of elements"},
    {u"the text has too many distinct attribute names", Code::BeyondLimit,
     "use no more than 16,384 names of attributes"},
    {u"too many names have the same hash", Code::BeyondLimit, "use names that were not chosen to slow the reader down"},
    {u"a document type with declarations", Code::DocumentTypeDeclares,
     "take the document type out and write what its entities stand for"},
    {u"the document type is not", Code::DocumentTypeDeclares, "take the document type out"},
    {u"entity '", Code::EntityNotDeclared, "write the character itself, or a reference such as &#228;"},
    {u"the text is not in UTF-8", Code::EncodingNotFollowed,
     "save the document in UTF-8, or declare the encoding that it is in"},
    {u"the encoding is not known", Code::EncodingNotFollowed, "declare the encoding that the document is in"},
    {u"a NUL character", Code::NulCharacter, "see whether the document was cut, or is in UTF-16"},
};

/** What is said of a document that is refused. */
void Refuse(const DOMParser& iParser, FileReport& oReport) {
    const std::u16string_view message = iParser.getErrorText().view();
    Code code = Code::NotWellFormed;
    const char* hint = "repair the document at this place";
    for (const ParserError& error : kParserErrors) {
        if (message.substr(0, error.message.size()) == error.message) {
            code = error.code;
            hint = error.hint;
        }
    }
    if (message.find(u"is not representable in") != std::u16string_view::npos) {
        code = Code::EncodingNotFollowed;
        hint = "declare the encoding that the document is in";
    }
    oReport.verdict = Verdict::Refused;
    oReport.statement = "refused; the record stays as it was";
    for (const FieldInfo& field : AllFields()) {
        AddName(field, oReport.keptFields);
    }
    if (oReport.findings.Takes(code)) {
        oReport.findings.Add(
            {code, {iParser.getErrorLine(), iParser.getErrorColumn()}, "", SafeText(ToUtf8(message)), hint});
    }
}

/** "element" and 3 become "3 elements". */
std::string Counted(std::size_t iCount, const std::string& iSingular) {
    static const std::string kPlaces[] = {" of ", " in ", " with "};
    if (iCount == 1) {
        return "1 " + iSingular;
    }
    std::size_t end = iSingular.size();
    for (const std::string& place : kPlaces) {
        end = std::min(end, iSingular.find(place));
    }
    std::string plural = iSingular;
    const bool isY = plural[end - 1] == 'y';
    return std::to_string(iCount) + ' ' + plural.replace(isY ? end - 1 : end, isY ? 1 : 0, isY ? "ies" : "s");
}

/** What a document loses, counted by kind, the worse first; empty when nothing. */
std::string Losses(const FindingList& iFindings) {
    std::string losses;
    for (const Severity severity : {Severity::Warning, Severity::Note}) {
        for (const CodeInfo& info : AllCodes()) {
            if (info.severity == severity && *info.lost != '\0' && iFindings.Count(info.code) > 0) {
                losses += (losses.empty() ? "" : ", ") + Counted(iFindings.Count(info.code), info.lost);
            }
        }
    }
    return losses;
}

void Judge(const XpdlReading& iReading, FileReport& ioReport) {
    ioReport.setFields = iReading.SetFields();
    ioReport.keptFields = iReading.KeptFields();
    const std::string losses = Losses(ioReport.findings);
    if (iReading.Stops()) {
        ioReport.verdict = Verdict::Stops;
        ioReport.stopsAt = iReading.PathOf(iReading.Missing().front());
        ioReport.statement = "stops at " + ioReport.stopsAt;
    } else if (!losses.empty()) {
        ioReport.verdict = Verdict::Loses;
        ioReport.statement = "loses " + losses;
    } else {
        ioReport.statement = "read whole";
    }
}

/** Applies all rules to a document that the parser takes in. */
void Inspect(const std::string& iBytes, const DOM_Document& iDocument, FileReport& oReport) {
    const PositionedDocument document(iBytes, iDocument);
    const XpdlReading reading(document);
    CompareWithReader(iBytes, reading);
    Inspection inspection(reading, oReport.findings);
    for (const std::span<const Rule> rules : {StructureRules(), ValueRules(), AfterlifeRules()}) {
        for (const Rule rule : rules) {
            rule(inspection);
        }
    }
    oReport.findings.Sort();
    Judge(reading, oReport);
}

void CheckBytes(const std::string& iBytes, FileReport& oReport) {
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(iBytes.data(), static_cast<int>(iBytes.size()), "XPDL"));
    if (!source) {
        throw Failure(InputName(oReport.path) + ": the XML parser cannot be started");
    }
    DOMParser parser;
    parser.parse(*source);
    if (parser.getDocument() == nullptr) {
        Refuse(parser, oReport);
    } else {
        Inspect(iBytes, parser.getDocument(), oReport);
    }
}

}  // namespace

const char* NameOf(Verdict iVerdict) {
    switch (iVerdict) {
        case Verdict::ReadWhole:
            return "readWhole";
        case Verdict::Loses:
            return "loses";
        case Verdict::Stops:
            return "stops";
        case Verdict::Refused:
            return "refused";
        case Verdict::Unread:
            break;
    }
    return "unread";
}

FileReport CheckFile(const std::string& iPath) {
    FileReport report;
    report.path = iPath;
    std::string bytes;
    try {
        bytes = ReadInput(iPath);
    } catch (const Failure& failure) {
        report.verdict = Verdict::Unread;
        report.statement = "cannot be read";
        if (report.findings.Takes(Code::CannotBeRead)) {
            const std::string beginning = InputName(iPath) + ": ";
            report.findings.Add({Code::CannotBeRead,
                                 {},
                                 "",
                                 SafeText(std::string_view(failure.what()).substr(beginning.size())),
                                 "see whether the name is right and the file may be read"});
        }
        return report;
    }
    try {
        CheckBytes(bytes, report);
    } catch (const std::logic_error& error) {
        throw std::logic_error(InputName(iPath) + ": " + error.what());
    }
    return report;
}
