#include "CommonOptions.h"

#include "XpdlText.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

constexpr int kMaxJobs = 256;

}  // namespace

CLI::Option* TakesName(CLI::Option* ioOption) {
    return ioOption->check(
        CLI::Validator([](const std::string& iName) { return iName.empty() ? "a name is needed" : ""; }, ""));
}

void AddInputs(CLI::App& ioCommand, std::vector<std::string>& oInputs, const char* iName, const char* iDescription) {
    TakesName(ioCommand.add_option(iName, oInputs, iDescription))->required()->type_name("");
}

void AddInput(CLI::App& ioCommand, std::string& oInput, const char* iName, const char* iDescription) {
    TakesName(ioCommand.add_option(iName, oInput, iDescription))->required()->type_name("");
}

CLI::Option* AddPropertyFile(CLI::App& ioCommand, const char* iName, std::optional<std::string>& oConfig) {
    return TakesName(
        ioCommand.add_option(iName, oConfig,
                             "The property file, or the folder with the file QorWflActionManager in it;\n"
                             "- for the standard input; without it, that file is looked for along BexMsgCatalogPath"));
}

void AddConfig(CLI::App& ioCommand, std::optional<std::string>& oConfig) {
    AddPropertyFile(ioCommand, "--config", oConfig)->type_name("FILE_OR_DIR");
}

CLI::Option* AddFormat(CLI::App& ioCommand, const char* iOption, std::string& oFormat,
                       std::initializer_list<const char*> iFormats, const char* iDescription) {
    return ioCommand.add_option(iOption, oFormat, iDescription)
        ->check(CLI::IsMember(std::vector<std::string>(iFormats.begin(), iFormats.end())))
        ->type_name("FORMAT");
}

void AddCreated(CLI::App& ioCommand, std::optional<std::string>& oCreated) {
    ioCommand
        .add_option("--created", oCreated,
                    "The Created text of an XPDL document, for files that can be made again byte for byte;\n"
                    "without it, the current time")
        ->check(CLI::Validator([](std::string& ioText) { return WhyNotCreated(ioText); }, ""))
        ->type_name("TEXT");
}

void AddOutput(CLI::App& ioCommand, std::optional<std::string>& oOutput, const char* iType, const char* iDescription) {
    TakesName(ioCommand.add_option("-o,--output", oOutput, iDescription))->type_name(iType);
}

void AddJobs(CLI::App& ioCommand, int& oJobs) {
    ioCommand.add_option("--jobs", oJobs, "How many processes work at a time on several inputs; 1 as a rule")
        ->check(CLI::Range(1, kMaxJobs))
        ->type_name("N");
}

void RequireOneStandardInput(const std::vector<std::string>& iInputs, const std::optional<std::string>& iConfig) {
    if (iConfig == "-" && std::find(iInputs.begin(), iInputs.end(), "-") != iInputs.end()) {
        RefuseUsage("the standard input can be the property file or an input, not both");
    }
}

void RefuseUsage(const std::string& iMessage) {
    throw CLI::ValidationError(iMessage);
}
