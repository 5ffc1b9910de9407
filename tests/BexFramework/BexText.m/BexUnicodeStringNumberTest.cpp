// Numbers to text and back.

#include "TextTesting.h"

#include <BexUnicodeString.h>

#include <gtest/gtest.h>

#include <GlobalLocale.h>
#include <climits>
#include <cstdio>
#include <locale>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string NarrowOf(const BexUnicodeString& iText) {
    return std::string(iText.ConvertToChar(), static_cast<std::size_t>(iText.GetLengthInChar()));
}

TEST(BexUnicodeStringFromNum, ReplacesTheTextByTheNumber) {
    for (const int number : {0, 1, -1, 9, 10, -10, 1234567, INT_MAX, INT_MIN}) {
        for (const BexUnicodeString& former :
             {BexUnicodeString(), BexUnicodeString(""), BexUnicodeString("former"), Units(u"\u0161")}) {
            BexUnicodeString text(former);
            EXPECT_EQ(text.BuildFromNum(number, "%d"), 0);
            EXPECT_EQ(NarrowOf(text), std::to_string(number));
            EXPECT_FALSE(text.IsWide());
            EXPECT_EQ(text.IsNull(), 0);
        }
    }
}

TEST(BexUnicodeStringFromNum, LongNumbersAreWrittenInFull) {
    for (const long number : {0L, 1L, -1L, LONG_MAX / 3, LONG_MIN / 3, LONG_MAX, LONG_MIN}) {
        BexUnicodeString text("former");
        EXPECT_EQ(text.BuildFromNum(number, "%ld"), 0);
        EXPECT_EQ(NarrowOf(text), std::to_string(number));
    }
}

TEST(BexUnicodeStringFromNum, AnotherFormatChangesNothing) {
    const char* const formats[] = {nullptr, "",    "%",   "d",  "%i",   "%u",   "%x",
                                   "%5d",   "%d ", " %d", "%D", "%lld", "%s%n", "%n"};
    for (const char* const format : formats) {
        for (const BexUnicodeString& former :
             {BexUnicodeString(), BexUnicodeString(""), BexUnicodeString("former"), Units(u"\u0161")}) {
            BexUnicodeString text(former);
            EXPECT_EQ(text.BuildFromNum(12, format), -1);
            EXPECT_EQ(text.BuildFromNum(12L, format), -1);
            EXPECT_EQ(text, former);
            EXPECT_EQ(text.IsNull(), former.IsNull());
        }
    }
}

TEST(BexUnicodeStringFromNum, FormatBelongsToTheTypeOfTheNumber) {
    BexUnicodeString text("former");
    EXPECT_EQ(text.BuildFromNum(12, "%ld"), -1);
    EXPECT_EQ(text.BuildFromNum(12L, "%d"), -1);
    EXPECT_STREQ(text.ConvertToChar(), "former");
}

TEST(BexUnicodeStringFromNum, DoesNotDependOnTheLocale) {
    const GlobalLocale grouping(GroupingLocale(3));
    BexUnicodeString text;
    EXPECT_EQ(text.BuildFromNum(1234567, "%d"), 0);
    EXPECT_STREQ(text.ConvertToChar(), "1234567");
    EXPECT_EQ(text.BuildFromNum(-1234567890L, "%ld"), 0);
    EXPECT_STREQ(text.ConvertToChar(), "-1234567890");
}

struct NumberCase {
    const char* text;
    long number;
};

TEST(BexUnicodeStringToNum, ReadsALeadingNumber) {
    const NumberCase cases[] = {
        {"0", 0},
        {"7", 7},
        {"-7", -7},
        {"+7", 7},
        {"-0", 0},
        {"007", 7},
        {"0x1F", 0},  // decimal only: the number ends before the x
        {"12abc", 12},
        {"12 34", 12},
        {"12.5", 12},
        {"1.000", 1},
        {"1,000", 1},
        {"5-3", 5},
        {"  42", 42},
        {" \t\n\v\f\r42", 42},
        {" \n-42 ", -42},
        {"\t+42\t", 42},
        {"12\xA0", 12},
        {"2147483647", INT_MAX},
        {"-2147483648", INT_MIN},
        {"00000000000000000000000000000000002147483647", INT_MAX},
        {"-00000000000000000000000000000000002147483648x", INT_MIN},
    };
    for (const NumberCase& tried : cases) {
        const BexUnicodeString text(tried.text);
        int number = 99;
        EXPECT_EQ(text.ConvertToNum(&number, "%d"), 0) << tried.text;
        EXPECT_EQ(number, tried.number) << tried.text;
        long longNumber = 99;
        EXPECT_EQ(text.ConvertToNum(&longNumber, "%ld"), 0) << tried.text;
        EXPECT_EQ(longNumber, tried.number) << tried.text;
        EXPECT_STREQ(text.ConvertToChar(), tried.text);
    }
}

