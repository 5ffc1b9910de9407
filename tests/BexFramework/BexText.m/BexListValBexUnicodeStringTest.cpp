#include "TextTesting.h"

#include <BexListValBexUnicodeString.h>

#include <gtest/gtest.h>

#include <RunOnThreads.h>
#include <algorithm>
#include <climits>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

BexListValBexUnicodeString ListOf(const std::vector<const char*>& iValues) {
    BexListValBexUnicodeString list;
    for (const char* const value : iValues) {
        list.Append(value);
    }
    return list;
}

/** The values joined by commas; null is written as a minus sign. */
std::string Joined(const BexListValBexUnicodeString& iList) {
    std::string joined;
    for (int pos = 1; pos <= iList.Size(); ++pos) {
        joined += pos == 1 ? "" : ",";
        joined += iList[pos].IsNull() != 0 ? "-" : iList[pos].ConvertToChar();
    }
    return joined;
}

TEST(BexList, IsEmptyAtFirst) {
    const BexListValBexUnicodeString list;
    EXPECT_EQ(list.Size(), 0);
    EXPECT_EQ(list.Locate("a"), 0);
    EXPECT_EQ(list.Locate(BexUnicodeString()), 0);
    EXPECT_EQ(list[1].IsNull(), 1);
}

TEST(BexList, AppendsBehindTheLastAndCountsFromOne) {
    BexListValBexUnicodeString list;
    list.Append("a");
    list.Append("b");
    list.Append("a");
    EXPECT_EQ(list.Size(), 3);
    EXPECT_STREQ(list[1].ConvertToChar(), "a");
    EXPECT_STREQ(list[2].ConvertToChar(), "b");
    EXPECT_STREQ(list[3].ConvertToChar(), "a");
}

TEST(BexList, KeepsNullNullAndEmptyEmpty) {
    BexListValBexUnicodeString list;
    list.Append(BexUnicodeString());
    list.Append(BexUnicodeString(""));
    EXPECT_EQ(list.Size(), 2);
    EXPECT_EQ(list[1].IsNull(), 1);
    EXPECT_EQ(list[2].IsNull(), 0);
    const BexListValBexUnicodeString copy(list);
    EXPECT_EQ(copy[1].IsNull(), 1);
    EXPECT_EQ(copy[2].IsNull(), 0);
    list.Set(1, "");
    list.Set(2, BexUnicodeString());
    EXPECT_EQ(list[1].IsNull(), 0);
    EXPECT_EQ(list[2].IsNull(), 1);
}

TEST(BexList, IndexOutsideGivesOneSharedNullString) {
    const BexListValBexUnicodeString none;
    const BexListValBexUnicodeString three = ListOf({"a", "b", "c"});
    const BexUnicodeString* const shared = &none[0];
    for (const int pos : {INT_MIN, -1, 0, 1, 2, INT_MAX}) {
        EXPECT_EQ(&none[pos], shared) << pos;
    }
    for (const int pos : {INT_MIN, -1, 0, 4, INT_MAX}) {
        EXPECT_EQ(&three[pos], shared) << pos;
    }
    EXPECT_EQ(shared->IsNull(), 1);
    EXPECT_EQ(shared->GetLengthInChar(), 0);
}

TEST(BexList, SetReplacesInsideAndIgnoresOutside) {
    BexListValBexUnicodeString list = ListOf({"a", "b", "c"});
    list.Set(2, "x");
    EXPECT_EQ(Joined(list), "a,x,c");
    for (const int pos : {INT_MIN, -1, 0, 4, 5, INT_MAX}) {
        list.Set(pos, "outside");
        EXPECT_EQ(Joined(list), "a,x,c") << pos;
        EXPECT_EQ(list.Locate("outside"), 0) << pos;
        EXPECT_EQ(list[pos].IsNull(), 1) << pos;
    }
}

TEST(BexList, LocateFindsTheFirstAtOrAfterTheStart) {
    const BexListValBexUnicodeString list = ListOf({"a", "b", "a", "c", "a"});
    EXPECT_EQ(list.Locate("a"), 1);
    const int expected[] = {1, 1, 3, 3, 5, 5, 0};
    for (int from = 0; from <= 6; ++from) {
        EXPECT_EQ(list.Locate("a", from), expected[from]) << from;
    }
    EXPECT_EQ(list.Locate("a", INT_MIN), 1);
    EXPECT_EQ(list.Locate("a", INT_MAX), 0);
    EXPECT_EQ(list.Locate("b", 3), 0);
    EXPECT_EQ(list.Locate("d"), 0);
}

