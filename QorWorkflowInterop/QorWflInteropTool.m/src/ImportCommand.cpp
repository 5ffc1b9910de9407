#include "Commands.h"
#include "Failure.h"
#include "Files.h"
#include "RecordText.h"
#include "XpdlText.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace {

/** Writes the record of a document to the standard output. */
void Import(const std::string& iDocumentFile) {
    const std::string text = ReadInput(iDocumentFile);
    const std::string fileName = InputName(iDocumentFile);
    ActivityInfo record;
    const std::optional<std::string> missing = XpdlToRecord(text, fileName, record);
    WriteOutput(RecordToText(record, fileName));
    if (missing) {
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
