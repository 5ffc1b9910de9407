#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <FreshProcess.h>
#include <climits>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

using RecordTesting::FillSample;
using RecordTesting::FlushRecorder;
using RecordTesting::kSampleText;
using RecordTesting::LeavePrefixOfOutputs;
using RecordTesting::ToText;
using testing::Each;
using testing::HasSubstr;
using testing::SizeIs;

void Fill(DataInfo& oData) {
    oData.name = "N";
    oData.type = "T";
    oData.extid = "E";
    oData.value = "V";
}

void Fill(ProcessInfo& oProcess) {
    oProcess.id = "P";
    oProcess.name = "Q";
    oProcess.context = "C";
    oProcess.SetDataNumber(1);
    Fill(oProcess.datas[0]);
}

std::string DataText(const std::string& iPrefix) {
    return iPrefix + "name=\"N\";\n" + iPrefix + "type=\"T\";\n" + iPrefix + "extid=\"E\";\n" + iPrefix +
           "value=\"V\";";
}

std::string ProcessText(const std::string& iPrefix) {
    return iPrefix + "id=\"P\";\n" + iPrefix + "name=\"Q\";\n" + iPrefix + "context=\"C\";\n" + iPrefix +
           "datas.length=1;\n" + DataText(iPrefix + "datas.1.");
}

TEST(RecordTextWriterDeathTest, DataBeforeAnyActivityHasBareLabels) {
    DataInfo data;
    Fill(data);
    EXPECT_PRINTED_IN_A_FRESH_PROCESS(std::cerr << data, DataText(""));
}

TEST(RecordTextWriterDeathTest, ProcessBeforeAnyActivityHasBareLabels) {
    ProcessInfo process;
    Fill(process);
    EXPECT_PRINTED_IN_A_FRESH_PROCESS(std::cerr << process, ProcessText(""));
}

TEST(RecordTextWriterDeathTest, ProcessPutsTheBareLabelsBack) {
    DataInfo data;
    Fill(data);
    ProcessInfo process;
    Fill(process);
    EXPECT_PRINTED_IN_A_FRESH_PROCESS(std::cerr << process << "|" << data, ProcessText("") + "|" + DataText(""));
}

TEST(RecordTextWriter, WritesEveryFieldInOrder) {
    ActivityInfo activity;
    FillSample(activity);
    EXPECT_EQ(ToText(activity), kSampleText);
}

TEST(RecordTextWriter, DefaultActivityIsSeventeenLines) {
    EXPECT_EQ(ToText(ActivityInfo()),
              "id=\"\";\n"
              "name=\"\";\n"
              "abstract=\"\";\n"
              "priority=\"\";\n"
              "extid=\"\";\n"
              "status=\"\";\n"
              "duration=0;\n"
              "durationUnit=\"\";\n"
              "owner=\"\";\n"
              "documentation=\"\";\n"
              "generation=1;\n"
              "process.id=\"\";\n"
              "process.name=\"\";\n"
              "process.context=\"\";\n"
              "process.datas.length=0;\n"
              "inputs.length=0;\n"
              "outputs.length=0;");
}

TEST(RecordTextWriter, OneDataFieldAndOneInputAreTwentyTwoLines) {
    ActivityInfo activity;
    activity.id = "A1";
    activity.name = "Review";
    activity.duration = 3;
    activity.process.id = "P7";
    activity.process.SetDataNumber(1);
    activity.process.datas[0].name = "D1";
    activity.process.datas[0].type = "Part";
    activity.SetInputNumber(1);
    activity.inputs[0] = "D1";
    EXPECT_EQ(ToText(activity),
              "id=\"A1\";\n"
              "name=\"Review\";\n"
              "abstract=\"\";\n"
              "priority=\"\";\n"
              "extid=\"\";\n"
              "status=\"\";\n"
              "duration=3;\n"
              "durationUnit=\"\";\n"
              "owner=\"\";\n"
              "documentation=\"\";\n"
              "generation=1;\n"
              "process.id=\"P7\";\n"
              "process.name=\"\";\n"
              "process.context=\"\";\n"
              "process.datas.length=1;\n"
              "process.datas.1.name=\"D1\";\n"
              "process.datas.1.type=\"Part\";\n"
              "process.datas.1.extid=\"\";\n"
              "process.datas.1.value=\"\";\n"
              "inputs.length=1;\n"
              "inputs.1.name=\"D1\";\n"
              "outputs.length=0;");
}

