#include "CheckRun.h"
#include "XpdlReply.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

const std::string kProcess = "/Package/WorkflowProcesses/WorkflowProcess";
const std::string kActivity = kProcess + "/Activities/Activity";
const std::string kEntries = kActivity + "/ExtendedAttributes";
const std::string kFirstData = kProcess + "/DataFields/DataField[1]";

/** A change of the document without findings, and the one place where a code is found then. */
struct Change {
    const char* code;
    const char* oldPart;
    std::string newPart;  // a bar in it marks the place
    std::string path = {};
    std::string at = {};  // without a bar: what stands at the place, where it stands first
};

std::string Repeated(const std::string& iText, int iCount) {
    std::string text;
    for (int i = 0; i < iCount; ++i) {
        text += iText;
    }
    return text;
}

/** Line and column of a position, counted as a reader of the text would. */
std::string PlaceIn(const std::string& iText, std::size_t iPosition) {
    int line = 1;
    int column = 1;
    for (const char c : iText.substr(0, iPosition)) {
        line += c == '\n' ? 1 : 0;
        column = c == '\n' ? 1 : column + 1;
    }
    return std::to_string(line) + ':' + std::to_string(column);
}

void ExpectPlaces(const std::vector<Change>& iChanges) {
    std::vector<std::string> texts;
    std::vector<std::string> places;
    for (const Change& change : iChanges) {
        std::string text = WithPart(XpdlReply(), change.oldPart, change.newPart);
        const std::size_t place = change.at.empty() ? text.find('|') : text.find(change.at);
        if (change.at.empty()) {
            text.erase(place, 1);
        }
        texts.push_back(text);
        places.push_back(PlaceIn(text, place) + (change.path.empty() ? "" : ' ' + change.path));
    }
    const nlohmann::json reports = CheckDocuments(texts);
    for (std::size_t i = 0; i < iChanges.size(); ++i) {
        SCOPED_TRACE(std::string(iChanges[i].code) + ": " + iChanges[i].newPart.substr(0, 200));
        EXPECT_THAT(PlacesOf(reports[i], iChanges[i].code), ElementsAre(places[i])) << reports[i].dump(2);
    }
}

}  // namespace

TEST(CheckFindings, DocumentOfTheLibrarysOwnFormHasNone) {
    const nlohmann::json report = CheckDocument(XpdlReply());
    EXPECT_THAT(report["findings"], IsEmpty()) << report.dump(2);
    EXPECT_EQ(report["verdict"], "readWhole");
    EXPECT_EQ(report["statement"], "read whole");
}

TEST(CheckFindings, RefusedDocumentsAreToldWithThePlaceOfTheParser) {
    ExpectPlaces({
        {"QW001", "<Performer>new owner", "<Performer>new &| owner"},
        {"QW001", "</Performer>", "</|Performed>"},
        {"QW001", "</Package>", "</Package>|x"},
        {"QW002", "<Cost/>", Repeated("<a>", 1018) + "|<a><b/></a>" + Repeated("</a>", 1018)},
        {"QW003", "<Package Id", "<!DOCTYPE Package |[<!ENTITY a 'b'>]><Package Id"},
        {"QW003", "<Package Id", "|<!DOCTYPE Package nothing><Package Id"},
        {"QW004", "new owner", "&uuml;|"},
        {"QW006", "new owner", "a|" + std::string("\0b", 2)},
    });
    const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "new owner", "&uuml;"));
    EXPECT_EQ(report["verdict"], "refused");
    EXPECT_THAT(report["fieldsSet"], IsEmpty());
}

TEST(CheckFindings, EveryLimitIsTold) {
    std::string attributes;
    std::string elements;
    std::string names;
    std::string namesOfOneHash;
    for (int i = 0; i <= 16384; ++i) {
        if (i < 1024) {
            namesOfOneHash += "<e";
            for (int bit = 0; bit < 10; ++bit) {
                namesOfOneHash += (i >> bit & 1) != 0 ? "ah" : "bB";
            }
            namesOfOneHash += "/>";
        }
        attributes += i <= 1024 ? " a" + std::to_string(i) + "='x'" : "";
        elements += "<e" + std::to_string(i) + "/>";
        names += "<e a" + std::to_string(i) + "='x'/>";
    }
    for (const std::string& part : {"<Cost" + attributes + "/>", elements, names, namesOfOneHash}) {
        const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "<Cost/>", part));
        EXPECT_THAT(CodesOf(report), ElementsAre("QW002"));
    }
}

