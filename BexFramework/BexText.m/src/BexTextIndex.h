#ifndef BexTextIndex_H
#define BexTextIndex_H

#include "BexUnicodeString.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

/**
 * Finds the positions of a value in a list of strings in constant time on average.
 *
 * Open addressing: a slot stands for the positions of one value. The values stay in the list; the index knows their
 * positions, from 0, and is told of every change. Its hash cannot be foreseen, so no choice of values makes it slow.
 */
class BexTextIndex {
public:
    using Values = std::vector<BexUnicodeString>;

    /** Indexes all of @p iValues. */
    explicit BexTextIndex(const Values& iValues);

    /** Learns that @p iPos holds its present value. */
    void Add(const Values& iValues, int iPos);
    /** Forgets that @p iPos holds its present value. */
    void Remove(const Values& iValues, int iPos);
    /** @return the first position at or after @p iFrom that holds @p iValue, or -1. */
    int Find(const Values& iValues, const BexUnicodeString& iValue, int iFrom) const;
    /**
     * Looks for a value, and appends it when it is not there.
     * @param ioValue is taken over if it is appended, else left as it is
     * @return its first position.
     * @throw std::bad_alloc with both unchanged.
     */
    int FindOrAppend(Values& ioValues, BexUnicodeString&& ioValue);

private:
    /** Where one value stands; most values stand in one place only. */
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t place = kFree;  // a position, kSeveral with a place in `several`, kFree or kGone
    };
    static constexpr std::uint32_t kFree = UINT32_MAX;
    static constexpr std::uint32_t kGone = UINT32_MAX - 1;  // nothing any more, but a search goes on behind it
    static constexpr std::uint32_t kSeveral = 0x8000'0000;  // more than one position; those are below it

    static bool IsSeveral(const Slot& iSlot) { return iSlot.place >= kSeveral && iSlot.place < kGone; }
    std::set<int>& SeveralOf(const Slot& iSlot) { return several[iSlot.place - kSeveral]; }
    const std::set<int>& SeveralOf(const Slot& iSlot) const { return several[iSlot.place - kSeveral]; }
    int FirstOf(const Slot& iSlot) const;
    static bool IsVacant(const Slot& iSlot) { return iSlot.place >= kGone; }
    void Take(Slot& ioSlot, std::uint32_t iHash, std::size_t iPos);
    std::size_t SlotOf(const Values& iValues, const BexUnicodeString& iValue, std::uint32_t iHash) const;
    void MakeRoom();

    std::vector<Slot> slots;             // a power of two of them
    std::size_t taken = 0;               // how many of them are not free
    std::vector<std::set<int>> several;  // the positions of values that stand, or stood, in more than one place
};

#endif
