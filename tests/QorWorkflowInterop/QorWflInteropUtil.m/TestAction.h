#ifndef TestAction_H
#define TestAction_H

#include <QorWflActionItf.h>
#include <QorWflUuidLayout.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

/** A text padded with blanks to a width. */
inline std::string PaddedText(const std::string& iText, int iWidth) {
    std::string text = iText;
    text.resize(static_cast<std::size_t>(iWidth), ' ');
    return text;
}

/** A UUID block of 50 bytes with the identifiers 0123456789ABCDEF and FEDCBA9876543210. */
inline std::string UuidBlock(const std::string& iDbName, const std::string& iEnvironment, const std::string& iTable) {
    return PaddedText(iDbName, QorWflUuidLayout::kDbName.width) +
           PaddedText(iEnvironment, QorWflUuidLayout::kKienv.width) +
           PaddedText(iTable, QorWflUuidLayout::kKitab.width) + "\x01\x23\x45\x67\x89\xAB\xCD\xEF" +
           "\xFE\xDC\xBA\x98\x76\x54\x32\x10";
}

/** A byte buffer of these bytes. */
inline _SEQUENCE_octet Octets(const std::string& iBytes) {
    return _SEQUENCE_octet(iBytes.data(), static_cast<unsigned long>(iBytes.size()));
}

/** A context entry of an action. */
struct TestContext {
    BexUnicodeString kind;
    BexUnicodeString value;
    BexUnicodeString extra;
};

/** An object attached to an action. */
struct TestObject {
    BexUnicodeString type;
    BexUnicodeString direction;
    BexUnicodeString nickname;
    BexUnicodeString name;
    _SEQUENCE_octet uuid;
};

/** A workflow action made of plain data that notes in order what it is asked. */
class TestAction final : public QorWflActionItf {
public:
    BexUnicodeString abstractText;
    BexUnicodeString priority;
    BexUnicodeString status;
    BexUnicodeString actionId;
    BexUnicodeString owner;
    std::vector<TestContext> contexts;
    std::vector<TestObject> objects;
    std::optional<int> contextCount;                      ///< the count told, if it is not that of the entries
    std::optional<int> objectCount;                       ///< the count told, if it is not that of the objects
    std::optional<std::vector<TestObject>> laterObjects;  ///< the answers from the second question on, if others
    mutable std::vector<std::string> calls;               ///< the operations called, the index behind the name

    BexUnicodeString GetAbstract() const override { return Noted("GetAbstract", abstractText); }
    BexUnicodeString GetPriority() const override { return Noted("GetPriority", priority); }
    BexUnicodeString GetStatus() const override { return Noted("GetStatus", status); }
    BexUnicodeString GetActionId() const override { return Noted("GetActionId", actionId); }
    BexUnicodeString GetOwner() const override { return Noted("GetOwner", owner); }
    int GetContextCount() const override {
        calls.emplace_back("GetContextCount");
        return contextCount.value_or(static_cast<int>(contexts.size()));
    }
    void GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                    BexUnicodeString& oExtra) const override {
        calls.push_back("GetContext " + std::to_string(iIndex));
        const TestContext context = At(contexts, iIndex);
        oKind = context.kind;
        oValue = context.value;
        oExtra = context.extra;
    }
    int GetObjectCount() const override {
        calls.emplace_back("GetObjectCount");
        return objectCount.value_or(static_cast<int>(objects.size()));
    }
    void GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                   BexUnicodeString& oNickname, BexUnicodeString& oName) const override {
        calls.push_back("GetObject " + std::to_string(iIndex));
        const bool later = ++timesAsked[iIndex] > 1 && laterObjects.has_value();
        const TestObject object = At(later ? *laterObjects : objects, iIndex);
        oUuid = object.uuid;
        oType = object.type;
        oDirection = object.direction;
        oNickname = object.nickname;
        oName = object.name;
    }

private:
    /** The element of a 1-based index; an empty one outside the list. */
    template <class Element>
    static Element At(const std::vector<Element>& iElements, int iIndex) {
        const bool inside = iIndex >= 1 && static_cast<std::size_t>(iIndex) <= iElements.size();
        return inside ? iElements[static_cast<std::size_t>(iIndex) - 1] : Element();
    }
    const BexUnicodeString& Noted(const char* iCall, const BexUnicodeString& iAnswer) const {
        calls.emplace_back(iCall);
        return iAnswer;
    }

    mutable std::map<int, int> timesAsked;  // how often each object was asked for
};

#endif
