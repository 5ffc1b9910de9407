#include "CapturedStream.h"
#include "EnvironmentVariable.h"
#include "LibraryTrace.h"
#include "OpenFileLimit.h"
#include "PropertyEntries.h"
#include "TemporaryDirectory.h"

#include <QorWflPropertyFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

const char* const kSearchPath = "BexMsgCatalogPath";

/** Makes a directory the current one while it lives. */
class WorkingDirectory {
public:
    explicit WorkingDirectory(const std::filesystem::path& iPath) : former(std::filesystem::current_path()) {
        std::filesystem::current_path(iPath);
    }
    ~WorkingDirectory() {
        std::error_code ignored;
        std::filesystem::current_path(former, ignored);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;

private:
    std::filesystem::path former;
};

/** Takes root's rights away while it lives, so that file permissions count; changes nothing for other users. */
class WithoutPrivilege {
public:
    WithoutPrivilege() : wasRoot(::geteuid() == 0), dropped(!wasRoot || ::seteuid(kNobody) == 0) {}
    ~WithoutPrivilege() {
        if (wasRoot && dropped && ::seteuid(0) != 0) {
            std::abort();
        }
    }
    WithoutPrivilege(const WithoutPrivilege&) = delete;
    WithoutPrivilege& operator=(const WithoutPrivilege&) = delete;

    bool Succeeded() const { return dropped; }

private:
    static constexpr uid_t kNobody = 65534;

    bool wasRoot;
    bool dropped;
};

/** Folders "first", "second", "none" and a current one; all but "none" hold a file "conf" that tells where it is. */
class PropertyFileLocation : public ::testing::Test {
protected:
    PropertyFileLocation() {
        std::filesystem::create_directories(directory.Path() / "none");
        std::filesystem::create_directories(directory.Path() / "here");
        directory.Write("first/conf", "where=first\n");
        directory.Write("second/conf", "where=second\n");
        directory.Write("here/conf", "where=here\n");
        directory.Write("here/below/conf", "where=below\n");
        current.emplace(directory.Path() / "here");
    }

    std::string PathOf(const std::string& iName) const { return (directory.Path() / iName).string(); }

    /** The value of "where" after a read along a search path; "not found" for 1, "nothing" for an empty table. */
    static std::string Where(const char* iSearchPath, const BexUnicodeString& iName = "conf") {
        const EnvironmentVariable path(kSearchPath, iSearchPath);
        QorWflPropertyFile properties;
        const int result = properties.Read(iName);
        if (result != 0) {
            return result == 1 && properties.GetNKeys() == 0 ? "not found" : "an unknown result";
        }
        return properties.GetNKeys() == 0 ? "nothing" : NarrowText(properties.GetValue(1));
    }

    /** The same with the folder names in the search path made absolute. */
    std::string WhereAlong(std::string ioSearchPath, const BexUnicodeString& iName = "conf") const {
        for (const char* folder : {"<first>", "<second>", "<none>"}) {
            for (std::size_t at; (at = ioSearchPath.find(folder)) != std::string::npos;) {
                ioSearchPath.replace(at, std::strlen(folder), PathOf(std::string(folder + 1, std::strlen(folder) - 2)));
            }
        }
        return Where(ioSearchPath.c_str(), iName);
    }

    TemporaryDirectory directory;
    std::optional<WorkingDirectory> current;
};

struct SearchCase {
    const char* searchPath;
    const char* where;
};

}  // namespace

TEST_F(PropertyFileLocation, UnsetSearchPathIsTheCurrentDirectoryAlone) {
    EXPECT_EQ(Where(nullptr), "here");
    EXPECT_EQ(Where(nullptr, "only"), "not found");
    directory.Write("here/only", "where=only here\n");
    EXPECT_EQ(Where(nullptr, "only"), "only here");
}

