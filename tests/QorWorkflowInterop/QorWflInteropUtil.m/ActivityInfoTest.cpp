#include "ActivityFields.h"
#include "AllocationWatch.h"

#include <ActivityInfo.h>
#include <DataInfo.h>
#include <ProcessInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <new>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using testing::Each;
using testing::IsNull;
using testing::NotNull;

template <typename Record>
constexpr bool kStaysInPlace = !std::is_copy_constructible_v<Record> && !std::is_copy_assignable_v<Record> &&
                               !std::is_move_constructible_v<Record> && !std::is_move_assignable_v<Record>;
static_assert(kStaysInPlace<DataInfo>);
static_assert(kStaysInPlace<ProcessInfo>);
static_assert(kStaysInPlace<ActivityInfo>);
static_assert(!std::is_polymorphic_v<DataInfo> && !std::is_polymorphic_v<ProcessInfo> &&
              !std::is_polymorphic_v<ActivityInfo>);

/** One of the three arrays of the records: its setter, its pointer and its count, all texts of its elements. */
struct ListCase {
    std::string name;
    std::size_t elementSize;
    int textsPerElement;
    void (*set)(ActivityInfo&, int);
    int (*count)(const ActivityInfo&);
    const void* (*array)(const ActivityInfo&);
    BexUnicodeString* (*text)(ActivityInfo&, int iElement, int iText);

    friend void PrintTo(const ListCase& iCase, std::ostream* oStream) { *oStream << iCase.name; }
};

BexUnicodeString* TextOf(DataInfo& ioData, int iText) {
    BexUnicodeString* const texts[] = {&ioData.name, &ioData.type, &ioData.extid, &ioData.value};
    return texts[iText];
}

const ListCase kLists[] = {
    {"datas", sizeof(DataInfo), 4, [](ActivityInfo& a, int n) { a.process.SetDataNumber(n); },
     [](const ActivityInfo& a) { return a.process.dataNumber; },
     [](const ActivityInfo& a) { return static_cast<const void*>(a.process.datas); },
     [](ActivityInfo& a, int i, int t) { return TextOf(a.process.datas[i], t); }},
    {"inputs", sizeof(BexUnicodeString), 1, [](ActivityInfo& a, int n) { a.SetInputNumber(n); },
     [](const ActivityInfo& a) { return a.inputNumber; },
     [](const ActivityInfo& a) { return static_cast<const void*>(a.inputs); },
     [](ActivityInfo& a, int i, int) { return &a.inputs[i]; }},
    {"outputs", sizeof(BexUnicodeString), 1, [](ActivityInfo& a, int n) { a.SetOutputNumber(n); },
     [](const ActivityInfo& a) { return a.outputNumber; },
     [](const ActivityInfo& a) { return static_cast<const void*>(a.outputs); },
     [](ActivityInfo& a, int i, int) { return &a.outputs[i]; }},
};

class RecordArray : public testing::TestWithParam<ListCase> {
protected:
    void FillAll(int iCount) {
        for (int i = 0; i < iCount; ++i) {
            for (int t = 0; t < GetParam().textsPerElement; ++t) {
                *GetParam().text(activity, i, t) = std::string(100, 'x').c_str();
            }
        }
    }
    std::vector<int> NullFlags(int iCount) {
        std::vector<int> flags;
        for (int i = 0; i < iCount; ++i) {
            for (int t = 0; t < GetParam().textsPerElement; ++t) {
                flags.push_back(GetParam().text(activity, i, t)->IsNull());
            }
        }
        return flags;
    }
    void Set(int iCount) { GetParam().set(activity, iCount); }
    int Count() const { return GetParam().count(activity); }
    const void* Array() const { return GetParam().array(activity); }

    ActivityInfo activity;
};

INSTANTIATE_TEST_SUITE_P(AllLists, RecordArray, testing::ValuesIn(kLists),
                         [](const testing::TestParamInfo<ListCase>& iCase) { return iCase.param.name; });

