#include "Batch.h"
#include "Commands.h"
#include "CommonOptions.h"
#include "Files.h"
#include "RecordFormat.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>

namespace {

struct Options {
    Batch batch;
    std::optional<std::string> created;
    std::string format = "xpdl";
};

/** Writes the records of actions, as a rule as documents. */
ExitStatus Export(const Options& iOptions) {
    const RecordFormat format = FormatOfName(iOptions.format);
    RequireOneStandardInput(iOptions.batch.inputs, iOptions.batch.config);
    RecordReader reader(iOptions.batch.config);
    return RunBatch(iOptions.batch, EndingOf(format), [&](const std::string& iInput) {
        ActivityInfo record;
        reader.ReadJson(ReadInput(iInput), InputName(iInput), record);
        return Converted{WriteRecord(record, format, iOptions.created, InputName(iInput)), {}, {}};
    });
}

}  // namespace

void AddExportCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("export", "Write workflow actions as XPDL documents");
    const auto options = std::make_shared<Options>();
    AddInputs(*command, options->batch.inputs, "ACTION",
              "The actions, JSON files; - for the standard input. A file with a member \"record\" holds the record "
              "itself");
    AddConfig(*command, options->batch.config);
    AddFormat(*command, "--format", options->format, {"xpdl", "text", "json"},
              "The form of the output: xpdl as a rule, text, or json with every field of the record");
    AddOutput(*command, options->batch.output, "FILE_OR_DIR",
              "The output file instead of the standard output; for several actions, the folder that takes a\n"
              "file for each, named after it. It is made when it is not there");
    AddJobs(*command, options->batch.jobs);
    AddCreated(*command, options->created);
    command->footer(
        "Of several actions, each that fails is told with its file, and the rest is exported all the same.\n"
        "\n"
        "Example:\n"
        "  qorwfl export examples/review.json --config examples/QorWflActionManager -o review.xpdl");
    command->callback([options, &oStatus] { oStatus = Export(*options); });
}
