#include "Batch.h"
#include "Commands.h"
#include "CommonOptions.h"
#include "Files.h"
#include "RecordFormat.h"
#include "XpdlText.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace {

struct Options {
    Batch batch;
    std::string format = "text";
};

/** The record of a document, as far as it is read. */
Converted Import(const std::string& iInput, RecordFormat iFormat) {
    const std::string fileName = InputName(iInput);
    ActivityInfo record;
    const std::optional<std::string> missing = XpdlToRecord(ReadInput(iInput), fileName, record);
    Converted converted{WriteRecord(record, iFormat, std::nullopt, fileName), {}, {}};
    if (missing) {
        converted.failure = fileName + ": " + *missing + ": required element missing; the reading stopped there";
    }
    return converted;
}

}  // namespace

void AddImportCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("import", "Write the records that XPDL documents hold");
    const auto options = std::make_shared<Options>();
    AddInputs(*command, options->batch.inputs, "FILE", "The documents; - for the standard input");
    AddFormat(*command, "--format", options->format, {"text", "json"},
              "The form of the output: text as a rule, or json with every field of the record");
    AddOutput(*command, options->batch.output, "FILE_OR_DIR",
              "The output file instead of the standard output; for several documents, the folder that takes a\n"
              "file for each, named after it. It is made when it is not there");
    AddJobs(*command, options->batch.jobs);
    command->footer(
        "Of a document in which a required element is missing, the record is written as far as it is read, with exit\n"
        "status 1. 'qorwfl export' makes a document again of what --format json writes.\n"
        "\n"
        "Example:\n"
        "  qorwfl import examples/reply.xpdl");
    command->callback([options, &oStatus] {
        const RecordFormat format = FormatOfName(options->format);
        oStatus = RunBatch(options->batch, EndingOf(format),
                           [format](const std::string& iInput) { return Import(iInput, format); });
    });
}
