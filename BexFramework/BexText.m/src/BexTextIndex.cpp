#include "BexTextIndex.h"

#include "KeyedHash.h"

#include <utility>

namespace {

constexpr std::size_t kFirstSlots = 64;

std::uint64_t HashOfText(const BexUnicodeString& iText) noexcept {
    if (iText.IsWide()) {
        return KeyedHash(iText.WideView().data(), iText.WideView().size() * sizeof(char16_t));
    }
    return KeyedHash(iText.NarrowView().data(), iText.NarrowView().size());
}

}  // namespace

int BexTextIndex::Group::FirstFrom(int iFrom) const {
    if (!several) {
        return only >= iFrom ? only : -1;
    }
    const auto found = several->lower_bound(iFrom);
    return found == several->end() ? -1 : *found;
}

void BexTextIndex::Group::Insert(int iPos) {
    if (several) {
        several->insert(several->end(), iPos);
    } else if (only < 0) {
        only = iPos;
    } else {
        several = std::make_unique<std::set<int>>(std::initializer_list<int>{only, iPos});
    }
}

void BexTextIndex::Group::Erase(int iPos) {
    if (several) {
        several->erase(iPos);
    } else {
        only = -1;
    }
}

BexTextIndex::BexTextIndex(const Values& iValues) : slots(kFirstSlots, kFree) {
    for (std::size_t pos = 0; pos < iValues.size(); ++pos) {
        Add(iValues, static_cast<int>(pos));
    }
}

void BexTextIndex::Add(const Values& iValues, int iPos) {
    if (groups.size() >= slots.size() / 2) {
        Grow();
    }
    const BexUnicodeString& value = iValues[static_cast<std::size_t>(iPos)];
    const std::uint64_t hash = HashOfText(value);
    std::uint32_t& slot = slots[SlotOf(iValues, value, hash)];
    if (slot != kFree) {
        groups[slot].Insert(iPos);
        return;
    }
    groups.emplace_back();
    groups.back().hash = hash;
    groups.back().Insert(iPos);
    slot = static_cast<std::uint32_t>(groups.size() - 1);
}

void BexTextIndex::Remove(const Values& iValues, int iPos) {
    const BexUnicodeString& value = iValues[static_cast<std::size_t>(iPos)];
    groups[slots[SlotOf(iValues, value, HashOfText(value))]].Erase(iPos);
}

int BexTextIndex::Find(const Values& iValues, const BexUnicodeString& iValue, int iFrom) const {
    const std::uint32_t slot = slots[SlotOf(iValues, iValue, HashOfText(iValue))];
    return slot == kFree ? -1 : groups[slot].FirstFrom(iFrom);
}

/** The slot of the group of that value, or the free one where it would stand. A group without positions is passed over.
 */
std::size_t BexTextIndex::SlotOf(const Values& iValues, const BexUnicodeString& iValue, std::uint64_t iHash) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t slot = iHash & mask;
    while (slots[slot] != kFree) {
        const Group& group = groups[slots[slot]];
        if (group.hash == iHash && !group.IsEmpty() && iValues[static_cast<std::size_t>(group.First())] == iValue) {
            break;
        }
        slot = (slot + 1) & mask;
    }
    return slot;
}

/** Drops the groups without positions, then doubles the slots if the others still fill a quarter of them. */
void BexTextIndex::Grow() {
    std::vector<Group> kept;
    kept.reserve(groups.size());
    std::size_t used = 0;
    for (const Group& group : groups) {
        used += group.IsEmpty() ? 0U : 1U;
    }
    std::vector<std::uint32_t> fresh(used * 4 >= slots.size() ? slots.size() * 2 : slots.size(), kFree);
    for (Group& group : groups) {
        if (!group.IsEmpty()) {
            std::size_t slot = group.hash & (fresh.size() - 1);
            while (fresh[slot] != kFree) {
                slot = (slot + 1) & (fresh.size() - 1);
            }
            fresh[slot] = static_cast<std::uint32_t>(kept.size());
            kept.push_back(std::move(group));
        }
    }
    groups = std::move(kept);
    slots = std::move(fresh);
}
