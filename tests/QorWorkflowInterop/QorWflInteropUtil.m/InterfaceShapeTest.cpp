#include "TestManager.h"

#include <QorWflActionItf.h>
#include <QorWflActionManagerBase.h>
#include <QorWflObjectNameHandlerBase.h>
#include <QorWflPropertyFile.h>
#include <QorWflUrlUtil.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <type_traits>
#include <vector>

// What hosts are compiled against: signatures, bases, the places of virtual operations and of members.

namespace {

// Each of these is an error of compilation when a signature is another.
BexUnicodeString (*const kUrlToActionId)(const BexUnicodeString&) = &QorWflUrlUtil::UrlToActionId;
BexUnicodeString (*const kActionUrl)(const BexUnicodeString&) = &QorWflUrlUtil::ActionUrl;
char* (*const kUrlToContext)(const BexUnicodeString&, BexUnicodeString&) = &QorWflUrlUtil::UrlToContext;
BexUnicodeString (*const kContextUrl)(const char*, const BexUnicodeString&) = &QorWflUrlUtil::ContextUrl;
BexUnicodeString (*const kGetUrlParm)(const BexUnicodeString&, const BexUnicodeString&) = &QorWflUrlUtil::GetUrlParm;
void (*const kAddUrlParm)(BexUnicodeString&, const BexUnicodeString&,
                          const BexUnicodeString&) = &QorWflUrlUtil::AddUrlParm;
BexUnicodeString (*const kInstanceUrl)(const char*) = &QorWflUrlUtil::InstanceUrl;
char* (*const kUrlToUuid)(const BexUnicodeString&) = &QorWflUrlUtil::UrlToUuid;
BexUnicodeString (*const kGetDateImage)(const BexTime&) = &QorWflActionManagerBase::GetDateImage;
BexTime (*const kGetNextDate)(const BexTime&, int, const BexUnicodeString&) = &QorWflActionManagerBase::GetNextDate;

int (QorWflPropertyFile::*const kRead)(const BexUnicodeString&) = &QorWflPropertyFile::Read;
int (QorWflPropertyFile::*const kGetNKeys)() const = &QorWflPropertyFile::GetNKeys;
BexUnicodeString (QorWflPropertyFile::*const kGetKey)(int) const = &QorWflPropertyFile::GetKey;
BexUnicodeString (QorWflPropertyFile::*const kGetValue)(int) const = &QorWflPropertyFile::GetValue;
void (QorWflPropertyFile::*const kSetValue)(const BexUnicodeString&,
                                            const BexUnicodeString&) = &QorWflPropertyFile::SetValue;

void (QorWflActionManagerBase::*const kInitResources)(QorWflPropertyFile&) = &QorWflActionManagerBase::InitResources;
BexUnicodeString (QorWflActionManagerBase::*const kGetSpecialDataName)(int) =
    &QorWflActionManagerBase::GetSpecialDataName;
int (QorWflActionManagerBase::*const kGetActionInfo)(const QorWflActionItf*,
                                                     ActivityInfo&) = &QorWflActionManagerBase::GetActionInfo;
BexUnicodeString (QorWflActionManagerBase::*const kGetExportedPriority)(const BexUnicodeString&) =
    &QorWflActionManagerBase::GetExportedPriority;
BexUnicodeString (QorWflActionManagerBase::*const kGetInternalPriority)(const BexUnicodeString&) =
    &QorWflActionManagerBase::GetInternalPriority;

void (QorWflObjectNameHandlerBase::*const kInit)(const QorWflPropertyFile&) = &QorWflObjectNameHandlerBase::Init;
BexUnicodeString (QorWflObjectNameHandlerBase::*const kTypeOfTable)(
    const BexUnicodeString&, const BexUnicodeString&) const = &QorWflObjectNameHandlerBase::GetExternalType;
BexUnicodeString (QorWflObjectNameHandlerBase::*const kTypeOfBlock)(const char*) const =
    &QorWflObjectNameHandlerBase::GetExternalType;
BexUnicodeString (QorWflObjectNameHandlerBase::*const kGetNameAttribute)(
    const BexUnicodeString&, const BexUnicodeString&,
    const BexUnicodeString&) const = &QorWflObjectNameHandlerBase::GetNameAttribute;
int (QorWflObjectNameHandlerBase::*const kHasExternalType)(const BexUnicodeString&) const =
    &QorWflObjectNameHandlerBase::HasExternalType;

static_assert(!std::is_default_constructible_v<QorWflUrlUtil>, "static operations only");
static_assert(!std::is_polymorphic_v<QorWflUrlUtil> && !std::is_polymorphic_v<QorWflPropertyFile>);
static_assert(std::is_abstract_v<QorWflActionItf> && std::is_abstract_v<QorWflActionManagerBase> &&
              std::is_abstract_v<QorWflObjectNameHandlerBase>);
static_assert(!std::has_virtual_destructor_v<QorWflActionItf> &&
              !std::has_virtual_destructor_v<QorWflActionManagerBase> &&
              !std::has_virtual_destructor_v<QorWflObjectNameHandlerBase>);
static_assert(!std::is_destructible_v<QorWflActionManagerBase>, "not destroyed through this class");

TEST(InterfaceShape, EveryOperationHasItsSignatureAndIsInTheLibrary) {
    EXPECT_TRUE(kUrlToActionId && kActionUrl && kUrlToContext && kContextUrl && kGetUrlParm && kAddUrlParm &&
                kInstanceUrl && kUrlToUuid && kGetDateImage && kGetNextDate);
    EXPECT_TRUE(kRead && kGetNKeys && kGetKey && kGetValue && kSetValue);
    EXPECT_TRUE(kInitResources && kGetSpecialDataName && kGetActionInfo && kGetExportedPriority &&
                kGetInternalPriority);
    EXPECT_TRUE(kInit && kTypeOfTable && kTypeOfBlock && kGetNameAttribute && kHasExternalType);
}

TEST(InterfaceShape, PropertyFileIsTwoListsAndTheHandlerAPointerAndSeven) {
    EXPECT_EQ(sizeof(QorWflPropertyFile), 2 * sizeof(BexListValBexUnicodeString));
    EXPECT_EQ(sizeof(QorWflObjectNameHandlerBase), sizeof(void*) + 7 * sizeof(BexListValBexUnicodeString));
    EXPECT_EQ(sizeof(QorWflActionManagerBase),
              sizeof(void*) + 8 * sizeof(BexUnicodeString) + 2 * sizeof(BexListValBexUnicodeString));
}

/** The addresses rise. */
void ExpectInOrder(const std::vector<const void*>& iMembers) {
    for (std::size_t i = 1; i < iMembers.size(); ++i) {
        EXPECT_TRUE(std::less<>()(iMembers[i - 1], iMembers[i])) << i;
    }
}

TEST(InterfaceShape, MembersOfTheManagerStandInTheirOrder) {
    const TestManager manager;
    ExpectInOrder({&manager, &manager.actionType, &manager.startStatus, &manager.runStatus, &manager.completeStatus,
                   &manager.abortStatus, &manager.bypassStatus, &manager.internalPriorities,
                   &manager.exportedPriorities, &manager.specialDataNames[0], &manager.specialDataNames[1]});
    EXPECT_EQ(sizeof manager.specialDataNames, 2 * sizeof(BexUnicodeString));
}

TEST(InterfaceShape, ListsOfTheHandlerStandInTheirOrder) {
    const TestHandler handler;
    ExpectInOrder({&handler, &handler.externalTypes, &handler.environments, &handler.objectKinds, &handler.tables,
                   &handler.nameAttributes, &handler.typeKeys, &handler.objectKeys});
}

#if defined(__x86_64__) && defined(__GXX_ABI_VERSION)

/** The place of a virtual operation in the table of its class, from 0; -1 when it is not virtual. */
template <class Operation>
std::ptrdiff_t SlotOf(Operation iOperation) {
    // a pointer to a virtual operation holds its offset in the table and 1, one to another its address, which is even
    std::ptrdiff_t words[2] = {0, 0};
    static_assert(sizeof iOperation == sizeof words);
    std::memcpy(words, &iOperation, sizeof words);
    const auto slotSize = static_cast<std::ptrdiff_t>(sizeof(void*));
    return words[0] % 2 != 0 ? (words[0] - 1) / slotSize : -1;
}

TEST(InterfaceShape, OperationsOfTheActionStandInTheirOrder) {
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetAbstract), 0);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetPriority), 1);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetStatus), 2) << "the one that the library does not call keeps its place";
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetActionId), 3);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetOwner), 4);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetContextCount), 5);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetContext), 6);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetObjectCount), 7);
    EXPECT_EQ(SlotOf(&QorWflActionItf::GetObject), 8);
}

TEST(InterfaceShape, TheOnePureOperationOfTheManagerAndOfTheHandlerIsTheirFirst) {
    EXPECT_EQ(SlotOf(&QorWflActionManagerBase::GetObjectNameHandler), 0);
    EXPECT_EQ(SlotOf(&QorWflObjectNameHandlerBase::GetObjectName), 0);
    EXPECT_EQ(SlotOf(kInitResources), -1);
    EXPECT_EQ(SlotOf(kTypeOfBlock), -1);
}

#endif

}  // namespace
