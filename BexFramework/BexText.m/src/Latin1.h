#ifndef Latin1_H
#define Latin1_H

#include "BexExport.h"

#include <string>
#include <string_view>

/**
 * The narrow encoding of the framework, ISO-8859-1: byte b and code unit b are the same.
 */
namespace Latin1 {

/** The narrow character that stands for a code unit that has none. */
constexpr char kReplacement = '?';

/** @return whether every code unit fits a byte. */
[[nodiscard]] bool Fits(std::u16string_view iUnits) noexcept;
/** Writes one byte for each code unit; those above 0xFF become kReplacement. */
void Narrow(std::u16string_view iUnits, char* oBytes) noexcept;
/** Writes one code unit for each byte. */
void Widen(std::string_view iBytes, char16_t* oUnits) noexcept;

/** @return the narrow form of a text. */
[[nodiscard]] std::string Narrow(std::u16string_view iUnits);
/** @return the UTF-16 form of a narrow text. */
[[nodiscard]] std::u16string Widen(std::string_view iBytes);

}  // namespace Latin1

#endif