TEST_F(PropertyFileLocation, SearchPathIsWalkedFromLeftToRightWithEmptyComponentsAsTheCurrentDirectory) {
    const SearchCase cases[] = {
        {"", "here"},
        {":", "here"},
        {"::", "here"},
        {".", "here"},
        {"<first>", "first"},
        {"<first>/", "first"},
        {"<none>", "not found"},
        {"<none>:<none>", "not found"},
        {"<first>:<second>", "first"},
        {"<second>:<first>", "second"},
        {"<none>:<second>:<first>", "second"},
        {":<first>", "here"},
        {"::<first>", "here"},
        {"<first>:", "first"},
        {"<first>::<second>", "first"},
        {"<none>:", "here"},
        {"<none>::<second>", "here"},
        {"<none>::", "here"},
        {"below", "below"},
        {"below:", "below"},
        {"../second:<first>", "second"},
        {"/no/such/folder:<first>", "first"},
        {"<first>/conf:<second>", "second"},
        {" <first>:<second>", "second"},
        {"<none>:<first> ", "not found"},
    };
    for (const SearchCase& searchCase : cases) {
        EXPECT_EQ(WhereAlong(searchCase.searchPath), searchCase.where) << '"' << searchCase.searchPath << '"';
    }
}

TEST_F(PropertyFileLocation, EmptyComponentsDoNotEndTheWalkWhenTheCurrentDirectoryLacksTheFile) {
    std::filesystem::remove(directory.Path() / "here/conf");
    const SearchCase cases[] = {
        {"", "not found"},
        {":", "not found"},
        {":<first>", "first"},
        {"::<first>", "first"},
        {"<none>::<second>", "second"},
        {"<none>:", "not found"},
        {"<none>:::<second>:", "second"},
    };
    for (const SearchCase& searchCase : cases) {
        EXPECT_EQ(WhereAlong(searchCase.searchPath), searchCase.where) << '"' << searchCase.searchPath << '"';
    }
}

TEST_F(PropertyFileLocation, CandidateLongerThanAPathMayBeIsPassedOver) {
    const std::string tooLong(100'000, 'x');
    EXPECT_EQ(WhereAlong(tooLong + ":<second>"), "second");
    EXPECT_EQ(WhereAlong("/" + tooLong), "not found");
    EXPECT_EQ(WhereAlong("<first>", StringOf(tooLong)), "not found");
}

TEST_F(PropertyFileLocation, ThousandsOfComponentsAreWalked) {
    std::string path;
    for (int i = 0; i < 5'000; ++i) {
        path += "nowhere:";
    }
    EXPECT_EQ(WhereAlong(path + "<first>"), "first");
    EXPECT_EQ(WhereAlong(path), "here");
}

TEST_F(PropertyFileLocation, RelativeNameWithSlashesIsAppendedToEachComponent) {
    directory.Write("second/deep/er/conf", "where=deep\n");
    EXPECT_EQ(WhereAlong("<first>:<second>", "deep/er/conf"), "deep");
    EXPECT_EQ(WhereAlong("<none>", "../first/conf"), "first");
    EXPECT_EQ(WhereAlong("<first>", "./conf"), "first");
    EXPECT_EQ(Where(nullptr, "below/conf"), "below");
}

TEST_F(PropertyFileLocation, AbsoluteNameIsTakenAsItStands) {
    EXPECT_EQ(WhereAlong("<first>", StringOf(PathOf("second/conf"))), "second");
    EXPECT_EQ(Where(nullptr, StringOf(PathOf("second/conf"))), "second");
}

TEST_F(PropertyFileLocation, AbsoluteNameIsNotLookedForAlongTheSearchPath) {
    const std::string missing = PathOf("missing");
    directory.Write("first" + missing, "where=below first\n");
    EXPECT_EQ(WhereAlong("<first>", StringOf(missing)), "not found");
    EXPECT_EQ(WhereAlong("<first>", "/conf"), "not found");
}

TEST_F(PropertyFileLocation, AbsoluteNameOfSomethingElseThanARegularFileIsNotFound) {
    const std::string fifo = PathOf("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& name : {std::string("/"), PathOf("first"), PathOf("first/"), PathOf("first/conf/"), fifo,
                                    std::string("/dev/null"), PathOf("missing"), PathOf("missing/conf")}) {
        EXPECT_EQ(WhereAlong("<first>", StringOf(name)), "not found") << name;
    }
}

TEST_F(PropertyFileLocation, EmptyNameIsNotFound) {
    for (const char* path : {"", ":", "<first>", "<first>:<second>", "<first>/conf"}) {
        EXPECT_EQ(WhereAlong(path, ""), "not found") << path;
        EXPECT_EQ(WhereAlong(path, BexUnicodeString()), "not found") << path;
    }
    EXPECT_EQ(Where(nullptr, ""), "not found");
}

TEST_F(PropertyFileLocation, DirectoryOfTheNameIsPassedOver) {
    std::filesystem::create_directories(directory.Path() / "none/conf");
    EXPECT_EQ(WhereAlong("<none>:<second>"), "second");
    EXPECT_EQ(WhereAlong("<none>"), "not found");
}

