// Reads that fail in the middle: of a property file, by taking the place of read(), and of the text of a record, by a
// stream that ends, fails or throws at any place.

#include <ActivityInfo.h>
#include <QorWflInteropInfo.h>
#include <QorWflPropertyFile.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ActivityFields.h>
#include <PropertyEntries.h>
#include <RecordTesting.h>
#include <TemporaryDirectory.h>
#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <istream>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/** How reading one file goes wrong. */
struct Trouble {
    ino_t file = 0;                                                ///< the file that is meant
    std::size_t left = std::numeric_limits<std::size_t>::max();    ///< bytes until reading fails
    std::size_t atOnce = std::numeric_limits<std::size_t>::max();  ///< bytes that one call gives at most
    int interruptions = 0;                                         ///< calls that are interrupted first
    std::function<void()> beforeOpening;  ///< what happens to the next file before it is opened
    int interruptedOpenings = 0;          ///< openings that are interrupted first
};

Trouble trouble;

int OpenNext(const char* iCall, const char* iName, int iFlags, mode_t iMode) {
    if (trouble.interruptedOpenings > 0) {
        --trouble.interruptedOpenings;
        errno = EINTR;
        return -1;
    }
    if (const auto happens = std::exchange(trouble.beforeOpening, nullptr)) {
        happens();
    }
    auto* const next = reinterpret_cast<int (*)(const char*, int, ...)>(::dlsym(RTLD_NEXT, iCall));
    return next(iName, iFlags, iMode);
}

}  // namespace

// Only who makes a file gives a mode.
extern "C" __attribute__((visibility("default"))) int OpenWithTrouble(const char* iName, int iFlags,
                                                                      ...) __asm__("open");
extern "C" __attribute__((visibility("default"))) int Open64WithTrouble(const char* iName, int iFlags,
                                                                        ...) __asm__("open64");

