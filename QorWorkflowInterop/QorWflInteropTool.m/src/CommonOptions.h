#ifndef CommonOptions_H
#define CommonOptions_H

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

/** @file Options that more than one command has, so that they are called and described alike. */

/** Lets an option or a positional take the name of a file or folder: an empty one is wrong usage. */
CLI::Option* TakesName(CLI::Option* ioOption);
/** The inputs, one or several. */
void AddInputs(CLI::App& ioCommand, std::vector<std::string>& oInputs, const char* iName, const char* iDescription);
/** One input. */
void AddInput(CLI::App& ioCommand, std::string& oInput, const char* iName, const char* iDescription);
/** The property file, or its folder, or "-" for the standard input, under a name of its own. */
CLI::Option* AddPropertyFile(CLI::App& ioCommand, const char* iName, std::optional<std::string>& oConfig);
/** --config: the property file. */
void AddConfig(CLI::App& ioCommand, std::optional<std::string>& oConfig);
/** A format, under an option's own name, one of those listed. */
CLI::Option* AddFormat(CLI::App& ioCommand, const char* iOption, std::string& oFormat,
                       std::initializer_list<const char*> iFormats, const char* iDescription);
/** --created: the text of a document that otherwise is the time. */
void AddCreated(CLI::App& ioCommand, std::optional<std::string>& oCreated);
/** -o, --output: where the output goes. */
void AddOutput(CLI::App& ioCommand, std::optional<std::string>& oOutput, const char* iType, const char* iDescription);
/** --jobs: how many processes work at a time. */
void AddJobs(CLI::App& ioCommand, int& oJobs);

/** Refuses a standard input that is both the property file and an input. */
void RequireOneStandardInput(const std::vector<std::string>& iInputs, const std::optional<std::string>& iConfig);

/** Ends the command as one that was not called rightly: with this message and exit status 2. */
[[noreturn]] void RefuseUsage(const std::string& iMessage);

#endif