TEST(CheckFindings, WhiteSpaceOfXml11SeparatesAttributesAsItDoesForTheReader) {
    const std::string parts[] = {
        "<Cost\xC2\x85x='/ \"'><a/><b/></Cost>",
        "<Cost\xC2\x85x='/>'><a\xE2\x80\xA8y\xC2\x85=\xC2\x85'2'/></Cost>",
        "<Cost\xE2\x80\xA8x='/>'/>",
    };
    for (const std::string& part : parts) {
        const std::string body = WithPart(XpdlReply(), "<Cost/>", part);
        const std::string document = "<?xml version='1.1'?>" + body.substr(body.find("<Package"));
        const nlohmann::json report = CheckDocument(document);
        EXPECT_EQ(report["verdict"], "loses") << report.dump(2);
        const std::vector<std::string> places = PlacesOf(report, "QW202");
        ASSERT_FALSE(places.empty()) << report.dump(2);
        EXPECT_THAT(places.front(), testing::EndsWith("/Cost")) << report.dump(2);
    }
}

TEST(CheckFindings, EncodingsThatAreNotFollowedAreTold) {
    EXPECT_THAT(PlacesOf(CheckDocument("<Package>\n a\xFF</Package>"), "QW005"), ElementsAre("2:3"));
    EXPECT_THAT(PlacesOf(CheckDocument("<?xml version='1.0' encoding='martian'?><Package/>"), "QW005"),
                ElementsAre("0:0"));
    EXPECT_THAT(CodesOf(CheckDocument("<?xml version='1.0' encoding='US-ASCII'?><Package>\xE4</Package>")),
                ElementsAre("QW005"));
}

TEST(CheckFindings, MissingRequiredElementIsToldAtItsParentWithItsOwnPath) {
    ExpectPlaces({
        {"QW101", "<Vendor>VERANT_050803</Vendor>", "", "/Package/PackageHeader/Vendor", "<PackageHeader>"},
        {"QW101", "<DataType><DeclaredType Id=\"t2\"/></DataType>", "", kProcess + "/DataFields/DataField[2]/DataType",
         "<DataField Id=\"d2\""},
        {"QW101", "<TimeEstimation><Duration>44</Duration></TimeEstimation>", "",
         kActivity + "/SimulationInformation/TimeEstimation", "<SimulationInformation>"},
    });
    EXPECT_THAT(FindingOf(CheckDocument(WithElement(XpdlReply(), "Activities", "")), "QW101")["message"],
                testing::EndsWith("stay as they were: id, name, abstract, owner, priority, duration, documentation, "
                                  "inputs, outputs, status, extid, generation, process.context"));
}

TEST(CheckFindings, AllMissingElementsAreToldAtOnce) {
    std::string text = WithElement(XpdlReply(), "Vendor", "");
    text = WithElement(text, "ProcessHeader", "");
    text = WithElement(text, "TimeEstimation", "");
    const nlohmann::json report = CheckDocument(text);
    EXPECT_THAT(PlacesOf(report, "QW101"),
                ElementsAre("3:2 /Package/PackageHeader/Vendor", "8:3 " + kProcess + "/ProcessHeader",
                            "28:6 " + kActivity + "/SimulationInformation/TimeEstimation"));
    EXPECT_EQ(report["stopsAt"], "/Package/PackageHeader/Vendor");
    EXPECT_THAT(report["findings"][0]["message"], HasSubstr("the reading stops here"));
    EXPECT_THAT(report["findings"][1]["message"], HasSubstr("would stop here next"));
}

TEST(CheckFindings, RequiredElementUnderAnotherNameIsShown) {
    ExpectPlaces({
        {"QW102", "<Vendor>VERANT_050803</Vendor>", "|<vendor>V</vendor>", "/Package/PackageHeader/vendor"},
        {"QW102", "<ProcessHeader ", "|<x:ProcessHeader xmlns:x='urn:x' ", kProcess + "/x:ProcessHeader"},
    });
    const nlohmann::json report =
        CheckDocument("<xpdl:Package xmlns:xpdl='u'>\n<xpdl:PackageHeader/>\n<xpdl:WorkflowProcesses/></xpdl:Package>");
    EXPECT_THAT(PlacesOf(report, "QW102"),
                ElementsAre("2:1 /xpdl:Package/xpdl:PackageHeader", "3:1 /xpdl:Package/xpdl:WorkflowProcesses"));
    EXPECT_EQ(report["statement"], "stops at /xpdl:Package/PackageHeader");
}

