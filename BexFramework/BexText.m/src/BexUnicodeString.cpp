#include "BexUnicodeString.h"

#include "Latin1.h"
#include "TextSearch.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <climits>
#include <cstring>
#include <istream>
#include <limits>
#include <new>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <utility>

namespace {

/** Refuses a length that the interface cannot count. */
void CheckLength(std::size_t iLength) {
    // GCOVR_EXCL_START: takes a text of 2 Gi units of UTF-16, and as much memory again to lengthen it
    if (iLength > static_cast<std::size_t>(INT_MAX)) {
        throw std::length_error("BexUnicodeString");
    }
    // GCOVR_EXCL_STOP
}

}  // namespace

/** Text with at least one code unit above 0xFF. */
struct BexUnicodeString::WideText {
    explicit WideText(std::u16string iUnits) : units(std::move(iUnits)) {}
    ~WideText() { delete narrow.load(std::memory_order_relaxed); }
    WideText(const WideText&) = delete;
    WideText& operator=(const WideText&) = delete;

    /** The narrow form, made once however many threads ask for it. */
    const std::string& Narrow() const {
        if (const std::string* made = narrow.load(std::memory_order_acquire)) {
            return *made;
        }
        auto fresh = std::make_unique<const std::string>(Latin1::Narrow(units));
        const std::string* expected = nullptr;
        if (narrow.compare_exchange_strong(expected, fresh.get(), std::memory_order_acq_rel)) {
            expected = fresh.release();
        }
        return *expected;
    }

    /** Appends in place; what was made narrow before is out of date. */
    void Append(std::u16string_view iUnits) {
        CheckLength(units.size() + iUnits.size());
        units += iUnits;
        delete narrow.exchange(nullptr, std::memory_order_relaxed);
    }
    std::u16string_view View() const { return units; }

private:
    std::u16string units;
    mutable std::atomic<const std::string*> narrow{nullptr};  // owned; null until somebody asks
};

