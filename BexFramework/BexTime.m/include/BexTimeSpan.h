#ifndef BexTimeSpan_H
#define BexTimeSpan_H

#include <cstdint>

/** A span of time, exact to the second: a day is 24 hours, without daylight saving. A plain value. */
class BexTimeSpan {
public:
    /** The sum of the four parts; each may be negative and of any size. */
    constexpr BexTimeSpan(int iDays, int iHours, int iMinutes, int iSeconds)
        : seconds(((std::int64_t{iDays} * 24 + iHours) * 60 + iMinutes) * 60 + iSeconds) {}

    /** @return the whole span in seconds. */
    constexpr std::int64_t GetTotalSeconds() const { return seconds; }

private:
    std::int64_t seconds;
};

#endif