TEST(BexUnicodeStringToNum, NoNumberLeavesTheTargetUnchanged) {
    const char* const texts[] = {"",
                                 " ",
                                 "\n",
                                 "-",
                                 "+",
                                 "x",
                                 "x1",
                                 "- 5",
                                 "+ 5",
                                 "--5",
                                 "+-5",
                                 "-+5",
                                 "++5",
                                 ".5",
                                 "-x",
                                 "\xA0"
                                 "5",
                                 "\x85"
                                 "5",
                                 "\xB2",
                                 "%d",
                                 "\b5"};
    for (const char* const narrow : texts) {
        const BexUnicodeString text(narrow);
        int number = 99;
        EXPECT_EQ(text.ConvertToNum(&number, "%d"), -1) << narrow;
        EXPECT_EQ(number, 99) << narrow;
        long longNumber = 99;
        EXPECT_EQ(text.ConvertToNum(&longNumber, "%ld"), -1) << narrow;
        EXPECT_EQ(longNumber, 99) << narrow;
    }
}

TEST(BexUnicodeStringToNum, NullHoldsNoNumber) {
    int number = 99;
    EXPECT_EQ(BexUnicodeString().ConvertToNum(&number, "%d"), -1);
    EXPECT_EQ(number, 99);
    long longNumber = 99;
    EXPECT_EQ(BexUnicodeString().ConvertToNum(&longNumber, "%ld"), -1);
    EXPECT_EQ(longNumber, 99);
}

TEST(BexUnicodeStringToNum, NumberThatDoesNotFitAnIntLeavesTheTargetUnchanged) {
    for (const char* const narrow :
         {"2147483648", "-2147483649", "4294967296", "4294967295", "9223372036854775807", "-9223372036854775808",
          "9223372036854775808", "18446744073709551616", "18446744073709551617", "99999999999999999999999999",
          "  -99999999999999999999999999", "00000000000000000002147483648"}) {
        int number = 99;
        EXPECT_EQ(BexUnicodeString(narrow).ConvertToNum(&number, "%d"), -1) << narrow;
        EXPECT_EQ(number, 99) << narrow;
    }
}

TEST(BexUnicodeStringToNum, LongHoldsEverythingUpToItsLimits) {
    for (const long expected : {LONG_MAX / 3, LONG_MIN / 3, LONG_MAX - 1, LONG_MAX, LONG_MIN + 1, LONG_MIN}) {
        const std::string text = std::to_string(expected);
        long number = 99;
        EXPECT_EQ(BexUnicodeString(text.c_str()).ConvertToNum(&number, "%ld"), 0) << text;
        EXPECT_EQ(number, expected) << text;
    }
    const unsigned long tooMuch = LONG_MAX + 1UL;
    for (const std::string& text :
         {std::to_string(tooMuch), "-" + std::to_string(tooMuch + 1), std::to_string(ULONG_MAX),
          std::string("18446744073709551616"), std::string("99999999999999999999999999")}) {
        long number = 99;
        EXPECT_EQ(BexUnicodeString(text.c_str()).ConvertToNum(&number, "%ld"), -1) << text;
        EXPECT_EQ(number, 99) << text;
    }
}

TEST(BexUnicodeStringToNum, AnotherFormatConvertsNothing) {
    for (const char* const format : {static_cast<const char*>(nullptr), "", "%", "d", "%i", "%u", "%x", "%1d", "%d ",
                                     " %d", "%*d", "%lld", "%hd", "%s"}) {
        int number = 99;
        EXPECT_EQ(BexUnicodeString("12").ConvertToNum(&number, format), -1);
        EXPECT_EQ(number, 99);
        long longNumber = 99;
        EXPECT_EQ(BexUnicodeString("12").ConvertToNum(&longNumber, format), -1);
        EXPECT_EQ(longNumber, 99);
    }
    int number = 99;
    EXPECT_EQ(BexUnicodeString("12").ConvertToNum(&number, "%ld"), -1);
    EXPECT_EQ(number, 99);
    long longNumber = 99;
    EXPECT_EQ(BexUnicodeString("12").ConvertToNum(&longNumber, "%d"), -1);
    EXPECT_EQ(longNumber, 99);
}

