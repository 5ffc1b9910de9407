#include "BexTime.h"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <string>

namespace {

constexpr std::int64_t kSecondsOfDay = 86400;
constexpr std::int64_t kDaysOfEra = 146097;    // 400 years, after which the calendar repeats itself
constexpr std::int64_t kDaysToEpoch = 719468;  // from 0000-03-01 to 1970-01-01
constexpr int kLastYear = 9999;
constexpr int kMonths = 12;

struct Date {
    int year;
    int month;
    int day;
};

std::int64_t FloorDivide(std::int64_t iDividend, std::int64_t iDivisor) {
    const std::int64_t quotient = iDividend / iDivisor;
    return iDividend % iDivisor < 0 ? quotient - 1 : quotient;
}

/**
 * Days from 1970-01-01 to the first of a month. Counted in years that begin in March, so that the leap day comes last
 * and the days before a month follow one formula.
 */
std::int64_t DaysOfMonth(std::int64_t iYear, std::int64_t iMonth) {
    const std::int64_t year = iMonth <= 2 ? iYear - 1 : iYear;
    const std::int64_t era = FloorDivide(year, 400);
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t monthFromMarch = iMonth <= 2 ? iMonth + 9 : iMonth - 3;
    const std::int64_t dayOfYear = (153 * monthFromMarch + 2) / 5;
    return era * kDaysOfEra + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - kDaysToEpoch;
}

/** The inverse, for any day. */
Date DateOfDays(std::int64_t iDays) {
    const std::int64_t days = iDays + kDaysToEpoch;
    const std::int64_t era = FloorDivide(days, kDaysOfEra);
    const std::int64_t dayOfEra = days - era * kDaysOfEra;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const std::int64_t month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
    const std::int64_t year = yearOfEra + era * 400 + (month <= 2 ? 1 : 0);
    return {static_cast<int>(year), static_cast<int>(month),
            static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1)};
}

/** What lies outside the range becomes its nearer end. */
std::int64_t Clamp(std::int64_t iSeconds) {
    const std::int64_t first = DaysOfMonth(-kLastYear, 1) * kSecondsOfDay;
    const std::int64_t behind = DaysOfMonth(kLastYear + 1, 1) * kSecondsOfDay;
    return std::clamp(iSeconds, first, behind - 1);
}

Date DateOfSeconds(std::int64_t iSeconds) {
    return DateOfDays(FloorDivide(iSeconds, kSecondsOfDay));
}

int SecondOfDay(std::int64_t iSeconds) {
    return static_cast<int>(iSeconds - FloorDivide(iSeconds, kSecondsOfDay) * kSecondsOfDay);
}

/** Appends a number with leading zeros; the sign comes on top of the digits. */
void AppendPadded(std::string& ioText, int iNumber, std::size_t iDigits) {
    const std::string digits = std::to_string(std::abs(iNumber));
    ioText.append(iNumber < 0 ? "-" : "");
    ioText.append(iDigits - std::min(iDigits, digits.size()), '0');
    ioText.append(digits);
}

/** Appends what one conversion stands for; false when there is no such conversion. */
bool AppendConversion(std::string& ioText, const BexTime& iTime, char iConversion) {
    switch (iConversion) {
        case 'Y':
            AppendPadded(ioText, iTime.GetYear(), 4);
            return true;
        case 'm':
            AppendPadded(ioText, iTime.GetMonth(), 2);
            return true;
        case 'd':
            AppendPadded(ioText, iTime.GetDay(), 2);
            return true;
        case 'H':
            AppendPadded(ioText, iTime.GetHour(), 2);
            return true;
        case 'M':
            AppendPadded(ioText, iTime.GetMinute(), 2);
            return true;
        case 'S':
            AppendPadded(ioText, iTime.GetSecond(), 2);
            return true;
        case '%':
            ioText += '%';
            return true;
        default:
            return false;
    }
}

}  // namespace

BexTime::BexTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::tzset();  // localtime_r alone may keep to the zone that was set before
    ::localtime_r(&now, &local);
    SetDateTime(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
}

BexTime::BexTime(int iYear, int iMonth, int iDay, int iHour, int iMinute, int iSecond) {
    SetDateTime(iYear, iMonth, iDay, iHour, iMinute, iSecond);
}

void BexTime::SetDateTime(int iYear, int iMonth, int iDay, int iHour, int iMinute, int iSecond) {
    const std::int64_t monthsFromJanuary = std::int64_t{iMonth} - 1;
    const std::int64_t years = FloorDivide(monthsFromJanuary, kMonths);
    const std::int64_t days =
        DaysOfMonth(iYear + years, monthsFromJanuary - years * kMonths + 1) + std::int64_t{iDay} - 1;
    seconds = Clamp(((days * 24 + iHour) * 60 + iMinute) * 60 + iSecond);
}

int BexTime::GetYear() const {
    return DateOfSeconds(seconds).year;
}

int BexTime::GetMonth() const {
    return DateOfSeconds(seconds).month;
}

int BexTime::GetDay() const {
    return DateOfSeconds(seconds).day;
}

int BexTime::GetHour() const {
    return SecondOfDay(seconds) / 3600;
}

int BexTime::GetMinute() const {
    return SecondOfDay(seconds) / 60 % 60;
}

int BexTime::GetSecond() const {
    return SecondOfDay(seconds) % 60;
}

BexUnicodeString BexTime::ConvertToString(const char* iFormat) const {
    std::string text;
    for (const char* at = iFormat == nullptr ? "" : iFormat; *at != '\0'; ++at) {
        if (*at == '%' && AppendConversion(text, *this, at[1])) {
            ++at;
        } else {
            text += *at;
        }
    }
    return BexUnicodeString::FromNarrow(text);
}

BexTime& BexTime::operator+=(const BexTimeSpan& iSpan) {
    seconds = Clamp(seconds + iSpan.GetTotalSeconds());
    return *this;
}
