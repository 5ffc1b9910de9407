#include "ActivityFields.h"
#include "GlobalLocale.h"
#include "NaiveRecordReader.h"
#include "RecordTesting.h"

#include <QorWflInteropInfo.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using RecordTesting::FillSample;
using RecordTesting::ForwardOnlyBuffer;
using RecordTesting::Joined;
using RecordTesting::kSampleText;
using RecordTesting::SampleLines;
using testing::HasSubstr;
using testing::IsNull;

std::string SampleWith(const std::string& iOld, const std::string& iNew) {
    std::string text = kSampleText;
    return text.replace(text.find(iOld), iOld.size(), iNew);
}

TEST(RecordTextDamage, TextMayEndAnywhere) {
    for (std::size_t length = 0; length <= kSampleText.size(); ++length) {
        ExpectReadAsNaively(kSampleText.substr(0, length));
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << length;
    }
}

TEST(RecordTextDamage, TextThatEndsInsideAListKeepsItsCountAndTheElementsReadSoFar) {
    for (std::size_t length = 0; length <= kSampleText.size(); ++length) {
        const std::string text = kSampleText.substr(0, length);
        NaiveRecordReader naive(text);
        naive.Read();
        std::istringstream stream(text);
        ForwardOnlyBuffer buffer(text);
        std::istream forwardOnly(&buffer);
        for (std::istream* source : {static_cast<std::istream*>(&stream), &forwardOnly}) {
            ActivityInfo activity;
            FillSample(activity);
            *source >> activity;
            ASSERT_EQ(RecordContent::Of(activity).Print(), naive.Content().Print()) << text;
        }
    }
}

TEST(RecordTextDamage, EmptyTextFailsAndEmptiesTheRecord) {
    std::istringstream stream("");
    ActivityInfo activity;
    FillSample(activity);
    stream >> activity;
    EXPECT_TRUE(stream.fail());
    for (const BexUnicodeString* text :
         {&activity.id, &activity.name, &activity.abstract, &activity.priority, &activity.extid, &activity.status,
          &activity.durationUnit, &activity.owner, &activity.documentation, &activity.process.id,
          &activity.process.name, &activity.process.context}) {
        EXPECT_TRUE(text->IsEmpty());
    }
    EXPECT_EQ(activity.duration, 0L);
    EXPECT_EQ(activity.generation, 0);
    EXPECT_EQ(activity.process.dataNumber, 0);
    EXPECT_EQ(activity.inputNumber, 0);
    EXPECT_EQ(activity.outputNumber, 0);
    EXPECT_THAT(activity.process.datas, IsNull());
    EXPECT_THAT(activity.inputs, IsNull());
    EXPECT_THAT(activity.outputs, IsNull());
    EXPECT_EQ(activity.participant, BexUnicodeString("jones"));
}

TEST(RecordTextDamage, FieldsBehindTheEndAreEmptyAndNumbersZero) {
    const std::string text = kSampleText.substr(0, kSampleText.find("status"));
    std::istringstream stream(text);
    ActivityInfo activity;
    FillSample(activity);
    stream >> activity;
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(activity.priority, BexUnicodeString("high"));
    EXPECT_EQ(activity.extid, BexUnicodeString("LumenUID://Legacy+QOR1/default/A1.ACTION"));
    EXPECT_TRUE(activity.status.IsEmpty());
    EXPECT_EQ(activity.duration, 0L);
    EXPECT_TRUE(activity.durationUnit.IsEmpty());
    EXPECT_EQ(activity.generation, 0);
    EXPECT_EQ(activity.process.dataNumber, 0);
    EXPECT_EQ(activity.inputNumber, 0);
}

TEST(RecordTextDamage, StreamThatHasFailedBeforeGivesNothing) {
    std::istringstream stream(kSampleText);
    stream.setstate(std::ios_base::failbit);
    ActivityInfo activity;
    FillSample(activity);
    stream >> activity;
    EXPECT_TRUE(stream.fail());
    EXPECT_TRUE(activity.id.IsEmpty());
    EXPECT_EQ(activity.generation, 0);
    EXPECT_EQ(activity.outputNumber, 0);
    stream.clear();
    EXPECT_EQ(stream.peek(), 'i') << "nothing was taken from the stream";
}

