#include "EnvironmentVariable.h"
#include "PropertyEntries.h"
#include "TemporaryDirectory.h"
#include "TestAction.h"
#include "TestManager.h"
#include "UrlTesting.h"

#include <QorWflActionManagerBase.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>

// The way of a host: start-up from one property table, an action out, the URLs of the reply taken apart.

using ::testing::Optional;

namespace {

/** A manager and its handler, started as hosts do from a property file. */
class HostFlow : public ::testing::Test {
protected:
    void Start(const std::string& iPropertyFile) {
        directory.Write("QorWflActionManager", iPropertyFile);
        const EnvironmentVariable path("BexMsgCatalogPath", directory.Path().c_str());
        QorWflPropertyFile properties;
        manager.InitResources(properties);
        manager.handler.Init(properties);
    }
    /** The type that an input with a block of this environment and table is given. */
    std::string TypeOf(const std::string& iEnvironment, const std::string& iTable) {
        action.objects = {{"Part", "I", "n", "a", Octets(UuidBlock("DB", iEnvironment, iTable))}};
        EXPECT_EQ(manager.GetActionInfo(&action, info), 0);
        EXPECT_EQ(info.process.dataNumber, 1);
        return NarrowText(info.process.datas[0].type);
    }
    std::string PriorityOf(const char* iInternal) {
        action.priority = iInternal;
        EXPECT_EQ(manager.GetActionInfo(&action, info), 0);
        return NarrowText(info.priority);
    }

    TemporaryDirectory directory;
    TestManager manager;
    TestAction action;
    ActivityInfo info;
};

}  // namespace

TEST_F(HostFlow, DefaultsTypeModelsDocumentsAndFeaturesAndKnowThreePriorities) {
    Start("");
    EXPECT_EQ(TypeOf("E1", "KIRVA_MODEL"), "VERANT_QORModel");
    EXPECT_EQ(TypeOf("E1", "DOC_STD"), "VERANT_QORDocument");
    EXPECT_EQ(TypeOf("", "FEATURE1"), "VERANT_QORFeature");
    EXPECT_EQ(TypeOf("E1", "PART_LIST"), "");
    EXPECT_EQ(PriorityOf("1"), "Low");
    EXPECT_EQ(PriorityOf("4"), "4");
}

TEST_F(HostFlow, FileSetsTypesAndPriorities) {
    Start(
        "actionObjects.Part.*      = PART_LIST.C_ID\n"
        "actionObjects.Part.SPECIAL = \"PART_LIST.C_OTHER\"\n"
        "actionObjects.OwnDoc.E1   = DOC_STD.C_ID\n"
        "actionObjects.AnyDoc.E1   = DOC*.C_ID\n"
        "actionObjects.VERANT_QORModel.* = ZZ.C_ID\n"
        "actionPriority.2 = Now\n");
    EXPECT_EQ(TypeOf("E1", "PART_LIST"), "Part");
    EXPECT_EQ(TypeOf("E1", "DOC_STD"), "OwnDoc");
    EXPECT_EQ(TypeOf("E1", "DOC_2"), "AnyDoc");
    EXPECT_EQ(TypeOf("E2", "DOC_STD"), "VERANT_QORDocument");
    EXPECT_EQ(TypeOf("E1", "KIRVA_MODEL"), "") << "the file took the mapping's table away";
    EXPECT_EQ(manager.handler.GetNameAttribute("Part", "SPECIAL", "PART_LIST"), "C_OTHER");
    EXPECT_EQ(manager.handler.GetNameAttribute("Part", "E1", "PART_LIST"), "C_ID");
    EXPECT_EQ(PriorityOf("2"), "Now");
    EXPECT_EQ(PriorityOf("1"), "1");
    EXPECT_EQ(manager.GetInternalPriority(info.priority), "1");
}

TEST_F(HostFlow, UrlsOfTheRecordLeadBackToTheActionTheProductAndTheObjects) {
    Start("");
    const std::string alphabet = "AZaz09.-*_";
    std::mt19937 random(43);
    const auto text = [&random, &alphabet](std::size_t iWidth) {
        std::string made(random() % (iWidth + 1), ' ');
        for (char& character : made) {
            character = alphabet[random() % alphabet.size()];
        }
        return made;
    };
    const auto bytes = [&random](std::size_t iCount) {
        std::string made(iCount, '\0');
        for (char& byte : made) {
            byte = static_cast<char>(static_cast<unsigned char>(random() % 256));
        }
        return made;
    };
    const auto block = [&text, &bytes] {
        return PaddedText(text(8), 8) + PaddedText(text(8), 8) + PaddedText(text(18), 18) + bytes(16);
    };
    for (int round = 0; round < 500; ++round) {
        const std::string id = bytes(random() % 12);
        const std::string config = bytes(random() % 12);
        const std::string nickname = bytes(random() % 12);
        const std::string product = block();
        const std::string object = block();
        action.actionId = StringOf(id);
        action.contexts = {{"Config", StringOf(config), ""}};
        action.objects = {{"Product", "", StringOf(nickname), "", Octets(product)},
                          {"Part", "O", StringOf(nickname), BexUnicodeString(), Octets(object)}};
        ASSERT_EQ(manager.GetActionInfo(&action, info), 0);

        ASSERT_EQ(NarrowText(QorWflUrlUtil::UrlToActionId(info.extid)), id);
        BexUnicodeString context;
        const UrlTesting::OwnedUuid uuid(QorWflUrlUtil::UrlToContext(info.process.context, context));
        ASSERT_THAT(UrlTesting::BytesOf(uuid), Optional(product));
        ASSERT_EQ(NarrowText(context), config);
        ASSERT_EQ(NarrowText(QorWflUrlUtil::GetUrlParm(info.process.context, "Nickname")), nickname);
        const DataInfo& data = info.process.datas[0];
        ASSERT_THAT(UrlTesting::BytesOf(UrlTesting::OwnedUuid(QorWflUrlUtil::UrlToUuid(data.extid))), Optional(object));
        ASSERT_EQ(NarrowText(QorWflUrlUtil::GetUrlParm(data.extid, "Nickname")), nickname);
        ASSERT_EQ(NarrowText(data.value), nickname);
    }
}
