#include "Batch.h"
#include "Commands.h"
#include "CommonOptions.h"
#include "Files.h"
#include "RecordFormat.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace {

struct Options {
    std::string from;
    std::string to;
    std::string input;
    std::optional<std::string> output;
    std::optional<std::string> config;
    std::optional<std::string> created;
};

/** Writes a record in another form. */
ExitStatus Convert(const Options& iOptions) {
    const RecordFormat to = FormatOfName(iOptions.to);
    RequireOneStandardInput({iOptions.input}, iOptions.config);
    RecordReader reader(iOptions.config);
    const Batch batch{{iOptions.input}, iOptions.output, 1, iOptions.config};
    return RunBatch(batch, EndingOf(to), [&](const std::string& iInput) {
        const std::string fileName = InputName(iInput);
        ActivityInfo record;
        Converted converted;
        reader.Read(ReadInput(iInput), fileName, FormatOfName(iOptions.from), record, converted.warnings);
        converted.bytes = WriteRecord(record, to, iOptions.created, fileName);
        return converted;
    });
}

}  // namespace

void AddConvertCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("convert", "Turn a record from one form into another");
    const auto options = std::make_shared<Options>();
    AddFormat(*command, "--from", options->from, {"xpdl", "text", "json"}, "The form of the input")->required();
    AddFormat(*command, "--to", options->to, {"xpdl", "text", "json"}, "The form of the output")->required();
    AddInput(*command, options->input, "FILE", "The document, record text, action or record; - for the standard input");
    AddOutput(*command, options->output, "FILE_OR_DIR",
              "The output file, or a folder that takes one, instead of the standard output");
    AddConfig(*command, options->config);
    AddCreated(*command, options->created);
    command->footer(
        "A value that the record text form has cut is told, with exit status 0.\n"
        "\n"
        "Example:\n"
        "  qorwfl convert --from xpdl --to json examples/reply.xpdl -o reply.json");
    command->callback([options, &oStatus] { oStatus = Convert(*options); });
}