TEST(RecordTextWriter, ParticipantIsNotWritten) {
    ActivityInfo activity;
    const std::string text = ToText(activity);
    activity.participant = "somebody";
    activity.participantType = "HUMAN";
    EXPECT_EQ(ToText(activity), text);
}

TEST(RecordTextWriter, EmptyTextIsWrittenLikeNull) {
    ActivityInfo activity;
    const std::string text = ToText(activity);
    activity.id = "";
    activity.process.context = "";
    EXPECT_EQ(ToText(activity), text);
}

TEST(RecordTextWriter, NumbersAreWrittenWithTheirSign) {
    ActivityInfo activity;
    activity.duration = LONG_MIN;
    activity.generation = INT_MIN;
    EXPECT_THAT(ToText(activity), HasSubstr("\nduration=" + std::to_string(LONG_MIN) + ";\n"));
    EXPECT_THAT(ToText(activity), HasSubstr("\ngeneration=-2147483648;\n"));
    activity.duration = LONG_MAX;
    activity.generation = INT_MAX;
    EXPECT_THAT(ToText(activity), HasSubstr("\nduration=" + std::to_string(LONG_MAX) + ";\n"));
    EXPECT_THAT(ToText(activity), HasSubstr("\ngeneration=2147483647;\n"));
}

TEST(RecordTextWriter, NegativeCountsAreWrittenWithoutElements) {
    ActivityInfo activity;
    activity.process.SetDataNumber(-3);
    activity.SetInputNumber(-1);
    activity.SetOutputNumber(INT_MIN);
    EXPECT_THAT(
        ToText(activity),
        testing::EndsWith(
            "\nprocess.context=\"\";\nprocess.datas.length=-3;\ninputs.length=-1;\noutputs.length=-2147483648;"));
}

TEST(RecordTextWriter, ElementNumbersGrowDigits) {
    ActivityInfo activity;
    activity.SetInputNumber(100);
    activity.inputs[99] = "last";
    const std::string text = ToText(activity);
    EXPECT_THAT(text, HasSubstr("\ninputs.9.name=\"\";\ninputs.10.name=\"\";\n"));
    EXPECT_THAT(text, HasSubstr("\ninputs.100.name=\"last\";\noutputs.length=0;"));
}

TEST(RecordTextWriter, ValuesAreNeitherEscapedNorCut) {
    std::string value;
    for (int code = 1; code < 256; ++code) {
        value += static_cast<char>(code);
    }
    value += std::string(10000, 'x') + "\"\"\n;=";
    ActivityInfo activity;
    activity.name = value.c_str();
    activity.SetOutputNumber(1);
    activity.outputs[0] = value.c_str();
    EXPECT_THAT(ToText(activity), HasSubstr("id=\"\";\nname=\"" + value + "\";\nabstract="));
    EXPECT_THAT(ToText(activity), testing::EndsWith("\noutputs.1.name=\"" + value + "\";"));
}

TEST(RecordTextWriter, CodeUnitsAboveOneByteAreQuestionMarks) {
    DataInfo data;
    data.name = BexUnicodeString(u"\u00E9\u0141\u20AC", 3);
    LeavePrefixOfOutputs(0);
    EXPECT_THAT(ToText(data), testing::StartsWith("outputs.name=\"\xE9??\";\n"));
}

TEST(RecordTextWriter, FlushesAfterEachLineEndAndNowhereElse) {
    ActivityInfo activity;
    FillSample(activity);
    FlushRecorder buffer;
    std::ostream stream(&buffer);
    stream << activity;
    const std::string text = buffer.str();
    std::vector<std::size_t> lineEnds;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n') {
            lineEnds.push_back(i + 1);
        }
    }
    EXPECT_THAT(lineEnds, SizeIs(28));
    EXPECT_EQ(buffer.lengthAtFlush, lineEnds);
}

TEST(RecordTextWriter, DataAndProcessFlushEachLineButTheLast) {
    DataInfo data;
    FlushRecorder dataBuffer;
    std::ostream dataStream(&dataBuffer);
    dataStream << data;
    EXPECT_THAT(dataBuffer.lengthAtFlush, SizeIs(3));

    ProcessInfo process;
    process.SetDataNumber(2);
    FlushRecorder processBuffer;
    std::ostream processStream(&processBuffer);
    processStream << process;
    EXPECT_THAT(processBuffer.lengthAtFlush, SizeIs(3 + 2 * 4));
}

