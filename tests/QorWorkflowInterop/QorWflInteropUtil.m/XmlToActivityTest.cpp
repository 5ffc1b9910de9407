#include "ActivityFields.h"
#include "XpdlReply.h"

#include <ActivityInfo.h>
#include <QorWflXmlToActivity.h>

#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <ProcessorTime.h>
#include <climits>
#include <iostream>
#include <string>

namespace {

/** The fields that XpdlReply() gives, some of them changed. */
ActivityFields NewBut(const ActivityFields& iChanges) {
    return With(NewFields(), iChanges);
}

std::string Entry(const std::string& iName, const std::string& iValue) {
    return "<ExtendedAttribute Name=\"" + iName + "\" Value=\"" + iValue + "\"/>";
}

/** The reply with other entries in the activity's extended attributes. */
std::string WithEntries(const std::string& iEntries) {
    return WithElement(XpdlReply(), "ExtendedAttributes", "<ExtendedAttributes>" + iEntries + "</ExtendedAttributes>",
                       3);
}

}  // namespace

TEST(XmlToActivity, EveryFieldIsReadFromItsPlace) {
    EXPECT_EQ(FieldsAfterReading(XpdlReply()), NewFields());
}

TEST(XmlToActivity, FillsAFreshRecord) {
    ActivityInfo activity;
    QorWflXmlToActivity(XpdlReply().c_str(), activity);
    EXPECT_EQ(FieldsOf(activity), NewFields());
}

TEST(XmlToActivity, ReadingAgainGivesTheSame) {
    ActivityInfo activity;
    for (int round = 0; round < 3; ++round) {
        QorWflXmlToActivity(XpdlReply().c_str(), activity);
        EXPECT_EQ(FieldsOf(activity), NewFields());
    }
}

TEST(XmlToActivity, FieldWhoseOptionalElementIsMissingIsUnchanged) {
    struct Case {
        const char* tag;
        int number;
        ActivityFields changes;
    };
    const Case cases[] = {
        {"Description", 1, {{"abstract", "\"old abstract\""}}},
        {"Performer", 1, {{"owner", "\"old owner\""}}},
        {"Priority", 1, {{"priority", "\"old priority\""}}},
        {"SimulationInformation", 1, {{"duration", "22"}}},
        {"Duration", 1, {{"duration", "22"}}},
        {"Documentation", 1, {{"documentation", "\"old documentation\""}}},
        {"ExtendedAttributes", 4, {{"process.context", "\"old process.context\""}}},
        {"Implementation", 1, {}},
        {"Cost", 1, {}},
        {"XPDLVersion", 1, {}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(FieldsAfterReading(WithoutElement(XpdlReply(), one.tag, one.number)), NewBut(one.changes)) << one.tag;
    }
}

TEST(XmlToActivity, FieldOfAMissingEntryIsUnchanged) {
    struct Case {
        const char* entry;
        ActivityFields changes;
    };
    const Case cases[] = {
        {R"(<ExtendedAttribute Name="status" Value="new status"/>)", {{"status", "\"old status\""}}},
        {R"(<ExtendedAttribute Name="externId" Value="new extid"/>)", {{"extid", "\"old extid\""}}},
        {R"(<ExtendedAttribute Name="generation" Value="33"/>)", {{"generation", "11"}}},
        {R"(<ExtendedAttribute Name="context" Value="new process.context"/>)",
         {{"process.context", "\"old process.context\""}}},
        {R"(<ExtendedAttribute Name="OUT" Value="d2"/>)", {{"outputs", "null"}, {"outputNumber", "0"}}},
        {R"(<ExtendedAttribute Name="IN" Value="d2"/>)", {{"inputs", "[\"d1\"]"}, {"inputNumber", "1"}}},
        {R"(<ExtendedAttribute Name="externId" Value="x1"/>)",
         {{"process.datas", R"([{"d1" "t1" null "v1"}{"d2" "t2" "x2" "v2"}])"}}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), one.entry, "")), NewBut(one.changes)) << one.entry;
    }
}

