#include "ConfigFindings.h"
#include "PropertyKeys.h"
#include "SafeText.h"
#include "UserText.h"

#include <map>
#include <set>
#include <string_view>

namespace {

using Kind = PropertyLine::Kind;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/** A key that nobody asks for. What is wrong with its characters is told elsewhere. */
void CheckKnown(const PropertyLine& iLine, std::vector<ConfigFinding>& ioFindings) {
    const std::string& key = iLine.key;
    if (key.empty()) {
        ioFindings.push_back(
            {ConfigCode::EmptyKey, iLine.first,
             "there are only blanks in front of \"=\"; that sets the empty key, which nobody asks for"});
        return;
    }
    const bool isTold = key.find_first_of("\t\r") != std::string::npos || key.starts_with(kByteOrderMark);
    if (isTold || IsKnownKey(key)) {
        return;
    }
    const std::string nearest = NearestKey(key);
    const std::string message = "the library does not ask for the key " + Quoted(Latin1ToUtf8(key));
    if (key.find_first_of("#;!") == 0) {
        ioFindings.push_back({ConfigCode::UnknownKey, iLine.first, message, "a comment begins with a slash"});
    } else if (nearest.empty()) {
        ioFindings.push_back({ConfigCode::ForeignKey, iLine.first, message, "it may be one of the host's own"});
    } else {
        ioFindings.push_back({ConfigCode::UnknownKey, iLine.first, message,
                              "did you mean " + Quoted(Latin1ToUtf8(nearest)) + "? Upper and lower case differ"});
    }
}

/** A setting that a later one of the same key replaces. */
void CheckTwice(const PropertyText& iFile, const PropertyLine& iLine, std::vector<ConfigFinding>& ioFindings) {
    const PropertyLine* last = iFile.LineOf(iLine.key);
    if (last != &iLine) {
        ioFindings.push_back({ConfigCode::SetTwice, iLine.first,
                              "the key " + Quoted(Latin1ToUtf8(iLine.key)) + " is set again in line " +
                                  std::to_string(last->first) + ", and that value counts",
                              "take one of the two lines out"});
    }
}

void CheckEmpty(const PropertyText& iFile, const PropertyLine& iLine, std::vector<ConfigFinding>& ioFindings) {
    const bool counts = iFile.LineOf(iLine.key) == &iLine;
    if (counts && iLine.value.empty() && IsKnownKey(iLine.key) && !iLine.key.starts_with(kMappingPrefix)) {
        ioFindings.push_back(
            {ConfigCode::EmptyValue, iLine.first,
             "the key " + Quoted(Latin1ToUtf8(iLine.key)) + " has an empty value, which replaces the one before",
             "take the line out to keep the built-in value"});
    }
}

/** What the priorities of the library come to. */
void CheckPriorities(const PropertyText& iFile, const LoadedConfig& iConfig, std::vector<ConfigFinding>& ioFindings) {
    std::map<std::string, std::string> codeOfWord;
    std::set<std::string> codes;
    std::size_t firstLine = 0;
    for (const PriorityWord& priority : iConfig.Priorities()) {
        const std::string code(priority.code.NarrowView());
        const std::string word(priority.word.NarrowView());
        const PropertyLine* line = iFile.LineOf(std::string(kPriorityPrefix) + code);
        if (line == nullptr) {
            return;  // the built-in ones
        }
        firstLine = firstLine == 0 ? line->first : firstLine;
        codes.insert(code);
        if (code.empty()) {
            ioFindings.push_back({ConfigCode::PriorityWithoutCode, line->first,
                                  "the key has no code behind the dot, so it is the priority of the empty code"});
        }
        const auto [other, isNew] = codeOfWord.emplace(word, code);
        if (!isNew) {
            ioFindings.push_back({ConfigCode::PriorityWordTwice, line->first,
                                  "the word " + Quoted(Latin1ToUtf8(word)) + " is that of the code " +
                                      Quoted(Latin1ToUtf8(other->second)) +
                                      " too, which is the one it is read back as"});
        }
    }
    std::string lost;
    for (const char* code : {"1", "2", "3"}) {
        lost += firstLine != 0 && codes.count(code) == 0 ? (lost.empty() ? "" : ", ") + Quoted(code) : "";
    }
    if (!lost.empty()) {
        ioFindings.push_back({ConfigCode::PrioritiesReplaced, firstLine,
                              "the first priority replaces all built-in ones; no word is left for the code " + lost});
    }
}

}  // namespace

void FindInSettings(const PropertyText& iFile, const LoadedConfig& iConfig, std::vector<ConfigFinding>& ioFindings) {
    for (const PropertyLine& line : iFile.Lines()) {
        if (line.kind == Kind::kSetting) {
            CheckKnown(line, ioFindings);
            CheckTwice(iFile, line, ioFindings);
            CheckEmpty(iFile, line, ioFindings);
        }
    }
    CheckPriorities(iFile, iConfig, ioFindings);
}
