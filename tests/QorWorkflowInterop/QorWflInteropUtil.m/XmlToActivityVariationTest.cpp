#include "ActivityFields.h"
#include "NaiveRecordWriter.h"
#include "NaiveXpdlReader.h"
#include "XmlPiece.h"

#include <ActivityInfo.h>
#include <QorWflXmlToActivity.h>

#include <gtest/gtest.h>

#include <CapturedStream.h>
#include <CapturedTrace.h>
#include <algorithm>
#include <functional>
#include <iostream>
#include <random>
#include <string>
#include <vector>

namespace {

XmlPiece Entry(const std::string& iName, const std::string& iValue) {
    return XmlPiece::Element("ExtendedAttribute", {{"Name", iName}, {"Value", iValue}}, {});
}

XmlPiece DataField(const std::string& iNumber) {
    return XmlPiece::Element(
        "DataField", {{"Id", "d" + iNumber}},
        {XmlPiece::Element("DataType", {}, {XmlPiece::Element("DeclaredType", {{"Id", "t" + iNumber}}, {})}),
         XmlPiece::Element("InitialValue", "v" + iNumber),
         XmlPiece::Element("ExtendedAttributes", {}, {Entry("externId", "x" + iNumber)})});
}

/** A document that gives every field a value. */
XmlPiece WholeDocument() {
    const XmlPiece header = XmlPiece::Element(
        "PackageHeader", {}, {XmlPiece::Element("XPDLVersion", "0.02"), XmlPiece::Element("Vendor", "VERANT_050803")});
    const XmlPiece participants = XmlPiece::Element(
        "Participants", {},
        {XmlPiece::Element("Participant", {{"Id", "new participant"}},
                           {XmlPiece::Element("ParticipantType", {{"Type", "new participantType"}}, {})})});
    const XmlPiece activity = XmlPiece::Element(
        "Activity", {{"Id", "new id"}, {"Name", "new name"}},
        {XmlPiece::Element("Description", "new abstract"),
         XmlPiece::Element("Implementation", {}, {XmlPiece::Element("No", {}, {})}),
         XmlPiece::Element("Performer", "new owner"), XmlPiece::Element("Priority", "new priority"),
         XmlPiece::Element("SimulationInformation", {},
                           {XmlPiece::Element("Cost", {}, {}),
                            XmlPiece::Element("TimeEstimation", {}, {XmlPiece::Element("Duration", "44")})}),
         XmlPiece::Element("Documentation", "new documentation"),
         XmlPiece::Element("ExtendedAttributes", {},
                           {Entry("IN", "d1"), Entry("OUT", "d2"), Entry("IN", "d2"), Entry("status", "new status"),
                            Entry("externId", "new extid"), Entry("generation", "33")})});
    const XmlPiece process =
        XmlPiece::Element("WorkflowProcess", {{"Id", "new process.id"}, {"Name", "new process.name"}},
                          {XmlPiece::Element("ProcessHeader", {{"DurationUnit", "new durationUnit"}}, {}),
                           XmlPiece::Element("DataFields", {}, {DataField("1"), DataField("2")}),
                           XmlPiece::Element("Activities", {}, {activity}),
                           XmlPiece::Element("ExtendedAttributes", {}, {Entry("context", "new process.context")})});
    return XmlPiece::Element("Package", {{"Id", "p"}, {"Name", "n"}},
                             {header, participants, XmlPiece::Element("WorkflowProcesses", {}, {process})});
}

/** Where a piece stands: the numbers of the children to follow from the root. */
using Place = std::vector<std::size_t>;

void AddPlaces(const XmlPiece& iPiece, const Place& iPlace, std::vector<Place>& ioPlaces) {
    for (std::size_t index = 0; index < iPiece.children.size(); ++index) {
        Place place = iPlace;
        place.push_back(index);
        ioPlaces.push_back(place);
        AddPlaces(iPiece.children[index], place, ioPlaces);
    }
}

/** The places of all pieces below the root. */
std::vector<Place> PlacesIn(const XmlPiece& iRoot) {
    std::vector<Place> places;
    AddPlaces(iRoot, {}, places);
    return places;
}

/** A piece of a document together with the pieces that it stands among. */
struct Spot {
    XmlPiece& parent;
    std::size_t index;

