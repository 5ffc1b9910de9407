#ifndef BexTime_H
#define BexTime_H

#include "BexExport.h"
#include "BexTimeSpan.h"
#include "BexUnicodeString.h"

#include <cstdint>

/**
 * A civil date and time of day to the second, without a zone, in the proleptic Gregorian calendar.
 *
 * The range is -9999-01-01 00:00:00 to 9999-12-31 23:59:59; what falls outside becomes the nearer end, so no argument
 * is undefined. A plain value of 8 bytes.
 */
class BEX_EXPORT BexTime {
public:
    /** The current local time, by the zone of the process (the environment variable TZ). */
    BexTime();
    /**
     * The given fields; what overflows is carried into the next field, as mktime does (31 February 2004 is
     * 2 March 2004).
     * @param iMonth 1 to 12 @param iDay 1 to 31 @param iHour 0 to 23 @param iMinute 0 to 59 @param iSecond 0 to 59
     */
    BexTime(int iYear, int iMonth, int iDay, int iHour = 0, int iMinute = 0, int iSecond = 0);
    /** Takes new fields, as the constructor does. */
    void SetDateTime(int iYear, int iMonth, int iDay, int iHour = 0, int iMinute = 0, int iSecond = 0);

    /** @return the year, -9999 to 9999. */
    int GetYear() const;
    /** @return the month, 1 to 12. */
    int GetMonth() const;
    /** @return the day of the month, 1 to 31. */
    int GetDay() const;
    /** @return the hour, 0 to 23. */
    int GetHour() const;
    /** @return the minute, 0 to 59. */
    int GetMinute() const;
    /** @return the second, 0 to 59. */
    int GetSecond() const;

    /**
     * The date and time as text.
     * @param iFormat text with the conversions %Y (at least four digits, a minus sign before a negative year), %m, %d,
     *        %H, %M, %S (two digits) and %%; any other text, other conversions included, is copied as it stands
     * @return the text; empty for a null pointer.
     */
    BexUnicodeString ConvertToString(const char* iFormat) const;

    /** Moves on by a span, back by a negative one. @return this time. */
    BexTime& operator+=(const BexTimeSpan& iSpan);

    /** @return whether @p iLeft is the same second as @p iRight. */
    friend bool operator==(const BexTime& iLeft, const BexTime& iRight) { return iLeft.seconds == iRight.seconds; }
    /** @return whether @p iLeft is another second than @p iRight. */
    friend bool operator!=(const BexTime& iLeft, const BexTime& iRight) { return iLeft.seconds != iRight.seconds; }
    /** @return whether @p iLeft is earlier than @p iRight. */
    friend bool operator<(const BexTime& iLeft, const BexTime& iRight) { return iLeft.seconds < iRight.seconds; }
    /** @return whether @p iLeft is later than @p iRight. */
    friend bool operator>(const BexTime& iLeft, const BexTime& iRight) { return iLeft.seconds > iRight.seconds; }
    /** @return whether @p iLeft is not later than @p iRight. */
    friend bool operator<=(const BexTime& iLeft, const BexTime& iRight) { return iLeft.seconds <= iRight.seconds; }
    /** @return whether @p iLeft is not earlier than @p iRight. */
    friend bool operator>=(const BexTime& iLeft, const BexTime& iRight) { return iLeft.seconds >= iRight.seconds; }

private:
    std::int64_t seconds = 0;  // since 1970-01-01 00:00:00 of the same civil calendar
};

#endif