TEST(CheckFindings, WhatIsIgnoredIsTold) {
    ExpectPlaces({
        {"QW201", "<Cost/>", "<Cost/>|<Extra><More/></Extra>", kActivity + "/SimulationInformation/Extra"},
        {"QW201", "<No/>", "<No/>|<Tool/>", kActivity + "/Implementation/Tool"},
        {"QW202", "DurationUnit=", "|Created='x' DurationUnit=", kProcess + "/ProcessHeader"},
        {"QW202", "<DataField Id=\"d1\"", "<DataField\n Id=\"d1\"\n |IsArray = 'x>'", kFirstData},
        {"QW203", "</WorkflowProcess>", "</WorkflowProcess>|<WorkflowProcess/>", kProcess + "[2]"},
        {"QW204", "</Activity>", "</Activity>|<Activity Id='2'/>", kActivity + "[2]"},
        {"QW205", "</Participant>", "</Participant>|<Participant/>", "/Package/Participants/Participant[2]"},
        {"QW206", "<Cost/>", "<Cost/>|<Cost/>", kActivity + "/SimulationInformation/Cost[2]"},
        {"QW206", "</Performer>", "</Performer>|<Performer/>", kActivity + "/Performer[2]"},
        {"QW208", "<ExtendedAttribute Name=\"IN\" Value=\"d2\"", "|<ExtendedAttribute Name='in' Value='d2'",
         kEntries + "/ExtendedAttribute[3]"},
        {"QW208", "<ExtendedAttribute Name=\"status\"", "|<ExtendedAttribute", kEntries + "/ExtendedAttribute[4]"},
        {"QW209", "<Description>new abstract</Description>", "|<x:Description>a</x:Description>",
         kActivity + "/x:Description"},
        {"QW209", "DurationUnit=", "|durationUnit=", kProcess + "/ProcessHeader"},
        {"QW210", "<Cost/>", "|text<Cost/>", kActivity + "/SimulationInformation"},
        {"QW210", "<No/>", "|<![CDATA[text]]><No/>", kActivity + "/Implementation"},
        {"QW211", "<Package Id", "|<!DOCTYPE Package SYSTEM 'a>b'>\n<Package Id"},
    });
}

TEST(CheckFindings, RootOfAnotherNameIsTold) {
    std::string text = WithPart(XpdlReply(), "<Package ", "<Workflow ");
    text = WithPart(text, "</Package>", "</Workflow>");
    const nlohmann::json report = CheckDocument(text);
    EXPECT_THAT(PlacesOf(report, "QW212"), ElementsAre("2:1 /Workflow"));
    EXPECT_EQ(report["verdict"], "readWhole");
}

TEST(CheckFindings, IgnoredElementsAreToldOnceForAllThatIsInThem) {
    const nlohmann::json report =
        CheckDocument(WithPart(XpdlReply(), "<Cost/>", "<Cost/><Extra a='1'>text<More><Most/></More></Extra>"));
    EXPECT_THAT(CodesOf(report), ElementsAre("QW201"));
    EXPECT_THAT(FindingOf(report, "QW201")["message"], HasSubstr("Extra is ignored, with the 2 elements in it"));
}

TEST(CheckFindings, NamespaceDeclarationsAreNoIgnoredAttributes) {
    const nlohmann::json report =
        CheckDocument(WithPart(XpdlReply(), "<Package Id", "<Package xmlns='a' xmlns:b='c' xml:lang='de' Id"));
    EXPECT_THAT(report["findings"], IsEmpty()) << report.dump(2);
}

TEST(CheckFindings, RepeatedExtendedAttributeTellsWhichOneWins) {
    const std::string again = "<ExtendedAttribute Name='status' Value='later'/>\n";
    nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "      <ExtendedAttribute Name=\"generation\"",
                                                   again + "      <ExtendedAttribute Name=\"generation\""));
    EXPECT_THAT(PlacesOf(report, "QW207"), ElementsAre("34:7 " + kEntries + "/ExtendedAttribute[4]"));
    EXPECT_THAT(
        FindingOf(report, "QW207")["message"],
        HasSubstr("\"new status\" of status is not used; the extended attribute in line 36, with \"later\", wins"));
    report = CheckDocument(WithPart(XpdlReply(), "<ExtendedAttribute Name=\"externId\" Value=\"x1\"/>",
                                    "<ExtendedAttribute Name=\"externId\" Value=\"x1\"/>\n"
                                    "<ExtendedAttribute Name=\"externId\" Value=\"y\"/>"));
    EXPECT_THAT(PlacesOf(report, "QW207"),
                ElementsAre("15:1 " + kFirstData + "/ExtendedAttributes/ExtendedAttribute[2]"));
    EXPECT_THAT(FindingOf(report, "QW207")["message"], HasSubstr("in line 14, with \"x1\", wins"));
}