TEST(BexList, LocateOrAppendTakesOverOnlyWhatItAppends) {
    BexListValBexUnicodeString list;
    for (int number = 1; number <= 100; ++number) {
        BexUnicodeString value;
        value.BuildFromNum(number, "%d");
        BexUnicodeString again(value);
        EXPECT_EQ(list.LocateOrAppend(std::move(value)), number);
        EXPECT_TRUE(value.IsNull());  // NOLINT(bugprone-use-after-move): that is what is promised
        EXPECT_EQ(list.LocateOrAppend(std::move(again)), number);
        EXPECT_EQ(list[number], again);  // NOLINT(bugprone-use-after-move): that is what is promised
        EXPECT_EQ(list.Size(), number);
    }
}

TEST(BexList, SetTakesATextOverInsideAndLeavesItOutside) {
    BexListValBexUnicodeString list;
    list.Append("old");
    BexUnicodeString value("new");
    list.Set(0, std::move(value));
    list.Set(2, std::move(value));
    EXPECT_EQ(value, BexUnicodeString("new"));  // NOLINT(bugprone-use-after-move): that is what is promised
    EXPECT_EQ(list[1], BexUnicodeString("old"));
    list.Set(1, std::move(value));
    EXPECT_TRUE(value.IsNull());  // NOLINT(bugprone-use-after-move): that is what is promised
    EXPECT_EQ(list[1], BexUnicodeString("new"));
}

TEST(BexList, ReservedMemoryIsUsedByWhatIsAppended) {
    BexListValBexUnicodeString list;
    list.Append("first");
    list.Reserve(1000);
    const BexUnicodeString* first = &list[1];
    for (int count = 1; count < 1000; ++count) {
        list.Append("next");
    }
    EXPECT_EQ(&list[1], first);
    list.Reserve(-1);
    list.Reserve(0);
    EXPECT_EQ(list.Size(), 1000);
}

TEST(BexList, LocateComparesExactly) {
    BexListValBexUnicodeString list = ListOf({"Value", "value ", " value", "valu", "values", "?"});
    list.Append(Units(u"\u0161"));
    list.Append(BexUnicodeString("value\0", 6));
    EXPECT_EQ(list.Locate("value"), 0);
    EXPECT_EQ(list.Locate("VALUE"), 0);
    EXPECT_EQ(list.Locate(Units(u"\u0161")), 7);
    EXPECT_EQ(list.Locate("?"), 6);
    EXPECT_EQ(list.Locate(Units(u"\u0162")), 0);
    EXPECT_EQ(list.Locate("a"), 0);
    EXPECT_EQ(list.Locate(BexUnicodeString("value\0", 6)), 8);
    EXPECT_EQ(list.Locate(""), 0);
    list.Append("");
    EXPECT_EQ(list.Locate(BexUnicodeString()), 9);
}

TEST(BexList, LocateDoesNotMindThatATextWasWideOnce) {
    BexUnicodeString text = Units(u"\u0161 narrow");
    text.ReplaceSubString(Units(u"\u0161"), "now");
    BexListValBexUnicodeString list;
    for (int count = 0; count < 100; ++count) {
        list.Append("filling");
    }
    list.Append("now narrow");
    EXPECT_EQ(list.Locate(text), 101);
    list.Append(text);
    EXPECT_EQ(list.Locate("now narrow", 102), 102);
}

TEST(BexList, ValueOfTheListMayBeTheArgument) {
    BexListValBexUnicodeString list = ListOf({"a value that is longer than fifteen characters"});
    for (int count = 1; count < 1000; ++count) {
        list.Append(list[count]);  // also where the list has to move its values
    }
    list.Append(list[1001]);
    ASSERT_EQ(list.Size(), 1001);
    EXPECT_EQ(list[1001].IsNull(), 1);
    for (int pos = 1; pos <= 1000; ++pos) {
        ASSERT_STREQ(list[pos].ConvertToChar(), "a value that is longer than fifteen characters");
    }
    EXPECT_EQ(list.Locate(list[1], 1000), 1000);
    list.Set(2, "other");
    list.Set(1, list[2]);
    list.Set(2, list[2]);
    list.Set(3, list[5000]);
    EXPECT_STREQ(list[1].ConvertToChar(), "other");
    EXPECT_STREQ(list[2].ConvertToChar(), "other");
    EXPECT_EQ(list[3].IsNull(), 1);
    EXPECT_EQ(list.Locate("other", 2), 2);
}