TEST(XmlToActivity, MissingAttributeGivesAnEmptyText) {
    struct Case {
        const char* attribute;
        ActivityFields changes;
    };
    const Case cases[] = {
        {" Id=\"new participant\"", {{"participant", "\"\""}}},
        {" Type=\"new participantType\"", {{"participantType", "\"\""}}},
        {" Id=\"new process.id\"", {{"process.id", "\"\""}}},
        {" Name=\"new process.name\"", {{"process.name", "\"\""}}},
        {" DurationUnit=\"new durationUnit\"", {{"durationUnit", "\"\""}}},
        {" Id=\"new id\"", {{"id", "\"\""}}},
        {" Name=\"new name\"", {{"name", "\"\""}}},
        {" Id=\"d1\"", {{"process.datas", R"([{"" "t1" "x1" "v1"}{"d2" "t2" "x2" "v2"}])"}}},
        {" Id=\"t2\"", {{"process.datas", R"([{"d1" "t1" "x1" "v1"}{"d2" "" "x2" "v2"}])"}}},
        {" Value=\"x1\"", {{"process.datas", R"([{"d1" "t1" "" "v1"}{"d2" "t2" "x2" "v2"}])"}}},
        {" Value=\"d1\"", {{"inputs", "[\"\"\"d2\"]"}}},
        {" Value=\"new status\"", {{"status", "\"\""}}},
        {" Value=\"new extid\"", {{"extid", "\"\""}}},
        {" Value=\"33\"", {{"generation", "11"}}},
        {" Value=\"new process.context\"", {{"process.context", "\"\""}}},
        {" Id=\"p\"", {}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), one.attribute, "")), NewBut(one.changes)) << one.attribute;
    }
}

TEST(XmlToActivity, EmptyAttributeGivesAnEmptyText) {
    struct Case {
        const char* value;
        const char* field;
    };
    for (const Case& one :
         {Case{"new participant", "participant"}, Case{"new participantType", "participantType"},
          Case{"new process.id", "process.id"}, Case{"new process.name", "process.name"},
          Case{"new durationUnit", "durationUnit"}, Case{"new id", "id"}, Case{"new name", "name"},
          Case{"new status", "status"}, Case{"new extid", "extid"}, Case{"new process.context", "process.context"}}) {
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), std::string("\"") + one.value + "\"", "\"\"")),
                  NewBut({{one.field, "\"\""}}))
            << one.field;
    }
}

TEST(XmlToActivity, ElementWithoutTextGivesAnEmptyText) {
    struct Case {
        const char* tag;
        ActivityFields changes;
    };
    const Case cases[] = {
        {"Description", {{"abstract", "\"\""}}},
        {"Performer", {{"owner", "\"\""}}},
        {"Priority", {{"priority", "\"\""}}},
        {"Duration", {{"duration", "22"}}},
        {"Documentation", {{"documentation", "\"\""}}},
        {"InitialValue", {{"process.datas", R"([{"d1" "t1" "x1" ""}{"d2" "t2" "x2" "v2"}])"}}},
        {"Vendor", {}},
    };
    for (const Case& one : cases) {
        const std::string tag = one.tag;
        for (const std::string& empty :
             {"<" + tag + "/>", "<" + tag + "></" + tag + ">", "<" + tag + " a=\"b\"/>",
              "<" + tag + "><!--text--></" + tag + ">", "<" + tag + "><![CDATA[1]]></" + tag + ">",
              "<" + tag + "><b>1</b></" + tag + ">"}) {
            EXPECT_EQ(FieldsAfterReading(WithElement(XpdlReply(), tag, empty)), NewBut(one.changes)) << empty;
        }
    }
}

