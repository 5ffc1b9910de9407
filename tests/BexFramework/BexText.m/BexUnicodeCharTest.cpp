#include <BexUnicodeChar.h>

#include <gtest/gtest.h>

namespace {

TEST(BexUnicodeChar, DefaultIsTheCodeUnitZero) {
    const BexUnicodeChar nothing;
    EXPECT_EQ(nothing.Code(), u'\0');
    EXPECT_EQ(nothing.ConvertToChar(), '\0');
}

TEST(BexUnicodeChar, EveryByteIsTakenAsUnsignedAndComesBack) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const char narrow = static_cast<char>(byte);
        const BexUnicodeChar unit(narrow);
        ASSERT_EQ(static_cast<unsigned>(unit.Code()), byte);
        ASSERT_EQ(unit.ConvertToChar(), narrow) << byte;
        ASSERT_EQ(unit, BexUnicodeChar(static_cast<char16_t>(byte))) << byte;
    }
}

TEST(BexUnicodeChar, EveryCodeUnitIsKeptAndGivesItsLowByte) {
    for (unsigned code = 0; code <= 0xFFFF; ++code) {
        const BexUnicodeChar unit(static_cast<char16_t>(code));
        ASSERT_EQ(static_cast<unsigned>(unit.Code()), code);
        ASSERT_EQ(unit.ConvertToChar(), static_cast<char>(code % 0x100)) << code;
    }
}

TEST(BexUnicodeChar, ComparesTheWholeCodeUnit) {
    const BexUnicodeChar narrow('a');
    const BexUnicodeChar sameLowByte(static_cast<char16_t>(0x0161));
    EXPECT_TRUE(narrow == BexUnicodeChar('a'));
    EXPECT_FALSE(narrow != BexUnicodeChar('a'));
    EXPECT_FALSE(narrow == sameLowByte);
    EXPECT_TRUE(narrow != sameLowByte);
}

TEST(BexUnicodeChar, IsUsableAtCompileTime) {
    static_assert(BexUnicodeChar('\xE9').Code() == 0xE9);
    static_assert(BexUnicodeChar(char16_t{0x0141}).ConvertToChar() == 'A');
    static_assert(BexUnicodeChar() == BexUnicodeChar('\0'));
    SUCCEED();
}

}  // namespace
