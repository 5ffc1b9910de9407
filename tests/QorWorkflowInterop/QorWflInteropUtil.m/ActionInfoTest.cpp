#include "CapturedTrace.h"
#include "PropertyEntries.h"
#include "TestAction.h"
#include "TestManager.h"

#include <QorWflActionManagerBase.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <string>
#include <tuple>
#include <vector>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

const std::string kModelBlock = UuidBlock("QORDB", "ENV1", "KIRVA_MODEL");
const std::string kDocumentBlock = UuidBlock("QORDB", "ENV1", "DOC_STD");
const std::string kPartBlock = UuidBlock("QORDB", "ENV2", "PART_LIST");
const std::string kModelUrl =
    "LumenUID://Legacy+QOR1/ENV1/QORDB+++#ENV1++++#KIRVA_MODEL+++++++#0123456789ABCDEF#FEDCBA9876543210.KIRVA_MODEL";
const std::string kDocumentUrl =
    "LumenUID://Legacy+QOR1/ENV1/QORDB+++#ENV1++++#DOC_STD+++++++++++#0123456789ABCDEF#FEDCBA9876543210.DOC_STD";
const std::string kPartUrl =
    "LumenUID://Legacy+QOR1/ENV2/QORDB+++#ENV2++++#PART_LIST+++++++++#0123456789ABCDEF#FEDCBA9876543210.PART_LIST";

/** Name, type, extid and value of a data field. */
using Data = std::tuple<std::string, std::string, std::string, std::string>;

std::vector<std::string> Inputs(const ActivityInfo& iInfo) {
    std::vector<std::string> names;
    for (int i = 0; i < iInfo.inputNumber; ++i) {
        names.push_back(NarrowText(iInfo.inputs[i]));
    }
    return names;
}

std::vector<std::string> Outputs(const ActivityInfo& iInfo) {
    std::vector<std::string> names;
    for (int i = 0; i < iInfo.outputNumber; ++i) {
        names.push_back(NarrowText(iInfo.outputs[i]));
    }
    return names;
}

std::vector<Data> Datas(const ActivityInfo& iInfo) {
    std::vector<Data> datas;
    for (int i = 0; i < iInfo.process.dataNumber; ++i) {
        const DataInfo& data = iInfo.process.datas[i];
        datas.emplace_back(NarrowText(data.name), NarrowText(data.type), NarrowText(data.extid),
                           NarrowText(data.value));
    }
    return datas;
}

std::vector<std::string> DataNames(const ActivityInfo& iInfo) {
    std::vector<std::string> names;
    for (const Data& data : Datas(iInfo)) {
        names.push_back(std::get<0>(data));
    }
    return names;
}

/** A manager that maps models, documents and parts, an action to fill in, and a record to look at. */
class ActionInfo : public ::testing::Test {
protected:
    ActionInfo() {
        QorWflPropertyFile properties;
        properties.SetValue("actionObjects.TModel.*", "KIRVA_MODEL.N");
        properties.SetValue("actionObjects.TDocument.*", "DOC*.N");
        properties.SetValue("actionObjects.TPart.ENV2", "PART_LIST.N");
        manager.handler.Init(properties);
    }

    /** Attaches an object. A null pointer as its name makes it nameless. */
    void Attach(const char* iType, const char* iDirection, const char* iNickname, const char* iName,
                const std::string& iBlock = kModelBlock) {
        action.objects.push_back({iType, iDirection, iNickname, iName, Octets(iBlock)});
    }
    void AttachProduct(const char* iNickname, const std::string& iBlock = kModelBlock) {
        Attach("Product", "", iNickname, nullptr, iBlock);
    }
    void Fill() { ASSERT_EQ(manager.GetActionInfo(&action, info), 0); }

    TestManager manager;
    TestAction action;
    ActivityInfo info;
};

using ActionInfoDeathTest = ActionInfo;

}  // namespace

TEST_F(ActionInfo, UnknownPriorityPassesThrough) {
    action.priority = "77";
    Fill();
    EXPECT_EQ(info.priority, "77");
}

