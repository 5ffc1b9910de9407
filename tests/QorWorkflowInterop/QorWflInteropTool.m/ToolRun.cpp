#include "ToolRun.h"

#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <ostream>
#include <regex>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/** Opens a file as one of the standard streams; only in the child. */
void Redirect(const std::string& iPath, int iFlags, int iNumber) {
    const int file = ::open(iPath.c_str(), iFlags, 0600);
    if (file < 0 || ::dup2(file, iNumber) < 0) {
        ::_exit(125);
    }
    ::close(file);
}

/** Makes the standard output a pipe whose reader is gone; only in the child. */
void RedirectToBrokenPipe() {
    int ends[2];
    if (::pipe(ends) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) {
        ::_exit(125);
    }
    ::close(ends[0]);
    ::close(ends[1]);
}

[[noreturn]] void Become(const std::string& iProgram, const std::vector<std::string>& iArguments,
                         const ToolSettings& iSettings) {
    for (const char* variable : {"BexMsgCatalogPath", "BexQorTrace", "TMPDIR"}) {
        ::unsetenv(variable);
    }
    for (const auto& [name, value] : iSettings.environment) {
        ::setenv(name.c_str(), value.c_str(), 1);
    }
    std::vector<std::string> words{iProgram};
    words.insert(words.end(), iArguments.begin(), iArguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    ::execv(iProgram.c_str(), pointers.data());
    ::_exit(126);
}

}  // namespace

std::ostream& operator<<(std::ostream& ioStream, const ToolResult& iResult) {
    return ioStream << "status " << iResult.status << "\nstandard output:\n"
                    << iResult.out << "\nstandard error:\n"
                    << iResult.err;
}

ToolResult RunProgram(const std::string& iProgram, const std::vector<std::string>& iArguments,
                      const ToolSettings& iSettings) {
    const TemporaryDirectory streams;
    const TemporaryDirectory empty;
    const std::string input = streams.Write("in", iSettings.input);
    const std::string out = iSettings.output.empty() ? streams.Write("out", "") : iSettings.output;
    const std::string err = streams.Write("err", "");
    const std::string folder = iSettings.folder.empty() ? empty.Path().string() : iSettings.folder;
    const pid_t child = ::fork();
    if (child == 0) {
        Redirect(input, O_RDONLY, STDIN_FILENO);
        Redirect(out, O_WRONLY, STDOUT_FILENO);
        if (iSettings.brokenPipe) {
            RedirectToBrokenPipe();
        }
        Redirect(err, O_WRONLY, STDERR_FILENO);
        if (::chdir(folder.c_str()) != 0) {
            ::_exit(125);
        }
        Become(iProgram, iArguments, iSettings);
    }
    ToolResult result;
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child) {
        ADD_FAILURE() << "cannot run " << iProgram;
        return result;
    }
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    result.out = iSettings.output.empty() ? FileBytes(out) : "";
    result.err = FileBytes(err);
    return result;
}

ToolResult RunTool(const std::vector<std::string>& iArguments, const ToolSettings& iSettings) {
    return RunProgram(QORWFL_TOOL, iArguments, iSettings);
}

std::string FileBytes(const std::string& iPath) {
    std::ifstream file(iPath, std::ios::binary);
    EXPECT_TRUE(file) << iPath;
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

std::string MaskCreated(const std::string& iDocument) {
    static const std::regex kCreated("<Created>[0-9]{2}-[0-9]{2}-[0-9]{4}-[0-9]{2}:[0-9]{2}:[0-9]{2}</Created>");
    return std::regex_replace(iDocument, kCreated, "<Created>MM-DD-YYYY-HH:MM:SS</Created>");
}

std::string Example(const std::string& iName) {
    return std::string(EXAMPLES_DIR) + '/' + iName;
}
