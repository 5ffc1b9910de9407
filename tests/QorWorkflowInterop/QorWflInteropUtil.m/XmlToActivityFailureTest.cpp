#include "ActivityFields.h"
#include "XpdlReply.h"

#include <ActivityInfo.h>
#include <QorWflXmlToActivity.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <CapturedTrace.h>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using testing::Contains;

/** What reading a text into a record of old values writes to standard error and leaves in the record. */
struct Outcome {
    std::string errors;
    ActivityFields fields;
};

Outcome Read(const std::string& iText) {
    const CapturedStream errors(std::cerr);
    const ActivityFields fields = FieldsAfterReading(iText);
    return {errors.Text(), fields};
}

/** Old values, but new ones for what is read up to and including a field, in the order of reading. */
ActivityFields NewUpTo(const std::string& iLastField) {
    static const std::vector<std::string> kOrder = {
        "participant",   "participantType",    "process.id", "process.name", "durationUnit",
        "process.datas", "process.dataNumber", "id",         "name",         "abstract",
        "owner",         "priority",           "duration",   "documentation"};
    ActivityFields fields = OldFields();
    const ActivityFields read = NewFields();
    if (!iLastField.empty()) {
        const auto last = std::find(kOrder.begin(), kOrder.end(), iLastField);
        EXPECT_NE(last, kOrder.end()) << iLastField;
        std::for_each(kOrder.begin(), std::next(last),
                      [&fields, &read](const std::string& iName) { fields[iName] = read.at(iName); });
    }
    return fields;
}

struct MissingElement {
    const char* tag;
    int number;
    ActivityFields expected;
};

std::vector<MissingElement> RequiredElements() {
    const auto datas = [](const std::string& iDatas) {
        return With(NewUpTo("durationUnit"), {{"process.datas", iDatas}, {"process.dataNumber", "2"}});
    };
    const std::string first = R"({"d1" "t1" "x1" "v1"})";
    const std::string second = "{null null null null}";
    return {
        {"PackageHeader", 1, NewUpTo("")},
        {"Vendor", 1, NewUpTo("")},
        {"Participant", 1, NewUpTo("")},
        {"ParticipantType", 1, NewUpTo("participant")},
        {"WorkflowProcesses", 1, NewUpTo("participantType")},
        {"WorkflowProcess", 1, NewUpTo("participantType")},
        {"ProcessHeader", 1, NewUpTo("process.name")},
        {"DataFields", 1, With(NewUpTo("durationUnit"), {{"process.datas", "null"}, {"process.dataNumber", "0"}})},
        {"DataType", 1, datas("[{null null null null}" + second + "]")},
        {"DeclaredType", 1, datas("[{\"d1\" null null null}" + second + "]")},
        {"InitialValue", 1, datas("[{\"d1\" \"t1\" null null}" + second + "]")},
        {"ExtendedAttributes", 1, datas("[{\"d1\" \"t1\" null \"v1\"}" + second + "]")},
        {"DataType", 2, datas("[" + first + "{null null null null}]")},
        {"DeclaredType", 2, datas("[" + first + "{\"d2\" null null null}]")},
        {"InitialValue", 2, datas("[" + first + "{\"d2\" \"t2\" null null}]")},
        {"ExtendedAttributes", 2, datas("[" + first + "{\"d2\" \"t2\" null \"v2\"}]")},
        {"Activities", 1, NewUpTo("process.dataNumber")},
        {"Activity", 1, NewUpTo("process.dataNumber")},
        {"TimeEstimation", 1, NewUpTo("priority")},
        {"ExtendedAttributes", 3, NewUpTo("documentation")},
    };
}

}  // namespace

TEST(XmlToActivityFailure, MissingRequiredElementEndsTheReadingThere) {
    for (const MissingElement& one : RequiredElements()) {
        const Outcome outcome = Read(WithoutElement(XpdlReply(), one.tag, one.number));
        EXPECT_EQ(outcome.fields, one.expected) << one.tag << " " << one.number;
        EXPECT_EQ(outcome.errors, "") << one.tag;
    }
}

