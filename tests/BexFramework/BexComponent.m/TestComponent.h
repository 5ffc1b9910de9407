#ifndef TestComponent_H
#define TestComponent_H

#include <BexBaseUnknown.h>

inline constexpr GUID kIidFirst = {0x5E570001, 0x0001, 0x0001, {1, 1, 1, 1, 1, 1, 1, 1}};
inline constexpr GUID kIidSecond = {0x5E570002, 0x0002, 0x0002, {2, 2, 2, 2, 2, 2, 2, 2}};
inline constexpr GUID kIidNobodyHas = {0x5E57FFFF, 0xFFFF, 0xFFFF, {9, 9, 9, 9, 9, 9, 9, 9}};
inline constexpr int kNoInterface = static_cast<int>(0x80004005U);

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
class TestComponent : public FirstItf, public SecondItf {
public:
    explicit TestComponent(bool* oDestroyed = nullptr) : destroyed(oDestroyed) {}
    ~TestComponent() override {
        if (destroyed != nullptr) {
            *destroyed = true;
        }
    }

    int QueryInterface(const GUID& iIid, BexBaseUnknown** oObject) override {
        ++queries;
        BexBaseUnknown* answer = nullptr;
        if (iIid == kIidFirst) {
            answer = static_cast<FirstItf*>(this);
        } else if (iIid == kIidSecond) {
            answer = static_cast<SecondItf*>(this);
        }
        *oObject = answer;
        if (answer == nullptr) {
            return kNoInterface;
        }
        AddRef();
        return 0;
    }
    unsigned int AddRef() override { return ++references; }
    unsigned int Release() override {
        const unsigned int left = --references;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    int First() const override { return 1; }
    int Second() const override { return 2; }

    FirstItf* AsFirst() { return this; }
    SecondItf* AsSecond() { return this; }
    unsigned int References() const { return references; }
    int Queries() const { return queries; }

private:
    std::atomic<unsigned int> references{1};
    int queries = 0;
    bool* destroyed;
};

#endif
