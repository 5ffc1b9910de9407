#include "ActivityFields.h"
#include "AllocationWatch.h"
#include "CapturedTrace.h"
#include "LibraryTrace.h"
#include "TestAction.h"
#include "TestManager.h"

#include <QorWflActionManagerBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>
#include <vector>

// Whole records after GetActionInfo(): every field compared, null told from empty, over old values.

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

const std::string kModelBlock = UuidBlock("DB", "E1", "KIRVA_MODEL");
const std::string kPartBlock = UuidBlock("DB", "E2", "PART_LIST");
const std::string kUnmappedBlock = UuidBlock("DB", "E1", "ZZ");
const std::string kModelUrl =
    "LumenUID://Legacy+QOR1/E1/DB++++++#E1++++++#KIRVA_MODEL+++++++#0123456789ABCDEF#FEDCBA9876543210.KIRVA_MODEL";
const std::string kPartUrl =
    "LumenUID://Legacy+QOR1/E2/DB++++++#E2++++++#PART_LIST+++++++++#0123456789ABCDEF#FEDCBA9876543210.PART_LIST";
const std::string kUnmappedUrl =
    "LumenUID://Legacy+QOR1/E1/DB++++++#E1++++++#ZZ++++++++++++++++#0123456789ABCDEF#FEDCBA9876543210.ZZ";

/** A manager that maps models and parts, an action to fill in, and a record in which every field has an old value. */
class ActionInfoRecord : public ::testing::Test {
protected:
    ActionInfoRecord() {
        QorWflPropertyFile properties;
        properties.SetValue("actionObjects.TModel.*", "KIRVA_MODEL.N");
        properties.SetValue("actionObjects.TPart.*", "PART_LIST.N");
        manager.handler.Init(properties);
        FillWithOldValues(info);
    }

    TestManager manager;
    TestAction action;
    ActivityInfo info;

    /** What a call always sets, for an action that tells nothing; the rest keeps its old value. */
    ActivityFields SetByBareAction() const {
        return With(OldFields(), {{"abstract", "null"},
                                  {"priority", "null"},
                                  {"extid", "\"LumenUID://Legacy+QOR1/default/.ACTION\""},
                                  {"owner", "null"},
                                  {"participant", "null"},
                                  {"participantType", "\"HUMAN\""},
                                  {"process.datas", "null"},
                                  {"process.dataNumber", "0"},
                                  {"inputs", "null"},
                                  {"inputNumber", "0"},
                                  {"outputs", "null"},
                                  {"outputNumber", "0"}});
    }
    /** The record after a call. */
    ActivityFields Filled() {
        EXPECT_EQ(manager.GetActionInfo(&action, info), 0);
        return FieldsOf(info);
    }
};

using ActionInfoRecordDeathTest = ActionInfoRecord;

}  // namespace

TEST_F(ActionInfoRecord, BareActionSetsWhatItAlwaysSetsAndKeepsTheRest) {
    EXPECT_EQ(Filled(), SetByBareAction());
}

TEST_F(ActionInfoRecord, FreshRecordHasNullWhereTheActionTellsNothing) {
    ActivityInfo fresh;
    ASSERT_EQ(manager.GetActionInfo(&action, fresh), 0);
    const ActivityInfo untouched;
    EXPECT_EQ(FieldsOf(fresh), With(FieldsOf(untouched), {{"extid", "\"LumenUID://Legacy+QOR1/default/.ACTION\""},
                                                          {"participantType", "\"HUMAN\""}}));
}

TEST_F(ActionInfoRecord, EmptyTextsAreEmptyAndNotNull) {
    action.abstractText = "";
    action.priority = "";
    action.actionId = "";
    action.owner = "";
    action.contexts = {{"WFProcess", "", ""}, {"WFActivity", "", ""}, {"Config", "", ""}};
    action.objects = {{"Product", "", "", "", Octets(kPartBlock)},
                      {"Part", "I", "", "", Octets(kPartBlock)},
                      {"Model", "O", "", "", Octets(kModelBlock)}};
    EXPECT_EQ(Filled(),
              With(SetByBareAction(), {{"abstract", "\"\""},
                                       {"priority", "\"\""},
                                       {"owner", "\"\""},
                                       {"participant", "\"\""},
                                       {"id", "\"\""},
                                       {"process.id", "\"\""},
                                       {"process.context", "\"" + kPartUrl + "?Nickname=\""},
                                       {"process.datas", "[{\"\" \"TModel\" \"" + kModelUrl + "?Nickname=\" \"\"}]"},
                                       {"process.dataNumber", "1"},
                                       {"inputs", "[\"\"]"},
                                       {"inputNumber", "1"},
                                       {"outputs", "[\"\"]"},
                                       {"outputNumber", "1"}}));
}

