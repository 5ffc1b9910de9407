#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

/** Set to anything, this environment variable has the golden files written anew instead of compared. */
constexpr const char* kRegenerate = "QORWFL_REGENERATE";

/** Compares a text with a golden file, byte for byte. */
void ExpectGolden(const std::string& iName, const std::string& iText) {
    const std::string path = std::string(TEST_DATA_DIR) + "/tool/" + iName;
    if (std::getenv(kRegenerate) != nullptr) {
        std::ofstream(path, std::ios::binary) << iText;
        GTEST_SKIP() << path << " is written anew; look at what changed";
    }
    EXPECT_EQ(iText, FileBytes(path)) << path << "; set " << kRegenerate << " to write it anew";
}

/** The document of an example, in the words of the example's property file. */
std::string Document(const std::string& iExample) {
    const ToolResult result = RunTool({"export", Example(iExample), "--config", EXAMPLES_DIR});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, IsEmpty());
    return result.out;
}

/** The text of the record that a document holds. */
std::string Record(const std::string& iDocument) {
    const ToolResult result = RunTool({"import", "-"}, {.input = iDocument});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, IsEmpty());
    return result.out;
}

class ExampleAction : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(ExampleAction, DocumentIsTheGoldenOne) {
    const std::string document = Document(GetParam() + ".json");
    EXPECT_NE(MaskCreated(document), document);
    ExpectGolden(GetParam() + ".xpdl", MaskCreated(document));
}

TEST_P(ExampleAction, RecordOfTheDocumentIsTheGoldenOne) {
    ExpectGolden(GetParam() + ".txt", Record(Document(GetParam() + ".json")));
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleAction, testing::Values("review", "nameless", "minimal"),
                         [](const auto& iTest) { return iTest.param; });

TEST(ExampleReply, RecordIsTheGoldenOne) {
    ExpectGolden("reply.txt", Record(FileBytes(Example("reply.xpdl"))));
}

TEST(ExampleReply, NamesTheSameObjectsAsTheActionItAnswers) {
    const auto objectLines = [](const std::string& iRecord) { return iRecord.substr(iRecord.find("process.id=")); };
    EXPECT_EQ(objectLines(Record(FileBytes(Example("reply.xpdl")))), objectLines(Record(Document("review.json"))));
}

TEST(Demo, ShowsEveryStep) {
    const std::string bin = std::filesystem::path(QORWFL_TOOL).parent_path().string();
    const ToolResult result = RunProgram(Example("demo.sh"), {bin});
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_THAT(result.err, IsEmpty());
    for (const char* part : {"== The action of the PDM server", "\"id\": \"ACT-2047\"", "== The XPDL document",
                             "<XPDLVersion>0.02</XPDLVersion>", "== The workflow tool's reply", "status=\"Completed\";",
                             "== The URLs of the reply", "action:            ACT-2047\n", "internal priority: 3\n",
                             "product:           Pump HP-40 in table PRODUCTS\n", "configuration:     HP-40/standard\n",
                             "object:            Review report in table DOC_REPORT\n"}) {
        EXPECT_THAT(result.out, HasSubstr(part));
    }
}

TEST(Demo, FailsWhereAStepFails) {
    EXPECT_EQ(RunProgram(Example("demo.sh"), {}).status, 2);
    EXPECT_NE(RunProgram(Example("demo.sh"), {"/nowhere"}).status, 0);

    const TemporaryDirectory bin;
    std::filesystem::create_symlink("/bin/false", bin.Path() / "qorwfl");
    const ToolResult noExport = RunProgram(Example("demo.sh"), {bin.Path().string()});
    EXPECT_NE(noExport.status, 0);
    EXPECT_THAT(noExport.out, Not(HasSubstr("The workflow tool's reply")));

    std::filesystem::remove(bin.Path() / "qorwfl");
    std::filesystem::create_symlink(QORWFL_TOOL, bin.Path() / "qorwfl");
    std::filesystem::create_symlink("/bin/false", bin.Path() / "urls");
    EXPECT_NE(RunProgram(Example("demo.sh"), {bin.Path().string()}).status, 0);
}
