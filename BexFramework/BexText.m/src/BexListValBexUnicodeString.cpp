#include "BexListValBexUnicodeString.h"

#include "BexTextIndex.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

/** Up to here looking at every value costs less than an index. */
constexpr std::size_t kFewValues = 8;

}  // namespace

BexListValBexUnicodeString::BexListValBexUnicodeString() noexcept = default;

BexListValBexUnicodeString::BexListValBexUnicodeString(const BexListValBexUnicodeString& iOther)
    : values(iOther.values) {}

BexListValBexUnicodeString::BexListValBexUnicodeString(BexListValBexUnicodeString&& ioOther) noexcept
    : values(std::move(ioOther.values)), index(ioOther.index.exchange(nullptr)) {
    ioOther.values.clear();
}

BexListValBexUnicodeString::~BexListValBexUnicodeString() {
    delete index.load(std::memory_order_relaxed);
}

BexListValBexUnicodeString& BexListValBexUnicodeString::operator=(const BexListValBexUnicodeString& iOther) {
    return this == &iOther ? *this : *this = BexListValBexUnicodeString(iOther);
}

BexListValBexUnicodeString& BexListValBexUnicodeString::operator=(BexListValBexUnicodeString&& ioOther) noexcept {
    if (this != &ioOther) {
        RemoveAll();
        values.swap(ioOther.values);
        index.store(ioOther.index.exchange(nullptr));
    }
    return *this;
}

void BexListValBexUnicodeString::Append(const BexUnicodeString& iValue) {
    values.push_back(iValue);
    IndexLast();
}

void BexListValBexUnicodeString::Append(BexUnicodeString&& ioValue) {
    values.push_back(std::move(ioValue));
    IndexLast();
}

/** Enters the last value in the index, when there is one. */
void BexListValBexUnicodeString::IndexLast() noexcept {
    BexTextIndex* made = index.load(std::memory_order_relaxed);
    if (made == nullptr) {
        return;
    }
    try {
        made->Add(values, static_cast<int>(values.size()) - 1);
    } catch (...) {
        delete index.exchange(nullptr);  // made anew when it is wanted again
    }
}

/** Room grows in steps that keep appending constant on average, however often a little more is asked for. */
void BexListValBexUnicodeString::Reserve(int iCount) {
    const auto count = static_cast<std::size_t>(std::max(iCount, 0));
    if (count > values.capacity()) {
        values.reserve(std::max(count, 2 * values.capacity()));
    }
}

const BexUnicodeString& BexListValBexUnicodeString::operator[](int iPos) const noexcept {
    static const BexUnicodeString nothing;
    return iPos < 1 || iPos > Size() ? nothing : values[static_cast<std::size_t>(iPos) - 1];
}

void BexListValBexUnicodeString::Set(int iPos, const BexUnicodeString& iValue) {
    if (iPos >= 1 && iPos <= Size()) {
        Set(iPos, BexUnicodeString(iValue));
    }
}

void BexListValBexUnicodeString::Set(int iPos, BexUnicodeString&& ioValue) noexcept {
    if (iPos < 1 || iPos > Size()) {
        return;
    }
    BexUnicodeString& value = values[static_cast<std::size_t>(iPos) - 1];
    BexTextIndex* made = index.load(std::memory_order_relaxed);
    if (made == nullptr || value == ioValue) {
        value = std::move(ioValue);
        return;
    }
    made->Remove(values, iPos - 1);
    value = std::move(ioValue);
    try {
        made->Add(values, iPos - 1);
    } catch (...) {
        delete index.exchange(nullptr);  // made anew when it is wanted again
    }
}

int BexListValBexUnicodeString::Locate(const BexUnicodeString& iValue, int iFrom) const {
    const int from = std::max(iFrom, 1) - 1;
    if (from >= Size()) {
        return 0;
    }
    if (values.size() > kFewValues) {
        return Index().Find(values, iValue, from) + 1;
    }
    const auto found = std::find(values.begin() + from, values.end(), iValue);
    return found == values.end() ? 0 : static_cast<int>(found - values.begin()) + 1;
}

int BexListValBexUnicodeString::LocateOrAppend(BexUnicodeString&& ioValue) {
    if (values.size() > kFewValues) {
        return Index().FindOrAppend(values, std::move(ioValue)) + 1;
    }
    const int position = Locate(ioValue);
    if (position == 0) {
        Append(std::move(ioValue));
        return Size();
    }
    return position;
}

void BexListValBexUnicodeString::RemoveAll() noexcept {
    values.clear();
    delete index.exchange(nullptr);
}

void BexListValBexUnicodeString::RemoveDuplicates() {
    const BexTextIndex all(values);
    std::size_t kept = 0;
    std::vector<bool> stays(values.size());
    for (std::size_t pos = 0; pos < values.size(); ++pos) {
        stays[pos] = all.Find(values, values[pos], 0) == static_cast<int>(pos);
    }
    delete index.exchange(nullptr);
    for (std::size_t pos = 0; pos < values.size(); ++pos) {
        if (stays[pos]) {
            if (kept != pos) {
                values[kept] = std::move(values[pos]);
            }
            ++kept;
        }
    }
    values.resize(kept);
}

/** The index, made once however many threads ask for it. */
BexTextIndex& BexListValBexUnicodeString::Index() const {
    BexTextIndex* made = index.load(std::memory_order_acquire);
    if (made == nullptr) {
        auto fresh = std::make_unique<BexTextIndex>(values);
        if (index.compare_exchange_strong(made, fresh.get(), std::memory_order_acq_rel)) {
            made = fresh.release();
        }
    }
    return *made;
}