TEST_F(ActionInfoRecord, NullTextsAreNullButNamesAndUrls) {
    action.contexts = {{"WFProcess", BexUnicodeString(), ""},
                       {"WFActivity", BexUnicodeString(), ""},
                       {"Config", BexUnicodeString(), ""}};
    action.objects = {
        {"Product", BexUnicodeString(), BexUnicodeString(), BexUnicodeString(), Octets(kPartBlock)},
        {"Part", "I", BexUnicodeString(), BexUnicodeString(), Octets(kUnmappedBlock)},
        {"Model", "O", BexUnicodeString(), BexUnicodeString(), Octets(kModelBlock)},
    };
    EXPECT_EQ(Filled(),
              With(SetByBareAction(), {{"id", "null"},
                                       {"process.id", "null"},
                                       {"process.context", "\"" + kPartUrl + "?Nickname=\""},
                                       {"process.datas", "[{\"*AUTO_ID#2\" \"\" \"" + kUnmappedUrl +
                                                             "?Nickname=\" null}{\"*AUTO_ID#3\" \"TModel\" \"" +
                                                             kModelUrl + "?Nickname=\" null}]"},
                                       {"process.dataNumber", "2"},
                                       {"inputs", "[\"*AUTO_ID#2\"]"},
                                       {"inputNumber", "1"},
                                       {"outputs", "[\"*AUTO_ID#3\"]"},
                                       {"outputNumber", "1"}}));
}

TEST_F(ActionInfoRecord, FullActionLeavesTheHostsFieldsOnly) {
    action.abstractText = "Check \xE9";
    action.priority = "3";
    action.status = "not taken";
    action.actionId = "A/1.b";
    action.owner = "JDOE";
    action.contexts = {{"WFActivity", "A1", ""}, {"Config", "c/d", ""}, {"WFProcess", "P1", ""}};
    action.objects = {{"Model", "O", "m", "model", Octets(kModelBlock)},
                      {"Product", "I", "car 1", "the car", Octets(kModelBlock)},
                      {"Part", "I", "p", "part", Octets(kPartBlock)},
                      {"Feature", "O", "p again", "part", Octets(kUnmappedBlock)}};
    EXPECT_EQ(
        Filled(),
        With(OldFields(), {{"abstract", "\"Check \xE9\""},
                           {"priority", "\"High\""},
                           {"extid", "\"LumenUID://Legacy+QOR1/default/A%2F1.b.ACTION\""},
                           {"owner", "\"JDOE\""},
                           {"participant", "\"JDOE\""},
                           {"participantType", "\"HUMAN\""},
                           {"id", "\"A1\""},
                           {"process.id", "\"P1\""},
                           {"process.context", "\"" + kModelUrl + "?context=c%2Fd&Nickname=car+1\""},
                           {"process.datas", "[{\"part\" \"\" \"" + kUnmappedUrl + "?Nickname=p+again\" \"p again\"}" +
                                                 "{\"model\" \"TModel\" \"" + kModelUrl + "?Nickname=m\" \"m\"}]"},
                           {"process.dataNumber", "2"},
                           {"inputs", "[\"part\"]"},
                           {"inputNumber", "1"},
                           {"outputs", "[\"model\"\"part\"]"},
                           {"outputNumber", "2"}}));
}

TEST_F(ActionInfoRecord, ContextStaysWhenTheLastProductHasNoUsableBlock) {
    for (const char* before : {static_cast<const char*>(nullptr), "", "old"}) {
        for (const std::size_t length : {0U, 49U, 51U}) {
            std::string block = kModelBlock + "x";
            block.resize(length);
            action.objects = {{"Product", "", "first", "", Octets(kModelBlock)},
                              {"Product", "", "last", "", Octets(block)}};
            info.process.context = before;
            const std::string shown = Shown(info.process.context);
            EXPECT_EQ(Filled(), With(SetByBareAction(), {{"process.context", shown}})) << length;
        }
    }
}