TEST(BexList, RemoveAllEmptiesAndTheListIsUsableAgain) {
    BexListValBexUnicodeString list;
    list.RemoveAll();
    EXPECT_EQ(list.Size(), 0);
    for (int count = 0; count < 100; ++count) {
        list.Append("a");
    }
    EXPECT_EQ(list.Locate("a", 50), 50);
    list.RemoveAll();
    EXPECT_EQ(list.Size(), 0);
    EXPECT_EQ(list.Locate("a"), 0);
    EXPECT_EQ(list[1].IsNull(), 1);
    list.Append("b");
    list.Append("a");
    EXPECT_EQ(list.Locate("a"), 2);
}

TEST(BexList, RemoveDuplicatesKeepsTheFirstAndTheOrder) {
    BexListValBexUnicodeString none;
    none.RemoveDuplicates();
    EXPECT_EQ(none.Size(), 0);

    BexListValBexUnicodeString list = ListOf({"c", "a", "c", "b", "a", "B", "b", "", "c", "d", ""});
    list.RemoveDuplicates();
    EXPECT_EQ(Joined(list), "c,a,b,B,,d");
    list.RemoveDuplicates();
    EXPECT_EQ(Joined(list), "c,a,b,B,,d");
    EXPECT_EQ(list.Locate("d"), 6);
    EXPECT_EQ(list.Locate("c", 2), 0);
}

TEST(BexList, RemoveDuplicatesTakesNullAndEmptyAsEqual) {
    BexListValBexUnicodeString nullFirst;
    nullFirst.Append(BexUnicodeString());
    nullFirst.Append("");
    nullFirst.RemoveDuplicates();
    ASSERT_EQ(nullFirst.Size(), 1);
    EXPECT_EQ(nullFirst[1].IsNull(), 1);

    BexListValBexUnicodeString emptyFirst;
    emptyFirst.Append("");
    emptyFirst.Append(BexUnicodeString());
    emptyFirst.RemoveDuplicates();
    ASSERT_EQ(emptyFirst.Size(), 1);
    EXPECT_EQ(emptyFirst[1].IsNull(), 0);
}

TEST(BexList, CopyAndAssignmentAreIndependent) {
    for (const bool located : {false, true}) {
        BexListValBexUnicodeString source;
        for (int count = 0; count < 100; ++count) {
            source.Append(count % 2 == 0 ? "even" : "odd");
        }
        if (located) {
            ASSERT_EQ(source.Locate("odd", 50), 50);
        }
        BexListValBexUnicodeString copy(source);
        BexListValBexUnicodeString assigned = ListOf({"former"});
        ASSERT_EQ(assigned.Locate("former"), 1);
        assigned = source;
        source.Set(2, "changed");
        source.Append("appended");
        copy.Set(1, "of the copy");
        EXPECT_EQ(assigned.Size(), 100);
        EXPECT_EQ(assigned.Locate("odd"), 2);
        EXPECT_EQ(assigned.Locate("even"), 1);
        EXPECT_EQ(assigned.Locate("former"), 0);
        EXPECT_EQ(assigned.Locate("changed"), 0);
        EXPECT_EQ(copy.Locate("even"), 3);
        EXPECT_EQ(copy.Locate("appended"), 0);
        EXPECT_EQ(copy.Locate("of the copy"), 1);
        EXPECT_EQ(source.Locate("odd"), 4);
        EXPECT_EQ(source.Locate("appended"), 101);
    }
}

TEST(BexList, MoveTakesTheValuesAndLeavesNone) {
    for (const bool located : {false, true}) {
        BexListValBexUnicodeString source;
        for (int count = 0; count < 100; ++count) {
            source.Append(count == 70 ? "odd one" : "filling");
        }
        if (located) {
            ASSERT_EQ(source.Locate("odd one"), 71);
        }
        BexListValBexUnicodeString moved(std::move(source));
        EXPECT_EQ(source.Size(), 0);  // NOLINT(bugprone-use-after-move): the state is part of the contract
        EXPECT_EQ(source.Locate("filling"), 0);
        EXPECT_EQ(moved.Size(), 100);
        EXPECT_EQ(moved.Locate("odd one"), 71);

        BexListValBexUnicodeString assigned = ListOf({"former", "values"});
        ASSERT_EQ(assigned.Locate("former"), 1);
        assigned = std::move(moved);
        EXPECT_EQ(moved.Size(), 0);  // NOLINT(bugprone-use-after-move)
        EXPECT_EQ(moved.Locate("odd one"), 0);
        EXPECT_EQ(assigned.Size(), 100);
        EXPECT_EQ(assigned.Locate("odd one"), 71);
        EXPECT_EQ(assigned.Locate("former"), 0);

        source.Append("again");
        moved.Append("again");
        EXPECT_EQ(source.Locate("again"), 1);
        EXPECT_EQ(moved.Locate("again"), 1);
    }
}

