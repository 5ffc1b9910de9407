#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const char* const kCommands[] = {"export", "import"};

bool DeviceFullIsThere() {
    return std::filesystem::exists("/dev/full");
}

}  // namespace

TEST(Input, FileThatCannotBeReadIsNamedWithTheReason) {
    const TemporaryDirectory folder;
    const std::string missing = (folder.Path() / "missing").string();
    for (const char* command : kCommands) {
        const struct {
            std::string file;
            const char* reason;
        } cases[] = {
            {missing, "No such file or directory"},
            {folder.Path().string(), "Is a directory"},
            {missing + "/below", "No such file or directory"},
        };
        for (const auto& test : cases) {
            const ToolResult result = RunTool({command, test.file});
            EXPECT_EQ(result.status, 1);
            EXPECT_THAT(result.out, IsEmpty());
            EXPECT_EQ(result.err, "qorwfl: " + test.file + ": cannot be read: " + test.reason + "\n");
        }
    }
}

TEST(Input, FileWithoutPermissionIsNamedWithTheReason) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser reads every file";
    }
    const TemporaryDirectory folder;
    const std::string file = folder.Write("secret", "{}");
    ::chmod(file.c_str(), 0);
    for (const char* command : kCommands) {
        const ToolResult result = RunTool({command, file});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "qorwfl: " + file + ": cannot be read: Permission denied\n");
    }
}

TEST(Input, HyphenIsTheStandardInput) {
    const ToolResult fromFile = RunTool({"import", Example("reply.xpdl")});
    const ToolResult fromInput = RunTool({"import", "-"}, {.input = FileBytes(Example("reply.xpdl"))});
    EXPECT_EQ(fromInput.status, 0) << fromInput;
    EXPECT_EQ(fromInput.out, fromFile.out);

    const ToolResult exported = RunTool({"export", "-"}, {.input = FileBytes(Example("minimal.json"))});
    EXPECT_EQ(exported.status, 0) << exported;
    EXPECT_EQ(MaskCreated(exported.out), MaskCreated(RunTool({"export", Example("minimal.json")}).out));
}

TEST(Input, MessagesCallTheStandardInputByName) {
    EXPECT_THAT(RunTool({"export", "-"}, {.input = "{\n ]"}).err, HasSubstr("qorwfl: standard input:2:2: "));
    EXPECT_THAT(RunTool({"import", "-"}, {.input = "<a>\n</b>"}).err, HasSubstr("qorwfl: standard input:2:"));
}

TEST(Input, FolderAsStandardInputIsRefused) {
    const TemporaryDirectory folder;
    const ToolResult result =
        RunProgram("/bin/sh", {"-c", "exec '" QORWFL_TOOL "' import - <" + folder.Path().string()});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "qorwfl: standard input: cannot be read: Is a directory\n");
}

TEST(Input, ClosedStandardInputIsRefused) {
    const ToolResult result = RunProgram("/bin/sh", {"-c", "exec '" QORWFL_TOOL "' export - <&-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "qorwfl: standard input: cannot be read: Bad file descriptor\n");
}

TEST(Message, ControlCharactersFromOutsideAreEscaped) {
    const ToolResult named = RunTool({"import", "no\x1B[31m\nfile\x7F"});
    EXPECT_EQ(named.err, "qorwfl: no\\x1B[31m\\x0Afile\\x7F: cannot be read: No such file or directory\n");
    const ToolResult member = RunTool({"export", "-"}, {.input = R"({"\u001b[31m": 1})"});
    EXPECT_THAT(member.err, HasSubstr("/\\x1B[31m: unknown member"));
}

TEST(Output, FullDeviceGivesStatusOne) {
    if (!DeviceFullIsThere()) {
        GTEST_SKIP() << "no /dev/full";
    }
    const std::vector<std::string> calls[] = {{"export", Example("minimal.json")},
                                              {"import", Example("reply.xpdl")},
                                              {"--help"},
                                              {"--version"},
                                              {"export", "--help"}};
    for (const auto& arguments : calls) {
        const ToolResult result = RunTool(arguments, {.output = "/dev/full"});
        EXPECT_EQ(result.status, 1) << testing::PrintToString(arguments);
        EXPECT_EQ(result.err, "qorwfl: standard output: cannot be written: No space left on device\n");
    }
}

TEST(Output, ClosedStandardOutputGivesStatusOne) {
    const ToolResult result =
        RunProgram("/bin/sh", {"-c", "exec '" QORWFL_TOOL "' import '" + Example("reply.xpdl") + "' >&-"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "qorwfl: standard output: cannot be written: Bad file descriptor\n");
}

TEST(Output, ReaderThatWentAwayGivesStatusOne) {
    const ToolResult result = RunTool({"import", Example("reply.xpdl")}, {.brokenPipe = true});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "qorwfl: standard output: cannot be written: Broken pipe\n");
}