TEST(DataInfo, IsBuiltOfFourNullTexts) {
    DataInfo data;
    for (int t = 0; t < 4; ++t) {
        EXPECT_TRUE(TextOf(data, t)->IsNull()) << t;
    }
}

TEST(ProcessInfo, IsBuiltOfNullTextsAndNoData) {
    const ProcessInfo process;
    EXPECT_TRUE(process.id.IsNull());
    EXPECT_TRUE(process.name.IsNull());
    EXPECT_TRUE(process.context.IsNull());
    EXPECT_THAT(process.datas, IsNull());
    EXPECT_EQ(process.dataNumber, 0);
}

TEST(ActivityInfo, IsBuiltOfNullTextsAndGenerationOne) {
    const ActivityInfo activity;
    const BexUnicodeString* const texts[] = {
        &activity.id,           &activity.name,           &activity.abstract,     &activity.priority,
        &activity.extid,        &activity.status,         &activity.durationUnit, &activity.owner,
        &activity.participant,  &activity.documentation,  &activity.process.id,   &activity.participantType,
        &activity.process.name, &activity.process.context};
    for (const BexUnicodeString* text : texts) {
        EXPECT_TRUE(text->IsNull()) << (text - &activity.id);
    }
    EXPECT_EQ(activity.generation, 1);
    EXPECT_EQ(activity.duration, 0L);
}

TEST(ActivityInfo, IsBuiltWithoutListsAndReleasesNothing) {
    const long before = AllocationWatch::LiveBlocks();
    {
        const ActivityInfo activity;
        EXPECT_THAT(activity.inputs, IsNull());
        EXPECT_THAT(activity.outputs, IsNull());
        EXPECT_THAT(activity.process.datas, IsNull());
        EXPECT_EQ(activity.inputNumber, 0);
        EXPECT_EQ(activity.outputNumber, 0);
        EXPECT_EQ(activity.process.dataNumber, 0);
        EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
    }
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
}

TEST(ActivityInfo, FieldsHaveTheTypesThatHostsRelyOn) {
    static_assert(std::is_same_v<decltype(ActivityInfo::generation), int>);
    static_assert(std::is_same_v<decltype(ActivityInfo::duration), long>);
    static_assert(std::is_same_v<decltype(ActivityInfo::inputs), BexUnicodeString*>);
    static_assert(std::is_same_v<decltype(ActivityInfo::outputs), BexUnicodeString*>);
    static_assert(std::is_same_v<decltype(ActivityInfo::process), ProcessInfo>);
    static_assert(std::is_same_v<decltype(ProcessInfo::datas), DataInfo*>);
    static_assert(std::is_same_v<decltype(ProcessInfo::dataNumber), int>);
    // the order of declaration is part of the record
    const ActivityInfo activity;
    const auto at = [&activity](const void* iMember) {
        return static_cast<const char*>(iMember) - reinterpret_cast<const char*>(&activity);
    };
    const std::vector<std::ptrdiff_t> offsets = {at(&activity.id),
                                                 at(&activity.name),
                                                 at(&activity.generation),
                                                 at(&activity.abstract),
                                                 at(&activity.priority),
                                                 at(&activity.extid),
                                                 at(&activity.status),
                                                 at(&activity.duration),
                                                 at(&activity.durationUnit),
                                                 at(&activity.owner),
                                                 at(&activity.participant),
                                                 at(&activity.participantType),
                                                 at(&activity.documentation),
                                                 at(&activity.process),
                                                 at(&activity.inputs),
                                                 at(&activity.outputs),
                                                 at(&activity.inputNumber),
                                                 at(&activity.outputNumber)};
    EXPECT_THAT(offsets, testing::WhenSorted(testing::ContainerEq(offsets)));
}

TEST_P(RecordArray, CountMakesThatManyNullTexts) {
    Set(5);
    EXPECT_EQ(Count(), 5);
    ASSERT_THAT(Array(), NotNull());
    EXPECT_THAT(NullFlags(5), Each(1));
}