TEST(XmlToActivity, TextOfAnElementIsItsFirstTextNode) {
    struct Case {
        std::string content;
        std::string text;
    };
    const Case cases[] = {
        {"one", "one"},
        {" one ", " one "},
        {"\n", "\n"},
        {"one<!--c-->two", "one"},
        {"<!--c-->two", "two"},
        {"one<![CDATA[two]]>three", "one"},
        {"<![CDATA[two]]>three", "three"},
        {"one<?t d?>two", "one"},
        {"one<b>two</b>three", "one"},
        {"<b>two</b>three", "three"},
        {"a &lt;b&gt; &amp; &quot;c&apos;", "a <b> & \"c'"},
        {"&#65;&#xE9;", "A\xE9"},
        {"&#8364;", "?"},
        {"&#x1F600;", "\?\?"},
        {"caf\xE9", "caf\xE9"},
        {"one\r\ntwo", "one\ntwo"},
        {std::string(100000, 'x'), std::string(100000, 'x')},
    };
    for (const Case& one : cases) {
        const auto within = [&one](const std::string& iTag, int iNumber) {
            return WithElement(XpdlReply(), iTag, "<" + iTag + ">" + one.content + "</" + iTag + ">", iNumber);
        };
        const std::string shown = "\"" + one.text + "\"";
        EXPECT_EQ(FieldsAfterReading(within("Description", 1)), NewBut({{"abstract", shown}}));
        EXPECT_EQ(FieldsAfterReading(within("Performer", 1)), NewBut({{"owner", shown}}));
        EXPECT_EQ(FieldsAfterReading(within("Priority", 1)), NewBut({{"priority", shown}}));
        EXPECT_EQ(FieldsAfterReading(within("Documentation", 1)), NewBut({{"documentation", shown}}));
        EXPECT_EQ(FieldsAfterReading(within("InitialValue", 2)),
                  NewBut({{"process.datas", R"([{"d1" "t1" "x1" "v1"}{"d2" "t2" "x2" )" + shown + "}]"}}));
    }
}

TEST(XmlToActivity, NumbersAreReadAsFarAsTheyGo) {
    struct Case {
        const char* text;
        const char* duration;
        const char* generation;
    };
    const bool isLongWide = LONG_MAX > INT_MAX;  // durations go as far as a long does
    const Case cases[] = {
        {"7", "7", "7"},
        {"-5", "-5", "-5"},
        {"+8", "8", "8"},
        {"007", "7", "7"},
        {" 9 ", "9", "9"},
        {"12 days", "12", "12"},
        {"1.5", "1", "1"},
        {"x", "22", "11"},
        {"-", "22", "11"},
        {"2147483647", "2147483647", "2147483647"},
        {"2147483648", isLongWide ? "2147483648" : "22", "11"},
        {"-2147483648", "-2147483648", "-2147483648"},
        {"-9223372036854775808", isLongWide ? "-9223372036854775808" : "22", "11"},
        {"99999999999999999999999", "22", "11"},
    };
    for (const Case& one : cases) {
        const std::string text = one.text;
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), "<Duration>44", "<Duration>" + text)),
                  NewBut({{"duration", one.duration}}))
            << text;
        EXPECT_EQ(FieldsAfterReading(WithPart(XpdlReply(), "Value=\"33\"", "Value=\"" + text + "\"")),
                  NewBut({{"generation", one.generation}}))
            << text;
    }
}

TEST(XmlToActivity, WithoutParticipantsThePerformerIsTheParticipant) {
    const std::string older = WithoutElement(XpdlReply(), "Participants");
    EXPECT_EQ(FieldsAfterReading(older), NewBut({{"participant", "\"new owner\""}, {"participantType", "\"HUMAN\""}}));
    EXPECT_EQ(FieldsAfterReading(WithElement(older, "Performer", "<Performer>jdoe</Performer>")),
              NewBut({{"owner", "\"jdoe\""}, {"participant", "\"jdoe\""}, {"participantType", "\"HUMAN\""}}));
    EXPECT_EQ(FieldsAfterReading(WithElement(older, "Performer", "<Performer/>")),
              NewBut({{"owner", "\"\""}, {"participant", "\"\""}, {"participantType", "\"HUMAN\""}}));
}

TEST(XmlToActivity, WithoutParticipantsAndPerformerBothParticipantFieldsAreNull) {
    EXPECT_EQ(FieldsAfterReading(WithoutElement(WithoutElement(XpdlReply(), "Participants"), "Performer")),
              NewBut({{"owner", "\"old owner\""}, {"participant", "null"}, {"participantType", "null"}}));
}

TEST(XmlToActivity, ParticipantThatWasReadIsNotOverwritten) {
    const std::string reply = WithElement(XpdlReply(), "Participants",
                                          "<Participants><Participant><ParticipantType/></Participant></Participants>");
    EXPECT_EQ(FieldsAfterReading(reply), NewBut({{"participant", "\"\""}, {"participantType", "\"\""}}));
}

