#ifndef TestComponent_H
#define TestComponent_H

#include <BexBaseUnknown.h>

#include <CountedComponent.h>

inline constexpr GUID kIidFirst = {0x5E570001, 0x0001, 0x0001, {1, 1, 1, 1, 1, 1, 1, 1}};
inline constexpr GUID kIidSecond = {0x5E570002, 0x0002, 0x0002, {2, 2, 2, 2, 2, 2, 2, 2}};
inline constexpr GUID kIidNobodyHas = {0x5E57FFFF, 0xFFFF, 0xFFFF, {9, 9, 9, 9, 9, 9, 9, 9}};

/** Two interfaces, told apart by their operation. */
class FirstItf : public BexBaseUnknown {
public:
    virtual int First() const = 0;
};
class SecondItf : public BexBaseUnknown {
public:
    virtual int Second() const = 0;
};

/** One object with both interfaces and one count of references; says when it dies. */
class TestComponent : public CountedComponent<FirstItf, SecondItf> {
public:
    using CountedComponent::CountedComponent;

    int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) override {
        ++queries;
        if (iIid == kIidFirst) {
            return Answer(AsFirst(), oObject);
        }
        return Answer(iIid == kIidSecond ? AsSecond() : nullptr, oObject);
    }
    int First() const override { return 1; }
    int Second() const override { return 2; }

    FirstItf* AsFirst() { return this; }
    SecondItf* AsSecond() { return this; }
    int Queries() const { return queries; }

private:
    int queries = 0;
};

#endif