TEST_P(RecordArray, SameCountAgainStillGivesFreshElements) {
    Set(3);
    FillAll(3);
    Set(3);
    EXPECT_EQ(Count(), 3);
    EXPECT_THAT(NullFlags(3), Each(1));
}

TEST_P(RecordArray, OtherCountKeepsNothing) {
    for (const int count : {4, 1, 7}) {
        Set(count);
        EXPECT_EQ(Count(), count);
        EXPECT_THAT(NullFlags(count), Each(1)) << count;
        FillAll(count);
    }
}

TEST_P(RecordArray, CountOfZeroFreesTheElements) {
    const long before = AllocationWatch::LiveBlocks();
    Set(5);
    EXPECT_GT(AllocationWatch::LiveBlocks(), before);
    FillAll(5);
    Set(0);
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
    EXPECT_THAT(Array(), IsNull());
    EXPECT_EQ(Count(), 0);
}

TEST_P(RecordArray, IsOneArrayAllocation) {
    const long before = AllocationWatch::LiveArrays();
    Set(5);
    EXPECT_EQ(AllocationWatch::LiveArrays(), before + 1);
    Set(6);
    EXPECT_EQ(AllocationWatch::LiveArrays(), before + 1);
    Set(0);
    EXPECT_EQ(AllocationWatch::LiveArrays(), before);
}

TEST_P(RecordArray, DestructionFreesTheElements) {
    const long before = AllocationWatch::LiveBlocks();
    {
        auto other = std::make_unique<ActivityInfo>();
        GetParam().set(*other, 9);
        for (int i = 0; i < 9; ++i) {
            *GetParam().text(*other, i, 0) = std::string(200, 'y').c_str();
        }
    }
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
}

TEST_P(RecordArray, DestructionAfterZeroReleasesNothing) {
    const long before = AllocationWatch::LiveBlocks();
    {
        ActivityInfo other;
        GetParam().set(other, 0);
        EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
    }
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
}

TEST_P(RecordArray, NegativeCountIsKeptWithANullArray) {
    const long before = AllocationWatch::LiveBlocks();
    for (const int count : {-1, -5, INT_MIN}) {
        Set(2);
        Set(count);
        EXPECT_EQ(Count(), count);
        EXPECT_THAT(Array(), IsNull()) << count;
        EXPECT_EQ(AllocationWatch::LiveBlocks(), before) << count;
    }
    Set(2);
    EXPECT_EQ(Count(), 2);
    EXPECT_THAT(NullFlags(2), Each(1));
}

TEST_P(RecordArray, MemoryThatCannotBeHadThrowsAndLeavesNoElements) {
    Set(2);
    FillAll(2);
    {
        const AllocationWatch::FailingArrays failing(1000 * GetParam().elementSize);
        EXPECT_THROW(Set(1000), std::bad_alloc);
    }
    EXPECT_EQ(Count(), 0);
    EXPECT_THAT(Array(), IsNull());
    Set(3);
    EXPECT_EQ(Count(), 3);
    EXPECT_THAT(NullFlags(3), Each(1));
}

TEST_P(RecordArray, LargestCountThrowsAndLeavesNoElements) {
    const AllocationWatch::FailingArrays failing(std::size_t{1} << 30);
    EXPECT_THROW(Set(INT_MAX), std::bad_alloc);
    EXPECT_EQ(Count(), 0);
    EXPECT_THAT(Array(), IsNull());
}

TEST_P(RecordArray, LeavesTheOtherListsAlone) {
    for (const ListCase& list : kLists) {
        list.set(activity, 2);
    }
    Set(4);
    for (const ListCase& list : kLists) {
        EXPECT_EQ(list.count(activity), list.name == GetParam().name ? 4 : 2) << list.name;
    }
    Set(0);
    for (const ListCase& list : kLists) {
        EXPECT_EQ(list.array(activity) == nullptr, list.name == GetParam().name) << list.name;
    }
}

