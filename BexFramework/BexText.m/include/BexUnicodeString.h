#ifndef BexUnicodeString_H
#define BexUnicodeString_H

#include "BexExport.h"
#include "BexNarrowText.h"
#include "BexUnicodeChar.h"

#include <iosfwd>
#include <memory>
#include <string_view>
#include <utility>

/**
 * The framework's string: a sequence of UTF-16 code units, or one of two kinds of nothing.
 *
 * Null means "never given a value" (or Reset()); empty means "a value of length 0". Both have length 0 and compare
 * equal as text; only IsNull() tells them apart.
 *
 * Narrow (8-bit) text is ISO-8859-1 in both directions, whatever the locale: byte b and code unit b are the same.
 * Text is kept one byte a character until a code unit above 0xFF comes in, so ConvertToChar() of 8-bit text costs
 * nothing; up to 31 characters live inside the object.
 *
 * Positions count from 0. No argument is undefined: a negative position or start counts as 0, a negative length as 0,
 * a null pointer with a length as no text; another mode, format or flag than those listed does nothing and gives the
 * failure value. A string may be its own argument.
 *
 * Memory that cannot be had leaves every operation as std::bad_alloc, with the string unchanged. A length above INT_MAX
 * is refused with std::length_error.
 *
 * Threads: any number may use one string that nobody changes; ConvertToChar() included.
 */
class BEX_EXPORT BexUnicodeString {
public:
    /** A null string. */
    BexUnicodeString() noexcept = default;
    /** From NUL-terminated narrow text: a null pointer gives a null string, "" an empty one. */
    BexUnicodeString(const char* iText);
    /** Exactly @p iLength bytes of narrow text, NUL bytes included. A null pointer or a length below 1 gives an empty
     * string. */
    BexUnicodeString(const char* iText, int iLength);
    /** Exactly @p iLength code units. A null pointer or a length below 1 gives an empty string. */
    BexUnicodeString(const char16_t* iText, int iLength);
    /** A copy; null stays null. */
    BexUnicodeString(const BexUnicodeString& iOther);
    /** Takes over the text of @p ioOther, which is null afterwards. */
    BexUnicodeString(BexUnicodeString&& ioOther) noexcept
        : narrow(std::move(ioOther.narrow)), wide(std::move(ioOther.wide)), null(std::exchange(ioOther.null, true)) {}
    ~BexUnicodeString() = default;
    /** Becomes a copy; null stays null. */
    BexUnicodeString& operator=(const BexUnicodeString& iOther);
    /** Takes over the text of @p ioOther, which is null afterwards. */
    BexUnicodeString& operator=(BexUnicodeString&& ioOther) noexcept {
        if (this != &ioOther) {
            narrow = std::move(ioOther.narrow);
            wide = std::move(ioOther.wide);
            null = std::exchange(ioOther.null, true);
        }
        return *this;
    }

    /** A string of exactly that narrow text; never null. */
    [[nodiscard]] static BexUnicodeString FromNarrow(std::string_view iText);
    /** The same, taking the text over without a copy. */
    [[nodiscard]] static BexUnicodeString FromNarrow(BexNarrowText&& ioText) noexcept;
    /**
     * The same for a text that is written where it stays.
     * @param iRoom the most bytes that the text can have
     * @param iWrite is called once with a pointer to that room and gives the end of what it has written; what it throws
     *        leaves this operation
     */
    template <typename Writer>
    [[nodiscard]] static BexUnicodeString FromNarrow(std::size_t iRoom, Writer iWrite) {
        BexUnicodeString text;
        char* const start = text.narrow.Extend(iRoom);
        text.narrow.Shorten(static_cast<std::size_t>(iWrite(start) - start));
        text.null = false;
        return text;
    }

    /** @return 1 for a null string, else 0. */
    int IsNull() const noexcept { return null ? 1 : 0; }
    /** @return 1 for length 0 (null or empty), else 0. */
    int IsEmpty() const noexcept { return GetLengthInChar() == 0 ? 1 : 0; }
    /** Becomes null. */
    void Reset() noexcept;

    /**
     * The narrow text, NUL-terminated; a code unit above 0xFF is a question mark in it.
     * @return never a null pointer ("" for null). Valid until the string changes or dies.
     */
    const char* ConvertToChar() const;
    /** @return the number of code units. */
    int GetLengthInChar() const noexcept;
    /** @return the code unit at @p iPos, or the code unit 0 outside the string. */
    BexUnicodeChar operator[](int iPos) const noexcept;

    /**
     * Part of the text.
     * @param iPos the first code unit, clamped to the string
     * @param iLength the number of code units, clamped to what is there
     * @return empty, never null, when nothing is left.
     */
    BexUnicodeString SubString(int iPos, int iLength) const;
    /**
     * Looks for @p iText at or after @p iFrom.
     * @param iMode 1: the first occurrence; 2: the last one
     * @return its position, or -1 if there is none, @p iText is empty or the mode is another.
     */
    int SearchSubString(const BexUnicodeString& iText, int iFrom = 0, int iMode = 1) const;
    /**
     * Replaces the first occurrence of @p iOld by @p iNew.
     * @return the position of the occurrence, or -1 (string unchanged) if there is none or @p iOld is empty.
     */
    int ReplaceSubString(const BexUnicodeString& iOld, const BexUnicodeString& iNew);
    /**
     * The text without @p iChar.
     * @param iMode 1: leading ones removed; 2: trailing; 3: both ends; 4: every occurrence; another: none
     * @return a new string, empty and never null when nothing is left.
     */
    BexUnicodeString Strip(int iMode, BexUnicodeChar iChar) const;

