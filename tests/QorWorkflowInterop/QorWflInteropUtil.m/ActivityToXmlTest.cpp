#include "RecordTesting.h"

#include <ActivityInfo.h>
#include <BexTime.h>
#include <QorWflActivityToXml.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ProcessorTime.h>
#include <climits>
#include <functional>
#include <regex>
#include <string>
#include <vector>

namespace {

using RecordTesting::Bytes;
using testing::HasSubstr;
using testing::Not;

std::string Written(const ActivityInfo& iActivity) {
    BexUnicodeString xml;
    QorWflActivityToXml(iActivity, xml);
    return Bytes(xml);
}

/** The document with the time it was made at, which has to have its form, taken out. */
std::string Masked(const std::string& iDocument) {
    static const std::regex kCreated("<Created>[0-9]{2}-[0-9]{2}-[0-9]{4}-[0-9]{2}:[0-9]{2}:[0-9]{2}</Created>");
    return std::regex_replace(iDocument, kCreated, "<Created>masked</Created>");
}

const std::string kHead = R"(<?xml version='1.0' encoding='ISO-8859-1' ?>
<Package Id = "WFRTPackageId" Name = "WFRTPackageName" xmlns:xpdl = "http://www.wfmc.org/2002/XPDL1.0">
<PackageHeader>
<XPDLVersion>0.02</XPDLVersion>
<Vendor>VERANT_050803</Vendor>
<Created>masked</Created>
</PackageHeader>
)";

struct TextField {
    const char* name;
    std::function<BexUnicodeString&(ActivityInfo&)> of;
    /** The part of the document for a text, for empty and for null. */
    std::function<std::string(const std::string&)> withText;
    std::string forEmpty;
    std::string forNull;
};

/** An attribute, which is there for null as for empty. */
TextField Attribute(const char* iName, std::function<BexUnicodeString&(ActivityInfo&)> iOf, const std::string& iBefore,
                    const std::string& iBehind) {
    const auto part = [iBefore, iBehind](const std::string& iText) { return iBefore + iText + iBehind; };
    return {iName, std::move(iOf), part, part(""), part("")};
}

/** The text of an element, between the end of the element before and the start of the one behind. */
TextField ElementText(const char* iName, std::function<BexUnicodeString&(ActivityInfo&)> iOf, const std::string& iTag,
                      const std::string& iBefore, const std::string& iBehind, const std::string& iForNull) {
    const auto part = [iTag, iBefore, iBehind](const std::string& iText) {
        return iBefore + "<" + iTag + ">" + iText + "</" + iTag + ">\n" + iBehind;
    };
    return {iName, std::move(iOf), part, part("\n"), iBefore + iForNull + iBehind};
}

