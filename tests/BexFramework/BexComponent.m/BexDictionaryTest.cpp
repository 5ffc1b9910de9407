#include "TestComponent.h"

#include <BexDictionary.h>
#include <BexMetaClass.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <RunOnThreads.h>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace {

using testing::IsNull;

const GUID& kMeta = CLSID_BexMetaClass;

/** Takes out what a test entered under an identifier. */
class EntriesTakenOut {
public:
    explicit EntriesTakenOut(const GUID& iIid) : fill(iIid, kMeta, nullptr, nullptr) {}

private:
    BexFillDictionary fill;
};

class Dictionary : public testing::Test {
protected:
    static void Add(const GUID& iIid, const char* iName, BexMetaClass* iMeta) {
        AddDictionary(iIid, kMeta, iName, "MetaObject", nullptr, iMeta, nullptr, nullptr);
    }

    BexMetaClass metaFirst{kIidFirst, "TestFirst", nullptr, nullptr, BexTypeOfClassInterface};
    BexMetaClass metaSecond{kIidSecond, "TestSecond", nullptr, nullptr, BexTypeOfClassInterface};
    EntriesTakenOut first{kIidFirst};
    EntriesTakenOut second{kIidSecond};
};

TEST_F(Dictionary, FindsNothingThatNobodyEntered) {
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
    EXPECT_THAT(FindInDictionary(GUID{}), IsNull());
    EXPECT_THAT(FindInDictionary("TestFirst"), IsNull());
    EXPECT_THAT(FindInDictionary(""), IsNull());
    EXPECT_THAT(FindInDictionary(static_cast<const char*>(nullptr)), IsNull());
}

TEST_F(Dictionary, FindsAnEntryByIdentifierAndByName) {
    Add(kIidFirst, "TestFirst", &metaFirst);
    Add(kIidSecond, "TestSecond", &metaSecond);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
    EXPECT_EQ(FindInDictionary("TestFirst"), &metaFirst);
    EXPECT_EQ(FindInDictionary(kIidSecond), &metaSecond);
    EXPECT_EQ(FindInDictionary("TestSecond"), &metaSecond);
}

TEST_F(Dictionary, TakesIdentifierAndNameAsTheyAreGiven) {
    Add(kIidSecond, "TestAnotherName", &metaFirst);
    EXPECT_EQ(FindInDictionary(kIidSecond), &metaFirst);
    EXPECT_EQ(FindInDictionary("TestAnotherName"), &metaFirst);
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull()) << "not by the identifier that the meta class reports";
    EXPECT_THAT(FindInDictionary("TestFirst"), IsNull()) << "not by the name that the meta class reports";
}

TEST_F(Dictionary, ComparesNamesExactly) {
    Add(kIidFirst, "TestFirst", &metaFirst);
    for (const char* name : {"TestFirs", "TestFirstItf", "testfirst", " TestFirst", "MetaObject", "*"}) {
        EXPECT_THAT(FindInDictionary(name), IsNull()) << name;
    }
}

TEST_F(Dictionary, ComparesIdentifiersInFull) {
    Add(kIidFirst, "TestFirst", &metaFirst);
    GUID other = kIidFirst;
    other.Data4[7] = 0;
    EXPECT_THAT(FindInDictionary(other), IsNull());
    other = kIidFirst;
    other.Data1 = 0;
    EXPECT_THAT(FindInDictionary(other), IsNull());
}

TEST_F(Dictionary, TheFirstEntryOfAnIdentifierWins) {
    Add(kIidFirst, "TestFirst", &metaFirst);
    Add(kIidFirst, "TestSecond", &metaSecond);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
    EXPECT_EQ(FindInDictionary("TestSecond"), &metaSecond) << "the later entry still counts for its name";
}

TEST_F(Dictionary, TheFirstEntryOfANameWins) {
    Add(kIidSecond, "TestShared", &metaSecond);
    Add(kIidFirst, "TestShared", &metaFirst);
    EXPECT_EQ(FindInDictionary("TestShared"), &metaSecond);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
}

TEST_F(Dictionary, KeepsCopiesOfIdentifierAndNames) {
    GUID iid = kIidFirst;
    char name[] = "TestFirst";
    char entry[] = "MetaObject";
    AddDictionary(iid, kMeta, name, entry, nullptr, &metaFirst, nullptr, nullptr);
    iid.Data1 = 0;
    std::memset(name, 'x', sizeof name - 1);
    std::memset(entry, 'x', sizeof entry - 1);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
    EXPECT_EQ(FindInDictionary("TestFirst"), &metaFirst);
}

