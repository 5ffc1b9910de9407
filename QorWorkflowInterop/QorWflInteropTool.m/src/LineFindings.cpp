#include "ConfigFindings.h"
#include "PropertyKeys.h"
#include "SafeText.h"
#include "Unicode.h"
#include "UserText.h"

#include <algorithm>
#include <string_view>

namespace {

using Kind = PropertyLine::Kind;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/** Gathers the findings of one line. */
class LineCheck {
public:
    LineCheck(const PropertyLine& iLine, std::vector<ConfigFinding>& ioFindings) : line(iLine), findings(ioFindings) {}

    void Run() {
        CheckByteOrderMark();
        CheckJoining();
        if (line.kind == Kind::kComment) {
            CheckComment();
        } else if (line.kind == Kind::kIgnored) {
            CheckIgnored();
        } else if (line.kind == Kind::kSetting) {
            CheckKey();
            CheckValue();
            CheckCharacters();
        }
    }

private:
    void Add(ConfigCode iCode, const std::string& iMessage, const std::string& iHint = "", std::size_t iPart = 0) {
        findings.push_back({iCode, line.first + iPart, iMessage, iHint});
    }

    void CheckByteOrderMark() {
        if (line.first == 1 && line.text.starts_with(kByteOrderMark)) {
            Add(line.kind == Kind::kSetting ? ConfigCode::ByteOrderMarkInKey : ConfigCode::ByteOrderMark,
                "the file begins with a byte order mark, which is part of its first line",
                "save the file without it, as ISO-8859-1");
        }
    }

    void CheckJoining() {
        if (line.isOpen) {
            Add(ConfigCode::OpenContinuation, "the file ends with a backslash, which joins nothing", "",
                line.parts.size() - 1);
        }
        for (std::size_t i = 0; i < line.parts.size() && line.kind != Kind::kComment; ++i) {
            const std::string_view part = line.parts[i];
            const std::size_t last = part.find_last_not_of(" \t\r");
            if (last != std::string_view::npos && part[last] == '\\' && last + 1 < part.size()) {
                Add(ConfigCode::NoContinuation,
                    "a blank, tab or carriage return stands behind the backslash, so the next line is not joined", "",
                    i);
            }
        }
    }

    /** What a part of a line would set if it stood alone, empty when nothing. */
    static std::string KeyOfPart(const std::string& iPart) {
        const PropertyText alone(iPart);
        return alone.Lines().empty() || alone.Lines().front().kind != Kind::kSetting ? "" : alone.Lines().front().key;
    }

    void CheckComment() {
        // The slash can be behind lines of blanks that are joined to it.
        const bool isInFirst = line.parts.front().find('/') != std::string::npos;
        const std::string& text = isInFirst ? line.parts.front() : line.text;
        const std::size_t slash = text.find('/');
        if (text.compare(slash, 2, "//") != 0) {
            const std::string key = KeyOfPart(text.substr(slash + 1));
            if (!key.empty()) {
                Add(ConfigCode::AccidentalComment,
                    "the line begins with a slash, which makes it a comment; " + Quoted(Latin1ToUtf8(key)) +
                        " is not set",
                    "take the slash away, or begin a comment with two");
            }
        }
        for (std::size_t i = 1; i < line.parts.size(); ++i) {
            if (const std::string key = KeyOfPart(line.parts[i]); !key.empty()) {
                Add(ConfigCode::SwallowedSetting,
                    "the comment before it ends in a backslash, so this line belongs to it; " +
                        Quoted(Latin1ToUtf8(key)) + " is not set",
                    "take the backslash away", i);
            }
        }
    }

