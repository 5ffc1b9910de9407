#include "CheckRun.h"
#include "XpdlReply.h"

#include <BexDom.h>
#include <BexXMLParser.h>
#include <DOMParser.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <random>
#include <regex>
#include <set>
#include <string>
#include <vector>

namespace {

/** What the library's parser makes of a text; null when it refuses it. */
DOM_Document ParsedByTheLibrary(const std::string& iText) {
    const std::unique_ptr<InputSource> source(
        BexXMLParser::CreateMemBufInputSource(iText.data(), static_cast<int>(iText.size()), "test"));
    DOMParser parser;
    parser.parse(*source);
    return parser.getDocument();
}

/** The fields that the library's reader leaves as they were, by the names that the command has for them. */
std::set<std::string> KeptByTheLibrary(const std::string& iText) {
    const ActivityFields before = OldFields();
    const ActivityFields after = FieldsAfterReading(iText);
    std::set<std::string> kept;
    for (const auto& [name, value] : before) {
        const bool isCount = name.size() > 6 && name.substr(name.size() - 6) == "Number";
        if (!isCount && after.at(name) == value) {
            kept.insert(name);
        }
    }
    return kept;
}

/** Values of a document that the library writes for other readers, and names of what it reads. */
bool IsNoValue(const DOM_Node& iNode, const DOM_Node& iParent) {
    static const std::set<std::u16string_view> kWritten = {u"XPDLVersion", u"Vendor", u"Created", u"Cost"};
    const std::u16string_view parent = iParent.viewNodeName();
    return kWritten.count(parent) != 0 || parent == u"Package" ||
           (parent == u"ExtendedAttribute" && iNode.viewNodeName() == u"Name");
}

/** The texts and the values of attributes that hold something, in a document that has no comment in a text. */
std::vector<std::string> ValuesOf(const DOM_Document& iDocument) {
    std::vector<std::string> values;
    const auto add = [&values](const DOM_Node& iNode, const DOM_Node& iParent) {
        const std::u16string_view units = iNode.viewNodeValue();
        const std::string value = BexUnicodeString(units.data(), static_cast<int>(units.size())).ConvertToChar();
        if (value.find_first_not_of(" \n") != std::string::npos && !IsNoValue(iNode, iParent)) {
            values.push_back(value);
        }
    };
    std::vector<DOM_Node> open = {iDocument.getDocumentElement()};
    while (!open.empty()) {
        const DOM_Node element = open.back();
        open.pop_back();
        for (std::size_t i = 0; i < element.getAttributes().getLength(); ++i) {
            add(element.getAttributes().item(i), element);
        }
        for (DOM_Node child = element.getFirstChild(); child != nullptr; child = child.getNextSibling()) {
            if (child.getNodeType() == DOM_Node::ELEMENT_NODE) {
                open.push_back(child);
            } else if (child.getNodeType() != DOM_Node::COMMENT_NODE) {
                add(child, element);
            }
        }
    }
    return values;
}

/** A document of which the command says that it is read whole has no value that the library does not read. */
void ExpectNothingLost(const std::string& iText, const DOM_Document& iDocument) {
    std::string record;
    for (const auto& [name, value] : FieldsAfterReading(iText)) {
        record += value + '\n';
    }
    for (const std::string& value : ValuesOf(iDocument)) {
        EXPECT_THAT(record, testing::HasSubstr(value));
    }
}

/** What the command says of a document has to be what the library does with it. */
void ExpectAgreement(const nlohmann::json& iReport, const std::string& iText) {
    const DOM_Document document = ParsedByTheLibrary(iText);
    const std::set<std::string> kept = KeptByTheLibrary(iText);
    EXPECT_EQ(iReport["fieldsKept"].get<std::set<std::string>>(), kept);
    const std::string verdict = iReport["verdict"];
    EXPECT_EQ(verdict == "refused", document.isNull());
    // The lists of names are made in the last step that can fail.
    EXPECT_EQ(verdict == "stops", !document.isNull() && kept.count("inputs") != 0);
    EXPECT_EQ(verdict == "stops", iReport.contains("stopsAt"));
    if (verdict == "readWhole") {
        ExpectNothingLost(iText, document);
    }
}

/** Documents made from one that is whole by removing, doubling, renaming and filling elements. */
class Mutations {
public:
    std::string Next() {
        std::string text = XpdlReply();
        for (unsigned i = Below(3) + 1; i > 0; --i) {
            Change(text);
        }
        return text;
    }

private:
    // Not std::uniform_int_distribution, whose numbers are not the same everywhere.
    unsigned Below(unsigned iBound) { return static_cast<unsigned>(random() % iBound); }

