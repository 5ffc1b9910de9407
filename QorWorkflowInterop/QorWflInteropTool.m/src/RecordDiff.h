#ifndef RecordDiff_H
#define RecordDiff_H

#include <ActivityInfo.h>

#include <string>
#include <vector>

/** A place in which two records differ. */
struct Difference {
    std::string place;                 ///< the field, such as "status" or "process.datas, HP40-100, value"
    std::vector<std::string> removed;  ///< what the first record alone has there, as UTF-8 for people
    std::vector<std::string> added;    ///< what the second record alone has there
};

/** What of the records is compared. */
struct Comparison {
    bool tellsNull = true;         ///< whether null and empty texts differ
    bool tellsParticipant = true;  ///< whether the participant and its type are looked at
};

/**
 * Compares two records field by field.
 *
 * Elements of the lists are matched by their names: an element that moved is no other element. When those that both
 * lists have stand in another order, the orders are told as a difference of their own.
 *
 * @return the differences in the order of the fields; none when the records are equal.
 */
std::vector<Difference> CompareRecords(const ActivityInfo& iFirst, const ActivityInfo& iSecond,
                                       const Comparison& iComparison);

#endif
