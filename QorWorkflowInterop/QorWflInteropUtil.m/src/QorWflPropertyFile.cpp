#include "QorWflPropertyFile.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr const char* kPathVariable = "BexMsgCatalogPath";
constexpr const char* kCurrentDirectory = ".";
constexpr char kPathSeparator = ':';
constexpr char kComment = '/';
constexpr char kContinuation = '\\';
constexpr char kQuote = '"';
constexpr char kBlank = ' ';
constexpr int kNotFound = 1;

bool IsRegularFile(const std::string& iName) {
    struct stat status {};
    return ::stat(iName.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/** The directories to look in, separated by colons; an empty one is the current directory. */
std::string SearchPath() {
    const char* value = std::getenv(kPathVariable);
    return value == nullptr ? "" : value;
}

/** The regular file of a name, along the search path unless the name is absolute. */
std::optional<std::string> Locate(const std::string& iName) {
    if (!iName.empty() && iName.front() == '/') {
        return IsRegularFile(iName) ? std::optional<std::string>(iName) : std::nullopt;
    }
    const std::string path = SearchPath();
    std::size_t start = 0;
    while (start <= path.size()) {
        const std::size_t end = std::min(path.find(kPathSeparator, start), path.size());
        const std::string directory = end == start ? kCurrentDirectory : path.substr(start, end - start);
        const std::string candidate = directory + "/" + iName;
        if (IsRegularFile(candidate)) {
            return candidate;
        }
        start = end + 1;
    }
    return std::nullopt;
}

/**
 * A file that is open for reading while this lives; one that cannot be opened has nothing to read, nor has a pipe or a
 * device that has taken its place meanwhile.
 */
class OpenFile {
public:
    explicit OpenFile(const std::string& iName) {
        do {
            handle = ::open(iName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
        } while (handle < 0 && errno == EINTR);
        struct stat status {};
        if (handle >= 0 && (::fstat(handle, &status) != 0 || !S_ISREG(status.st_mode))) {
            Close();
        }
    }
    ~OpenFile() { Close(); }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /** The number of bytes read; 0 at the end and where reading fails. */
    std::size_t Read(char* oBytes, std::size_t iLength) const {
        ssize_t length = -1;
        do {
            length = handle < 0 ? 0 : ::read(handle, oBytes, iLength);
        } while (length < 0 && errno == EINTR);
        return static_cast<std::size_t>(std::max<ssize_t>(length, 0));
    }

private:
    void Close() {
        if (handle >= 0) {
            ::close(handle);
            handle = -1;
        }
    }

    int handle = -1;
};

/** All of a file that can be read, up to where reading fails; a file stream would lose what it read just before. */
std::string ContentOf(const std::string& iName) {
    constexpr std::size_t kFirstBlock = 4096;
    const OpenFile file(iName);
    std::string content;
    std::size_t block = kFirstBlock;
    std::size_t read = 0;
    do {
        const std::size_t length = content.size();
        content.resize(length + block);
        read = file.Read(content.data() + length, block);
        content.resize(length + read);
        block = read == block ? content.size() : kFirstBlock;
    } while (read > 0);
    return content;
}

/** Takes lines off the beginning of a text. */
class LineSource {
public:
    explicit LineSource(std::string_view iText) : rest(iText) {}

    bool AtEnd() const { return rest.empty(); }

    /** One line as it stands, empty at the end of the text. */
    std::string_view PhysicalLine() {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        return line;
    }

    /**
     * One line with the lines that backslashes at its end join to it: a backslash goes, the next line is appended, and
     * what results is looked at again. Valid until the next call.
     */
    std::string_view LogicalLine() {
        const std::string_view line = PhysicalLine();
        if (line.empty() || line.back() != kContinuation) {
            return line;
        }
        joined = line;
        while (!joined.empty() && joined.back() == kContinuation) {
            joined.pop_back();
            joined += PhysicalLine();
        }
        return joined;
    }

private:
    std::string_view rest;
    std::string joined;
};

bool IsComment(std::string_view iLine) {
    const std::size_t start = iLine.find_first_not_of(kBlank);
    return start != std::string_view::npos && iLine[start] == kComment;
}

/** The text without the blanks around it. */
std::string_view WithoutBlanksAround(std::string_view iText) {
    iText.remove_prefix(std::min(iText.find_first_not_of(kBlank), iText.size()));
    return iText.substr(0, iText.find_last_not_of(kBlank) + 1);
}

/** The key without its blanks, wherever they are. */
BexUnicodeString KeyOf(std::string_view iText) {
    iText = WithoutBlanksAround(iText);
    if (iText.find(kBlank) == std::string_view::npos) {
        return BexUnicodeString::FromNarrow(iText);
    }
    std::string key(iText);
    key.erase(std::remove(key.begin(), key.end(), kBlank), key.end());
    return BexUnicodeString::FromNarrow(key);
}

/** The value without the blanks around it, then without one pair of quotes. */
BexUnicodeString ValueOf(std::string_view iText) {
    iText = WithoutBlanksAround(iText);
    if (iText.size() >= 2 && iText.front() == kQuote && iText.back() == kQuote) {
        iText = iText.substr(1, iText.size() - 2);
    }
    return BexUnicodeString::FromNarrow(iText);
}

}  // namespace

QorWflPropertyFile::QorWflPropertyFile() = default;

int QorWflPropertyFile::Read(const BexUnicodeString& iFileName) {
    const std::optional<std::string> name = Locate(iFileName.ConvertToChar());
    if (!name) {
        return kNotFound;
    }
    const std::string content =
        ContentOf(*name);  // one that cannot be opened counts as empty: callers rely on 0 for it
    LineSource lines(content);
    while (!lines.AtEnd()) {
        const std::string_view line = lines.LogicalLine();
        // GCOVR_EXCL_START: takes a file of more than 2 GiB and three times as much memory
        if (line.size() > INT_MAX) {
            break;  // more than a text can hold: the file cannot be read any further
        }
        // GCOVR_EXCL_STOP
        const std::size_t equals = line.find('=');
        if (equals != std::string_view::npos && equals > 0 && !IsComment(line)) {
            Put(KeyOf(line.substr(0, equals)), ValueOf(line.substr(equals + 1)));
        }
    }
    return 0;
}

int QorWflPropertyFile::GetNKeys() const {
    return keys.Size();
}

BexUnicodeString QorWflPropertyFile::GetKey(int iIndex) const {
    return keys[iIndex];
}

BexUnicodeString QorWflPropertyFile::GetValue(int iIndex) const {
    return values[iIndex];
}

void QorWflPropertyFile::SetValue(const BexUnicodeString& iKey, const BexUnicodeString& iValue) {
    Put(BexUnicodeString(iKey), BexUnicodeString(iValue));
}

/** As SetValue(), taking the texts over. */
void QorWflPropertyFile::Put(BexUnicodeString&& ioKey, BexUnicodeString&& ioValue) {
    values.Reserve(keys.Size() + 1);  // a key without its value must not stay behind when memory ends
    const int position = keys.LocateOrAppend(std::move(ioKey));
    if (position > values.Size()) {
        values.Append(std::move(ioValue));
    } else {
        values.Set(position, std::move(ioValue));
    }
}
