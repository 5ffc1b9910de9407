#include <BexBaseUnknown.h>
#include <BexDictionary.h>
#include <BexMetaClass.h>
#include <QorIWflInteropMessenger.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <CountedComponent.h>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsNull;
using testing::NotNull;
using testing::StrEq;

constexpr GUID kIidOther = {0x5E570004, 4, 4, {4, 4, 4, 4, 4, 4, 4, 4}};

/** A host's own interface beside the messenger's. */
class OtherItf : public BexBaseUnknown {
public:
    virtual int Other() const = 0;
};

/** A host's messenger: two interfaces, one count of references; keeps what it was asked for. */
class TestMessenger : public CountedComponent<OtherItf, QorIWflInteropMessenger> {
public:
    using CountedComponent::CountedComponent;

    int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) override {
        asked.push_back(iIid);
        if (iIid == IID_QorIWflInteropMessenger && answers) {
            return Answer(AsMessenger(), oObject);
        }
        return Answer(iIid == kIidOther ? AsOther() : nullptr, oObject);
    }
    int Other() const override { return 4; }

    QorIWflInteropMessenger* AsMessenger() { return this; }
    OtherItf* AsOther() { return this; }
    /** From now on the object refuses the messenger's identifier. */
    void StopAnswering() { answers = false; }
    const std::vector<GUID>& Asked() const { return asked; }

private:
    std::vector<GUID> asked;
    bool answers = true;
};

/** An object that has no interface but the base. */
class Stranger : public BexBaseUnknown {
public:
    unsigned int References() {
        AddRef();
        return Release();
    }
};

TEST(MessengerIdentity, IdentifierHasItsBytes) {
    const GUID& iid = IID_QorIWflInteropMessenger;
    EXPECT_EQ(iid.Data1, 0x9EFAB7A5U);
    EXPECT_EQ(iid.Data2, 0xA17FU);
    EXPECT_EQ(iid.Data3, 0x0000U);
    EXPECT_THAT(iid.Data4, ElementsAre(0x02, 0x80, 0x03, 0x0B, 0x23, 0x00, 0x00, 0x00));
    EXPECT_EQ(sizeof iid, 16U);
    EXPECT_TRUE(std::is_const_v<std::remove_reference_t<decltype(iid)>>);
}

TEST(MessengerIdentity, MetaObjectDescribesTheInterface) {
    BexMetaClass* meta = QorIWflInteropMessenger::MetaObject();
    ASSERT_THAT(meta, NotNull());
    EXPECT_TRUE(meta->GetId() == IID_QorIWflInteropMessenger);
    EXPECT_THAT(meta->GetName(), StrEq("QorIWflInteropMessenger"));
    EXPECT_EQ(meta->GetParent(), BexBaseUnknown::MetaObject());
    EXPECT_THAT(meta->GetSecond(), IsNull());
    EXPECT_EQ(static_cast<int>(meta->GetType()), 8);
    EXPECT_EQ(meta->GetType(), BexTypeOfClassInterface);
}

TEST(MessengerIdentity, MetaObjectIsTheSameAtEveryCallAndKeptInTheClass) {
    BexMetaClass* meta = QorIWflInteropMessenger::MetaObject();
    for (int call = 0; call < 10; ++call) {
        EXPECT_EQ(QorIWflInteropMessenger::MetaObject(), meta);
    }
    EXPECT_EQ(QorIWflInteropMessenger::meta_object, meta);
    EXPECT_NE(meta, BexBaseUnknown::MetaObject());
}

TEST(MessengerIdentity, ClassIdIsWhatTheMetaClassReports) {
    EXPECT_TRUE(QorIWflInteropMessenger::ClassId() == IID_QorIWflInteropMessenger);
    EXPECT_TRUE(QorIWflInteropMessenger::ClassId() == QorIWflInteropMessenger::MetaObject()->GetId());
    EXPECT_TRUE((std::is_same_v<decltype(QorIWflInteropMessenger::ClassId()), const GUID&>));
}