TEST_F(ActionInfo, ActionIdentifierComesBackFromItsUrl) {
    for (const char* id : {"A 1", "a.b", "a/b+c%41", "", "\xE4\xFF", "x?y&z=1"}) {
        action.actionId = id;
        Fill();
        EXPECT_EQ(QorWflUrlUtil::UrlToActionId(info.extid), id);
    }
}

TEST_F(ActionInfo, ContextEntriesAreToldByTheirExactKindAndTheLastOfAKindWins) {
    struct ContextCase {
        std::vector<TestContext> contexts;
        const char* query;
        const char* processId;
        const char* activityId;
    };
    const ContextCase cases[] = {
        {{}, "?Nickname=p", "old", "old"},
        {{{"Config", "c", "x"}}, "?context=c&Nickname=p", "old", "old"},
        {{{"Config", "", "x"}}, "?Nickname=p", "old", "old"},
        {{{"Config", BexUnicodeString(), "x"}}, "?Nickname=p", "old", "old"},
        {{{"WFProcess", "P", "x"}}, "?Nickname=p", "P", "old"},
        {{{"WFActivity", "A", "x"}}, "?Nickname=p", "old", "A"},
        {{{"WFActivity", "A", ""}, {"WFProcess", "P", ""}, {"Config", "c", ""}}, "?context=c&Nickname=p", "P", "A"},
        {{{"Config", "c", ""}, {"Config", "d", ""}}, "?context=d&Nickname=p", "old", "old"},
        {{{"Config", "c", ""}, {"Config", "", ""}}, "?Nickname=p", "old", "old"},
        {{{"WFProcess", "P", ""}, {"WFActivity", "A", ""}, {"WFProcess", "Q", ""}, {"WFActivity", "B", ""}},
         "?Nickname=p",
         "Q",
         "B"},
        {{{"WFProcess", "P", ""}, {"Other", "Q", ""}, {"", "R", ""}}, "?Nickname=p", "P", "old"},
        {{{"config", "c", ""}, {"Config ", "c", ""}, {"CONFIG", "c", ""}, {"Confi", "c", ""}, {"Configs", "c", ""}},
         "?Nickname=p",
         "old",
         "old"},
        {{{"wfprocess", "P", ""}, {"WFprocess", "P", ""}, {"WFActivity1", "A", ""}, {" WFActivity", "A", ""}},
         "?Nickname=p",
         "old",
         "old"},
        {{{BexUnicodeString(), "c", "Config"}, {"x", "WFProcess", "P"}}, "?Nickname=p", "old", "old"},
    };
    AttachProduct("p");
    for (const ContextCase& contextCase : cases) {
        action.contexts = contextCase.contexts;
        info.id = "old";
        info.process.id = "old";
        Fill();
        EXPECT_EQ(NarrowText(info.process.context), kModelUrl + contextCase.query);
        EXPECT_EQ(info.process.id, contextCase.processId);
        EXPECT_EQ(info.id, contextCase.activityId);
    }
}

TEST_F(ActionInfo, ConfigurationOfOneCallDoesNotReachTheNext) {
    action.contexts = {{"Config", "c", ""}};
    AttachProduct("p");
    Fill();
    action.contexts.clear();
    Fill();
    EXPECT_EQ(NarrowText(info.process.context), kModelUrl + "?Nickname=p");
    action.objects.clear();
    Fill();
    EXPECT_EQ(NarrowText(info.process.context), kModelUrl + "?Nickname=p") << "without a product it stays";
}

TEST_F(ActionInfo, ProductCountsOnlyWithABlockOfFiftyBytes) {
    for (const std::size_t length : {0U, 1U, 49U, 51U, 100U}) {
        action.objects.clear();
        std::string block = kModelBlock;
        block.resize(length, 'x');
        AttachProduct("p", block);
        info.process.context = "as it was";
        Fill();
        EXPECT_EQ(info.process.context, "as it was") << length;
        EXPECT_EQ(info.process.dataNumber, 0);
    }
    action.objects.clear();
    AttachProduct("p", kModelBlock);
    Fill();
    EXPECT_EQ(NarrowText(info.process.context), kModelUrl + "?Nickname=p");
}