std::vector<TextField> TextFields() {
    return {
        Attribute(
            "participant", [](ActivityInfo & a) -> auto& { return a.participant; }, "<Participant Id = \"", "\">\n"),
        Attribute(
            "participantType", [](ActivityInfo & a) -> auto& { return a.participantType; },
            "<ParticipantType Type = \"", "\"/>\n"),
        Attribute(
            "process.id", [](ActivityInfo & a) -> auto& { return a.process.id; }, "<WorkflowProcess Id = \"",
            "\" Name = \"\">\n"),
        Attribute(
            "process.name", [](ActivityInfo & a) -> auto& { return a.process.name; },
            "<WorkflowProcess Id = \"\" Name = \"", "\">\n"),
        Attribute(
            "durationUnit", [](ActivityInfo & a) -> auto& { return a.durationUnit; },
            "<ProcessHeader DurationUnit = \"", "\"/>\n<DataFields>\n"),
        Attribute(
            "data name", [](ActivityInfo & a) -> auto& { return a.process.datas[0].name; }, "<DataField Id = \"",
            "\">\n<DataType>\n"),
        Attribute(
            "data type", [](ActivityInfo & a) -> auto& { return a.process.datas[0].type; }, "<DeclaredType Id = \"",
            "\"/>\n</DataType>\n<InitialValue"),
        ElementText(
            "data value", [](ActivityInfo & a) -> auto& { return a.process.datas[0].value; }, "InitialValue",
            "</DataType>\n", "<ExtendedAttributes>\n", "<InitialValue/>\n"),
        Attribute(
            "data extid", [](ActivityInfo & a) -> auto& { return a.process.datas[0].extid; },
            "<ExtendedAttributes>\n<ExtendedAttribute Name = \"externId\" Value = \"",
            "\"/>\n</ExtendedAttributes>\n</DataField>\n</DataFields>\n<Activities>\n"),
        Attribute(
            "id", [](ActivityInfo & a) -> auto& { return a.id; }, "<Activity Id = \"", "\" Name = \"\">\n"),
        Attribute(
            "name", [](ActivityInfo & a) -> auto& { return a.name; }, "<Activity Id = \"\" Name = \"", "\">\n"),
        ElementText(
            "abstract", [](ActivityInfo & a) -> auto& { return a.abstract; }, "Description", "Name = \"\">\n",
            "<Implementation>\n<No/>\n</Implementation>\n", "<Description/>\n"),
        ElementText(
            "owner", [](ActivityInfo & a) -> auto& { return a.owner; }, "Performer", "</Implementation>\n",
            "<Priority>", ""),
        ElementText(
            "priority", [](ActivityInfo & a) -> auto& { return a.priority; }, "Priority", "</Implementation>\n",
            "<SimulationInformation>\n<Cost/>\n<TimeEstimation>\n<Duration>", "<Priority>\n</Priority>\n"),
        ElementText(
            "documentation", [](ActivityInfo & a) -> auto& { return a.documentation; }, "Documentation",
            "</SimulationInformation>\n", "<ExtendedAttributes>\n", ""),
        Attribute(
            "input", [](ActivityInfo & a) -> auto& { return a.inputs[0]; },
            "<ExtendedAttributes>\n<ExtendedAttribute Name = \"IN\" Value = \"",
            "\"/>\n<ExtendedAttribute Name = \"OUT\""),
        Attribute(
            "output", [](ActivityInfo & a) -> auto& { return a.outputs[0]; },
            "<ExtendedAttribute Name = \"OUT\" Value = \"", "\"/>\n<ExtendedAttribute Name = \"status\""),
        Attribute(
            "status", [](ActivityInfo & a) -> auto& { return a.status; },
            "<ExtendedAttribute Name = \"status\" Value = \"", "\"/>\n<ExtendedAttribute Name = \"externId\""),
        Attribute(
            "extid", [](ActivityInfo & a) -> auto& { return a.extid; },
            "<ExtendedAttribute Name = \"externId\" Value = \"", "\"/>\n<ExtendedAttribute Name = \"generation\""),
        Attribute(
            "process.context", [](ActivityInfo & a) -> auto& { return a.process.context; },
            "</Activities>\n<ExtendedAttributes>\n<ExtendedAttribute Name = \"context\" Value = \"",
            "\"/>\n</ExtendedAttributes>\n</WorkflowProcess>\n</WorkflowProcesses>\n</Package>\n"),
    };
}

/** A record without any text, with one data field, one input and one output. */
struct BareActivity : ActivityInfo {
    BareActivity() {
        process.SetDataNumber(1);
        SetInputNumber(1);
        SetOutputNumber(1);
    }
};

}  // namespace

TEST(ActivityToXml, FreshRecordGivesACompleteDocument) {
    EXPECT_EQ(Masked(Written(ActivityInfo())), kHead + R"(<Participants>
<Participant Id = "">
<ParticipantType Type = ""/>
</Participant>
</Participants>
<WorkflowProcesses>
<WorkflowProcess Id = "" Name = "">
<ProcessHeader DurationUnit = ""/>
<DataFields/>
<Activities>
<Activity Id = "" Name = "">
<Description/>
<Implementation>
<No/>
</Implementation>
<Priority>
</Priority>
<SimulationInformation>
<Cost/>
<TimeEstimation>
<Duration>0</Duration>
</TimeEstimation>
</SimulationInformation>
<ExtendedAttributes>
<ExtendedAttribute Name = "status" Value = ""/>
<ExtendedAttribute Name = "externId" Value = ""/>
<ExtendedAttribute Name = "generation" Value = "1"/>
</ExtendedAttributes>
</Activity>
</Activities>
<ExtendedAttributes>
<ExtendedAttribute Name = "context" Value = ""/>
</ExtendedAttributes>
</WorkflowProcess>
</WorkflowProcesses>
</Package>
)");
}

