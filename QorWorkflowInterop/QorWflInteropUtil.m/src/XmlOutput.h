#ifndef XmlOutput_H
#define XmlOutput_H

#include <BexNarrowText.h>
#include <DOMString.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

/** @return 1 for a code unit of a text that is written as an entity reference, else 0; without a branch. */
constexpr unsigned int IsMarkup(char16_t iUnit) {
    return static_cast<unsigned int>(iUnit == u'&') | static_cast<unsigned int>(iUnit == u'<') |
           static_cast<unsigned int>(iUnit == u'>') | static_cast<unsigned int>(iUnit == u'"');
}

/** The texts that a tree can be written to: what their units are, and how more of them are appended. */
template <typename Text>
struct XmlTextOf;

/** Narrow text, with a question mark for what has no narrow character. */
template <>
struct XmlTextOf<BexNarrowText> {
    using Unit = char;
    static Unit UnitOf(char16_t iUnit) { return iUnit > 0xFF ? '?' : static_cast<char>(iUnit); }
    static void Append(BexNarrowText& ioText, const Unit* iUnits, std::size_t iLength) {
        ioText.Append(std::string_view(iUnits, iLength));
    }
    static bool EndsWith(const BexNarrowText& iText, char iLast) {
        return iText.Length() > 0 && iText.View().back() == iLast;
    }
};

/** UTF-16 as it is. */
template <>
struct XmlTextOf<DOMString> {
    using Unit = char16_t;
    static Unit UnitOf(char16_t iUnit) { return iUnit; }
    static void Append(DOMString& ioText, const Unit* iUnits, std::size_t iLength) {
        ioText.appendData(std::u16string_view(iUnits, iLength));
    }
    static bool EndsWith(const DOMString& iText, char16_t iLast) {
        return iText.length() > 0 && iText.view().back() == iLast;
    }
};

/** Where the text of a tree goes. Pieces are gathered before they are appended, for most are short. */
template <typename Text>
class XmlOutput {
    using TextOf = XmlTextOf<Text>;
    using Unit = typename TextOf::Unit;

public:
    /** Appends to @p ioText, which is complete after Flush(). */
    explicit XmlOutput(Text& ioText) : text(ioText) {}
    XmlOutput(const XmlOutput&) = delete;
    XmlOutput& operator=(const XmlOutput&) = delete;

    /** Appends a text as it stands. */
    void Put(std::u16string_view iText) {
        while (!iText.empty()) {
            if (used == kSize) {
                Flush();
            }
            const std::size_t length = std::min(iText.size(), kSize - used);
            std::transform(iText.begin(), iText.begin() + static_cast<std::ptrdiff_t>(length), gathered + used,
                           TextOf::UnitOf);
            used += length;
            iText.remove_prefix(length);
        }
    }

    /** Appends a text with markup characters as entity references. */
    void PutEscaped(std::u16string_view iText) {
        while (!iText.empty()) {
            const std::size_t plain = PlainLength(iText);
            Put(iText.substr(0, plain));
            if (plain == iText.size()) {
                return;
            }
            Put(EntityOf(iText[plain]));
            iText.remove_prefix(plain + 1);
        }
    }

    /** @return whether the text so far ends with a tag. */
    bool EndsWithTag() const { return used > 0 ? gathered[used - 1] == Unit{'>'} : TextOf::EndsWith(text, Unit{'>'}); }

    /** Appends what is still gathered. */
    void Flush() {
        TextOf::Append(text, gathered, used);
        used = 0;
    }

private:
    static constexpr std::size_t kSize = 4096;
    static constexpr std::size_t kBlock = 32;  // units looked at together, which the compiler turns into vector code

    /** The number of units before the first that is written as an entity reference. */
    static std::size_t PlainLength(std::u16string_view iText) {
        std::size_t length = 0;
        while (iText.size() - length >= kBlock) {
            unsigned int markup = 0;
            for (std::size_t i = 0; i < kBlock; ++i) {
                markup |= IsMarkup(iText[length + i]);
            }
            if (markup != 0) {
                break;
            }
            length += kBlock;
        }
        while (length < iText.size() && IsMarkup(iText[length]) == 0) {
            ++length;
        }
        return length;
    }

    static std::u16string_view EntityOf(char16_t iMarkup) {
        switch (iMarkup) {
            case u'&':
                return u"&amp;";
            case u'<':
                return u"&lt;";
            case u'>':
                return u"&gt;";
            default:
                return u"&quot;";
        }
    }

    Text& text;
    Unit gathered[kSize];
    std::size_t used = 0;
};

#endif