TEST_F(ActionInfoRecord, UnfilledDataFieldHasFourNullTexts) {
    action.objects = {{"Part", "I", "n", "a", Octets(kPartBlock)}, {"Part", "I", "n", "b", Octets(kPartBlock)}};
    action.laterObjects = {{"Part", "I", "n", "other", Octets(kPartBlock)},
                           {"Part", "I", "n", "b", Octets(kPartBlock)}};
    EXPECT_EQ(Filled(), With(SetByBareAction(), {{"process.datas", "[{null null null null}{\"b\" \"TPart\" \"" +
                                                                       kPartUrl + "?Nickname=n\" \"n\"}]"},
                                                 {"process.dataNumber", "2"},
                                                 {"inputs", "[\"a\"\"b\"]"},
                                                 {"inputNumber", "2"}}));
}

TEST_F(ActionInfoRecord, AnswersThatDifferTheSecondTimeCountWhereTheyAreUsed) {
    const std::string whole = "{\"a\" \"TPart\" \"" + kPartUrl + "?Nickname=later\" \"later\"}";
    const std::string automatic = "{\"*AUTO_ID#1\" \"TPart\" \"" + kPartUrl + "?Nickname=later\" \"later\"}";
    const std::string none = "{null null null null}";
    const struct {
        const char* what;
        TestObject first;
        TestObject later;
        const char* input;  ///< null: none
        std::string data;   ///< empty: none
        bool hasContext;
    } cases[] = {
        {"another block and nickname",
         {"Part", "I", "n", "a", Octets("")},
         {"Part", "I", "later", "a", Octets(kPartBlock)},
         "a",
         whole,
         false},
        {"another type and direction",
         {"Feature", "I", "n", "a", Octets("")},
         {"Part", "O", "later", "a", Octets(kPartBlock)},
         "a",
         whole,
         false},
        {"a longer block",
         {"Part", "I", "n", "a", Octets(kModelBlock.substr(1))},
         {"Part", "I", "later", "a", Octets(kPartBlock + "x")},
         "a",
         whole,
         false},
        {"a name at last",
         {"Part", "I", "n", BexUnicodeString(), Octets(kPartBlock)},
         {"Part", "I", "later", "a", Octets(kPartBlock)},
         "*AUTO_ID#1",
         none,
         false},
        {"its own name at last",
         {"Part", "I", "n", BexUnicodeString(), Octets(kPartBlock)},
         {"Part", "I", "later", "*AUTO_ID#1", Octets(kPartBlock)},
         "*AUTO_ID#1",
         automatic,
         false},
        {"no name any more",
         {"Part", "I", "n", "a", Octets(kPartBlock)},
         {"Part", "I", "later", BexUnicodeString(), Octets(kPartBlock)},
         "a",
         none,
         false},
        {"a name that looks made up",
         {"Part", "I", "n", "*AUTO_ID#1", Octets(kPartBlock)},
         {"Part", "I", "later", BexUnicodeString(), Octets(kPartBlock)},
         "*AUTO_ID#1",
         automatic,
         false},
        {"an empty name",
         {"Part", "I", "n", BexUnicodeString(), Octets(kPartBlock)},
         {"Part", "I", "later", "", Octets(kPartBlock)},
         "*AUTO_ID#1",
         none,
         false},
        {"another name and no block",
         {"Part", "I", "n", "a", Octets(kPartBlock)},
         {"Part", "I", "later", "b", Octets("")},
         "a",
         none,
         false},
        {"of no known type later",
         {"Part", "I", "n", "a", Octets(kPartBlock)},
         {"Unknown", "I", "later", "a", Octets("")},
         "a",
         none,
         false},
        {"a product later",
         {"Part", "I", "n", "a", Octets(kPartBlock)},
         {"Product", "I", "later", "a", Octets(kPartBlock)},
         "a",
         none,
         false},
        {"a product first",
         {"Product", "I", "n", "a", Octets(kModelBlock)},
         {"Part", "I", "later", "a", Octets(kPartBlock)},
         nullptr,
         "",
         true},
        {"listed in no direction first",
         {"Part", "", "n", "a", Octets(kPartBlock)},
         {"Part", "I", "later", "a", Octets(kPartBlock)},
         nullptr,
         "",
         false},
        {"of no known type first",
         {"part", "I", "n", "a", Octets(kPartBlock)},
         {"Part", "I", "later", "a", Octets(kPartBlock)},
         nullptr,
         "",
         false},
    };
    for (const auto& entry : cases) {
        TestAction fickle;
        fickle.objects = {entry.first};
        fickle.laterObjects = {entry.later};
        ActivityInfo record;
        FillWithOldValues(record);
        ASSERT_EQ(manager.GetActionInfo(&fickle, record), 0);
        ActivityFields expected = SetByBareAction();
        if (entry.input != nullptr) {
            expected = With(expected, {{"inputs", "[\"" + std::string(entry.input) + "\"]"}, {"inputNumber", "1"}});
        }
        if (!entry.data.empty()) {
            expected = With(expected, {{"process.datas", "[" + entry.data + "]"}, {"process.dataNumber", "1"}});
        }
        if (entry.hasContext) {
            expected["process.context"] = "\"" + kModelUrl + "?Nickname=n\"";
        }
        EXPECT_EQ(FieldsOf(record), expected) << entry.what;
    }
}