TEST(CheckFindings, OfSeveralGenerationsTheLastNumberWins) {
    const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "Value=\"33\"/>",
                                                         "Value=\"33\"/>\n"
                                                         "<ExtendedAttribute Name=\"generation\" Value=\"none\"/>"));
    EXPECT_THAT(PlacesOf(report, "QW303"), ElementsAre("37:38 " + kEntries + "/ExtendedAttribute[7]"));
    EXPECT_THAT(FindingOf(report, "QW207")["message"], HasSubstr("in line 36, with \"33\", wins"));
}

TEST(CheckFindings, WhatBecomesOfValuesWhenTheyAreReadIsTold) {
    const std::string duration = kActivity + "/SimulationInformation/TimeEstimation/Duration";
    ExpectPlaces({
        {"QW301", "new owner", "new <!-- x -->| owner", kActivity + "/Performer"},
        {"QW301", "new owner", "new <b/>| owner", kActivity + "/Performer"},
        {"QW301", "new owner", "new <?x y?>| owner", kActivity + "/Performer"},
        {"QW302", "new owner", "new |<![CDATA[owner]]>", kActivity + "/Performer"},
        {"QW302", "v1", "|<![CDATA[v1]]>", kFirstData + "/InitialValue"},
        {"QW303", "<Duration>44", "<Duration>|PT5H", duration},
        {"QW303", "<Duration>44", "<Duration>|99999999999999999999", duration},
        {"QW303", "<Duration>44", "|<Duration>", duration},
        {"QW303", "Value=\"33\"", "|Value=\"2147483648\"", kEntries + "/ExtendedAttribute[6]"},
        {"QW304", "<Duration>44", "<Duration>|44 days", duration},
        {"QW304", "Value=\"33\"", "|Value=\"3.3\"", kEntries + "/ExtendedAttribute[6]"},
        {"QW305", "new owner", "|&#8364; new", kActivity + "/Performer"},
        {"QW305", "Value=\"new status\"", "|Value=\"&#x1F600;\"", kEntries + "/ExtendedAttribute[4]"},
        {"QW306", "Value=\"new status\"", "|Value = \"new\nstatus\"", kEntries + "/ExtendedAttribute[4]"},
        {"QW306", "DurationUnit=\"new durationUnit\"", "|DurationUnit='a\tb'", kProcess + "/ProcessHeader"},
        {"QW307", " Name=\"new name\"", "", kActivity, "<Activity Id"},
        {"QW307", " Value=\"new extid\"", "", kEntries + "/ExtendedAttribute[5]",
         "<ExtendedAttribute Name=\"externId\"/>"},
        {"QW308", "<Performer>new owner</Performer>", "", kActivity, "<Activity Id"},
        {"QW308", "<ExtendedAttribute Name=\"status\" Value=\"new status\"/>", "", kEntries, "<ExtendedAttributes>\n"},
        {"QW308", "<ExtendedAttribute Name=\"externId\" Value=\"x1\"/>", "", kFirstData + "/ExtendedAttributes",
         "<ExtendedAttributes></ExtendedAttributes>"},
    });
}

TEST(CheckFindings, MissingAttributeIsNamed) {
    const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), " Value=\"new extid\"", ""));
    EXPECT_EQ(FindingOf(report, "QW307")["message"],
              "attribute Value of ExtendedAttribute is missing; the field extid becomes empty");
}

TEST(CheckFindings, NumbersWithWhiteSpaceAroundThemAreRead) {
    const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "<Duration>44<", "<Duration>\n\t -44 \n<"));
    EXPECT_THAT(report["findings"], IsEmpty()) << report.dump(2);
}

TEST(CheckFindings, CommentsThatCutNoTextAreNoFindings) {
    const nlohmann::json report =
        CheckDocument(WithPart(XpdlReply(), "new owner", "<!-- a -->new owner<!-- b --> <![CDATA[]]>"));
    EXPECT_THAT(report["findings"], IsEmpty()) << report.dump(2);
}

TEST(CheckFindings, MissingParticipantsAreToldWithWhoStandsIn) {
    nlohmann::json report = CheckDocument(WithElement(XpdlReply(), "Participants", ""));
    EXPECT_THAT(PlacesOf(report, "QW309"), ElementsAre("2:1 /Package"));
    EXPECT_THAT(FindingOf(report, "QW309")["message"], HasSubstr("the performer stands in"));
    report = CheckDocument(WithElement(WithElement(XpdlReply(), "Participants", ""), "Performer", ""));
    EXPECT_THAT(FindingOf(report, "QW309")["message"], HasSubstr("become null"));
}

