#include "XmlGuard.h"

#include "BexUnicodeChar.h"
#include "KeyedHash.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

/** Some ASCII characters. */
class AsciiSet {
public:
    constexpr explicit AsciiSet(std::string_view iCharacters) {
        for (const char character : iCharacters) {
            bits[static_cast<unsigned char>(character) / 64] |= Bit(static_cast<unsigned char>(character));
        }
    }
    constexpr bool Has(char16_t iCode) const { return iCode < 0x80U && (bits[iCode / 64] & Bit(iCode)) != 0; }

private:
    static constexpr std::uint64_t Bit(char16_t iCode) { return std::uint64_t{1} << (iCode % 64U); }
    std::uint64_t bits[2] = {};
};

constexpr AsciiSet kSpace(" \t\n\r");
constexpr AsciiSet kElementNameEnds(" \t\n\r>/");
constexpr AsciiSet kAttributeNameEnds(" \t\n\r=>\"'");
constexpr AsciiSet kTypeNameEnds(" \t\n\r>[\"'");

/** A set of names that only grows, up to a bound. */
template <typename Unit>
class NameSet {
public:
    using Name = std::basic_string_view<Unit>;

    explicit NameSet(int iMost) : most(static_cast<std::size_t>(iMost)) {}

    /** @return false when the name is new and one too many. */
    bool Add(Name iName) {
        if (iName.empty()) {
            return true;  // not well-formed
        }
        Name& recent = recentNames[RecentSlotOf(iName)];
        if (recent == iName) {
            return true;
        }
        recent = iName;
        if (names.size() * 2 >= slots.size()) {
            Grow();
        }
        const auto hash = static_cast<std::uint32_t>(KeyedHash(iName.data(), iName.size() * sizeof(Unit)));
        Slot& slot = slots[SlotOf(slots, iName, hash)];
        if (slot.name != kFree) {
            return true;
        }
        slot = {hash, static_cast<std::uint32_t>(names.size())};
        names.push_back(iName);
        return names.size() <= most;
    }

    /** The names in the order in which they came. */
    const std::vector<Name>& Names() const { return names; }

private:
    static constexpr std::uint32_t kFree = UINT32_MAX;
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t name = kFree;  // its place in `names`
    };

    static constexpr std::size_t kRecent = 64;

    static std::size_t RecentSlotOf(Name iName) {
        return (iName.size() * 8 + BexUnicodeChar(iName.front()).Code() + BexUnicodeChar(iName.back()).Code() * 4U) %
               kRecent;
    }

    std::size_t SlotOf(const std::vector<Slot>& iSlots, Name iName, std::uint32_t iHash) const {
        const std::size_t mask = iSlots.size() - 1;
        std::size_t at = iHash & mask;
        while (iSlots[at].name != kFree && (iSlots[at].hash != iHash || names[iSlots[at].name] != iName)) {
            at = (at + 1) & mask;
        }
        return at;
    }

    void Grow() {
        std::vector<Slot> fresh(slots.empty() ? 64 : slots.size() * 2);
        for (const Slot& slot : slots) {
            if (slot.name != kFree) {
                fresh[SlotOf(fresh, names[slot.name], slot.hash)] = slot;
            }
        }
        slots = std::move(fresh);
    }

    std::size_t most;
    std::vector<Name> names;
    std::vector<Slot> slots;    // a power of two of them
    Name recentNames[kRecent];  // some that were added, found without the hash
};

template <typename Unit>
class Guard {
public:
    using View = std::basic_string_view<Unit>;

    Guard(View iText, bool iIsUtf8, const XmlLimits& iLimits)
        : text(iText), isUtf8(iIsUtf8), limits(iLimits), elementNames(iLimits.names), attributeNames(iLimits.names) {}

    XmlFinding Run() {
        const std::size_t nul = text.find(Unit{0});
        if (nul != View::npos) {
            Refuse("a NUL character is not allowed", nul);
        }
        while (finding.error == nullptr && SkipTo('<')) {
            Markup();
        }
        if (finding.error == nullptr) {
            finding.elementNames = PlacesOf(elementNames);
            finding.attributeNames = PlacesOf(attributeNames);
        }
        return finding;
    }

private:
    static char16_t CodeOf(Unit iUnit) { return BexUnicodeChar(iUnit).Code(); }
    static bool IsSpace(Unit iUnit) { return kSpace.Has(CodeOf(iUnit)); }

    bool AtEnd() const { return at >= text.size(); }
    bool Is(std::size_t iPos, char iChar) const { return iPos < text.size() && text[iPos] == static_cast<Unit>(iChar); }

