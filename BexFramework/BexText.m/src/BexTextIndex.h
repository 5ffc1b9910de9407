#ifndef BexTextIndex_H
#define BexTextIndex_H

#include "BexUnicodeString.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <vector>

/**
 * Finds the positions of a value in a list of strings in constant time on average.
 *
 * Open addressing over groups of equal values. The values stay in the list; the index knows their positions, from 0,
 * and is told of every change. Its hash cannot be foreseen, so no choice of values makes it slow.
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

private:
    /** The positions of one value. Most values stand in one place only. */
    struct Group {
        std::uint64_t hash = 0;
        int only = -1;                           // the one position, while there is one
        std::unique_ptr<std::set<int>> several;  // all positions, as soon as there were two

        bool IsEmpty() const { return several ? several->empty() : only < 0; }
        int First() const { return several ? *several->begin() : only; }
        int FirstFrom(int iFrom) const;
        void Insert(int iPos);
        void Erase(int iPos);
    };
    static constexpr std::uint32_t kFree = UINT32_MAX;

    std::size_t SlotOf(const Values& iValues, const BexUnicodeString& iValue, std::uint64_t iHash) const;
    void Grow();

    std::vector<Group> groups;
    std::vector<std::uint32_t> slots;  // positions in groups, or kFree; a power of two of them
};

#endif
