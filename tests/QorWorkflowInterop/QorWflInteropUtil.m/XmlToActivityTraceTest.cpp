#include "ActivityFields.h"
#include "XpdlReply.h"

#include <ActivityInfo.h>
#include <BexQorTrace.h>
#include <QorWflInteropInfo.h>
#include <QorWflXmlToActivity.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <CapturedTrace.h>
#include <algorithm>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using testing::Contains;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::Not;

using Lines = std::vector<std::string>;

const std::string kStart = "=================== Received inputs =======================";
const std::string kEnd = "==================== End of inputs ========================";

/** What reading a text with the channel on writes to the trace, to standard output and to standard error. */
struct Traced {
    Lines lines;
    Lines messages;
    std::string output;
    std::string errors;
};

Traced Read(const std::string& iText, ActivityInfo& ioActivity) {
    const CapturedTrace trace("WFInteropXML");
    const CapturedStream output(std::cout);
    const CapturedStream errors(std::cerr);
    QorWflXmlToActivity(BexUnicodeString(iText.data(), static_cast<int>(iText.size())), ioActivity);
    return {trace.Lines(), trace.Messages(), output.Text(), errors.Text()};
}

Traced Read(const std::string& iText) {
    ActivityInfo activity;
    return Read(iText, activity);
}

/** Lines behind one another, in the order of reading. */
Lines Joined(std::initializer_list<Lines> iParts) {
    Lines lines;
    for (const Lines& part : iParts) {
        lines.insert(lines.end(), part.begin(), part.end());
    }
    return lines;
}

Lines Found(const std::string& iName, const std::string& iValue) {
    return {"Attribute [" + iName + "] found", "Value=[" + iValue + "]"};
}

Lines NotFound(const std::string& iName) {
    return {"Attribute [" + iName + "] NOT found"};
}

Lines NoChild(const std::string& iTag) {
    return {iTag + " child not found"};
}

/** The messages with the two lines around the record behind them. */
Lines WithBanners(Lines iMessages) {
    iMessages.push_back(kStart);
    iMessages.push_back(kEnd);
    return iMessages;
}

}  // namespace

TEST(XmlToActivityTrace, WholeDocumentIsTracedStepByStep) {
    const Lines expected = Joined({
        {">> QorWflXmlToActivity", ">> QorWflXmlToActivity::ReadPackage", "Package tag is <Package>",
         "Protocol level=50803"},
        Found("Id", "new participant"),
        Found("Type", "new participantType"),
        Found("Id", "new process.id"),
        Found("Name", "new process.name"),
        Found("DurationUnit", "new durationUnit"),
        {">> QorWflXmlToActivity::ReadDataFields"},
        NoChild("DataField"),
        Found("Id", "d1"),
        Found("Id", "t1"),
        Found("Name", "externId"),
        Found("Value", "x1"),
        Found("Id", "d2"),
        Found("Id", "t2"),
        Found("Name", "externId"),
        Found("Value", "x2"),
        {"<< QorWflXmlToActivity::ReadDataFields", ">> QorWflXmlToActivity::ReadActivity"},
        Found("Id", "new id"),
        Found("Name", "new name"),
        Found("Name", "IN"),
        Found("Name", "OUT"),
        Found("Name", "IN"),
        Found("Name", "status"),
        Found("Value", "new status"),
        Found("Name", "externId"),
        Found("Value", "new extid"),
        Found("Name", "generation"),
        Found("Value", "33"),
        NoChild("ExtendedAttribute"),
        Found("Name", "IN"),
        Found("Value", "d1"),
        Found("Name", "OUT"),
        Found("Value", "d2"),
        Found("Name", "IN"),
        Found("Value", "d2"),
        Found("Name", "status"),
        Found("Name", "externId"),
        Found("Name", "generation"),
        NoChild("ExtendedAttribute"),
        {"<< QorWflXmlToActivity::ReadActivity"},
        Found("Name", "context"),
        Found("Value", "new process.context"),
        NoChild("ExtendedAttribute"),
        {"<< QorWflXmlToActivity::ReadPackage", kStart, kEnd, "<< QorWflXmlToActivity"},
    });
    const Traced traced = Read(XpdlReply());
    EXPECT_THAT(traced.lines, ElementsAreArray(expected));
    EXPECT_EQ(traced.errors, "");
}