TEST(MessengerIdentity, ClassNameIsWhatTheMetaClassReportsInItsType) {
    EXPECT_THAT(QorIWflInteropMessenger::ClassName(), StrEq("QorIWflInteropMessenger"));
    EXPECT_THAT(QorIWflInteropMessenger::ClassName(), StrEq(QorIWflInteropMessenger::MetaObject()->GetName()));
    EXPECT_TRUE((std::is_same_v<decltype(QorIWflInteropMessenger::ClassName()),
                                decltype(std::declval<const BexMetaClass&>().GetName())>));
}

TEST(MessengerIdentity, IsInTheDictionaryByIdentifierAndByName) {
    EXPECT_EQ(FindInDictionary(IID_QorIWflInteropMessenger), QorIWflInteropMessenger::MetaObject());
    EXPECT_EQ(FindInDictionary("QorIWflInteropMessenger"), QorIWflInteropMessenger::MetaObject());
}

BexMetaClass* const metaObjectBeforeMain = QorIWflInteropMessenger::meta_object;

TEST(MessengerIdentity, IsThereAsSoonAsTheLibraryIsLoaded) {
    EXPECT_THAT(metaObjectBeforeMain, NotNull()) << "built at load time, not at the first question";
    EXPECT_EQ(metaObjectBeforeMain, QorIWflInteropMessenger::MetaObject());
}

TEST(MessengerIdentity, TheInterfaceAndItsHandleStandInTheComponentModel) {
    EXPECT_TRUE((std::is_base_of_v<BexBaseUnknown, QorIWflInteropMessenger>));
    EXPECT_TRUE((std::is_base_of_v<BexBaseUnknown_var, QorIWflInteropMessenger_var>));
    EXPECT_EQ(sizeof(QorIWflInteropMessenger), sizeof(BexBaseUnknown)) << "no data of its own";
    EXPECT_EQ(sizeof(QorIWflInteropMessenger_var), sizeof(void*));
}

/** A messenger and a stranger, both of which end with the reference of the fixture as the last one. */
class MessengerVar : public testing::Test {
protected:
    ~MessengerVar() override {
        EXPECT_EQ(messenger->References(), 1U);
        EXPECT_FALSE(destroyed);
        messenger->Release();
        EXPECT_TRUE(destroyed);
        EXPECT_EQ(stranger->References(), 1U);
        stranger->Release();
    }

    /** Asked @p iTimes, each time for the messenger's identifier. */
    void ExpectAsked(std::size_t iTimes) const {
        EXPECT_THAT(messenger->Asked(), testing::SizeIs(iTimes));
        EXPECT_THAT(messenger->Asked(), testing::Each(IID_QorIWflInteropMessenger));
    }

    bool destroyed = false;
    TestMessenger* messenger = new TestMessenger(&destroyed);
    Stranger* stranger = new Stranger;
};

TEST_F(MessengerVar, IsEmptyByDefault) {
    const QorIWflInteropMessenger_var handle;
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_THAT(handle.operator->(), IsNull());
    EXPECT_THAT(static_cast<QorIWflInteropMessenger*>(handle), IsNull());
}

TEST_F(MessengerVar, FromAnObjectAsksItForTheInterface) {
    BexBaseUnknown* object = messenger->AsOther();
    const QorIWflInteropMessenger_var handle(object);
    EXPECT_EQ(handle.operator->(), messenger->AsMessenger());
    EXPECT_NE(handle.GetPointer(), object);
    EXPECT_EQ(messenger->References(), 2U);
    ExpectAsked(1);
}

TEST_F(MessengerVar, FromAnObjectWithoutTheInterfaceStaysEmpty) {
    const QorIWflInteropMessenger_var handle(static_cast<BexBaseUnknown*>(stranger));
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(stranger->References(), 1U);
}

TEST_F(MessengerVar, FromANullObjectStaysEmpty) {
    const QorIWflInteropMessenger_var handle(static_cast<BexBaseUnknown*>(nullptr));
    EXPECT_THAT(handle.GetPointer(), IsNull());
}

