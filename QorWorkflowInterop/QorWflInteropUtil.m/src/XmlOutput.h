#ifndef XmlOutput_H
#define XmlOutput_H

#include "XmlCopy.h"

#include <BexNarrowText.h>
#include <DOMString.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

/** The texts that a tree can be written to: what their units are, and how more of them are appended. */
template <typename Text>
struct XmlTextOf;

/** Narrow text, with a question mark for what has no narrow character. */
template <>
struct XmlTextOf<BexNarrowText> {
    using Unit = char;
    static void Append(BexNarrowText& ioText, const Unit* iUnits, std::size_t iLength) {
        ioText.Append(std::string_view(iUnits, iLength));
    }
};

/** UTF-16 as it is. */
template <>
struct XmlTextOf<DOMString> {
    using Unit = char16_t;
    static void Append(DOMString& ioText, const Unit* iUnits, std::size_t iLength) {
        ioText.appendData(std::u16string_view(iUnits, iLength));
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

    /** Appends a piece of the form, whose length the compiler knows. */
    template <std::size_t size>
    void Put(const char16_t (&iForm)[size]) {
        constexpr std::size_t kLength = size - 1;  // without the NUL character
        MakeRoom(kLength);
        for (std::size_t i = 0; i < kLength; ++i) {
            gathered[used + i] = static_cast<Unit>(iForm[i]);
        }
        used += kLength;
    }

    /** Appends a text as it stands. */
    void Put(std::u16string_view iText) {
        while (!iText.empty()) {
            const std::u16string_view piece = iText.substr(0, kLongestPiece);
            MakeRoom(piece.size());
            XmlCopy::Copy(piece, gathered + used);
            used += piece.size();
            iText.remove_prefix(piece.size());
        }
    }

    /** Appends a text up to its first NUL character, with markup characters as entity references. */
    void PutEscaped(std::u16string_view iText) {
        while (!iText.empty()) {
            const std::u16string_view piece = iText.substr(0, kLongestPiece);
            MakeRoom(piece.size());
            const std::size_t plain = XmlCopy::CopyPlain(piece, gathered + used);
            used += plain;
            iText.remove_prefix(plain);
            if (plain < piece.size()) {
                if (iText.front() == u'\0') {
                    return;
                }
                PutEntityOf(iText.front());
                iText.remove_prefix(1);
            }
        }
    }

    /** @return whether what was put last, after which something is always gathered, ends with a tag. */
    bool EndsWithTag() const { return used > 0 && gathered[used - 1] == Unit{'>'}; }

    /** Appends what is still gathered. */
    void Flush() {
        TextOf::Append(text, gathered, used);
        used = 0;
    }

private:
    static constexpr std::size_t kLongestPiece = 1024;
    static constexpr std::size_t kSize = 4 * kLongestPiece;

    void MakeRoom(std::size_t iLength) {
        if (iLength > kSize - used) {
            Flush();
        }
    }

    void PutEntityOf(char16_t iMarkup) {
        switch (iMarkup) {
            case u'&':
                return Put(u"&amp;");
            case u'<':
                return Put(u"&lt;");
            case u'>':
                return Put(u"&gt;");
            default:
                return Put(u"&quot;");
        }
    }

    Text& text;
    Unit gathered[kSize];
    std::size_t used = 0;
};

#endif