TEST(RecordTextDamage, MissingLineShiftsTheValues) {
    const std::vector<std::string> lines = SampleLines();
    for (std::size_t missing = 0; missing < lines.size(); ++missing) {
        std::vector<std::string> fewer = lines;
        fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(missing));
        ExpectReadAsNaively(Joined(fewer));
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << lines[missing];
    }
}

TEST(RecordTextDamage, MissingNameGivesTheFollowingValueInstead) {
    std::istringstream stream(SampleWith("name=\"Design review\";\n", ""));
    ActivityInfo activity;
    stream >> activity;
    EXPECT_EQ(activity.id, BexUnicodeString("A1"));
    EXPECT_EQ(activity.name, BexUnicodeString("Check the wing"));
    EXPECT_EQ(activity.extid, BexUnicodeString("RUN"));
    EXPECT_EQ(activity.status, BexUnicodeString("D")) << "the duration line holds no text";
}

TEST(RecordTextDamage, MissingCountLineTakesTheNextNumberThatFollowsAnEqualsSign) {
    std::istringstream stream(SampleWith("inputs.length=2;\ninputs.1.name=\"D1\";\n", "") + "\n");
    ActivityInfo activity;
    stream >> activity;
    EXPECT_TRUE(stream.fail()) << "a quote is no number";
    EXPECT_EQ(activity.process.dataNumber, 2);
    EXPECT_EQ(activity.inputNumber, 0);

    std::istringstream other(SampleWith("inputs.length=2;\ninputs.1.name=\"D1\";\ninputs.2.name=\"D2\";\n", "") + "\n");
    ActivityInfo shifted;
    other >> shifted;
    ASSERT_EQ(shifted.inputNumber, 2) << "the count of the outputs";
    EXPECT_EQ(shifted.inputs[1], BexUnicodeString("D4"));
    EXPECT_EQ(shifted.outputNumber, 0);
    EXPECT_TRUE(other.fail());
}

TEST(RecordTextDamage, AnyTwoLinesMayChangePlaces) {
    const std::vector<std::string> lines = SampleLines();
    for (std::size_t first = 0; first < lines.size(); ++first) {
        for (std::size_t second = first + 1; second < lines.size(); ++second) {
            std::vector<std::string> swapped = lines;
            std::swap(swapped[first], swapped[second]);
            ExpectReadAsNaively(Joined(swapped));
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << first << " and " << second;
        }
    }
}

TEST(RecordTextDamage, AnyCharacterMayBeMissingOrAnother) {
    for (std::size_t at = 0; at < kSampleText.size(); ++at) {
        std::string text = kSampleText;
        ExpectReadAsNaively(text.erase(at, 1));
        for (const char other : {'"', '\n', '=', ';', '9', '-', ' ', 'x'}) {
            text = kSampleText;
            text[at] = other;
            ExpectReadAsNaively(text);
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << at;
        }
    }
}

struct NumberCase {
    const char* text;
    int value;
    bool converts;
};

const NumberCase kNumbers[] = {
    {"0", 0, true},
    {"+7", 7, true},
    {"-7", -7, true},
    {"   8", 8, true},
    {"\t\n 9", 9, true},
    {"0012", 12, true},
    {"12x", 12, true},
    {"12.5", 12, true},
    {"0x10", 0, true},
    {"2147483647", INT_MAX, true},
    {"-2147483648", INT_MIN, true},
    {"", 0, false},
    {"abc", 0, false},
    {"\"5\"", 0, false},
    {"-", 0, false},
    {"+", 0, false},
    {"--5", 0, false},
    {"- 5", 0, false},
    {"99999999999999999999", 0, false},
    {"-99999999999999999999", 0, false},
};