TEST_F(MessengerVar, FromAMessengerTakesThePointerWithoutAsking) {
    messenger->StopAnswering();
    const QorIWflInteropMessenger_var handle(messenger->AsMessenger());
    EXPECT_EQ(handle.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 2U);
    ExpectAsked(0);
}

TEST_F(MessengerVar, FromANullMessengerStaysEmpty) {
    const QorIWflInteropMessenger_var handle(static_cast<QorIWflInteropMessenger*>(nullptr));
    EXPECT_THAT(handle.GetPointer(), IsNull());
}

TEST_F(MessengerVar, ACopyAsksAgain) {
    const QorIWflInteropMessenger_var original(messenger->AsMessenger());
    const QorIWflInteropMessenger_var copy(original);
    EXPECT_EQ(copy.operator->(), messenger->AsMessenger());
    EXPECT_EQ(original.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 3U);
    ExpectAsked(1);
}

TEST_F(MessengerVar, ACopyOfWhatRefusesStaysEmpty) {
    messenger->StopAnswering();
    const QorIWflInteropMessenger_var original(messenger->AsMessenger());
    const QorIWflInteropMessenger_var copy(original);
    EXPECT_THAT(copy.GetPointer(), IsNull());
    EXPECT_EQ(original.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 2U);
    ExpectAsked(1);
}

TEST_F(MessengerVar, ACopyOfAnEmptyHandleIsEmpty) {
    const QorIWflInteropMessenger_var original;
    const QorIWflInteropMessenger_var copy(original);
    EXPECT_THAT(copy.GetPointer(), IsNull());
}

TEST_F(MessengerVar, ACopyOutlivesTheOriginal) {
    bool gone = false;
    auto* passing = new TestMessenger(&gone);
    auto original = std::make_unique<QorIWflInteropMessenger_var>(passing->AsMessenger());
    auto copy = std::make_unique<QorIWflInteropMessenger_var>(*original);
    passing->Release();
    original.reset();
    EXPECT_FALSE(gone);
    EXPECT_EQ(passing->References(), 1U);
    copy.reset();
    EXPECT_TRUE(gone);
}

TEST_F(MessengerVar, FromABaseHandleAsksWhatItHolds) {
    const BexBaseUnknown_var base(messenger->AsOther());
    const QorIWflInteropMessenger_var handle(base);
    EXPECT_EQ(handle.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 3U);
    ExpectAsked(1);
}

TEST_F(MessengerVar, FromABaseHandleOnAnObjectWithoutTheInterfaceStaysEmpty) {
    const BexBaseUnknown_var base(stranger);
    const QorIWflInteropMessenger_var handle(base);
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(stranger->References(), 2U);
}

TEST_F(MessengerVar, FromAnEmptyBaseHandleStaysEmpty) {
    const BexBaseUnknown_var base;
    const QorIWflInteropMessenger_var handle(base);
    EXPECT_THAT(handle.GetPointer(), IsNull());
}

TEST_F(MessengerVar, GivesTheHeldPointerInItsOwnType) {
    const QorIWflInteropMessenger_var handle(messenger->AsMessenger());
    QorIWflInteropMessenger* converted = handle;
    EXPECT_EQ(converted, messenger->AsMessenger());
    EXPECT_EQ(handle.operator->(), converted);
    EXPECT_EQ(handle.GetPointer(), converted);
    EXPECT_EQ(messenger->References(), 2U) << "the handle keeps its reference";
    EXPECT_EQ(handle->AddRef(), 3U);
    EXPECT_EQ(handle->Release(), 2U);
    EXPECT_TRUE((std::is_same_v<decltype(handle.operator->()), QorIWflInteropMessenger*>));
}

