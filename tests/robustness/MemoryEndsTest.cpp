#include "MemoryThatEnds.h"
#include "WholeWay.h"

#include <BexTime.h>
#include <QorIWflInteropMessenger.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <EnvironmentVariable.h>
#include <RecordTesting.h>
#include <TemporaryDirectory.h>
#include <XpdlReply.h>
#include <iostream>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

namespace {

using MemoryThatEnds::Contract;
using MemoryThatEnds::ForEveryRefusal;
using testing::AnyOf;
using testing::IsEmpty;
using WholeWay::BytesOf;

/** The fields that are no list and have neither their old value nor their new one. */
ActivityFields NeitherOldNorNew(const ActivityFields& iFields, const ActivityFields& iNew) {
    const ActivityFields old = OldFields();
    ActivityFields others;
    for (const auto& [name, value] : iFields) {
        const bool isList = name.find("puts") != std::string::npos || name.find("putNumber") != std::string::npos ||
                            name.find("process.data") != std::string::npos;
        if (!isList && value != old.at(name) && value != iNew.at(name)) {
            others[name] = value;
        }
    }
    return others;
}

/** Has a stream swallow what it is given while it lives, and take no memory for that. */
class SilencedStream {
public:
    explicit SilencedStream(std::ostream& ioStream) : stream(ioStream), former(ioStream.rdbuf(nullptr)) {}
    ~SilencedStream() { stream.rdbuf(former); }
    SilencedStream(const SilencedStream&) = delete;
    SilencedStream& operator=(const SilencedStream&) = delete;

private:
    std::ostream& stream;
    std::streambuf* former;
};

std::unique_ptr<ActivityInfo> OldRecord() {
    auto activity = std::make_unique<ActivityInfo>();
    FillWithOldValues(*activity);
    return activity;
}

class MemoryEnds : public testing::Test {
protected:
    const TemporaryDirectory directory;
    const std::string file = directory.Write("QorWflActionManager",
                                             "actionType = Design\n"
                                             "actionPriority.2 = Normal\n"
                                             "actionPriority.3 = \"A long word for a priority\"\n"
                                             "actionObjects.Part.* = PART_LIST.C_PART_NUMBER\n"
                                             "actionObjects.Standard.PROD = DOC_STD.S_STANDARD_NO\n");
    const EnvironmentVariable path{"BexMsgCatalogPath", directory.Path().c_str()};
};

TEST_F(MemoryEnds, ReadingADocumentKeepsWhatWasReadUpToThere) {
    const SilencedStream errors(std::cerr);
    const BexUnicodeString reply(XpdlReply().c_str());
    ForEveryRefusal(
        "QorWflXmlToActivity", Contract::kNeverThrow, OldRecord,
        [&](ActivityInfo& ioActivity) { QorWflXmlToActivity(reply, ioActivity); },
        [](const ActivityInfo& iActivity, bool isUndisturbed) {
            const ActivityFields fields = FieldsOf(iActivity);
            EXPECT_THAT(NeitherOldNorNew(fields, NewFields()), IsEmpty());
            if (isUndisturbed) {
                EXPECT_EQ(fields, NewFields());
            }
        });
}

/** Keeps what a stream is given while it lives, without taking memory for that. */
class KeptStream : std::streambuf {
public:
    explicit KeptStream(std::ostream& ioStream) : stream(ioStream), former(ioStream.rdbuf(this)) { Clear(); }
    ~KeptStream() override { stream.rdbuf(former); }
    KeptStream(const KeptStream&) = delete;
    KeptStream& operator=(const KeptStream&) = delete;

