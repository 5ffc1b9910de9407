#include "BexTextIndex.h"

#include "KeyedHash.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kFirstSlots = 256;

std::uint32_t HashOfText(const BexUnicodeString& iText) noexcept {
    const std::uint64_t hash = iText.IsWide()
                                   ? KeyedHash(iText.WideView().data(), iText.WideView().size() * sizeof(char16_t))
                                   : KeyedHash(iText.NarrowView().data(), iText.NarrowView().size());
    return static_cast<std::uint32_t>(hash);
}

}  // namespace

BexTextIndex::BexTextIndex(const Values& iValues) : slots(kFirstSlots) {
    for (std::size_t pos = 0; pos < iValues.size(); ++pos) {
        Add(iValues, static_cast<int>(pos));
    }
}

void BexTextIndex::Add(const Values& iValues, int iPos) {
    MakeRoom();
    const BexUnicodeString& value = iValues[static_cast<std::size_t>(iPos)];
    const std::uint32_t hash = HashOfText(value);
    Slot& slot = slots[SlotOf(iValues, value, hash)];
    if (IsVacant(slot)) {
        Take(slot, hash, static_cast<std::size_t>(iPos));
    } else if (IsSeveral(slot)) {
        SeveralOf(slot).insert(iPos);
    } else {
        several.push_back({static_cast<int>(slot.place), iPos});
        slot.place = kSeveral + static_cast<std::uint32_t>(several.size() - 1);
    }
}

void BexTextIndex::Remove(const Values& iValues, int iPos) {
    const BexUnicodeString& value = iValues[static_cast<std::size_t>(iPos)];
    Slot& slot = slots[SlotOf(iValues, value, HashOfText(value))];
    if (IsSeveral(slot)) {
        SeveralOf(slot).erase(iPos);
    }
    if (!IsSeveral(slot) || SeveralOf(slot).empty()) {
        slot.place = kGone;
    }
}

int BexTextIndex::Find(const Values& iValues, const BexUnicodeString& iValue, int iFrom) const {
    const Slot& slot = slots[SlotOf(iValues, iValue, HashOfText(iValue))];
    if (IsVacant(slot)) {
        return -1;
    }
    if (IsSeveral(slot)) {
        const auto found = SeveralOf(slot).lower_bound(iFrom);
        return found == SeveralOf(slot).end() ? -1 : *found;
    }
    const int only = FirstOf(slot);
    return only >= iFrom ? only : -1;
}

int BexTextIndex::FindOrAppend(Values& ioValues, BexUnicodeString&& ioValue) {
    MakeRoom();
    const std::uint32_t hash = HashOfText(ioValue);
    Slot& slot = slots[SlotOf(ioValues, ioValue, hash)];
    if (IsVacant(slot)) {
        ioValues.push_back(std::move(ioValue));
        Take(slot, hash, ioValues.size() - 1);
    }
    return FirstOf(slot);
}

/** The first position of a slot that stands for a value. */
int BexTextIndex::FirstOf(const Slot& iSlot) const {
    return IsSeveral(iSlot) ? *SeveralOf(iSlot).begin() : static_cast<int>(iSlot.place);
}

/** Has a vacant slot stand for a value that has come. */
void BexTextIndex::Take(Slot& ioSlot, std::uint32_t iHash, std::size_t iPos) {
    taken += ioSlot.place == kFree ? 1 : 0;
    ioSlot = {iHash, static_cast<std::uint32_t>(iPos)};
}

/** The slot of that value, or the vacant one where it would stand: the first, so that values which come and go leave no
 * trail behind them. */
std::size_t BexTextIndex::SlotOf(const Values& iValues, const BexUnicodeString& iValue, std::uint32_t iHash) const {
    const std::size_t mask = slots.size() - 1;
    std::size_t at = iHash & mask;
    std::size_t firstGone = slots.size();
    while (slots[at].place != kFree) {
        const Slot& slot = slots[at];
        if (slot.place == kGone) {
            firstGone = firstGone == slots.size() ? at : firstGone;
        } else if (slot.hash == iHash && iValues[static_cast<std::size_t>(FirstOf(slot))] == iValue) {
            return at;
        }
        at = (at + 1) & mask;
    }
    return firstGone < slots.size() ? firstGone : at;
}

/** Has one more free slot than there must be: drops what is gone, and doubles the slots if the others still fill a
 * quarter of them. */
void BexTextIndex::MakeRoom() {
    const bool hasRoom = taken < slots.size() / 2 && several.size() < slots.size();
    if (hasRoom) {
        return;
    }
    const auto gone = std::count_if(slots.begin(), slots.end(), [](const Slot& iSlot) { return iSlot.place == kGone; });
    const std::size_t used = taken - static_cast<std::size_t>(gone);
    std::vector<Slot> fresh(used * 4 >= slots.size() ? slots.size() * 2 : slots.size());
    std::vector<std::set<int>> kept;
    kept.reserve(several.size());  // from here on nothing fails
    for (const Slot& slot : slots) {
        if (slot.place == kFree || slot.place == kGone) {
            continue;
        }
        std::size_t at = slot.hash & (fresh.size() - 1);
        while (fresh[at].place != kFree) {
            at = (at + 1) & (fresh.size() - 1);
        }
        fresh[at] = slot;
        if (IsSeveral(slot)) {
            fresh[at].place = kSeveral + static_cast<std::uint32_t>(kept.size());
            kept.push_back(std::move(SeveralOf(slot)));
        }
    }
    slots = std::move(fresh);
    several = std::move(kept);
    taken = used;
}