TEST_F(PropertyFileLocation, FifoOfTheNameIsPassedOverWithoutWaitingForIt) {
    ASSERT_EQ(::mkfifo(PathOf("none/conf").c_str(), 0600), 0);
    EXPECT_EQ(WhereAlong("<none>:<second>"), "second");
    EXPECT_EQ(WhereAlong("<none>"), "not found");
}

TEST_F(PropertyFileLocation, SymbolicLinkCountsAsWhatItLeadsTo) {
    const std::filesystem::path link = directory.Path() / "none/conf";
    std::filesystem::create_symlink("../second/conf", link);
    EXPECT_EQ(WhereAlong("<none>:<first>"), "second");
    EXPECT_EQ(Where(nullptr, StringOf(link.string())), "second");

    for (const char* target : {"../second", "no/such/file", "conf"}) {
        std::filesystem::remove(link);
        std::filesystem::create_symlink(target, link);
        EXPECT_EQ(WhereAlong("<none>:<first>"), "first") << target;
        EXPECT_EQ(Where(nullptr, StringOf(link.string())), "not found") << target;
    }
}

TEST_F(PropertyFileLocation, EveryCallLooksAtTheSearchPathAfresh) {
    EXPECT_EQ(WhereAlong("<first>"), "first");
    EXPECT_EQ(WhereAlong("<second>"), "second");
    EXPECT_EQ(Where(nullptr), "here");
    EXPECT_EQ(WhereAlong("<first>"), "first");
}

TEST_F(PropertyFileLocation, SearchPathInTheEnvironmentIsLeftAsItIs) {
    const EnvironmentVariable path(kSearchPath, "nowhere::elsewhere:");
    QorWflPropertyFile properties;
    EXPECT_EQ(properties.Read("conf"), 0);
    EXPECT_STREQ(std::getenv(kSearchPath), "nowhere::elsewhere:");
}

TEST_F(PropertyFileLocation, NameIsTakenByteForByte) {
    const std::string name = "Schl\xFCssel \xA4 =";
    directory.Write("second/" + name, "where=special\n");
    EXPECT_EQ(WhereAlong("<first>:<second>", StringOf(name)), "special");
    EXPECT_EQ(WhereAlong("<first>", "CONF"), "not found");
    EXPECT_EQ(WhereAlong("<first>", " conf"), "not found");
    EXPECT_EQ(WhereAlong("<first>", "conf "), "not found");
}

TEST_F(PropertyFileLocation, NameEndsAtItsFirstNulCharacter) {
    EXPECT_EQ(WhereAlong("<second>", BexUnicodeString("conf\0more", 9)), "second");
    EXPECT_EQ(WhereAlong("<second>", BexUnicodeString("\0conf", 5)), "not found");
}

TEST_F(PropertyFileLocation, MissingFileLeavesTheTableAndSaysNothing) {
    const EnvironmentVariable path(kSearchPath, PathOf("none").c_str());
    const CapturedStream output(std::cout);
    const CapturedStream error(std::cerr);
    QorWflPropertyFile properties;
    properties.SetValue("a", "1");
    EXPECT_EQ(properties.Read("conf"), 1);
    EXPECT_EQ(properties.Read(StringOf(PathOf("none/conf"))), 1);
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("a", "1")));
    EXPECT_EQ(output.Text() + error.Text(), "");
}

TEST_F(PropertyFileLocation, FileThatCannotBeOpenedGivesZeroAndLeavesTheTable) {
    const EnvironmentVariable path(kSearchPath, PathOf("first").c_str());
    const CapturedStream output(std::cout);
    const CapturedStream error(std::cerr);
    QorWflPropertyFile properties;
    properties.SetValue("a", "1");
    int alongPath = -1;
    int absolute = -1;
    int missing = -1;
    bool opened = true;
    {
        const std::string file = PathOf("first/conf");
        QorWflPropertyFile().Read(StringOf(file));  // a sanitizer opens files of its own when code first runs
        ASSERT_TRUE(std::ifstream(file).is_open());
        const OpenFileLimit guard(0);
        opened = std::ifstream(file).is_open();
        alongPath = properties.Read("conf");
        absolute = properties.Read(StringOf(file));
        missing = properties.Read("missing");
    }
    ASSERT_FALSE(opened);
    EXPECT_EQ(alongPath, 0);
    EXPECT_EQ(absolute, 0);
    EXPECT_EQ(missing, 1);
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("a", "1")));
    EXPECT_EQ(output.Text() + error.Text(), "");

    EXPECT_EQ(properties.Read("conf"), 0) << "the file can be read once there is a descriptor again";
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("a", "1"), Pair("where", "first")));
}

