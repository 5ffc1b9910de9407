#include "EnvironmentVariable.h"
#include "RecordingSink.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

namespace {

using testing::IsEmpty;
using testing::SizeIs;
using testing::StrEq;

constexpr const char* kVariable = "BexQorTrace";

struct EnvironmentCase {
    const char* name;
    const char* value;  // null: not set
    const char* channel;
    int on;
};

void PrintTo(const EnvironmentCase& iCase, std::ostream* ioStream) {
    *ioStream << (iCase.value != nullptr ? iCase.value : "(not set)") << " for " << iCase.channel;
}

class EnvironmentAtBuilding : public testing::TestWithParam<EnvironmentCase> {};

TEST_P(EnvironmentAtBuilding, TurnsTheNamedChannelsOn) {
    const EnvironmentVariable variable(kVariable, GetParam().value);
    const BexQorTrace channel(GetParam().channel, "title", "STDOUT", 1024);
    EXPECT_EQ(channel.IsOn(), GetParam().on);
}

INSTANTIATE_TEST_SUITE_P(
    BexQorTrace, EnvironmentAtBuilding,
    testing::Values(EnvironmentCase{"NotSet", nullptr, "SwitchA", 0}, EnvironmentCase{"Empty", "", "SwitchA", 0},
                    EnvironmentCase{"EmptyForANamelessChannel", "", "", 0},
                    EnvironmentCase{"OnlyName", "SwitchA", "SwitchA", 1},
                    EnvironmentCase{"FirstOfThree", "SwitchA,SwitchB,SwitchC", "SwitchA", 1},
                    EnvironmentCase{"SecondOfThree", "SwitchA,SwitchB,SwitchC", "SwitchB", 1},
                    EnvironmentCase{"LastOfThree", "SwitchA,SwitchB,SwitchC", "SwitchC", 1},
                    EnvironmentCase{"NotAmongThree", "SwitchA,SwitchB,SwitchC", "SwitchD", 0},
                    EnvironmentCase{"NameTwice", "SwitchA,SwitchA", "SwitchA", 1},
                    EnvironmentCase{"Everything", "*", "SwitchA", 1},
                    EnvironmentCase{"EverythingForANamelessChannel", "*", "", 1},
                    EnvironmentCase{"ListedNameIsAPrefixOfTheChannel", "Switch", "SwitchA", 0},
                    EnvironmentCase{"ListedNameIsASuffixOfTheChannel", "A", "SwitchA", 0},
                    EnvironmentCase{"ChannelIsAPrefixOfTheListedName", "SwitchAUrl", "SwitchA", 0},
                    EnvironmentCase{"ChannelIsASuffixOfTheListedName", "MySwitchA", "SwitchA", 0},
                    EnvironmentCase{"ExactNameBehindALongerOne", "SwitchAUrl,SwitchA", "SwitchA", 1},
                    EnvironmentCase{"ExactNameBeforeALongerOne", "SwitchA,SwitchAUrl", "SwitchA", 1},
                    EnvironmentCase{"ExactNameBehindAShorterOne", "Switch,SwitchA", "SwitchA", 1},
                    EnvironmentCase{"CaseMatters", "switcha", "SwitchA", 0},
                    EnvironmentCase{"NothingBetweenCommas", ",SwitchB,,SwitchA,", "SwitchA", 1},
                    EnvironmentCase{"OnlyCommas", ",,", "SwitchA", 0},
                    EnvironmentCase{"AnotherSeparator", "SwitchA;SwitchB", "SwitchA", 0},
                    EnvironmentCase{"WholeListAsName", "SwitchA,SwitchB", "SwitchA,SwitchB", 0}),
    [](const testing::TestParamInfo<EnvironmentCase>& iInfo) { return std::string(iInfo.param.name); });

TEST(TraceEnvironment, LooksAtTheVariableOnlyWhenTheChannelIsBuilt) {
    std::unique_ptr<BexQorTrace> early;
    std::unique_ptr<BexQorTrace> late;
    {
        const EnvironmentVariable variable(kVariable, nullptr);
        early = std::make_unique<BexQorTrace>("SwitchEarly", "", "STDOUT", 0);
    }
    {
        const EnvironmentVariable variable(kVariable, "SwitchEarly,SwitchLate");
        late = std::make_unique<BexQorTrace>("SwitchLate", "", "STDOUT", 0);
        EXPECT_EQ(early->IsOn(), 0);
    }
    EXPECT_EQ(late->IsOn(), 1);
}

TEST(TraceEnvironment, AChannelTurnedOnByItCanBeTurnedOff) {
    const EnvironmentVariable variable(kVariable, "SwitchA");
    const BexQorTrace channel("SwitchA", "", "STDOUT", 0);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 0), 1);
    EXPECT_EQ(channel.IsOn(), 0);
}

class SetOn : public testing::Test {
protected:
    EnvironmentVariable nothingOn{kVariable, nullptr};
};

TEST_F(SetOn, TurnsAChannelOnAndOff) {
    const BexQorTrace channel("SwitchA", "", "STDOUT", 0);
    ASSERT_EQ(channel.IsOn(), 0);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 1);
    EXPECT_EQ(channel.IsOn(), 1);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 1);
    EXPECT_EQ(channel.IsOn(), 1);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 0), 1);
    EXPECT_EQ(channel.IsOn(), 0);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 0), 1);
    EXPECT_EQ(channel.IsOn(), 0);
}

