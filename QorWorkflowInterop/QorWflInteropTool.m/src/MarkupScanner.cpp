#include "MarkupScanner.h"

#include <algorithm>

namespace {

/** The bytes of the white space at the beginning of a text, 0 when there is none: that of XML 1.1, whose U+0085 and
 * U+2028 no tag of XML 1.0 has outside of values. */
std::size_t SpaceLength(std::string_view iText) {
    constexpr std::string_view kSpaces[] = {" ", "\t", "\r", "\n", "\xC2\x85", "\xE2\x80\xA8"};
    const auto* const space = std::find_if(std::begin(kSpaces), std::end(kSpaces),
                                           [iText](std::string_view iSpace) { return iText.starts_with(iSpace); });
    return space == std::end(kSpaces) ? 0 : space->size();
}

/** Tells places of a text in the order in which they come; looks at each byte once. */
class PlaceCounter {
public:
    explicit PlaceCounter(std::string_view iText) : text(iText) {}

    /** The place of a byte, not before the last one that was asked for. */
    TextPlace At(std::size_t iPosition) {
        for (; at < iPosition; ++at) {
            const char byte = text[at];
            const bool isFirstOfTwo = byte == '\r' && at + 1 < text.size() && text[at + 1] == '\n';
            if (byte == '\n' || (byte == '\r' && !isFirstOfTwo)) {
                ++place.line;
                place.column = 1;
            } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
                ++place.column;
            }
        }
        return place;
    }

private:
    std::string_view text;
    std::size_t at = 0;
    TextPlace place{1, 1};
};

class Scanner {
public:
    explicit Scanner(std::string_view iText) : text(iText), places(iText) {}

    DocumentMarks Run() {
        while (at < text.size()) {
            Text();
            if (at < text.size()) {
                Markup();
            }
        }
        return std::move(marks);
    }

private:
    bool StartsWith(std::string_view iWord) const { return text.substr(at, iWord.size()) == iWord; }

    /** The position of a word from @p iFrom on, or the end. */
    std::size_t Find(std::string_view iWord, std::size_t iFrom) const {
        return std::min(text.find(iWord, iFrom), text.size());
    }

    /** Up to the next markup. */
    void Text() {
        const std::size_t end = Find("<", at);
        if (end > at) {
            AddContent(ContentMark::Text, at, text.substr(at, end - at));
        }
        at = end;
    }

    void Markup() {
        if (StartsWith("<!--")) {
            Enclosed(ContentMark::Comment, "<!--", "-->");
        } else if (StartsWith("<![CDATA[")) {
            Enclosed(ContentMark::CDataSection, "<![CDATA[", "]]>");
        } else if (StartsWith("<?")) {
            Enclosed(ContentMark::Instruction, "<?", "?>");
        } else if (StartsWith("<!")) {
            marks.documentType = places.At(at);
            SkipTag();
        } else if (StartsWith("</")) {
            at = std::min(Find(">", at) + 1, text.size());
            if (!open.empty()) {
                open.pop_back();
            }
        } else {
            StartTag();
        }
    }

    void Enclosed(ContentMark::Kind iKind, std::string_view iStart, std::string_view iEnd) {
        const std::size_t start = at + iStart.size();
        const std::size_t end = Find(iEnd, start);
        AddContent(iKind, at, text.substr(start, end - start));
        at = std::min(end + iEnd.size(), text.size());
    }

    /** Goes behind the next ">" that stands in no quotes. */
    void SkipTag() {
        while (at < text.size() && text[at] != '>') {
            const bool isQuote = text[at] == '"' || text[at] == '\'';
            at = isQuote ? Find(text.substr(at, 1), at + 1) + 1 : at + 1;
        }
        at = std::min(at + 1, text.size());
    }

    void StartTag() {
        ElementMark element;
        element.place = places.At(at);
        element.parent = open.empty() ? kNone : open.back().element;
        element.firstAttribute = marks.attributes.size();
        at = FindNameEnd("/>");
        while (NextInTag() && text[at] != '>' && text[at] != '/') {
            Attribute();
        }
        element.attributeCount = marks.attributes.size() - element.firstAttribute;
        const bool isEmpty = at < text.size() && text[at] == '/';
        at = std::min(Find(">", at) + 1, text.size());
        marks.elements.push_back(element);
        if (!isEmpty) {
            open.push_back({marks.elements.size() - 1, kNone});
        }
    }

    /** Goes behind white space; false at the end of the text. */
    bool NextInTag() {
        while (const std::size_t length = SpaceLength(text.substr(at))) {
            at += length;
        }
        return at < text.size();
    }

    /** Where the name that begins here ends: at white space, one of these characters or the end of the text. */
    std::size_t FindNameEnd(std::string_view iEnds) const {
        std::size_t end = at;
        while (end < text.size() && iEnds.find(text[end]) == std::string_view::npos &&
               SpaceLength(text.substr(end)) == 0) {
            ++end;
        }
        return end;
    }

    void Attribute() {
        AttributeMark attribute;
        attribute.place = places.At(at);
        const std::size_t nameEnd = FindNameEnd("=");
        attribute.name = text.substr(at, nameEnd - at);
        const std::size_t quote = std::min(text.find_first_of("\"'", nameEnd), text.size());
        const std::size_t end = quote == text.size() ? quote : Find(text.substr(quote, 1), quote + 1);
        const std::string_view value = text.substr(std::min(quote + 1, end), end - std::min(quote + 1, end));
        attribute.hasLineEndOrTab = value.find_first_of("\t\r\n") != std::string_view::npos;
        marks.attributes.push_back(attribute);
        at = std::min(end + 1, text.size());
    }

    void AddContent(ContentMark::Kind iKind, std::size_t iPosition, std::string_view iRaw) {
        if (open.empty()) {
            return;
        }
        Level& level = open.back();
        const std::size_t index = marks.contents.size();
        (level.lastContent == kNone ? marks.elements[level.element].firstContent
                                    : marks.contents[level.lastContent].next) = index;
        level.lastContent = index;
        marks.contents.push_back({iKind, places.At(iPosition), iRaw});
    }

    struct Level {
        std::size_t element;
        std::size_t lastContent;
    };

    std::string_view text;
    PlaceCounter places;
    std::size_t at = 0;
    std::vector<Level> open;
    DocumentMarks marks;
};

}  // namespace

DocumentMarks ScanMarkup(std::string_view iText) {
    return Scanner(iText).Run();
}