namespace {

/** An action that fills in the first answers only and leaves its arguments alone for all others. */
class SilentAction final : public QorWflActionItf {
public:
    BexUnicodeString GetAbstract() const override { return BexUnicodeString(); }
    BexUnicodeString GetPriority() const override { return BexUnicodeString(); }
    BexUnicodeString GetActionId() const override { return BexUnicodeString(); }
    BexUnicodeString GetOwner() const override { return BexUnicodeString(); }
    int GetContextCount() const override { return 3; }
    void GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                    BexUnicodeString& /*oExtra*/) const override {
        if (iIndex == 1) {
            oKind = "WFActivity";
            oValue = "A1";
        } else if (iIndex == 2) {
            oKind = "WFProcess";  // and no value
        }
    }
    int GetObjectCount() const override { return 3; }
    void GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                   BexUnicodeString& oNickname, BexUnicodeString& oName) const override {
        if (iIndex == 1) {
            oUuid = Octets(kPartBlock);
            oType = "Part";
            oDirection = "I";
            oNickname = "n";
            oName = "first";
        } else if (iIndex == 2) {
            oUuid = Octets(kPartBlock);
            oType = "Part";
            oDirection = "O";
        }
    }
};

}  // namespace

TEST_F(ActionInfoRecord, WhatAnAnswerLeavesOutIsNothingAndNotThatOfTheAnswerBefore) {
    const SilentAction silent;
    ASSERT_EQ(manager.GetActionInfo(&silent, info), 0);
    const std::string url = " \"TPart\" \"" + kPartUrl;
    EXPECT_EQ(FieldsOf(info),
              With(SetByBareAction(), {{"id", "\"A1\""},
                                       {"process.id", "null"},
                                       {"process.datas", "[{\"first\"" + url + "?Nickname=n\" \"n\"}" +
                                                             "{\"*AUTO_ID#2\"" + url + "?Nickname=\" null}]"},
                                       {"process.dataNumber", "2"},
                                       {"inputs", "[\"first\"]"},
                                       {"inputNumber", "1"},
                                       {"outputs", "[\"*AUTO_ID#2\"]"},
                                       {"outputNumber", "1"}}));
}

TEST_F(ActionInfoRecord, ActionNeedNotTellItsStatusWhichIsNotAskedFor) {
    const SilentAction silent;
    EXPECT_TRUE(silent.GetStatus().IsNull());
    EXPECT_EQ(manager.GetActionInfo(&action, info), 0);
    EXPECT_THAT(action.calls, Not(Contains(HasSubstr("GetStatus"))));
}

TEST_F(ActionInfoRecord, OneCallLeavesNoMoreMemoryThanItsRecordHolds) {
    action.contexts = {{"Config", "c", ""}};
    action.objects = {{"Product", "", "p", "", Octets(kModelBlock)},
                      {"Part", "I", "n", "a", Octets(kPartBlock)},
                      {"Part", "O", "n", BexUnicodeString(), Octets(kPartBlock)}};
    const auto fill = [this](ActivityInfo& oRecord) {
        action.calls.clear();
        action.calls.shrink_to_fit();
        EXPECT_EQ(manager.GetActionInfo(&action, oRecord), 0);
        action.calls.clear();
        action.calls.shrink_to_fit();
    };
    {
        ActivityInfo first;
        fill(first);
    }
    const long before = AllocationWatch::LiveBlocks();
    {
        ActivityInfo record;
        fill(record);
        const long once = AllocationWatch::LiveBlocks();
        const long arrays = AllocationWatch::LiveArrays();
        for (int round = 0; round < 3; ++round) {
            fill(record);
            EXPECT_EQ(AllocationWatch::LiveBlocks(), once);
            EXPECT_EQ(AllocationWatch::LiveArrays(), arrays);
        }
    }
    EXPECT_EQ(AllocationWatch::LiveBlocks(), before);
}

