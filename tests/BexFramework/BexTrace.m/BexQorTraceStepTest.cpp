#include "RecordingSink.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>
#include <BexUnicodeString.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TraceStep : public testing::Test {
protected:
    TraceStep() { BexQorTrace::SetOn("StepA", 1); }
    BexQorTrace channel{"StepA", "", "STDOUT", 1024};
    RecordingSink sink;
};

TEST_F(TraceStep, WritesItsNameWhenItOpensAndWhenItCloses) {
    {
        const BexQorTraceStep step(channel, "Class::Operation");
        EXPECT_EQ(step.IsOn(), 1);
        EXPECT_THAT(sink.Texts(), ElementsAre(">> Class::Operation\n"));
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> Class::Operation\n", "<< Class::Operation\n"));
}

TEST_F(TraceStep, TakesANullNameAsTheEmptyOne) {
    { const BexQorTraceStep step(channel, nullptr); }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> \n", "<< \n"));
}

TEST_F(TraceStep, NamesItsChannelAtEveryLine) {
    {
        BexQorTraceStep step(channel, "step");
        step << "message" << std::endl;
    }
    ASSERT_THAT(sink.Calls(), SizeIs(3));
    for (const RecordingSink::Call& call : sink.Calls()) {
        EXPECT_EQ(call.channel, "StepA");
    }
}

TEST_F(TraceStep, IndentsNestedStepsAndTheirMessages) {
    {
        BexQorTraceStep outer(channel, "outer");
        outer << "before" << std::endl;
        {
            BexQorTraceStep middle(channel, "middle");
            middle << "in" << std::endl;
            {
                BexQorTraceStep inner(channel, "inner");
                inner << "deep" << std::endl;
            }
            middle << "out" << std::endl;
        }
        outer << "after" << std::endl;
    }
    EXPECT_THAT(sink.Texts(),
                ElementsAre(">> outer\n", "  before\n", "  >> middle\n", "    in\n", "    >> inner\n", "      deep\n",
                            "    << inner\n", "    out\n", "  << middle\n", "  after\n", "<< outer\n"));
}

TEST_F(TraceStep, StandsAtTheMarginAgainAfterANest) {
    {
        const BexQorTraceStep outer(channel, "outer");
        const BexQorTraceStep inner(channel, "inner");
    }
    { const BexQorTraceStep next(channel, "next"); }
    EXPECT_THAT(sink.Texts(),
                ElementsAre(">> outer\n", "  >> inner\n", "  << inner\n", "<< outer\n", ">> next\n", "<< next\n"));
}

TEST_F(TraceStep, NestsAcrossChannels) {
    BexQorTrace other("StepB", "", "STDERR", 0);
    BexQorTrace::SetOn("StepB", 1);
    {
        const BexQorTraceStep outer(channel, "outer");
        const BexQorTraceStep inner(other, "inner");
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> outer\n", "  >> inner\n", "  << inner\n", "<< outer\n"));
    EXPECT_EQ(sink.Calls()[1].channel, "StepB");
    EXPECT_EQ(sink.Calls()[3].channel, "StepA");
}

TEST_F(TraceStep, NestsAThousandDeep) {
    constexpr std::size_t kDepth = 1000;
    {
        std::vector<std::unique_ptr<BexQorTraceStep>> steps;
        for (std::size_t i = 0; i < kDepth; ++i) {
            steps.push_back(std::make_unique<BexQorTraceStep>(channel, "step"));
        }
        while (!steps.empty()) {
            steps.pop_back();
        }
    }
    ASSERT_THAT(sink.Calls(), SizeIs(2 * kDepth));
    for (std::size_t i = 0; i < kDepth; ++i) {
        EXPECT_EQ(sink.Calls()[i].text, std::string(2 * i, ' ') + ">> step\n");
        EXPECT_EQ(sink.Calls()[2 * kDepth - 1 - i].text, std::string(2 * i, ' ') + "<< step\n");
    }
}

TEST_F(TraceStep, ClosesWhenAnExceptionPassesThrough) {
    try {
        BexQorTraceStep step(channel, "step");
        step << "half a line";
        throw 1;
    } catch (int) {
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  half a line\n", "<< step\n"));
}

struct OperandCase {
    const char* name;
    std::function<void(BexQorTraceStep&)> write;
    std::string text;
};

void PrintTo(const OperandCase& iCase, std::ostream* ioStream) {
    *ioStream << iCase.name;
}

class TraceOperand : public testing::TestWithParam<OperandCase> {};

TEST_P(TraceOperand, IsWrittenBetweenItsNeighbours) {
    BexQorTrace channel("StepA", "", "STDOUT", 1024);
    BexQorTrace::SetOn("StepA", 1);
    RecordingSink sink;
    {
        BexQorTraceStep step(channel, "step");
        step << "[";
        GetParam().write(step);
        step << "]" << std::endl;
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  [" + GetParam().text + "]\n", "<< step\n"));
}

using Step = BexQorTraceStep;

const std::vector<OperandCase> kOperands = {
    {"Literal", [](Step& ioStep) { ioStep << "text"; }, "text"},
    {"EmptyLiteral", [](Step& ioStep) { ioStep << ""; }, ""},
    {"NullPointer", [](Step& ioStep) { ioStep << static_cast<const char*>(nullptr); }, ""},
    {"CharArray",
     [](Step& ioStep) {
         char text[] = "array";
         ioStep << text;
     },
     "array"},
    {"HighBytes", [](Step& ioStep) { ioStep << "\xE4\xF6\xFC\x80\xFF"; }, "\xE4\xF6\xFC\x80\xFF"},
    {"PercentSigns", [](Step& ioStep) { ioStep << "%s%n%d%%"; }, "%s%n%d%%"},
    {"Tab", [](Step& ioStep) { ioStep << "a\tb"; }, "a\tb"},
    {"StdString", [](Step& ioStep) { ioStep << std::string("std string"); }, "std string"},
    {"StringView", [](Step& ioStep) { ioStep << std::string_view("viewed part", 6); }, "viewed"},
    {"StringViewWithNul", [](Step& ioStep) { ioStep << std::string_view("a\0b", 3); }, std::string("a\0b", 3)},
    {"Utf16View", [](Step& ioStep) { ioStep << std::u16string_view(u"utf-16"); }, "utf-16"},
    {"Utf16Latin", [](Step& ioStep) { ioStep << std::u16string_view(u"\u00E4\u00FF"); }, "\xE4\xFF"},
    {"Utf16Wide", [](Step& ioStep) { ioStep << std::u16string_view(u"a\u0100\u20ACz"); }, "a??z"},
    {"Utf16SurrogatePair", [](Step& ioStep) { ioStep << std::u16string_view(u"\U0001F600"); }, "??"},
    {"String", [](Step& ioStep) { ioStep << BexUnicodeString("framework string"); }, "framework string"},
    {"NullString", [](Step& ioStep) { ioStep << BexUnicodeString(); }, ""},
    {"EmptyString", [](Step& ioStep) { ioStep << BexUnicodeString(""); }, ""},
    {"LatinString", [](Step& ioStep) { ioStep << BexUnicodeString("\xE4\xFF"); }, "\xE4\xFF"},
    {"WideString", [](Step& ioStep) { ioStep << BexUnicodeString(u"a\u0100z", 3); }, "a?z"},
    {"StringWithNul", [](Step& ioStep) { ioStep << BexUnicodeString("a\0b", 3); }, std::string("a\0b", 3)},
    {"Character", [](Step& ioStep) { ioStep << 'c'; }, "c"},
    {"HighCharacter", [](Step& ioStep) { ioStep << '\xE4'; }, "\xE4"},
    {"NulCharacter", [](Step& ioStep) { ioStep << '\0'; }, std::string(1, '\0')},
    {"Zero", [](Step& ioStep) { ioStep << 0; }, "0"},
    {"Int", [](Step& ioStep) { ioStep << -17; }, "-17"},
    {"IntMax", [](Step& ioStep) { ioStep << INT_MAX; }, std::to_string(INT_MAX)},
    {"IntMin", [](Step& ioStep) { ioStep << INT_MIN; }, std::to_string(INT_MIN)},
    {"UnsignedMax", [](Step& ioStep) { ioStep << UINT_MAX; }, std::to_string(UINT_MAX)},
    {"LongMax", [](Step& ioStep) { ioStep << LONG_MAX; }, std::to_string(LONG_MAX)},
    {"LongMin", [](Step& ioStep) { ioStep << LONG_MIN; }, std::to_string(LONG_MIN)},
    {"UnsignedLongMax", [](Step& ioStep) { ioStep << ULONG_MAX; }, std::to_string(ULONG_MAX)},
    {"Short", [](Step& ioStep) { ioStep << static_cast<short>(-32768); }, "-32768"},
    {"FailureCode", [](Step& ioStep) { ioStep << static_cast<int>(0x80004005U); }, "-2147467259"},
};

INSTANTIATE_TEST_SUITE_P(BexQorTraceStep, TraceOperand, testing::ValuesIn(kOperands),
                         [](const testing::TestParamInfo<OperandCase>& iInfo) {
                             return std::string(iInfo.param.name);
                         });

TEST(TraceOperands, EveryByteButTheLineFeedPassesUnchanged) {
    BexQorTrace channel("StepA", "", "STDOUT", 0);
    BexQorTrace::SetOn("StepA", 1);
    for (int byte = 0; byte < 256; ++byte) {
        if (byte == '\n') {
            continue;
        }
        const std::string text(1, static_cast<char>(byte));
        RecordingSink sink;
        {
            BexQorTraceStep step(channel, "step");
            step << text << '|' << text[0] << '|' << BexUnicodeString(text.data(), 1) << std::endl;
        }
        ASSERT_THAT(sink.Calls(), SizeIs(3)) << byte;
        EXPECT_EQ(sink.Calls()[1].text, "  " + text + "|" + text + "|" + text + "\n") << byte;
    }
}

TEST_F(TraceStep, SendsALineWhenItIsEndedNotBefore) {
    BexQorTraceStep step(channel, "step");
    step << "Read property [" << BexUnicodeString("key") << "] " << 3;
    EXPECT_THAT(sink.Calls(), SizeIs(1));
    step << std::endl;
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  Read property [key] 3\n"));
}

TEST_F(TraceStep, SendsOneCallForEachLineOfAText) {
    {
        BexQorTraceStep step(channel, "step");
        step << "one\ntwo\nthr"
             << "ee\n";
        EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  one\n", "  two\n", "  three\n"));
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  one\n", "  two\n", "  three\n", "<< step\n"));
}

TEST_F(TraceStep, TakesALineFeedFromEveryKindOfText) {
    {
        BexQorTraceStep step(channel, "step");
        step << "a" << '\n';
        step << BexUnicodeString("b\nc") << std::string("\n");
        step << std::u16string_view(u"d\ne\n");
        step << BexUnicodeString(u"\u0100\nf", 3) << std::endl;
    }
    EXPECT_THAT(sink.Texts(),
                ElementsAre(">> step\n", "  a\n", "  b\n", "  c\n", "  d\n", "  e\n", "  ?\n", "  f\n", "<< step\n"));
}

TEST_F(TraceStep, SendsEmptyLines) {
    {
        BexQorTraceStep step(channel, "step");
        step << std::endl << "\n\n";
    }
    ASSERT_THAT(sink.Calls(), SizeIs(5));
    for (std::size_t i = 1; i <= 3; ++i) {
        std::string text = sink.Calls()[i].text;
        text.erase(0, text.find_first_not_of(' '));
        EXPECT_EQ(text, "\n");
    }
}

TEST_F(TraceStep, AMessageOfNothingIsNoLine) {
    {
        BexQorTraceStep step(channel, "step");
        step << "" << BexUnicodeString() << static_cast<const char*>(nullptr);
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "<< step\n"));
}

TEST_F(TraceStep, SendsAnIncompleteLineWhenItCloses) {
    {
        BexQorTraceStep step(channel, "step");
        step << "whole\nrest";
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  whole\n", "  rest\n", "<< step\n"));
}

TEST_F(TraceStep, SendsAnIncompleteLineWhenAnotherStepOpens) {
    {
        BexQorTraceStep outer(channel, "outer");
        outer << "begun";
        { const BexQorTraceStep inner(channel, "inner"); }
        outer << "goes on" << std::endl;
    }
    EXPECT_THAT(sink.Texts(),
                ElementsAre(">> outer\n", "  begun\n", "  >> inner\n", "  << inner\n", "  goes on\n", "<< outer\n"));
}

TEST_F(TraceStep, SendsAnIncompleteLineWhenAStepOfAnotherChannelOpens) {
    BexQorTrace other("StepB", "", "STDOUT", 0);
    BexQorTrace::SetOn("StepB", 1);
    {
        BexQorTraceStep outer(channel, "outer");
        outer << "begun";
        { const BexQorTraceStep inner(other, "inner"); }
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> outer\n", "  begun\n", "  >> inner\n", "  << inner\n", "<< outer\n"));
    EXPECT_EQ(sink.Calls()[1].channel, "StepA");
    EXPECT_EQ(sink.Calls()[2].channel, "StepB");
}

TEST_F(TraceStep, OffWritesNothing) {
    BexQorTrace::SetOn("StepA", 0);
    {
        BexQorTraceStep step(channel, "step");
        EXPECT_EQ(step.IsOn(), 0);
        step << "text" << BexUnicodeString(u"\u0100", 1) << 1 << 2U << 3L << 4UL << 'c' << std::string("s")
             << std::u16string_view(u"u") << std::endl;
    }
    EXPECT_THAT(sink.Calls(), IsEmpty());
}

TEST_F(TraceStep, OffDoesNotIndentTheStepsInside) {
    BexQorTrace off("StepOff", "", "STDOUT", 0);
    {
        const BexQorTraceStep outer(off, "outer");
        BexQorTraceStep inner(channel, "inner");
        inner << "message" << std::endl;
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> inner\n", "  message\n", "<< inner\n"));
}

TEST_F(TraceStep, OpenedOnGoesOnWhenTheChannelIsTurnedOff) {
    {
        BexQorTraceStep step(channel, "step");
        BexQorTrace::SetOn("StepA", 0);
        EXPECT_EQ(step.IsOn(), 0);
        step << "message" << std::endl;
        const BexQorTraceStep inner(channel, "inner");
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "  message\n", "<< step\n"));
}

TEST_F(TraceStep, OpenedOffStaysSilentWhenTheChannelIsTurnedOn) {
    BexQorTrace::SetOn("StepA", 0);
    {
        BexQorTraceStep step(channel, "step");
        BexQorTrace::SetOn("StepA", 1);
        EXPECT_EQ(step.IsOn(), 1);
        step << "message" << std::endl;
        const BexQorTraceStep inner(channel, "inner");
    }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> inner\n", "<< inner\n"));
}

TEST_F(TraceStep, IndentationRecoversAfterAChannelWasTurnedOffInTheMiddle) {
    {
        const BexQorTraceStep step(channel, "step");
        BexQorTrace::SetOn("StepA", 0);
    }
    BexQorTrace::SetOn("StepA", 1);
    { const BexQorTraceStep next(channel, "next"); }
    EXPECT_THAT(sink.Texts(), ElementsAre(">> step\n", "<< step\n", ">> next\n", "<< next\n"));
}

}  // namespace
