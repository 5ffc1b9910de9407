#include "CapturedTrace.h"
#include "EnvironmentVariable.h"
#include "TemporaryDirectory.h"
#include "TestManager.h"

#include <QorWflActionManagerBase.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

using ::testing::ElementsAre;

namespace {

struct PriorityCase {
    const char* given;
    const char* result;
};

/** Gives a manager the vocabulary of a property file. */
void InitFromFile(TestManager& ioManager, const std::string& iText) {
    const TemporaryDirectory directory;
    directory.Write("QorWflActionManager", iText);
    const EnvironmentVariable path("BexMsgCatalogPath", directory.Path().c_str());
    QorWflPropertyFile properties;
    ioManager.InitResources(properties);
}

}  // namespace

TEST(ExportedPriority, DefaultsMapThreeCodesAndPassOthersThrough) {
    const PriorityCase cases[] = {{"1", "Low"}, {"2", "Medium"}, {"3", "High"},  {"7", "7"},      {"0", "0"},
                                  {"11", "11"}, {"1 ", "1 "},    {" 1", " 1"},   {"01", "01"},    {"", ""},
                                  {"*", "*"},   {"Low", "Low"},  {"low", "low"}, {"\xE9", "\xE9"}};
    TestManager manager;
    for (const PriorityCase& priority : cases) {
        EXPECT_EQ(manager.GetExportedPriority(priority.given), priority.result) << priority.given;
    }
}

TEST(InternalPriority, DefaultsMapThreeWordsAndPassOthersThrough) {
    const PriorityCase cases[] = {
        {"Low", "1"},       {"Medium", "2"}, {"High", "3"},        {"low", "low"}, {"HIGH", "HIGH"},
        {"High ", "High "}, {"Hig", "Hig"},  {"Urgent", "Urgent"}, {"1", "1"},     {"", ""}};
    TestManager manager;
    for (const PriorityCase& priority : cases) {
        EXPECT_EQ(manager.GetInternalPriority(priority.given), priority.result) << priority.given;
    }
}

TEST(ExportedPriority, PriorityOfTheFileReplacesTheWholeMapping) {
    TestManager manager;
    InitFromFile(manager, "actionPriority.9=Urgent\n");
    EXPECT_EQ(manager.GetExportedPriority("9"), "Urgent");
    EXPECT_EQ(manager.GetInternalPriority("Urgent"), "9");
    for (const char* text : {"1", "2", "3", "Low", "Medium", "High"}) {
        EXPECT_EQ(manager.GetExportedPriority(text), text);
        EXPECT_EQ(manager.GetInternalPriority(text), text);
    }
}

TEST(ExportedPriority, FileWithoutPrioritiesKeepsTheDefaults) {
    TestManager manager;
    InitFromFile(manager, "actionType=Review\n");
    EXPECT_EQ(manager.GetExportedPriority("2"), "Medium");
    EXPECT_EQ(manager.GetInternalPriority("High"), "3");
}

TEST(ExportedPriority, NullPassesThroughAsNullAndIsMappedAsTheEmptyCode) {
    TestManager manager;
    EXPECT_TRUE(manager.GetExportedPriority(BexUnicodeString()).IsNull());
    EXPECT_TRUE(manager.GetInternalPriority(BexUnicodeString()).IsNull());
    EXPECT_FALSE(manager.GetExportedPriority("").IsNull());
    InitFromFile(manager, "actionPriority. = None\nactionPriority.0=\n");
    EXPECT_EQ(manager.GetExportedPriority(""), "None");
    EXPECT_EQ(manager.GetExportedPriority(BexUnicodeString()), "None");
    EXPECT_EQ(manager.GetInternalPriority("None"), "");
    EXPECT_EQ(manager.GetInternalPriority(""), "0");
    EXPECT_EQ(manager.GetExportedPriority("0"), "");
}

TEST(InternalPriority, FirstOfEqualWordsWins) {
    TestManager manager;
    InitFromFile(manager, "actionPriority.5=Same\nactionPriority.4=Same\nactionPriority.3=Other\n");
    EXPECT_EQ(manager.GetInternalPriority("Same"), "5");
    EXPECT_EQ(manager.GetExportedPriority("5"), "Same");
    EXPECT_EQ(manager.GetExportedPriority("4"), "Same");
}

TEST(ExportedPriority, FirstOfEqualCodesWins) {
    TestManager manager;
    manager.internalPriorities.Append("2");
    manager.exportedPriorities.Append("Second");
    EXPECT_EQ(manager.GetExportedPriority("2"), "Medium");
    EXPECT_EQ(manager.GetInternalPriority("Second"), "2");
}

TEST(ExportedPriority, TextsAboveEightBitsAreMapped) {
    const BexUnicodeString code(u"\u20AC", 1);
    TestManager manager;
    EXPECT_EQ(manager.GetExportedPriority(code), code);
    manager.internalPriorities.Append(code);
    manager.exportedPriorities.Append("Costly");
    EXPECT_EQ(manager.GetExportedPriority(code), "Costly");
    EXPECT_EQ(manager.GetExportedPriority("?"), "?");
    EXPECT_EQ(manager.GetInternalPriority("Costly"), code);
}

TEST(ExportedPriority, LeavesItsArgumentAlone) {
    TestManager manager;
    const BexUnicodeString code("2");
    EXPECT_EQ(manager.GetExportedPriority(code), "Medium");
    EXPECT_EQ(code, "2");
}

TEST(ExportedPriority, TracesCodeAndWord) {
    TestManager manager;
    const CapturedTrace trace("WFInterop");
    manager.GetExportedPriority("2");
    manager.GetExportedPriority("7");
    manager.GetExportedPriority(BexUnicodeString());
    EXPECT_THAT(trace.Lines(),
                ElementsAre(">> QorWflActionManagerBase::GetExportedPriority", "Internal=[2] Exported=[Medium]",
                            "<< QorWflActionManagerBase::GetExportedPriority",
                            ">> QorWflActionManagerBase::GetExportedPriority", "Internal=[7] Exported=[7]",
                            "<< QorWflActionManagerBase::GetExportedPriority",
                            ">> QorWflActionManagerBase::GetExportedPriority", "Internal=[] Exported=[]",
                            "<< QorWflActionManagerBase::GetExportedPriority"));
}

TEST(InternalPriority, TracesWordAndCode) {
    TestManager manager;
    const CapturedTrace trace("WFInterop");
    manager.GetInternalPriority("High");
    manager.GetInternalPriority("low");
    EXPECT_THAT(trace.Lines(),
                ElementsAre(">> QorWflActionManagerBase::GetInternalPriority", "Exported=[High] Internal=[3]",
                            "<< QorWflActionManagerBase::GetInternalPriority",
                            ">> QorWflActionManagerBase::GetInternalPriority", "Exported=[low] Internal=[low]",
                            "<< QorWflActionManagerBase::GetInternalPriority"));
}