TEST(XmlToActivity, FirstElementOfATagCounts) {
    struct Case {
        const char* tag;
        const char* second;
    };
    const Case cases[] = {
        {"PackageHeader", "<PackageHeader/>"},
        {"Vendor", "<Vendor>second</Vendor>"},
        {"Participants", "<Participants/>"},
        {"Participant", "<Participant Id='second'><ParticipantType Type='second'/></Participant>"},
        {"ParticipantType", "<ParticipantType Type='second'/>"},
        {"WorkflowProcesses", "<WorkflowProcesses/>"},
        {"WorkflowProcess", "<WorkflowProcess Id='second'/>"},
        {"ProcessHeader", "<ProcessHeader DurationUnit='second'/>"},
        {"DataFields", "<DataFields><DataField Id='second'/></DataFields>"},
        {"DataType", "<DataType/>"},
        {"DeclaredType", "<DeclaredType Id='second'/>"},
        {"InitialValue", "<InitialValue>second</InitialValue>"},
        {"Activities", "<Activities/>"},
        {"Activity", "<Activity Id='second'/>"},
        {"Description", "<Description>second</Description>"},
        {"Performer", "<Performer>second</Performer>"},
        {"Priority", "<Priority>second</Priority>"},
        {"SimulationInformation", "<SimulationInformation/>"},
        {"TimeEstimation", "<TimeEstimation><Duration>99</Duration></TimeEstimation>"},
        {"Duration", "<Duration>99</Duration>"},
        {"Documentation", "<Documentation>second</Documentation>"},
    };
    for (const Case& one : cases) {
        std::string reply = XpdlReply();
        const ElementPlace place = ElementPlace::Of(reply, one.tag);
        reply.insert(place.start + place.length, one.second);
        EXPECT_EQ(FieldsAfterReading(reply), NewFields()) << one.tag;
    }
    for (int number = 1; number <= 4; ++number) {
        std::string reply = XpdlReply();
        const ElementPlace place = ElementPlace::Of(reply, "ExtendedAttributes", number);
        reply.insert(place.start + place.length, "<ExtendedAttributes>" + Entry("externId", "second") +
                                                     Entry("context", "second") + Entry("IN", "second") +
                                                     "</ExtendedAttributes>");
        EXPECT_EQ(FieldsAfterReading(reply), NewFields()) << number;
    }
}

TEST(XmlToActivity, LaterEntryOfTheActivityAndTheProcessWins) {
    EXPECT_EQ(FieldsAfterReading(WithEntries(
                  Entry("status", "s1") + Entry("externId", "e1") + Entry("generation", "1") + Entry("status", "s2") +
                  Entry("externId", "e2") + Entry("generation", "2") + Entry("status", "s3"))),
              NewBut({{"status", "\"s3\""},
                      {"extid", "\"e2\""},
                      {"generation", "2"},
                      {"inputs", "null"},
                      {"inputNumber", "0"},
                      {"outputs", "null"},
                      {"outputNumber", "0"}}));
    EXPECT_EQ(
        FieldsAfterReading(WithElement(XpdlReply(), "ExtendedAttributes",
                                       "<ExtendedAttributes>" + Entry("context", "c1") + Entry("other", "c") +
                                           Entry("context", "c2") + Entry("Context", "c3") + "</ExtendedAttributes>",
                                       4)),
        NewBut({{"process.context", "\"c2\""}}));
    EXPECT_EQ(FieldsAfterReading(WithElement(XpdlReply(), "ExtendedAttributes",
                                             "<ExtendedAttributes>" + Entry("context", "c1") +
                                                 "<ExtendedAttribute Name='context'/></ExtendedAttributes>",
                                             4)),
              NewBut({{"process.context", "\"\""}}));
}

TEST(XmlToActivity, FirstEntryOfADataFieldWins) {
    const auto withEntries = [](const std::string& iEntries) {
        return FieldsAfterReading(WithElement(XpdlReply(), "ExtendedAttributes",
                                              "<ExtendedAttributes>" + iEntries + "</ExtendedAttributes>", 1));
    };
    const auto extid = [](const std::string& iExtid) {
        return NewBut({{"process.datas", R"([{"d1" "t1" )" + iExtid + R"( "v1"}{"d2" "t2" "x2" "v2"}])"}});
    };
    EXPECT_EQ(withEntries(Entry("other", "a") + Entry("externId", "b") + Entry("externId", "c")), extid("\"b\""));
    EXPECT_EQ(withEntries("<ExtendedAttribute Name='externId'/>" + Entry("externId", "c")), extid("\"\""));
    EXPECT_EQ(withEntries(Entry("ExternId", "b") + Entry("context", "c")), extid("null"));
    EXPECT_EQ(withEntries(""), extid("null"));
}

