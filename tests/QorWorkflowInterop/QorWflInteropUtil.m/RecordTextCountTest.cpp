#include "AllocationWatch.h"
#include "NaiveRecordReader.h"
#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <sstream>
#include <string>

namespace {

using RecordTesting::FillSample;
using RecordTesting::ForwardOnlyBuffer;
using RecordTesting::kSampleText;
using RecordTesting::ToText;
using testing::IsNull;

/** A stream over a text, with or without going back. */
class Source {
public:
    Source(const std::string& iText, bool iSeekable)
        : seekable(iText),
          forwardOnly(iText, 4096),
          stream(iSeekable ? static_cast<std::streambuf*>(&seekable) : &forwardOnly) {}

    std::istream& Stream() { return stream; }

private:
    std::stringbuf seekable;
    ForwardOnlyBuffer forwardOnly;
    std::istream stream;
};

struct CountLine {
    const char* sampleLine;
    const char* label;
    int list;  ///< 0 datas, 1 inputs, 2 outputs
};

const CountLine kCountLines[] = {{"process.datas.length=2;", "process.datas.length=", 0},
                                 {"inputs.length=2;", "inputs.length=", 1},
                                 {"outputs.length=2;", "outputs.length=", 2}};

std::string SampleWithCount(const CountLine& iLine, const std::string& iCount) {
    std::string text = kSampleText;
    const std::string old = iLine.sampleLine;
    return text.replace(text.find(old), old.size(), iLine.label + iCount + ";");
}

int CountOf(const ActivityInfo& iActivity, int iList) {
    const int counts[] = {iActivity.process.dataNumber, iActivity.inputNumber, iActivity.outputNumber};
    return counts[iList];
}

const void* ArrayOf(const ActivityInfo& iActivity, int iList) {
    const void* const arrays[] = {iActivity.process.datas, iActivity.inputs, iActivity.outputs};
    return arrays[iList];
}

void ExpectEmptyFrom(const ActivityInfo& iActivity, int iFirstList) {
    for (int list = 0; list < 3; ++list) {
        EXPECT_EQ(CountOf(iActivity, list), list < iFirstList ? 2 : 0) << list;
        EXPECT_EQ(ArrayOf(iActivity, list) == nullptr, list >= iFirstList) << list;
    }
}

TEST(RecordTextCount, CountThatTheTextCannotHoldFailsAndLeavesTheListEmpty) {
    for (const CountLine& line : kCountLines) {
        for (const char* count : {"2000000000", "2147483647", "100000000", "1000000"}) {
            for (const bool seekable : {true, false}) {
                SCOPED_TRACE(std::string(line.label) + count + (seekable ? "" : ", no seeking"));
                Source source(SampleWithCount(line, count), seekable);
                ActivityInfo activity;
                FillSample(activity);
                const AllocationWatch::Requests requests;
                source.Stream() >> activity;
                EXPECT_LT(requests.Bytes(), std::size_t{1} << 20) << "memory follows the text, not the count";
                EXPECT_TRUE(source.Stream().fail());
                ExpectEmptyFrom(activity, line.list);
                EXPECT_EQ(activity.process.context, BexUnicodeString("ctx?context=x"));
            }
        }
    }
}

TEST(RecordTextCount, LongValuesDoNotMakeACountCredible) {
    std::string text = SampleWithCount(kCountLines[1], "1000000");
    std::string values;
    for (int value = 0; value < 50; ++value) {
        values += "\nname=\"" + std::string(75, 'v') + "\";";
    }
    text.insert(text.find(";\n", text.find("inputs.length=")) + 1, values);
    std::istringstream stream(text);
    ActivityInfo activity;
    stream >> activity;
    EXPECT_TRUE(stream.fail());
    ExpectEmptyFrom(activity, 1);
}

TEST(RecordTextCount, CountBeyondAnIntFailsAndLeavesTheListEmpty) {
    for (const CountLine& line : kCountLines) {
        for (const char* count : {"2147483648", "-2147483649", "99999999999999999999", "x", ""}) {
            Source source(SampleWithCount(line, count), true);
            ActivityInfo activity;
            FillSample(activity);
            source.Stream() >> activity;
            EXPECT_TRUE(source.Stream().fail()) << line.label << count;
            ExpectEmptyFrom(activity, line.list);
        }
    }
}

TEST(RecordTextCount, NegativeCountIsKeptAndReadingGoesOn) {
    std::string text = ToText(ActivityInfo());
    for (const char* line : {"process.datas.length=0;", "inputs.length=0;", "outputs.length=0;"}) {
        const std::string label(line, std::string(line).find('=') + 1);
        text.replace(text.find(line), std::string(line).size(), label + "-5;");
    }
    for (const bool seekable : {true, false}) {
        Source source(text, seekable);
        ActivityInfo activity;
        FillSample(activity);
        source.Stream() >> activity;
        EXPECT_FALSE(source.Stream().fail());
        for (int list = 0; list < 3; ++list) {
            EXPECT_EQ(CountOf(activity, list), -5) << list;
            EXPECT_THAT(ArrayOf(activity, list), IsNull()) << list;
        }
        EXPECT_EQ(ToText(activity), text);
    }
}

TEST(RecordTextCount, MostNegativeCountIsKept) {
    std::string text = ToText(ActivityInfo());
    text.replace(text.rfind('0'), 1, "-2147483648");
    Source source(text, true);
    ActivityInfo activity;
    source.Stream() >> activity;
    EXPECT_FALSE(source.Stream().fail());
    EXPECT_EQ(activity.outputNumber, INT_MIN);
    EXPECT_THAT(activity.outputs, IsNull());
}

TEST(RecordTextCount, CountAboveTheLinesRunsIntoWhatFollows) {
    for (const CountLine& line : kCountLines) {
        for (const char* count : {"3", "4", "5", "9", "40"}) {
            for (const bool seekable : {true, false}) {
                const std::string text = SampleWithCount(line, count);
                NaiveRecordReader naive(text);
                naive.Read();
                Source source(text, seekable);
                ActivityInfo activity;
                source.Stream() >> activity;
                EXPECT_EQ(RecordContent::Of(activity).Print(), naive.Content().Print()) << line.label << count;
                EXPECT_TRUE(source.Stream().fail()) << line.label << count;
            }
        }
    }
}

TEST(RecordTextCount, CountBelowTheLinesLeavesLinesForWhatFollows) {
    const std::string text = SampleWithCount(kCountLines[2], "1") + "\n";
    Source source(text, true);
    ActivityInfo activity;
    source.Stream() >> activity;
    EXPECT_TRUE(source.Stream().good());
    ASSERT_EQ(activity.outputNumber, 1);
    EXPECT_EQ(activity.outputs[0], BexUnicodeString("D3"));
    std::string rest;
    std::getline(source.Stream(), rest);
    EXPECT_EQ(rest, "outputs.2.name=\"D4\";");
}

TEST(RecordTextCount, ShortestPossibleElementsFitTheirCount) {
    // nothing but quotes and line feeds: the least that an element can be
    const std::string head = ToText(ActivityInfo());
    for (const bool seekable : {true, false}) {
        std::string text = head.substr(0, head.find("inputs.length"));
        text += "=1000;\n";
        for (int i = 0; i < 1000; ++i) {
            text += "\"\"\n";
        }
        text += "=2;\n\"\"\n\"\"";
        Source source(text, seekable);
        ActivityInfo activity;
        source.Stream() >> activity;
        EXPECT_FALSE(source.Stream().fail());
        EXPECT_EQ(activity.inputNumber, 1000);
        EXPECT_EQ(activity.outputNumber, 2);
    }
}

TEST(RecordTextCount, LongListsAreReadWhole) {
    ActivityInfo written;
    written.process.SetDataNumber(20000);
    written.process.datas[19999].value = "last value";
    written.SetInputNumber(100000);
    for (int i = 0; i < 100000; ++i) {
        written.inputs[i] = std::to_string(i).c_str();
    }
    written.SetOutputNumber(1);
    written.outputs[0] = "end";
    const std::string text = ToText(written);
    for (const bool seekable : {true, false}) {
        Source source(text, seekable);
        ActivityInfo activity;
        source.Stream() >> activity;
        EXPECT_FALSE(source.Stream().fail());
        EXPECT_TRUE(ToText(activity) == text);
    }
}

TEST(RecordTextCount, MemoryThatCannotBeHadFailsTheStream) {
    ActivityInfo written;
    FillSample(written);
    for (int list = 0; list < 3; ++list) {
        const int count = list == 0 ? 3000 : 12000;  // the arrays of either element have the same size or more
        ActivityInfo big;
        FillSample(big);
        if (list == 0) {
            big.process.SetDataNumber(count);
        } else if (list == 1) {
            big.SetInputNumber(count);
        } else {
            big.SetOutputNumber(count);
        }
        const std::string text = ToText(big);
        for (const bool seekable : {true, false}) {
            SCOPED_TRACE(list);
            Source source(text, seekable);
            auto activity = std::make_unique<ActivityInfo>();
            FillSample(*activity);
            {
                const AllocationWatch::FailingArrays failing(
                    std::min(3000 * sizeof(DataInfo), 12000 * sizeof(BexUnicodeString)));
                EXPECT_NO_THROW(source.Stream() >> *activity);
            }
            EXPECT_TRUE(source.Stream().fail());
            ExpectEmptyFrom(*activity, list);
        }
    }
}

TEST(RecordTextCount, MemoryThatCannotBeHadThrowsOnlyWhenTheStreamAsksForIt) {
    ActivityInfo big;
    big.SetOutputNumber(12000);
    std::istringstream stream(ToText(big));
    stream.exceptions(std::ios_base::failbit);
    ActivityInfo activity;
    const AllocationWatch::FailingArrays failing(12000 * sizeof(BexUnicodeString));
    EXPECT_THROW(stream >> activity, std::ios_base::failure);
    EXPECT_EQ(activity.outputNumber, 0);
    EXPECT_THAT(activity.outputs, IsNull());
}

TEST(RecordTextCount, ReadingAgainReleasesTheListsOfBefore) {
    const long before = AllocationWatch::LiveArrays();
    {
        ActivityInfo activity;
        for (int round = 0; round < 3; ++round) {
            std::istringstream stream(kSampleText);
            stream >> activity;
            EXPECT_EQ(AllocationWatch::LiveArrays(), before + 3);
        }
    }
    EXPECT_EQ(AllocationWatch::LiveArrays(), before);
}

}  // namespace
