// A list that is moved to itself.

#include <BexListValBexUnicodeString.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

constexpr int kMany = 100;  // enough for the list to have an index

BexListValBexUnicodeString Numbers() {
    BexListValBexUnicodeString list;
    for (int number = 1; number <= kMany; ++number) {
        BexUnicodeString text;
        text.BuildFromNum(number, "%d");
        list.Append(text);
    }
    return list;
}

void ExpectNumbers(const BexListValBexUnicodeString& iList) {
    ASSERT_EQ(iList.Size(), kMany);
    EXPECT_EQ(iList.Locate("1"), 1);
    EXPECT_EQ(iList.Locate("57"), 57);
    EXPECT_EQ(iList.Locate("100"), kMany);
    EXPECT_EQ(iList.Locate("101"), 0);
}

TEST(BexListSelfMove, KeepsTheValuesAndWhereTheyAreFound) {
    BexListValBexUnicodeString list = Numbers();
    BexListValBexUnicodeString& same = list;
    for (int round = 0; round < 3; ++round) {
        list = std::move(same);
        ExpectNumbers(list);
    }
}

}  // namespace