namespace {

constexpr const char* kIntFormat = "%d";
constexpr const char* kLongFormat = "%ld";
constexpr int kFirst = 1;  // the search modes
constexpr int kLast = 2;
constexpr int kLeading = 1;  // the strip modes; both ends is their sum
constexpr int kTrailing = 2;
constexpr int kEvery = 4;

/** A position or length that was given from outside; negative ones count as 0. */
std::size_t Clamp(int iValue) {
    return iValue < 0 ? 0 : static_cast<std::size_t>(iValue);
}

bool IsFormat(const char* iFormat, const char* iExpected) {
    return iFormat != nullptr && std::strcmp(iFormat, iExpected) == 0;
}

/** The text without a code unit at its ends, or anywhere. */
template <typename Unit>
std::basic_string<Unit> StripUnits(std::basic_string_view<Unit> iText, int iMode, Unit iUnit) {
    if (iMode == kEvery) {
        std::basic_string<Unit> kept;
        kept.reserve(iText.size());
        std::remove_copy(iText.begin(), iText.end(), std::back_inserter(kept), iUnit);
        return kept;
    }
    std::size_t from = 0;
    std::size_t to = iText.size();
    if (iMode == kLeading || iMode == kLeading + kTrailing) {
        while (from < to && iText[from] == iUnit) {
            ++from;
        }
    }
    if (iMode == kTrailing || iMode == kLeading + kTrailing) {
        while (to > from && iText[to - 1] == iUnit) {
            --to;
        }
    }
    return std::basic_string<Unit>(iText.substr(from, to - from));
}

/** Reads a leading decimal number as sscanf does in the C locale; false when there is none or it does not fit. */
template <typename Number>
bool ReadLeadingNumber(std::string_view iText, Number& oNumber) {
    constexpr std::string_view kWhiteSpace(" \t\n\v\f\r");
    const std::size_t start = iText.find_first_not_of(kWhiteSpace);
    if (start == std::string_view::npos) {
        return false;
    }
    iText.remove_prefix(start);
    if (iText.front() == '+') {
        iText.remove_prefix(1);
        if (!iText.empty() && iText.front() == '-') {
            return false;  // one sign only
        }
    }
    Number number{};
    const auto result = std::from_chars(iText.data(), iText.data() + iText.size(), number);
    if (result.ec != std::errc()) {
        return false;
    }
    oNumber = number;
    return true;
}

/**
 * Reads up to a line feed, as std::getline does, but lets std::bad_alloc out: std::getline makes it look like a stream
 * that cannot be read.
 * @return the state to be set in the stream, which the host may have asked for exceptions; it fails when nothing was
 * left.
 */
std::ios_base::iostate ReadLine(std::istream& ioStream, std::string& oLine) {
    constexpr int kEnd = std::istream::traits_type::eof();
    if (!ioStream.good()) {
        return std::ios_base::failbit;
    }
    const std::istream::sentry ready(ioStream, true);
    if (!ready) {
        return std::ios_base::failbit;  // a stream that is tied to it has failed
    }
    std::ios_base::iostate state = std::ios_base::goodbit;
    try {
        std::streambuf& source = *ioStream.rdbuf();
        int next = source.sbumpc();
        while (next != kEnd && next != '\n') {
            oLine += static_cast<char>(next);
            next = source.sbumpc();
        }
        if (next == kEnd) {
            state = oLine.empty() ? std::ios_base::eofbit | std::ios_base::failbit : std::ios_base::eofbit;
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {  // the source cannot be read: what came before it failed is a line
        state = oLine.empty() ? std::ios_base::badbit | std::ios_base::failbit : std::ios_base::badbit;
    }
    return state;
}

template <typename Number>
std::string DecimalText(Number iNumber) {
    char digits[std::numeric_limits<Number>::digits10 + 3];  // all digits, one more, a sign
    const auto result = std::to_chars(digits, digits + sizeof digits, iNumber);
    return std::string(digits, result.ptr);
}

}  // namespace

BexUnicodeString::BexUnicodeString(const char* iText) {
    if (iText != nullptr) {
        narrow.Assign(iText);
        null = false;
    }
}

BexUnicodeString::BexUnicodeString(const char* iText, int iLength) : null(false) {
    if (iText != nullptr) {
        narrow.Assign(std::string_view(iText, Clamp(iLength)));
    }
}

BexUnicodeString::BexUnicodeString(const char16_t* iText, int iLength) {
    Assign(iText == nullptr ? std::u16string_view() : std::u16string_view(iText, Clamp(iLength)));
}

BexUnicodeString::BexUnicodeString(const BexUnicodeString& iOther)
    : narrow(iOther.narrow),
      wide(iOther.wide ? new WideText(std::u16string(iOther.WideView())) : nullptr),
      null(iOther.null) {}

void BexUnicodeString::WideTextDeleter::operator()(WideText* iText) const noexcept {
    delete iText;
}

BexUnicodeString& BexUnicodeString::operator=(const BexUnicodeString& iOther) {
    if (this == &iOther) {
        return *this;
    }
    if (iOther.wide) {
        return *this = BexUnicodeString(iOther);
    }
    narrow = iOther.narrow;
    wide.reset();
    null = iOther.null;
    return *this;
}

BexUnicodeString BexUnicodeString::FromNarrow(std::string_view iText) {
    BexUnicodeString text;
    text.narrow.Assign(iText);
    text.null = false;
    return text;
}

BexUnicodeString BexUnicodeString::FromNarrow(BexNarrowText&& ioText) noexcept {
    BexUnicodeString text;
    text.narrow = std::move(ioText);
    text.null = false;
    return text;
}

void BexUnicodeString::Reset() noexcept {
    narrow.Clear();
    wide.reset();
    null = true;
}

const char* BexUnicodeString::ConvertToChar() const {
    return wide ? wide->Narrow().c_str() : narrow.CString();
}

int BexUnicodeString::GetLengthInChar() const noexcept {
    return static_cast<int>(wide ? WideView().size() : narrow.Length());
}

BexUnicodeChar BexUnicodeString::operator[](int iPos) const noexcept {
    if (iPos < 0 || iPos >= GetLengthInChar()) {
        return BexUnicodeChar();
    }
    const auto pos = static_cast<std::size_t>(iPos);
    return wide ? BexUnicodeChar(WideView()[pos]) : BexUnicodeChar(NarrowView()[pos]);
}

std::u16string_view BexUnicodeString::WideView() const noexcept {
    return wide ? wide->View() : std::u16string_view();
}

BexUnicodeString BexUnicodeString::SubString(int iPos, int iLength) const {
    const std::size_t pos = std::min(Clamp(iPos), static_cast<std::size_t>(GetLengthInChar()));
    BexUnicodeString part;
    if (wide) {
        part.Assign(WideView().substr(pos, Clamp(iLength)));
    } else {
        part.SetNarrow(NarrowView().substr(pos, Clamp(iLength)));
    }
    return part;
}

int BexUnicodeString::SearchSubString(const BexUnicodeString& iText, int iFrom, int iMode) const {
    if (iMode != kFirst && iMode != kLast) {
        return -1;
    }
    const bool last = iMode == kLast;
    const std::size_t from = Clamp(iFrom);
    std::size_t found = TextSearch::kNone;
    if (from > static_cast<std::size_t>(GetLengthInChar())) {
        return -1;
    }
    if (!wide && !iText.wide) {
        found = TextSearch::Find(NarrowView().substr(from), iText.NarrowView(), last);
    } else if (wide) {
        const std::u16string widened = Latin1::Widen(iText.NarrowView());
        const std::u16string_view pattern = iText.wide ? iText.WideView() : std::u16string_view(widened);
        found = TextSearch::Find(WideView().substr(from), pattern, last);
    }  // a wide pattern is in no narrow text
    return found == TextSearch::kNone ? -1 : static_cast<int>(from + found);
}

int BexUnicodeString::ReplaceSubString(const BexUnicodeString& iOld, const BexUnicodeString& iNew) {
    const int pos = SearchSubString(iOld);
    if (pos >= 0) {
        const int behind = pos + iOld.GetLengthInChar();
        *this = SubString(0, pos).Append(iNew).Append(SubString(behind, INT_MAX));
    }
    return pos;
}

BexUnicodeString BexUnicodeString::Strip(int iMode, BexUnicodeChar iChar) const {
    BexUnicodeString stripped;
    if (wide) {
        stripped.Assign(StripUnits(WideView(), iMode, iChar.Code()));
    } else if (iChar.Code() > 0xFF) {
        stripped.SetNarrow(NarrowView());
    } else {
        stripped.SetNarrow(StripUnits(NarrowView(), iMode, iChar.ConvertToChar()));
    }
    return stripped;
}

BexUnicodeString& BexUnicodeString::Append(const BexUnicodeString& iText) {
    if (wide || iText.wide) {
        const std::u16string widened = Latin1::Widen(iText.NarrowView());
        AppendUnits(iText.wide ? iText.WideView() : std::u16string_view(widened));
    } else {
        narrow.Append(iText.NarrowView());
        null = false;
    }
    return *this;
}

BexUnicodeString& BexUnicodeString::Append(const char* iText) {
    if (wide || iText == nullptr) {
        return Append(BexUnicodeString(iText));
    }
    narrow.Append(iText);
    null = false;
    return *this;
}

BexUnicodeString& BexUnicodeString::Append(BexUnicodeChar iChar) {
    const char16_t unit = iChar.Code();
    if (wide || unit > 0xFF) {
        AppendUnits(std::u16string_view(&unit, 1));
    } else {
        narrow.Append(iChar.ConvertToChar());
        null = false;
    }
    return *this;
}

int BexUnicodeString::BuildFromNum(int iNum, const char* iFormat) {
    if (!IsFormat(iFormat, kIntFormat)) {
        return -1;
    }
    SetNarrow(DecimalText(iNum));
    return 0;
}

int BexUnicodeString::BuildFromNum(long iNum, const char* iFormat) {
    if (!IsFormat(iFormat, kLongFormat)) {
        return -1;
    }
    SetNarrow(DecimalText(iNum));
    return 0;
}

int BexUnicodeString::ConvertToNum(int* oNum, const char* iFormat) const {
    const bool converted =
        oNum != nullptr && IsFormat(iFormat, kIntFormat) && ReadLeadingNumber(std::string_view(ConvertToChar()), *oNum);
    return converted ? 0 : -1;
}

int BexUnicodeString::ConvertToNum(long* oNum, const char* iFormat) const {
    const bool converted = oNum != nullptr && IsFormat(iFormat, kLongFormat) &&
                           ReadLeadingNumber(std::string_view(ConvertToChar()), *oNum);
    return converted ? 0 : -1;
}

int BexUnicodeString::BuildFromStream(std::istream& ioStream, int iFlag) {
    if (iFlag != 0 && iFlag != 1) {
        return -1;
    }
    std::string line;
    const std::ios_base::iostate state = ReadLine(ioStream, line);
    SetNarrow(line);
    ioStream.setstate(state);
    return (state & std::ios_base::failbit) == 0 ? 0 : -1;
}

/** Takes over new text, in the form that suits it. */
void BexUnicodeString::Assign(std::u16string_view iUnits) {
    CheckLength(iUnits.size());
    if (Latin1::Fits(iUnits)) {
        BexNarrowText text;
        Latin1::Narrow(iUnits, text.Extend(iUnits.size()));
        SetNarrow(std::move(text));
    } else {
        wide.reset(new WideText(std::u16string(iUnits)));
        narrow.Clear();
        null = false;
    }
}

void BexUnicodeString::AppendUnits(std::u16string_view iUnits) {
    if (wide) {
        wide->Append(iUnits);
    } else {
        Assign(Latin1::Widen(NarrowView()).append(iUnits));
    }
}

void BexUnicodeString::SetNarrow(BexNarrowText&& ioText) noexcept {
    narrow = std::move(ioText);
    wide.reset();
    null = false;
}

void BexUnicodeString::SetNarrow(std::string_view iText) {
    narrow.Assign(iText);
    wide.reset();
    null = false;
}

bool operator==(const BexUnicodeString& iLeft, const BexUnicodeString& iRight) noexcept {
    // a text has one form only, so texts of different forms differ
    return iLeft.NarrowView() == iRight.NarrowView() && iLeft.WideView() == iRight.WideView();
}

bool operator<(const BexUnicodeString& iLeft, const BexUnicodeString& iRight) noexcept {
    if (!iLeft.IsWide() && !iRight.IsWide()) {
        return iLeft.NarrowView() < iRight.NarrowView();  // compares bytes as unsigned
    }
    const int shorter = std::min(iLeft.GetLengthInChar(), iRight.GetLengthInChar());
    for (int i = 0; i < shorter; ++i) {
        if (iLeft[i] != iRight[i]) {
            return iLeft[i].Code() < iRight[i].Code();
        }
    }
    return iLeft.GetLengthInChar() < iRight.GetLengthInChar();
}

BexUnicodeString operator+(const BexUnicodeString& iLeft, const BexUnicodeString& iRight) {
    return BexUnicodeString(iLeft).Append(iRight);
}

BexUnicodeString operator+(BexUnicodeString&& ioLeft, const BexUnicodeString& iRight) {
    return std::move(ioLeft.Append(iRight));
}

BexUnicodeString operator+(const BexUnicodeString& iLeft, const char* iRight) {
    return BexUnicodeString(iLeft).Append(iRight);
}

BexUnicodeString operator+(BexUnicodeString&& ioLeft, const char* iRight) {
    return std::move(ioLeft.Append(iRight));
}

BexUnicodeString operator+(const char* iLeft, const BexUnicodeString& iRight) {
    return BexUnicodeString(iLeft).Append(iRight);
}

BexUnicodeString operator+(const BexUnicodeString& iLeft, BexUnicodeChar iRight) {
    return BexUnicodeString(iLeft).Append(iRight);
}

BexUnicodeString operator+(BexUnicodeChar iLeft, const BexUnicodeString& iRight) {
    return BexUnicodeString().Append(iLeft).Append(iRight);
}

std::ostream& operator<<(std::ostream& ioStream, const BexUnicodeString& iText) {
    if (!iText.IsWide()) {
        return ioStream << iText.NarrowView();
    }
    const char* narrow = nullptr;
    try {
        narrow = iText.ConvertToChar();
    } catch (const std::bad_alloc&) {
        ioStream.setstate(std::ios_base::failbit);
        return ioStream;
    }
    return ioStream << std::string_view(narrow, iText.WideView().size());
}
