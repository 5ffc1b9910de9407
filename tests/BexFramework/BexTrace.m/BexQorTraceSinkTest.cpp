#include "RecordingSink.h"

#include <BexQorTrace.h>
#include <BexQorTraceStep.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kLines = ">> step\n  message\n<< step\n";

void TraceOneStep(BexQorTrace& ioChannel) {
    BexQorTraceStep step(ioChannel, "step");
    step << "message" << std::endl;
}

class TraceSink : public testing::Test {
protected:
    TraceSink() {
        BexQorTrace::SetOn("SinkOut", 1);
        BexQorTrace::SetOn("SinkErr", 1);
    }
    ~TraceSink() override { BexQorTrace::SetSink(nullptr, nullptr); }

    BexQorTrace out{"SinkOut", "", "STDOUT", 1024};
    BexQorTrace err{"SinkErr", "", "STDERR", 1024};
};

/** What arrives at the two descriptors while it lives. */
class CapturedDescriptors {
public:
    CapturedDescriptors() {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }
    std::vector<std::string> Texts() {
        std::cout.flush();
        std::string text = testing::internal::GetCapturedStdout();
        return {text, testing::internal::GetCapturedStderr()};
    }
};

TEST_F(TraceSink, StdoutIsStandardOutput) {
    CapturedDescriptors captured;
    TraceOneStep(out);
    EXPECT_THAT(captured.Texts(), ElementsAre(kLines, ""));
}

TEST_F(TraceSink, StderrIsStandardError) {
    CapturedDescriptors captured;
    TraceOneStep(err);
    EXPECT_THAT(captured.Texts(), ElementsAre("", kLines));
}

TEST_F(TraceSink, AnotherNameOrNoneWritesNowhere) {
    for (const char* name : {static_cast<const char*>(nullptr), "", "STDOUT ", "stdout", "/dev/stdout", "1"}) {
        BexQorTrace channel("SinkElsewhere", "", name, 1024);
        BexQorTrace::SetOn("SinkElsewhere", 1);
        CapturedDescriptors captured;
        TraceOneStep(channel);
        EXPECT_THAT(captured.Texts(), ElementsAre("", "")) << (name != nullptr ? name : "(null)");
    }
}

TEST_F(TraceSink, StandardOutputKeepsTheOrderOfTraceAndProgram) {
    CapturedDescriptors captured;
    std::cout << "first\n";
    TraceOneStep(out);
    std::cout << "last\n";
    EXPECT_THAT(captured.Texts(), ElementsAre(std::string("first\n") + kLines + "last\n", ""));
}

TEST_F(TraceSink, SetSinkTakesTheLinesOfEveryChannelFromTheNamedSinks) {
    BexQorTrace nowhere("SinkElsewhere", "", "", 0);
    BexQorTrace::SetOn("SinkElsewhere", 1);
    CapturedDescriptors captured;
    {
        const RecordingSink sink;
        TraceOneStep(out);
        TraceOneStep(err);
        TraceOneStep(nowhere);
        std::string text;
        for (const RecordingSink::Call& call : sink.Calls()) {
            text += call.channel + ":" + call.text;
        }
        EXPECT_EQ(text,
                  "SinkOut:>> step\nSinkOut:  message\nSinkOut:<< step\n"
                  "SinkErr:>> step\nSinkErr:  message\nSinkErr:<< step\n"
                  "SinkElsewhere:>> step\nSinkElsewhere:  message\nSinkElsewhere:<< step\n");
    }
    EXPECT_THAT(captured.Texts(), ElementsAre("", ""));
}

TEST_F(TraceSink, NullRestoresTheNamedSinks) {
    CapturedDescriptors captured;
    {
        const RecordingSink sink;
        TraceOneStep(out);
    }
    TraceOneStep(out);
    TraceOneStep(err);
    EXPECT_THAT(captured.Texts(), ElementsAre(kLines, kLines));
}

TEST_F(TraceSink, NullWhereNoSinkWasSetChangesNothing) {
    BexQorTrace::SetSink(nullptr, this);
    CapturedDescriptors captured;
    TraceOneStep(out);
    EXPECT_THAT(captured.Texts(), ElementsAre(kLines, ""));
}

void KeepData(const char* /*iChannel*/, const char* /*iText*/, int /*iLength*/, void* iData) {
    static_cast<std::vector<void*>*>(iData)->push_back(iData);
}

TEST_F(TraceSink, EveryCallGetsTheDataItWasSetWith) {
    std::vector<void*> first;
    std::vector<void*> second;
    BexQorTrace::SetSink(&KeepData, &first);
    TraceOneStep(out);
    BexQorTrace::SetSink(&KeepData, &second);
    TraceOneStep(out);
    EXPECT_THAT(first, ElementsAre(&first, &first, &first));
    EXPECT_THAT(second, ElementsAre(&second, &second, &second));
}