TEST(ActivityToXml, FullRecordGivesEveryFieldInItsPlace) {
    ActivityInfo activity;
    RecordTesting::FillSample(activity);
    activity.abstract = "Check the \"drawing\" & <sign>";
    activity.extid = "qor://ACTION/A1";
    activity.duration = -5;
    activity.documentation = "caf\xE9";
    activity.process.context = "qor://CONTEXT/x?context=a&Nickname=b";
    activity.process.datas[1].type = BexUnicodeString();
    activity.process.datas[1].extid = BexUnicodeString();
    activity.process.datas[1].value = "";
    activity.inputs[0] = "A";
    activity.inputs[1] = "B";
    activity.SetOutputNumber(1);
    activity.outputs[0] = "C";
    EXPECT_EQ(Masked(Written(activity)), kHead + R"(<Participants>
<Participant Id = "jones">
<ParticipantType Type = "HUMAN"/>
</Participant>
</Participants>
<WorkflowProcesses>
<WorkflowProcess Id = "P7" Name = "Release">
<ProcessHeader DurationUnit = "D"/>
<DataFields>
<DataField Id = "D1">
<DataType>
<DeclaredType Id = "Part"/>
</DataType>
<InitialValue>v1</InitialValue>
<ExtendedAttributes>
<ExtendedAttribute Name = "externId" Value = "url1"/>
</ExtendedAttributes>
</DataField>
<DataField Id = "D2">
<DataType>
<DeclaredType Id = ""/>
</DataType>
<InitialValue>
</InitialValue>
<ExtendedAttributes>
<ExtendedAttribute Name = "externId" Value = ""/>
</ExtendedAttributes>
</DataField>
</DataFields>
<Activities>
<Activity Id = "A1" Name = "Design review">
<Description>Check the &quot;drawing&quot; &amp; &lt;sign&gt;</Description>
<Implementation>
<No/>
</Implementation>
<Performer>smith</Performer>
<Priority>high</Priority>
<SimulationInformation>
<Cost/>
<TimeEstimation>
<Duration>-5</Duration>
</TimeEstimation>
</SimulationInformation>
)" + std::string("<Documentation>caf\xE9</Documentation>\n") +
                                             R"(<ExtendedAttributes>
<ExtendedAttribute Name = "IN" Value = "A"/>
<ExtendedAttribute Name = "IN" Value = "B"/>
<ExtendedAttribute Name = "OUT" Value = "C"/>
<ExtendedAttribute Name = "status" Value = "RUN"/>
<ExtendedAttribute Name = "externId" Value = "qor://ACTION/A1"/>
<ExtendedAttribute Name = "generation" Value = "34"/>
</ExtendedAttributes>
</Activity>
</Activities>
<ExtendedAttributes>
<ExtendedAttribute Name = "context" Value = "qor://CONTEXT/x?context=a&amp;Nickname=b"/>
</ExtendedAttributes>
</WorkflowProcess>
</WorkflowProcesses>
</Package>
)");
}

TEST(ActivityToXml, EveryTextFieldIsWrittenForTextForEmptyAndForNull) {
    struct Case {
        BexUnicodeString text;
        std::string written;
    };
    const Case cases[] = {
        {"one", "one"},
        {"a<b & \"c\" 'd'", "a&lt;b &amp; &quot;c&quot; 'd'"},
        {"><", "&gt;&lt;"},
        {">", "&gt;"},
        {"a><b><c", "a&gt;&lt;b&gt;&lt;c"},
        {"\xE9\x80\xFF", "\xE9\x80\xFF"},
        {" blanks ", " blanks "},
        {"line\nfeed", "line\nfeed"},
        {"\x01\x7F", "\x01\x7F"},
        {"&amp;", "&amp;amp;"},
        {BexUnicodeString("cut\0here", 8), "cut"},
        {BexUnicodeString(u"\u20acx\U0001F600", 4), "?x??"},
    };
    for (const TextField& field : TextFields()) {
        BareActivity activity;
        EXPECT_THAT(Written(activity), HasSubstr(field.forNull)) << field.name << " null";
        field.of(activity) = "";
        EXPECT_THAT(Written(activity), HasSubstr(field.forEmpty)) << field.name << " empty";
        field.of(activity) = BexUnicodeString("\0behind", 7);
        EXPECT_THAT(Written(activity), HasSubstr(field.forEmpty)) << field.name << " empty before a NUL character";
        for (const Case& one : cases) {
            field.of(activity) = one.text;
            EXPECT_THAT(Written(activity), HasSubstr(field.withText(one.written))) << field.name;
        }
    }
}

TEST(ActivityToXml, AFieldChangesNothingButItsOwnPlace) {
    BareActivity bare;
    const std::string document = Masked(Written(bare));
    for (const TextField& field : TextFields()) {
        BareActivity activity;
        field.of(activity) = "text";
        std::string changed = Masked(Written(activity));
        const std::string part = field.withText("text");
        const std::size_t at = changed.find(part);
        ASSERT_NE(at, std::string::npos) << field.name;
        EXPECT_EQ(changed.replace(at, part.size(), field.forNull), document) << field.name;
    }
}

