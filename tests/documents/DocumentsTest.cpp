// Every code block in the documents is one that something compiles, runs or reads: what a reader copies works.
#include "Markdown.h"

#include <QorWflInteropInfo.h>
#include <QorWflPropertyFile.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

namespace {

/** Files below the examples of one ending. */
std::vector<std::string> Examples(const std::string& iEnding) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(EXAMPLES_DIR)) {
        const std::string path = entry.path().string();
        if (path.size() > iEnding.size() && path.compare(path.size() - iEnding.size(), iEnding.size(), iEnding) == 0) {
            files.push_back(path);
        }
    }
    return files;
}

/** The names of all files and folders of the sources. */
std::set<std::string> FileNames() {
    std::set<std::string> names;
    for (const char* folder :
         {"BexFramework", "QorWorkflowInterop", "bench", "cmake", "docs", "examples", "fuzz", "tests"}) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(std::filesystem::path(SOURCE_DIR) / folder)) {
            names.insert(entry.path().filename().string());
        }
    }
    for (const auto& entry : std::filesystem::directory_iterator(SOURCE_DIR)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

/** Whether the lines stand in a file one behind the other, however far they are indented there. */
bool IsPartOf(const std::vector<std::string>& iLines, const std::string& iFile) {
    const std::vector<std::string> file = LinesOf(iFile);
    const auto size = static_cast<std::ptrdiff_t>(iLines.size());
    const std::vector<std::string> wanted = Unindented(iLines);
    for (auto begin = file.begin(); file.end() - begin >= size; ++begin) {
        if (Unindented(std::vector<std::string>(begin, begin + size)) == wanted) {
            return true;
        }
    }
    return false;
}

/** Whether a URL is one that the library takes apart. */
bool IsUrl(const BexUnicodeString& iUrl) {
    const std::unique_ptr<char, QorWflUuidDeleter> block(QorWflUrlUtil::UrlToUuid(iUrl));
    return block != nullptr || QorWflUrlUtil::UrlToActionId(iUrl).IsEmpty() == 0;
}

}  // namespace

TEST(Documents, HaveCodeBlocksOfTheKindsThatAreTested) {
    // "sh" is run by the tests RunsCommandsOf, "xml" checked by CheckCodes; "text" is for pictures and patterns, which
    // nothing can run.
    const std::set<std::string> tested{"cpp", "cmake", "sh", "json", "properties", "record", "url", "xml", "text"};
    for (const std::string& document : Documents()) {
        for (const CodeBlock& block : CodeBlocks(document)) {
            EXPECT_THAT(tested, Contains(block.language)) << block.Place();
            EXPECT_THAT(block.lines, Not(IsEmpty())) << block.Place();
        }
    }
}

TEST(Documents, BlocksOfCppArePartsOfExamplesThatAreCompiledAndRun) {
    const std::vector<CodeBlock> blocks = CodeBlocksIn("cpp");
    EXPECT_GE(blocks.size(), 6u);
    const std::vector<std::string> examples = Examples(".cpp");
    for (const CodeBlock& block : blocks) {
        EXPECT_TRUE(std::any_of(examples.begin(), examples.end(),
                                [&](const std::string& example) { return IsPartOf(block.lines, example); }))
            << block.Place() << " is no part of an example";
    }
}

TEST(Documents, LinesOfCMakeAreLinesOfAnExampleThatIsBuilt) {
    const std::vector<CodeBlock> blocks = CodeBlocksIn("cmake");
    EXPECT_THAT(blocks, Not(IsEmpty()));
    const std::vector<std::string> host = LinesOf(std::string(EXAMPLES_DIR) + "/host/CMakeLists.txt");
    for (const CodeBlock& block : blocks) {
        for (const std::string& line : block.lines) {
            EXPECT_THAT(host, Contains(line)) << block.Place();
        }
    }
}

TEST(Documents, BlocksOfXmlStandOnThePageWhoseExamplesAreChecked) {
    // There the tests CheckCodes have each found by "qorwfl check", with the code of its section.
    const std::vector<CodeBlock> blocks = CodeBlocksIn("xml");
    EXPECT_THAT(blocks, Not(IsEmpty()));
    for (const CodeBlock& block : blocks) {
        EXPECT_EQ(block.document, "docs/check-codes.md") << block.Place();
    }
}

