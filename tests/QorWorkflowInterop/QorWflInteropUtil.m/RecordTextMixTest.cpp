#include "ActivityFields.h"
#include "NaiveRecordReader.h"
#include "NaiveRecordWriter.h"
#include "RandomActivity.h"
#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <RunOnThreads.h>
#include <locale>
#include <sstream>
#include <string>
#include <vector>

namespace {

using RecordTesting::FillSample;
using RecordTesting::FlushRecorder;
using RecordTesting::kSampleText;
using RecordTesting::LeavePrefixOfOutputs;
using RecordTesting::ToText;

const std::vector<BexUnicodeString> kWritten = {"x",
                                                "two words",
                                                "quote\"s\"",
                                                "line\nfeed\n",
                                                "caf\xE9 \xFF",
                                                ";=\"\n",
                                                BexUnicodeString("a\0b", 3),
                                                BexUnicodeString(std::string(300, 'l').c_str())};

/** Texts that the form can carry. */
const std::vector<BexUnicodeString> kCarried = {
    "x", " blanks ", "line\nfeed\n", "caf\xE9 \xFF", ";=", "\t\r", BexUnicodeString(std::string(79, 'l').c_str())};

/** A text, the places of its flushes and the prefix behind it, as the library writes a record. */
template <typename Record>
void ExpectWrittenAsNaively(const Record& iRecord, const std::string& iPrefix) {
    NaiveRecordWriter naive(iPrefix);
    naive.Write(iRecord);
    FlushRecorder buffer;
    std::ostream stream(&buffer);
    stream << iRecord;
    ASSERT_EQ(buffer.str(), naive.Text());
    ASSERT_EQ(buffer.lengthAtFlush, naive.LineEnds()) << naive.Text();
    ASSERT_THAT(ToText(DataInfo()), testing::StartsWith(naive.Prefix() + "name="));
}

}  // namespace

TEST(RecordTextMix, EveryMixOfTextsAndCountsIsWrittenInItsPlaceAndFlushedAtLineEndsOnly) {
    RandomActivity random(20041121, kWritten);
    for (int round = 0; round < 1000; ++round) {
        ActivityInfo activity;
        random.Fill(activity);
        ExpectWrittenAsNaively(activity, "");
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << round;
    }
}

TEST(RecordTextMix, EveryMixOfAProcessOrDataAloneCarriesThePrefixLeftBehind) {
    RandomActivity random(20041122, kWritten);
    for (int round = 0; round < 500; ++round) {
        ActivityInfo activity;
        random.Fill(activity);
        const int outputs = round % 4;
        const std::string prefix = outputs == 0 ? "outputs." : "outputs." + std::to_string(outputs) + ".";
        LeavePrefixOfOutputs(outputs);
        ExpectWrittenAsNaively(activity.process, prefix);
        if (activity.process.dataNumber > 0) {
            ExpectWrittenAsNaively(activity.process.datas[0], prefix);
        }
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << round;
    }
}

TEST(RecordTextMix, DefaultRecordsFlushTheirLineEnds) {
    LeavePrefixOfOutputs(0);
    ExpectWrittenAsNaively(ProcessInfo(), "outputs.");
    ExpectWrittenAsNaively(DataInfo(), "outputs.");
    ExpectWrittenAsNaively(ActivityInfo(), "");
}

TEST(RecordTextMix, EveryMixIsReadBackWithNullAsEmptyAndParticipantKept) {
    RandomActivity random(20041123, kCarried);
    for (int round = 0; round < 1000; ++round) {
        ActivityInfo written;
        random.Fill(written);
        std::istringstream stream(ToText(written));
        ActivityInfo read;
        FillWithOldValues(read);
        switch (round % 3) {
            case 0:
                read.participant.Reset();
                read.participantType = "";
                break;
            case 1:
                read.participant = "";
                read.participantType.Reset();
                break;
            default:
                break;
        }
        const ActivityFields before = FieldsOf(read);
        stream >> read;
        ASSERT_FALSE(stream.fail());
        for (BexUnicodeString* text : AllTextsOf(written)) {
            if (text->IsNull() != 0) {
                *text = "";
            }
        }
        ASSERT_EQ(FieldsOf(read), With(FieldsOf(written), {{"participant", before.at("participant")},
                                                           {"participantType", before.at("participantType")}}))
            << round;
    }
}