    std::string Text() const { return std::string(pbase(), pptr()); }
    void Clear() { setp(text, text + sizeof text); }

private:
    std::ostream& stream;
    std::streambuf* former;
    char text[1024];
};

TEST_F(MemoryEnds, ReadingADocumentTellsWhatItHadNoMemoryFor) {
    KeptStream errors(std::cerr);
    const BexUnicodeString reply(XpdlReply().c_str());
    ForEveryRefusal(
        "QorWflXmlToActivity", Contract::kNeverThrow, OldRecord,
        [&](ActivityInfo& ioActivity) {
            errors.Clear();
            QorWflXmlToActivity(reply, ioActivity);
        },
        [&](const ActivityInfo&, bool isUndisturbed) {
            EXPECT_THAT(errors.Text(), AnyOf("", "CreateMemBufInputSource failed\n", "getDocument failed\n"));
            EXPECT_TRUE(!isUndisturbed || errors.Text().empty());
        });
}

TEST_F(MemoryEnds, WritingADocumentLeavesItNullOrWhole) {
    ActivityInfo activity;
    QorWflXmlToActivity(XpdlReply().c_str(), activity);
    const std::string expected = WholeWay::Document(activity);
    ForEveryRefusal(
        "QorWflActivityToXml", Contract::kMayThrow, [] { return std::make_unique<BexUnicodeString>("old"); },
        [&](BexUnicodeString& oXml) { QorWflActivityToXml(activity, oXml); },
        [&](const BexUnicodeString& iXml, bool isUndisturbed) {
            EXPECT_TRUE(iXml.IsNull() != 0 || iXml.GetLengthInChar() > static_cast<int>(expected.size()));
            EXPECT_TRUE(!isUndisturbed || iXml.IsNull() == 0);
        });
}

TEST_F(MemoryEnds, TextOfATreeIsWrittenWholeOrNot) {
    ForEveryRefusal("WriteXML", [] { return WholeWay::Tree(); });
}

/** A record and a stream that it comes from. */
struct RecordAndText {
    ActivityInfo activity;
    std::istringstream stream{RecordTesting::kSampleText};
};

TEST_F(MemoryEnds, RecordTextThatCannotBeWrittenFailsItsStream) {
    const auto record = OldRecord();
    std::ostringstream whole;
    whole << *record;
    ForEveryRefusal(
        "operator<<", Contract::kNeverThrow, [] { return std::make_unique<std::ostringstream>(); },
        [&](std::ostringstream& ioStream) {
            ioStream.clear();
            ioStream << *record;
        },
        [&](std::ostringstream& ioStream, bool isUndisturbed) {
            if (isUndisturbed) {
                EXPECT_TRUE(ioStream.good());
            }
            if (ioStream.good()) {
                const std::string text = ioStream.str();
                EXPECT_EQ(text.substr(text.size() - std::min(text.size(), whole.str().size())), whole.str());
            }
        });
}

TEST_F(MemoryEnds, RecordTextThatCannotBeReadFailsItsStream) {
    ForEveryRefusal(
        "operator>>", Contract::kNeverThrow,
        [] {
            auto state = std::make_unique<RecordAndText>();
            FillWithOldValues(state->activity);
            return state;
        },
        [&](RecordAndText& ioState) {
            ioState.stream.clear();
            ioState.stream.seekg(0);
            ioState.stream >> ioState.activity;
        },
        [&](RecordAndText& ioState, bool isUndisturbed) {
            FieldsOf(ioState.activity);
            if (isUndisturbed) {
                std::ostringstream again;
                again << ioState.activity;
                EXPECT_EQ(again.str(), RecordTesting::kSampleText);
            }
        });
}

TEST_F(MemoryEnds, RecordArraysAreMadeOrNull) {
    ForEveryRefusal(
        "SetInputNumber and its kin", Contract::kMayThrow, OldRecord,
        [](ActivityInfo& ioActivity) {
            ioActivity.SetInputNumber(5);
            ioActivity.SetOutputNumber(6);
            ioActivity.process.SetDataNumber(7);
        },
        [](const ActivityInfo& iActivity, bool isUndisturbed) {
            FieldsOf(iActivity);
            EXPECT_TRUE(!isUndisturbed || iActivity.process.dataNumber == 7);
            EXPECT_EQ(iActivity.inputs == nullptr, iActivity.inputNumber == 0);
            EXPECT_EQ(iActivity.outputs == nullptr, iActivity.outputNumber == 0);
            EXPECT_EQ(iActivity.process.datas == nullptr, iActivity.process.dataNumber == 0);
        });
}

TEST_F(MemoryEnds, UrlsComeBackRightOrNotAtAll) {
    const std::string block = UuidBlock("PDM1", "PROD", "PART_LIST");
    const BexUnicodeString shortUrl = "qor://ACTION/A 1";
    const BexUnicodeString longUrl = QorWflUrlUtil::ActionUrl("an action with a long identifier /");
    const BexUnicodeString instance = QorWflUrlUtil::InstanceUrl(block.c_str());
    const BexUnicodeString contextUrl = QorWflUrlUtil::ContextUrl(block.c_str(), "a context of some length");
    ForEveryRefusal("ActionUrl", [&] { return QorWflUrlUtil::ActionUrl("an action with a long identifier /"); });
    ForEveryRefusal("UrlToActionId, short", [&] { return QorWflUrlUtil::UrlToActionId(shortUrl); });
    ForEveryRefusal("UrlToActionId, long", [&] { return QorWflUrlUtil::UrlToActionId(longUrl); });
    ForEveryRefusal("InstanceUrl", [&] { return QorWflUrlUtil::InstanceUrl(block.c_str()); });
    ForEveryRefusal("ContextUrl", [&] { return QorWflUrlUtil::ContextUrl(block.c_str(), "a context & more of it"); });
    ForEveryRefusal("GetUrlParm", [&] { return QorWflUrlUtil::GetUrlParm(contextUrl, "context"); });
    ForEveryRefusal("UrlToUuid", [&] {
        const std::unique_ptr<char, QorWflUuidDeleter> uuid(QorWflUrlUtil::UrlToUuid(instance));
        return uuid != nullptr && block.compare(0, block.size(), uuid.get(), block.size()) == 0;
    });
    ForEveryRefusal("UrlToContext", [&] {
        BexUnicodeString context;
        const std::unique_ptr<char, QorWflUuidDeleter> uuid(QorWflUrlUtil::UrlToContext(contextUrl, context));
        return uuid != nullptr && context == "a context of some length";
    });
}

TEST_F(MemoryEnds, AddedUrlParameterIsThereOrNot) {
    ForEveryRefusal(
        "AddUrlParm", Contract::kMayThrow, [] { return std::make_unique<BexUnicodeString>("qor://a?b=c"); },
        [](BexUnicodeString& ioUrl) { QorWflUrlUtil::AddUrlParm(ioUrl, "Nickname", "a nickname of some length"); },
        [](const BexUnicodeString& iUrl, bool) {
            const std::string added = "&Nickname=a+nickname+of+some+length";
            const std::string text = BytesOf(iUrl);
            EXPECT_EQ((text.size() - 11) % added.size(), 0U) << text;
            EXPECT_EQ(text.substr(0, 11), "qor://a?b=c");
        });
}

TEST_F(MemoryEnds, PropertyTableStaysReadable) {
    ForEveryRefusal(
        "QorWflPropertyFile::Read", Contract::kMayThrow,
        [] {
            auto properties = std::make_unique<QorWflPropertyFile>();
            properties->SetValue("before", "a value");
            return properties;
        },
        [](QorWflPropertyFile& ioProperties) { ioProperties.Read("QorWflActionManager"); },
        [](const QorWflPropertyFile& iProperties, bool isUndisturbed) {
            ASSERT_GE(iProperties.GetNKeys(), 1);
            EXPECT_TRUE(iProperties.GetKey(1) == "before" && iProperties.GetValue(1) == "a value");
            for (int i = 2; i <= iProperties.GetNKeys(); ++i) {
                EXPECT_EQ(iProperties.GetKey(i).IsNull() + iProperties.GetValue(i).IsNull(), 0);
            }
            if (isUndisturbed) {
                ASSERT_EQ(iProperties.GetNKeys(), 6);
                EXPECT_EQ(BytesOf(iProperties.GetValue(2)), "Design");
                EXPECT_EQ(BytesOf(iProperties.GetKey(6)), "actionObjects.Standard.PROD");
                EXPECT_EQ(BytesOf(iProperties.GetValue(6)), "DOC_STD.S_STANDARD_NO");
            }
        });
}

TEST_F(MemoryEnds, SetPropertyHasItsNewValueOrItsOldOne) {
    ForEveryRefusal(
        "QorWflPropertyFile::SetValue", Contract::kMayThrow,
        [] {
            auto properties = std::make_unique<QorWflPropertyFile>();
            properties->SetValue("first", "a value");
            return properties;
        },
        [](QorWflPropertyFile& ioProperties) {
            ioProperties.SetValue("first", "another value that is longer than the first");
            ioProperties.SetValue("a second key that is new", "its value, which is not short either");
        },
        [](const QorWflPropertyFile& iProperties, bool) {
            const std::string first = BytesOf(iProperties.GetValue(1));
            EXPECT_TRUE(first == "a value" || first == "another value that is longer than the first");
            if (iProperties.GetNKeys() == 2) {
                EXPECT_EQ(BytesOf(iProperties.GetValue(2)), "its value, which is not short either");
            }
        });
}

TEST_F(MemoryEnds, ManagerStaysUsable) {
    ForEveryRefusal(
        "InitResources and Init", Contract::kMayThrow, [] { return std::make_unique<TestManager>(); },
        [](TestManager& ioManager) {
            QorWflPropertyFile properties;
            ioManager.InitResources(properties);
            ioManager.handler.Init(properties);
        },
        [](TestManager& ioManager, bool isUndisturbed) {
            EXPECT_EQ(ioManager.internalPriorities.Size(), ioManager.exportedPriorities.Size());
            const int mappings = ioManager.handler.externalTypes.Size();
            for (const BexListValBexUnicodeString* list :
                 {&ioManager.handler.environments, &ioManager.handler.objectKinds, &ioManager.handler.tables,
                  &ioManager.handler.nameAttributes, &ioManager.handler.typeKeys, &ioManager.handler.objectKeys}) {
                EXPECT_EQ(list->Size(), mappings);
            }
            ioManager.GetExportedPriority("3");
            ioManager.handler.GetExternalType("PROD", "DOC_STD");
            if (isUndisturbed) {
                EXPECT_EQ(BytesOf(ioManager.GetExportedPriority("3")), "A long word for a priority");
                EXPECT_EQ(BytesOf(ioManager.handler.GetExternalType("PROD", "DOC_STD")), "Standard");
            }
        });
}

TEST_F(MemoryEnds, AnswersOfManagerAndHandlerAreRightOrNotThere) {
    const auto manager = WholeWay::ConfiguredManager();
    const std::string block = UuidBlock("PDM1", "PROD", "PART_LIST");
    const TestHandler& handler = manager->handler;
    ForEveryRefusal("GetExportedPriority", [&] { return manager->GetExportedPriority("3"); });
    ForEveryRefusal("GetInternalPriority", [&] { return manager->GetInternalPriority("A long word for a priority"); });
    ForEveryRefusal("GetSpecialDataName", [&] { return manager->GetSpecialDataName(2); });
    ForEveryRefusal("GetExternalType", [&] { return handler.GetExternalType(block.c_str()); });
    ForEveryRefusal("GetNameAttribute", [&] { return handler.GetNameAttribute("Standard", "PROD", "DOC_STD"); });
    ForEveryRefusal("HasExternalType", [&] { return handler.HasExternalType("Standard"); });
    ForEveryRefusal("GetDateImage", [] { return TestManager::GetDateImage(BexTime(2004, 2, 29, 17, 30, 0)); });
    ForEveryRefusal("GetNextDate", [] { return TestManager::GetNextDate(BexTime(2004, 2, 29), 3, "M").GetMonth(); });
}

TEST_F(MemoryEnds, ActionThatCannotBeToldLeavesAReadableRecord) {
    const auto manager = WholeWay::ConfiguredManager();
    const TestAction action = WholeWay::Action();
    ActivityInfo whole;
    FillWithOldValues(whole);
    manager->GetActionInfo(&action, whole);
    const ActivityFields expected = FieldsOf(whole);
    ForEveryRefusal(
        "GetActionInfo", Contract::kMayThrow, OldRecord,
        [&](ActivityInfo& ioActivity) {
            action.calls.clear();
            action.calls.shrink_to_fit();
            manager->GetActionInfo(&action, ioActivity);
            action.calls.clear();
            action.calls.shrink_to_fit();
        },
        [&](const ActivityInfo& iActivity, bool isUndisturbed) {
            action.calls.clear();
            action.calls.shrink_to_fit();
            const ActivityFields fields = FieldsOf(iActivity);
            EXPECT_THAT(NeitherOldNorNew(fields, expected), IsEmpty());
            if (isUndisturbed) {
                EXPECT_EQ(fields, expected);
            }
        });
}

}  // namespace
