#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST(CommandLine, HelpListsTheCommandsAndExitStatuses) {
    for (const char* option : {"--help", "-h"}) {
        const ToolResult result = RunTool({option});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.err, IsEmpty());
        for (const char* part :
             {"Usage: qorwfl", "export", "import", "--version", "Exit status: 0 done, 1", "2 wrong"}) {
            EXPECT_THAT(result.out, HasSubstr(part));
        }
    }
}

TEST(CommandLine, VersionIsTheProjects) {
    const ToolResult result = RunTool({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "qorwfl " QORWFL_VERSION "\n");
    EXPECT_THAT(result.err, IsEmpty());
}

TEST(CommandLine, HelpOfEachCommandEndsWithAnExampleOfIt) {
    for (const std::string command : {"export", "import", "convert", "diff", "graph"}) {
        const ToolResult result = RunTool({command, "--help"});
        EXPECT_EQ(result.status, 0);
        EXPECT_THAT(result.err, IsEmpty());
        EXPECT_THAT(result.out, HasSubstr("Usage: qorwfl " + command));
        const std::size_t example = result.out.find("\nExample:\n  qorwfl " + command + ' ');
        ASSERT_NE(example, std::string::npos) << result;
        const std::size_t afterExample = result.out.find('\n', result.out.find("qorwfl", example));
        EXPECT_EQ(result.out.find_first_not_of('\n', afterExample), std::string::npos) << result;
    }
}

TEST(CommandLine, WrongUsageGivesStatusTwoAndOnlyAMessage) {
    const struct {
        std::vector<std::string> arguments;
        const char* message;
    } cases[] = {
        {{}, "subcommand is required"},
        {{"exports"}, "exports"},
        {{"--verbose"}, "--verbose"},
        {{"export"}, "ACTION is required"},
        {{"import"}, "FILE is required"},
        {{"export", "--config"}, "--config"},
        {{"export", "a.json", "--config"}, "--config"},
        {{"export", "a.json", "b.json"}, "-o DIR"},
        {{"import", "a.xpdl", "b.xpdl"}, "-o DIR"},
        {{"diff", "a.xpdl"}, "B is required"},
        {{"graph", "a.xpdl", "b.xpdl"}, "b.xpdl"},
        {{"export", "a.json", "--confg", "c"}, "--confg"},
        {{"import", "a.xpdl", "--config", "c"}, "--config"},
        {{"export", "a.json", "--config", "c", "--config", "d"}, "--config"},
        {{"import", "-x"}, "-x"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.arguments));
        const ToolResult result = RunTool(test.arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, HasSubstr(test.message));
        EXPECT_THAT(result.err, HasSubstr("--help"));
    }
}

TEST(CommandLine, NameOfACommandCanBeAFile) {
    const ToolResult result = RunTool({"export", "import"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "qorwfl: import: cannot be read: No such file or directory\n");
}

TEST(CommandLine, FileNameMayBeginWithAHyphenBehindTwoHyphens) {
    const ToolResult result = RunTool({"import", "--", "--strange.xpdl"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, StartsWith("qorwfl: --strange.xpdl: cannot be read"));
}
