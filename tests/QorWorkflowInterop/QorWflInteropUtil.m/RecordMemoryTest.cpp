#include "ActivityFields.h"
#include "AllocationWatch.h"
#include "NaiveXpdlWriter.h"
#include "RecordTesting.h"
#include "XpdlReply.h"

#include <ActivityInfo.h>
#include <QorWflActivityToXml.h>
#include <QorWflInteropInfo.h>
#include <QorWflXmlToActivity.h>
#include <WriteXML.h>

#include <gtest/gtest.h>

#include <XmlText.h>
#include <cstdlib>
#include <iostream>
#include <new>
#include <sstream>
#include <string>

// Each allocation of an operation fails once: the first, in the next round the second, until the operation gets
// through. What has Xerces-C in it runs in a process of its own, because Xerces-C itself does not give back everything
// when it runs out of memory.

namespace {

/** Calls a round with 0, 1, 2 ... until it tells that the operation has fewer allocations. @return how many there are.
 */
template <typename Round>
long FailEachAllocation(Round iRound) {
    long before = 0;
    while (iRound(before) && !testing::Test::HasFailure()) {
        ++before;
    }
    return before;
}

/** What came of an operation. */
struct Outcome {
    bool failureReached = false;
    bool badAlloc = false;
    bool otherException = false;
};

template <typename Operation>
Outcome RunWithFailure(long iBefore, Operation iOperation) {
    Outcome outcome;
    const AllocationWatch::FailingRequest failing(iBefore);
    try {
        iOperation();
    } catch (const std::bad_alloc&) {
        outcome.badAlloc = true;
    } catch (...) {
        outcome.otherException = true;
    }
    outcome.failureReached = failing.Reached();
    return outcome;
}

/** Ends a process of its own, with 0 when nothing has failed in it. */
[[noreturn]] void EndProcess() {
    std::cerr << std::flush;
    std::_Exit(testing::Test::HasFailure() ? 1 : 0);
}

void WriteDocumentWithEachAllocationFailing() {
    ActivityInfo activity;
    FillWithOldValues(activity);
    const std::string expected = NaiveXpdlWriter::DocumentOf(activity);
    BexUnicodeString first;
    QorWflActivityToXml(activity, first);
    const long allocations = FailEachAllocation([&](long iBefore) {
        BexUnicodeString xml("old");
        const Outcome outcome = RunWithFailure(iBefore, [&] { QorWflActivityToXml(activity, xml); });
        EXPECT_FALSE(outcome.otherException) << iBefore;
        EXPECT_EQ(outcome.badAlloc, outcome.failureReached) << iBefore;
        if (outcome.badAlloc) {
            EXPECT_EQ(Shown(xml), "null") << iBefore;
        } else {
            EXPECT_EQ(NaiveXpdlWriter::Masked(xml.ConvertToChar()), expected) << iBefore;
        }
        return outcome.failureReached;
    });
    EXPECT_GT(allocations, 5);
}

void ReadDocumentWithEachAllocationFailing() {
    const BexUnicodeString text(XpdlReply().c_str());
    ActivityInfo first;
    QorWflXmlToActivity(text, first);
    const long allocations = FailEachAllocation([&](long iBefore) {
        ActivityInfo activity;
        FillWithOldValues(activity);
        const Outcome outcome = RunWithFailure(iBefore, [&] { QorWflXmlToActivity(text, activity); });
        EXPECT_FALSE(outcome.badAlloc || outcome.otherException) << iBefore;
        EXPECT_TRUE(outcome.failureReached || FieldsOf(activity) == NewFields()) << iBefore;
        return outcome.failureReached;
    });
    EXPECT_GT(allocations, 5);
}

}  // namespace

TEST(RecordMemory, RecordIsWrittenOrTheStreamIsBad) {
    ActivityInfo activity;
    RecordTesting::FillSample(activity);
    const long allocations = FailEachAllocation([&](long iBefore) {
        std::ostringstream stream;
        const Outcome outcome = RunWithFailure(iBefore, [&] { stream << activity; });
        EXPECT_FALSE(outcome.badAlloc || outcome.otherException) << iBefore;
        EXPECT_EQ(stream.fail(), outcome.failureReached) << iBefore;
        if (!outcome.failureReached) {
            EXPECT_EQ(stream.str(), RecordTesting::kSampleText);
        }
        return outcome.failureReached;
    });
    EXPECT_GT(allocations, 1);
}

TEST(RecordMemory, RecordIsReadOrTheStreamHasFailedAndNoMemoryIsLeft) {
    const long allocations = FailEachAllocation([&](long iBefore) {
        std::istringstream stream(RecordTesting::kSampleText);
        const long blocks = AllocationWatch::LiveBlocks();
        Outcome outcome;
        {
            ActivityInfo activity;
            outcome = RunWithFailure(iBefore, [&] { stream >> activity; });
            EXPECT_FALSE(outcome.badAlloc || outcome.otherException) << iBefore;
            EXPECT_EQ(stream.fail(), outcome.failureReached) << iBefore;
            for (const int count : {activity.process.dataNumber, activity.inputNumber, activity.outputNumber}) {
                EXPECT_TRUE(count == 0 || count == 2) << iBefore;
            }
            EXPECT_EQ(activity.process.datas == nullptr, activity.process.dataNumber == 0) << iBefore;
            EXPECT_EQ(activity.inputs == nullptr, activity.inputNumber == 0) << iBefore;
            EXPECT_EQ(activity.outputs == nullptr, activity.outputNumber == 0) << iBefore;
        }
        EXPECT_EQ(AllocationWatch::LiveBlocks(), blocks) << iBefore;
        return outcome.failureReached;
    });
    EXPECT_GT(allocations, 3);
}

TEST(RecordMemory, TreeIsWrittenOrBadAllocIsThrownAndNoMemoryIsLeft) {
    DOM_Document document = Parsed("<r a='&lt;'>" + std::string(3000, 'x') + "<b/></r>");
    DOM_Node node = document;
    DOMString whole;
    EXPECT_EQ(WriteXML(node, whole), 0);
    const long allocations = FailEachAllocation([&](long iBefore) {
        const long blocks = AllocationWatch::LiveBlocks();
        Outcome outcome;
        {
            DOMString out;
            outcome = RunWithFailure(iBefore, [&] { EXPECT_EQ(WriteXML(node, out), 0); });
            EXPECT_FALSE(outcome.otherException) << iBefore;
            EXPECT_EQ(outcome.badAlloc, outcome.failureReached) << iBefore;
            EXPECT_TRUE(outcome.badAlloc || out == whole) << iBefore;
        }
        EXPECT_EQ(AllocationWatch::LiveBlocks(), blocks) << iBefore;
        return outcome.failureReached;
    });
    EXPECT_GT(allocations, 0);
}

TEST(RecordMemoryDeathTest, DocumentIsWrittenOrBadAllocIsThrownAndTheTextIsNull) {
    EXPECT_EXIT(
        {
            WriteDocumentWithEachAllocationFailing();
            EndProcess();
        },
        testing::ExitedWithCode(0), "");
}

TEST(RecordMemoryDeathTest, DocumentIsReadAsFarAsMemoryGoesAndNothingIsThrown) {
    EXPECT_EXIT(
        {
            ReadDocumentWithEachAllocationFailing();
            EndProcess();
        },
        testing::ExitedWithCode(0), "");
}