    XmlPiece& Piece() const { return parent.children[index]; }
    auto Iterator() const { return parent.children.begin() + static_cast<std::ptrdiff_t>(index); }
};

Spot SpotAt(XmlPiece& ioRoot, const Place& iPlace) {
    XmlPiece* parent = &ioRoot;
    for (std::size_t level = 0; level + 1 < iPlace.size(); ++level) {
        parent = &parent->children[iPlace[level]];
    }
    return {*parent, iPlace.back()};
}

/** A copy whose texts and values are others, but for the names of entries. */
XmlPiece Other(XmlPiece iPiece) {
    if (iPiece.kind == XmlPiece::Kind::Text) {
        iPiece.name += "5";
    }
    for (auto& [name, value] : iPiece.attributes) {
        value += iPiece.name == "ExtendedAttribute" && name == "Name" ? "" : "5";
    }
    for (XmlPiece& child : iPiece.children) {
        child = Other(child);
    }
    return iPiece;
}

std::string Lower(std::string iText) {
    for (char& character : iText) {
        character = character >= 'A' && character <= 'Z' ? static_cast<char>(character + ('a' - 'A')) : character;
    }
    return iText;
}

/** One change of a document at one piece of it. */
struct Change {
    const char* name;
    std::function<void(const Spot&)> make;
};

void ChangeAttributes(const Spot& iSpot,
                      const std::function<void(std::string& ioName, std::string& ioValue)>& iChange) {
    for (auto& [name, value] : iSpot.Piece().attributes) {
        iChange(name, value);
    }
}

XmlPiece Piece(XmlPiece::Kind iKind, const std::string& iContent) {
    return {iKind, iContent, {}, {}};
}

void InsertInside(const Spot& iSpot, const XmlPiece& iNew) {
    if (iSpot.Piece().kind == XmlPiece::Kind::Element) {
        iSpot.Piece().children.insert(iSpot.Piece().children.begin(), iNew);
    }
}

const std::vector<Change>& Changes() {
    static const std::vector<Change> kChanges = {
        {"missing", [](const Spot& s) { s.parent.children.erase(s.Iterator()); }},
        {"other before it", [](const Spot& s) { s.parent.children.insert(s.Iterator(), Other(s.Piece())); }},
        {"other behind it", [](const Spot& s) { s.parent.children.insert(s.Iterator() + 1, Other(s.Piece())); }},
        {"other at the end", [](const Spot& s) { s.parent.children.push_back(Other(s.Piece())); }},
        {"without content", [](const Spot& s) { s.Piece().children.clear(); }},
        {"without attributes", [](const Spot& s) { s.Piece().attributes.clear(); }},
        {"without its last attribute",
         [](const Spot& s) {
             if (!s.Piece().attributes.empty()) {
                 s.Piece().attributes.pop_back();
             }
         }},
        {"bare",
         [](const Spot& s) {
             s.Piece().children.clear();
             s.Piece().attributes.clear();
         }},
        {"children turned round",
         [](const Spot& s) { std::reverse(s.Piece().children.begin(), s.Piece().children.end()); }},
        {"attributes turned round",
         [](const Spot& s) { std::reverse(s.Piece().attributes.begin(), s.Piece().attributes.end()); }},
        {"siblings turned round",
         [](const Spot& s) { std::reverse(s.parent.children.begin(), s.parent.children.end()); }},
        {"in lower case", [](const Spot& s) { s.Piece().name = Lower(s.Piece().name); }},
        {"with a letter more", [](const Spot& s) { s.Piece().name += "s"; }},
        {"with a letter less",
         [](const Spot& s) {
             if (s.Piece().name.size() > 1) {
                 s.Piece().name.pop_back();
             }
         }},
        {"of the next one's name",
         [](const Spot& s) {
             if (s.index + 1 < s.parent.children.size() &&
                 s.parent.children[s.index + 1].kind == XmlPiece::Kind::Element &&
                 s.Piece().kind == XmlPiece::Kind::Element) {
                 s.Piece().name = s.parent.children[s.index + 1].name;
             }
         }},
        {"attributes in lower case",
         [](const Spot& s) { ChangeAttributes(s, [](std::string& ioName, std::string&) { ioName = Lower(ioName); }); }},
        {"attributes with a prefix",
         [](const Spot& s) { ChangeAttributes(s, [](std::string& ioName, std::string&) { ioName = "p:" + ioName; }); }},
        {"empty attributes",
         [](const Spot& s) { ChangeAttributes(s, [](std::string&, std::string& ioValue) { ioValue = ""; }); }},
        {"values in lower case",
         [](const Spot& s) {
             ChangeAttributes(s, [](std::string&, std::string& ioValue) { ioValue = Lower(ioValue); });
         }},
        {"values with a blank more",
         [](const Spot& s) { ChangeAttributes(s, [](std::string&, std::string& ioValue) { ioValue += " "; }); }},
        {"values with markup",
         [](const Spot& s) {
             ChangeAttributes(s, [](std::string&, std::string& ioValue) { ioValue += "<&>\"\xE9"; });
         }},
        {"a level deeper", [](const Spot& s) { s.Piece() = XmlPiece::Element("Deeper", {}, {s.Piece()}); }},
        {"in a section",
         [](const Spot& s) {
             if (s.Piece().kind == XmlPiece::Kind::Text) {
                 s.Piece().kind = XmlPiece::Kind::Section;
             }
         }},
        {"behind a comment", [](const Spot& s) { InsertInside(s, Piece(XmlPiece::Kind::Comment, "c")); }},
        {"behind a section", [](const Spot& s) { InsertInside(s, Piece(XmlPiece::Kind::Section, "7")); }},
        {"behind an instruction", [](const Spot& s) { InsertInside(s, Piece(XmlPiece::Kind::Instruction, "7")); }},
        {"behind a text", [](const Spot& s) { InsertInside(s, XmlPiece::Text("7")); }},
        {"behind another element", [](const Spot& s) { InsertInside(s, XmlPiece::Element("Other", "7")); }},
        {"cut by a comment",
         [](const Spot& s) {
             s.parent.children.insert(s.Iterator() + 1, {Piece(XmlPiece::Kind::Comment, "c"), XmlPiece::Text("9")});
         }},
    };
    return kChanges;
}

/** Reads a document with the trace on and again with it off, and compares every field, the whole trace and both
 * standard streams with the naive reader. */
void ExpectReadAsNaively(const XmlPiece& iRoot) {
    const std::string text = "<?xml version='1.0' encoding='ISO-8859-1'?>\n" + iRoot.Written();
    ActivityInfo expected;
    FillWithOldValues(expected);
    NaiveXpdlReader naive(expected);
    naive.Read(iRoot);
    NaiveRecordWriter dump;
    dump.Write(expected);

    ActivityInfo traced;
    FillWithOldValues(traced);
    std::string trace;
    std::string output;
    std::string errors;
    {
        const CapturedTrace capturedTrace("WFInteropXML");
        const CapturedStream capturedOutput(std::cout);
        const CapturedStream capturedErrors(std::cerr);
        QorWflXmlToActivity(text.c_str(), traced);
        for (const std::string& line : capturedTrace.Lines()) {
            trace += line + "\n";
        }
        output = capturedOutput.Text();
        errors = capturedErrors.Text();
    }
    ASSERT_EQ(FieldsOf(traced), FieldsOf(expected)) << text;
    ASSERT_EQ(trace, naive.TraceText()) << text;
    ASSERT_EQ(output, dump.Text() + "\n") << text;
    ASSERT_EQ(errors, "") << text;

    ActivityInfo silent;
    FillWithOldValues(silent);
    QorWflXmlToActivity(text.c_str(), silent);
    ASSERT_EQ(FieldsOf(silent), FieldsOf(expected)) << text;
}

}  // namespace

