#include "TestComponent.h"

#include <BexBaseUnknown.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using testing::IsNull;

static_assert(sizeof(BexBaseUnknown_var) == sizeof(void*));

/** Every test ends with the reference of the fixture as the last one. */
class BaseUnknownVar : public testing::Test {
protected:
    ~BaseUnknownVar() override {
        EXPECT_EQ(object->References(), 1U);
        EXPECT_FALSE(destroyed);
        object->Release();
        EXPECT_TRUE(destroyed);
    }

    bool destroyed = false;
    TestComponent* object = new TestComponent(&destroyed);
};

TEST_F(BaseUnknownVar, HoldsNothingByDefault) {
    const BexBaseUnknown_var handle;
    EXPECT_THAT(handle.GetPointer(), IsNull());
}

TEST_F(BaseUnknownVar, BuiltFromAPointerHoldsItWithAReferenceOfItsOwn) {
    {
        const BexBaseUnknown_var handle(object->AsSecond());
        EXPECT_EQ(handle.GetPointer(), object->AsSecond());
        EXPECT_EQ(object->References(), 2U);
    }
    EXPECT_EQ(object->References(), 1U);
    EXPECT_EQ(object->Queries(), 0) << "a pointer is taken as it is";
}

TEST_F(BaseUnknownVar, BuiltFromANullPointerHoldsNothing) {
    const BexBaseUnknown_var handle(static_cast<BexBaseUnknown*>(nullptr));
    EXPECT_THAT(handle.GetPointer(), IsNull());
}

