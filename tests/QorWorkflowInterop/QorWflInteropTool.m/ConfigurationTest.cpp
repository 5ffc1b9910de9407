#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char* kFileName = "QorWflActionManager";
constexpr const char* kAction = R"({"priority": "1", "status": "run"})";

/** The priority word that the document of an action with priority 1 has; the message when there is no document. */
std::string PriorityWith(const std::vector<std::string>& iOptions, ToolSettings ioSettings = {}) {
    ioSettings.input = kAction;
    std::vector<std::string> arguments{"export", "-"};
    arguments.insert(arguments.end(), iOptions.begin(), iOptions.end());
    const ToolResult result = RunTool(arguments, ioSettings);
    const std::string tag = "<Priority>";
    const std::size_t start = result.out.find(tag);
    if (result.status != 0 || start == std::string::npos) {
        return result.err;
    }
    const std::size_t value = start + tag.size();
    return result.out.substr(value, result.out.find('<', value) - value);
}

std::string Priority(const std::string& iWord) {
    return "actionPriority.1 = " + iWord + "\n";
}

}  // namespace

TEST(Configuration, WithoutOneTheBuiltInWordsCount) {
    EXPECT_EQ(PriorityWith({}), "Low");
}

TEST(Configuration, FileOfAnyNameIsTaken) {
    const TemporaryDirectory folder;
    EXPECT_EQ(PriorityWith({"--config", folder.Write("words.txt", Priority("Some"))}), "Some");
    EXPECT_EQ(PriorityWith({"--config=" + folder.Write("with blank:and colon", Priority("Odd"))}), "Odd");
    EXPECT_EQ(PriorityWith({"--config", folder.Write("fold:er/file", Priority("Colon"))}), "Colon");
}

TEST(Configuration, FolderMeansTheFileOfTheFixedNameInIt) {
    const TemporaryDirectory folder;
    folder.Write(kFileName, Priority("InFolder"));
    EXPECT_EQ(PriorityWith({"--config", folder.Path().string()}), "InFolder");
    EXPECT_EQ(PriorityWith({"--config", folder.Path().string() + "/"}), "InFolder");
}

TEST(Configuration, RelativePathsCountFromTheCurrentFolder) {
    const TemporaryDirectory folder;
    folder.Write("words", Priority("Relative"));
    folder.Write(std::string("below/") + kFileName, Priority("Below"));
    const ToolSettings here{.folder = folder.Path().string()};
    EXPECT_EQ(PriorityWith({"--config", "words"}, here), "Relative");
    EXPECT_EQ(PriorityWith({"--config", "below"}, here), "Below");
    EXPECT_EQ(PriorityWith({"--config", "below/../words"}, here), "Relative");
}

TEST(Configuration, LinkToAFileIsTaken) {
    const TemporaryDirectory folder;
    folder.Write("words", Priority("Linked"));
    std::filesystem::create_symlink("words", folder.Path() / "link");
    EXPECT_EQ(PriorityWith({"--config", (folder.Path() / "link").string()}), "Linked");
}

TEST(Configuration, WithoutTheOptionTheEnvironmentCounts) {
    const TemporaryDirectory folder;
    folder.Write(kFileName, Priority("FromPath"));
    EXPECT_EQ(PriorityWith({}, {.environment = {{"BexMsgCatalogPath", "/nowhere:" + folder.Path().string()}}}),
              "FromPath");
    EXPECT_EQ(PriorityWith({}, {.folder = folder.Path().string()}), "FromPath");
}

TEST(Configuration, OptionWinsOverTheEnvironmentAndTheCurrentFolder) {
    const TemporaryDirectory folder;
    folder.Write(kFileName, Priority("FromPath"));
    const std::string chosen = folder.Write("chosen", Priority("Chosen"));
    EXPECT_EQ(PriorityWith({"--config", chosen}, {.environment = {{"BexMsgCatalogPath", folder.Path().string()}},
                                                  .folder = folder.Path().string()}),
              "Chosen");
}

TEST(Configuration, FileThatIsNotThereIsNamed) {
    const TemporaryDirectory folder;
    const std::string path = folder.Path().string();
    const struct {
        std::string option;
        std::string message;
    } cases[] = {
        {path + "/missing", path + "/missing: the property file cannot be read: No such file or directory"},
        {path, path + "/QorWflActionManager: the property file cannot be read: No such file or directory"},
    };
    for (const auto& test : cases) {
        const ToolResult result = RunTool({"export", "-", "--config", test.option}, {.input = kAction});
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_EQ(result.err, "qorwfl: " + test.message + "\n");
    }
}

TEST(Configuration, WhatIsNoRegularFileIsRefused) {
    const TemporaryDirectory folder;
    const std::string pipe = (folder.Path() / "pipe").string();
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(PriorityWith({"--config", pipe}),
              "qorwfl: " + pipe + ": expected a property file, found no regular file\n");
    std::filesystem::create_directory(folder.Path() / kFileName);
    EXPECT_EQ(
        PriorityWith({"--config", folder.Path().string()}),
        "qorwfl: " + (folder.Path() / kFileName).string() + ": expected a property file, found no regular file\n");
}

TEST(Configuration, FileWithoutPermissionIsRefused) {
    if (::geteuid() == 0) {
        GTEST_SKIP() << "the superuser reads every file";
    }
    const TemporaryDirectory folder;
    const std::string file = folder.Write("secret", Priority("Secret"));
    ::chmod(file.c_str(), 0);
    EXPECT_EQ(PriorityWith({"--config", file}),
              "qorwfl: " + file + ": the property file cannot be read: Permission denied\n");
}

TEST(Configuration, NothingIsLeftBehindInTheTemporaryFolder) {
    const TemporaryDirectory folder;
    const TemporaryDirectory temporary;
    const std::string file = folder.Write("words", Priority("Clean"));
    EXPECT_EQ(PriorityWith({"--config", file}, {.environment = {{"TMPDIR", temporary.Path().string()}}}), "Clean");
    EXPECT_TRUE(std::filesystem::is_empty(temporary.Path()));
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST(Configuration, TemporaryFolderThatCannotServeIsPassedOver) {
    const TemporaryDirectory folder;
    const std::string file = folder.Write("words", Priority("Passed"));
    std::filesystem::create_directory(folder.Path() / "a:b");
    EXPECT_EQ(PriorityWith({"--config", file}, {.environment = {{"TMPDIR", (folder.Path() / "a:b").string()}}}),
              "Passed");
    EXPECT_EQ(PriorityWith({"--config", file}, {.environment = {{"TMPDIR", (folder.Path() / "no").string()}}}),
              "Passed");
}

TEST(Configuration, MaturitiesAndObjectTypesComeFromTheFile) {
    const TemporaryDirectory folder;
    const std::string file =
        folder.Write("words", "actionStatus.run = \"Being done\"\nactionObjects.OWN_PART.E = PART_LIST.NAME\n");
    const ToolResult result = RunTool({"export", "-", "--config", file}, {.input = R"({"status": "run", "objects": [
        {"type": "Part", "direction": "I", "uuid": "qor://D/E.PART_LIST/00000000000000000000000000000000"}]})"});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.out, HasSubstr("Value = \"Being done\""));
    EXPECT_THAT(result.out, HasSubstr("<DeclaredType Id = \"OWN_PART\"/>"));
}