TEST(BexUnicodeStringToNum, NulEndsTheNumberAndIsNoWhiteSpace) {
    int number = 99;
    EXPECT_EQ(BexUnicodeString("12\0"
                               "34",
                               5)
                  .ConvertToNum(&number, "%d"),
              0);
    EXPECT_EQ(number, 12);
    number = 99;
    EXPECT_EQ(BexUnicodeString("\0"
                               "12",
                               3)
                  .ConvertToNum(&number, "%d"),
              -1);
    EXPECT_EQ(BexUnicodeString("-\0"
                               "12",
                               4)
                  .ConvertToNum(&number, "%d"),
              -1);
    EXPECT_EQ(number, 99);
}

TEST(BexUnicodeStringToNum, WideUnitsEndTheNumberWhateverTheirLowByte) {
    int number = 99;
    EXPECT_EQ(Units(u"12\u0133").ConvertToNum(&number, "%d"), 0);  // low byte '3'
    EXPECT_EQ(number, 12);
    long longNumber = 99;
    EXPECT_EQ(Units(u" -12\u0661").ConvertToNum(&longNumber, "%ld"), 0);
    EXPECT_EQ(longNumber, -12);
    number = 99;
    EXPECT_EQ(Units(u"\u0131").ConvertToNum(&number, "%d"), -1);    // low byte '1'
    EXPECT_EQ(Units(u"\u0661").ConvertToNum(&number, "%d"), -1);    // a digit, but not a decimal one of narrow text
    EXPECT_EQ(Units(u"\u012012").ConvertToNum(&number, "%d"), -1);  // low byte ' '
    EXPECT_EQ(Units(u"\u200312").ConvertToNum(&number, "%d"), -1);  // white space, but not narrow
    EXPECT_EQ(number, 99);
}

TEST(BexUnicodeStringToNum, EveryByteBeforeAndBehindIsReadAsSscanfReadsIt) {
    for (unsigned byte = 0; byte <= 0xFF; ++byte) {
        const char before[] = {static_cast<char>(byte), '1', '\0'};
        const char behind[] = {'1', static_cast<char>(byte), '\0'};
        for (const char* const narrow : {before, behind}) {
            int expected = 99;
            const int status = std::sscanf(narrow, "%d", &expected) == 1 ? 0 : -1;
            int number = 99;
            ASSERT_EQ(BexUnicodeString(narrow, 2).ConvertToNum(&number, "%d"), status) << byte;
            ASSERT_EQ(number, expected) << byte;
        }
    }
}

TEST(BexUnicodeStringToNum, AgreesWithSscanfOnAllShortTexts) {
    std::vector<std::string> texts = {""};
    for (std::size_t next = 0; next < texts.size(); ++next) {
        const std::string narrow = texts[next];
        int expected = 99;
        const int status = std::sscanf(narrow.c_str(), "%d", &expected) == 1 ? 0 : -1;
        int number = 99;
        ASSERT_EQ(BexUnicodeString(narrow.c_str()).ConvertToNum(&number, "%d"), status) << narrow;
        ASSERT_EQ(number, expected) << narrow;
        if (narrow.size() < 5) {
            for (const char letter : {' ', '\n', '+', '-', '0', '9', 'x'}) {
                texts.push_back(narrow + letter);
            }
        }
    }
}

TEST(BexUnicodeStringToNum, DoesNotDependOnTheLocale) {
    const GlobalLocale grouping(GroupingLocale(3));
    int number = 99;
    EXPECT_EQ(BexUnicodeString("1.234").ConvertToNum(&number, "%d"), 0);
    EXPECT_EQ(number, 1);
}

TEST(BexUnicodeStringToNum, ReadsWhatWasBuilt) {
    for (const int number : {0, 1, -1, INT_MAX, INT_MIN}) {
        BexUnicodeString text;
        int read = 99;
        ASSERT_EQ(text.BuildFromNum(number, "%d"), 0);
        EXPECT_EQ(text.ConvertToNum(&read, "%d"), 0);
        EXPECT_EQ(read, number);
    }
    for (const long number : {0L, LONG_MAX, LONG_MIN}) {
        BexUnicodeString text;
        long read = 99;
        ASSERT_EQ(text.BuildFromNum(number, "%ld"), 0);
        EXPECT_EQ(text.ConvertToNum(&read, "%ld"), 0);
        EXPECT_EQ(read, number);
    }
}

}  // namespace
