#include "Commands.h"
#include "CommonOptions.h"
#include "ConfigExplanation.h"
#include "ConfigReport.h"
#include "Files.h"
#include "Terminal.h"
#include "UserText.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>
#include <string>
#include <unistd.h>

namespace {

/** What the subcommands of config share and have of their own. */
struct Options {
    std::optional<std::string> config;
    std::string format = "text";
    bool isStrict = false;
    std::string environment;
    std::string table;

    bool IsJson() const { return format == "json"; }
};

void Check(const Options& iOptions, ExitStatus& oStatus) {
    const ExaminedConfig examined(iOptions.config);
    WriteOutput(iOptions.IsJson() ? FindingsAsJson(examined) : FindingsAsText(examined, MayDecorate(STDOUT_FILENO)));
    const bool isWrong =
        examined.Count(Severity::Error) > 0 || (iOptions.isStrict && examined.Count(Severity::Warning) > 0);
    oStatus = isWrong ? kWrongInput : kDone;
}

void Show(const Options& iOptions) {
    const ExaminedConfig examined(iOptions.config);
    WriteOutput(iOptions.IsJson() ? ConfigAsJson(examined) : ConfigAsText(examined, MayDecorate(STDOUT_FILENO)));
}

void Explain(const Options& iOptions) {
    const ExaminedConfig examined(iOptions.config);
    const ConfigExplanation explanation(examined.config, FromUser(iOptions.environment), FromUser(iOptions.table));
    WriteOutput(iOptions.IsJson() ? ExplanationAsJson(examined, explanation)
                                  : ExplanationAsText(examined, explanation));
}

void AddFormat(CLI::App& ioCommand, Options& oOptions) {
    ::AddFormat(ioCommand, "--format", oOptions.format, {"text", "json"}, "text, or json for programs");
}

void AddCheck(CLI::App& ioConfig, const std::shared_ptr<Options>& iOptions, ExitStatus& oStatus) {
    CLI::App* command = ioConfig.add_subcommand("check", "Look for what is wrong in a property file");
    AddPropertyFile(*command, "FILE", iOptions->config)->type_name("");
    AddFormat(*command, *iOptions);
    command->add_flag("--strict", iOptions->isStrict, "Let warnings fail as errors do");
    command->footer(
        "Each finding has a code, QC101 and the like; docs/config-codes.md tells what they mean and what to do.\n"
        "Exit status: 0 no errors, 1 errors, or with --strict warnings, 2 wrong usage.\n"
        "\n"
        "Example:\n"
        "  qorwfl config check examples/QorWflActionManager");
    command->callback([iOptions, &oStatus] { Check(*iOptions, oStatus); });
}

void AddShow(CLI::App& ioConfig, const std::shared_ptr<Options>& iOptions) {
    CLI::App* command = ioConfig.add_subcommand("show", "Show a property file as the library sees it");
    AddConfig(*command, iOptions->config);
    AddFormat(*command, *iOptions);
    command->footer(
        "Example:\n"
        "  qorwfl config show --config examples/QorWflActionManager");
    command->callback([iOptions] { Show(*iOptions); });
}

void AddExplain(CLI::App& ioConfig, const std::shared_ptr<Options>& iOptions) {
    CLI::App* command = ioConfig.add_subcommand("explain", "Tell how the type of an object is found");
    command->add_option("--environment", iOptions->environment, "The environment of the object")
        ->required()
        ->type_name("ENVIRONMENT");
    command->add_option("--table", iOptions->table, "The table of the object")->required()->type_name("TABLE");
    AddConfig(*command, iOptions->config);
    AddFormat(*command, *iOptions);
    command->footer(
        "Example:\n"
        "  qorwfl config explain --environment PROD --table DOC_STD --config examples/QorWflActionManager");
    command->callback([iOptions] { Explain(*iOptions); });
}

}  // namespace

void AddConfigCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command = ioApp.add_subcommand("config", "Check, show or explain a property file");
    const auto options = std::make_shared<Options>();
    AddCheck(*command, options, oStatus);
    AddShow(*command, options);
    AddExplain(*command, options);
    command->require_subcommand(1);
    command->footer(
        "'qorwfl config COMMAND --help' tells more about a command.\n"
        "\n"
        "Example:\n"
        "  qorwfl config check examples/QorWflActionManager");
}
