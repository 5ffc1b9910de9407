#include "Commands.h"
#include "Files.h"
#include "RecordFormat.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>

namespace {

struct Options {
    std::string action;
    std::optional<std::string> config;
};

/** Writes the XPDL document of an action to the standard output. */
void Export(const Options& iOptions) {
    const std::string text = ReadInput(iOptions.action);
    const std::string fileName = InputName(iOptions.action);
    RecordReader reader(iOptions.config);
    ActivityInfo record;
    reader.ReadJson(text, fileName, record);
    WriteOutput(WriteRecord(record, RecordFormat::kXpdl, std::nullopt, fileName));
}

}  // namespace

void AddExportCommand(CLI::App& ioApp, ExitStatus&) {
    CLI::App* command = ioApp.add_subcommand("export", "Print the XPDL document of a workflow action");
    const auto options = std::make_shared<Options>();
    command->add_option("ACTION", options->action, "The action, a JSON file; - for the standard input")
        ->required()
        ->type_name("");
    command
        ->add_option("--config", options->config,
                     "The property file, or the folder with the file QorWflActionManager in it;\n"
                     "without it, that file is looked for along BexMsgCatalogPath")
        ->type_name("FILE_OR_DIR");
    command->footer(
        "Example:\n"
        "  qorwfl export examples/review.json --config examples/QorWflActionManager > review.xpdl");
    command->callback([options] { Export(*options); });
}
