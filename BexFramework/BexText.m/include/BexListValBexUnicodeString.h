#ifndef BexListValBexUnicodeString_H
#define BexListValBexUnicodeString_H

#include "BexExport.h"
#include "BexUnicodeString.h"

#include <atomic>
#include <vector>

class BexTextIndex;

/**
 * The framework's list of strings, with positions from 1 to Size().
 *
 * Append(), Locate(), LocateOrAppend() and Set() take constant time on average and RemoveDuplicates() linear time, at a
 * million values as at ten, whatever the values are (of equal ones the next is found in logarithmic time): the list has
 * a hash index of its own, built at the first Locate() on more than a few values and kept up to date from then on.
 *
 * Memory that cannot be had leaves every operation as std::bad_alloc, with the list unchanged.
 *
 * Threads: any number may use one list that nobody changes; Locate() included.
 */
class BEX_EXPORT BexListValBexUnicodeString {
public:
    /** An empty list. */
    BexListValBexUnicodeString() noexcept;
    /** A list of the same values. */
    BexListValBexUnicodeString(const BexListValBexUnicodeString& iOther);
    /** Takes over the values of @p ioOther, which is empty afterwards. */
    BexListValBexUnicodeString(BexListValBexUnicodeString&& ioOther) noexcept;
    ~BexListValBexUnicodeString();
    /** Becomes a list of the same values. */
    BexListValBexUnicodeString& operator=(const BexListValBexUnicodeString& iOther);
    /** Takes over the values of @p ioOther, which is empty afterwards. */
    BexListValBexUnicodeString& operator=(BexListValBexUnicodeString&& ioOther) noexcept;

    /** Adds @p iValue behind the last value; it may be a value of this list. */
    void Append(const BexUnicodeString& iValue);
    /** The same, taking the text over; @p ioValue is null afterwards. */
    void Append(BexUnicodeString&& ioValue);
    /** Has memory for @p iCount values, so that appending cannot fail for want of it until there are so many. */
    void Reserve(int iCount);
    /** @return the number of values. */
    int Size() const noexcept { return static_cast<int>(values.size()); }
    /** @return the value at @p iPos, or one null string shared by all when the position is outside 1 to Size(). */
    const BexUnicodeString& operator[](int iPos) const noexcept;
    /** Replaces the value at @p iPos; outside 1 to Size() nothing is changed. */
    void Set(int iPos, const BexUnicodeString& iValue);
    /** The same, taking the text over; @p ioValue is null afterwards if the position is one of the list's. */
    void Set(int iPos, BexUnicodeString&& ioValue) noexcept;
    /**
     * Looks for a value, by code units (null equals empty).
     * @param iFrom where to begin; below 1 counts as 1
     * @return the first position at or after @p iFrom that holds the value, or 0.
     */
    int Locate(const BexUnicodeString& iValue, int iFrom = 1) const;
    /**
     * Looks for a value from the first on, and appends it when it is not there, at the cost of looking.
     * @param ioValue is taken over, and null afterwards, if it is appended; else left as it is
     * @return its position; it was appended if that is above the former Size().
     */
    int LocateOrAppend(BexUnicodeString&& ioValue);
    /** Removes every value. */
    void RemoveAll() noexcept;
    /** Keeps the first of equal values and the order of those that stay. */
    void RemoveDuplicates();

private:
    BexTextIndex& Index() const;
    void IndexLast() noexcept;

    std::vector<BexUnicodeString> values;
    mutable std::atomic<BexTextIndex*> index{nullptr};  // owned; null until the first Locate() that pays for it
};

#endif