TEST_F(PropertyFileLocation, FileWithoutReadPermissionEndsTheWalkAndReadsNothing) {
    std::filesystem::permissions(directory.Path(), std::filesystem::perms(0755));
    ASSERT_EQ(::chmod(PathOf("first/conf").c_str(), 0), 0);
    const WithoutPrivilege guard;
    if (!guard.Succeeded()) {
        GTEST_SKIP() << "root cannot become another user here";
    }
    ASSERT_FALSE(std::ifstream(PathOf("first/conf")).is_open());
    EXPECT_EQ(WhereAlong("<first>:<second>"), "nothing");
    EXPECT_EQ(Where(nullptr, StringOf(PathOf("first/conf"))), "nothing");
    EXPECT_EQ(WhereAlong("<none>:<second>:<first>"), "second");
}

TEST_F(PropertyFileLocation, FolderThatMayNotBeSearchedIsPassedOver) {
    std::filesystem::permissions(directory.Path(), std::filesystem::perms(0755));
    ASSERT_EQ(::chmod(PathOf("first").c_str(), 0), 0);
    {
        const WithoutPrivilege guard;
        if (!guard.Succeeded()) {
            GTEST_SKIP() << "root cannot become another user here";
        }
        EXPECT_EQ(WhereAlong("<first>:<second>"), "second");
        EXPECT_EQ(WhereAlong("<first>"), "not found");
        EXPECT_EQ(Where(nullptr, StringOf(PathOf("first/conf"))), "not found");
    }
    ASSERT_EQ(::chmod(PathOf("first").c_str(), 0755), 0);
}

TEST_F(PropertyFileLocation, NameWithTheLowByteOfASlashInFrontIsNotAbsolute) {
    EXPECT_EQ(WhereAlong("<first>", BexUnicodeString(u"\u012Fetc/passwd", 11)), "not found");
    directory.Write("second/?x", "where=question mark\n");
    EXPECT_EQ(WhereAlong("<first>:<second>", BexUnicodeString(u"\u012Fx", 2)), "question mark");
}

TEST_F(PropertyFileLocation, FailedReadsBetweenOthersLeaveWhatTheOthersRead) {
    QorWflPropertyFile properties;
    const EnvironmentVariable path(kSearchPath, (PathOf("none") + ":" + PathOf("first")).c_str());
    EXPECT_EQ(properties.Read("missing"), 1);
    EXPECT_EQ(properties.Read("conf"), 0);
    EXPECT_EQ(properties.Read(""), 1);
    EXPECT_EQ(properties.Read(StringOf(PathOf("first"))), 1);
    EXPECT_EQ(properties.Read(StringOf(PathOf("second/conf"))), 0);
    EXPECT_EQ(properties.Read("missing"), 1);
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("where", "second")));
}

TEST_F(PropertyFileLocation, NoTraceChannelHearsOfIt) {
    const LibraryTrace trace;
    EXPECT_EQ(WhereAlong("<none>:<first>"), "first");
    EXPECT_EQ(WhereAlong("<none>"), "not found");
    EXPECT_EQ(trace.Text(), "");
}

TEST_F(PropertyFileLocation, FileWhoseReadingFailsGivesZeroAndNoEntries) {
    const std::string unreadable = "/proc/self/mem";
    std::ifstream probe(unreadable);
    if (!std::filesystem::is_regular_file(unreadable) || !probe.is_open() || probe.get() != EOF) {
        GTEST_SKIP() << "no file here that can be opened and not read";
    }
    EXPECT_EQ(Where(nullptr, StringOf(unreadable)), "nothing");
}

TEST_F(PropertyFileLocation, ReadingLeavesNoFileOpen) {
    const EnvironmentVariable path(kSearchPath, PathOf("first").c_str());
    const OpenFileLimit guard(200);
    for (int i = 0; i < 500; ++i) {
        QorWflPropertyFile properties;
        ASSERT_EQ(properties.Read("conf"), 0);
        ASSERT_EQ(properties.GetNKeys(), 1) << "after " << i << " files";
    }
}
