#include <BexTime.h>
#include <BexTimeSpan.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>

namespace {

std::string TextOf(const BexTime& iTime) {
    return iTime.ConvertToString("%Y-%m-%d %H:%M:%S").ConvertToChar();
}

struct SpanCase {
    int days, hours, minutes, seconds;
    std::int64_t total;
};

TEST(BexTimeSpan, IsTheSumOfItsParts) {
    constexpr std::int64_t kMax = INT_MAX;
    constexpr std::int64_t kMin = INT_MIN;
    const SpanCase cases[] = {
        {0, 0, 0, 0, 0},
        {0, 0, 0, 1, 1},
        {0, 0, 1, 0, 60},
        {0, 1, 0, 0, 3600},
        {1, 0, 0, 0, 86400},
        {1, 2, 3, 4, 93784},
        {-1, -2, -3, -4, -93784},
        {1, -24, 0, 0, 0},
        {0, 1, -61, 60, 0},
        {0, 0, 0, INT_MAX, kMax},
        {0, 0, INT_MAX, 0, kMax * 60},
        {0, INT_MAX, 0, 0, kMax * 3600},
        {INT_MAX, 0, 0, 0, kMax * 86400},
        {INT_MIN, 0, 0, 0, kMin * 86400},
        {INT_MAX, INT_MAX, INT_MAX, INT_MAX, kMax * (86400 + 3600 + 60 + 1)},
        {INT_MIN, INT_MIN, INT_MIN, INT_MIN, kMin * (86400 + 3600 + 60 + 1)},
    };
    for (const SpanCase& tried : cases) {
        EXPECT_EQ(BexTimeSpan(tried.days, tried.hours, tried.minutes, tried.seconds).GetTotalSeconds(), tried.total);
    }
}

TEST(BexTimeSpan, IsUsableAtCompileTime) {
    static_assert(BexTimeSpan(1, 0, 0, 1).GetTotalSeconds() == 86401);
    SUCCEED();
}

struct MoveCase {
    BexTimeSpan span;
    const char* text;
};

TEST(BexTimeSpan, MovesATime) {
    const MoveCase cases[] = {
        {{0, 0, 0, 0}, "2004-02-28 23:59:59"},        {{0, 0, 0, 1}, "2004-02-29 00:00:00"},
        {{1, 0, 0, 0}, "2004-02-29 23:59:59"},        {{2, 0, 0, 0}, "2004-03-01 23:59:59"},
        {{0, 24, 0, 1}, "2004-03-01 00:00:00"},       {{366, 0, 0, 0}, "2005-02-28 23:59:59"},
        {{-59, 0, 0, 0}, "2003-12-31 23:59:59"},      {{0, -24, 0, 0}, "2004-02-27 23:59:59"},
        {{0, 0, -60, 0}, "2004-02-28 22:59:59"},      {{0, 0, 0, -86400}, "2004-02-27 23:59:59"},
        {{-12476, 0, 0, 0}, "1970-01-01 23:59:59"},   {{-12477, 0, 0, 0}, "1969-12-31 23:59:59"},
        {{-12477, 0, 0, -1}, "1969-12-31 23:59:58"},  {{-12477, -24, 0, 0}, "1969-12-30 23:59:59"},
        {{-732'004, 0, 0, 0}, "0000-01-01 23:59:59"}, {{-732'005, 0, 0, 0}, "-0001-12-31 23:59:59"},
    };
    for (const MoveCase& tried : cases) {
        BexTime time(2004, 2, 28, 23, 59, 59);
        EXPECT_EQ(&(time += tried.span), &time);
        EXPECT_EQ(TextOf(time), tried.text);
    }
}

TEST(BexTimeSpan, MovesThereAndBack) {
    const BexTime start(2004, 2, 29, 12, 30, 15);
    for (int days = -2'000'000; days <= 2'000'000; days += 99'991) {
        BexTime time(start);
        time += BexTimeSpan(days, days % 100, days % 1000, days);
        time += BexTimeSpan(-days, -(days % 100), -(days % 1000), -days);
        EXPECT_TRUE(time == start) << days;
    }
}

TEST(BexTimeSpan, StopsAtTheEndsOfTheRange) {
    for (const BexTimeSpan& far : {BexTimeSpan(INT_MAX, 0, 0, 0), BexTimeSpan(INT_MAX, INT_MAX, INT_MAX, INT_MAX),
                                   BexTimeSpan(0, INT_MAX, 0, 0)}) {
        BexTime time(2004, 2, 29);
        time += far;
        EXPECT_EQ(TextOf(time), "9999-12-31 23:59:59");
        time += far;
        EXPECT_EQ(TextOf(time), "9999-12-31 23:59:59");
    }
    for (const BexTimeSpan& far : {BexTimeSpan(INT_MIN, 0, 0, 0), BexTimeSpan(INT_MIN, INT_MIN, INT_MIN, INT_MIN),
                                   BexTimeSpan(0, INT_MIN, 0, 0)}) {
        BexTime time(2004, 2, 29);
        time += far;
        EXPECT_EQ(TextOf(time), "-9999-01-01 00:00:00");
        time += far;
        EXPECT_EQ(TextOf(time), "-9999-01-01 00:00:00");
    }
}

TEST(BexTimeSpan, ReachesTheEndsExactly) {
    BexTime last(9999, 12, 31, 23, 59, 58);
    last += BexTimeSpan(0, 0, 0, 1);
    EXPECT_EQ(TextOf(last), "9999-12-31 23:59:59");
    last += BexTimeSpan(0, 0, 0, 1);
    EXPECT_EQ(TextOf(last), "9999-12-31 23:59:59");
    last += BexTimeSpan(0, 0, 0, -1);
    EXPECT_EQ(TextOf(last), "9999-12-31 23:59:58");
    BexTime first(-9999, 1, 1, 0, 0, 1);
    first += BexTimeSpan(0, 0, 0, -1);
    EXPECT_EQ(TextOf(first), "-9999-01-01 00:00:00");
    first += BexTimeSpan(0, 0, 0, -1);
    EXPECT_EQ(TextOf(first), "-9999-01-01 00:00:00");
    first += BexTimeSpan(1, 0, 0, 0);
    EXPECT_EQ(TextOf(first), "-9999-01-02 00:00:00");
}

TEST(BexTimeSpan, OneSpanCoversTheWholeRange) {
    // the range has 19 999 years, 4849 of them leap
    BexTime time(-9999, 1, 1);
    time += BexTimeSpan(365 * 19'999 + 4849, 0, 0, -1);
    EXPECT_EQ(TextOf(time), "9999-12-31 23:59:59");
    BexTime shorter(-9999, 1, 1);
    shorter += BexTimeSpan(365 * 19'999 + 4849, 0, 0, -2);
    EXPECT_EQ(TextOf(shorter), "9999-12-31 23:59:58");
}

}  // namespace