TEST_P(RecordArray, LeavesEveryOtherFieldAlone) {
    FillWithOldValues(activity);
    ActivityFields expected = OldFields();
    const std::string list = GetParam().name;
    const std::string array = list == "datas" ? "process.datas" : list;
    const std::string number = list == "datas"    ? "process.dataNumber"
                               : list == "inputs" ? "inputNumber"
                                                  : "outputNumber";
    expected.erase(array);
    expected.erase(number);
    for (const int count : {4, 0, -2, 1}) {
        Set(count);
        ActivityFields fields = FieldsOf(activity);
        EXPECT_EQ(fields[number], std::to_string(count));
        fields.erase(array);
        fields.erase(number);
        EXPECT_EQ(fields, expected) << count;
    }
}

TEST_P(RecordArray, PointerNotTheCountTellsWhetherThereIsAnArray) {
    const long before = AllocationWatch::LiveBlocks();
    Set(5);
    FillAll(5);
    for (const int wrong : {0, -1, 1}) {
        activity.process.dataNumber = activity.inputNumber = activity.outputNumber = wrong;
        Set(5);
        FillAll(5);
    }
    activity.process.dataNumber = activity.inputNumber = activity.outputNumber = 0;
    Set(0);
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
}

TEST(ActivityInfo, ArrayThatTheHostTookIsTheHosts) {
    const long before = AllocationWatch::LiveArrays();
    BexUnicodeString* inputs = nullptr;
    BexUnicodeString* outputs = nullptr;
    DataInfo* datas = nullptr;
    {
        ActivityInfo activity;
        activity.SetInputNumber(1);
        activity.inputs[0] = "taken";
        activity.SetOutputNumber(2);
        activity.process.SetDataNumber(3);
        inputs = std::exchange(activity.inputs, nullptr);
        outputs = std::exchange(activity.outputs, nullptr);
        datas = std::exchange(activity.process.datas, nullptr);
        activity.SetInputNumber(2);
        EXPECT_NE(activity.inputs, inputs);
        EXPECT_EQ(AllocationWatch::LiveArrays(), before + 4);
    }
    EXPECT_EQ(AllocationWatch::LiveArrays(), before + 3);
    EXPECT_EQ(inputs[0], BexUnicodeString("taken"));
    delete[] inputs;
    delete[] outputs;
    delete[] datas;
    EXPECT_EQ(AllocationWatch::LiveArrays(), before);
}

TEST(ProcessInfo, DestructionFreesItsData) {
    const long before = AllocationWatch::LiveBlocks();
    {
        ProcessInfo process;
        process.SetDataNumber(3);
        process.datas[2].value = std::string(100, 'x').c_str();
        process.id = std::string(100, 'x').c_str();
        EXPECT_GT(AllocationWatch::LiveBlocks(), before);
    }
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
}

TEST(ActivityInfo, DestructionReleasesInputsOutputsProcessAndThenTheTextsFromTheLast) {
    auto activity = std::make_unique<ActivityInfo>();
    activity->SetInputNumber(2);
    activity->SetOutputNumber(2);
    activity->process.SetDataNumber(2);
    ProcessInfo& process = activity->process;
    // texts as long as these have a block of their own, the one that their narrow form stands in
    std::vector<const void*> order;
    const auto fill = [&order](BexUnicodeString& oText) {
        oText = std::string(100, 'x').c_str();
        order.push_back(oText.ConvertToChar());
    };
    fill(activity->inputs[1]);
    fill(activity->outputs[1]);
    fill(process.datas[1].value);
    for (BexUnicodeString* text :
         {&process.context, &process.name, &process.id, &activity->documentation, &activity->participantType,
          &activity->participant, &activity->owner, &activity->durationUnit, &activity->status, &activity->extid,
          &activity->priority, &activity->abstract, &activity->name, &activity->id}) {
        fill(*text);
    }
    std::vector<int> places;
    {
        const AllocationWatch::Releases releases;
        activity.reset();
        for (const void* block : order) {
            places.push_back(releases.PlaceOf(block));
        }
    }
    EXPECT_THAT(places, Each(testing::Ge(0)));
    EXPECT_THAT(places, testing::WhenSorted(testing::ContainerEq(places)));
}

}  // namespace
