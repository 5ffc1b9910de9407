#include "ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

ToolResult ImportText(const std::string& iText) {
    return RunTool({"import", "-"}, {.input = iText});
}

/** A document with everything that is required and every field, from whose parts tests take something away. */
const std::string kDocument =
    "<Package>"
    "<PackageHeader><Vendor>V</Vendor></PackageHeader>"
    "<Participants><Participant Id=\"p\"><ParticipantType Type=\"HUMAN\"/></Participant></Participants>"
    "<WorkflowProcesses><WorkflowProcess Id=\"pid\" Name=\"pname\"><ProcessHeader DurationUnit=\"D\"/>"
    "<DataFields>"
    "<DataField Id=\"d1\"><DataType><DeclaredType Id=\"t1\"/></DataType><InitialValue>v1</InitialValue>"
    "<ExtendedAttributes><ExtendedAttribute Name=\"externId\" Value=\"e1\"/></ExtendedAttributes></DataField>"
    "<DataField Id=\"d2\"><DataType ><DeclaredType Id=\"t2\"/></DataType ><InitialValue >v2</InitialValue >"
    "<ExtendedAttributes ><ExtendedAttribute Name=\"externId\" Value=\"e2\"/></ExtendedAttributes ></DataField>"
    "</DataFields>"
    "<Activities><Activity Id=\"aid\" Name=\"aname\"><Performer>o</Performer><Priority>High</Priority>"
    "<SimulationInformation><TimeEstimation><Duration>4</Duration></TimeEstimation></SimulationInformation>"
    "<Documentation>doc</Documentation>"
    "<ExtendedAttributes  ><ExtendedAttribute Name=\"IN\" Value=\"d1\"/></ExtendedAttributes  ></Activity></Activities>"
    "<ExtendedAttributes   ><ExtendedAttribute Name=\"context\" Value=\"c\"/></ExtendedAttributes   >"
    "</WorkflowProcess></WorkflowProcesses>"
    "</Package>";

/** The document with a piece replaced at its first place. */
std::string With(const std::string& iOld, const std::string& iNew) {
    std::string text = kDocument;
    const std::size_t place = text.find(iOld);
    EXPECT_NE(place, std::string::npos) << iOld;
    return place == std::string::npos ? text : text.replace(place, iOld.size(), iNew);
}

/** The document with one element, found by how its start tag begins, called by another name. */
std::string WithoutElement(const std::string& iStart, const std::string& iEnd) {
    std::string text = With(iStart, "<Gone" + iStart.substr(iStart.find_first_of(" >/")));
    if (!iEnd.empty()) {
        const std::size_t end = text.find(iEnd);
        EXPECT_NE(end, std::string::npos) << iEnd;
        text.replace(end, iEnd.size(), "</Gone>");
    }
    return text;
}

}  // namespace

TEST(Import, PrintsTheRecordWithAFinalLineFeed) {
    const ToolResult result = ImportText(kDocument);
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_EQ(
        result.out,
        "id=\"aid\";\nname=\"aname\";\nabstract=\"\";\npriority=\"High\";\nextid=\"\";\nstatus=\"\";\nduration=4;\n"
        "durationUnit=\"D\";\nowner=\"o\";\ndocumentation=\"doc\";\ngeneration=1;\n"
        "process.id=\"pid\";\nprocess.name=\"pname\";\nprocess.context=\"c\";\nprocess.datas.length=2;\n"
        "process.datas.1.name=\"d1\";\nprocess.datas.1.type=\"t1\";\nprocess.datas.1.extid=\"e1\";\n"
        "process.datas.1.value=\"v1\";\n"
        "process.datas.2.name=\"d2\";\nprocess.datas.2.type=\"t2\";\nprocess.datas.2.extid=\"e2\";\n"
        "process.datas.2.value=\"v2\";\n"
        "inputs.length=1;\ninputs.1.name=\"d1\";\noutputs.length=0;\n");
}

TEST(Import, TextThatIsNoDocumentGivesPlaceAndReason) {
    const struct {
        std::string text;
        const char* place;
    } cases[] = {
        {"", "standard input"},
        {"no document", "standard input:1:1: "},
        {"<Package>\n  <PackageHeader>\n</Package>", "standard input:3:"},
        {"<Package/>\n<Package/>", "standard input:2:"},
        {"<Package Id=\"1\" Id=\"2\"/>", "standard input:1:"},
        {"<Package>&undefined;</Package>", "standard input:1:"},
        {"<!DOCTYPE Package [<!ENTITY e \"x\">]>\n<Package>&e;</Package>", "standard input:1:"},
        {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Package>\xFC</Package>", "standard input:2:10: "},
        {std::string("<Package/>\0", 11), "standard input:1:11: "},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.text);
        const ToolResult result = ImportText(test.text);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, StartsWith(std::string("qorwfl: ") + test.place));
        EXPECT_THAT(result.err, Not(EndsWith(": \n")));
        EXPECT_EQ(result.err.find('\n'), result.err.size() - 1);
        EXPECT_THAT(result.err, Not(HasSubstr("getDocument failed")));
    }
}

