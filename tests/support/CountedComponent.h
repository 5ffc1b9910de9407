#ifndef CountedComponent_H
#define CountedComponent_H

#include <BexBaseUnknown.h>

#include <atomic>

/** What a component answers that lacks the interface it is asked for. */
inline constexpr int kNoInterface = static_cast<int>(0x80004005U);

/** A component with these interfaces and one count of references, which starts with one; dies with the last of them. */
template <typename... Interfaces>
class CountedComponent : public Interfaces... {
public:
    /** @param oDestroyed set to true when the component dies; may be null */
    explicit CountedComponent(bool* oDestroyed = nullptr) : destroyed(oDestroyed) {}
    ~CountedComponent() override {
        if (destroyed != nullptr) {
            *destroyed = true;
        }
    }

    unsigned int AddRef() override { return ++references; }
    unsigned int Release() override {
        const unsigned int left = --references;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    unsigned int References() const { return references; }

protected:
    /** Ends a question for an interface: hands out the answer with a reference of its own, or null for none. */
    int Answer(BexBaseUnknown* iAnswer, BexBaseUnknown** oObject) {
        *oObject = iAnswer;
        if (iAnswer == nullptr) {
            return kNoInterface;
        }
        AddRef();
        return 0;
    }

private:
    std::atomic<unsigned int> references{1};
    bool* destroyed;
};

#endif