TEST_F(ActionInfo, LastProductWinsAlsoWhenItsBlockIsUnusable) {
    AttachProduct("first", kModelBlock);
    AttachProduct("second", kDocumentBlock);
    Fill();
    EXPECT_EQ(NarrowText(info.process.context), kDocumentUrl + "?Nickname=second");

    for (const std::string& unusable : {std::string(), std::string(49, 'x'), std::string(51, 'x')}) {
        AttachProduct("last", unusable);
        info.process.context = "as it was";
        Fill();
        EXPECT_EQ(info.process.context, "as it was") << unusable.size();
    }
    AttachProduct("again", kPartBlock);
    Fill();
    EXPECT_EQ(NarrowText(info.process.context), kPartUrl + "?Nickname=again");
}

TEST_F(ActionInfo, NicknameOfTheProductIsEncodedOrEmpty) {
    for (const char* nickname : {"a b", "100%&x=y", "\xE4?#", ""}) {
        action.objects.clear();
        AttachProduct(nickname);
        Fill();
        EXPECT_EQ(QorWflUrlUtil::GetUrlParm(info.process.context, "Nickname"), nickname);
    }
    action.objects.clear();
    AttachProduct(nullptr);
    Fill();
    EXPECT_EQ(NarrowText(info.process.context), kModelUrl + "?Nickname=");
}

TEST_F(ActionInfo, ProductIsNeitherInputNorOutputNorDataField) {
    Attach("Product", "I", "p", "a");
    Attach("Product", "O", "p", "b");
    Attach("Part", "I", "part", "a", kPartBlock);
    Attach("Product", "I", "p", "a");
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("a"));
    EXPECT_THAT(Outputs(info), IsEmpty());
    EXPECT_THAT(Datas(info), ElementsAre(Data("a", "TPart", kPartUrl + "?Nickname=part", "part")));
}

TEST_F(ActionInfo, EachTypeInEachDirectionGoesWhereItBelongs) {
    struct DirectionCase {
        const char* direction;
        bool isInput;
        bool isOutput;
    };
    const DirectionCase directions[] = {{"I", true, false},   {"O", false, true},   {"i", false, false},
                                        {"o", false, false},  {"IO", false, false}, {"", false, false},
                                        {" I", false, false}, {"I ", false, false}, {nullptr, false, false}};
    const std::vector<std::string> mapped = {"Part", "Model", "Document", "Feature"};
    const std::vector<std::string> ignored = {"part", "PART", "Parts", "Part ", " Part", "Product", "Assembly", ""};
    for (const DirectionCase& direction : directions) {
        for (const std::string& type : mapped) {
            action.objects.clear();
            Attach(type.c_str(), direction.direction, "n", "a");
            Fill();
            EXPECT_EQ(info.inputNumber, direction.isInput ? 1 : 0) << type;
            EXPECT_EQ(info.outputNumber, direction.isOutput ? 1 : 0) << type;
            EXPECT_EQ(info.process.dataNumber, direction.isInput || direction.isOutput ? 1 : 0) << type;
        }
        for (const std::string& type : ignored) {
            action.objects.clear();
            Attach(type.c_str(), direction.direction, "n", "a");
            Fill();
            EXPECT_EQ(info.inputNumber + info.outputNumber + info.process.dataNumber, 0) << type;
        }
    }
    action.objects.clear();
    Attach(nullptr, "I", "n", "a");
    Fill();
    EXPECT_EQ(info.inputNumber, 0);
}

TEST_F(ActionInfo, ListsKeepTheirOrderAndDataFieldsAreInputsThenOutputs) {
    for (const char* name : {"o2", "i1", "o1", "i3", "i2"}) {
        Attach("Part", *name == 'o' ? "O" : "I", name, name);
    }
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("i1", "i3", "i2"));
    EXPECT_THAT(Outputs(info), ElementsAre("o2", "o1"));
    EXPECT_THAT(DataNames(info), ElementsAre("i1", "i3", "i2", "o2", "o1"));
}

TEST_F(ActionInfo, InputAndOutputOfOneNameShareADataFieldThatTheLaterFills) {
    Attach("Model", "O", "out", "same", kModelBlock);
    Attach("Document", "I", "in", "same", kDocumentBlock);
    Fill();
    EXPECT_EQ(info.inputNumber, 1);
    EXPECT_EQ(info.outputNumber, 1);
    EXPECT_THAT(Datas(info), ElementsAre(Data("same", "TDocument", kDocumentUrl + "?Nickname=in", "in")));
}