    /**
     * The units of the white space that begins here, 0 when there is none. U+0085 and U+2028 are white space in
     * XML 1.1; in XML 1.0 the parser stops at them, so they may be taken for white space always.
     */
    std::size_t SpaceLengthAt(std::size_t iPos) const {
        if (iPos >= text.size()) {
            return 0;
        }
        const Unit unit = text[iPos];
        if (CodeOf(unit) < 0x80U) {
            return IsSpace(unit) ? 1 : 0;
        }
        if constexpr (sizeof(Unit) > 1) {
            return unit == u'\u0085' || unit == u'\u2028' ? 1 : 0;
        } else if (isUtf8) {
            return HasAt(iPos, "\xC2\x85") ? 2 : HasAt(iPos, "\xE2\x80\xA8") ? 3 : 0;
        } else {
            return unit == '\x85' ? 1 : 0;
        }
    }

    bool HasAt(std::size_t iPos, std::string_view iWord) const {
        return text.size() - iPos >= iWord.size() &&
               std::equal(iWord.begin(), iWord.end(), text.begin() + static_cast<std::ptrdiff_t>(iPos),
                          [](char iChar, Unit iUnit) { return static_cast<Unit>(iChar) == iUnit; });
    }

    bool StartsWith(std::string_view iWord) const { return HasAt(at, iWord); }

    std::vector<XmlRange> PlacesOf(const NameSet<Unit>& iNames) const {
        std::vector<XmlRange> places;
        places.reserve(iNames.Names().size());
        for (const View name : iNames.Names()) {
            const auto start = static_cast<std::size_t>(name.data() - text.data());
            places.push_back({start, start + name.size()});
        }
        return places;
    }

    void Refuse(const char* iError, std::size_t iPosition) {
        finding.error = iError;
        finding.position = iPosition;
    }

    /** Goes to the next such character, or to the end. */
    bool SkipTo(char iChar) {
        at = std::min(text.find(static_cast<Unit>(iChar), at), text.size());
        return !AtEnd();
    }

    /** Goes behind the next such word, or to the end. */
    void SkipPast(std::string_view iWord) {
        while (SkipTo(iWord.front())) {
            if (StartsWith(iWord)) {
                at += iWord.size();
                return;
            }
            ++at;
        }
    }

    /** Goes behind white space; false when there is none here. */
    bool SkipSpace() {
        const std::size_t start = at;
        while (const std::size_t length = SpaceLengthAt(at)) {
            at += length;
        }
        return at > start;
    }

    /** Goes behind a quoted literal whose first quote is here; false when it does not end. */
    bool SkipLiteral() {
        const char quote = static_cast<char>(text[at]);
        ++at;
        if (!SkipTo(quote)) {
            return false;
        }
        ++at;
        return true;
    }

    bool IsXmlDeclaration() const { return StartsWith("<?xml") && at + 5 < text.size() && IsSpace(text[at + 5]); }

    /** At "<". */
    void Markup() {
        if (StartsWith("<!--")) {
            ++nodesOfDocument;
            at += 4;
            SkipPast("-->");
        } else if (StartsWith("<![CDATA[")) {
            SkipPast("]]>");
        } else if (StartsWith("<?")) {
            const bool isDeclaration = at == 0 && IsXmlDeclaration();
            nodesOfDocument += isDeclaration ? 0 : 1;
            SkipPast("?>");
            if (isDeclaration) {
                CheckDeclaration();
            }
        } else if (StartsWith("<!DOCTYPE")) {
            DocumentType();
        } else if (StartsWith("</")) {
            --depth;
            SkipPast(">");
        } else {
            StartTag();
        }
    }

    /** Behind the XML declaration. The white space of XML 1.1 may not stand in it: what it declares would be
     * overlooked. */
    void CheckDeclaration() {
        const View declaration = text.substr(0, at);
        const auto other =
            std::find_if(declaration.begin(), declaration.end(), [](Unit iUnit) { return CodeOf(iUnit) >= 0x80U; });
        if (other != declaration.end()) {
            Refuse("the XML declaration is not well-formed", static_cast<std::size_t>(other - declaration.begin()));
        }
    }