TEST(CheckFindings, WhatBecomesOfValuesBehindTheReadingIsTold) {
    const std::string performer = kActivity + "/Performer";
    ExpectPlaces({
        {"QW401", "new owner", "|a \"b\" c", performer},
        {"QW402", "new owner", '|' + Repeated("x", 80), performer},
        {"QW403", "new owner", '|' + Repeated("x", 80) + "\ny", performer},
        {"QW403", "new owner", "|a\"b\nc", performer},
        {"QW403", "new owner", '|' + Repeated("x", 79 + 9999), performer},
        {"QW404", "Value=\"new status\"", "|Value=\"new&#10;status\"", kEntries + "/ExtendedAttribute[4]"},
        {"QW404", "Id=\"t1\"", "|Id=\"&#9;\"", kFirstData + "/DataType/DeclaredType"},
        {"QW405", "new owner", "|a&#13;b", performer},
        {"QW406", "<Performer>new owner</Performer>", "|<Performer/>", performer},
    });
    const std::string newer = WithPart(XpdlReply(), "version=\"1.0\"", "version=\"1.1\"");
    EXPECT_THAT(PlacesOf(CheckDocument(WithPart(newer, "new owner", "a&#1;b")), "QW407"),
                ElementsAre("26:17 " + performer));
}

TEST(CheckFindings, WhatSurvivesTheRecordTextIsNoFinding) {
    for (const std::string& text : {Repeated("x", 79), "a\nb\n" + Repeated("x", 75), std::string("tab\tand 'quote'")}) {
        const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "new owner", text));
        EXPECT_THAT(report["findings"], IsEmpty()) << report.dump(2);
    }
    const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "new owner", Repeated("x", 79 + 9998)));
    EXPECT_THAT(CodesOf(report), ElementsAre("QW402"));
}

TEST(CheckFindings, PerformerThatStandsInForTheParticipantIsLookedAtAsAnAttribute) {
    const std::string text = WithElement(XpdlReply(), "Participants", "");
    const nlohmann::json report = CheckDocument(WithPart(text, "new owner", "a\nb&#8364;"));
    EXPECT_THAT(FindingOf(report, "QW404")["message"], HasSubstr("the field participant has line ends"));
    EXPECT_EQ(PlacesOf(report, "QW305").size(), 1U) << report.dump(2);
}

TEST(CheckFindings, ColumnsCountCharactersAndLinesEndInEveryWay) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        const std::string end = lineEnd;
        std::string text =
            "<Package>" + end + "<!-- \xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80 --><X/>" + end + "<Y/></Package>";
        EXPECT_THAT(PlacesOf(CheckDocument(text), "QW201"), ElementsAre("2:13 /Package/X", "3:1 /Package/Y")) << text;
    }
}

TEST(CheckFindings, PlacesAreTheSameInEveryEncoding) {
    const std::string text = "<Package>\n<!-- \xC3\xA4 --><X/></Package>";
    std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>" + text;
    latin.replace(latin.find("\xC3\xA4"), 2, "\xE4");
    std::string utf16 = "\xFE\xFF";
    for (const char c : std::string("<Package>\n<!-- a --><X/></Package>")) {
        utf16 += '\0';
        utf16 += c;
    }
    for (const std::string& each : {text, "\xEF\xBB\xBF" + text, latin, utf16}) {
        EXPECT_THAT(PlacesOf(CheckDocument(each), "QW201"), ElementsAre("2:11 /Package/X"));
    }
}

TEST(CheckFindings, OfOneCodeAHundredAreShownAndTheOthersCounted) {
    const nlohmann::json report = CheckDocument(WithPart(XpdlReply(), "<Cost/>", "<Cost/>" + Repeated("<x/>", 250)));
    EXPECT_EQ(PlacesOf(report, "QW201").size(), 100U);
    EXPECT_EQ(report["counts"]["note"], 250);
    EXPECT_EQ(report["more"], nlohmann::json::parse(R"([{"code": "QW201", "count": 150}])"));
    EXPECT_EQ(report["statement"], "loses 250 elements");
}

TEST(CheckFindings, ControlCharactersOfTheDocumentAreShownAndNotSent) {
    const std::string text = WithPart(XpdlReply(), "Value=\"33\"",
                                      "Value=\"\xC2\x9B"
                                      "31m&#x202E;&#x7F;\"");
    const ToolResult result = RunTool({"check", "-"}, {.input = WithPart(text, "ISO-8859-1", "UTF-8")});
    EXPECT_THAT(result.out, HasSubstr("\"\\u{009B}31m\\u{202E}\\x7F\" is no number"));
    for (const char c : result.out) {
        EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~')) << static_cast<int>(c);
    }
}
