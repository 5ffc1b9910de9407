#include "CapturedStream.h"
#include "CapturedTrace.h"
#include "EnvironmentVariable.h"
#include "OpenFileLimit.h"
#include "PropertyEntries.h"
#include "TemporaryDirectory.h"
#include "TestManager.h"

#include <QorWflActionManagerBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

using ::testing::AllOf;
using ::testing::ContainsRegex;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

/** The texts of a manager, in the order of its members, and its markers as they come out. */
std::vector<std::string> Vocabulary(TestManager& iManager) {
    std::vector<std::string> texts;
    for (const auto* text : {&iManager.actionType, &iManager.startStatus, &iManager.runStatus, &iManager.completeStatus,
                             &iManager.abortStatus, &iManager.bypassStatus}) {
        texts.push_back(NarrowText(*text));
    }
    texts.push_back(NarrowText(iManager.GetSpecialDataName(1)));
    texts.push_back(NarrowText(iManager.GetSpecialDataName(2)));
    return texts;
}

/** Pairs of internal code and exported word. */
PropertyEntries Priorities(const TestManager& iManager) {
    PropertyEntries pairs;
    EXPECT_EQ(iManager.internalPriorities.Size(), iManager.exportedPriorities.Size());
    for (int i = 1; i <= iManager.internalPriorities.Size(); ++i) {
        pairs.emplace_back(NarrowText(iManager.internalPriorities[i]), NarrowText(iManager.exportedPriorities[i]));
    }
    return pairs;
}

const std::vector<std::string> kDefaultVocabulary = {"Design",   "DSGproposed", "DSGin work", "DSGcompleted",
                                                     "rejected", "obsoleted",   "/MISSING/",  "/AMBIGUOUS/"};
const PropertyEntries kDefaultPriorities = {{"1", "Low"}, {"2", "Medium"}, {"3", "High"}};

/** A search path of one folder, in which the property file of the manager may lie. */
class ActionManagerResources : public ::testing::Test {
protected:
    void WriteFile(const std::string& iText) const { directory.Write("QorWflActionManager", iText); }

    TemporaryDirectory directory;
    EnvironmentVariable searchPath{"BexMsgCatalogPath", directory.Path().c_str()};
    TestManager manager;
    QorWflPropertyFile properties;
};

}  // namespace

TEST_F(ActionManagerResources, ManagerIsBuiltWithTheDefaults) {
    EXPECT_EQ(Vocabulary(manager), kDefaultVocabulary);
    EXPECT_EQ(Priorities(manager), kDefaultPriorities);
    EXPECT_EQ(manager.specialDataNames[0], "MISSING");
    EXPECT_EQ(manager.specialDataNames[1], "AMBIGUOUS");
}

TEST_F(ActionManagerResources, MissingFileLeavesTheDefaultsAndSeedsTheObjectMappings) {
    const CapturedStream output(std::cout);
    const CapturedStream error(std::cerr);
    manager.InitResources(properties);
    EXPECT_EQ(Vocabulary(manager), kDefaultVocabulary);
    EXPECT_EQ(Priorities(manager), kDefaultPriorities);
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("actionObjects.VERANT_QORModel.*", "KIRVA_MODEL.C_NICKNAME"),
                                                   Pair("actionObjects.VERANT_QORDocument.*", "DOC*.S_TYPE_REP"),
                                                   Pair("actionObjects.VERANT_QORFeature.*", "FEAT*.C_NAME")));
    EXPECT_EQ(output.Text() + error.Text(), "");
}

TEST_F(ActionManagerResources, DirectoryOfTheFilesNameLeavesTheDefaults) {
    std::filesystem::create_directory(directory.Path() / "QorWflActionManager");
    manager.InitResources(properties);
    EXPECT_EQ(Vocabulary(manager), kDefaultVocabulary);
    EXPECT_EQ(properties.GetNKeys(), 3);
}

