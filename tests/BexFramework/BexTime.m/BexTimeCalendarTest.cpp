// BexTime compared with calendars of other making: one that counts days on its fingers, one of plain arithmetic in
// wide integers, and the C library's.

#include <BexTime.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <random>
#include <tuple>

namespace {

bool IsLeap(std::int64_t iYear) {
    return (iYear % 4 == 0 && iYear % 100 != 0) || iYear % 400 == 0;
}

int DaysOfMonth(int iYear, int iMonth) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return iMonth == 2 && IsLeap(iYear) ? 29 : kDays[iMonth - 1];
}

/** A date that only knows how to become the next one. */
struct NaiveDate {
    int year, month, day;

    void GoOn() {
        ++day;
        if (day > DaysOfMonth(year, month)) {
            day = 1;
            ++month;
        }
        if (month > 12) {
            month = 1;
            ++year;
        }
    }
};

void ExpectDate(const BexTime& iTime, const NaiveDate& iDate) {
    ASSERT_EQ(std::tuple(iTime.GetYear(), iTime.GetMonth(), iTime.GetDay()),
              std::tuple(iDate.year, iDate.month, iDate.day));
}

/** Walks day by day, at a time of day that changes from day to day. */
void CompareDayByDay(int iFirstYear, int iLastYear) {
    NaiveDate date{iFirstYear, 1, 1};
    BexTime walked(iFirstYear, 1, 1, 23, 59, 59);
    int dayOfAll = 1;
    while (date.year <= iLastYear) {
        ASSERT_NO_FATAL_FAILURE(ExpectDate(walked, date));
        ASSERT_EQ(walked.GetHour(), 23);
        ASSERT_EQ(walked.GetMinute(), 59);
        ASSERT_EQ(walked.GetSecond(), 59);
        const BexTime built(date.year, date.month, date.day, dayOfAll % 24, dayOfAll % 60, dayOfAll % 59);
        ASSERT_NO_FATAL_FAILURE(ExpectDate(built, date));
        ASSERT_EQ(built.GetHour(), dayOfAll % 24);
        ASSERT_EQ(built.GetMinute(), dayOfAll % 60);
        ASSERT_EQ(built.GetSecond(), dayOfAll % 59);
        ASSERT_NO_FATAL_FAILURE(ExpectDate(BexTime(iFirstYear, 1, dayOfAll), date));  // everything carried from the day
        walked += BexTimeSpan(1, 0, 0, 0);
        date.GoOn();
        ++dayOfAll;
    }
}

TEST(BexTimeCalendar, AgreesDayByDayFromTheYear1580To2420) {
    CompareDayByDay(1580, 2420);
}

TEST(BexTimeCalendar, AgreesDayByDayAroundTheYearZero) {
    CompareDayByDay(-420, 420);
}

TEST(BexTimeCalendar, AgreesDayByDayAtBothEndsOfTheRange) {
    CompareDayByDay(-9999, -9890);
    CompareDayByDay(9890, 9998);
}

TEST(BexTimeCalendar, EveryMonthOfTheRangeHasItsLength) {
    for (int year = -9999; year <= 9999; ++year) {
        for (int month = 1; month <= 12; ++month) {
            const int days = DaysOfMonth(year, month);
            ASSERT_NO_FATAL_FAILURE(ExpectDate(BexTime(year, month, days), {year, month, days}));
            if (year != 9999 || month != 12) {
                const NaiveDate next = month == 12 ? NaiveDate{year + 1, 1, 1} : NaiveDate{year, month + 1, 1};
                ASSERT_NO_FATAL_FAILURE(ExpectDate(BexTime(year, month, days + 1), next));
                ASSERT_NO_FATAL_FAILURE(ExpectDate(BexTime(next.year, next.month, 0), {year, month, days}));
            }
        }
    }
}

struct Fields {
    int year, month, day, hour, minute, second;
};

std::int64_t Floor(std::int64_t iNumber, std::int64_t iBy) {
    return iNumber / iBy - (iNumber % iBy < 0 ? 1 : 0);
}