TEST(Import, EveryCutOfADocumentIsRefusedWithAReason) {
    for (std::size_t length = 0; length < kDocument.size(); length += 29) {
        const ToolResult result = ImportText(kDocument.substr(0, length));
        EXPECT_EQ(result.status, 1) << length;
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, StartsWith("qorwfl: standard input:"));
    }
}

TEST(Import, MissingElementIsNamedAfterWhatWasReadBeforeIt) {
    const std::string process = "Package/WorkflowProcesses/WorkflowProcess/";
    const std::string activity = process + "Activities/Activity";
    // what was read: the last field of the record that still has its value, and the first that has not
    const struct {
        const char* start;
        const char* end;
        std::string path;
        const char* read;
        const char* notRead;
    } cases[] = {
        {"<PackageHeader>", "</PackageHeader>", "Package/PackageHeader", "", "process.id=\"pid\""},
        {"<Vendor>", "</Vendor>", "Package/PackageHeader/Vendor", "", "process.id=\"pid\""},
        {"<Participant ", "</Participant>", "Package/Participants/Participant", "", "process.id=\"pid\""},
        {"<ParticipantType ", "", "Package/Participants/Participant/ParticipantType", "", "process.id=\"pid\""},
        {"<WorkflowProcesses>", "</WorkflowProcesses>", "Package/WorkflowProcesses", "", "process.id=\"pid\""},
        {"<WorkflowProcess ", "</WorkflowProcess>", "Package/WorkflowProcesses/WorkflowProcess", "",
         "process.id=\"pid\""},
        {"<ProcessHeader ", "", process + "ProcessHeader", "process.id=\"pid\"", "durationUnit=\"D\""},
        {"<DataFields>", "</DataFields>", process + "DataFields", "durationUnit=\"D\"", "datas.1.name=\"d1\""},
        {"<DataType>", "</DataType>", process + "DataFields/DataField[1]/DataType", "length=2", "datas.1.name=\"d1\""},
        {"<DataType >", "</DataType >", process + "DataFields/DataField[2]/DataType", "datas.1.extid=\"e1\"",
         "datas.2.name=\"d2\""},
        {"<DeclaredType ", "", process + "DataFields/DataField[1]/DataType/DeclaredType", "datas.1.name=\"d1\"",
         "datas.1.type=\"t1\""},
        {"<InitialValue >", "</InitialValue >", process + "DataFields/DataField[2]/InitialValue", "datas.2.type=\"t2\"",
         "datas.2.value=\"v2\""},
        {"<ExtendedAttributes>", "</ExtendedAttributes>", process + "DataFields/DataField[1]/ExtendedAttributes",
         "datas.1.value=\"v1\"", "datas.1.extid=\"e1\""},
        {"<ExtendedAttributes >", "</ExtendedAttributes >", process + "DataFields/DataField[2]/ExtendedAttributes",
         "datas.2.value=\"v2\"", "datas.2.extid=\"e2\""},
        {"<Activities>", "</Activities>", process + "Activities", "datas.2.extid=\"e2\"", "id=\"aid\""},
        {"<Activity ", "</Activity>", activity, "datas.2.extid=\"e2\"", "id=\"aid\""},
        {"<TimeEstimation>", "</TimeEstimation>", activity + "/SimulationInformation/TimeEstimation",
         "priority=\"High\"", "documentation=\"doc\""},
        {"<ExtendedAttributes  >", "</ExtendedAttributes  >", activity + "/ExtendedAttributes", "documentation=\"doc\"",
         "inputs.1.name=\"d1\""},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.path);
        const ToolResult result = ImportText(WithoutElement(test.start, test.end));
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err,
                  "qorwfl: standard input: " + test.path + ": required element missing; the reading stopped there\n");
        EXPECT_THAT(result.out, HasSubstr(test.read));
        EXPECT_THAT(result.out, Not(HasSubstr(test.notRead)));
        EXPECT_THAT(result.out, EndsWith("outputs.length=0;\n"));
    }
}