TEST(Documents, FilesThatTheyNameAreThere) {
    const std::regex file("`([A-Za-z0-9_./-]+\\.(h|cpp|cmake|sh|md|py|m|sql))`");
    const std::set<std::string> names = FileNames();
    int found = 0;
    for (const std::string& document : Documents()) {
        for (const std::string& line : LinesOf(std::string(SOURCE_DIR) + "/" + document)) {
            for (std::sregex_iterator match(line.begin(), line.end(), file), end; match != end; ++match) {
                const std::string name = std::filesystem::path((*match)[1].str()).filename().string();
                const bool isPattern = name.find("NAME") != std::string::npos;  // NAMEFuzz.cpp and the like
                EXPECT_TRUE(isPattern || names.count(name) == 1) << document << ": " << line;
                ++found;
            }
        }
    }
    EXPECT_GT(found, 40);
}

#ifdef QORWFL_TOOL
TEST(Documents, JsonIsTakenByTheCommand) {
    const TemporaryDirectory folder;
    const auto status = [&folder](const std::string& iJson) {
        const std::string file = folder.Write("block.json", iJson);
        return std::system(("'" QORWFL_TOOL "' export '" + file + "' >'" + file + ".out' 2>&1").c_str());
    };
    EXPECT_NE(status("{"), 0);
    for (const CodeBlock& block : CodeBlocksIn("json")) {
        EXPECT_EQ(status(block.Text()), 0) << block.Place();
    }
}
#endif

TEST(Documents, PropertiesAreReadAsThePageSays) {
    using Entries = std::map<std::string, std::string>;
    const std::map<std::string, Entries> wanted{{"docs/property-file.md",
                                                 {{"actionType", "Design"},
                                                  {"actionStatus.run", "DSGin work"},
                                                  {"actionPriority.1", "Low"},
                                                  {"dataName.missing", "NOT THERE"}}}};
    std::map<std::string, Entries> read;
    for (const CodeBlock& block : CodeBlocksIn("properties")) {
        if (block.document == "docs/config-codes.md") {
            continue;  // the tests ConfigCodes have each found by "qorwfl config check", with the code of its section
        }
        const TemporaryDirectory folder;
        const std::string path = folder.Write("properties", block.Text());
        QorWflPropertyFile properties;
        ASSERT_EQ(properties.Read(path.c_str()), 0);
        for (int i = 1; i <= properties.GetNKeys(); ++i) {
            read[block.document][properties.GetKey(i).ConvertToChar()] = properties.GetValue(i).ConvertToChar();
        }
    }
    EXPECT_EQ(read, wanted);
}

TEST(Documents, RecordsAreReadAndWrittenAgainAsTheyStand) {
    const std::vector<CodeBlock> blocks = CodeBlocksIn("record");
    EXPECT_THAT(blocks, Not(IsEmpty()));
    for (const CodeBlock& block : blocks) {
        std::istringstream text(block.Text());
        ActivityInfo record;
        text >> record;
        EXPECT_TRUE(text) << block.Place();
        std::ostringstream written;
        written << record << '\n';
        EXPECT_EQ(written.str(), block.Text()) << block.Place();
    }
}

TEST(Documents, UrlsAreTakenApartAndTheirColumnsCounted) {
    const std::vector<CodeBlock> blocks = CodeBlocksIn("url");
    EXPECT_GE(blocks.size(), 3u);
    for (const CodeBlock& block : blocks) {
        for (const std::string& line : block.lines) {
            if (line[0] != ' ') {
                EXPECT_TRUE(IsUrl(line.c_str())) << block.Place() << ": " << line;
                continue;
            }
            // a line of marks: each ^ has behind it how far it is from the first
            const std::size_t first = line.find('^');
            ASSERT_NE(first, std::string::npos) << block.Place() << ": " << line;
            for (std::size_t mark = first; mark != std::string::npos; mark = line.find('^', mark + 1)) {
                EXPECT_EQ(std::stoul(line.substr(mark + 1)), mark - first) << block.Place() << ": " << line;
            }
        }
    }
}