/** Seconds since the first moment of the year 0, whatever the fields hold. */
std::int64_t SecondsOf(const Fields& iFields) {
    const std::int64_t months = std::int64_t{iFields.month} - 1;
    const std::int64_t year = iFields.year + Floor(months, 12);
    const int month = static_cast<int>(months - Floor(months, 12) * 12);
    const std::int64_t former = year - 1;
    std::int64_t days = year * 365 + Floor(former, 4) - Floor(former, 100) + Floor(former, 400);
    for (int earlier = 1; earlier <= month; ++earlier) {
        days += DaysOfMonth(IsLeap(year) ? 4 : 1, earlier);
    }
    days += std::int64_t{iFields.day} - 1;
    return ((days * 24 + iFields.hour) * 60 + iFields.minute) * 60 + iFields.second;
}

std::int64_t ClampedToTheRange(std::int64_t iSeconds) {
    return std::clamp(iSeconds, SecondsOf({-9999, 1, 1, 0, 0, 0}), SecondsOf({9999, 12, 31, 23, 59, 59}));
}

Fields FieldsOf(const BexTime& iTime) {
    return {iTime.GetYear(), iTime.GetMonth(), iTime.GetDay(), iTime.GetHour(), iTime.GetMinute(), iTime.GetSecond()};
}

void ExpectWithinBounds(const Fields& iFields) {
    ASSERT_TRUE(iFields.year >= -9999 && iFields.year <= 9999) << iFields.year;
    ASSERT_TRUE(iFields.month >= 1 && iFields.month <= 12) << iFields.month;
    ASSERT_TRUE(iFields.day >= 1 && iFields.day <= DaysOfMonth(iFields.year, iFields.month)) << iFields.day;
    ASSERT_TRUE(iFields.hour >= 0 && iFields.hour <= 23) << iFields.hour;
    ASSERT_TRUE(iFields.minute >= 0 && iFields.minute <= 59) << iFields.minute;
    ASSERT_TRUE(iFields.second >= 0 && iFields.second <= 59) << iFields.second;
}

void ExpectSeconds(const BexTime& iTime, std::int64_t iSeconds) {
    const Fields fields = FieldsOf(iTime);
    ASSERT_NO_FATAL_FAILURE(ExpectWithinBounds(fields));
    ASSERT_EQ(SecondsOf(fields), ClampedToTheRange(iSeconds));
}

TEST(BexTimeCalendar, EveryExtremeInEveryArgumentIsCarriedOrClamped) {
    constexpr int kValues[] = {INT_MIN, INT_MIN + 1, -1, 0, 1, 2004, INT_MAX - 1, INT_MAX};
    for (const int year : kValues) {
        for (const int month : kValues) {
            for (const int day : kValues) {
                for (const int hour : kValues) {
                    for (const int minute : kValues) {
                        for (const int second : kValues) {
                            const BexTime time(year, month, day, hour, minute, second);
                            ASSERT_NO_FATAL_FAILURE(
                                ExpectSeconds(time, SecondsOf({year, month, day, hour, minute, second})))
                                << year << " " << month << " " << day << " " << hour << " " << minute << " " << second;
                        }
                    }
                }
            }
        }
    }
}

/** Integers of every size, small ones as often as large ones. */
class AnySize {
public:
    explicit AnySize(unsigned iSeed) : random(iSeed) {}

    int operator()(int iBits) {
        const std::uint32_t shift = 32 - static_cast<std::uint32_t>(random()) % static_cast<std::uint32_t>(iBits) - 1;
        const std::int64_t magnitude = static_cast<std::int64_t>(static_cast<std::uint32_t>(random()) >> shift);
        const std::int64_t number = random() % 2 == 0 ? magnitude : -magnitude;
        return static_cast<int>(std::clamp<std::int64_t>(number, INT_MIN, INT_MAX));
    }

private:
    std::mt19937 random;
};