TEST(XmlToActivityTrace, EveryMissingAttributeIsNamed) {
    const Lines expected = Joined({
        {"Package tag is <p>", "Protocol level=0"},
        NotFound("Id"),
        NotFound("Type"),
        NotFound("Id"),
        NotFound("Name"),
        NotFound("DurationUnit"),
        NoChild("DataField"),
        NotFound("Id"),
        NotFound("Id"),
        NotFound("Name"),
        Found("Name", "externId"),
        NotFound("Value"),
        NotFound("Id"),
        NotFound("Name"),
        NoChild("Description"),
        NoChild("Performer"),
        NoChild("Priority"),
        NoChild("SimulationInformation"),
        NoChild("Documentation"),
        NotFound("Name"),
        Found("Name", "IN"),
        Found("Name", "status"),
        NotFound("Value"),
        NoChild("ExtendedAttribute"),
        NotFound("Name"),
        Found("Name", "IN"),
        NotFound("Value"),
        Found("Name", "status"),
        NoChild("ExtendedAttribute"),
        NotFound("Name"),
        NoChild("ExtendedAttribute"),
        {kStart, kEnd},
    });
    EXPECT_THAT(
        Read("<p><PackageHeader><Vendor/></PackageHeader>"
             "<Participants><Participant><ParticipantType/></Participant></Participants>"
             "<WorkflowProcesses><WorkflowProcess><ProcessHeader/><DataFields><DataField><DataType><DeclaredType/>"
             "</DataType><InitialValue/><ExtendedAttributes><ExtendedAttribute/><ExtendedAttribute Name='externId'/>"
             "</ExtendedAttributes></DataField></DataFields><Activities><Activity><ExtendedAttributes>"
             "<ExtendedAttribute/><ExtendedAttribute Name='IN'/><ExtendedAttribute Name='status'/>"
             "</ExtendedAttributes></Activity></Activities><ExtendedAttributes><ExtendedAttribute/>"
             "</ExtendedAttributes></WorkflowProcess></WorkflowProcesses></p>")
            .messages,
        ElementsAreArray(expected));
}

TEST(XmlToActivityTrace, DataFieldWithoutAnExternalIdentifierIsSearchedToTheEnd) {
    const std::string reply = WithElement(XpdlReply(), "ExtendedAttributes",
                                          "<ExtendedAttributes><ExtendedAttribute Name='a'/></ExtendedAttributes>", 1);
    const Lines expected = Joined({Found("Name", "a"), NoChild("ExtendedAttribute"), Found("Id", "d2")});
    const Lines messages = Read(reply).messages;
    EXPECT_NE(std::search(messages.begin(), messages.end(), expected.begin(), expected.end()), messages.end());
}

TEST(XmlToActivityTrace, MissingRequiredElementIsTheLastThingTraced) {
    struct Case {
        const char* tag;
        int number;
    };
    for (const Case& one :
         {Case{"PackageHeader", 1}, Case{"Vendor", 1}, Case{"Participant", 1}, Case{"ParticipantType", 1},
          Case{"WorkflowProcesses", 1}, Case{"WorkflowProcess", 1}, Case{"ProcessHeader", 1}, Case{"DataType", 1},
          Case{"DeclaredType", 2}, Case{"InitialValue", 1}, Case{"ExtendedAttributes", 2}, Case{"Activities", 1},
          Case{"Activity", 1}, Case{"TimeEstimation", 1}, Case{"ExtendedAttributes", 3}}) {
        const Lines messages = Read(WithoutElement(XpdlReply(), one.tag, one.number)).messages;
        ASSERT_GE(messages.size(), 4U) << one.tag;
        const Lines end(messages.end() - 3, messages.end());
        EXPECT_THAT(end, ElementsAreArray(WithBanners(NoChild(one.tag)))) << one.tag;
    }
}