    /** Appends a text; a null or empty one makes a null string empty. @return this string. */
    BexUnicodeString& Append(const BexUnicodeString& iText);
    /** Appends NUL-terminated narrow text; a null pointer counts as "". @return this string. */
    BexUnicodeString& Append(const char* iText);
    /** Appends one code unit. @return this string. */
    BexUnicodeString& Append(BexUnicodeChar iChar);
    /** As Append(). */
    BexUnicodeString& operator+=(const BexUnicodeString& iText) { return Append(iText); }
    /** As Append(). */
    BexUnicodeString& operator+=(const char* iText) { return Append(iText); }
    /** As Append(). */
    BexUnicodeString& operator+=(BexUnicodeChar iChar) { return Append(iChar); }
    /** As Append() of one narrow character. */
    BexUnicodeString& operator+=(char iChar) { return Append(BexUnicodeChar(iChar)); }
    /** As Append() of one code unit. */
    BexUnicodeString& operator+=(char16_t iCode) { return Append(BexUnicodeChar(iCode)); }

    /**
     * Replaces the text by a number in decimal.
     * @param iFormat "%d"
     * @return 0, or -1 with the string unchanged for another format.
     */
    int BuildFromNum(int iNum, const char* iFormat);
    /** The same for a long; @p iFormat is "%ld". */
    int BuildFromNum(long iNum, const char* iFormat);
    /**
     * Reads a leading decimal number: white space, a sign and digits, as sscanf does in the C locale.
     * @param oNum where the number goes
     * @param iFormat "%d"
     * @return 0, or -1 with @p oNum unchanged when there is no number, it does not fit or the format is another.
     */
    int ConvertToNum(int* oNum, const char* iFormat) const;
    /** The same for a long; @p iFormat is "%ld". */
    int ConvertToNum(long* oNum, const char* iFormat) const;

    /**
     * Reads one physical line as it stands, leading blanks included; its line feed is consumed and not kept.
     * @param iFlag 1 when a logical line begins, 0 when it goes on; both read alike
     * @return 0, or -1 when nothing was left to read (string empty, the stream's fail state set) or the flag is another
     *         (string and stream unchanged). A stream that was asked for exceptions throws when the string is set.
     */
    int BuildFromStream(std::istream& ioStream, int iFlag);

    /**
     * The narrow text without a copy, for code that walks it.
     * @return the text while every code unit fits a byte; empty for a text that IsWide(). Valid until the string
     * changes.
     */
    std::string_view NarrowView() const noexcept { return narrow.View(); }
    /** @return the code units of a text that IsWide(), else empty. Valid until the string changes. */
    std::u16string_view WideView() const noexcept;
    /** @return whether any code unit is above 0xFF. */
    bool IsWide() const noexcept { return wide != nullptr; }

    /** Compares by code units; null equals empty. */
    friend BEX_EXPORT bool operator==(const BexUnicodeString& iLeft, const BexUnicodeString& iRight) noexcept;
    /** Compares by code units; null equals empty. */
    friend bool operator!=(const BexUnicodeString& iLeft, const BexUnicodeString& iRight) noexcept {
        return !(iLeft == iRight);
    }
    /** Orders by code units; a text stands before every longer one that begins with it. */
    friend BEX_EXPORT bool operator<(const BexUnicodeString& iLeft, const BexUnicodeString& iRight) noexcept;

private:
    struct WideText;
    struct BEX_EXPORT WideTextDeleter {
        void operator()(WideText* iText) const noexcept;
    };

    void Assign(std::u16string_view iUnits);
    void AppendUnits(std::u16string_view iUnits);
    void SetNarrow(BexNarrowText&& ioText) noexcept;
    void SetNarrow(std::string_view iText);

    BexNarrowText narrow;                             // the text while every code unit fits a byte, else empty
    std::unique_ptr<WideText, WideTextDeleter> wide;  // the text as soon as one does not, else null
    bool null = true;                                 // null, not just empty
};

/** The two texts, one behind the other; never null. */
BEX_EXPORT BexUnicodeString operator+(const BexUnicodeString& iLeft, const BexUnicodeString& iRight);
/** The same, reusing the memory of a left side that nobody needs any more. */
BEX_EXPORT BexUnicodeString operator+(BexUnicodeString&& ioLeft, const BexUnicodeString& iRight);
/** The text with narrow text behind it; a null pointer counts as "". */
BEX_EXPORT BexUnicodeString operator+(const BexUnicodeString& iLeft, const char* iRight);
/** The same, reusing the memory of a left side that nobody needs any more. */
BEX_EXPORT BexUnicodeString operator+(BexUnicodeString&& ioLeft, const char* iRight);
/** Narrow text with the text behind it; a null pointer counts as "". */
BEX_EXPORT BexUnicodeString operator+(const char* iLeft, const BexUnicodeString& iRight);
/** The text with one code unit behind it. */
BEX_EXPORT BexUnicodeString operator+(const BexUnicodeString& iLeft, BexUnicodeChar iRight);
/** One code unit with the text behind it. */
BEX_EXPORT BexUnicodeString operator+(BexUnicodeChar iLeft, const BexUnicodeString& iRight);
/** Writes the narrow text, NUL characters included; fails the stream when there is no memory for a narrow form. */
BEX_EXPORT std::ostream& operator<<(std::ostream& ioStream, const BexUnicodeString& iText);

#endif