TEST(XmlToActivity, InputsAndOutputsAreInTheOrderOfTheDocument) {
    EXPECT_EQ(FieldsAfterReading(WithEntries(Entry("IN", "c") + Entry("IN", "a") + Entry("IN", "c"))),
              NewBut({{"inputs", "[\"c\"\"a\"\"c\"]"},
                      {"inputNumber", "3"},
                      {"outputs", "null"},
                      {"outputNumber", "0"},
                      {"status", "\"old status\""},
                      {"extid", "\"old extid\""},
                      {"generation", "11"}}));
    EXPECT_EQ(FieldsAfterReading(WithEntries(Entry("OUT", "2") + Entry("IN", "1") + Entry("OUT", "") +
                                             "<ExtendedAttribute Name='OUT'/>" + Entry("in", "x") + Entry("Out", "x") +
                                             Entry("IN ", "x") +
                                             "<ExtendedAttribute Value='x'/><Other Name='IN' Value='x'/>")),
              NewBut({{"inputs", "[\"1\"]"},
                      {"inputNumber", "1"},
                      {"outputs", "[\"2\"\"\"\"\"]"},
                      {"outputNumber", "3"},
                      {"status", "\"old status\""},
                      {"extid", "\"old extid\""},
                      {"generation", "11"}}));
    EXPECT_EQ(FieldsAfterReading(WithEntries(Entry("Status", "x") + Entry("EXTERNID", "x") + Entry("Generation", "7"))),
              NewBut({{"inputs", "null"},
                      {"inputNumber", "0"},
                      {"outputs", "null"},
                      {"outputNumber", "0"},
                      {"status", "\"old status\""},
                      {"extid", "\"old extid\""},
                      {"generation", "11"}}));
}

TEST(XmlToActivity, DataFieldsAreInTheOrderOfTheDocument) {
    const auto field = [](const std::string& iId) {
        return "<!--c-->\n<Other/><DataField Id='" + iId +
               "'><DataType><DeclaredType Id='t'/></DataType><InitialValue/><ExtendedAttributes/></DataField>";
    };
    EXPECT_EQ(FieldsAfterReading(WithElement(XpdlReply(), "DataFields",
                                             "<DataFields>" + field("b") + field("a") + field("b") + "</DataFields>")),
              NewBut({{"process.datas", R"([{"b" "t" null ""}{"a" "t" null ""}{"b" "t" null ""}])"},
                      {"process.dataNumber", "3"}}));
    EXPECT_EQ(FieldsAfterReading(WithElement(XpdlReply(), "DataFields", "<DataFields/>")),
              NewBut({{"process.datas", "null"}, {"process.dataNumber", "0"}}));
}

TEST(XmlToActivity, OtherElementsAndNodesAreIgnored) {
    std::string reply = XpdlReply();
    for (const char* tag : {"PackageHeader", "Participant", "ParticipantType", "WorkflowProcess", "ProcessHeader",
                            "DataField", "DataType", "DeclaredType", "InitialValue", "Activity", "Description",
                            "Performer", "Duration", "ExtendedAttribute"}) {
        reply.insert(ElementPlace::Of(reply, tag).start,
                     "text<!--comment--><?target data?><![CDATA[cdata]]><Other><Vendor>x</Vendor><" + std::string(tag) +
                         " Id='x' Type='x' DurationUnit='x' Name='status' Value='x'>x</" + tag + "></Other>");
    }
    EXPECT_EQ(FieldsAfterReading(reply), NewFields());
}