TEST(RecordTextDamage, DurationIsReadAsStreamsReadNumbers) {
    for (const NumberCase& number : kNumbers) {
        std::istringstream stream(SampleWith("duration=12;", std::string("duration=") + number.text + ";"));
        stream.imbue(std::locale::classic());  // where "12.5" has no groups of digits
        ActivityInfo activity;
        activity.duration = 77;
        stream >> activity;
        EXPECT_EQ(activity.duration, number.value) << number.text;
        EXPECT_EQ(stream.fail(), !number.converts) << number.text;
        EXPECT_EQ(activity.durationUnit, BexUnicodeString(number.converts ? "D" : "")) << number.text;
    }
}

TEST(RecordTextDamage, GenerationIsReadAsStreamsReadNumbers) {
    for (const NumberCase& number : kNumbers) {
        std::istringstream stream(SampleWith("generation=34;", std::string("generation=") + number.text + ";"));
        stream.imbue(std::locale::classic());  // where "12.5" has no groups of digits
        ActivityInfo activity;
        activity.generation = 77;
        stream >> activity;
        EXPECT_EQ(activity.generation, number.value) << number.text;
        EXPECT_EQ(stream.fail(), !number.converts) << number.text;
        EXPECT_EQ(activity.process.id, BexUnicodeString(number.converts ? "P7" : "")) << number.text;
    }
}

TEST(RecordTextDamage, NumbersAreWrittenWithoutGroupsAndReadInTheLocaleOfTheStream) {
    ActivityInfo activity;
    activity.duration = 1234567;
    activity.generation = 1234;
    std::ostringstream written;
    written.imbue(GroupingLocale(3));
    written << activity;
    EXPECT_THAT(written.str(), HasSubstr("duration=1234567;\n"));
    EXPECT_THAT(written.str(), HasSubstr("generation=1234;\n"));
    for (const char* number : {"1234567", "1.234.567"}) {
        std::istringstream stream(SampleWith("duration=12;", std::string("duration=") + number + ";"));
        stream.imbue(GroupingLocale(3));
        ActivityInfo read;
        stream >> read;
        EXPECT_EQ(read.duration, 1234567) << number;
    }
}

TEST(RecordTextDamage, GenerationBeyondAnIntIsZero) {
    for (const char* number : {"2147483648", "-2147483649", "4294967296"}) {
        std::istringstream stream(SampleWith("generation=34;", std::string("generation=") + number + ";"));
        ActivityInfo activity;
        stream >> activity;
        EXPECT_EQ(activity.generation, 0) << number;
        EXPECT_TRUE(stream.fail()) << number;
    }
}

TEST(RecordTextDamage, TextWithoutAnyDelimiterEnds) {
    for (const char filler : {'x', '"', '=', '\n', ';', '\0', '\xFF'}) {
        ExpectReadAsNaively(std::string(200000, filler));
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << static_cast<int>(filler);
    }
}

TEST(RecordTextDamage, DataAndProcessFailAtTheEndToo) {
    std::istringstream dataStream("name=\"N\";\ntype=\"T\";\n");
    DataInfo data;
    data.value = "old";
    dataStream >> data;
    EXPECT_TRUE(dataStream.fail());
    EXPECT_EQ(data.type, BexUnicodeString("T"));
    EXPECT_TRUE(data.extid.IsEmpty());
    EXPECT_TRUE(data.value.IsEmpty());

    std::istringstream processStream("id=\"P\";\nname=\"Q\";\n");
    ProcessInfo process;
    process.context = "old";
    process.SetDataNumber(2);
    processStream >> process;
    EXPECT_TRUE(processStream.fail());
    EXPECT_EQ(process.name, BexUnicodeString("Q"));
    EXPECT_TRUE(process.context.IsEmpty());
    EXPECT_EQ(process.dataNumber, 0);
    EXPECT_THAT(process.datas, IsNull());
}

