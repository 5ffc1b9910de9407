#include "TestComponent.h"

#include <BexBaseUnknown.h>
#include <BexMetaClass.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <RunOnThreads.h>
#include <cstring>
#include <type_traits>

namespace {

using testing::IsNull;
using testing::NotNull;
using testing::StrEq;

/** An object that leaves everything to the base and says when it dies. */
class PlainObject : public BexBaseUnknown {
public:
    explicit PlainObject(bool* oDestroyed = nullptr) : destroyed(oDestroyed) {}
    ~PlainObject() override {
        if (destroyed != nullptr) {
            *destroyed = true;
        }
    }

private:
    bool* destroyed;
};

unsigned int ReferencesOf(BexBaseUnknown& ioObject) {
    ioObject.AddRef();
    return ioObject.Release();
}

TEST(BaseUnknown, IsBornWithOneReferenceAndCountsThem) {
    bool destroyed = false;
    auto* object = new PlainObject(&destroyed);
    EXPECT_EQ(object->AddRef(), 2U);
    EXPECT_EQ(object->AddRef(), 3U);
    EXPECT_EQ(object->Release(), 2U);
    EXPECT_EQ(object->Release(), 1U);
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(object->Release(), 0U);
    EXPECT_TRUE(destroyed);
}

TEST(BaseUnknown, AnswersItsOwnIdentifierWithAnAddedReference) {
    bool destroyed = false;
    auto* object = new PlainObject(&destroyed);
    BexBaseUnknown* answer = nullptr;
    EXPECT_EQ(object->QueryInterface(IID_BexBaseUnknown, &answer), 0);
    EXPECT_EQ(answer, object);
    EXPECT_EQ(ReferencesOf(*object), 2U);
    EXPECT_EQ(answer->Release(), 1U);
    object->Release();
    EXPECT_TRUE(destroyed);
}

TEST(BaseUnknown, RefusesAnyOtherIdentifierWithNull) {
    bool destroyed = false;
    auto* object = new PlainObject(&destroyed);
    BexBaseUnknown* answer = object;
    EXPECT_EQ(object->QueryInterface(kIidNobodyHas, &answer), kNoInterface);
    EXPECT_THAT(answer, IsNull());
    answer = object;
    EXPECT_EQ(object->QueryInterface(GUID{}, &answer), kNoInterface);
    EXPECT_THAT(answer, IsNull());
    EXPECT_EQ(object->Release(), 0U) << "a refusal adds no reference";
    EXPECT_TRUE(destroyed);
}

TEST(BaseUnknown, RefusesWhenThereIsNowhereToAnswer) {
    bool destroyed = false;
    auto* object = new PlainObject(&destroyed);
    EXPECT_EQ(object->QueryInterface(IID_BexBaseUnknown, nullptr), kNoInterface);
    EXPECT_EQ(object->QueryInterface(kIidNobodyHas, nullptr), kNoInterface);
    EXPECT_EQ(object->Release(), 0U) << "a refusal adds no reference";
    EXPECT_TRUE(destroyed);
}

TEST(BaseUnknown, DerivedClassesAreDestroyedThroughIt) {
    bool destroyed = false;
    BexBaseUnknown* object = new PlainObject(&destroyed);
    delete object;
    EXPECT_TRUE(destroyed);
}

TEST(BaseUnknown, IsNotCopied) {
    EXPECT_FALSE(std::is_copy_constructible_v<BexBaseUnknown>);
    EXPECT_FALSE(std::is_copy_assignable_v<BexBaseUnknown>);
}

TEST(BaseUnknown, MetaObjectDescribesIt) {
    BexMetaClass* meta = BexBaseUnknown::MetaObject();
    ASSERT_THAT(meta, NotNull());
    EXPECT_EQ(BexBaseUnknown::MetaObject(), meta);
    EXPECT_TRUE(meta->GetId() == IID_BexBaseUnknown);
    EXPECT_THAT(meta->GetName(), StrEq("BexBaseUnknown"));
    EXPECT_THAT(meta->GetParent(), IsNull());
    EXPECT_THAT(meta->GetSecond(), IsNull());
    EXPECT_EQ(meta->GetType(), BexTypeOfClassInterface);
}

TEST(BaseUnknown, ReferencesCountFromManyThreads) {
    bool destroyed = false;
    auto* object = new PlainObject(&destroyed);
    RunOnThreads(8, [object](int) {
        for (int round = 0; round < 5000; ++round) {
            const BexBaseUnknown_var held(object);
            const BexBaseUnknown_var copy(held);
            BexBaseUnknown_var cast;
            cast.CastTo(copy.GetPointer(), IID_BexBaseUnknown);
        }
    });
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(object->Release(), 0U);
    EXPECT_TRUE(destroyed);
}

TEST(BaseUnknown, TheLastOfManyThreadsDestroysIt) {
    for (int round = 0; round < 200; ++round) {
        bool destroyed = false;
        auto* object = new PlainObject(&destroyed);
        for (int reference = 2; reference <= 4; ++reference) {
            object->AddRef();
        }
        RunOnThreads(4, [object](int) { object->Release(); });
        EXPECT_TRUE(destroyed);
    }
}

TEST(MetaClass, GivesBackWhatItWasBuiltWith) {
    BexMetaClass parent(kIidFirst, "Parent", nullptr, nullptr, BexTypeOfClassInterface);
    BexMetaClass second(kIidSecond, "Second", nullptr, nullptr, BexTypeOfClassInterface);
    const GUID id = {0x5E570003, 3, 3, {3, 3, 3, 3, 3, 3, 3, 3}};
    const auto otherType = static_cast<BexTypeOfClass>(1);
    const BexMetaClass meta(id, "TestMeta", &parent, &second, otherType);
    EXPECT_TRUE(meta.GetId() == id);
    EXPECT_THAT(meta.GetName(), StrEq("TestMeta"));
    EXPECT_EQ(meta.GetParent(), &parent);
    EXPECT_EQ(meta.GetSecond(), &second);
    EXPECT_EQ(meta.GetType(), otherType);
    EXPECT_EQ(parent.GetType(), BexTypeOfClassInterface);
    EXPECT_THAT(parent.GetParent(), IsNull());
    EXPECT_THAT(parent.GetSecond(), IsNull());
}

TEST(MetaClass, KeepsCopiesOfIdentifierAndName) {
    GUID id = kIidFirst;
    char name[] = "TestMeta";
    const BexMetaClass meta(id, name, nullptr, nullptr, BexTypeOfClassInterface);
    id.Data1 = 0;
    std::memset(name, 'x', sizeof name - 1);
    EXPECT_TRUE(meta.GetId() == kIidFirst);
    EXPECT_THAT(meta.GetName(), StrEq("TestMeta"));
}

TEST(MetaClass, TakesANullNameAsTheEmptyOne) {
    const BexMetaClass meta(kIidFirst, nullptr, nullptr, nullptr, BexTypeOfClassInterface);
    EXPECT_THAT(meta.GetName(), StrEq(""));
}

TEST(MetaClass, NamesAreNarrowTextAndInterfacesHaveTheNumberEight) {
    EXPECT_TRUE((std::is_same_v<decltype(BexBaseUnknown::MetaObject()->GetName()), const char*>));
    EXPECT_EQ(static_cast<int>(BexTypeOfClassInterface), 8);
}

TEST(MetaClass, IdentifiersAreThoseThatHostsWereBuiltWith) {
    const GUID base = {0x9EFAB7A5, 0xA17F, 0x0000, {0x02, 0x80, 0x03, 0x0B, 0x02, 0x00, 0x00, 0x00}};
    const GUID metaClass = {0x9EFAB7A5, 0xA17F, 0x0000, {0x02, 0x80, 0x03, 0x0B, 0x01, 0x00, 0x00, 0x00}};
    EXPECT_TRUE(IID_BexBaseUnknown == base);
    EXPECT_TRUE(CLSID_BexMetaClass == metaClass);
}

}  // namespace