TEST(XmlToActivity, RootMayHaveAnyName) {
    std::string reply = WithPart(XpdlReply(), "<Package ", "<Anything xmlns='urn:x' ");
    reply = WithPart(reply, "</Package>", "</Anything>");
    EXPECT_EQ(FieldsAfterReading(reply), NewFields());
    reply = WithPart(reply, "<XPDLVersion>0.02", "<XPDLVersion>9.9");
    EXPECT_EQ(FieldsAfterReading(reply), NewFields());
}

TEST(XmlToActivity, WhatStandsAroundTheRootIsIgnored) {
    const std::string around = "<!--<Package/>-->\n<?target <Package/>?>";
    const std::string reply = WithPart(XpdlReply(), "<Package ", around + "<Package ") + around + "\n \n";
    EXPECT_EQ(FieldsAfterReading(reply), NewFields());
}

TEST(XmlToActivity, VendorChangesNothing) {
    for (const char* vendor :
         {"VERANT_050803", "VERANT_", "VERANT_x", "verant_050803", "ACME", "", "VERANT_99999999999"}) {
        EXPECT_EQ(
            FieldsAfterReading(WithElement(XpdlReply(), "Vendor", std::string("<Vendor>") + vendor + "</Vendor>")),
            NewFields())
            << vendor;
    }
}

TEST(XmlToActivity, TextIsReadInTheEncodingThatItNames) {
    const auto described = [](const std::string& iDeclaration, const std::string& iBytes) {
        std::string reply = WithPart(XpdlReply(), R"(<?xml version="1.0" encoding="ISO-8859-1"?>)", iDeclaration);
        return FieldsAfterReading(WithPart(reply, "new abstract", iBytes)).at("abstract");
    };
    EXPECT_EQ(described("<?xml version='1.0' encoding='ISO-8859-1' ?>", "\xE9"), "\"\xE9\"");
    EXPECT_EQ(described("<?xml version='1.0' encoding='UTF-8'?>", "\xC3\xA9"), "\"\xE9\"");
    EXPECT_EQ(described("", "\xC3\xA9 \xE2\x82\xAC"), "\"\xE9 ?\"");
    EXPECT_EQ(described("<?xml version='1.0' encoding='windows-1252'?>", "\x80\xE9"), "\"?\xE9\"");
    const CapturedStream errors(std::cerr);
    EXPECT_EQ(described("", "\xE9"), "\"old abstract\"");
    EXPECT_EQ(errors.Text(), "getDocument failed\n");
}

TEST(XmlToActivity, CharacterAboveAByteInTheTextIsAQuestionMark) {
    const std::string reply = WithPart(XpdlReply(), "new abstract", "a#b");
    std::u16string wide(reply.begin(), reply.end());
    wide[wide.find(u'#', wide.find(u"a#b"))] = u'\u20ac';
    ActivityInfo activity;
    QorWflXmlToActivity(BexUnicodeString(wide.data(), static_cast<int>(wide.size())), activity);
    EXPECT_EQ(FieldsOf(activity), NewBut({{"abstract", "\"a?b\""}}));
}

TEST(XmlToActivity, ExternalSubsetIsReadPast) {
    EXPECT_EQ(
        FieldsAfterReading(WithPart(XpdlReply(), "<Package ", "<!DOCTYPE Package SYSTEM 'no-such-file'>\n<Package ")),
        NewFields());
}

TEST(XmlToActivity, TakesTimeInProportionToTheText) {
    std::string entries;
    std::string fields = "<DataFields>";
    for (int count = 0; count < 100000; ++count) {
        entries += Entry(count % 2 == 0 ? "IN" : "OUT", std::to_string(count));
    }
    for (int count = 0; count < 30000; ++count) {
        fields +=
            "<DataField Id='d'><DataType><DeclaredType/></DataType><InitialValue/><ExtendedAttributes/></DataField>";
    }
    ActivityInfo activity;
    const BexUnicodeString reply(WithElement(WithEntries(entries), "DataFields", fields + "</DataFields>").c_str());
    const ProcessorTime time;
    QorWflXmlToActivity(reply, activity);
    EXPECT_LT(time.Seconds(), ProcessorTime::kQuick);
    EXPECT_EQ(activity.inputNumber, 50000);
    EXPECT_EQ(activity.outputNumber, 50000);
    EXPECT_EQ(activity.process.dataNumber, 30000);
    EXPECT_STREQ(activity.outputs[49999].ConvertToChar(), "99999");
}