TEST_F(ActionInfo, DuplicatesStayInTheListsAndShareADataField) {
    Attach("Part", "I", "1", "a");
    Attach("Part", "I", "2", "b");
    Attach("Part", "I", "3", "a");
    Attach("Part", "O", "4", "b");
    Attach("Part", "O", "5", "c");
    Attach("Part", "O", "6", "c");
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("a", "b", "a"));
    EXPECT_THAT(Outputs(info), ElementsAre("b", "c", "c"));
    EXPECT_THAT(DataNames(info), ElementsAre("a", "b", "c"));
    EXPECT_EQ(info.process.datas[0].value, "3");
    EXPECT_EQ(info.process.datas[1].value, "4");
    EXPECT_EQ(info.process.datas[2].value, "6");
}

TEST_F(ActionInfo, NamesCompareExactly) {
    for (const char* name : {"a", "A", "a ", " a", "aa"}) {
        Attach("Part", "I", name, name);
    }
    Fill();
    EXPECT_THAT(DataNames(info), ElementsAre("a", "A", "a ", " a", "aa"));
}

TEST_F(ActionInfo, ObjectInNeitherListFillsTheFieldOfItsNameIfThereIsOne) {
    Attach("Part", "I", "listed", "a");
    Attach("Part", "X", "also", "a");
    Attach("Part", "X", "alone", "b");
    Attach("Assembly", "I", "unknown", "a");
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("a"));
    ASSERT_THAT(DataNames(info), ElementsAre("a"));
    EXPECT_EQ(info.process.datas[0].value, "also");
}

TEST_F(ActionInfo, NamelessObjectsAreNamedByTheirIndex) {
    AttachProduct("p");
    Attach("Unknown", "I", "u", nullptr);
    Attach("Part", "I", "three", nullptr);
    Attach("Model", "X", "four", nullptr);
    Attach("Document", "O", "five", nullptr, kDocumentBlock);
    Attach("Feature", "O", "six", "named");
    Attach("Feature", "I", "seven", nullptr);
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("*AUTO_ID#3", "*AUTO_ID#7"));
    EXPECT_THAT(Outputs(info), ElementsAre("*AUTO_ID#5", "named"));
    EXPECT_THAT(DataNames(info), ElementsAre("*AUTO_ID#3", "*AUTO_ID#7", "*AUTO_ID#5", "named"));
    EXPECT_EQ(info.process.datas[0].value, "three");
    EXPECT_EQ(info.process.datas[1].value, "seven");
    EXPECT_EQ(info.process.datas[2].value, "five");
}

TEST_F(ActionInfo, NamelessObjectMayMeetAnObjectThatBearsItsName) {
    Attach("Part", "I", "named", "*AUTO_ID#2");
    Attach("Part", "O", "nameless", nullptr);
    Fill();
    EXPECT_THAT(DataNames(info), ElementsAre("*AUTO_ID#2"));
    EXPECT_EQ(info.process.datas[0].value, "nameless");
}

TEST_F(ActionInfo, EmptyNameIsANameLikeOthers) {
    Attach("Part", "I", "first", "");
    Attach("Part", "O", "second", "");
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre(""));
    EXPECT_THAT(Outputs(info), ElementsAre(""));
    EXPECT_THAT(DataNames(info), ElementsAre(""));
    EXPECT_FALSE(info.inputs[0].IsNull());
    EXPECT_EQ(info.process.datas[0].value, "second");
}

TEST_F(ActionInfo, ObjectOfUnmappedTableHasADataFieldWithoutType) {
    Attach("Part", "I", "n", "a", UuidBlock("DB", "ENV1", "PART_LIST"));
    Attach("Model", "I", "n", "b", UuidBlock("DB", "ENV1", "ZZ"));
    Fill();
    EXPECT_THAT(DataNames(info), ElementsAre("a", "b"));
    EXPECT_TRUE(info.process.datas[0].type.IsEmpty());
    EXPECT_TRUE(info.process.datas[1].type.IsEmpty());
}

