#include "Commands.h"
#include "Files.h"
#include "Message.h"
#include "SafeText.h"
#include "StandardStreams.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <vector>

namespace {

/** The command line with all commands. */
class CommandLine {
public:
    CommandLine() {
        app.set_version_flag("--version", std::string("qorwfl ") + QORWFL_VERSION);
        app.require_subcommand(1);
        app.footer(
            "Exit status: 0 done, 1 an input is wrong or the output cannot be written, 2 wrong usage.\n"
            "'qorwfl COMMAND --help' tells more about a command.");
        AddExportCommand(app, status);
        AddImportCommand(app, status);
        AddConvertCommand(app, status);
        AddCheckCommand(app, status);
        AddConfigCommand(app, status);
        AddUrlCommand(app, status);
        AddDiffCommand(app, status);
        AddGraphCommand(app, status);
    }

    /** Reads the arguments and does what they ask for. */
    ExitStatus Run(int iCount, const char* const* iArguments) {
        try {
            app.parse(iCount, iArguments);
        } catch (const CLI::RequiredError& missing) {
            // What is there and not known explains more than what is therefore missing.
            const std::vector<std::string> unknown = app.remaining(true);
            return unknown.empty() ? Leave(missing) : Leave(CLI::ExtrasError(unknown));
        } catch (const CLI::ParseError& end) {  // help and version come this way too
            return Leave(end);
        }
        return status;
    }

private:
    ExitStatus Leave(const CLI::ParseError& iEnd) const {
        std::ostringstream help;
        std::ostringstream message;
        const bool asked = app.exit(iEnd, help, message) == 0;
        WriteOutput(help.str());
        std::istringstream lines(message.str());  // which can hold arguments, hence whatever somebody called a file
        for (std::string line; std::getline(lines, line);) {
            std::cerr << SafeText(line) + '\n';
        }
        return asked ? kDone : kWrongUsage;
    }

    CLI::App app{"Connects the workflow actions of a PDM server to an external workflow tool", "qorwfl"};
    ExitStatus status = kDone;
};

}  // namespace

int main(int argc, char** argv) {
    std::signal(SIGPIPE, SIG_IGN);  // a reader that went away is an output that cannot be written
    std::signal(SIGXFSZ, SIG_IGN);  // and so is a file that must not grow as large
    try {
        PrepareStandardStreams();
        return CommandLine().Run(argc, argv);
    } catch (const std::bad_alloc&) {
        Report("not enough memory");
    } catch (const std::exception& error) {
        Report(error.what());
    }
    return kWrongInput;
}