int nullDataCalls = 0;

TEST_F(TraceSink, ANullDataPointerIsHandedOnAsItIs) {
    nullDataCalls = 0;
    BexQorTrace::SetSink(
        [](const char*, const char*, int, void* iData) { nullDataCalls += iData == nullptr ? 1 : 100; }, nullptr);
    TraceOneStep(out);
    EXPECT_EQ(nullDataCalls, 3);
}

TEST_F(TraceSink, MayChangeInTheMiddleOfAStep) {
    CapturedDescriptors captured;
    {
        BexQorTraceStep step(out, "step");
        const RecordingSink sink;
        step << "message" << std::endl;
        EXPECT_THAT(sink.Texts(), ElementsAre("  message\n"));
    }
    EXPECT_THAT(captured.Texts(), ElementsAre(">> step\n<< step\n", ""));
}

/** A sink that does something to the trace while it is called, and counts its calls. */
struct MeddlingSink {
    BexQorTrace* channel = nullptr;
    std::vector<std::string> texts;
    void (*meddle)(MeddlingSink& ioSelf) = nullptr;
    bool meddlesFirst = false;  ///< looks at the text only afterwards

    static void Take(const char* /*iChannel*/, const char* iText, int iLength, void* iData) {
        auto& self = *static_cast<MeddlingSink*>(iData);
        if (self.meddlesFirst) {
            self.meddle(self);
            self.texts.emplace_back(iText, static_cast<std::size_t>(iLength));
            return;
        }
        self.texts.emplace_back(iText, static_cast<std::size_t>(iLength));
        if (self.texts.size() < 100) {
            self.meddle(self);
        }
    }
};

