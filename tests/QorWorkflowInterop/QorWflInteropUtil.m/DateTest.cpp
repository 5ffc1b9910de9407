#include "CapturedTrace.h"

#include <QorWflActionManagerBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdint>
#include <random>
#include <string>
#include <utility>

using ::testing::ElementsAre;

namespace {

/** The image of a date some units later. */
std::string Later(const BexTime& iStart, int iDuration, const BexUnicodeString& iUnit) {
    const BexTime start = iStart;
    const BexTime end = QorWflActionManagerBase::GetNextDate(iStart, iDuration, iUnit);
    EXPECT_EQ(iStart, start);
    return QorWflActionManagerBase::GetDateImage(end).ConvertToChar();
}

/** Seconds since 1970 of civil fields; a day past the end of its month runs into the next. */
std::int64_t SecondsOf(std::int64_t iYear, int iMonth, int iDay, std::int64_t iSeconds) {
    using namespace std::chrono;
    const sys_days first = year_month_day(year(static_cast<int>(iYear)), month(static_cast<unsigned>(iMonth)), day(1));
    return (first + days(iDay - 1)).time_since_epoch().count() * std::int64_t{86'400} + iSeconds;
}

/** The image of seconds since 1970, the range of dates kept. */
std::string ImageOf(std::int64_t iSeconds) {
    using namespace std::chrono;
    const std::int64_t bounded = std::clamp(iSeconds, SecondsOf(-9999, 1, 1, 0), SecondsOf(9999, 12, 31, 86'399));
    const sys_days date = floor<days>(sys_seconds(seconds(bounded)));
    const std::int64_t rest = bounded - date.time_since_epoch().count() * std::int64_t{86'400};
    const year_month_day civil(date);
    const BexTime time(static_cast<int>(civil.year()), static_cast<int>(static_cast<unsigned>(civil.month())),
                       static_cast<int>(static_cast<unsigned>(civil.day())), static_cast<int>(rest / 3600),
                       static_cast<int>(rest / 60 % 60), static_cast<int>(rest % 60));
    return QorWflActionManagerBase::GetDateImage(time).ConvertToChar();
}

/** What a date some units later must look like, counted without the framework's calendar. */
std::string PlainLater(const BexTime& iStart, std::int64_t iDuration, char iUnit) {
    std::int64_t year = iStart.GetYear();
    int month = iStart.GetMonth();
    std::int64_t seconds = iStart.GetHour() * 3600 + iStart.GetMinute() * 60 + iStart.GetSecond();
    switch (iUnit) {
        case 'Y':
            year += iDuration;
            break;
        case 'M':
            year += (month - 1 + iDuration) / 12;
            month = static_cast<int>((month - 1 + iDuration) % 12) + 1;
            break;
        case 'D':
            seconds += iDuration * 86'400;
            break;
        case 'h':
            seconds += iDuration * 3600;
            break;
        case 'm':
            seconds += iDuration * 60;
            break;
        case 's':
            seconds += iDuration;
            break;
        default:
            ADD_FAILURE() << iUnit;
    }
    // a year that std::chrono cannot hold is past the range of dates in any case
    return ImageOf(SecondsOf(std::min<std::int64_t>(year, 20'000), month, iStart.GetDay(), seconds));
}

struct DateCase {
    BexTime start;
    int duration;
    const char* unit;
    const char* image;
};

void ExpectDates(const std::vector<DateCase>& iCases) {
    for (const DateCase& dateCase : iCases) {
        EXPECT_EQ(Later(dateCase.start, dateCase.duration, dateCase.unit), dateCase.image)
            << QorWflActionManagerBase::GetDateImage(dateCase.start) << " + " << dateCase.duration << dateCase.unit;
    }
}

const BexTime kStart(2003, 1, 31, 10, 0, 0);
const char* const kUnits[] = {"Y", "M", "D", "h", "m", "s"};

}  // namespace

TEST(DateImage, HasFixedWidthFieldsFromYearToSecond) {
    struct ImageCase {
        BexTime time;
        const char* image;
    };
    const ImageCase cases[] = {
        {kStart, "2003-01-31-10.00.00"},
        {BexTime(1999, 12, 31, 23, 59, 59), "1999-12-31-23.59.59"},
        {BexTime(2004, 2, 29), "2004-02-29-00.00.00"},
        {BexTime(2004, 2, 31, 1, 2, 3), "2004-03-02-01.02.03"},
        {BexTime(5, 6, 7, 8, 9, 1), "0005-06-07-08.09.01"},
        {BexTime(0, 1, 1), "0000-01-01-00.00.00"},
        {BexTime(-44, 3, 15, 12), "-0044-03-15-12.00.00"},
        {BexTime(-9999, 1, 1), "-9999-01-01-00.00.00"},
        {BexTime(9999, 12, 31, 23, 59, 59), "9999-12-31-23.59.59"},
    };
    for (const ImageCase& imageCase : cases) {
        EXPECT_EQ(QorWflActionManagerBase::GetDateImage(imageCase.time), imageCase.image);
    }
}

TEST(DateImage, OpensNoStep) {
    const CapturedTrace trace("WFInterop");
    QorWflActionManagerBase::GetDateImage(kStart);
    EXPECT_EQ(trace.Text(), "");
}

TEST(NextDate, EachUnitMovesItsOwnField) {
    ExpectDates({
        {kStart, 1, "Y", "2004-01-31-10.00.00"},
        {kStart, 2, "M", "2003-03-31-10.00.00"},
        {kStart, 1, "D", "2003-02-01-10.00.00"},
        {kStart, 1, "h", "2003-01-31-11.00.00"},
        {kStart, 1, "m", "2003-01-31-10.01.00"},
        {kStart, 1, "s", "2003-01-31-10.00.01"},
        {kStart, 28, "D", "2003-02-28-10.00.00"},
        {kStart, 14, "h", "2003-02-01-00.00.00"},
        {kStart, 840, "m", "2003-02-01-00.00.00"},
        {kStart, 50'400, "s", "2003-02-01-00.00.00"},
        {BexTime(1999, 12, 31, 23, 59, 59), 1, "s", "2000-01-01-00.00.00"},
        {BexTime(1999, 12, 31, 23, 59, 59), 1, "m", "2000-01-01-00.00.59"},
        {BexTime(1999, 12, 31, 23, 59, 59), 1, "h", "2000-01-01-00.59.59"},
        {BexTime(1999, 12, 31, 23, 59, 59), 1, "D", "2000-01-01-23.59.59"},
        {BexTime(1999, 12, 31, 23, 59, 59), 1, "M", "2000-01-31-23.59.59"},
        {BexTime(1999, 12, 31, 23, 59, 59), 1, "Y", "2000-12-31-23.59.59"},
    });
}

TEST(NextDate, MonthsCarryIntoYears) {
    ExpectDates({
        {BexTime(2003, 1, 15), 11, "M", "2003-12-15-00.00.00"},
        {BexTime(2003, 1, 15), 12, "M", "2004-01-15-00.00.00"},
        {BexTime(2003, 12, 15), 1, "M", "2004-01-15-00.00.00"},
        {BexTime(2003, 12, 15), 12, "M", "2004-12-15-00.00.00"},
        {BexTime(2003, 12, 15), 13, "M", "2005-01-15-00.00.00"},
        {BexTime(2003, 6, 15), 1'200, "M", "2103-06-15-00.00.00"},
        {BexTime(-1, 12, 15), 1, "M", "0000-01-15-00.00.00"},
        {BexTime(-1, 1, 15), 24, "M", "0001-01-15-00.00.00"},
    });
}

TEST(NextDate, DayThatTheMonthDoesNotHaveRunsIntoTheNext) {
    ExpectDates({
        {kStart, 13, "M", "2004-03-02-10.00.00"},
        {kStart, 1, "M", "2003-03-03-10.00.00"},
        {kStart, 3, "M", "2003-05-01-10.00.00"},
        {BexTime(2003, 1, 30), 1, "M", "2003-03-02-00.00.00"},
        {BexTime(2003, 1, 29), 1, "M", "2003-03-01-00.00.00"},
        {BexTime(2003, 1, 28), 1, "M", "2003-02-28-00.00.00"},
        {BexTime(2004, 1, 29), 1, "M", "2004-02-29-00.00.00"},
        {BexTime(2004, 2, 29), 1, "Y", "2005-03-01-00.00.00"},
        {BexTime(2004, 2, 29), 4, "Y", "2008-02-29-00.00.00"},
        {BexTime(1896, 2, 29), 4, "Y", "1900-03-01-00.00.00"},
        {BexTime(1996, 2, 29), 4, "Y", "2000-02-29-00.00.00"},
        {BexTime(2003, 10, 31), 1, "M", "2003-12-01-00.00.00"},
        {BexTime(9999, 1, 31), 1, "M", "9999-03-03-00.00.00"},
    });
}

TEST(NextDate, LeapDaysAreCounted) {
    ExpectDates({
        {BexTime(2003, 2, 28), 1, "D", "2003-03-01-00.00.00"},
        {BexTime(2004, 2, 28), 1, "D", "2004-02-29-00.00.00"},
        {BexTime(2004, 2, 28, 23), 1, "h", "2004-02-29-00.00.00"},
        {BexTime(1900, 2, 28), 1, "D", "1900-03-01-00.00.00"},
        {BexTime(2000, 2, 28), 1, "D", "2000-02-29-00.00.00"},
        {BexTime(2000, 1, 1), 366, "D", "2001-01-01-00.00.00"},
        {BexTime(2001, 1, 1), 365, "D", "2002-01-01-00.00.00"},
        {BexTime(1600, 1, 1), 146'097, "D", "2000-01-01-00.00.00"},
        {BexTime(0, 2, 28), 1, "D", "0000-02-29-00.00.00"},
        {BexTime(-4, 2, 28), 1, "D", "-0004-02-29-00.00.00"},
    });
}

TEST(NextDate, DurationsOfZeroAndBelowLeaveTheDate) {
    for (const char* unit : kUnits) {
        for (const int duration : {0, -1, -12, INT_MIN}) {
            EXPECT_EQ(Later(kStart, duration, unit), "2003-01-31-10.00.00") << duration << unit;
        }
    }
}

TEST(NextDate, OtherUnitsLeaveTheDate) {
    for (const char* unit : {"d", "y", "H", "S", "", "W", "YY", "Y ", " Y", "DD", "min", "hs", "?"}) {
        EXPECT_EQ(Later(kStart, 2, unit), "2003-01-31-10.00.00") << unit;
    }
    EXPECT_EQ(Later(kStart, 2, BexUnicodeString()), "2003-01-31-10.00.00");
    EXPECT_EQ(Later(kStart, 2, BexUnicodeString("Y\0", 2)), "2003-01-31-10.00.00");
    EXPECT_EQ(Later(kStart, 2, BexUnicodeString(u"\u0159", 1)), "2003-01-31-10.00.00");  // 'Y' in its low byte
}

TEST(NextDate, DatesPastTheRangeBecomeItsEnd) {
    const char* const end = "9999-12-31-23.59.59";
    ExpectDates({
        {BexTime(9999, 12, 31, 23, 59, 58), 1, "s", end},
        {BexTime(9999, 12, 31, 23, 59, 58), 2, "s", end},
        {BexTime(9999, 12, 31, 23, 59, 59), 1, "m", end},
        {BexTime(9999, 12, 31), 23, "h", "9999-12-31-23.00.00"},
        {BexTime(9999, 12, 31), 24, "h", end},
        {BexTime(9999, 12, 30), 1, "D", "9999-12-31-00.00.00"},
        {BexTime(9999, 12, 30), 2, "D", end},
        {BexTime(9999, 11, 30), 1, "M", "9999-12-30-00.00.00"},
        {BexTime(9999, 12, 1), 1, "M", end},
        {BexTime(9999, 11, 1), 2, "M", end},
        {BexTime(9998, 5, 1), 1, "Y", "9999-05-01-00.00.00"},
        {BexTime(9999, 5, 1), 1, "Y", end},
        {BexTime(-9999, 1, 1), 19'998, "Y", "9999-01-01-00.00.00"},
        {BexTime(-9999, 1, 1), 19'999, "Y", end},
        {BexTime(-9999, 1, 1), 239'987, "M", "9999-12-01-00.00.00"},
        {BexTime(-9999, 1, 1), 239'988, "M", end},
    });
}

TEST(NextDate, GreatestDurationGivesADateInEveryUnit) {
    const BexTime starts[] = {kStart, BexTime(-9999, 1, 1), BexTime(9999, 12, 31, 23, 59, 59), BexTime(2003, 12, 31),
                              BexTime(0, 2, 29)};
    for (const BexTime& start : starts) {
        for (const char* unit : kUnits) {
            for (const int duration : {INT_MAX, INT_MAX - 1, INT_MAX - 11, INT_MAX / 2}) {
                EXPECT_EQ(Later(start, duration, unit), PlainLater(start, duration, *unit))
                    << QorWflActionManagerBase::GetDateImage(start) << " + " << duration << unit;
            }
        }
    }
    ExpectDates({
        {kStart, INT_MAX, "Y", "9999-12-31-23.59.59"},
        {kStart, INT_MAX, "M", "9999-12-31-23.59.59"},
        {kStart, INT_MAX, "D", "9999-12-31-23.59.59"},
        {kStart, INT_MAX, "h", "9999-12-31-23.59.59"},
        {kStart, INT_MAX, "m", "6086-02-22-12.07.00"},
        {kStart, INT_MAX, "s", "2071-02-18-13.14.07"},
    });
}

TEST(NextDate, EveryMonthAndEndOfMonthAgreesWithAPlainCalendar) {
    for (const int year : {1899, 1900, 1999, 2000, 2003, 2004, 9998, -1, -9999}) {
        for (int month = 1; month <= 12; ++month) {
            for (const int day : {1, 28, 29, 30, 31}) {
                const BexTime start(year, month, day, 23, 59, 59);
                for (int duration = 1; duration <= 40; ++duration) {
                    for (const char* unit : kUnits) {
                        ASSERT_EQ(Later(start, duration, unit), PlainLater(start, duration, *unit))
                            << QorWflActionManagerBase::GetDateImage(start) << " + " << duration << unit;
                    }
                }
            }
        }
    }
}

TEST(NextDate, RandomDatesAndDurationsAgreeWithAPlainCalendar) {
    std::mt19937 random(1601);
    const auto upTo = [&random](int iBound) { return static_cast<int>(random() % static_cast<unsigned>(iBound)); };
    for (int round = 0; round < 50'000; ++round) {
        const BexTime start(upTo(19'999) - 9999, upTo(12) + 1, upTo(31) + 1, upTo(24), upTo(60), upTo(60));
        const int duration = INT_MAX >> upTo(31);
        const char* unit = kUnits[upTo(6)];
        ASSERT_EQ(Later(start, duration, unit), PlainLater(start, duration, *unit))
            << QorWflActionManagerBase::GetDateImage(start) << " + " << duration << unit;
    }
}

TEST(NextDate, TracesStartDurationAndEnd) {
    const CapturedTrace trace("WFInterop");
    QorWflActionManagerBase::GetNextDate(kStart, 13, "M");
    EXPECT_THAT(
        trace.Lines(),
        ElementsAre(">> QorWflActionManagerBase::GetNextDate", "Start date=[2003-01-31-10.00.00]", "Duration=13 M",
                    "End date=[2004-03-02-10.00.00]", "<< QorWflActionManagerBase::GetNextDate"));
}

TEST(NextDate, WholeTraceIsIndentedBelowItsStep) {
    const struct {
        BexTime start;
        int duration;
        BexUnicodeString unit;
        const char* messages;
    } cases[] = {
        {BexTime(9999, 12, 31, 23, 59, 59), INT_MAX, "s",
         "  Start date=[9999-12-31-23.59.59]\n  Duration=2147483647 s\n  End date=[9999-12-31-23.59.59]\n"},
        {BexTime(-1, 12, 31), 1, "Y",
         "  Start date=[-0001-12-31-00.00.00]\n  Duration=1 Y\n  End date=[0000-12-31-00.00.00]\n"},
        {kStart, 5, BexUnicodeString(),
         "  Start date=[2003-01-31-10.00.00]\n  Duration=5 \n  End date=[2003-01-31-10.00.00]\n"},
        {kStart, INT_MIN, "a unit",
         "  Start date=[2003-01-31-10.00.00]\n  Duration=-2147483648 a unit\n  End date=[2003-01-31-10.00.00]\n"},
    };
    for (const auto& entry : cases) {
        const CapturedTrace trace("WFInterop");
        QorWflActionManagerBase::GetNextDate(entry.start, entry.duration, entry.unit);
        EXPECT_EQ(trace.Text(), std::string(">> QorWflActionManagerBase::GetNextDate\n") + entry.messages +
                                    "<< QorWflActionManagerBase::GetNextDate\n");
    }
}

TEST(NextDate, UnitsAgreeWithOneAnotherAtEveryEndOfAMonth) {
    const int lastDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (const int year : {1900, 2000, 2003, 2004, 2100, 2400}) {
        const bool isLeap = year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
        for (int month = 1; month <= 12; ++month) {
            const int last = lastDays[month - 1] + (isLeap && month == 2 ? 1 : 0);
            const BexTime start(year, month, last, 23, 59, 59);
            EXPECT_EQ(start.GetDay(), last) << "the month has that day";
            EXPECT_EQ(Later(start, 60, "s"), Later(start, 1, "m")) << year << " " << month;
            EXPECT_EQ(Later(start, 60, "m"), Later(start, 1, "h")) << year << " " << month;
            EXPECT_EQ(Later(start, 24, "h"), Later(start, 1, "D")) << year << " " << month;
            EXPECT_EQ(Later(start, 12, "M"), Later(start, 1, "Y")) << year << " " << month;
            EXPECT_EQ(Later(start, 4800, "M"), Later(start, 400, "Y")) << year << " " << month;
            EXPECT_EQ(Later(start, 146'097, "D"), Later(start, 400, "Y")) << "400 years have as many days";
        }
    }
}

TEST(NextDate, TracesDurationsAndUnitsThatChangeNothing) {
    for (const auto& [duration, unit] :
         {std::pair(0, "D"), std::pair(INT_MIN, "Y"), std::pair(2, "d"), std::pair(2, "")}) {
        const CapturedTrace trace("WFInterop");
        QorWflActionManagerBase::GetNextDate(kStart, duration, unit);
        EXPECT_THAT(trace.Messages(),
                    ElementsAre("Start date=[2003-01-31-10.00.00]", "Duration=" + std::to_string(duration) + " " + unit,
                                "End date=[2003-01-31-10.00.00]"));
    }
}