TEST(BexTimeCalendar, RandomFieldsOfEverySizeAreCarried) {
    AnySize any(20040229);
    for (int count = 0; count < 300'000; ++count) {
        const Fields fields = {any(14), any(17), any(22), any(27), any(32), any(32)};
        const BexTime time(fields.year, fields.month, fields.day, fields.hour, fields.minute, fields.second);
        ASSERT_NO_FATAL_FAILURE(ExpectSeconds(time, SecondsOf(fields)))
            << fields.year << " " << fields.month << " " << fields.day << " " << fields.hour << " " << fields.minute
            << " " << fields.second;
    }
}

TEST(BexTimeCalendar, CarriesAsTheCLibraryDoes) {
    AnySize any(1582);
    for (int count = 0; count < 100'000; ++count) {
        const Fields fields = {2000 + any(10), any(10), any(16), any(20), any(25), any(30)};
        std::tm carried = {};
        carried.tm_year = fields.year - 1900;
        carried.tm_mon = fields.month - 1;
        carried.tm_mday = fields.day;
        carried.tm_hour = fields.hour;
        carried.tm_min = fields.minute;
        carried.tm_sec = fields.second;
        errno = 0;
        if (::timegm(&carried) == -1 && errno == EOVERFLOW) {
            continue;  // its seconds end in 2038 where they have 32 bits
        }
        const BexTime time(fields.year, fields.month, fields.day, fields.hour, fields.minute, fields.second);
        ASSERT_NO_FATAL_FAILURE(ExpectDate(time, {carried.tm_year + 1900, carried.tm_mon + 1, carried.tm_mday}));
        ASSERT_EQ(std::tuple(time.GetHour(), time.GetMinute(), time.GetSecond()),
                  std::tuple(carried.tm_hour, carried.tm_min, carried.tm_sec));
    }
}

TEST(BexTimeCalendar, ComparesAsItsSeconds) {
    AnySize any(7);
    for (int count = 0; count < 100'000; ++count) {
        const Fields left = {any(15), any(5), any(6), any(6), any(7), any(7)};
        const Fields right = {
            count % 2 == 0 ? left.year : any(15), count % 4 < 2 ? left.month : any(5), any(6), any(6), any(7), any(7)};
        const BexTime leftTime(left.year, left.month, left.day, left.hour, left.minute, left.second);
        const BexTime rightTime(right.year, right.month, right.day, right.hour, right.minute, right.second);
        const std::int64_t leftSeconds = ClampedToTheRange(SecondsOf(left));
        const std::int64_t rightSeconds = ClampedToTheRange(SecondsOf(right));
        ASSERT_EQ(leftTime == rightTime, leftSeconds == rightSeconds);
        ASSERT_EQ(leftTime != rightTime, leftSeconds != rightSeconds);
        ASSERT_EQ(leftTime < rightTime, leftSeconds < rightSeconds);
        ASSERT_EQ(leftTime > rightTime, leftSeconds > rightSeconds);
        ASSERT_EQ(leftTime <= rightTime, leftSeconds <= rightSeconds);
        ASSERT_EQ(leftTime >= rightTime, leftSeconds >= rightSeconds);
    }
}

TEST(BexTimeCalendar, RandomSpansMoveByTheirSeconds) {
    AnySize any(1970);
    for (int count = 0; count < 200'000; ++count) {
        const Fields start = {any(13), any(4), any(5), any(5), any(6), any(6)};
        const int days = any(23);
        const int hours = any(27);
        const int minutes = any(32);
        const int seconds = any(32);
        BexTime time(start.year, start.month, start.day, start.hour, start.minute, start.second);
        time += BexTimeSpan(days, hours, minutes, seconds);
        const std::int64_t span = ((std::int64_t{days} * 24 + hours) * 60 + minutes) * 60 + seconds;
        ASSERT_NO_FATAL_FAILURE(ExpectSeconds(time, ClampedToTheRange(SecondsOf(start)) + span));
    }
}

}  // namespace