TEST_F(TraceSink, WhatItTracesItselfIsDropped) {
    MeddlingSink sink{&out, {}, [](MeddlingSink& ioSelf) {
                          BexQorTraceStep step(*ioSelf.channel, "in the sink");
                          step << "own message" << std::endl << "rest";
                      }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    TraceOneStep(out);
    EXPECT_THAT(sink.texts, ElementsAre(">> step\n", "  message\n", "<< step\n"));
    TraceOneStep(out);
    EXPECT_EQ(sink.texts.size(), 6U);
}

TEST_F(TraceSink, WhatItTracesOnAnotherChannelIsDroppedToo) {
    MeddlingSink sink{&err, {}, [](MeddlingSink& ioSelf) { TraceOneStep(*ioSelf.channel); }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    CapturedDescriptors captured;
    TraceOneStep(out);
    EXPECT_THAT(captured.Texts(), ElementsAre("", ""));
    EXPECT_THAT(sink.texts, ElementsAre(">> step\n", "  message\n", "<< step\n"));
}

TEST_F(TraceSink, TextStaysAsItIsWhileTheSinkTraces) {
    for (const std::size_t length : {1U, 7U, 15U, 16U, 30U, 1000U, 5000U}) {
        const std::string message(length, 'm');
        MeddlingSink sink{&out, {}, [](MeddlingSink& ioSelf) { TraceOneStep(*ioSelf.channel); }};
        sink.meddlesFirst = true;
        BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
        {
            BexQorTraceStep step(out, "step");
            step << message << std::endl << message;
        }
        EXPECT_THAT(sink.texts, ElementsAre(">> step\n", "  " + message + "\n", "  " + message + "\n", "<< step\n"));
    }
}

BexQorTraceStep* stepInWork = nullptr;

TEST_F(TraceSink, WhatItAddsToTheStepInWorkIsDropped) {
    MeddlingSink sink{&out, {}, [](MeddlingSink&) {
                          if (stepInWork != nullptr) {
                              *stepInWork << "own message" << std::endl << "rest";
                          }
                      }};
    sink.meddlesFirst = true;
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    {
        BexQorTraceStep step(out, "step");
        stepInWork = &step;
        step << "a first message" << std::endl
             << "2" << std::endl
             << "a third message, which is longer than the others";
        stepInWork = nullptr;
    }
    EXPECT_THAT(sink.texts, ElementsAre(">> step\n", "  a first message\n", "  2\n",
                                        "  a third message, which is longer than the others\n", "<< step\n"));
}

TEST_F(TraceSink, WhatItTracesTakesNothingFromTheLinesOfOtherSteps) {
    MeddlingSink sink{&err, {}, [](MeddlingSink& ioSelf) { TraceOneStep(*ioSelf.channel); }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    BexQorTraceStep outer(out, "outer");
    BexQorTraceStep inner(out, "inner");
    inner << "begun ";
    outer << "a line" << std::endl;
    inner << "and ended" << std::endl;
    EXPECT_THAT(sink.texts, ElementsAre(">> outer\n", "  >> inner\n", "  a line\n", "    begun and ended\n"));
}

TEST_F(TraceSink, WhatItAddsToAnotherStepIsDropped) {
    MeddlingSink sink{&out, {}, [](MeddlingSink&) {
                          if (stepInWork != nullptr) {
                              *stepInWork << "own text" << 'c' << 4711 << 2.5 << std::u16string_view(u"\u0161");
                          }
                      }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    {
        BexQorTraceStep outer(out, "outer");
        BexQorTraceStep inner(out, "inner");
        stepInWork = &outer;
        inner << "one" << std::endl << "two" << std::endl;
        stepInWork = nullptr;
        outer << "three" << std::endl;
    }
    EXPECT_THAT(sink.texts, ElementsAre(">> outer\n", "  >> inner\n", "    one\n", "    two\n", "  three\n",
                                        "  << inner\n", "<< outer\n"));
}

TEST_F(TraceSink, MayTurnChannelsOnAndOff) {
    MeddlingSink sink{&out, {}, [](MeddlingSink&) { EXPECT_EQ(BexQorTrace::SetOn("SinkOut", 0), 1); }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    TraceOneStep(out);
    TraceOneStep(out);
    EXPECT_THAT(sink.texts, ElementsAre(">> step\n", "  message\n", "<< step\n"));
}

TEST_F(TraceSink, MayBuildAndDestroyChannels) {
    MeddlingSink sink{&out, {}, [](MeddlingSink&) {
                          const BexQorTrace inside("SinkInside", "", "STDOUT", 0);
                          EXPECT_EQ(BexQorTrace::SetOn("SinkInside", 0), 1);
                      }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    TraceOneStep(out);
    EXPECT_EQ(sink.texts.size(), 3U);
    EXPECT_EQ(BexQorTrace::SetOn("SinkInside", 0), 0);
}

TEST_F(TraceSink, MayTakeItselfAway) {
    MeddlingSink sink{&out, {}, [](MeddlingSink&) { BexQorTrace::SetSink(nullptr, nullptr); }};
    BexQorTrace::SetSink(&MeddlingSink::Take, &sink);
    CapturedDescriptors captured;
    TraceOneStep(out);
    EXPECT_THAT(sink.texts, ElementsAre(">> step\n"));
    EXPECT_THAT(captured.Texts(), ElementsAre("  message\n<< step\n", ""));
}

struct ThrowingCase {
    const char* name;
    void (*raise)();
};

class ThrowingSink : public testing::TestWithParam<ThrowingCase> {
protected:
    ~ThrowingSink() override { BexQorTrace::SetSink(nullptr, nullptr); }
    static void Take(const char* /*iChannel*/, const char* iText, int iLength, void* iData) {
        static_cast<std::vector<std::string>*>(iData)->emplace_back(iText, static_cast<std::size_t>(iLength));
        GetParam().raise();
    }
};

TEST_P(ThrowingSink, NeverReachesTheCallerNorStopsTheTrace) {
    BexQorTrace channel("SinkThrow", "", "STDOUT", 0);
    BexQorTrace::SetOn("SinkThrow", 1);
    std::vector<std::string> texts;
    BexQorTrace::SetSink(&ThrowingSink::Take, &texts);
    for (int round = 0; round < 2; ++round) {
        EXPECT_NO_THROW({
            BexQorTraceStep outer(channel, "outer");
            outer << "one\ntwo" << std::endl << "begun";
            BexQorTraceStep inner(channel, "inner");
            inner << 'c' << '\n' << BexUnicodeString("left over");
        });
    }
    const std::vector<std::string> one = {">> outer\n", "  one\n",         "  two\n",      "  begun\n", "  >> inner\n",
                                          "    c\n",    "    left over\n", "  << inner\n", "<< outer\n"};
    std::vector<std::string> both = one;
    both.insert(both.end(), one.begin(), one.end());
    EXPECT_EQ(texts, both);
}

INSTANTIATE_TEST_SUITE_P(BexQorTrace, ThrowingSink,
                         testing::Values(ThrowingCase{"Exception", [] { throw std::runtime_error("full"); }},
                                         ThrowingCase{"Number", [] { throw 1; }},
                                         ThrowingCase{"BadAlloc", [] { throw std::bad_alloc(); }}),
                         [](const testing::TestParamInfo<ThrowingCase>& iInfo) {
                             return std::string(iInfo.param.name);
                         });

}  // namespace