TEST_F(MessengerVar, AssignmentFromABaseHandleAsksWhatItHolds) {
    const BexBaseUnknown_var base(messenger->AsOther());
    QorIWflInteropMessenger_var handle;
    QorIWflInteropMessenger_var& result = (handle = base);
    EXPECT_EQ(&result, &handle);
    EXPECT_EQ(handle.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 3U);
    ExpectAsked(1);
}

TEST_F(MessengerVar, AssignmentLetsGoOfWhatItHeld) {
    bool gone = false;
    auto* passing = new TestMessenger(&gone);
    QorIWflInteropMessenger_var handle(passing->AsMessenger());
    passing->Release();
    handle = BexBaseUnknown_var(messenger->AsOther());
    EXPECT_TRUE(gone);
    EXPECT_EQ(handle.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 2U);
}

TEST_F(MessengerVar, AssignmentFromWhatHasNotTheInterfaceEmptiesIt) {
    QorIWflInteropMessenger_var handle(messenger->AsMessenger());
    handle = BexBaseUnknown_var(stranger);
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(messenger->References(), 1U);
    EXPECT_EQ(stranger->References(), 1U);
}

TEST_F(MessengerVar, AssignmentFromAnEmptyBaseHandleEmptiesIt) {
    QorIWflInteropMessenger_var handle(messenger->AsMessenger());
    handle = BexBaseUnknown_var();
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(messenger->References(), 1U);
}

TEST_F(MessengerVar, AssignmentFromAMessengerHandleAsksWhatItHolds) {
    const QorIWflInteropMessenger_var source(messenger->AsMessenger());
    QorIWflInteropMessenger_var handle;
    QorIWflInteropMessenger_var& result = (handle = source);
    EXPECT_EQ(&result, &handle);
    EXPECT_EQ(handle.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 3U);
    ExpectAsked(1);
    handle = QorIWflInteropMessenger_var();
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(messenger->References(), 2U);
}

TEST_F(MessengerVar, AssignmentFromAMessengerHandleOnWhatRefusesEmptiesIt) {
    messenger->StopAnswering();
    const QorIWflInteropMessenger_var source(messenger->AsMessenger());
    QorIWflInteropMessenger_var handle(messenger->AsMessenger());
    handle = source;
    EXPECT_THAT(handle.GetPointer(), IsNull());
    EXPECT_EQ(source.operator->(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 2U);
    ExpectAsked(1);
}

TEST_F(MessengerVar, SelfAssignmentKeepsTheObject) {
    bool gone = false;
    auto* only = new TestMessenger(&gone);
    {
        QorIWflInteropMessenger_var handle(only->AsMessenger());
        only->Release();
        const QorIWflInteropMessenger_var& same = handle;
        handle = same;
        EXPECT_FALSE(gone);
        EXPECT_EQ(handle.operator->(), only->AsMessenger());
        const BexBaseUnknown_var& sameAsBase = handle;
        handle = sameAsBase;
        EXPECT_FALSE(gone);
        EXPECT_EQ(only->References(), 1U);
    }
    EXPECT_TRUE(gone);
}

TEST_F(MessengerVar, ABaseHandleTakesItAsItIs) {
    const QorIWflInteropMessenger_var handle(messenger->AsMessenger());
    const BexBaseUnknown_var base(handle);
    EXPECT_EQ(base.GetPointer(), messenger->AsMessenger());
    EXPECT_EQ(messenger->References(), 3U);
    ExpectAsked(0);
}

/** A messenger of which every answer is a new object, counted by itself; tells how many are alive. */
class PassingMessenger : public CountedComponent<QorIWflInteropMessenger> {
public:
    explicit PassingMessenger(int& ioAlive) : alive(ioAlive) { ++alive; }
    ~PassingMessenger() override { --alive; }
    int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) override {
        ++asked;
        *oObject = iIid == IID_QorIWflInteropMessenger ? new PassingMessenger(alive) : nullptr;
        return *oObject != nullptr ? 0 : kNoInterface;
    }
    int TimesAsked() const { return asked; }

private:
    int& alive;
    int asked = 0;
};