TEST_F(ActionInfo, TypeComesFromTheBlockAndNotFromTheKindOfObject) {
    Attach("Document", "I", "n", "a", kModelBlock);
    Attach("Feature", "I", "n", "b", kDocumentBlock);
    Fill();
    EXPECT_EQ(info.process.datas[0].type, "TModel");
    EXPECT_EQ(info.process.datas[1].type, "TDocument");
}

TEST_F(ActionInfo, OperationsAreCalledInOrderAndTheHandlerIsAskedForEachMappedObject) {
    action.contexts = {{"Config", "c", ""}, {"WFProcess", "P", ""}};
    AttachProduct("p");
    Attach("Part", "I", "n", "a");
    Attach("Part", "X", "n", "not listed");
    Attach("Part", "O", "n", "a");
    Attach("Unknown", "O", "n", "a");
    manager.calls = &action.calls;
    Fill();
    EXPECT_THAT(action.calls, ElementsAre("GetAbstract", "GetPriority", "GetActionId", "GetOwner", "GetContextCount",
                                          "GetContext 1", "GetContext 2", "GetObjectCount",                           //
                                          "GetObject 1", "GetObject 2", "GetObject 3", "GetObject 4", "GetObject 5",  //
                                          "GetObject 1", "GetObject 2", "GetObjectNameHandler", "GetObject 3",
                                          "GetObject 4", "GetObjectNameHandler", "GetObject 5"));
}

TEST_F(ActionInfo, CountsOfZeroAndBelowMeanNone) {
    action.contexts = {{"WFProcess", "P", ""}};
    AttachProduct("p");
    Attach("Part", "I", "n", "a");
    for (const int count : {0, -1, INT_MIN}) {
        action.contextCount = count;
        action.objectCount = count;
        action.calls.clear();
        info.process.id = "old";
        info.process.context = "old";
        info.SetInputNumber(2);
        info.SetOutputNumber(2);
        info.process.SetDataNumber(2);
        Fill();
        EXPECT_THAT(action.calls, ElementsAre("GetAbstract", "GetPriority", "GetActionId", "GetOwner",
                                              "GetContextCount", "GetObjectCount"));
        EXPECT_EQ(info.process.id, "old");
        EXPECT_EQ(info.process.context, "old");
        EXPECT_EQ(info.inputNumber, 0);
        EXPECT_EQ(info.inputs, nullptr);
        EXPECT_EQ(info.outputNumber, 0);
        EXPECT_EQ(info.outputs, nullptr);
        EXPECT_EQ(info.process.dataNumber, 0);
        EXPECT_EQ(info.process.datas, nullptr);
    }
}

TEST_F(ActionInfo, OnlyAsManyObjectsAsToldAreAskedFor) {
    Attach("Part", "I", "n", "a");
    Attach("Part", "I", "n", "b");
    action.objectCount = 1;
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("a"));
    action.objectCount = 4;
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("a", "b")) << "the host answers nothing for the others";
}

TEST_F(ActionInfo, SecondAnswerFillsTheDataFields) {
    Attach("Part", "I", "early", "a", std::string());
    action.laterObjects = {{"Document", "X", "late", "a", Octets(kDocumentBlock)}};
    Fill();
    EXPECT_THAT(Inputs(info), ElementsAre("a"));
    EXPECT_THAT(Datas(info), ElementsAre(Data("a", "TDocument", kDocumentUrl + "?Nickname=late", "late")));
}

TEST_F(ActionInfo, FewerObjectsTheSecondTimeLeaveTheirFieldsEmpty) {
    Attach("Part", "I", "n", "a");
    Attach("Part", "O", "n", "b");
    action.laterObjects = {action.objects[0]};
    Fill();
    EXPECT_THAT(Outputs(info), ElementsAre("b"));
    EXPECT_THAT(Datas(info), ElementsAre(Data("a", "TModel", kModelUrl + "?Nickname=n", "n"), Data()));
}

TEST_F(ActionInfo, ObjectsOfTheSecondAnswerMayChangePlaces) {
    Attach("Part", "I", "1", "a");
    Attach("Part", "O", "2", "b");
    action.laterObjects = {action.objects[1], action.objects[0]};
    Fill();
    EXPECT_THAT(DataNames(info), ElementsAre("a", "b"));
    EXPECT_EQ(info.process.datas[0].value, "1");
    EXPECT_EQ(info.process.datas[1].value, "2");
}