TEST_F(ActionInfoRecordDeathTest, ShortBlockEndsTheProcessAlsoWhenALaterObjectOfItsNameWouldWin) {
    action.objects = {{"Part", "I", "n", "a", Octets(kPartBlock.substr(0, 49))},
                      {"Part", "O", "n", "a", Octets(kPartBlock)}};
    EXPECT_EXIT(manager.GetActionInfo(&action, info), ::testing::KilledBySignal(SIGABRT),
                HasSubstr("operator[] : %length, %i"));
}

TEST_F(ActionInfoRecordDeathTest, ShortBlockOfAnObjectInNoDirectionThatSharesAListedNameEndsTheProcess) {
    action.objects = {{"Part", "I", "n", "a", Octets(kPartBlock)}, {"Part", "X", "n", "a", Octets("")}};
    EXPECT_EXIT(manager.GetActionInfo(&action, info), ::testing::KilledBySignal(SIGABRT),
                HasSubstr("operator[] : %length, %i"));
}

TEST_F(ActionInfoRecord, UrlsAreBuiltInTheOrderOfTheFieldsAsTheirTraceTells) {
    action.actionId = "A1";
    action.contexts = {{"Config", "c", ""}};
    action.objects = {{"Part", "I", "n", "a", Octets(kPartBlock)},
                      {"Product", "", "p", "", Octets(kModelBlock)},
                      {"Part", "X", "n", "not listed", Octets(kPartBlock)}};
    const auto instanceUrl = [](const std::string& iUrl) {
        return std::vector<std::string>{
            ">> QorWflUrlUtil::InstanceUrl", ">> QorWflUrlUtil::BinToHex", "res=[0123456789ABCDEF]",
            "<< QorWflUrlUtil::BinToHex",    ">> QorWflUrlUtil::BinToHex", "res=[FEDCBA9876543210]",
            "<< QorWflUrlUtil::BinToHex",    "url is [" + iUrl + "]",      "<< QorWflUrlUtil::InstanceUrl"};
    };
    const auto addUrlParm = [](const std::string& iUrl) {
        return std::vector<std::string>{">> QorWflUrlUtil::AddUrlParm", "url set to [" + iUrl + "]",
                                        "<< QorWflUrlUtil::AddUrlParm"};
    };
    std::vector<std::string> expected;
    const std::vector<std::string> steps[] = {
        {">> QorWflUrlUtil::ActionUrl", "<< QorWflUrlUtil::ActionUrl", ">> QorWflUrlUtil::ContextUrl"},
        instanceUrl(kModelUrl),
        addUrlParm(kModelUrl + "?context=c"),
        {"<< QorWflUrlUtil::ContextUrl"},
        addUrlParm(kModelUrl + "?context=c&Nickname=p"),
        instanceUrl(kPartUrl),
        addUrlParm(kPartUrl + "?Nickname=n"),
    };
    for (const std::vector<std::string>& step : steps) {
        expected.insert(expected.end(), step.begin(), step.end());
    }
    const CapturedTrace trace("WFInteropUrl");
    ASSERT_EQ(manager.GetActionInfo(&action, info), 0);
    EXPECT_EQ(trace.Lines(), expected);
}

TEST_F(ActionInfoRecord, StepsOfTheManagerAndOfTheUrlsAreNested) {
    action.priority = "9";
    action.actionId = "A1";
    const LibraryTrace trace;
    ASSERT_EQ(manager.GetActionInfo(&action, info), 0);
    EXPECT_EQ(trace.Text(),
              "WFInterop|>> QorWflActionManagerBase::GetActionInfo\n"
              "WFInterop|  >> QorWflActionManagerBase::GetExportedPriority\n"
              "WFInterop|    Internal=[9] Exported=[9]\n"
              "WFInterop|  << QorWflActionManagerBase::GetExportedPriority\n"
              "WFInteropUrl|  >> QorWflUrlUtil::ActionUrl\n"
              "WFInteropUrl|  << QorWflUrlUtil::ActionUrl\n"
              "WFInterop|<< QorWflActionManagerBase::GetActionInfo\n");
}