TEST(Import, FirstMissingElementInReadingOrderIsNamed) {
    EXPECT_THAT(ImportText("<Package/>").err, HasSubstr(": Package/PackageHeader: "));
    EXPECT_THAT(ImportText("<Package><PackageHeader><Vendor/></PackageHeader></Package>").err,
                HasSubstr(": Package/WorkflowProcesses: "));
}

TEST(Import, ElementsThatAreNotRequiredMayBeMissing) {
    const struct {
        const char* start;
        const char* end;
    } cases[] = {
        {"<Participants>", "</Participants>"},
        {"<SimulationInformation>", "</SimulationInformation>"},
        {"<Duration>", "</Duration>"},
        {"<Performer>", "</Performer>"},
        {"<Priority>", "</Priority>"},
        {"<Documentation>", "</Documentation>"},
        {"<ExtendedAttributes   >", "</ExtendedAttributes   >"},
    };
    for (const auto& test : cases) {
        const ToolResult result = ImportText(WithoutElement(test.start, test.end));
        EXPECT_EQ(result.status, 0) << test.start << '\n' << result;
        EXPECT_THAT(result.err, IsEmpty());
    }
}

TEST(Import, DirectChildElementsOfTheExactNameCountAlone) {
    EXPECT_THAT(ImportText(With("<Vendor>V</Vendor>", "<X><Vendor>V</Vendor></X>")).err,
                HasSubstr("Package/PackageHeader/Vendor"));
    EXPECT_THAT(ImportText(With("<Vendor>V</Vendor>", "<vendor>V</vendor>")).err, HasSubstr("PackageHeader/Vendor"));
    EXPECT_THAT(ImportText(With("<Vendor>V</Vendor>", "<!--<Vendor/>--><?Vendor x?>")).err,
                HasSubstr("PackageHeader/Vendor"));
    EXPECT_EQ(ImportText(With("<Vendor>V</Vendor>", "<!-- --><?Vendor x?>text<Vendor/>")).status, 0);
}

TEST(Import, OnlyTheFirstOfRepeatedElementsIsLookedInto) {
    EXPECT_THAT(ImportText(With("<PackageHeader>", "<PackageHeader/><PackageHeader>")).err,
                HasSubstr("Package/PackageHeader/Vendor"));
    EXPECT_EQ(ImportText(With("</Activity>", "</Activity><Activity/>")).status, 0);
    EXPECT_EQ(ImportText(With("</WorkflowProcess>", "</WorkflowProcess><WorkflowProcess/>")).status, 0);
}

TEST(Import, RootOfAnyNameIsRead) {
    std::string text = With("<Package>", "<Anything>");
    text.replace(text.rfind("</Package>"), 10, "</Anything>");
    EXPECT_EQ(ImportText(text).status, 0);
}

TEST(Import, PrefixedDocumentStopsAtThePackageHeader) {
    const ToolResult result = ImportText("<xpdl:Package xmlns:xpdl=\"urn:x\"><xpdl:PackageHeader/></xpdl:Package>");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr(": xpdl:Package/PackageHeader: required element missing"));
}

TEST(Import, PathInTheMessageIsUtf8WhateverTheDocumentsEncoding) {
    EXPECT_THAT(ImportText("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><\xDC/>").err,
                HasSubstr(": \xC3\x9C/Package"));
    EXPECT_THAT(ImportText("<\xC3\x9C\xE2\x82\xAC/>").status == 1 ? ImportText("<\xC3\x9C/>").err : "",
                HasSubstr(": \xC3\x9C/PackageHeader"));
}

TEST(Import, EveryEncodingOfADocumentGivesTheSameRecord) {
    const std::string latin =
        "k.br\xFC"
        "ckner";
    const std::string expected =
        ImportText("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + With("<Performer>o", "<Performer>" + latin)).out;
    EXPECT_THAT(expected, HasSubstr("owner=\"" + latin + "\""));
    const std::string utf8 = With("<Performer>o",
                                  "<Performer>k.br\xC3\xBC"
                                  "ckner");
    EXPECT_EQ(ImportText(utf8).out, expected);
    EXPECT_EQ(ImportText("\xEF\xBB\xBF" + utf8).out, expected);
    std::string utf16 = "\xFF\xFE";
    for (const char c : With("<Performer>o", "<Performer>" + latin)) {
        utf16 += c;
        utf16 += '\0';
    }
    EXPECT_EQ(ImportText(utf16).out, expected);
}

TEST(Import, DeeplyNestedDocumentIsRefusedWithoutACrash) {
    std::string text;
    for (int i = 0; i < 1000000; ++i) {
        text += "<a>";
    }
    const ToolResult result = ImportText(text);
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, StartsWith("qorwfl: standard input:1:"));
}
