#ifndef UrlBlock_H
#define UrlBlock_H

#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

/** Sixteen characters of a URL that are decoded together where the machine can. */
class UrlBlock {
public:
    static constexpr std::size_t kSize = 16;

    explicit UrlBlock(const char* iText);

    /** The percent signs, a bit for each place, the first character's the lowest. */
    unsigned int PercentSigns() const;
    /** Writes what the characters stand for that begin no escape. @param oDecoded room for all of them */
    void DecodeTo(char* oDecoded) const;

    /** What a code unit stands for that begins no escape. */
    template <typename Unit>
    static constexpr Unit Decoded(Unit iUnit) {
        return iUnit == Unit{'+'} ? Unit{' '} : iUnit;
    }

private:
#ifdef __SSE2__
    __m128i text;
#else
    const char* text;
#endif
};

#ifdef __SSE2__

inline UrlBlock::UrlBlock(const char* iText) : text(_mm_loadu_si128(reinterpret_cast<const __m128i*>(iText))) {}

inline unsigned int UrlBlock::PercentSigns() const {
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(text, _mm_set1_epi8('%'))));
}

inline void UrlBlock::DecodeTo(char* oDecoded) const {
    const __m128i pluses = _mm_cmpeq_epi8(text, _mm_set1_epi8('+'));
    const __m128i decoded = _mm_xor_si128(text, _mm_and_si128(pluses, _mm_set1_epi8('+' ^ ' ')));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(oDecoded), decoded);
}

#else

inline UrlBlock::UrlBlock(const char* iText) : text(iText) {}

inline unsigned int UrlBlock::PercentSigns() const {
    unsigned int signs = 0;
    for (std::size_t i = 0; i < kSize; ++i) {
        signs |= static_cast<unsigned int>(text[i] == '%') << i;
    }
    return signs;
}

inline void UrlBlock::DecodeTo(char* oDecoded) const {
    for (std::size_t i = 0; i < kSize; ++i) {
        oDecoded[i] = Decoded(text[i]);
    }
}

#endif

#endif
