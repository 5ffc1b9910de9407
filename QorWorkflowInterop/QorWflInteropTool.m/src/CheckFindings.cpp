#include "CheckFindings.h"

#include <algorithm>
#include <tuple>
#include <utility>

std::size_t FindingList::Count(Code iCode) const {
    return counts[static_cast<std::size_t>(iCode)];
}

std::size_t FindingList::Count(Severity iSeverity) const {
    std::size_t count = 0;
    for (const CodeInfo& info : AllCodes()) {
        count += info.severity == iSeverity ? Count(info.code) : 0;
    }
    return count;
}

std::size_t FindingList::Left(Code iCode) const {
    const std::size_t count = Count(iCode);
    return count > kMostOfACode ? count - kMostOfACode : 0;
}

bool FindingList::Takes(Code iCode) {
    return ++counts[static_cast<std::size_t>(iCode)] <= kMostOfACode;
}

void FindingList::Add(Finding iFinding) {
    kept.push_back(std::move(iFinding));
}

void FindingList::Sort() {
    const auto order = [](const Finding& iFinding) {
        return std::tuple(iFinding.place.line, iFinding.place.column, iFinding.code);
    };
    std::stable_sort(kept.begin(), kept.end(),
                     [order](const Finding& iLeft, const Finding& iRight) { return order(iLeft) < order(iRight); });
}