TEST(BexList, ListThatWasMovedAwayKnowsNothingOfItsFormerValues) {
    BexListValBexUnicodeString source;
    for (int count = 0; count < 100; ++count) {
        source.Append("former");
    }
    ASSERT_EQ(source.Locate("former", 50), 50);
    BexListValBexUnicodeString target;
    target = std::move(source);
    source.Append("former");  // NOLINT(bugprone-use-after-move): the state is part of the contract
    for (int count = 1; count < 100; ++count) {
        source.Append("other");
    }
    EXPECT_EQ(source.Locate("former"), 1);
    EXPECT_EQ(source.Locate("former", 2), 0);
    EXPECT_EQ(source.Locate("other"), 2);
    EXPECT_EQ(target.Locate("former", 50), 50);
}

TEST(BexList, AssignmentToItselfKeepsTheValues) {
    BexListValBexUnicodeString list = ListOf({"a", "b", "a"});
    ASSERT_EQ(list.Locate("a", 2), 3);
    const BexListValBexUnicodeString& itself = list;
    list = itself;
    EXPECT_EQ(Joined(list), "a,b,a");
    EXPECT_EQ(list.Locate("a", 2), 3);
}

/** A list as the simplest thing that could be right. */
class NaiveList {
public:
    std::vector<BexUnicodeString> values;

    int Locate(const BexUnicodeString& iValue, int iFrom) const {
        for (int pos = std::max(iFrom, 1); pos <= static_cast<int>(values.size()); ++pos) {
            if (values[static_cast<std::size_t>(pos - 1)] == iValue) {
                return pos;
            }
        }
        return 0;
    }
    int LocateOrAppend(const BexUnicodeString& iValue) {
        if (Locate(iValue, 1) == 0) {
            values.push_back(iValue);
        }
        return Locate(iValue, 1);
    }
    void Set(int iPos, const BexUnicodeString& iValue) {
        if (iPos >= 1 && iPos <= static_cast<int>(values.size())) {
            values[static_cast<std::size_t>(iPos - 1)] = iValue;
        }
    }
    void RemoveDuplicates() {
        std::vector<BexUnicodeString> kept;
        for (const BexUnicodeString& value : values) {
            if (std::find(kept.begin(), kept.end(), value) == kept.end()) {
                kept.push_back(value);
            }
        }
        values = kept;
    }
};

void ExpectSameValues(const BexListValBexUnicodeString& iList, const NaiveList& iNaive) {
    ASSERT_EQ(iList.Size(), static_cast<int>(iNaive.values.size()));
    for (int pos = 1; pos <= iList.Size(); ++pos) {
        const BexUnicodeString& expected = iNaive.values[static_cast<std::size_t>(pos - 1)];
        ASSERT_EQ(iList[pos], expected) << pos;
        ASSERT_EQ(iList[pos].IsNull(), expected.IsNull()) << pos;
    }
}

void ExpectSameLocations(const BexListValBexUnicodeString& iList, const NaiveList& iNaive,
                         const std::vector<BexUnicodeString>& iPool) {
    const int size = static_cast<int>(iNaive.values.size());
    const std::size_t step = iPool.size() / 50 + 1;
    for (std::size_t number = 0; number < iPool.size(); number += step) {
        const BexUnicodeString& value = iPool[number];
        int expected = 0;
        for (int from = size + 2; from >= -1; --from) {  // from the back, so that the naive walk is done only once
            if (from >= 1 && from <= size && iNaive.values[static_cast<std::size_t>(from - 1)] == value) {
                expected = from;
            }
            ASSERT_EQ(iList.Locate(value, from), expected) << value << " " << from;
        }
    }
}

std::vector<BexUnicodeString> PoolOf(int iCount) {
    std::vector<BexUnicodeString> pool = {BexUnicodeString(), BexUnicodeString("")};
    for (int number = static_cast<int>(pool.size()); number < iCount; ++number) {
        BexUnicodeString value;
        value.BuildFromNum(number / 2, "%d");
        if (number % 2 == 0) {
            value += char16_t{0x0161};  // half of the values are wide
        }
        pool.push_back(value);
    }
    return pool;
}