TEST_F(ActionManagerResources, EachKeySetsItsTextAndNoOther) {
    struct KeyCase {
        const char* key;
        std::size_t position;  // in the vocabulary
        const char* expected;
    };
    const KeyCase cases[] = {
        {"actionType", 0, "a new word"},         {"actionStatus.start", 1, "a new word"},
        {"actionStatus.run", 2, "a new word"},   {"actionStatus.complete", 3, "a new word"},
        {"actionStatus.abort", 4, "a new word"}, {"actionStatus.bypass", 5, "a new word"},
        {"dataName.missing", 6, "/a new word/"}, {"dataName.ambiguous", 7, "/a new word/"},
    };
    for (const KeyCase& keyCase : cases) {
        WriteFile(std::string(keyCase.key) + " = a new word\n");
        TestManager fresh;
        QorWflPropertyFile table;
        fresh.InitResources(table);
        std::vector<std::string> expected = kDefaultVocabulary;
        expected[keyCase.position] = keyCase.expected;
        EXPECT_EQ(Vocabulary(fresh), expected) << keyCase.key;
        EXPECT_EQ(Priorities(fresh), kDefaultPriorities) << keyCase.key;
        EXPECT_EQ(table.GetNKeys(), 4) << keyCase.key;
    }
}

TEST_F(ActionManagerResources, KeysThatDifferInAnythingAreIgnored) {
    const std::vector<std::string> keys = {
        "actionStatus.Start", "ActionType",          "actiontype",           "actionTyp",
        "actionTypes",        "actionType.",         "xactionType",          "actionStatus",
        "actionStatus.",      "actionStatus.starts", "actionStatus.run.now", "actionStatus.done",
        "actionPriority",     "actionPriorit.1",     "actionpriority.1",     "ActionPriority.1",
        "xactionPriority.1",  "actionPriorities.1",  "dataName.Missing",     "dataName.missing.",
        "dataName",           "dataname.missing",    "dataName.ambiguos",    "specialDataName.1",
        "\"actionType\"",     "\tactionType",        "actionObjects.X.*",    " "};
    std::string text;
    for (const std::string& key : keys) {
        text += key + "=other\n";
    }
    WriteFile(text);
    manager.InitResources(properties);
    EXPECT_EQ(Vocabulary(manager), kDefaultVocabulary);
    EXPECT_EQ(Priorities(manager), kDefaultPriorities);
    EXPECT_EQ(properties.GetNKeys(), 3 + static_cast<int>(keys.size()));
}

TEST_F(ActionManagerResources, ValuesMayBeEmpty) {
    WriteFile("actionType=\nactionStatus.start=\"\"\ndataName.missing=\ndataName.ambiguous=\"  \"\n");
    manager.InitResources(properties);
    EXPECT_EQ(manager.actionType, "");
    EXPECT_EQ(manager.startStatus, "");
    EXPECT_EQ(manager.GetSpecialDataName(1), "//");
    EXPECT_EQ(manager.GetSpecialDataName(2), "/  /");
}

TEST_F(ActionManagerResources, FileReplacesTheSeededMappingsAtTheirPlaces) {
    WriteFile("actionObjects.P.*=PART_LIST.N\nactionObjects.VERANT_QORDocument.*=DOC_STD.OTHER\n");
    manager.InitResources(properties);
    EXPECT_THAT(EntriesOf(properties), ElementsAre(Pair("actionObjects.VERANT_QORModel.*", "KIRVA_MODEL.C_NICKNAME"),
                                                   Pair("actionObjects.VERANT_QORDocument.*", "DOC_STD.OTHER"),
                                                   Pair("actionObjects.VERANT_QORFeature.*", "FEAT*.C_NAME"),
                                                   Pair("actionObjects.P.*", "PART_LIST.N")));
}

