#ifndef ToolRun_H
#define ToolRun_H

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

/** What a program left behind. */
struct ToolResult {
    int status = -1;  ///< the exit status; 1000 and the signal's number when a signal ended it
    std::string out;
    std::string err;
};

std::ostream& operator<<(std::ostream& ioStream, const ToolResult& iResult);

/** How a program is run. It has an empty current folder unless told otherwise. */
struct ToolSettings {
    std::string input{};                               ///< the standard input
    std::map<std::string, std::string> environment{};  ///< variables to set; the command's own are unset otherwise
    std::string folder{};                              ///< the current folder, empty for one of its own
    std::string output{};                              ///< a file that takes the standard output instead
    bool brokenPipe = false;                           ///< the standard output is a pipe that nobody reads
};

/** Runs a program to its end. */
ToolResult RunProgram(const std::string& iProgram, const std::vector<std::string>& iArguments,
                      const ToolSettings& iSettings = {});
/** Runs the command. */
ToolResult RunTool(const std::vector<std::string>& iArguments, const ToolSettings& iSettings = {});

/** The bytes of a file; the test fails when it cannot be read. */
std::string FileBytes(const std::string& iPath);
/** A document with its `Created` text, which is the time of the export, replaced by a fixed one. */
std::string MaskCreated(const std::string& iDocument);
/** The path of a file in the folder of examples. */
std::string Example(const std::string& iName);

#endif
