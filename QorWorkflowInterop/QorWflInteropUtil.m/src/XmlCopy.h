#ifndef XmlCopy_H
#define XmlCopy_H

#include <cstddef>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/**
 * Copies UTF-16 text to narrow text, where a unit above 0xFF becomes a question mark, or to UTF-16 as it is.
 * Serializing a document is little else than this, so it goes eight units at a time where the machine can.
 */
namespace XmlCopy {

/** @return whether plain text ends at a unit: at a markup character, or at NUL. */
constexpr bool EndsPlainText(char16_t iUnit) {
    return iUnit == u'&' || iUnit == u'<' || iUnit == u'>' || iUnit == u'"' || iUnit == u'\0';
}

inline void CopyUnit(char16_t iUnit, char16_t& oUnit) {
    oUnit = iUnit;
}

inline void CopyUnit(char16_t iUnit, char& oUnit) {
    oUnit = iUnit > 0xFF ? '?' : static_cast<char>(iUnit);
}

#ifdef __SSE2__

/** Eight units. */
class Block {
public:
    static constexpr std::size_t kSize = 8;

    explicit Block(const char16_t* iUnits) : units(_mm_loadu_si128(reinterpret_cast<const __m128i*>(iUnits))) {}

    void Store(char16_t* oUnits) const { _mm_storeu_si128(reinterpret_cast<__m128i*>(oUnits), units); }
    void Store(char* oUnits) const {
        const __m128i isNarrow = _mm_cmpeq_epi16(_mm_srli_epi16(units, 8), _mm_setzero_si128());
        const __m128i narrow =
            _mm_or_si128(_mm_and_si128(isNarrow, units), _mm_andnot_si128(isNarrow, _mm_set1_epi16('?')));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(oUnits), _mm_packus_epi16(narrow, narrow));
    }

    /** The number of units before the first that ends plain text, kSize when none does. */
    std::size_t PlainLength() const {
        // One bit tells a quotation mark from an ampersand, and another one an opening bracket from a closing one.
        const __m128i quoteOrAmpersand =
            _mm_cmpeq_epi16(_mm_andnot_si128(_mm_set1_epi16('"' ^ '&'), units), _mm_set1_epi16('"' & '&'));
        const __m128i bracket =
            _mm_cmpeq_epi16(_mm_andnot_si128(_mm_set1_epi16('<' ^ '>'), units), _mm_set1_epi16('<' & '>'));
        const __m128i nul = _mm_cmpeq_epi16(units, _mm_setzero_si128());
        const int found = _mm_movemask_epi8(_mm_or_si128(nul, _mm_or_si128(quoteOrAmpersand, bracket)));
        return found == 0 ? kSize : static_cast<std::size_t>(__builtin_ctz(static_cast<unsigned int>(found))) / 2;
    }

private:
    __m128i units;
};

#else

/** Eight units. */
class Block {
public:
    static constexpr std::size_t kSize = 8;

    explicit Block(const char16_t* iUnits) : units(iUnits) {}

    template <typename Unit>
    void Store(Unit* oUnits) const {
        for (std::size_t i = 0; i < kSize; ++i) {
            CopyUnit(units[i], oUnits[i]);
        }
    }

    /** The number of units before the first that ends plain text, kSize when none does. */
    std::size_t PlainLength() const {
        std::size_t length = 0;
        while (length < kSize && !EndsPlainText(units[length])) {
            ++length;
        }
        return length;
    }

private:
    const char16_t* units;
};

#endif

/** Copies a text. @param oUnits room for as many units */
template <typename Unit>
void Copy(std::u16string_view iText, Unit* oUnits) {
    if (iText.size() < Block::kSize) {
        for (std::size_t i = 0; i < iText.size(); ++i) {
            CopyUnit(iText[i], oUnits[i]);
        }
        return;
    }
    const std::size_t last = iText.size() - Block::kSize;
    for (std::size_t at = 0; at < last; at += Block::kSize) {
        Block(iText.data() + at).Store(oUnits + at);
    }
    Block(iText.data() + last).Store(oUnits + last);  // some units a second time
}

/**
 * Copies a text up to the first unit that ends plain text.
 * @param oUnits room for as many units as the text has; those behind the ones that count may be written too
 * @return the number of units before it, all if there is none.
 */
template <typename Unit>
std::size_t CopyPlain(std::u16string_view iText, Unit* oUnits) {
    std::size_t at = 0;
    for (; iText.size() - at >= Block::kSize; at += Block::kSize) {
        const Block block(iText.data() + at);
        block.Store(oUnits + at);
        const std::size_t plain = block.PlainLength();
        if (plain < Block::kSize) {
            return at + plain;
        }
    }
    for (; at < iText.size() && !EndsPlainText(iText[at]); ++at) {
        CopyUnit(iText[at], oUnits[at]);
    }
    return at;
}

}  // namespace XmlCopy

#endif