void CompareOverRandomChanges(int iDifferentValues, int iChanges, unsigned iSeed) {
    const std::vector<BexUnicodeString> pool = PoolOf(iDifferentValues);
    std::mt19937 random(iSeed);
    const auto below = [&random](std::size_t iEnd) { return static_cast<std::size_t>(random()) % iEnd; };
    BexListValBexUnicodeString list;
    NaiveList naive;
    for (int change = 0; change < iChanges; ++change) {
        const BexUnicodeString& value = pool[below(pool.size())];
        const int pos = static_cast<int>(below(naive.values.size() + 3)) - 1;
        const std::size_t kind = below(1000);
        if (kind < 200) {
            list.Append(value);
            naive.values.push_back(value);
        } else if (kind < 330) {
            BexUnicodeString taken(value);
            ASSERT_EQ(list.LocateOrAppend(std::move(taken)), naive.LocateOrAppend(value)) << "change " << change;
        } else if (kind < 500) {
            list.Set(pos, value);
            naive.Set(pos, value);
        } else if (kind < 640) {
            list.Set(pos, BexUnicodeString(value));
            naive.Set(pos, value);
        } else if (kind < 960) {
            ASSERT_EQ(list.Locate(value, pos), naive.Locate(value, pos)) << "change " << change;
        } else if (kind < 970) {
            BexListValBexUnicodeString copy(list);
            list.RemoveAll();
            list = copy;
        } else if (kind < 980) {
            BexListValBexUnicodeString moved(std::move(list));
            list = std::move(moved);
        } else if (kind < 985) {
            ASSERT_NO_FATAL_FAILURE(ExpectSameLocations(list, naive, pool)) << "change " << change;
        } else if (kind < 988) {
            list.RemoveDuplicates();
            naive.RemoveDuplicates();
        } else if (kind < 990) {
            list.RemoveAll();
            naive.values.clear();
        } else {
            ASSERT_NO_FATAL_FAILURE(ExpectSameValues(list, naive)) << "change " << change;
        }
        ASSERT_EQ(list.Size(), static_cast<int>(naive.values.size())) << "change " << change;
    }
    ExpectSameValues(list, naive);
    ExpectSameLocations(list, naive, pool);
}

TEST(BexList, AgreesWithTheNaiveListOverRandomChangesOfFewValues) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        CompareOverRandomChanges(4, 10'000, seed);
    }
}

TEST(BexList, AgreesWithTheNaiveListOverRandomChangesOfManyValues) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        CompareOverRandomChanges(1000, 10'000, seed);
    }
}

TEST(BexList, AgreesWithTheNaiveListWhenNothingIsRemoved) {
    // long lists of few values: every value stands in hundreds of places
    const std::vector<BexUnicodeString> pool = PoolOf(6);
    std::mt19937 random(7);
    const auto below = [&random](std::size_t iEnd) { return static_cast<std::size_t>(random()) % iEnd; };
    BexListValBexUnicodeString list;
    NaiveList naive;
    for (int count = 0; count < 1500; ++count) {
        const BexUnicodeString& value = pool[below(pool.size())];
        list.Append(value);
        naive.values.push_back(value);
    }
    ExpectSameLocations(list, naive, pool);
    for (int change = 0; change < 20'000; ++change) {
        const BexUnicodeString& value = pool[below(pool.size())];
        const int pos = static_cast<int>(below(naive.values.size())) + 1;
        list.Set(pos, value);
        naive.Set(pos, value);
        const BexUnicodeString& wanted = pool[below(pool.size())];
        const int from = static_cast<int>(below(naive.values.size())) + 1;
        ASSERT_EQ(list.Locate(wanted, from), naive.Locate(wanted, from)) << "change " << change;
    }
    ExpectSameValues(list, naive);
    ExpectSameLocations(list, naive, pool);
}

TEST(BexList, SeveralThreadsMayLocateInOneListThatNobodyChanges) {
    constexpr int kValues = 2000;
    BexListValBexUnicodeString model;
    for (int number = 1; number <= kValues; ++number) {
        BexUnicodeString value;
        value.BuildFromNum(number, "%d");
        model.Append(value);
    }
    for (int round = 0; round < 20; ++round) {
        BexListValBexUnicodeString fresh;  // never searched: the threads meet at the first search
        for (int pos = 1; pos <= kValues; ++pos) {
            fresh.Append(model[pos]);
        }
        const BexListValBexUnicodeString& list = fresh;
        const auto found = ResultsOfThreads<int>([&list] {
            int count = 0;
            for (int pos = kValues; pos >= 1; --pos) {
                count += list.Locate(list[pos]) == pos && list.Locate(list[pos], pos + 1) == 0 ? 1 : 0;
            }
            return count;
        });
        for (const int count : found) {
            ASSERT_EQ(count, kValues);
        }
        fresh.Set(1, "changed afterwards");
        ASSERT_EQ(fresh.Locate("changed afterwards"), 1);
        ASSERT_EQ(fresh.Locate("1"), 0);
    }
}

}  // namespace