TEST(XmlToActivityVariation, WholeDocumentGivesEveryFieldANewValue) {
    ActivityInfo naive;
    FillWithOldValues(naive);
    NaiveXpdlReader(naive).Read(WholeDocument());
    const ActivityFields old = OldFields();
    for (const auto& [name, value] : FieldsOf(naive)) {
        EXPECT_TRUE(value != old.at(name) || name == "outputNumber") << name;
    }
    ExpectReadAsNaively(WholeDocument());
}

TEST(XmlToActivityVariation, EveryChangeOfEveryPiece) {
    for (const Place& place : PlacesIn(WholeDocument())) {
        for (const Change& change : Changes()) {
            XmlPiece root = WholeDocument();
            change.make(SpotAt(root, place));
            ExpectReadAsNaively(root);
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << change.name;
        }
    }
}

TEST(XmlToActivityVariation, EveryTwoPiecesMissing) {
    const std::vector<Place> places = PlacesIn(WholeDocument());
    for (std::size_t first = 0; first < places.size(); ++first) {
        for (std::size_t second = first + 1; second < places.size(); ++second) {
            // the later one first, so that the place of the earlier one stays
            XmlPiece root = WholeDocument();
            for (const std::size_t which : {second, first}) {
                const Spot spot = SpotAt(root, places[which]);
                spot.parent.children.erase(spot.Iterator());
            }
            ExpectReadAsNaively(root);
            ASSERT_FALSE(testing::Test::HasFatalFailure());
        }
    }
}

TEST(XmlToActivityVariation, ManyChangesAtRandom) {
    std::mt19937 random(20041125);
    for (int round = 0; round < 700; ++round) {
        XmlPiece root = WholeDocument();
        std::string made;
        for (unsigned count = 1 + static_cast<unsigned>(random() % 6); count > 0; --count) {
            const std::vector<Place> places = PlacesIn(root);
            const Change& change = Changes()[random() % Changes().size()];
            const Spot spot = SpotAt(root, places[random() % places.size()]);
            made += spot.Piece().name + " " + change.name + "; ";
            change.make(spot);
        }
        ExpectReadAsNaively(root);
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << made;
    }
}

TEST(XmlToActivityVariation, RootAlone) {
    ExpectReadAsNaively(XmlPiece::Element("Package", {}, {}));
    ExpectReadAsNaively(XmlPiece::Element("PackageHeader", "text"));
}
