#include "PropertyText.h"

#include <algorithm>
#include <utility>

namespace {

constexpr char kBlank = ' ';
constexpr char kQuote = '"';
constexpr char kComment = '/';
constexpr char kContinuation = '\\';

/** Takes one line of the file off the content. */
std::string TakePart(std::string_view& ioRest) {
    const std::size_t end = std::min(ioRest.find('\n'), ioRest.size());
    std::string part(ioRest.substr(0, end));
    ioRest.remove_prefix(std::min(end + 1, ioRest.size()));
    return part;
}

/** Takes the parts of a logical line off the content, and joins them. */
void TakeParts(std::string_view& ioRest, PropertyLine& oLine) {
    oLine.parts.push_back(TakePart(ioRest));
    oLine.text = oLine.parts.back();
    while (!oLine.text.empty() && oLine.text.back() == kContinuation) {
        oLine.text.pop_back();
        if (ioRest.empty()) {
            oLine.isOpen = true;
        } else {
            oLine.parts.push_back(TakePart(ioRest));
            oLine.text += oLine.parts.back();
        }
    }
}

std::string KeyOf(std::string_view iText) {
    std::string key(iText);
    key.erase(std::remove(key.begin(), key.end(), kBlank), key.end());
    return key;
}

void TakeValue(std::string_view iText, PropertyLine& oLine) {
    iText.remove_prefix(std::min(iText.find_first_not_of(kBlank), iText.size()));
    iText = iText.substr(0, iText.find_last_not_of(kBlank) + 1);
    oLine.isQuoted = iText.size() >= 2 && iText.front() == kQuote && iText.back() == kQuote;
    oLine.value = oLine.isQuoted ? iText.substr(1, iText.size() - 2) : iText;
}

/** Tells what a line is, from its text. */
void Classify(PropertyLine& ioLine) {
    using Kind = PropertyLine::Kind;
    const std::string_view text = ioLine.text;
    const std::size_t start = text.find_first_not_of(kBlank);
    const std::size_t equals = text.find('=');
    if (start == std::string_view::npos) {
        ioLine.kind = Kind::kBlank;
    } else if (text[start] == kComment) {
        ioLine.kind = Kind::kComment;
    } else if (equals == std::string_view::npos || equals == 0) {
        ioLine.kind = Kind::kIgnored;
    } else {
        ioLine.kind = Kind::kSetting;
        ioLine.key = KeyOf(text.substr(0, equals));
        TakeValue(text.substr(equals + 1), ioLine);
    }
}

}  // namespace

PropertyText::PropertyText(std::string_view iContent) {
    std::size_t next = 1;
    while (!iContent.empty()) {
        PropertyLine line;
        line.first = next;
        TakeParts(iContent, line);
        Classify(line);
        next = line.Last() + 1;
        if (line.kind == PropertyLine::Kind::kSetting) {
            lastOfKey[line.key] = lines.size();
        }
        lines.push_back(std::move(line));
    }
}

const PropertyLine* PropertyText::LineOf(const std::string& iKey) const {
    const auto found = lastOfKey.find(iKey);
    return found == lastOfKey.end() ? nullptr : &lines[found->second];
}