/** Reads data alone and compares its texts with the naive reader's. */
void ExpectDataReadAsNaively(const std::string& iText) {
    NaiveRecordReader naive(iText);
    naive.Read();
    std::istringstream stream(iText);
    DataInfo data;
    for (BexUnicodeString* value : {&data.name, &data.type, &data.extid, &data.value}) {
        *value = "old";
    }
    stream >> data;
    RecordContent content;
    for (const BexUnicodeString* value : {&data.name, &data.type, &data.extid, &data.value}) {
        ASSERT_FALSE(value->IsNull()) << iText;
        content.AddField(RecordTesting::Bytes(*value));
    }
    // the first four fields of an activity are four texts as well
    ASSERT_EQ(naive.Content().fields.compare(0, content.fields.size(), content.fields), 0) << iText;
}

TEST(RecordTextDamage, TextOfDataAloneMayEndAnywhere) {
    const std::string whole = "name=\"N\";\ntype=\"two words\";\nextid=\"\";\nvalue=\"V\";\n";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        ExpectDataReadAsNaively(whole.substr(0, length));
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << length;
    }
}

TEST(RecordTextDamage, EveryShortTextIsReadAsDataAsNaively) {
    static const std::string kAlphabet = "\"\na";
    std::vector<std::string> texts = {""};
    for (std::size_t next = 0; next < texts.size(); ++next) {
        ExpectDataReadAsNaively(texts[next]);
        ASSERT_FALSE(testing::Test::HasFatalFailure());
        if (texts[next].size() < 8) {
            for (const char character : kAlphabet) {
                texts.push_back(texts[next] + character);
            }
        }
    }
    EXPECT_EQ(texts.size(), 9841U);
}

TEST(RecordTextDamage, TextOfAProcessAloneMayEndAnywhere) {
    const std::size_t start = kSampleText.find("process.id");
    const std::size_t end = kSampleText.find("inputs.length");
    for (std::size_t length = start; length <= end; ++length) {
        std::istringstream within(kSampleText.substr(0, length));
        std::istringstream alone(kSampleText.substr(start, length - start));
        ActivityInfo expected;
        within >> expected;
        ActivityInfo activity;
        FillSample(activity);
        alone >> activity.process;
        EXPECT_EQ(Shown(activity.process.id), Shown(expected.process.id)) << length;
        EXPECT_EQ(Shown(activity.process.name), Shown(expected.process.name)) << length;
        EXPECT_EQ(Shown(activity.process.context), Shown(expected.process.context)) << length;
        EXPECT_EQ(Shown(activity.process.datas, activity.process.dataNumber),
                  Shown(expected.process.datas, expected.process.dataNumber))
            << length;
    }
}

TEST(RecordTextDamage, ExceptionLeavesOnlyWhenTheStreamAsksForIt) {
    std::istringstream quiet("id=\"A1\";\n");
    ActivityInfo activity;
    EXPECT_NO_THROW(quiet >> activity);
    std::istringstream loud("id=\"A1\";\n");
    loud.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    EXPECT_THROW(loud >> activity, std::ios_base::failure);
    std::istringstream whole(kSampleText);
    whole.exceptions(std::ios_base::failbit | std::ios_base::badbit);
    EXPECT_NO_THROW(whole >> activity);
}

/** Gives some text and then throws. */
class ThrowingBuffer : public std::streambuf {
public:
    explicit ThrowingBuffer(std::string iText) : text(std::move(iText)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type underflow() override { throw std::runtime_error("broken pipe"); }

private:
    std::string text;
};

TEST(RecordTextDamage, ExceptionOfTheBufferBecomesAFailure) {
    for (const std::size_t length : {0U, 5U, 9U, 150U, 330U, 420U, 560U}) {
        ThrowingBuffer buffer(kSampleText.substr(0, length));
        std::istream stream(&buffer);
        ActivityInfo activity;
        FillSample(activity);
        EXPECT_NO_THROW(stream >> activity) << length;
        EXPECT_TRUE(stream.fail()) << length;
        EXPECT_EQ(activity.outputNumber, 0) << length;
    }
}

}  // namespace