TEST_F(ActionManagerResources, KeysThatTheTableHeldBeforeCountToo) {
    properties.SetValue("actionType", "preset");
    properties.SetValue("actionStatus.run", "preset");
    properties.SetValue("actionObjects.VERANT_QORModel.*", "preset");
    properties.SetValue("actionPriority.8", "Eight");
    WriteFile("actionStatus.run=from the file\nactionPriority.9=Nine\n");
    manager.InitResources(properties);
    EXPECT_EQ(manager.actionType, "preset");
    EXPECT_EQ(manager.runStatus, "from the file");
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("8", "Eight"), Pair("9", "Nine")));
    EXPECT_EQ(properties.GetKey(3), "actionObjects.VERANT_QORModel.*");
    EXPECT_EQ(properties.GetValue(3), "KIRVA_MODEL.C_NICKNAME");
}

TEST_F(ActionManagerResources, FirstPriorityOfTheFileReplacesTheDefaults) {
    WriteFile("actionPriority.9=Urgent\n");
    manager.InitResources(properties);
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("9", "Urgent")));
}

TEST_F(ActionManagerResources, PrioritiesKeepTheOrderInWhichTheirKeysFirstAppear) {
    WriteFile(
        "actionPriority.3=x\nactionType=T\nactionPriority.1=one\nactionPriority.=nothing\nactionPriority.a.b=dotted\n"
        "actionPriority.3=three\nactionPriority. 4 = four \nactionPriority.5=one\n");
    manager.InitResources(properties);
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("3", "three"), Pair("1", "one"), Pair("", "nothing"),
                                                 Pair("a.b", "dotted"), Pair("4", "four"), Pair("5", "one")));
}

TEST_F(ActionManagerResources, SecondCallAppliesTheFileOnTopOfTheState) {
    WriteFile("actionType=first\nactionStatus.run=first\nactionPriority.1=first\nactionPriority.2=first\n");
    manager.InitResources(properties);
    WriteFile("actionType=second\nactionPriority.7=second\n");
    QorWflPropertyFile fresh;
    manager.InitResources(fresh);
    EXPECT_EQ(manager.actionType, "second");
    EXPECT_EQ(manager.runStatus, "first");
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("7", "second")));

    WriteFile("actionStatus.run=third\n");
    QorWflPropertyFile withoutPriorities;
    manager.InitResources(withoutPriorities);
    EXPECT_EQ(manager.runStatus, "third");
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("7", "second")));
}

TEST_F(ActionManagerResources, SecondCallWithTheSameTableDoesNotDoublePriorities) {
    WriteFile("actionPriority.1=one\nactionPriority.2=two\n");
    manager.InitResources(properties);
    manager.InitResources(properties);
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("1", "one"), Pair("2", "two")));
    EXPECT_EQ(properties.GetNKeys(), 5);
}

TEST_F(ActionManagerResources, FileIsFoundAlongTheSearchPath) {
    directory.Write("second/QorWflActionManager", "actionType=found\n");
    const std::string path = directory.Path().string() + "/none:" + directory.Path().string() + "/second";
    const EnvironmentVariable longer("BexMsgCatalogPath", path.c_str());
    manager.InitResources(properties);
    EXPECT_EQ(manager.actionType, "found");
}

TEST_F(ActionManagerResources, ManagersAreIndependent) {
    WriteFile("actionType=changed\nactionPriority.9=Urgent\ndataName.missing=NONE\n");
    manager.InitResources(properties);
    TestManager other;
    EXPECT_EQ(Vocabulary(other), kDefaultVocabulary);
    EXPECT_EQ(Priorities(other), kDefaultPriorities);
}