TEST_F(SetOn, AnyNumberButZeroIsOnAndReadsAsOne) {
    const BexQorTrace channel("SwitchA", "", "STDOUT", 0);
    for (const int on : {2, -1, 256, 1 << 16}) {
        BexQorTrace::SetOn("SwitchA", 0);
        BexQorTrace::SetOn("SwitchA", on);
        EXPECT_EQ(channel.IsOn(), 1) << on;
    }
}

TEST_F(SetOn, ReachesEveryChannelOfTheNameAndCountsThem) {
    const BexQorTrace one("SwitchA", "", "STDOUT", 0);
    const BexQorTrace two("SwitchA", "", "STDERR", 0);
    const BexQorTrace other("SwitchB", "", "STDOUT", 0);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 2);
    EXPECT_EQ(one.IsOn(), 1);
    EXPECT_EQ(two.IsOn(), 1);
    EXPECT_EQ(other.IsOn(), 0);
}

TEST_F(SetOn, TakesOnlyTheExactName) {
    const BexQorTrace channel("SwitchA", "", "STDOUT", 0);
    for (const char* name : {"Switch", "SwitchAUrl", "witchA", "switcha", "", "*", "SwitchA,SwitchA", " SwitchA"}) {
        EXPECT_EQ(BexQorTrace::SetOn(name, 1), 0) << name;
        EXPECT_EQ(channel.IsOn(), 0) << name;
    }
}

TEST_F(SetOn, GivesZeroForANullName) {
    const BexQorTrace nameless(nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(BexQorTrace::SetOn(nullptr, 1), 0);
    EXPECT_EQ(nameless.IsOn(), 0);
}

TEST_F(SetOn, FindsAChannelBuiltWithANullNameAsTheEmptyName) {
    const BexQorTrace nameless(nullptr, "title", "STDOUT", 0);
    EXPECT_EQ(BexQorTrace::SetOn("", 1), 1);
    EXPECT_EQ(nameless.IsOn(), 1);
}

TEST_F(SetOn, CountsLivingChannelsOnly) {
    auto one = std::make_unique<BexQorTrace>("SwitchA", "", "STDOUT", 0);
    auto two = std::make_unique<BexQorTrace>("SwitchA", "", "STDOUT", 0);
    auto three = std::make_unique<BexQorTrace>("SwitchA", "", "STDOUT", 0);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 3);
    two.reset();
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 2);
    three.reset();
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 1);
    one.reset();
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 0);
    const BexQorTrace again("SwitchA", "", "STDOUT", 0);
    EXPECT_EQ(again.IsOn(), 0) << "what was asked while no channel had the name is forgotten";
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 1);
}

TEST_F(SetOn, LeavesAChannelBuiltLaterOff) {
    const BexQorTrace first("SwitchA", "", "STDOUT", 0);
    EXPECT_EQ(BexQorTrace::SetOn("SwitchA", 1), 1);
    const BexQorTrace second("SwitchA", "", "STDOUT", 0);
    EXPECT_EQ(first.IsOn(), 1);
    EXPECT_EQ(second.IsOn(), 0);
}

TEST(TraceChannel, KeepsCopiesOfItsTexts) {
    std::string name = "SwitchCopied";
    std::string title = "Title for people";
    BexQorTrace channel(name.c_str(), title.c_str(), "STDOUT", 0);
    name.assign(name.size(), 'x');
    title.assign(title.size(), 'x');
    EXPECT_THAT(channel.GetTitle(), StrEq("Title for people"));

    RecordingSink sink;
    EXPECT_EQ(BexQorTrace::SetOn("SwitchCopied", 1), 1);
    { const BexQorTraceStep step(channel, "step"); }
    ASSERT_THAT(sink.Calls(), SizeIs(2));
    EXPECT_EQ(sink.Calls()[0].channel, "SwitchCopied");
}

TEST(TraceChannel, TakesNullPointersAsEmptyTexts) {
    BexQorTrace channel(nullptr, nullptr, nullptr, -1);
    EXPECT_THAT(channel.GetTitle(), StrEq(""));
    RecordingSink sink;
    BexQorTrace::SetOn("", 1);
    { const BexQorTraceStep step(channel, nullptr); }
    ASSERT_THAT(sink.Calls(), SizeIs(2));
    EXPECT_THAT(sink.Calls()[0].channel, IsEmpty());
    EXPECT_EQ(sink.Calls()[0].text.substr(0, 2), ">>");
    EXPECT_EQ(sink.Calls()[1].text.substr(0, 2), "<<");
}

class ChannelOfAnySize : public testing::TestWithParam<int> {};

TEST_P(ChannelOfAnySize, WritesLinesOfAnyLengthWhole) {
    BexQorTrace channel("SwitchSized", "", "STDOUT", GetParam());
    BexQorTrace::SetOn("SwitchSized", 1);
    RecordingSink sink;
    const std::string message(5000, 'm');
    {
        BexQorTraceStep step(channel, "step");
        step << message << std::endl;
    }
    EXPECT_THAT(sink.Texts(), testing::ElementsAre(">> step\n", "  " + message + "\n", "<< step\n"));
}

INSTANTIATE_TEST_SUITE_P(BexQorTrace, ChannelOfAnySize, testing::Values(-2147483647 - 1, -1, 0, 1, 1024, 2147483647));

}  // namespace