TEST(MessengerVarOnPassingAnswers, EveryHandleKeepsItsOwnAnswerAndLetsGoOfIt) {
    int alive = 0;
    {
        const QorIWflInteropMessenger_var original(new PassingMessenger(alive));
        original->Release();
        const auto& first = static_cast<const PassingMessenger&>(*original.operator->());
        EXPECT_EQ(first.References(), 1U);
        EXPECT_EQ(alive, 1);

        const QorIWflInteropMessenger_var copy(original);
        EXPECT_NE(copy.operator->(), original.operator->()) << "the copy holds what its own question was answered";
        EXPECT_EQ(first.References(), 1U) << "and keeps no reference on what it asked";
        EXPECT_EQ(first.TimesAsked(), 1);
        EXPECT_EQ(alive, 2);

        const BexBaseUnknown_var& originalAsBase = original;
        const QorIWflInteropMessenger_var fromBase(originalAsBase);
        EXPECT_EQ(alive, 3);

        QorIWflInteropMessenger_var assigned;
        assigned = originalAsBase;
        EXPECT_EQ(alive, 4);
        assigned = originalAsBase;
        EXPECT_EQ(alive, 4) << "the answer before is let go of";
        EXPECT_EQ(first.References(), 1U);
        EXPECT_EQ(first.TimesAsked(), 4);
    }
    EXPECT_EQ(alive, 0);
}

TEST(MessengerVarOnPassingAnswers, SelfAssignmentTakesTheAnswerInPlaceOfWhatItAsked) {
    int alive = 0;
    {
        QorIWflInteropMessenger_var handle(new PassingMessenger(alive));
        handle->Release();
        const BexBaseUnknown_var& same = handle;
        handle = same;
        EXPECT_NE(handle.operator->(), nullptr);
        EXPECT_EQ(alive, 1) << "the object asked is gone, its answer held";
    }
    EXPECT_EQ(alive, 0);
}

TEST(MessengerVarOnPassingAnswers, AssignmentsMayBeChained) {
    int alive = 0;
    {
        const BexBaseUnknown_var source(new PassingMessenger(alive));
        source.GetPointer()->Release();
        QorIWflInteropMessenger_var one;
        QorIWflInteropMessenger_var other;
        one = (other = source);
        EXPECT_EQ(alive, 3);
        EXPECT_NE(one.operator->(), other.operator->());
        one = other = BexBaseUnknown_var();
        EXPECT_EQ(alive, 1);
        EXPECT_THAT(one.GetPointer(), IsNull());
        EXPECT_THAT(other.GetPointer(), IsNull());
    }
    EXPECT_EQ(alive, 0);
}

TEST(MessengerIdentity, NamesInTheDictionaryCompareExactly) {
    for (const char* name : {"qoriwflinteropmessenger", "QorIWflInteropMessenger ", "QorIWflInteropMessenge", ""}) {
        EXPECT_THAT(FindInDictionary(name), IsNull()) << name;
    }
    for (int byte = 0; byte < 16; ++byte) {
        GUID iid = IID_QorIWflInteropMessenger;
        reinterpret_cast<unsigned char*>(&iid)[byte] ^= 1U;
        EXPECT_THAT(FindInDictionary(iid), IsNull()) << byte;
        EXPECT_TRUE(iid != IID_QorIWflInteropMessenger) << byte;
    }
}

TEST(MessengerIdentity, AskingAgainAddsNothingToTheDictionary) {
    BexMetaClass* const meta = QorIWflInteropMessenger::MetaObject();
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(QorIWflInteropMessenger::MetaObject(), meta);
        EXPECT_EQ(&QorIWflInteropMessenger::ClassId(), &QorIWflInteropMessenger::ClassId());
        EXPECT_EQ(FindInDictionary(QorIWflInteropMessenger::ClassId()), meta);
        EXPECT_EQ(FindInDictionary(QorIWflInteropMessenger::ClassName()), meta);
    }
}

}  // namespace
