// Fields, carrying, the range, text and comparison of BexTime.

#include <BexTime.h>

#include <gtest/gtest.h>

#include <EnvironmentVariable.h>
#include <climits>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace {

std::string TextOf(const BexTime& iTime) {
    char text[80];
    std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d", iTime.GetYear(), iTime.GetMonth(), iTime.GetDay(),
                  iTime.GetHour(), iTime.GetMinute(), iTime.GetSecond());
    return text;
}

constexpr const char* kFirst = "-9999-1-1 0:0:0";
constexpr const char* kLast = "9999-12-31 23:59:59";

struct FieldsCase {
    int year, month, day, hour, minute, second;
    const char* text;
};

void ExpectFields(const FieldsCase& iTried) {
    const BexTime built(iTried.year, iTried.month, iTried.day, iTried.hour, iTried.minute, iTried.second);
    EXPECT_EQ(TextOf(built), iTried.text);
    BexTime set(1999, 9, 9, 9, 9, 9);
    set.SetDateTime(iTried.year, iTried.month, iTried.day, iTried.hour, iTried.minute, iTried.second);
    EXPECT_EQ(TextOf(set), iTried.text);
    EXPECT_TRUE(set == built);
}

TEST(BexTimeFields, AreKeptAsGiven) {
    const FieldsCase cases[] = {
        {2004, 2, 29, 23, 59, 59, "2004-2-29 23:59:59"},
        {1970, 1, 1, 0, 0, 0, "1970-1-1 0:0:0"},
        {1969, 12, 31, 23, 59, 59, "1969-12-31 23:59:59"},  // before the epoch of the system's clock
        {2038, 1, 19, 3, 14, 8, "2038-1-19 3:14:8"},
        {1582, 10, 10, 12, 0, 0, "1582-10-10 12:0:0"},  // no gap where the calendars were changed
        {1752, 9, 5, 12, 0, 0, "1752-9-5 12:0:0"},
        {2016, 12, 31, 23, 59, 60, "2017-1-1 0:0:0"},  // no leap seconds
        {1, 1, 1, 0, 0, 0, "1-1-1 0:0:0"},
        {0, 2, 29, 1, 2, 3, "0-2-29 1:2:3"},
        {-1, 12, 31, 23, 0, 1, "-1-12-31 23:0:1"},
        {-4, 2, 29, 0, 0, 0, "-4-2-29 0:0:0"},
        {-9999, 1, 1, 0, 0, 0, kFirst},
        {9999, 12, 31, 23, 59, 59, kLast},
    };
    for (const FieldsCase& tried : cases) {
        ExpectFields(tried);
    }
}

TEST(BexTimeFields, TimeOfDayIsMidnightUnlessGiven) {
    EXPECT_EQ(TextOf(BexTime(2004, 2, 29)), "2004-2-29 0:0:0");
    EXPECT_EQ(TextOf(BexTime(2004, 2, 29, 7)), "2004-2-29 7:0:0");
    EXPECT_EQ(TextOf(BexTime(2004, 2, 29, 7, 8)), "2004-2-29 7:8:0");
    BexTime time(1999, 12, 31, 23, 59, 59);
    time.SetDateTime(2004, 2, 29);
    EXPECT_EQ(TextOf(time), "2004-2-29 0:0:0");
}