TEST(XmlToActivityTrace, MissingDataFieldsHaveNoDataField) {
    const Lines messages = Read(WithoutElement(XpdlReply(), "DataFields")).messages;
    ASSERT_GE(messages.size(), 4U);
    EXPECT_THAT(Lines(messages.end() - 4, messages.end()),
                ElementsAreArray(WithBanners(Joined({NoChild("DataFields"), NoChild("DataField")}))));
}

TEST(XmlToActivityTrace, StepsThatAreNotReachedAreNotTraced) {
    const Lines beforeDatas = Read(WithoutElement(XpdlReply(), "ProcessHeader")).lines;
    EXPECT_THAT(beforeDatas, Not(Contains(HasSubstr("ReadDataFields"))));
    EXPECT_THAT(beforeDatas, Not(Contains(HasSubstr("ReadActivity"))));
    const Lines beforeActivity = Read(WithoutElement(XpdlReply(), "InitialValue", 2)).lines;
    EXPECT_THAT(beforeActivity, Contains("<< QorWflXmlToActivity::ReadDataFields"));
    EXPECT_THAT(beforeActivity, Not(Contains(HasSubstr("ReadActivity"))));
}

TEST(XmlToActivityTrace, MissingParticipantsAreTold) {
    const Lines messages = Read(WithoutElement(XpdlReply(), "Participants")).messages;
    const Lines expected =
        Joined({{"Protocol level=50803", "Participants child not found", "No participants : using old performer info"},
                Found("Id", "new process.id")});
    EXPECT_NE(std::search(messages.begin(), messages.end(), expected.begin(), expected.end()), messages.end());
    EXPECT_THAT(Read(XpdlReply()).messages, Not(Contains("No participants : using old performer info")));
}

TEST(XmlToActivityTrace, MissingProcessAttributesAreTold) {
    const Lines messages = Read(WithoutElement(XpdlReply(), "ExtendedAttributes", 4)).messages;
    ASSERT_GE(messages.size(), 4U);
    EXPECT_THAT(
        Lines(messages.end() - 4, messages.end()),
        ElementsAreArray(WithBanners({"ExtendedAttribute child not found", "ExtendedAttributes child not found"})));
}

TEST(XmlToActivityTrace, ProtocolLevelIsTheNumberBehindTheVendorsPrefix) {
    struct Case {
        const char* vendor;
        const char* level;
    };
    const Case cases[] = {
        {"VERANT_050803", "50803"},
        {"VERANT_7", "7"},
        {"VERANT_12x", "12"},
        {"VERANT_-3", "-3"},
        {"VERANT_ 4", "4"},
        {"VERANT_", "0"},
        {"VERANT_x", "0"},
        {"VERANT", "0"},
        {"verant_5", "0"},
        {" VERANT_5", "0"},
        {"VERANT5", "0"},
        {"ACME", "0"},
        {"", "0"},
        {"VERANT_0x10", "0"},
        {"VERANT_99999999999", "0"},
        {"<![CDATA[VERANT_5]]>", "0"},
        {"VERANT_5<!--c-->6", "5"},
        {"VERANT_VERANT_5", "0"},
    };
    for (const Case& one : cases) {
        ActivityInfo activity;
        const Traced traced =
            Read(WithElement(XpdlReply(), "Vendor", std::string("<Vendor>") + one.vendor + "</Vendor>"), activity);
        EXPECT_THAT(traced.messages, Contains(std::string("Protocol level=") + one.level)) << one.vendor;
        EXPECT_EQ(FieldsOf(activity), NewFields()) << one.vendor;
    }
}

TEST(XmlToActivityTrace, RootsNameIsTold) {
    EXPECT_THAT(Read("<x:any-Thing/>").messages,
                ElementsAreArray({std::string("Package tag is <x:any-Thing>"),
                                  std::string("PackageHeader child not found"), kStart, kEnd}));
}