TEST_F(ActionInfo, FiftyBytesOfALongerBlockAreRead) {
    Attach("Model", "I", "n", "a", kModelBlock + "x");
    Attach("Model", "I", "n", "b", kDocumentBlock + std::string(1'000, 'x'));
    Fill();
    EXPECT_THAT(Datas(info), ElementsAre(Data("a", "TModel", kModelUrl + "?Nickname=n", "n"),
                                         Data("b", "TDocument", kDocumentUrl + "?Nickname=n", "n")));
}

TEST_F(ActionInfo, ShortBlockOfAnObjectWithoutDataFieldIsNotRead) {
    Attach("Part", "X", "n", "a", std::string(49, 'x'));
    Attach("Unknown", "I", "n", "b", std::string());
    AttachProduct("p", std::string(3, 'x'));
    Fill();
    EXPECT_EQ(info.process.dataNumber, 0);
}

TEST_F(ActionInfoDeathTest, ShorterBlockOfADataFieldEndsTheProcess) {
    for (const std::size_t length : {0U, 1U, 49U}) {
        action.objects.clear();
        Attach("Part", "I", "n", "a", kModelBlock.substr(0, length));
        EXPECT_EXIT(manager.GetActionInfo(&action, info), ::testing::KilledBySignal(SIGABRT),
                    HasSubstr("operator[] : %length, %i"))
            << length;
    }
}

TEST_F(ActionInfoDeathTest, ShorterBlockInTheSecondAnswerEndsTheProcess) {
    Attach("Part", "I", "n", "a");
    action.laterObjects = {{"Part", "I", "n", "a", Octets(kModelBlock.substr(0, 49))}};
    EXPECT_EXIT(manager.GetActionInfo(&action, info), ::testing::KilledBySignal(SIGABRT),
                HasSubstr("operator[] : %length, %i"));
}

TEST_F(ActionInfo, RecordMayBeFilledAgain) {
    Attach("Part", "I", "n", "a");
    Attach("Part", "I", "n", "b");
    Attach("Part", "O", "n", "c");
    Fill();
    action.objects.clear();
    Attach("Part", "O", "n", "d");
    Fill();
    EXPECT_THAT(Inputs(info), IsEmpty());
    EXPECT_THAT(Outputs(info), ElementsAre("d"));
    EXPECT_THAT(DataNames(info), ElementsAre("d"));
}

TEST_F(ActionInfo, NullActionLeavesTheRecordAlone) {
    info.abstract = "kept";
    info.participantType = "kept";
    info.SetInputNumber(1);
    info.inputs[0] = "kept";
    EXPECT_EQ(manager.GetActionInfo(nullptr, info), 0);
    EXPECT_EQ(info.abstract, "kept");
    EXPECT_EQ(info.participantType, "kept");
    EXPECT_THAT(Inputs(info), ElementsAre("kept"));
}

TEST_F(ActionInfo, TracesItsStepAndThatOfThePriority) {
    action.priority = "3";
    action.contexts = {{"Config", "c", ""}};
    AttachProduct("p");
    Attach("Part", "I", "n", "a");
    const CapturedTrace trace("WFInterop");
    Fill();
    EXPECT_THAT(
        trace.Lines(),
        ElementsAre(">> QorWflActionManagerBase::GetActionInfo", ">> QorWflActionManagerBase::GetExportedPriority",
                    "Internal=[3] Exported=[High]", "<< QorWflActionManagerBase::GetExportedPriority",
                    "<< QorWflActionManagerBase::GetActionInfo"));
}

TEST_F(ActionInfo, AHundredThousandObjectsAreMapped) {
    constexpr int kObjects = 100'000;
    for (int i = 1; i <= kObjects; ++i) {
        const std::string name = "part " + std::to_string(i / 2);
        Attach("Part", i % 2 == 0 ? "I" : "O", name.c_str(), i % 5 == 0 ? nullptr : name.c_str());
    }
    Fill();
    EXPECT_EQ(info.inputNumber, kObjects / 2);
    EXPECT_EQ(info.outputNumber, kObjects / 2);
    for (int i = 0; i < info.process.dataNumber; ++i) {
        ASSERT_EQ(info.process.datas[i].type, "TModel") << i;
    }
}