TEST(BexTimeFields, WhatOverflowsIsCarried) {
    const FieldsCase cases[] = {
        {2004, 2, 31, 0, 0, 0, "2004-3-2 0:0:0"},
        {2003, 2, 31, 0, 0, 0, "2003-3-3 0:0:0"},
        {2004, 1, 0, 0, 0, 0, "2003-12-31 0:0:0"},
        {2004, 3, 0, 0, 0, 0, "2004-2-29 0:0:0"},
        {2003, 3, 0, 0, 0, 0, "2003-2-28 0:0:0"},
        {2004, 3, -1, 0, 0, 0, "2004-2-28 0:0:0"},
        {2004, 1, 367, 0, 0, 0, "2005-1-1 0:0:0"},
        {2004, 13, 1, 0, 0, 0, "2005-1-1 0:0:0"},
        {2004, 0, 1, 0, 0, 0, "2003-12-1 0:0:0"},
        {2004, -11, 1, 0, 0, 0, "2003-1-1 0:0:0"},
        {2004, -12, 1, 0, 0, 0, "2002-12-1 0:0:0"},
        {2003, 14, 29, 0, 0, 0, "2004-2-29 0:0:0"},  // the month is carried before the day is looked at
        {2003, 14, 30, 0, 0, 0, "2004-3-1 0:0:0"},
        {2004, 25, 31, 24, 0, 0, "2006-2-1 0:0:0"},
        {2004, 2, 28, 24, 0, 0, "2004-2-29 0:0:0"},
        {2004, 2, 28, 23, 60, 0, "2004-2-29 0:0:0"},
        {2004, 2, 28, 23, 59, 60, "2004-2-29 0:0:0"},
        {2004, 3, 1, 0, 0, -1, "2004-2-29 23:59:59"},
        {2004, 3, 1, 0, -1, 0, "2004-2-29 23:59:0"},
        {2004, 3, 1, -1, 0, 0, "2004-2-29 23:0:0"},
        {2004, 3, 1, -25, -61, -61, "2004-2-28 21:57:59"},
        {1970, 1, 1, 0, 0, -1, "1969-12-31 23:59:59"},
        {1970, 1, 1, 0, 0, 86400 * 365, "1971-1-1 0:0:0"},
        {1, 1, 0, 0, 0, 0, "0-12-31 0:0:0"},
        {0, 1, 0, 0, 0, 0, "-1-12-31 0:0:0"},
        {0, 0, 0, 0, 0, 0, "-1-11-30 0:0:0"},
        {-1, 14, 29, 0, 0, 0, "0-2-29 0:0:0"},
        {10000, 0, 31, 0, 0, 0, "9999-12-31 0:0:0"},  // out of range until the month is carried
        {10000, 1, 0, 23, 59, 59, kLast},
        {-10000, 13, 1, 0, 0, 0, kFirst},
        {-10000, 12, 32, 0, 0, 0, kFirst},
        {-9999, 1, 0, 24, 0, 0, kFirst},
    };
    for (const FieldsCase& tried : cases) {
        ExpectFields(tried);
    }
}

TEST(BexTimeFields, LeapYearsAreThoseOfTheGregorianCalendar) {
    const std::vector<int> leapYears = {-9996, -2000, -400, -8,   -4,   0,    4,    96,   104,
                                        400,   1600,  1904, 1996, 2000, 2004, 2400, 8000, 9996};
    const std::vector<int> commonYears = {-9999, -9900, -1900, -300, -200, -100, -5,   -3,   -2,
                                          -1,    1,     2,     3,    100,  200,  300,  1700, 1800,
                                          1900,  2001,  2002,  2003, 2100, 2200, 2300, 9900, 9999};
    for (const int year : leapYears) {
        const BexTime day(year, 2, 29);
        EXPECT_EQ(day.GetMonth(), 2) << year;
        EXPECT_EQ(day.GetDay(), 29) << year;
        EXPECT_EQ(BexTime(year, 2, 30).GetMonth(), 3) << year;
        EXPECT_EQ(BexTime(year, 1, 366).GetYear(), year);
    }
    for (const int year : commonYears) {
        const BexTime day(year, 2, 29);
        EXPECT_EQ(day.GetMonth(), 3) << year;
        EXPECT_EQ(day.GetDay(), 1) << year;
        EXPECT_EQ(BexTime(year, 1, 365).GetYear(), year);
        EXPECT_EQ(BexTime(year, 12, 31).GetDay(), 31) << year;
    }
}