int OpenWithTrouble(const char* iName, int iFlags, ...) {
    std::va_list arguments;
    va_start(arguments, iFlags);
    const mode_t mode = (iFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return OpenNext("open", iName, iFlags, mode);
}
int Open64WithTrouble(const char* iName, int iFlags, ...) {
    std::va_list arguments;
    va_start(arguments, iFlags);
    const mode_t mode = (iFlags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return OpenNext("open64", iName, iFlags, mode);
}

// Under a name of its own in the source: with _FORTIFY_SOURCE a compiler may have a definition of read() already.
extern "C" __attribute__((visibility("default"))) ssize_t ReadWithTrouble(int iFile, void* oBytes,
                                                                          size_t iLength) __asm__("read");

ssize_t ReadWithTrouble(int iFile, void* oBytes, size_t iLength) {
    static auto* const next = reinterpret_cast<ssize_t (*)(int, void*, size_t)>(::dlsym(RTLD_NEXT, "read"));
    struct stat status {};
    if (trouble.file == 0 || ::fstat(iFile, &status) != 0 || status.st_ino != trouble.file) {
        return next(iFile, oBytes, iLength);
    }
    if (trouble.interruptions > 0) {
        --trouble.interruptions;
        errno = EINTR;
        return -1;
    }
    if (trouble.left == 0) {
        errno = EIO;
        return -1;
    }
    const ssize_t length = next(iFile, oBytes, std::min({iLength, trouble.left, trouble.atOnce}));
    trouble.left -= static_cast<std::size_t>(std::max<ssize_t>(length, 0));
    return length;
}

namespace {

/** Gives a file trouble while it lives. */
class WithTrouble {
public:
    explicit WithTrouble(const std::string& iFile) {
        struct stat status {};
        if (::stat(iFile.c_str(), &status) == 0) {
            trouble = Trouble();
            trouble.file = status.st_ino;
        }
    }
    ~WithTrouble() { trouble = Trouble(); }
    WithTrouble(const WithTrouble&) = delete;
    WithTrouble& operator=(const WithTrouble&) = delete;
};

class PropertyFileTrouble : public testing::Test {
protected:
    static std::string Content(int iLines) {
        std::string content;
        for (int line = 0; line < iLines; ++line) {
            content += "key" + std::to_string(line) + " = value" + std::to_string(line) + "\n";
        }
        return content;
    }

    const TemporaryDirectory directory;
};

TEST_F(PropertyFileTrouble, ShortAndInterruptedReadsChangeNothing) {
    const std::string file = directory.Write("properties", Content(3000));
    QorWflPropertyFile expected;
    ASSERT_EQ(expected.Read(file.c_str()), 0);
    ASSERT_EQ(expected.GetNKeys(), 3000);
    for (const std::size_t atOnce : {std::size_t{1}, std::size_t{7}, std::size_t{4095}}) {
        const WithTrouble guard(file);
        trouble.atOnce = atOnce;
        trouble.interruptions = 3;
        QorWflPropertyFile properties;
        EXPECT_EQ(properties.Read(file.c_str()), 0);
        EXPECT_EQ(EntriesOf(properties), EntriesOf(expected)) << atOnce;
        EXPECT_EQ(trouble.interruptions, 0);
    }
}

TEST_F(PropertyFileTrouble, FailureInTheMiddleGivesWholeEntriesFromTheBeginning) {
    const std::string content = Content(2000);
    const std::string file = directory.Write("properties", content);
    QorWflPropertyFile whole;
    ASSERT_EQ(whole.Read(file.c_str()), 0);
    const auto all = EntriesOf(whole);
    for (std::size_t good = 0; good < content.size(); good += 61) {
        const WithTrouble guard(file);
        trouble.left = good;
        QorWflPropertyFile properties;
        EXPECT_EQ(properties.Read(file.c_str()), 0);
        const auto some = EntriesOf(properties);
        ASSERT_LE(some.size(), all.size());
        const auto end = content.begin() + static_cast<std::ptrdiff_t>(good);
        EXPECT_GE(some.size(), static_cast<std::size_t>(std::count(content.begin(), end, '\n'))) << good;
        for (std::size_t i = 0; i + 1 < some.size(); ++i) {
            ASSERT_EQ(some[i], all[i]) << good;
        }
        if (!some.empty()) {  // the last one may be cut, as the file was for its reader
            EXPECT_EQ(all[some.size() - 1].first, some.back().first) << good;
            EXPECT_EQ(all[some.size() - 1].second.compare(0, some.back().second.size(), some.back().second), 0);
        }
    }
    QorWflPropertyFile again;
    EXPECT_EQ(again.Read(file.c_str()), 0) << "the next call";
    EXPECT_EQ(EntriesOf(again), all);
}

TEST_F(PropertyFileTrouble, InterruptedOpeningIsTriedAgain) {
    const std::string file = directory.Write("properties", Content(10));
    const WithTrouble guard(file);
    trouble.interruptedOpenings = 3;
    QorWflPropertyFile properties;
    EXPECT_EQ(properties.Read(file.c_str()), 0);
    EXPECT_EQ(properties.GetNKeys(), 10);
    EXPECT_EQ(trouble.interruptedOpenings, 0);
}

TEST_F(PropertyFileTrouble, PipeOrDeviceThatTakesThePlaceOfTheFileIsNotRead) {
    const std::string file = directory.Write("properties", Content(10));
    const std::function<void()> changes[] = {
        [&] {
            ASSERT_EQ(::unlink(file.c_str()), 0);
            ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
        },
        [&] {
            ASSERT_EQ(::unlink(file.c_str()), 0);
            ASSERT_EQ(::symlink("/dev/zero", file.c_str()), 0);
        },
        [&] { ASSERT_EQ(::unlink(file.c_str()), 0); },
    };
    for (const auto& change : changes) {
        ::unlink(file.c_str());
        directory.Write("properties", Content(10));
        const WithTrouble guard(file);
        trouble.beforeOpening = change;
        QorWflPropertyFile properties;
        EXPECT_EQ(properties.Read(file.c_str()), 0);
        EXPECT_EQ(properties.GetNKeys(), 0);
        EXPECT_EQ(trouble.beforeOpening, nullptr) << "the file was opened";
    }
}

TEST_F(PropertyFileTrouble, FailureAtTheFirstByteLeavesTheTable) {
    const std::string file = directory.Write("properties", Content(10));
    const WithTrouble guard(file);
    trouble.left = 0;
    QorWflPropertyFile properties;
    properties.SetValue("before", "value");
    EXPECT_EQ(properties.Read(file.c_str()), 0);
    EXPECT_THAT(EntriesOf(properties), testing::ElementsAre(testing::Pair("before", "value")));
}

TEST_F(PropertyFileTrouble, LineLongerThanATextCanBeEndsTheReading) {
    if (std::getenv("QORWFL_TEST_ALL") == nullptr) {
        GTEST_SKIP() << "takes 4 GB of memory; set QORWFL_TEST_ALL to run it";
    }
    const std::string file = directory.Write("properties", "first = 1\nlong = ");
    std::filesystem::resize_file(file, (std::uintmax_t{1} << 31) + 4096);
    std::ofstream(file, std::ios::app) << "\nlast = 2\n";
    QorWflPropertyFile properties;
    EXPECT_EQ(properties.Read(file.c_str()), 0);
    ASSERT_EQ(properties.GetNKeys(), 1);
    EXPECT_EQ(NarrowText(properties.GetValue(1)), "1");
}

/** Gives some of a text, then ends or throws; takes some text, then refuses or throws. */
class BrokenBuffer : public std::streambuf {
public:
    BrokenBuffer(std::string iText, std::size_t iGood, bool iThrows)
        : text(std::move(iText)), good(iGood), throws(iThrows) {
        setg(text.data(), text.data(), text.data() + good);
    }

    /** What was written. */
    const std::string& Written() const { return written; }

protected:
    int_type underflow() override { return Broken(); }
    int_type overflow(int_type iCharacter) override {
        if (written.size() == good) {
            return Broken();
        }
        written += traits_type::to_char_type(iCharacter);
        return iCharacter;
    }

private:
    int_type Broken() const {
        if (throws) {
            throw std::runtime_error("broken");
        }
        return traits_type::eof();
    }

    std::string text;
    std::string written;
    std::size_t good;
    bool throws;
};

TEST(RecordTextTrouble, ReadingThatBreaksOffAnywhereGivesWhatCameBefore) {
    const std::string text = RecordTesting::kSampleText;
    for (std::size_t good = 0; good < text.size(); ++good) {
        for (const bool throws : {false, true}) {
            BrokenBuffer buffer(text, good, throws);
            std::istream stream(&buffer);
            ActivityInfo activity;
            FillWithOldValues(activity);
            EXPECT_NO_THROW(stream >> activity) << good;
            EXPECT_FALSE(stream.good()) << good;
            EXPECT_EQ(activity.participant, "old participant");
            const std::string id = RecordTesting::Bytes(activity.id);
            EXPECT_TRUE(std::string("A1").compare(0, id.size(), id) == 0) << good << " " << id;
            EXPECT_EQ(activity.inputs == nullptr, activity.inputNumber == 0);
            EXPECT_EQ(activity.outputs == nullptr, activity.outputNumber == 0);
            EXPECT_EQ(activity.process.datas == nullptr, activity.process.dataNumber == 0);

            std::istringstream whole(text);
            EXPECT_TRUE(whole >> activity) << "the next call";
            EXPECT_EQ(RecordTesting::ToText(activity), text);
        }
    }
}

TEST(RecordTextTrouble, WritingThatBreaksOffAnywhereFailsTheStream) {
    ActivityInfo activity;
    RecordTesting::FillSample(activity);
    const std::string text = RecordTesting::ToText(activity);
    for (std::size_t good = 0; good < text.size(); ++good) {
        for (const bool throws : {false, true}) {
            BrokenBuffer buffer(std::string(good, ' '), good, throws);
            std::ostream stream(&buffer);
            EXPECT_NO_THROW(stream << activity) << good;
            EXPECT_TRUE(stream.bad()) << good;
            EXPECT_EQ(buffer.Written(), text.substr(0, good));
            EXPECT_EQ(RecordTesting::ToText(activity), text) << "the next call";
        }
    }
}

}  // namespace