TEST_F(Dictionary, TakesNullNamesAsEmptyOnes) {
    AddDictionary(kIidFirst, kMeta, nullptr, nullptr, nullptr, &metaFirst, nullptr, nullptr);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
    EXPECT_EQ(FindInDictionary(""), &metaFirst);
    EXPECT_THAT(FindInDictionary(static_cast<const char*>(nullptr)), IsNull());
}

TEST_F(Dictionary, FillEntersTheMetaClassUnderTheIdentifierAndItsOwnName) {
    {
        const BexFillDictionary fill(kIidFirst, kMeta, &metaFirst, nullptr);
        EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
        EXPECT_EQ(FindInDictionary("TestFirst"), &metaFirst);
    }
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
    EXPECT_THAT(FindInDictionary("TestFirst"), IsNull());
}

TEST_F(Dictionary, FillWithoutAMetaClassEntersNothing) {
    const BexFillDictionary fill(kIidFirst, kMeta, nullptr, nullptr);
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
    EXPECT_THAT(FindInDictionary(""), IsNull());
    Add(kIidFirst, "TestFirst", &metaFirst);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst) << "nothing stands in the way of the first real entry";
}

TEST_F(Dictionary, FillTakesEveryEntryOfItsIdentifierOut) {
    Add(kIidFirst, "TestBefore", &metaSecond);
    auto fill = std::make_unique<BexFillDictionary>(kIidFirst, kMeta, &metaFirst, nullptr);
    Add(kIidFirst, "TestAfter", &metaSecond);
    Add(kIidFirst, "TestAfter", &metaFirst);
    fill.reset();
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
    for (const char* name : {"TestBefore", "TestFirst", "TestAfter"}) {
        EXPECT_THAT(FindInDictionary(name), IsNull()) << name;
    }
}

TEST_F(Dictionary, FillLeavesTheEntriesOfOtherIdentifiers) {
    auto fill = std::make_unique<BexFillDictionary>(kIidFirst, kMeta, &metaFirst, nullptr);
    Add(kIidSecond, "TestFirst", &metaSecond);
    EXPECT_EQ(FindInDictionary("TestFirst"), &metaFirst);
    fill.reset();
    EXPECT_EQ(FindInDictionary(kIidSecond), &metaSecond);
    EXPECT_EQ(FindInDictionary("TestFirst"), &metaSecond) << "the next entry of the name is the first one now";
}

TEST_F(Dictionary, TwoFillObjectsOfOneIdentifierMayGoInAnyOrder) {
    auto one = std::make_unique<BexFillDictionary>(kIidFirst, kMeta, &metaFirst, nullptr);
    auto two = std::make_unique<BexFillDictionary>(kIidFirst, kMeta, &metaSecond, nullptr);
    EXPECT_EQ(FindInDictionary(kIidFirst), &metaFirst);
    one.reset();
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
    two.reset();
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
}

TEST_F(Dictionary, AnIdentifierCanBeEnteredAgain) {
    for (int round = 0; round < 3; ++round) {
        const BexFillDictionary fill(kIidFirst, kMeta, round % 2 == 0 ? &metaFirst : &metaSecond, nullptr);
        EXPECT_EQ(FindInDictionary(kIidFirst), round % 2 == 0 ? &metaFirst : &metaSecond);
    }
    EXPECT_THAT(FindInDictionary(kIidFirst), IsNull());
}

TEST_F(Dictionary, EntersAndFindsFromManyThreads) {
    Add(kIidFirst, "TestFirst", &metaFirst);
    std::atomic<int> wrong{0};
    RunOnThreads(8, [this, &wrong](int iThread) {
        GUID iid = kIidSecond;
        iid.Data3 = static_cast<std::uint16_t>(0x100 + iThread);
        const std::string name = "TestThread" + std::to_string(iThread);
        BexMetaClass meta(iid, name.c_str(), nullptr, nullptr, BexTypeOfClassInterface);
        for (int round = 0; round < 500; ++round) {
            {
                const BexFillDictionary fill(iid, kMeta, &meta, nullptr);
                Add(iid, "TestManyThreads", &meta);
                wrong += FindInDictionary(iid) != &meta ? 1 : 0;
                wrong += FindInDictionary(name.c_str()) != &meta ? 1 : 0;
                wrong += FindInDictionary("TestManyThreads") == nullptr ? 1 : 0;
            }
            wrong += FindInDictionary(iid) != nullptr ? 1 : 0;
            wrong += FindInDictionary(kIidFirst) != &metaFirst ? 1 : 0;
            wrong += FindInDictionary("TestFirst") != &metaFirst ? 1 : 0;
        }
    });
    EXPECT_EQ(wrong, 0);
    EXPECT_THAT(FindInDictionary("TestManyThreads"), IsNull());
}

}  // namespace