TEST(BexTimeRange, WhatFallsOutsideBecomesTheNearerEnd) {
    const FieldsCase cases[] = {
        {9999, 12, 31, 23, 59, 60, kLast},
        {9999, 12, 31, 23, 60, 0, kLast},
        {9999, 12, 31, 24, 0, 0, kLast},
        {9999, 12, 32, 0, 0, 0, kLast},
        {9999, 13, 1, 0, 0, 0, kLast},
        {10000, 1, 1, 0, 0, 0, kLast},
        {-9999, 1, 1, 0, 0, -1, kFirst},
        {-9999, 1, 1, 0, -1, 0, kFirst},
        {-9999, 1, 1, -1, 0, 0, kFirst},
        {-9999, 1, 0, 0, 0, 0, kFirst},
        {-9999, 0, 1, 0, 0, 0, kFirst},
        {-10000, 12, 31, 23, 59, 59, kFirst},
        {INT_MAX, 1, 1, 0, 0, 0, kLast},
        {INT_MIN, 1, 1, 0, 0, 0, kFirst},
        {2004, INT_MAX, 1, 0, 0, 0, kLast},
        {2004, INT_MIN, 1, 0, 0, 0, kFirst},
        {2004, 1, INT_MAX, 0, 0, 0, kLast},
        {2004, 1, INT_MIN, 0, 0, 0, kFirst},
        {INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, kLast},
        {INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, kFirst},
        {INT_MAX, INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, kLast},  // the years outweigh all the rest
        {INT_MIN, INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, kFirst},
    };
    for (const FieldsCase& tried : cases) {
        ExpectFields(tried);
    }
}

TEST(BexTimeRange, EndsAreWithinReach) {
    BexTime last(10000, 1, 1);
    last += BexTimeSpan(0, 0, 0, -1);
    EXPECT_EQ(TextOf(last), "9999-12-31 23:59:58");
    BexTime first(-10000, 1, 1);
    first += BexTimeSpan(0, 0, 0, 1);
    EXPECT_EQ(TextOf(first), "-9999-1-1 0:0:1");
}

struct TextCase {
    const char* format;
    const char* text;
};

TEST(BexTimeText, ConversionsGiveTheFields) {
    const TextCase cases[] = {
        {"%Y", "2004"},
        {"%m", "02"},
        {"%d", "09"},
        {"%H", "07"},
        {"%M", "08"},
        {"%S", "05"},
        {"%%", "%"},
        {"%m-%d-%Y-%H:%M:%S", "02-09-2004-07:08:05"},
        {"%Y%m%d%H%M%S", "20040209070805"},
        {"%Y%Y", "20042004"},
        {"100%%", "100%"},
        {"%%Y", "%Y"},
        {"%%%Y", "%2004"},
        {"%%%%", "%%"},
        {"plain text", "plain text"},
        {"Ymd HMS", "Ymd HMS"},
        {"\xE9%d\xFF",
         "\xE9"
         "09\xFF"},
        {" %d ", " 09 "},
        {"%d\n%m", "09\n02"},
    };
    const BexTime time(2004, 2, 9, 7, 8, 5);
    for (const TextCase& tried : cases) {
        EXPECT_STREQ(time.ConvertToString(tried.format).ConvertToChar(), tried.text) << tried.format;
    }
}

TEST(BexTimeText, OtherConversionsAreCopied) {
    const TextCase cases[] = {
        {"%", "%"},      {"%Q", "%Q"},       {"%y", "%y"},
        {"%D", "%D"},    {"%h", "%h"},       {"%s", "%s"},
        {"%n", "%n"},    {"% Y", "% Y"},     {"%-d", "%-d"},
        {"%Ey", "%Ey"},  {"%F%T", "%F%T"},   {"a%", "a%"},
        {"%d%", "09%"},  {"%%%", "%%"},      {"%Q%Y", "%Q2004"},
        {"%q%%", "%q%"}, {"%\xE9", "%\xE9"}, {"%j %U %w %Z", "%j %U %w %Z"},
    };
    const BexTime time(2004, 2, 9, 7, 8, 5);
    for (const TextCase& tried : cases) {
        EXPECT_STREQ(time.ConvertToString(tried.format).ConvertToChar(), tried.text) << tried.format;
    }
}