TEST(ActivityToXml, NumbersAreDecimal) {
    struct Case {
        long duration;
        int generation;
    };
    for (const Case& one : {Case{0, 0}, Case{-5, 3}, Case{7, -7}, Case{2147483647L, INT_MAX},
                            Case{-2147483647L - 1, INT_MIN}, Case{LONG_MAX, 1}, Case{LONG_MIN, 1}}) {
        ActivityInfo activity;
        activity.duration = one.duration;
        activity.generation = one.generation;
        const std::string document = Written(activity);
        EXPECT_THAT(document, HasSubstr("<Duration>" + std::to_string(one.duration) + "</Duration>"));
        EXPECT_THAT(document, HasSubstr("<ExtendedAttribute Name = \"generation\" Value = \"" +
                                        std::to_string(one.generation) + "\"/>"));
    }
}

TEST(ActivityToXml, ListsAreWrittenInTheirOrder) {
    ActivityInfo activity;
    activity.SetInputNumber(3);
    activity.SetOutputNumber(2);
    const char* const names[] = {"b", "a", "b"};
    for (int index = 0; index < 3; ++index) {
        activity.inputs[index] = names[index];
    }
    activity.outputs[0] = "z";
    const std::string entry = "<ExtendedAttribute Name = \"";
    EXPECT_THAT(Written(activity), HasSubstr("<ExtendedAttributes>\n" + entry + "IN\" Value = \"b\"/>\n" + entry +
                                             "IN\" Value = \"a\"/>\n" + entry + "IN\" Value = \"b\"/>\n" + entry +
                                             "OUT\" Value = \"z\"/>\n" + entry + "OUT\" Value = \"\"/>\n" + entry +
                                             "status\" Value = \"\"/>\n"));
}

TEST(ActivityToXml, NegativeCountsAreEmptyLists) {
    ActivityInfo activity;
    activity.process.SetDataNumber(-1);
    activity.SetInputNumber(-2);
    activity.SetOutputNumber(-3);
    EXPECT_EQ(Masked(Written(activity)), Masked(Written(ActivityInfo())));
}

TEST(ActivityToXml, NoTwoTagsStandOnOneLine) {
    BareActivity activity;
    for (const TextField& field : TextFields()) {
        field.of(activity) = "><a></a><";
    }
    EXPECT_THAT(Written(activity), Not(HasSubstr("><")));
}

TEST(ActivityToXml, ReplacesWhatTheTextHeld) {
    const std::string expected = Masked(Written(ActivityInfo()));
    for (const BexUnicodeString& before :
         {BexUnicodeString("old"), BexUnicodeString(""), BexUnicodeString(u"\u20ac", 1),
          BexUnicodeString(std::string(100000, 'x').c_str())}) {
        BexUnicodeString xml(before);
        QorWflActivityToXml(ActivityInfo(), xml);
        EXPECT_EQ(Masked(Bytes(xml)), expected);
        QorWflActivityToXml(ActivityInfo(), xml);
        EXPECT_EQ(Masked(Bytes(xml)), expected);
    }
}

TEST(ActivityToXml, TextIsOneByteACharacter) {
    ActivityInfo activity;
    activity.abstract = BexUnicodeString(u"\u20ac\u0100", 2);
    BexUnicodeString xml;
    QorWflActivityToXml(activity, xml);
    EXPECT_EQ(xml.IsNull(), 0);
    EXPECT_FALSE(xml.IsWide());
    EXPECT_THAT(Bytes(xml), HasSubstr("<Description>\?\?</Description>"));
}

TEST(ActivityToXml, CreatedIsTheLocalTimeOfTheCall) {
    for (int attempt = 0; attempt < 10; ++attempt) {
        const std::string before = BexTime().ConvertToString("%m-%d-%Y-%H:%M:%S").ConvertToChar();
        const std::string document = Written(ActivityInfo());
        const std::string behind = BexTime().ConvertToString("%m-%d-%Y-%H:%M:%S").ConvertToChar();
        if (before == behind) {
            EXPECT_THAT(document, HasSubstr("\n<Created>" + before + "</Created>\n"));
            return;
        }
    }
    FAIL() << "no ten calls within one second each";
}

TEST(ActivityToXml, RecordIsNotChangedAndGivesTheSameTextAgain) {
    BareActivity activity;
    for (const TextField& field : TextFields()) {
        field.of(activity) = field.name;
    }
    const std::string first = Masked(Written(activity));
    EXPECT_EQ(Masked(Written(activity)), first);
    for (const TextField& field : TextFields()) {
        EXPECT_EQ(Bytes(field.of(activity)), field.name);
    }
}

TEST(ActivityToXml, TakesTimeInProportionToTheRecord) {
    ActivityInfo activity;
    activity.SetInputNumber(100000);
    activity.process.SetDataNumber(20000);
    activity.abstract = BexUnicodeString(std::string(3000000, '<').c_str());
    const ProcessorTime time;
    const std::string document = Written(activity);
    EXPECT_LT(time.Seconds(), ProcessorTime::kQuick);
    EXPECT_GT(document.size(), 12000000U);
}
