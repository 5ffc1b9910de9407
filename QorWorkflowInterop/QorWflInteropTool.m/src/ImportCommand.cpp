#include "Commands.h"
#include "Failure.h"
#include "Files.h"
#include "RequiredElements.h"
#include "Unicode.h"

#include <BexXMLParser.h>
#include <DOMParser.h>
#include <QorWflInteropInfo.h>
#include <QorWflXmlToActivity.h>

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <sstream>

namespace {

/** Parses a document for what the library's reader, which has no result, does not tell. */
DOM_Document ParseDocument(const std::string& iText, const std::string& iFileName) {
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(iText.data(), static_cast<int>(iText.size()), iFileName.c_str()));
    if (!source) {
        throw Failure(iFileName + ": the XML parser cannot be started");
    }
    DOMParser parser;
    parser.parse(*source);
    if (parser.getDocument() == nullptr) {
        std::string place = iFileName;
        if (parser.getErrorLine() != 0) {
            place += ':' + std::to_string(parser.getErrorLine()) + ':' + std::to_string(parser.getErrorColumn());
        }
        throw Failure(place + ": " + ToUtf8(parser.getErrorText().view()));
    }
    return parser.getDocument();
}

/** The record of a document in its text form, with a line feed at its end. */
std::string RecordText(const std::string& iText) {
    ActivityInfo record;
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iText), record);
    std::ostringstream text;
    text << record << '\n';
    return text.str();
}

/** Writes the record of a document to the standard output. */
void Import(const std::string& iDocumentFile) {
    const std::string text = ReadInput(iDocumentFile);
    const std::string fileName = InputName(iDocumentFile);
    const DOM_Document document = ParseDocument(text, fileName);
    WriteOutput(RecordText(text));
    if (const std::optional<std::string> missing = FindMissingElement(document)) {
        throw Failure(fileName + ": " + *missing + ": required element missing; the reading stopped there");
    }
}

}  // namespace

void AddImportCommand(CLI::App& ioApp, ExitStatus&) {
    CLI::App* command = ioApp.add_subcommand("import", "Print the record that an XPDL document holds");
    const auto file = std::make_shared<std::string>();
    command->add_option("FILE", *file, "The document; - for the standard input")->required()->type_name("");
    command->footer(
        "A document in which a required element is missing is printed as far as it is read, with exit status 1.\n"
        "\n"
        "Example:\n"
        "  qorwfl import examples/reply.xpdl");
    command->callback([file] { Import(*file); });
}