TEST(BexTimeText, EveryLetterButTheSixAndThePercentIsCopied) {
    const BexTime time(2004, 2, 9, 7, 8, 5);
    const std::string conversions = "YmdHMS%";
    for (unsigned byte = 1; byte <= 0xFF; ++byte) {
        const char letter = static_cast<char>(byte);
        if (conversions.find(letter) == std::string::npos) {
            const std::string format = {'<', '%', letter, '>'};
            ASSERT_EQ(time.ConvertToString(format.c_str()).ConvertToChar(), format) << byte;
        }
    }
}

TEST(BexTimeText, NoFormatGivesEmptyNotNull) {
    const BexTime time(2004, 2, 9);
    for (const char* const format : {static_cast<const char*>(nullptr), ""}) {
        const BexUnicodeString text = time.ConvertToString(format);
        EXPECT_EQ(text.GetLengthInChar(), 0);
        EXPECT_EQ(text.IsNull(), 0);
    }
}

TEST(BexTimeText, YearHasAtLeastFourDigitsBehindItsSign) {
    const struct {
        int year;
        const char* text;
    } cases[] = {{0, "0000"},   {1, "0001"},    {-1, "-0001"},    {99, "0099"},   {-99, "-0099"},
                 {999, "0999"}, {1000, "1000"}, {-1000, "-1000"}, {9999, "9999"}, {-9999, "-9999"}};
    for (const auto& tried : cases) {
        EXPECT_STREQ(BexTime(tried.year, 6, 15).ConvertToString("%Y").ConvertToChar(), tried.text);
    }
}

TEST(BexTimeText, EveryTwoDigitFieldHasTwoDigits) {
    for (int value = 0; value < 60; ++value) {
        char expected[8];
        std::snprintf(expected, sizeof expected, "%02d", value);
        const BexTime time(2004, value % 12 + 1, value % 31 + 1, value % 24, value, value);
        EXPECT_STREQ(time.ConvertToString("%M").ConvertToChar(), expected);
        EXPECT_STREQ(time.ConvertToString("%S").ConvertToChar(), expected);
        if (value < 24) {
            EXPECT_STREQ(time.ConvertToString("%H").ConvertToChar(), expected);
        }
        if (value >= 1 && value <= 31) {
            EXPECT_STREQ(BexTime(2004, 1, value).ConvertToString("%d").ConvertToChar(), expected);
        }
        if (value >= 1 && value <= 12) {
            EXPECT_STREQ(BexTime(2004, value, 1).ConvertToString("%m").ConvertToChar(), expected);
        }
    }
}

TEST(BexTimeText, LongFormatIsWrittenInFull) {
    std::string format;
    std::string expected;
    for (int count = 0; count < 10'000; ++count) {
        format += "%Y/";
        expected += "2004/";
    }
    EXPECT_EQ(BexTime(2004, 2, 9).ConvertToString(format.c_str()).ConvertToChar(), expected);
}

/** The local time of the process now, by way of the C library. */
BexTime LocalTime() {
    const std::time_t now = std::time(nullptr);
    const std::tm* const local = std::localtime(&now);
    return BexTime(local->tm_year + 1900, local->tm_mon + 1, local->tm_mday, local->tm_hour, local->tm_min,
                   local->tm_sec);
}

TEST(BexTimeNow, LiesBetweenTwoReadingsOfTheLocalTime) {
    // zones far apart, so that a reading of another zone does not pass
    for (const char* const zone : {static_cast<const char*>(nullptr), "UTC0", "AAA-13:30", "BBB+11:15"}) {
        const EnvironmentVariable zoneOfProcess("TZ", zone);
        const BexTime before = LocalTime();
        const BexTime now;
        const BexTime after = LocalTime();
        EXPECT_TRUE(before <= now && now <= after) << TextOf(before) << ", " << TextOf(now) << ", " << TextOf(after);
    }
    ::tzset();
}