TEST(RecordTextMix, TextThatEndsGivesEmptyTextsNotNullOnes) {
    for (const char* text : {"", "id", "id=", "id=\""}) {
        std::istringstream stream(text);
        ActivityInfo activity;
        FillWithOldValues(activity);
        stream >> activity;
        EXPECT_TRUE(stream.fail()) << text;
        ActivityFields expected = OldFields();
        for (auto& [name, value] : expected) {
            if (value.front() == '"') {
                value = "\"\"";
            }
        }
        expected = With(expected, {{"participant", "\"old participant\""},
                                   {"participantType", "\"old participantType\""},
                                   {"generation", "0"},
                                   {"duration", "0"},
                                   {"process.datas", "null"},
                                   {"process.dataNumber", "0"},
                                   {"inputs", "null"},
                                   {"inputNumber", "0"},
                                   {"outputs", "null"},
                                   {"outputNumber", "0"}});
        EXPECT_EQ(FieldsOf(activity), expected) << text;
    }
}

TEST(RecordTextMix, CarriageReturnsAtLineEndsAreSkipped) {
    std::string text;
    for (const char character : kSampleText + "\n") {
        text += character == '\n' ? std::string("\r\n") : std::string(1, character);
    }
    std::istringstream stream(text);
    ActivityInfo activity;
    stream >> activity;
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(ToText(activity), kSampleText);
}

TEST(RecordTextMix, QuotesAndLineFeedsInEveryFieldAreReadAsNaively) {
    RandomActivity random(20041124, {"\"", "a\"b", "\n", "a\nb", "\"\n\"", "\n\"\n", "=1;\n", "x=\"5\";\ny=\"",
                                     BexUnicodeString((std::string(79, 'v') + "\n").c_str()),
                                     BexUnicodeString((std::string(60, 'v') + "\n" + std::string(60, 'w')).c_str())});
    for (int round = 0; round < 1000; ++round) {
        ActivityInfo written;
        random.Fill(written);
        ExpectReadAsNaively(ToText(written) + "\n");
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << ToText(written);
    }
}

TEST(RecordTextMix, SeveralThreadsMayRead) {
    const auto read = ResultsOfThreads<std::string>([] {
        std::string text;
        for (int round = 0; round < 50; ++round) {
            std::istringstream stream(kSampleText);
            ActivityInfo activity;
            stream >> activity;
            text = RecordContent::Of(activity).Print();
        }
        return text;
    });
    ActivityInfo sample;
    FillSample(sample);
    for (const std::string& text : read) {
        EXPECT_EQ(text, RecordContent::Of(sample).Print());
    }
}

TEST(RecordTextMix, NumbersAreDecimalAndUnpaddedWhateverTheStreamIsSetTo) {
    struct Grouping : std::numpunct<char> {
        std::string do_grouping() const override { return "\1"; }
    };
    ActivityInfo activity;
    FillSample(activity);
    activity.SetInputNumber(12);
    activity.duration = 1234567;
    activity.generation = -1234567;
    const std::string text = ToText(activity);
    for (const std::ios_base::fmtflags flags :
         {std::ios_base::hex | std::ios_base::showbase, std::ios_base::oct | std::ios_base::left,
          std::ios_base::dec | std::ios_base::showpos | std::ios_base::internal}) {
        std::ostringstream stream;
        stream.imbue(std::locale(stream.getloc(), new Grouping));
        stream.flags(flags);
        stream.width(20);
        stream.fill('*');
        stream << activity;
        EXPECT_EQ(stream.str(), text);
        EXPECT_EQ(stream.flags(), flags);
    }
}

TEST(RecordTextMix, StreamThatHasFailedLeavesTheSamePrefix) {
    LeavePrefixOfOutputs(5);
    ActivityInfo activity;
    activity.SetOutputNumber(2);
    std::ostringstream stream;
    stream.setstate(std::ios_base::failbit);
    stream << activity;
    EXPECT_THAT(ToText(DataInfo()), testing::StartsWith("outputs.2.name="));
    stream << activity.process;
    EXPECT_THAT(ToText(DataInfo()), testing::StartsWith("outputs.2.name="));
}

TEST(RecordTextMix, NumbersAreReadInTheBaseThatTheStreamIsSetTo) {
    std::istringstream stream(kSampleText);
    stream >> std::hex;
    ActivityInfo activity;
    stream >> activity;
    EXPECT_EQ(activity.duration, 0x12);
    EXPECT_EQ(activity.generation, 0x34);
    EXPECT_EQ(activity.outputNumber, 2);
    EXPECT_EQ(stream.flags() & std::ios_base::basefield, std::ios_base::hex);
}
