#include "CheckOutput.h"
#include "Commands.h"
#include "CommonOptions.h"
#include "InputFiles.h"
#include "OutputFile.h"
#include "Terminal.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

struct Options {
    std::vector<std::string> files;
    std::string format = "text";
    std::string output = "-";
    bool strict = false;
};

std::string Printed(const std::vector<FileReport>& iReports, const Options& iOptions) {
    if (iOptions.format == "json") {
        return CheckAsJson(iReports);
    }
    if (iOptions.format == "sarif") {
        return CheckAsSarif(iReports);
    }
    return CheckAsText(iReports, iOptions.output == "-" && MayDecorate(STDOUT_FILENO));
}

bool IsWrong(const FileReport& iReport, bool iStrict) {
    return iReport.findings.Count(Severity::Error) > 0 || (iStrict && iReport.findings.Count(Severity::Warning) > 0);
}

/** Checks all files, and tells about all of them at the end. */
ExitStatus Check(const Options& iOptions) {
    if (InputFiles(iOptions.files).Contains(iOptions.output)) {
        RefuseUsage("the findings would be written to " + iOptions.output + ", which is an input");
    }
    std::vector<FileReport> reports;
    reports.reserve(iOptions.files.size());
    for (const std::string& file : iOptions.files) {
        reports.push_back(CheckFile(file));
    }
    WriteFile(iOptions.output, Printed(reports, iOptions));
    const bool isWrong = std::any_of(reports.begin(), reports.end(), [&iOptions](const FileReport& iReport) {
        return IsWrong(iReport, iOptions.strict);
    });
    return isWrong ? kWrongInput : kDone;
}

}  // namespace

void AddCheckCommand(CLI::App& ioApp, ExitStatus& oStatus) {
    CLI::App* command =
        ioApp.add_subcommand("check", "Tell what the reader takes of XPDL documents, and what it loses");
    const auto options = std::make_shared<Options>();
    AddInputs(*command, options->files, "FILE", "The documents; - for the standard input");
    AddFormat(*command, "--format", options->format, {"text", "json", "sarif"},
              "text for people, json, or sarif for editors and code review");
    command->add_flag("--strict", options->strict, "Let warnings fail as errors do");
    TakesName(command->add_option("-o,--output", options->output,
                                  "The file that takes the findings; - for the standard output, which is the default"))
        ->type_name("FILE");
    command->footer(
        "Each finding has a code, QW101 and the like; docs/check-codes.md tells what they mean and what to do.\n"
        "Exit status: 0 no errors, 1 errors, or with --strict warnings, 2 wrong usage.\n"
        "\n"
        "Examples:\n"
        "  qorwfl check examples/reply.xpdl\n"
        "  qorwfl check --format sarif -o check.sarif replies/*.xpdl");
    command->callback([options, &oStatus] { oStatus = Check(*options); });
}
