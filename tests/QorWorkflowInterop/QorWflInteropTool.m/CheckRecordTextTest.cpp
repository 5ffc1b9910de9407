#include "CheckRun.h"
#include "XpdlReply.h"

#include <QorWflActivityToXml.h>
#include <QorWflInteropInfo.h>

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

/** What a document's record becomes when it is written in its text form and read back. */
ActivityFields ThroughTheRecordText(const std::string& iDocument) {
    ActivityInfo record;
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iDocument), record);
    std::stringstream text;
    text << record << '\n';
    ActivityInfo back;
    text >> back;
    return FieldsOf(back);
}

/** The record of a document that is written from a document's record. */
ActivityFields ThroughADocument(const std::string& iDocument) {
    ActivityInfo record;
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iDocument), record);
    BexUnicodeString written;
    QorWflActivityToXml(record, written);
    ActivityInfo back;
    QorWflXmlToActivity(written, back);
    return FieldsOf(back);
}

ActivityFields ReadOnce(const std::string& iDocument) {
    ActivityInfo record;
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(iDocument), record);
    return FieldsOf(record);
}

/** The fields in which two records differ. */
std::set<std::string> Differences(const ActivityFields& iLeft, const ActivityFields& iRight) {
    std::set<std::string> names;
    for (const auto& [name, value] : iLeft) {
        if (iRight.at(name) != value) {
            names.insert(name);
        }
    }
    return names;
}

/** Values of an element, as they stand in a document. */
std::vector<std::string> TextsOfElements() {
    const std::string fill(79, 'x');
    return {"plain",
            "",
            fill,
            fill + 'y',
            fill.substr(1) + "\"",
            fill + "\"",
            "a\"b",
            "\"",
            "a\nb",
            "a\nb" + fill,
            fill + "\n",
            fill.substr(1) + "\n",
            "a\"b\nc",
            "a\n\"b",
            fill + std::string(9998, 'y'),
            fill + std::string(9999, 'y'),
            "tab\t",
            "a&#13;b",
            "&#13;\n\"",
            "&#8364;"};
}

}  // namespace

TEST(CheckRecordText, FindingsAreThereWhereTheRecordTextChangesTheValueOrWhatFollows) {
    std::vector<std::string> texts;
    for (const std::string& text : TextsOfElements()) {
        texts.push_back(WithPart(XpdlReply(), "new abstract", text));
    }
    const nlohmann::json reports = CheckDocuments(texts);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(texts[i].substr(1100, 300));
        std::set<std::string> changed = Differences(ReadOnce(texts[i]), ThroughTheRecordText(texts[i]));
        changed.erase("participant");  // which the form does not have
        changed.erase("participantType");
        const bool isCut = !PlacesOf(reports[i], "QW401").empty() || !PlacesOf(reports[i], "QW402").empty();
        const bool isOutOfStep = !PlacesOf(reports[i], "QW403").empty();
        EXPECT_EQ(isCut, changed.count("abstract") != 0);
        EXPECT_EQ(isOutOfStep, changed.size() > 1) << testing::PrintToString(changed);
    }
}

TEST(CheckRecordText, FindingsAreThereWhereADocumentWrittenFromTheRecordGivesBackAnotherValue) {
    std::vector<std::string> texts;
    for (const std::string& text : TextsOfElements()) {
        texts.push_back(WithPart(XpdlReply(), "new abstract", text));
        if (text.find('"') == std::string::npos) {
            texts.push_back(WithPart(XpdlReply(), "new status", text));
        }
    }
    for (const char* text : {"a&#10;b", "a&#9;b", "&#13;", "a&#13;&#10;"}) {
        texts.push_back(WithPart(XpdlReply(), "new status", text));
        texts.push_back(WithPart(WithElement(XpdlReply(), "Participants", ""), "new owner", text));
    }
    const nlohmann::json reports = CheckDocuments(texts);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(texts[i].substr(500));
        const std::set<std::string> changed = Differences(ReadOnce(texts[i]), ThroughADocument(texts[i]));
        bool isFound = false;
        for (const char* code : {"QW404", "QW405", "QW406"}) {
            isFound = isFound || !PlacesOf(reports[i], code).empty();
        }
        EXPECT_EQ(isFound, !changed.empty()) << testing::PrintToString(changed);
    }
}
