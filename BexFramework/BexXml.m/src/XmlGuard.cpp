#include "XmlGuard.h"

#include "BexUnicodeChar.h"
#include "KeyedHash.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

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
        if (count * 2 >= slots.size()) {
            Grow();
        }
        const std::uint64_t hash = KeyedHash(iName.data(), iName.size() * sizeof(Unit));
        Slot& slot = slots[SlotOf(slots, iName, hash)];
        if (slot.name.data() != nullptr) {
            return true;
        }
        slot = {hash, iName};
        return ++count <= most;
    }

private:
    struct Slot {
        std::uint64_t hash = 0;
        Name name;  // no data while the slot is free
    };

    static constexpr std::size_t kRecent = 64;

    static std::size_t RecentSlotOf(Name iName) {
        return (iName.size() * 8 + BexUnicodeChar(iName.front()).Code() + BexUnicodeChar(iName.back()).Code() * 4U) %
               kRecent;
    }

    static std::size_t SlotOf(const std::vector<Slot>& iSlots, Name iName, std::uint64_t iHash) {
        const std::size_t mask = iSlots.size() - 1;
        std::size_t slot = static_cast<std::size_t>(iHash) & mask;
        while (iSlots[slot].name.data() != nullptr && (iSlots[slot].hash != iHash || iSlots[slot].name != iName)) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }

    void Grow() {
        std::vector<Slot> fresh(slots.empty() ? 64 : slots.size() * 2);
        for (const Slot& slot : slots) {
            if (slot.name.data() != nullptr) {
                fresh[SlotOf(fresh, slot.name, slot.hash)] = slot;
            }
        }
        slots = std::move(fresh);
    }

    std::size_t most;
    std::size_t count = 0;
    std::vector<Slot> slots;    // a power of two of them
    Name recentNames[kRecent];  // some that were added, found without the hash
};

template <typename Unit>
class Guard {
public:
    using View = std::basic_string_view<Unit>;

    Guard(View iText, const XmlLimits& iLimits)
        : text(iText), limits(iLimits), elementNames(iLimits.names), attributeNames(iLimits.names) {}

    XmlFinding Run() {
        const std::size_t nul = text.find(Unit{0});
        if (nul != View::npos) {
            Refuse("a NUL character is not allowed", nul);
        }
        while (finding.error == nullptr && SkipTo('<')) {
            Markup();
        }
        return finding;
    }

private:
    static bool IsSpace(Unit iUnit) {
        return iUnit == Unit{' '} || iUnit == Unit{'\t'} || iUnit == Unit{'\n'} || iUnit == Unit{'\r'};
    }

    bool AtEnd() const { return at >= text.size(); }
    bool Is(std::size_t iPos, char iChar) const { return iPos < text.size() && text[iPos] == static_cast<Unit>(iChar); }
    bool IsSpaceAt(std::size_t iPos) const { return iPos < text.size() && IsSpace(text[iPos]); }

    bool StartsWith(std::string_view iWord) const {
        return text.size() - at >= iWord.size() &&
               std::equal(iWord.begin(), iWord.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                          [](char iChar, Unit iUnit) { return static_cast<Unit>(iChar) == iUnit; });
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
        while (IsSpaceAt(at)) {
            ++at;
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

    bool IsXmlDeclaration() const { return StartsWith("<?xml") && IsSpaceAt(at + 5); }

    /** At "<". */
    void Markup() {
        if (StartsWith("<!--")) {
            ++nodesOfDocument;
            at += 4;
            SkipPast("-->");
        } else if (StartsWith("<![CDATA[")) {
            SkipPast("]]>");
        } else if (StartsWith("<?")) {
            nodesOfDocument += at == 0 && IsXmlDeclaration() ? 0 : 1;
            SkipPast("?>");
        } else if (StartsWith("<!DOCTYPE")) {
            DocumentType();
        } else if (StartsWith("</")) {
            --depth;
            SkipPast(">");
        } else {
            StartTag();
        }
    }

    void StartTag() {
        const std::size_t start = at;
        hasRoot = true;
        ++at;
        if (!elementNames.Add(NameBefore({'>', '/'}))) {
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
        const std::size_t start = at;
        while (!AtEnd() && !Is(at, '>') && !Is(at, '"') && !Is(at, '\'')) {
            ++at;
        }
        const View name = text.substr(start, at - start);
        const std::size_t end = std::min(name.find(Unit{'='}), name.size());
        std::size_t length = end;
        while (length > 0 && IsSpace(name[length - 1])) {
            --length;
        }
        attributeName = name.substr(0, length);
        return !AtEnd();
    }

    /** The name that begins here, up to white space or one of the ends. */
    View NameBefore(std::initializer_list<char> iEnds) {
        const std::size_t start = at;
        while (!AtEnd() && !IsSpace(text[at]) &&
               std::none_of(iEnds.begin(), iEnds.end(), [this](char iEnd) { return Is(at, iEnd); })) {
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
        NameBefore({'>', '[', '"', '\''});
        type.name.end = at;
        SkipSpace();
        type.hasPublicId = StartsWith("PUBLIC");
        type.hasSystemId = type.hasPublicId || StartsWith("SYSTEM");
        at += type.hasSystemId ? std::string_view("SYSTEM").size() : 0;
        const bool hasIds =
            (!type.hasPublicId || Identifier(type.publicId)) && (!type.hasSystemId || Identifier(type.systemId));
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

    View text;
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
XmlFinding GuardXml(std::basic_string_view<Unit> iText, const XmlLimits& iLimits) {
    return Guard<Unit>(iText, iLimits).Run();
}

template XmlFinding GuardXml(std::string_view iText, const XmlLimits& iLimits);
template XmlFinding GuardXml(std::u16string_view iText, const XmlLimits& iLimits);