TEST(RecordTextWriter, DataAfterTwoOutputsCarriesThePrefixOfTheLast) {
    DataInfo data;
    Fill(data);
    LeavePrefixOfOutputs(2);
    EXPECT_EQ(ToText(data), DataText("outputs.2."));
    EXPECT_EQ(ToText(data), DataText("outputs.2.")) << "writing it changes nothing";
}

TEST(RecordTextWriter, DataAfterNoOutputsCarriesThePrefixOfTheList) {
    DataInfo data;
    Fill(data);
    LeavePrefixOfOutputs(0);
    EXPECT_EQ(ToText(data), DataText("outputs."));
    ActivityInfo activity;
    activity.SetOutputNumber(-4);
    activity.SetInputNumber(3);
    ToText(activity);
    EXPECT_EQ(ToText(data), DataText("outputs."));
}

TEST(RecordTextWriter, ProcessAfterAnActivityCarriesItsPrefixAndPutsItBack) {
    ProcessInfo process;
    Fill(process);
    DataInfo data;
    Fill(data);
    LeavePrefixOfOutputs(3);
    EXPECT_EQ(ToText(process), ProcessText("outputs.3."));
    EXPECT_EQ(ToText(process), ProcessText("outputs.3."));
    EXPECT_EQ(ToText(data), DataText("outputs.3."));
}

TEST(RecordTextWriter, ProcessWithoutDataEndsInItsCountLine) {
    ProcessInfo process;
    LeavePrefixOfOutputs(0);
    EXPECT_EQ(ToText(process), "outputs.id=\"\";\noutputs.name=\"\";\noutputs.context=\"\";\noutputs.datas.length=0;");
    DataInfo data;
    Fill(data);
    EXPECT_EQ(ToText(data), DataText("outputs."));
}

TEST(RecordTextWriter, ActivityIsNotTouchedByAPrefixLeftBehind) {
    ActivityInfo activity;
    FillSample(activity);
    LeavePrefixOfOutputs(5);
    EXPECT_EQ(ToText(activity), kSampleText);
    EXPECT_EQ(ToText(activity), kSampleText);
}

TEST(RecordTextWriter, ReturnsItsStreamSoThatCallsChain) {
    const DataInfo data;
    const ProcessInfo process;
    const ActivityInfo activity;
    std::ostringstream stream;
    EXPECT_EQ(&(stream << data), &stream);
    EXPECT_EQ(&(stream << process), &stream);
    EXPECT_EQ(&(stream << activity), &stream);
}

TEST(RecordTextWriter, FailedStreamTakesNothing) {
    ActivityInfo activity;
    FillSample(activity);
    std::ostringstream stream;
    stream.setstate(std::ios_base::failbit);
    stream << activity;
    EXPECT_EQ(stream.str(), "");
    EXPECT_TRUE(stream.fail());
}

/** Throws as soon as anything is written. */
class ThrowingBuffer : public std::streambuf {
protected:
    int_type overflow(int_type) override { throw std::runtime_error("no room"); }
    std::streamsize xsputn(const char*, std::streamsize) override { throw std::runtime_error("no room"); }
};

TEST(RecordTextWriter, ExceptionOfTheBufferBecomesTheBadState) {
    ActivityInfo activity;
    FillSample(activity);
    ThrowingBuffer buffer;
    std::ostream stream(&buffer);
    EXPECT_NO_THROW(stream << activity);
    EXPECT_TRUE(stream.bad());
    std::ostream dataStream(&buffer);
    EXPECT_NO_THROW(dataStream << activity.process.datas[0]);
    EXPECT_TRUE(dataStream.bad());
}

/** Takes so many characters, then throws. */
class FillingBuffer : public std::streambuf {
public:
    explicit FillingBuffer(std::size_t iRoom) : room(iRoom, ' ') { setp(room.data(), room.data() + room.size()); }

protected:
    int_type overflow(int_type) override { throw std::runtime_error("no room"); }

private:
    std::string room;
};

TEST(RecordTextWriter, ProcessPutsThePrefixBackWhereverAStreamThrows) {
    ActivityInfo activity;
    FillSample(activity);
    LeavePrefixOfOutputs(4);
    const std::string expected = ToText(activity.process);
    for (std::size_t room = 0; room < expected.size(); ++room) {
        FillingBuffer buffer(room);
        std::ostream stream(&buffer);
        stream.exceptions(std::ios_base::badbit);
        EXPECT_THROW(stream << activity.process, std::ios_base::failure);
        ASSERT_EQ(ToText(activity.process), expected) << room;
    }
}

}  // namespace