    void CheckIgnored() {
        const std::size_t start = line.text.find_first_not_of(" \t\r");
        if (start == std::string::npos) {
            return;  // looks blank, and is ignored like a blank line
        }
        const bool isEqualsFirst = line.text.front() == '=';
        std::string hint =
            isEqualsFirst ? "a key belongs in front of it" : "a setting is KEY = VALUE, a comment begins with a slash";
        if (line.text[start] == '/') {
            hint = "only blanks may stand in front of the slash of a comment, no tab";
        }
        Add(ConfigCode::NoSetting,
            isEqualsFirst ? "the line begins with \"=\", so it is ignored" : "the line has no \"=\", so it is ignored",
            hint);
    }

    void CheckKey() {
        if (line.key.find_first_of("\t\r") != std::string::npos) {
            Add(ConfigCode::TabInKey,
                "the key " + Quoted(Latin1ToUtf8(line.key)) + " holds a tab or a carriage return, which is part of it",
                "only blanks are taken out of keys");
        }
        for (std::size_t i = 1; i < line.parts.size(); ++i) {
            if (const std::string key = KeyOfPart(line.parts[i]); IsKnownKey(key)) {
                Add(ConfigCode::JoinedSetting,
                    "the line before it ends in a backslash, so this line is part of that value; " +
                        Quoted(Latin1ToUtf8(key)) + " is not set",
                    "take the backslash away", i);
            }
        }
    }

    void CheckValue() {
        const std::string& value = line.value;
        if (value.find('\r') != std::string::npos) {
            Add(ConfigCode::CarriageReturn,
                "the value " + Quoted(Latin1ToUtf8(value)) + " holds a carriage return, which is part of it",
                "save the file with line feeds alone as line ends");
        }
        if (!value.empty() && (value.front() == '\t' || value.back() == '\t')) {
            Add(ConfigCode::TabAroundValue,
                "the value " + Quoted(Latin1ToUtf8(value)) + " begins or ends with a tab, which is part of it",
                "only blanks around a value are taken off");
        }
        if (IsHalfQuoted(value)) {
            Add(ConfigCode::UnpairedQuote,
                "the value " + Quoted(Latin1ToUtf8(value)) + " has a quote at one end alone, which is part of it");
        }
    }

    /** Whether a quote stands at an end of a value, without a partner. */
    bool IsHalfQuoted(std::string_view iValue) const {
        const std::string_view text = iValue.substr(0, iValue.find_last_not_of("\r\t") + 1);
        return !line.isQuoted && !text.empty() && (text.front() == '"' || text.back() == '"') &&
               std::count(text.begin(), text.end(), '"') % 2 != 0;
    }

    void CheckCharacters() {
        const std::string text = line.key + line.value;
        const bool hasControl = std::any_of(text.begin(), text.end(), [](char iCharacter) {
            const auto code = static_cast<unsigned char>(iCharacter);
            return (code < 0x20 && iCharacter != '\t' && iCharacter != '\r') || code == 0x7F;
        });
        if (hasControl) {
            Add(ConfigCode::ControlCharacter,
                "the setting " + Quoted(Latin1ToUtf8(line.key)) + " holds a control character, which is part of it");
        }
        if (IsManyByteText(line.text) && !line.text.starts_with(kByteOrderMark)) {
            Add(ConfigCode::Utf8,
                "the line looks like UTF-8; the library reads ISO-8859-1, so the value is " +
                    Quoted(Latin1ToUtf8(line.value)),
                "save the file as ISO-8859-1");
        }
    }

    /** Whether bytes above ASCII are there, and all of them make characters of UTF-8. */
    static bool IsManyByteText(const std::string& iText) {
        const bool isAscii = std::all_of(iText.begin(), iText.end(),
                                         [](char iCharacter) { return static_cast<unsigned char>(iCharacter) < 0x80; });
        return !isAscii && IsUtf8(iText);
    }

    const PropertyLine& line;
    std::vector<ConfigFinding>& findings;
};

}  // namespace

void FindInLines(const PropertyText& iFile, std::vector<ConfigFinding>& ioFindings) {
    for (const PropertyLine& line : iFile.Lines()) {
        LineCheck(line, ioFindings).Run();
    }
}
