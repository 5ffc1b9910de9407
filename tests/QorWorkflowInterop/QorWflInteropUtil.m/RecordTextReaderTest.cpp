#include "NaiveRecordReader.h"
#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <TemporaryDirectory.h>
#include <array>
#include <climits>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

namespace {

using RecordTesting::FillSample;
using RecordTesting::ForwardOnlyBuffer;
using RecordTesting::kSampleText;
using RecordTesting::LeavePrefixOfOutputs;
using RecordTesting::ToText;
using testing::IsNull;

std::string RestOf(std::istream& ioStream) {
    ioStream.clear();
    return std::string(std::istreambuf_iterator<char>(ioStream), std::istreambuf_iterator<char>());
}

/** A text with @p iId in place of the first value of the sample. */
std::string SampleWithId(const std::string& iId) {
    return "id=\"" + iId + "\";\n" + kSampleText.substr(9);
}

std::string ReadPrinted(const std::string& iText) {
    std::istringstream stream(iText);
    ActivityInfo activity;
    stream >> activity;
    return RecordContent::Of(activity).Print();
}

std::string SamplePrinted(const std::string& iId) {
    ActivityInfo activity;
    FillSample(activity);
    activity.id = iId.c_str();
    return RecordContent::Of(activity).Print();
}

TEST(RecordTextReader, TakesEveryFieldFromItsPlace) {
    std::istringstream stream(kSampleText);
    ActivityInfo activity;
    stream >> activity;
    EXPECT_FALSE(stream.fail());
    EXPECT_EQ(activity.id, BexUnicodeString("A1"));
    EXPECT_EQ(activity.name, BexUnicodeString("Design review"));
    EXPECT_EQ(activity.abstract, BexUnicodeString("Check the wing"));
    EXPECT_EQ(activity.priority, BexUnicodeString("high"));
    EXPECT_EQ(activity.extid, BexUnicodeString("LumenUID://Legacy+QOR1/default/A1.ACTION"));
    EXPECT_EQ(activity.status, BexUnicodeString("RUN"));
    EXPECT_EQ(activity.duration, 12L);
    EXPECT_EQ(activity.durationUnit, BexUnicodeString("D"));
    EXPECT_EQ(activity.owner, BexUnicodeString("smith"));
    EXPECT_EQ(activity.documentation, BexUnicodeString("see drawing"));
    EXPECT_EQ(activity.generation, 34);
    EXPECT_EQ(activity.process.id, BexUnicodeString("P7"));
    EXPECT_EQ(activity.process.name, BexUnicodeString("Release"));
    EXPECT_EQ(activity.process.context, BexUnicodeString("ctx?context=x"));
    ASSERT_EQ(activity.process.dataNumber, 2);
    EXPECT_EQ(activity.process.datas[0].name, BexUnicodeString("D1"));
    EXPECT_EQ(activity.process.datas[0].type, BexUnicodeString("Part"));
    EXPECT_EQ(activity.process.datas[1].extid, BexUnicodeString("url2"));
    EXPECT_EQ(activity.process.datas[1].value, BexUnicodeString("v2"));
    ASSERT_EQ(activity.inputNumber, 2);
    EXPECT_EQ(activity.inputs[0], BexUnicodeString("D1"));
    EXPECT_EQ(activity.inputs[1], BexUnicodeString("D2"));
    ASSERT_EQ(activity.outputNumber, 2);
    EXPECT_EQ(activity.outputs[0], BexUnicodeString("D3"));
    EXPECT_EQ(activity.outputs[1], BexUnicodeString("D4"));
}

TEST(RecordTextReader, ParticipantKeepsWhatItHeld) {
    std::istringstream stream(kSampleText);
    ActivityInfo activity;
    activity.participant = "kept";
    activity.participantType = "ROLE";
    stream >> activity;
    EXPECT_EQ(activity.participant, BexUnicodeString("kept"));
    EXPECT_EQ(activity.participantType, BexUnicodeString("ROLE"));
}

TEST(RecordTextReader, ReplacesEverythingElseThatARecordHeld) {
    ActivityInfo activity;
    FillSample(activity);
    std::istringstream stream(ToText(ActivityInfo()));
    stream >> activity;
    EXPECT_FALSE(stream.fail());
    EXPECT_EQ(RecordContent::Of(activity).Print(), RecordContent::Of(ActivityInfo()).Print());
    EXPECT_THAT(activity.process.datas, IsNull());
    EXPECT_THAT(activity.inputs, IsNull());
    EXPECT_THAT(activity.outputs, IsNull());
}

TEST(RecordTextReader, EmptyValuesNeitherFailNorStop) {
    std::istringstream stream(ToText(ActivityInfo()));
    ActivityInfo activity;
    activity.generation = 99;
    stream >> activity;
    EXPECT_FALSE(stream.fail());
    EXPECT_EQ(activity.generation, 1);
    for (const BexUnicodeString* text :
         {&activity.id, &activity.name, &activity.abstract, &activity.priority, &activity.extid, &activity.status,
          &activity.durationUnit, &activity.owner, &activity.documentation, &activity.process.id,
          &activity.process.name, &activity.process.context}) {
        EXPECT_TRUE(text->IsEmpty());
        EXPECT_FALSE(text->IsNull()) << "a null text is read back as an empty one";
    }
}

TEST(RecordTextReader, NoInputsLeaveANullArrayAndTheOutputsFollow) {
    ActivityInfo written;
    written.SetOutputNumber(1);
    written.outputs[0] = "OUT";
    std::istringstream stream(ToText(written));
    ActivityInfo activity;
    activity.SetInputNumber(3);
    stream >> activity;
    EXPECT_THAT(activity.inputs, IsNull());
    EXPECT_EQ(activity.inputNumber, 0);
    ASSERT_EQ(activity.outputNumber, 1);
    EXPECT_EQ(activity.outputs[0], BexUnicodeString("OUT"));
}

TEST(RecordTextReader, ReadsFromAStreamThatCannotGoBack) {
    for (const std::size_t piece : {0U, 1U, 2U, 7U, 4096U}) {
        ForwardOnlyBuffer buffer(kSampleText, piece);
        std::istream stream(&buffer);
        ActivityInfo activity;
        stream >> activity;
        EXPECT_FALSE(stream.fail()) << piece;
        EXPECT_EQ(RecordContent::Of(activity).Print(), SamplePrinted("A1")) << piece;
    }
}

TEST(RecordTextReader, StopsBehindItsLastLine) {
    const std::string rest = "next line\nand more";
    {
        std::istringstream stream(kSampleText + "\n" + rest);
        ActivityInfo activity;
        stream >> activity;
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(RestOf(stream), rest);
    }
    for (const std::size_t piece : {0U, 7U}) {
        ForwardOnlyBuffer buffer(kSampleText + "\n" + rest, piece);
        std::istream stream(&buffer);
        ActivityInfo activity;
        stream >> activity;
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(RestOf(stream), rest);
    }
}

TEST(RecordTextReader, RecordsFollowOneAnother) {
    ActivityInfo first;
    FillSample(first);
    ActivityInfo second;
    std::ostringstream written;
    written << first << "\n" << second << "\n" << first << "\n";
    std::istringstream stream(written.str());
    ActivityInfo a;
    ActivityInfo b;
    ActivityInfo c;
    EXPECT_EQ(&(stream >> a >> b >> c), &stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(ToText(a), ToText(first));
    EXPECT_EQ(ToText(b), ToText(second));
    EXPECT_EQ(ToText(c), ToText(first));
}

TEST(RecordTextReader, RecordsKeptInAFileComeBack) {
    const TemporaryDirectory directory;
    const std::string path = (directory.Path() / "records").string();
    ActivityInfo written;
    FillSample(written);
    written.SetInputNumber(5000);
    for (int index = 0; index < 5000; ++index) {
        written.inputs[index] = std::to_string(index).c_str();
    }
    {
        std::ofstream file(path);
        file << written << std::endl << ActivityInfo() << std::endl << written.process << std::endl;
    }
    std::ifstream file(path);
    ActivityInfo first;
    ActivityInfo second;
    ProcessInfo process;
    file >> first >> second >> process;
    EXPECT_TRUE(file.good());
    EXPECT_EQ(file.peek(), std::ifstream::traits_type::eof());
    EXPECT_EQ(RecordContent::Of(first).Print(), RecordContent::Of(written).Print());
    EXPECT_EQ(RecordContent::Of(second).Print(), RecordContent::Of(ActivityInfo()).Print());
    EXPECT_EQ(process.dataNumber, 2);
    EXPECT_EQ(process.datas[1].value, BexUnicodeString("v2"));
}

TEST(RecordTextReader, DataReadsFourTextsWhateverTheLabels) {
    LeavePrefixOfOutputs(2);
    DataInfo written;
    written.name = "N";
    written.value = "V";
    std::istringstream stream(ToText(written) + "\nrest");
    DataInfo data;
    data.type = "old";
    EXPECT_EQ(&(stream >> data), &stream);
    EXPECT_EQ(data.name, BexUnicodeString("N"));
    EXPECT_EQ(data.type, BexUnicodeString(""));
    EXPECT_EQ(data.extid, BexUnicodeString(""));
    EXPECT_EQ(data.value, BexUnicodeString("V"));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(RestOf(stream), "rest");
}

TEST(RecordTextReader, ProcessReadsThreeTextsAndItsData) {
    ProcessInfo written;
    written.id = "P";
    written.context = "C";
    written.SetDataNumber(2);
    written.datas[1].extid = "E";
    std::istringstream stream(ToText(written) + "\nrest");
    ProcessInfo process;
    process.SetDataNumber(5);
    EXPECT_EQ(&(stream >> process), &stream);
    EXPECT_EQ(process.id, BexUnicodeString("P"));
    EXPECT_EQ(process.name, BexUnicodeString(""));
    EXPECT_EQ(process.context, BexUnicodeString("C"));
    ASSERT_EQ(process.dataNumber, 2);
    EXPECT_EQ(process.datas[1].extid, BexUnicodeString("E"));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(RestOf(stream), "rest");
}

TEST(RecordTextReader, ValuesAreCutAtSeventyNineCharacters) {
    for (const std::size_t length : {1U, 78U, 79U, 80U, 81U, 100U, 160U, 10000U, 10075U, 10076U, 10077U}) {
        const std::string value(length, 'v');
        EXPECT_EQ(ReadPrinted(SampleWithId(value)), SamplePrinted(value.substr(0, 79))) << length;
    }
}

TEST(RecordTextReader, LineTooLongToBeSkippedPutsTheNextValueOutOfStep) {
    const std::string text = SampleWithId(std::string(10078, 'v'));
    std::istringstream stream(text);
    ActivityInfo activity;
    stream >> activity;
    EXPECT_EQ(activity.name, BexUnicodeString(";\nname=")) << "taken from behind the closing quote left over";
    EXPECT_EQ(activity.abstract, BexUnicodeString("Check the wing"));
    NaiveRecordReader naive(text);
    naive.Read();
    EXPECT_EQ(RecordContent::Of(activity).Print(), naive.Content().Print());
}

TEST(RecordTextReader, ValueIsCutAtAQuoteAndTheRestOfItsLineSkipped) {
    EXPECT_EQ(ReadPrinted(SampleWithId("a\"b")), SamplePrinted("a"));
    EXPECT_EQ(ReadPrinted(SampleWithId("\"b")), SamplePrinted(""));
    EXPECT_EQ(ReadPrinted(SampleWithId("a\"\"\"\"")), SamplePrinted("a"));
    EXPECT_EQ(ReadPrinted(SampleWithId(std::string(79, 'v') + "\"x")), SamplePrinted(std::string(79, 'v')));
}

TEST(RecordTextReader, NewlineInsideAValueThatFitsIsKept) {
    EXPECT_EQ(ReadPrinted(SampleWithId("a\nb")), SamplePrinted("a\nb"));
    EXPECT_EQ(ReadPrinted(SampleWithId("\n\n")), SamplePrinted("\n\n"));
    const std::string longest = std::string(40, 'v') + "\n" + std::string(38, 'w');
    EXPECT_EQ(ReadPrinted(SampleWithId(longest)), SamplePrinted(longest));
}

TEST(RecordTextReader, NewlineBehindTheCutPutsTheNextValueOutOfStep) {
    std::istringstream stream(SampleWithId(std::string(79, 'v') + "\nrest"));
    ActivityInfo activity;
    stream >> activity;
    EXPECT_EQ(activity.id, BexUnicodeString(std::string(79, 'v').c_str()));
    EXPECT_EQ(activity.name, BexUnicodeString(";\nname="));
    EXPECT_EQ(activity.abstract, BexUnicodeString("Check the wing"));
}

TEST(RecordTextReader, LabelsAreSkippedUpToNineThousandNineHundredNinetyNineCharacters) {
    const auto withLabel = [](std::size_t iLength) { return std::string(iLength, 'l') + kSampleText.substr(3); };
    EXPECT_EQ(ReadPrinted(withLabel(0)), SamplePrinted("A1"));
    EXPECT_EQ(ReadPrinted(withLabel(9998)), SamplePrinted("A1"));
    EXPECT_EQ(ReadPrinted(withLabel(9999)), SamplePrinted("")) << "the value seems to end at the opening quote";
    EXPECT_EQ(ReadPrinted(withLabel(10001)), SamplePrinted("ll"));
    EXPECT_EQ(ReadPrinted(withLabel(10100)), SamplePrinted(std::string(79, 'l')));
}

TEST(RecordTextReader, NumberLabelsAreSkippedTheSameWay) {
    const std::size_t number = kSampleText.find("12;");
    const auto withLabel = [number](std::size_t iLength) {
        return kSampleText.substr(0, number - 9) + std::string(iLength, 'l') + "=" + kSampleText.substr(number);
    };
    EXPECT_EQ(ReadPrinted(withLabel(9998)), SamplePrinted("A1"));
    std::istringstream stream(withLabel(9999));
    ActivityInfo activity;
    stream >> activity;
    EXPECT_TRUE(stream.fail()) << "an equals sign is no number";
    EXPECT_EQ(activity.status, BexUnicodeString("RUN"));
    EXPECT_EQ(activity.duration, 0L);
    EXPECT_TRUE(activity.durationUnit.IsEmpty());
    EXPECT_EQ(activity.generation, 0);
}

TEST(RecordTextReader, LabelsAreNotLookedAt) {
    std::string text = kSampleText;
    for (std::size_t i = 0, quoted = 0; i < text.size(); ++i) {
        quoted ^= text[i] == '"' ? 1U : 0U;
        if (quoted == 0 && ((text[i] >= 'a' && text[i] <= 'z') || text[i] == '.')) {
            text[i] = '?';
        }
    }
    EXPECT_EQ(ReadPrinted(text), SamplePrinted("A1"));
}

TEST(RecordTextReader, WrittenAndReadAgainGivesTheSameText) {
    std::mt19937 random(20040617);
    std::uniform_int_distribution<int> byte(1, 255);
    std::uniform_int_distribution<std::size_t> length(0, 79);
    std::uniform_int_distribution<int> count(0, 4);
    const auto value = [&] {
        std::string text;
        for (std::size_t left = length(random); left > 0; --left) {
            const char c = static_cast<char>(byte(random));
            text += c == '"' || c == '\n' ? ' ' : c;
        }
        return BexUnicodeString(text.c_str());
    };
    for (int round = 0; round < 500; ++round) {
        ActivityInfo activity;
        for (BexUnicodeString* text :
             {&activity.id, &activity.name, &activity.abstract, &activity.priority, &activity.extid, &activity.status,
              &activity.durationUnit, &activity.owner, &activity.documentation, &activity.process.id,
              &activity.process.name, &activity.process.context}) {
            *text = value();
        }
        activity.duration = std::uniform_int_distribution<int>(INT_MIN, INT_MAX)(random);
        activity.generation = std::uniform_int_distribution<int>(INT_MIN, INT_MAX)(random);
        activity.process.SetDataNumber(count(random));
        for (int i = 0; i < activity.process.dataNumber; ++i) {
            DataInfo& data = activity.process.datas[i];
            for (BexUnicodeString* text : {&data.name, &data.type, &data.extid, &data.value}) {
                *text = value();
            }
        }
        activity.SetInputNumber(count(random));
        for (int i = 0; i < activity.inputNumber; ++i) {
            activity.inputs[i] = value();
        }
        activity.SetOutputNumber(count(random));
        for (int i = 0; i < activity.outputNumber; ++i) {
            activity.outputs[i] = value();
        }
        const std::string written = ToText(activity);
        std::istringstream stream(written);
        ActivityInfo read;
        stream >> read;
        ASSERT_FALSE(stream.fail()) << written;
        ASSERT_EQ(RecordContent::Of(read).Print(), RecordContent::Of(activity).Print());
        ASSERT_EQ(ToText(read), written);
    }
}

TEST(RecordTextReader, OnceReadALongValueStaysAsItIs) {
    ActivityInfo activity;
    FillSample(activity);
    activity.documentation = std::string(500, 'd').c_str();
    activity.process.datas[1].value = std::string(80, 'e').c_str();
    std::istringstream first(ToText(activity));
    ActivityInfo once;
    first >> once;
    std::istringstream second(ToText(once));
    ActivityInfo twice;
    second >> twice;
    EXPECT_EQ(ToText(twice), ToText(once));
    EXPECT_NE(ToText(once), ToText(activity));
}

TEST(RecordTextReader, PrefixLeftByAWriterIsNotChangedByReading) {
    LeavePrefixOfOutputs(1);
    std::istringstream stream(kSampleText);
    ActivityInfo activity;
    stream >> activity;
    EXPECT_THAT(ToText(DataInfo()), testing::StartsWith("outputs.1.name="));
}

}  // namespace
