#include "QorWflPropertyFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace {

constexpr const char* kPathVariable = "BexMsgCatalogPath";
constexpr const char* kCurrentDirectory = ".";
constexpr char kPathSeparator = ':';
constexpr char kComment = '/';
constexpr char kContinuation = '\\';
constexpr char kQuote = '"';
constexpr char kBlank = ' ';
constexpr int kNotFound = 1;
constexpr int kBothEnds = 3;  // modes of Strip
constexpr int kEvery = 4;

bool IsRegularFile(const std::string& iName) {
    struct stat status {};
    return ::stat(iName.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/** The directories to look in, separated by colons. */
std::string SearchPath() {
    const char* value = std::getenv(kPathVariable);
    std::string path = value == nullptr ? "" : value;
    if (path.empty() || path.back() == kPathSeparator) {
        path += kCurrentDirectory;
    }
    return path;
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

/** One line, with the lines that backslashes at its end join to it. */
BexUnicodeString ReadLogicalLine(std::istream& ioFile) {
    BexUnicodeString line;
    line.BuildFromStream(ioFile, 1);
    std::string joined(line.NarrowView());
    while (!joined.empty() && joined.back() == kContinuation) {
        line.BuildFromStream(ioFile, 0);
        joined.pop_back();
        joined += line.NarrowView();
    }
    return BexUnicodeString::FromNarrow(std::move(joined));
}

bool IsComment(const BexUnicodeString& iLine) {
    const std::string_view text = iLine.NarrowView();
    const std::size_t start = text.find_first_not_of(kBlank);
    return start != std::string_view::npos && text[start] == kComment;
}

BexUnicodeString Unquoted(const BexUnicodeString& iValue) {
    const int length = iValue.GetLengthInChar();
    const bool isQuoted = length >= 2 && iValue[0] == kQuote && iValue[length - 1] == kQuote;
    return isQuoted ? iValue.SubString(1, length - 2) : iValue;
}

}  // namespace

QorWflPropertyFile::QorWflPropertyFile() = default;

int QorWflPropertyFile::Read(const BexUnicodeString& iFileName) {
    const std::optional<std::string> name = Locate(iFileName.ConvertToChar());
    if (!name) {
        return kNotFound;
    }
    std::ifstream file(*name);  // one that cannot be opened counts as empty: callers rely on 0 for it
    while (file.good()) {
        const BexUnicodeString line = ReadLogicalLine(file);
        const int equals = line.SearchSubString("=");
        if (equals > 0 && !IsComment(line)) {
            const BexUnicodeString value = line.SubString(equals + 1, line.GetLengthInChar()).Strip(kBothEnds, kBlank);
            SetValue(line.SubString(0, equals).Strip(kEvery, kBlank), Unquoted(value));
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
    const int position = keys.Locate(iKey);
    if (position > 0) {
        values.Set(position, iValue);
        return;
    }
    if (values.Size() > keys.Size()) {  // memory for an earlier key could not be had: its value's place is free
        values.Set(keys.Size() + 1, iValue);
    } else {
        values.Append(iValue);
    }
    keys.Append(iKey);
}