TEST(XmlToActivityTrace, CharactersOutsideAsciiAreTracedNarrow) {
    const Traced traced = Read(
        "<d\xC3\xA9\xD0\xB4><PackageHeader><Vendor/></PackageHeader><Participants>"
        "<Participant Id='\xC3\xA9\xE2\x82\xAC'/></Participants></d\xC3\xA9\xD0\xB4>");
    EXPECT_THAT(traced.messages, Contains("Package tag is <d\xE9?>"));
    EXPECT_THAT(traced.messages, Contains("Value=[\xE9?]"));
}

TEST(XmlToActivityTrace, TextThatIsNotADocumentTracesOnlyTheRecord) {
    const Traced traced = Read("<a>");
    EXPECT_THAT(traced.lines, ElementsAreArray({std::string(">> QorWflXmlToActivity"), kStart, kEnd,
                                                std::string("<< QorWflXmlToActivity")}));
    EXPECT_EQ(traced.errors, "getDocument failed\n");
}

TEST(XmlToActivityTrace, RecordGoesToStandardOutputInItsTextForm) {
    for (const std::string& text : {XpdlReply(), WithoutElement(XpdlReply(), "Activities"), std::string("<a>"),
                                    std::string("<a/>"), std::string()}) {
        ActivityInfo activity;
        FillWithOldValues(activity);
        const Traced traced = Read(text, activity);
        std::ostringstream expected;
        expected << activity << '\n';
        EXPECT_EQ(traced.output, expected.str());
        EXPECT_EQ(std::count(traced.messages.begin(), traced.messages.end(), kStart), 1);
    }
}

TEST(XmlToActivityTrace, RecordOnStandardOutputHasThisForm) {
    EXPECT_EQ(Read(XpdlReply()).output, R"(id="new id";
name="new name";
abstract="new abstract";
priority="new priority";
extid="new extid";
status="new status";
duration=44;
durationUnit="new durationUnit";
owner="new owner";
documentation="new documentation";
generation=33;
process.id="new process.id";
process.name="new process.name";
process.context="new process.context";
process.datas.length=2;
process.datas.1.name="d1";
process.datas.1.type="t1";
process.datas.1.extid="x1";
process.datas.1.value="v1";
process.datas.2.name="d2";
process.datas.2.type="t2";
process.datas.2.extid="x2";
process.datas.2.value="v2";
inputs.length=2;
inputs.1.name="d1";
inputs.2.name="d2";
outputs.length=1;
outputs.1.name="d2";
)");
}

TEST(XmlToActivityTrace, OnStandardOutputTheRecordStandsBetweenItsTwoLines) {
    ActivityInfo activity;
    testing::internal::CaptureStdout();
    BexQorTrace::SetOn("WFInteropXML", 1);
    QorWflXmlToActivity("<a/>", activity);
    BexQorTrace::SetOn("WFInteropXML", 0);
    const std::string output = testing::internal::GetCapturedStdout();
    std::ostringstream record;
    record << activity << '\n';
    const std::size_t start = output.find(kStart + "\n" + record.str());
    ASSERT_NE(start, std::string::npos) << output;
    EXPECT_EQ(output.find_first_not_of(' ', start + kStart.size() + 1 + record.str().size()), output.find(kEnd))
        << output;
    EXPECT_THAT(output, HasSubstr(kEnd + "\n"));
}

TEST(XmlToActivityTrace, OffNothingIsWritten) {
    for (const std::string& text : {XpdlReply(), std::string("<a/>")}) {
        ActivityInfo activity;
        testing::internal::CaptureStdout();
        QorWflXmlToActivity(text.c_str(), activity);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    }
}

TEST(XmlToActivityTrace, ReadsTheSameWithTheTraceOn) {
    ActivityInfo activity;
    FillWithOldValues(activity);
    Read(XpdlReply(), activity);
    EXPECT_EQ(FieldsOf(activity), NewFields());
    Read(WithoutElement(XpdlReply(), "WorkflowProcesses"), activity);
    EXPECT_EQ(FieldsOf(activity), NewFields());
}

TEST(XmlToActivityTrace, ThereIsOneChannel) {
    EXPECT_EQ(BexQorTrace::SetOn("WFInteropXML", 0), 1);
}