TEST(XmlToActivityFailure, ElementOfAnotherCaseOrWithAPrefixIsMissing) {
    for (const MissingElement& one : RequiredElements()) {
        const std::string tag = one.tag;
        std::string lower = tag;
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](char iChar) { return iChar >= 'A' && iChar <= 'Z' ? static_cast<char>(iChar + 32) : iChar; });
        for (const std::string& other : {lower, "xpdl:" + tag, tag + "s2", "x" + tag}) {
            const std::string reply = WithElement(XpdlReply(), tag, "<" + other + "/>", one.number);
            EXPECT_EQ(Read(reply).fields, one.expected) << other;
        }
    }
}

TEST(XmlToActivityFailure, ElementInADeeperPlaceIsMissing) {
    for (const MissingElement& one : RequiredElements()) {
        std::string reply = XpdlReply();
        const ElementPlace place = ElementPlace::Of(reply, one.tag, one.number);
        reply.insert(place.start + place.length, "</Deeper>");
        reply.insert(place.start, "<Deeper>");
        EXPECT_EQ(Read(reply).fields, one.expected) << one.tag << " " << one.number;
    }
}

TEST(XmlToActivityFailure, FirstElementThatLacksWhatItNeedsIsNotMadeUpForByASecond) {
    struct Case {
        const char* tag;
        const char* lacking;
        ActivityFields expected;
    };
    const Case cases[] = {
        {"PackageHeader", "<PackageHeader/>", NewUpTo("")},
        {"Participants", "<Participants/>", NewUpTo("")},
        {"Participant", "<Participant Id='first'/>", With(NewUpTo(""), {{"participant", "\"first\""}})},
        {"WorkflowProcesses", "<WorkflowProcesses/>", NewUpTo("participantType")},
        {"WorkflowProcess", "<WorkflowProcess Id='first' Name=''/>",
         With(NewUpTo("participantType"), {{"process.id", "\"first\""}, {"process.name", "\"\""}})},
        {"Activities", "<Activities/>", NewUpTo("process.dataNumber")},
        {"Activity", "<Activity Id='first' Name='f'/>",
         With(NewUpTo("process.dataNumber"), {{"id", "\"first\""}, {"name", "\"f\""}})},
        {"SimulationInformation", "<SimulationInformation/>", NewUpTo("priority")},
    };
    for (const Case& one : cases) {
        std::string reply = XpdlReply();
        reply.insert(ElementPlace::Of(reply, one.tag).start, one.lacking);
        EXPECT_EQ(Read(reply).fields, one.expected) << one.tag;
    }
}

TEST(XmlToActivityFailure, ActivityWithoutTimeEstimationKeepsItsParticipantFallback) {
    const std::string older = WithoutElement(WithoutElement(XpdlReply(), "Participants"), "TimeEstimation");
    EXPECT_EQ(Read(older).fields,
              With(NewUpTo("priority"), {{"participant", "\"new owner\""}, {"participantType", "\"HUMAN\""}}));
}

TEST(XmlToActivityFailure, FailureBeforeTheActivityLeavesTheParticipantNullWithoutParticipants) {
    const std::string older = WithoutElement(XpdlReply(), "Participants");
    const ActivityFields nulls = {{"participant", "null"}, {"participantType", "null"}};
    EXPECT_EQ(Read(WithoutElement(older, "WorkflowProcesses")).fields, With(OldFields(), nulls));
    EXPECT_EQ(Read(WithoutElement(older, "Activities")).fields, With(NewUpTo("process.dataNumber"), nulls));
}

TEST(XmlToActivityFailure, RootAloneChangesNothing) {
    for (const char* text :
         {"<a/>", "<Package/>", "<Package>text</Package>", "<PackageHeader><Vendor/></PackageHeader>"}) {
        const Outcome outcome = Read(text);
        EXPECT_EQ(outcome.fields, OldFields()) << text;
        EXPECT_EQ(outcome.errors, "") << text;
    }
}