TEST_F(ActionManagerResources, WholeTraceTellsEachKeyAndWhatItDid) {
    WriteFile(
        "actionType=Review\n"
        "actionStatus.start=s1\n"
        "actionStatus.run=s2\n"
        "actionStatus.complete=s3\n"
        "actionStatus.abort=s4\n"
        "actionStatus.bypass=s5\n"
        "actionPriority.1=Low\n"
        "unknown=ignored\n"
        "actionPriority.=\n"
        "dataName.missing=NONE\n"
        "dataName.ambiguous=MANY\n"
        "actionObjects.VERANT_QORFeature.*=FEAT*.OTHER\n"
        " = \n"
        "actionType=Last\n");
    const CapturedTrace trace("WFInterop");
    manager.InitResources(properties);
    EXPECT_THAT(trace.Lines(), ElementsAre(">> QorWflActionManagerBase::InitResources",
                                           "Read property [actionObjects.VERANT_QORModel.*]=[KIRVA_MODEL.C_NICKNAME]",
                                           "Read property [actionObjects.VERANT_QORDocument.*]=[DOC*.S_TYPE_REP]",
                                           "Read property [actionObjects.VERANT_QORFeature.*]=[FEAT*.OTHER]",
                                           "Read property [actionType]=[Last]",           //
                                           "Action type set",                             //
                                           "Read property [actionStatus.start]=[s1]",     //
                                           "Starting maturity set",                       //
                                           "Read property [actionStatus.run]=[s2]",       //
                                           "Running maturity set",                        //
                                           "Read property [actionStatus.complete]=[s3]",  //
                                           "Complete maturity set",                       //
                                           "Read property [actionStatus.abort]=[s4]",     //
                                           "Aborted maturity set",                        //
                                           "Read property [actionStatus.bypass]=[s5]",    //
                                           "Bypassed maturity set",                       //
                                           "Read property [actionPriority.1]=[Low]",      //
                                           "Priority mapping resetted",                   //
                                           "Priority mapping added",                      //
                                           "Read property [unknown]=[ignored]",           //
                                           "Read property [actionPriority.]=[]",          //
                                           "Priority mapping added",                      //
                                           "Read property [dataName.missing]=[NONE]",     //
                                           "Missing data marker set",                     //
                                           "Read property [dataName.ambiguous]=[MANY]",   //
                                           "Ambiguous data marker set",                   //
                                           "Read property []=[]",                         //
                                           "<< QorWflActionManagerBase::InitResources"));
}

TEST_F(ActionManagerResources, TraceTextIsIndentedBelowItsStep) {
    const CapturedTrace trace("WFInterop");
    manager.InitResources(properties);
    EXPECT_EQ(trace.Text(),
              ">> QorWflActionManagerBase::InitResources\n"
              "  Read property [actionObjects.VERANT_QORModel.*]=[KIRVA_MODEL.C_NICKNAME]\n"
              "  Read property [actionObjects.VERANT_QORDocument.*]=[DOC*.S_TYPE_REP]\n"
              "  Read property [actionObjects.VERANT_QORFeature.*]=[FEAT*.C_NAME]\n"
              "<< QorWflActionManagerBase::InitResources\n");
}

TEST_F(ActionManagerResources, WholeTraceOfASecondCallWithTheSameTable) {
    properties.SetValue("actionPriority.8", "Eight");
    properties.SetValue("other", BexUnicodeString());
    WriteFile(
        "/actionType=comment\ndataName.missing = \"  \"\nactionPriority.9=Nine\nactionObjects.VERANT_QORModel.*=x");
    manager.InitResources(properties);
    WriteFile("actionPriority.8=\nactionType\n=actionType\nactionType=T=\n");
    const CapturedTrace trace("WFInterop");
    manager.InitResources(properties);
    EXPECT_EQ(trace.Text(),
              ">> QorWflActionManagerBase::InitResources\n"
              "  Read property [actionPriority.8]=[]\n"
              "  Priority mapping resetted\n"
              "  Priority mapping added\n"
              "  Read property [other]=[]\n"
              "  Read property [actionObjects.VERANT_QORModel.*]=[KIRVA_MODEL.C_NICKNAME]\n"
              "  Read property [actionObjects.VERANT_QORDocument.*]=[DOC*.S_TYPE_REP]\n"
              "  Read property [actionObjects.VERANT_QORFeature.*]=[FEAT*.C_NAME]\n"
              "  Read property [dataName.missing]=[  ]\n"
              "  Missing data marker set\n"
              "  Read property [actionPriority.9]=[Nine]\n"
              "  Priority mapping added\n"
              "  Read property [actionType]=[T=]\n"
              "  Action type set\n"
              "<< QorWflActionManagerBase::InitResources\n");
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("8", ""), Pair("9", "Nine")));
    EXPECT_EQ(manager.actionType, "T=");
    EXPECT_EQ(manager.GetSpecialDataName(1), "/  /");
}

