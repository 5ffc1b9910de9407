#ifndef PropertyText_H
#define PropertyText_H

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/**
 * A logical line of a property file: a line with those that backslashes at its end join to it. All text is as it stands
 * in the file, ISO-8859-1.
 */
struct PropertyLine {
    /** What the library makes of the line. */
    enum class Kind {
        kBlank,    ///< nothing, or blanks alone
        kComment,  ///< its first character but blanks is a slash
        kSetting,  ///< sets a key
        kIgnored   ///< has no "=", or has it in front
    };

    /** The number of its last line in the file. */
    std::size_t Last() const { return first + parts.size() - 1; }

    Kind kind = Kind::kBlank;
    std::size_t first = 1;           ///< the number of its first line in the file, from 1
    std::vector<std::string> parts;  ///< the lines of the file that it consists of, at least one
    bool isOpen = false;             ///< its last line ends in a backslash, and so does the file
    std::string text;                ///< what the parts give, joined
    std::string key;                 ///< of a setting: the text before the first "=" without blanks
    std::string value;               ///< of a setting: the value that the library takes
    bool isQuoted = false;           ///< of a setting: the value stood between quotes, which are gone
};

/** A property file, read as the library does it, but with what is not a setting, and with where everything stands. */
class PropertyText {
public:
    explicit PropertyText(std::string_view iContent);

    /** @return all logical lines in order. */
    const std::vector<PropertyLine>& Lines() const { return lines; }
    /** @return the line that sets a key, the last one when there are several; null when no line does. */
    const PropertyLine* LineOf(const std::string& iKey) const;

private:
    std::vector<PropertyLine> lines;
    std::unordered_map<std::string, std::size_t> lastOfKey;  // the index of the line that counts
};

#endif