TEST(XmlToActivityFailure, PrefixedDocumentFailsAtThePackageHeader) {
    std::string prefixed;
    for (const char character : XpdlReply()) {
        prefixed += character;
        if (character == '<') {
            prefixed += "xpdl:";
        }
    }
    for (std::size_t at = prefixed.find("xpdl:/"); at != std::string::npos; at = prefixed.find("xpdl:/", at)) {
        prefixed.replace(at, 6, "/xpdl:");
    }
    prefixed = WithPart(prefixed, "<xpdl:?xml", "<?xml");
    for (const char* attributes : {"", "xmlns:xpdl='http://www.wfmc.org/2002/XPDL1.0' "}) {
        const CapturedTrace trace("WFInteropXML");
        const CapturedStream output(std::cout);
        const Outcome outcome = Read(WithPart(prefixed, "<xpdl:Package ", std::string("<xpdl:Package ") + attributes));
        EXPECT_EQ(outcome.fields, OldFields());
        EXPECT_EQ(outcome.errors, "");
        EXPECT_THAT(trace.Messages(), Contains("Package tag is <xpdl:Package>"));
        EXPECT_THAT(trace.Messages(), Contains("PackageHeader child not found"));
    }
}

TEST(XmlToActivityFailure, TextThatIsNotADocumentIsReportedAndChangesNothing) {
    const std::string reply = XpdlReply();
    const std::string texts[] = {
        "",
        " ",
        "text",
        "<a>",
        reply + "x",
        reply + "<b/>",
        reply.substr(0, reply.size() / 2),
        reply + std::string(1, '\0'),
        std::string(1, '\0') + reply,
        WithPart(reply, "new abstract", std::string("new\0abstract", 12)),
        WithPart(reply, "new abstract", "&undefined;"),
        WithPart(reply, "new abstract", "\x01"),
        WithPart(reply, "ISO-8859-1", "no-such-encoding"),
        WithPart(reply, "ISO-8859-1", "UTF-16"),
        WithPart(WithPart(reply, "ISO-8859-1", "UTF-8"), "new abstract", "caf\xE9"),
        WithPart(reply, "<Package ", "<!DOCTYPE Package [<!ENTITY x 'y'>]><Package "),
        WithPart(reply, "<Package ", "<!DOCTYPE Package [<!ATTLIST Participant Id CDATA 'x'>]><Package "),
        WithPart(reply, "<Package ", "<!DOCTYPE Package []><Package "),
        WithPart(reply, "</Activities>", "</activities>"),
        "\xFF\xFE",
    };
    for (const std::string& text : texts) {
        const Outcome outcome = Read(text);
        EXPECT_EQ(outcome.errors, "getDocument failed\n") << text;
        EXPECT_EQ(outcome.fields, OldFields()) << text;
    }
}

TEST(XmlToActivityFailure, CutDocumentIsReportedAndChangesNothing) {
    const std::string reply = XpdlReply();
    const std::size_t end = reply.rfind('>');
    for (std::size_t length = 0; length <= end; ++length) {
        const Outcome outcome = Read(reply.substr(0, length));
        ASSERT_EQ(outcome.errors, "getDocument failed\n") << length;
        ASSERT_EQ(outcome.fields, OldFields()) << length;
    }
}

TEST(XmlToActivityFailure, NullTextIsReportedAndChangesNothing) {
    const CapturedStream errors(std::cerr);
    ActivityInfo activity;
    FillWithOldValues(activity);
    QorWflXmlToActivity(BexUnicodeString(), activity);
    EXPECT_EQ(FieldsOf(activity), OldFields());
    EXPECT_EQ(errors.Text(), "getDocument failed\n");
}

TEST(XmlToActivityFailure, HugeNestingIsReportedAndChangesNothing) {
    std::string nested;
    for (int depth = 0; depth < 500000; ++depth) {
        nested += "<Package>";
    }
    const Outcome outcome = Read(nested);
    EXPECT_EQ(outcome.errors, "getDocument failed\n");
    EXPECT_EQ(outcome.fields, OldFields());
}

TEST(XmlToActivityFailure, NothingIsWrittenToStandardErrorForAGoodDocument) {
    const Outcome outcome = Read(XpdlReply());
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.fields, NewFields());
}

TEST(XmlToActivityFailure, GoodDocumentAfterABadOneIsRead) {
    const CapturedStream errors(std::cerr);
    ActivityInfo activity;
    for (int round = 0; round < 3; ++round) {
        QorWflXmlToActivity("<a>", activity);
        QorWflXmlToActivity(XpdlReply().c_str(), activity);
        EXPECT_EQ(FieldsOf(activity), NewFields());
    }
    EXPECT_EQ(errors.Text(), "getDocument failed\ngetDocument failed\ngetDocument failed\n");
}