    void StartTag() {
        const std::size_t start = at;
        hasRoot = true;
        ++at;
        if (!elementNames.Add(NameBefore(kElementNameEnds))) {
            Refuse("the text has too many distinct element names", start);
        }
        int attributes = 0;
        while (NextInTag()) {
            if (Is(at, '>')) {
                break;
            }
            const View name = attributeName;
            if (!SkipLiteral()) {
                return;
            }
            if (++attributes > limits.attributes) {
                Refuse("an element has too many attributes", start);
                return;
            }
            if (!attributeNames.Add(name)) {
                Refuse("the text has too many distinct attribute names", start);
                return;
            }
        }
        const bool isEmpty = Is(at - 1, '/');
        if (!isEmpty || depth == limits.depth) {
            ++depth;
        }
        if (depth > limits.depth) {
            Refuse("elements are nested too deep", start);
        }
    }

    /** Goes to the quote that opens the next attribute's value, keeping its name, or to the tag's end. */
    bool NextInTag() {
        SkipSpace();
        attributeName = NameBefore(kAttributeNameEnds);
        while (!AtEnd() && !Is(at, '>') && !Is(at, '"') && !Is(at, '\'')) {
            ++at;
        }
        return !AtEnd();
    }

    /** The name that begins here, up to one of the ends, which include the white space of ASCII, or other white space.
     */
    View NameBefore(const AsciiSet& iEnds) {
        const std::size_t start = at;
        while (!AtEnd() && !iEnds.Has(CodeOf(text[at])) && (CodeOf(text[at]) < 0x80U || SpaceLengthAt(at) == 0)) {
            ++at;
        }
        return text.substr(start, at - start);
    }

    /** `<!DOCTYPE name SYSTEM "file">` or `<!DOCTYPE name PUBLIC "id" "file">`; whatever declares anything is refused.
     */
    void DocumentType() {
        XmlDocumentType type;
        type.nodesBefore = nodesOfDocument;
        type.whole.start = at;
        at += std::string_view("<!DOCTYPE").size();
        const bool isSpaced = SkipSpace();
        type.name.start = at;
        NameBefore(kTypeNameEnds);
        type.name.end = at;
        SkipSpace();
        type.hasPublicId = StartsWith("PUBLIC");
        type.hasSystemId = type.hasPublicId || StartsWith("SYSTEM");
        at += type.hasSystemId ? std::string_view("SYSTEM").size() : 0;
        const bool hasIds = (!type.hasPublicId || (Identifier(type.publicId) && IsPublicId(type.publicId))) &&
                            (!type.hasSystemId || Identifier(type.systemId));
        SkipSpace();
        const bool isFirst = !hasRoot && finding.documentType.whole.end == 0;
        if (hasIds && Is(at, '[')) {
            Refuse("a document type with declarations of its own is not allowed", at);
        } else if (!isFirst || !isSpaced || type.name.start == type.name.end || !hasIds || !Is(at, '>')) {
            Refuse("the document type is not well-formed", type.whole.start);
        } else {
            ++at;
            type.whole.end = at;
            finding.documentType = type;
        }
    }

    /** White space and a quoted literal. */
    bool Identifier(XmlRange& oRange) {
        const bool isSpaced = SkipSpace();
        oRange.start = at + 1;
        if (!isSpaced || (!Is(at, '"') && !Is(at, '\'')) || !SkipLiteral()) {
            return false;
        }
        oRange.end = at - 1;
        return true;
    }

    /** Whether the characters are those that XML allows in a public identifier. */
    bool IsPublicId(const XmlRange& iRange) const {
        constexpr std::string_view kAllowed(
            " \r\nabcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-'()+,./:=?;!*#@$_%");
        const View publicId = text.substr(iRange.start, iRange.end - iRange.start);
        return std::all_of(publicId.begin(), publicId.end(), [&](Unit iUnit) {
            return std::any_of(kAllowed.begin(), kAllowed.end(),
                               [iUnit](char iChar) { return static_cast<Unit>(iChar) == iUnit; });
        });
    }

    View text;
    bool isUtf8;
    XmlLimits limits;
    NameSet<Unit> elementNames;
    NameSet<Unit> attributeNames;
    View attributeName;
    std::size_t at = 0;
    int depth = 0;
    bool hasRoot = false;
    int nodesOfDocument = 0;  // of those that may stand before the root
    XmlFinding finding;
};

}  // namespace

template <typename Unit>
XmlFinding GuardXml(std::basic_string_view<Unit> iText, bool iIsUtf8, const XmlLimits& iLimits) {
    return Guard<Unit>(iText, iIsUtf8, iLimits).Run();
}

template XmlFinding GuardXml(std::string_view iText, bool iIsUtf8, const XmlLimits& iLimits);
template XmlFinding GuardXml(std::u16string_view iText, bool iIsUtf8, const XmlLimits& iLimits);