TEST(BexTimeNow, FollowsTheZoneOfTheProcess) {
    BexTime east;
    {
        const EnvironmentVariable zoneOfProcess("TZ", "AAA-12");
        ::tzset();
        east = BexTime();
    }
    BexTime west;
    {
        const EnvironmentVariable zoneOfProcess("TZ", "BBB+12");
        ::tzset();
        west = BexTime();
    }
    ::tzset();
    west += BexTimeSpan(0, 24, 0, 0);  // now as far east, and read a moment later
    EXPECT_TRUE(east <= west) << TextOf(east) << ", " << TextOf(west);
    east += BexTimeSpan(0, 0, 5, 0);
    EXPECT_TRUE(west <= east) << TextOf(east) << ", " << TextOf(west);
}

TEST(BexTimeCompare, OrdersByDateAndTimeOfDay) {
    const std::vector<BexTime> rising = {
        BexTime(-9999, 1, 1),
        BexTime(-9999, 1, 1, 0, 0, 1),
        BexTime(-1, 12, 31, 23, 59, 59),
        BexTime(0, 1, 1),
        BexTime(0, 12, 31),
        BexTime(1, 1, 1),
        BexTime(1969, 12, 31, 23, 59, 59),
        BexTime(1970, 1, 1),
        BexTime(2004, 2, 9, 7, 8, 5),
        BexTime(2004, 2, 9, 7, 8, 6),
        BexTime(2004, 2, 9, 7, 9, 0),
        BexTime(2004, 2, 9, 8, 0, 0),
        BexTime(2004, 2, 10, 0, 0, 0),
        BexTime(2004, 3, 1, 0, 0, 0),
        BexTime(2005, 1, 1, 0, 0, 0),
        BexTime(9999, 12, 31, 23, 59, 58),
        BexTime(9999, 12, 31, 23, 59, 59),
    };
    for (std::size_t left = 0; left < rising.size(); ++left) {
        for (std::size_t right = 0; right < rising.size(); ++right) {
            EXPECT_EQ(rising[left] == rising[right], left == right) << left << " " << right;
            EXPECT_EQ(rising[left] != rising[right], left != right) << left << " " << right;
            EXPECT_EQ(rising[left] < rising[right], left < right) << left << " " << right;
            EXPECT_EQ(rising[left] > rising[right], left > right) << left << " " << right;
            EXPECT_EQ(rising[left] <= rising[right], left <= right) << left << " " << right;
            EXPECT_EQ(rising[left] >= rising[right], left >= right) << left << " " << right;
        }
    }
}

TEST(BexTimeCompare, TimesBuiltInDifferentWaysAreEqual) {
    EXPECT_TRUE(BexTime(2004, 2, 31) == BexTime(2004, 3, 2));
    EXPECT_TRUE(BexTime(2004, 2, 29, 23, 59, 60) == BexTime(2004, 3, 1));
    BexTime moved(2004, 2, 28);
    moved += BexTimeSpan(2, 0, 0, 0);
    EXPECT_TRUE(moved == BexTime(2004, 3, 1));
    EXPECT_TRUE(BexTime(INT_MAX, 1, 1) == BexTime(9999, 12, 31, 23, 59, 59));
}

TEST(BexTimeCompare, CopyIsIndependent) {
    BexTime source(2004, 2, 9);
    const BexTime copy(source);
    BexTime assigned(1999, 1, 1);
    assigned = source;
    source += BexTimeSpan(1, 0, 0, 0);
    EXPECT_EQ(TextOf(copy), "2004-2-9 0:0:0");
    EXPECT_EQ(TextOf(assigned), "2004-2-9 0:0:0");
    EXPECT_EQ(TextOf(source), "2004-2-10 0:0:0");
}

}  // namespace