TEST_F(ActionManagerResources, CarriageReturnsOfTheFileAreInTheVocabulary) {
    WriteFile("actionType=Review\r\nactionPriority.1=\"Low\"\r\n\r\ndataName.missing=NONE\r\n");
    const CapturedTrace trace("WFInterop");
    manager.InitResources(properties);
    EXPECT_EQ(manager.actionType, "Review\r");
    EXPECT_THAT(Priorities(manager), ElementsAre(Pair("1", "\"Low\"\r")));
    EXPECT_EQ(manager.GetSpecialDataName(1), "/NONE\r/");
    EXPECT_EQ(properties.GetNKeys(), 6);
    EXPECT_THAT(trace.Lines(), ::testing::Contains("Read property [actionType]=[Review\r]"));
}

TEST_F(ActionManagerResources, NullAndWideValuesOfTheTableAreTakenAsTheyAre) {
    const BexUnicodeString wide(u"\u20AC", 1);
    properties.SetValue("actionType", BexUnicodeString());
    properties.SetValue("actionStatus.run", wide);
    properties.SetValue("dataName.ambiguous", wide);
    properties.SetValue(BexUnicodeString("actionPriority.") + wide, BexUnicodeString());
    // with the low bytes of the keys that count, and so others
    properties.SetValue(BexUnicodeString(u"\u0161ctionStatus.abort", 18), "other");
    properties.SetValue(BexUnicodeString(u"actionPriority\u012E7", 16), "other");
    manager.InitResources(properties);
    EXPECT_TRUE(manager.actionType.IsNull());
    EXPECT_EQ(manager.runStatus, wide);
    EXPECT_EQ(manager.GetSpecialDataName(2), BexUnicodeString("/") + wide + "/");
    EXPECT_EQ(manager.abortStatus, "rejected");
    ASSERT_EQ(manager.internalPriorities.Size(), 1);
    EXPECT_EQ(manager.internalPriorities[1], wide);
    EXPECT_EQ(manager.GetInternalPriority(""), wide);
    EXPECT_EQ(manager.GetExportedPriority("?"), "?");
}

TEST_F(ActionManagerResources, EmptyCodeOfAPriorityIsEmptyAndNotNull) {
    WriteFile("actionPriority.=None\nactionPriority.1=\n");
    manager.InitResources(properties);
    EXPECT_FALSE(manager.GetInternalPriority("None").IsNull());
    EXPECT_FALSE(manager.GetExportedPriority("1").IsNull());
}

TEST_F(ActionManagerResources, FileThatCannotBeOpenedLeavesTheDefaults) {
    WriteFile("actionType=Review\nactionPriority.9=Urgent\n");
    TestManager other;
    QorWflPropertyFile table;
    other.InitResources(table);  // a sanitizer opens files of its own when code first runs
    {
        const OpenFileLimit none(0);
        manager.InitResources(properties);
    }
    EXPECT_EQ(Vocabulary(manager), kDefaultVocabulary);
    EXPECT_EQ(Priorities(manager), kDefaultPriorities);
    EXPECT_EQ(properties.GetNKeys(), 3);
    EXPECT_EQ(other.actionType, "Review");
}