TEST_F(BaseUnknownVar, IsOftenTheLastToHoldAnObject) {
    bool gone = false;
    {
        auto* passing = new TestComponent(&gone);
        const BexBaseUnknown_var handle(passing->AsFirst());
        passing->Release();
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

TEST_F(BaseUnknownVar, ACopyHoldsTheSameObjectWithAReferenceOfItsOwn) {
    auto original = std::make_unique<BexBaseUnknown_var>(object->AsFirst());
    const BexBaseUnknown_var copy(*original);
    EXPECT_EQ(object->References(), 3U);
    original.reset();
    EXPECT_EQ(copy.GetPointer(), object->AsFirst());
    EXPECT_EQ(object->References(), 2U);
    EXPECT_EQ(object->Queries(), 0);
}

TEST_F(BaseUnknownVar, ACopyOfNothingHoldsNothing) {
    const BexBaseUnknown_var original;
    const BexBaseUnknown_var copy(original);
    EXPECT_THAT(copy.GetPointer(), IsNull());
}

TEST_F(BaseUnknownVar, AssignmentLetsGoOfWhatItHeld) {
    bool gone = false;
    auto* other = new TestComponent(&gone);
    BexBaseUnknown_var handle(other->AsFirst());
    other->Release();
    const BexBaseUnknown_var source(object->AsFirst());
    BexBaseUnknown_var& result = (handle = source);
    EXPECT_EQ(&result, &handle);
    EXPECT_TRUE(gone);
    EXPECT_EQ(handle.GetPointer(), object->AsFirst());
    EXPECT_EQ(source.GetPointer(), object->AsFirst());
    EXPECT_EQ(object->References(), 3U);
}

TEST_F(BaseUnknownVar, AssigningNothingLetsGo) {
    BexBaseUnknown_var handle(object->AsFirst());
    handle = BexBaseUnknown_var();
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(object->References(), 1U);
}

TEST_F(BaseUnknownVar, SelfAssignmentKeepsTheObject) {
    bool gone = false;
    auto* only = new TestComponent(&gone);
    {
        BexBaseUnknown_var handle(only->AsFirst());
        only->Release();
        const BexBaseUnknown_var& same = handle;
        handle = same;
        EXPECT_FALSE(gone);
        EXPECT_EQ(handle.GetPointer(), only->AsFirst());
        EXPECT_EQ(only->References(), 1U);
    }
    EXPECT_TRUE(gone);
}

TEST_F(BaseUnknownVar, AssignmentBetweenHandlesOfOneObjectKeepsTheCount) {
    BexBaseUnknown_var one(object->AsFirst());
    const BexBaseUnknown_var two(object->AsFirst());
    one = two;
    EXPECT_EQ(object->References(), 3U);
}

TEST_F(BaseUnknownVar, CastToKeepsTheAnswer) {
    BexBaseUnknown_var handle;
    handle.CastTo(object->AsFirst(), kIidSecond);
    EXPECT_EQ(handle.GetPointer(), object->AsSecond());
    EXPECT_NE(handle.GetPointer(), object->AsFirst());
    EXPECT_EQ(static_cast<SecondItf*>(handle.GetPointer())->Second(), 2);
    EXPECT_EQ(object->References(), 2U);
    EXPECT_EQ(object->Queries(), 1);
}

TEST_F(BaseUnknownVar, CastToLetsGoOfWhatItHeld) {
    bool gone = false;
    auto* other = new TestComponent(&gone);
    BexBaseUnknown_var handle(other->AsFirst());
    other->Release();
    handle.CastTo(object->AsFirst(), kIidFirst);
    EXPECT_TRUE(gone);
    EXPECT_EQ(handle.GetPointer(), object->AsFirst());
}

TEST_F(BaseUnknownVar, CastToNullLetsGo) {
    BexBaseUnknown_var handle(object->AsFirst());
    handle.CastTo(nullptr, kIidFirst);
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(object->References(), 1U);
    handle.CastTo(nullptr, kIidFirst);
    EXPECT_THAT(handle.GetPointer(), IsNull());
}

TEST_F(BaseUnknownVar, CastToAnObjectWithoutTheInterfaceLetsGo) {
    BexBaseUnknown_var handle(object->AsFirst());
    handle.CastTo(object->AsFirst(), kIidNobodyHas);
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(object->References(), 1U);
    EXPECT_EQ(object->Queries(), 1);
}

TEST_F(BaseUnknownVar, CastToItsOwnPointerKeepsTheObjectAlive) {
    bool gone = false;
    auto* only = new TestComponent(&gone);
    {
        BexBaseUnknown_var handle(only->AsFirst());
        only->Release();
        handle.CastTo(handle.GetPointer(), kIidSecond);
        EXPECT_FALSE(gone);
        EXPECT_EQ(handle.GetPointer(), only->AsSecond());
        handle.CastTo(handle.GetPointer(), kIidSecond);
        EXPECT_FALSE(gone);
        EXPECT_EQ(only->References(), 1U);
    }
    EXPECT_TRUE(gone);
}

TEST_F(BaseUnknownVar, CastToItsOwnPointerWithoutTheInterfaceDestroysTheLastObject) {
    bool gone = false;
    auto* only = new TestComponent(&gone);
    BexBaseUnknown_var handle(only->AsFirst());
    only->Release();
    handle.CastTo(handle.GetPointer(), kIidNobodyHas);
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_TRUE(gone);
}

/** Looks at the handle while it is asked. */
class CuriousObject : public BexBaseUnknown {
public:
    explicit CuriousObject(const BexBaseUnknown_var& iHandle) : handle(iHandle) {}
    int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) override {
        heldWhenAsked = handle.GetPointer();
        return BexBaseUnknown::QueryInterface(iIid, oObject);
    }
    const BexBaseUnknown_var& handle;
    BexBaseUnknown* heldWhenAsked = nullptr;
};

TEST_F(BaseUnknownVar, CastToAsksBeforeItLetsGo) {
    BexBaseUnknown_var handle(object->AsFirst());
    auto* curious = new CuriousObject(handle);
    handle.CastTo(curious, IID_BexBaseUnknown);
    EXPECT_EQ(curious->heldWhenAsked, object->AsFirst());
    EXPECT_EQ(handle.GetPointer(), curious);
    curious->Release();
}

}  // namespace
