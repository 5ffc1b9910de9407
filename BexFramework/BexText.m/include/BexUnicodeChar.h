#ifndef BexUnicodeChar_H
#define BexUnicodeChar_H

/**
 * One UTF-16 code unit.
 *
 * Narrow characters are ISO-8859-1: byte b and code unit b are the same, whatever the locale of the process.
 * A value type of two bytes; safe to use from several threads like any plain value.
 */
class BexUnicodeChar {
public:
    /** The code unit 0. */
    constexpr BexUnicodeChar() = default;
    /** The code unit of a narrow character, taken as unsigned (0 to 255). */
    constexpr BexUnicodeChar(char iChar) : code(static_cast<unsigned char>(iChar)) {}
    /** The code unit @p iCode itself. */
    constexpr BexUnicodeChar(char16_t iCode) : code(iCode) {}

    /** @return the low 8 bits of the code unit, also of one above 0xFF. */
    constexpr char ConvertToChar() const { return static_cast<char>(code & 0xFFU); }
    /** @return the code unit. */
    constexpr char16_t Code() const { return code; }

    /** Compares two code units. */
    friend constexpr bool operator==(BexUnicodeChar iLeft, BexUnicodeChar iRight) { return iLeft.code == iRight.code; }
    /** Compares two code units. */
    friend constexpr bool operator!=(BexUnicodeChar iLeft, BexUnicodeChar iRight) { return iLeft.code != iRight.code; }

private:
    char16_t code = 0;
};

#endif