TEST_F(ActionManagerResources, EveryCallTracesAfreshThatPrioritiesWereReset) {
    WriteFile("actionPriority.1=one\nactionPriority.2=two\n");
    manager.InitResources(properties);
    const CapturedTrace trace("WFInterop");
    QorWflPropertyFile fresh;
    manager.InitResources(fresh);
    const std::vector<std::string> messages = trace.Messages();
    ASSERT_EQ(messages.size(), 8U);
    EXPECT_THAT(
        std::vector<std::string>(messages.begin() + 3, messages.end()),
        ElementsAre("Read property [actionPriority.1]=[one]", "Priority mapping resetted", "Priority mapping added",
                    "Read property [actionPriority.2]=[two]", "Priority mapping added"));
}

TEST(ActionManagerTrace, OneChannelIsTheManagersOwn) {
    EXPECT_EQ(BexQorTrace::SetOn("WFInterop", 0), 1);
}

TEST(ActionManagerTrace, ConstructorOpensAStepAndDestructorNone) {
    const CapturedTrace trace("WFInterop");
    { const TestManager manager; }
    EXPECT_THAT(trace.Lines(), ElementsAre(">> QorWflActionManagerBase::QorWflActionManagerBase",
                                           "<< QorWflActionManagerBase::QorWflActionManagerBase"));
}

TEST(ActionManagerTrace, NothingIsWrittenWhileTheChannelIsOff) {
    const CapturedTrace trace("WFInterop");
    BexQorTrace::SetOn("WFInterop", 0);
    const CapturedStream output(std::cout);
    TestManager manager;
    manager.GetExportedPriority("1");
    manager.GetInternalPriority("Low");
    manager.GetSpecialDataName(1);
    EXPECT_THAT(trace.Lines(), IsEmpty());
    EXPECT_EQ(output.Text(), "");
}

TEST(ActionManagerTrace, LinesGoToStandardOutput) {
    TestManager manager;
    testing::internal::CaptureStdout();
    BexQorTrace::SetOn("WFInterop", 1);
    manager.GetExportedPriority("1");
    BexQorTrace::SetOn("WFInterop", 0);
    EXPECT_THAT(testing::internal::GetCapturedStdout(), HasSubstr("Internal=[1] Exported=[Low]\n"));
}

TEST(SpecialDataName, IsTheMarkerBetweenSlashes) {
    TestManager manager;
    EXPECT_EQ(manager.GetSpecialDataName(1), "/MISSING/");
    EXPECT_EQ(manager.GetSpecialDataName(2), "/AMBIGUOUS/");
    manager.specialDataNames[0] = "/a/";
    manager.specialDataNames[1] = BexUnicodeString();
    EXPECT_EQ(manager.GetSpecialDataName(1), "//a//");
    EXPECT_EQ(manager.GetSpecialDataName(2), "//");
}

TEST(SpecialDataName, OpensAStepWithoutMessages) {
    TestManager manager;
    const CapturedTrace trace("WFInterop");
    manager.GetSpecialDataName(2);
    EXPECT_THAT(trace.Lines(), ElementsAre(">> QorWflActionManagerBase::GetSpecialDataName",
                                           "<< QorWflActionManagerBase::GetSpecialDataName"));
}

TEST(SpecialDataNameDeathTest, AnyOtherNumberFailsTheAssertionWithItsExpressionPathAndLine) {
    TestManager manager;
    for (const int id : {0, 3, -1, 4, INT_MAX, INT_MIN}) {
        EXPECT_EXIT(manager.GetSpecialDataName(id), ::testing::KilledBySignal(SIGABRT),
                    AllOf(HasSubstr("iId>0 && iId<=2"),
                          HasSubstr("QorWorkflowInterop/QorWflInteropUtil.m/src/QorWflActionManagerBase"),
                          ContainsRegex("(^|[^0-9])195([^0-9]|$)")))
            << id;
    }
}
