// Lists of many values. Each test takes a moment as long as the operations take constant time, and hours if one of
// them walks the list.

#include <BexListValBexUnicodeString.h>

#include <gtest/gtest.h>

namespace {

constexpr int kMany = 1'000'000;
constexpr int kFewer = 200'000;  // where every value is changed as well

BexUnicodeString Numbered(int iNumber) {
    BexUnicodeString value;
    value.BuildFromNum(iNumber, "%d");
    return value;
}

BexListValBexUnicodeString ManyEqual(const BexUnicodeString& iValue, int iCount) {
    BexListValBexUnicodeString list;
    for (int count = 0; count < iCount; ++count) {
        list.Append(iValue);
    }
    return list;
}

TEST(BexListGrowth, AMillionDifferentValuesAreAppendedAndLocated) {
    BexListValBexUnicodeString list;
    for (int number = 1; number <= kMany; ++number) {
        const BexUnicodeString value = Numbered(number);
        list.Append(value);
        ASSERT_EQ(list.Locate(value), number);
        ASSERT_EQ(list.Locate(value, number + 1), 0);
    }
    ASSERT_EQ(list.Size(), kMany);
}

TEST(BexListGrowth, AMillionEqualValuesAreLocatedFromEveryPosition) {
    const BexUnicodeString value("the same");
    const BexListValBexUnicodeString list = ManyEqual(value, kMany);
    for (int from = 1; from <= kMany; ++from) {
        ASSERT_EQ(list.Locate(value, from), from);
    }
}

TEST(BexListGrowth, EqualValuesAreSetOneByOneFromTheFront) {
    const BexUnicodeString former("former");
    const BexUnicodeString later("later");
    BexListValBexUnicodeString list = ManyEqual(former, kFewer);
    for (int pos = 1; pos <= kFewer; ++pos) {
        list.Set(pos, later);
        ASSERT_EQ(list.Locate(former), pos < kFewer ? pos + 1 : 0);
        ASSERT_EQ(list.Locate(later, pos), pos);
    }
}

TEST(BexListGrowth, EqualValuesAreSetOneByOneFromTheBack) {
    const BexUnicodeString former("former");
    const BexUnicodeString later("later");
    BexListValBexUnicodeString list = ManyEqual(former, kFewer);
    for (int pos = kFewer; pos >= 1; --pos) {
        list.Set(pos, later);
        ASSERT_EQ(list.Locate(later), pos);
        ASSERT_EQ(list.Locate(former, pos), 0);
    }
}

TEST(BexListGrowth, EqualValuesAreSetOneByOneInAScatteredOrder) {
    constexpr int kStride = 123'457;  // has no divisor in common with kFewer, so every position has its turn
    const BexUnicodeString former("former");
    const BexUnicodeString later("later");
    BexListValBexUnicodeString list = ManyEqual(former, kFewer);
    ASSERT_EQ(list.Locate(former, 2), 2);
    int pos = 0;
    for (int count = 0; count < kFewer; ++count) {
        pos = (pos + kStride) % kFewer;
        list.Set(pos + 1, later);
        ASSERT_EQ(list.Locate(later, pos + 1), pos + 1);
    }
    EXPECT_EQ(list.Locate(former), 0);
    EXPECT_EQ(list.Locate(later), 1);
}

TEST(BexListGrowth, OneValueIsSetToAndFroAgainAndAgain) {
    const BexUnicodeString first("first");
    const BexUnicodeString second("second");
    BexListValBexUnicodeString list = ManyEqual(first, 1000);
    for (int count = 0; count < kFewer; ++count) {
        const BexUnicodeString& value = count % 2 == 0 ? second : first;
        list.Set(500, value);
        ASSERT_EQ(list.Locate(value, 500), 500);
    }
    EXPECT_EQ(list.Locate(second), 0);
}

TEST(BexListGrowth, ValuesComeAndGoAmongManyOthers) {
    BexListValBexUnicodeString list;
    for (int number = 0; number < kMany; ++number) {
        list.Append(Numbered(number));
    }
    const BexUnicodeString on("on");
    const BexUnicodeString off("off");
    ASSERT_EQ(list.Locate(on), 0);
    for (int count = 0; count < kMany; ++count) {
        list.Set(1, count % 2 == 0 ? on : off);
        ASSERT_EQ(list.Locate(on), count % 2 == 0 ? 1 : 0);
        ASSERT_EQ(list.Locate(off), count % 2 == 0 ? 0 : 1);
    }
    EXPECT_EQ(list.Locate(Numbered(0)), 0);
    EXPECT_EQ(list.Locate(Numbered(kMany - 1)), kMany);
}

TEST(BexListGrowth, ValuesComeInPairsAndGoAgain) {
    BexListValBexUnicodeString list = ManyEqual("filling", 1000);
    const BexUnicodeString pair("pair");
    const BexUnicodeString alone("alone");
    for (int count = 0; count < kFewer; ++count) {
        list.Set(1, pair);
        list.Set(1000, pair);
        ASSERT_EQ(list.Locate(pair), 1);
        ASSERT_EQ(list.Locate(pair, 2), 1000);
        list.Set(1, alone);
        ASSERT_EQ(list.Locate(pair), 1000);
        list.Set(1000, "filling");
        ASSERT_EQ(list.Locate(pair), 0);
    }
}

TEST(BexListGrowth, ManyNewValuesGoThroughOnePosition) {
    BexListValBexUnicodeString list = ManyEqual("filling", 1000);
    for (int number = 0; number < kFewer; ++number) {
        const BexUnicodeString value = Numbered(number);
        list.Set(500, value);
        ASSERT_EQ(list.Locate(value), 500);
    }
    EXPECT_EQ(list.Locate(Numbered(kFewer - 2)), 0);
}

TEST(BexListGrowth, DuplicatesAmongAMillionValuesAreRemoved) {
    constexpr int kDifferent = 300'000;
    BexListValBexUnicodeString list;
    for (int number = 0; number < kMany; ++number) {
        list.Append(Numbered(number % kDifferent));
    }
    list.RemoveDuplicates();
    ASSERT_EQ(list.Size(), kDifferent);
    for (int pos = 1; pos <= kDifferent; ++pos) {
        ASSERT_EQ(list[pos], Numbered(pos - 1));
        ASSERT_EQ(list.Locate(list[pos]), pos);
    }
}

TEST(BexListGrowth, AMillionEqualValuesLeaveOne) {
    BexListValBexUnicodeString list = ManyEqual("the same", kMany);
    list.RemoveDuplicates();
    EXPECT_EQ(list.Size(), 1);
    EXPECT_EQ(list.Locate("the same"), 1);
    list.RemoveAll();
    EXPECT_EQ(list.Size(), 0);
}

}  // namespace