    void Change(std::string& ioText) {
        static const char* const kTags[] = {"PackageHeader",
                                            "Vendor",
                                            "Participants",
                                            "Participant",
                                            "ParticipantType",
                                            "WorkflowProcess",
                                            "ProcessHeader",
                                            "DataFields",
                                            "DataField",
                                            "DataType",
                                            "DeclaredType",
                                            "InitialValue",
                                            "Activities",
                                            "Activity",
                                            "Description",
                                            "Performer",
                                            "Priority",
                                            "TimeEstimation",
                                            "Duration",
                                            "Documentation",
                                            "Cost",
                                            "No",
                                            "ExtendedAttributes",
                                            "ExtendedAttribute",
                                            "SimulationInformation"};
        const std::string tag = kTags[Below(std::size(kTags))];
        try {
            const ElementPlace place = ElementPlace::Of(ioText, tag, static_cast<int>(Below(3)) + 1);
            Change(ioText, place, ioText.substr(place.start, place.length), tag);
        } catch (const std::invalid_argument&) {
            return;  // there is no such element any more
        }
    }

    void Change(std::string& ioText, const ElementPlace& iPlace, const std::string& iElement, const std::string& iTag) {
        static const char* const kInserts[] = {"<!-- c -->", "more", "<x/>", "<![CDATA[more]]>", "\n", "<?p i?>", "7"};
        const std::size_t inside = ioText.find('>', iPlace.start) + 1;
        switch (Below(5)) {
            case 0:
                ioText.erase(iPlace.start, iPlace.length);
                break;
            case 1:
                ioText.insert(iPlace.start, iElement);
                break;
            case 2:
                ioText.replace(iPlace.start + 1, 1, "q");  // refused unless the element is empty
                break;
            case 3:
                ioText.replace(iPlace.start, iPlace.length, "<" + iTag + "/>");
                break;
            default:
                ioText.insert(inside, kInserts[Below(std::size(kInserts))]);
        }
    }

    std::mt19937 random{20040318};
};

std::string CorpusFolder() {
    const char* folder = std::getenv("QORWFL_XPDL_CORPUS");
    return folder != nullptr ? folder : QORWFL_XPDL_CORPUS;
}

std::vector<std::string> CorpusFiles() {
    std::vector<std::string> files;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(CorpusFolder(), none)) {
        if (entry.path().extension() == ".xpdl") {
            files.push_back(entry.path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/** Where the command import says that the reading stopped, without positions; empty when it did not. */
std::string StopOfImport(const std::string& iFile) {
    const ToolResult result = RunTool({"import", iFile});
    std::smatch match;
    const std::regex stop(": ([^ ]+): required element missing");
    return std::regex_search(result.err, match, stop)
               ? std::regex_replace('/' + match[1].str(), std::regex("\\[\\d+\\]"), "")
               : std::string();
}

}  // namespace

TEST(CheckAgreement, StatementsAboutChangedDocumentsAreWhatTheLibraryDoes) {
    Mutations mutations;
    std::vector<std::string> texts;
    for (int i = 0; i < 1500; ++i) {
        texts.push_back(mutations.Next());
    }
    const nlohmann::json reports = CheckDocuments(texts);
    ASSERT_EQ(reports.size(), texts.size());
    std::set<std::string> verdicts;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(texts[i]);
        ExpectAgreement(reports[i], texts[i]);
        verdicts.insert(reports[i]["verdict"].get<std::string>());
    }
    EXPECT_EQ(verdicts, (std::set<std::string>{"loses", "readWhole", "refused", "stops"}));
}

TEST(CheckAgreement, StatementsAboutTheFilesOfOtherToolsAreWhatTheLibraryDoes) {
    const std::vector<std::string> files = CorpusFiles();
    if (files.empty()) {
        GTEST_SKIP() << "no files in " << CorpusFolder();
    }
    const nlohmann::json reports = CheckFiles(files);
    ASSERT_EQ(reports.size(), files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        SCOPED_TRACE(files[i]);
        ExpectAgreement(reports[i], FileBytes(files[i]));
        EXPECT_NE(reports[i]["statement"], "");
        const std::string stop = reports[i].value("stopsAt", "");
        EXPECT_EQ(std::regex_replace(stop, std::regex("\\[\\d+\\]"), ""), StopOfImport(files[i]));
    }
}

TEST(CheckAgreement, EveryCutOfADocumentHasAVerdict) {
    const std::string whole = XpdlReply();
    std::vector<std::string> texts;
    for (std::size_t length = 0; length < whole.size(); length += 7) {
        texts.push_back(whole.substr(0, length));
    }
    const nlohmann::json reports = CheckDocuments(texts);
    ASSERT_EQ(reports.size(), texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(reports[i]["verdict"], "refused") << texts[i];
        EXPECT_FALSE(reports[i]["findings"].empty());
    }
}
