#ifndef Inputs_H
#define Inputs_H

#include <ActivityInfo.h>
#include <QorWflActionItf.h>
#include <QorWflObjectNameHandlerBase.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

/**
 * What the benchmarks work on. A thing of size N has N data fields, each with a value of 20 characters and a URL of
 * 110, one half of them inputs and the other half outputs.
 *
 * Things are made once and kept, but for the largest ones, which would fill the memory: those live as long as somebody
 * holds them. One thread.
 */
namespace Inputs {

/** A record. */
std::shared_ptr<const ActivityInfo> Activity(int iSize);
/** The document of Activity(), as QorWflActivityToXml() writes it. */
std::shared_ptr<const BexUnicodeString> Document(int iSize);

/** The texts of a record, each with its length in front: the same for equal records only. */
std::string AllTexts(const ActivityInfo& iActivity);

/** An object attached to an action. */
struct ActionObject {
    _SEQUENCE_octet uuid;
    BexUnicodeString direction;
    BexUnicodeString nickname;
    BexUnicodeString name;
};

/** An action with models, as a host shows it. */
class Action final : public QorWflActionItf {
public:
    explicit Action(int iSize);

    BexUnicodeString GetAbstract() const override { return abstract; }
    BexUnicodeString GetPriority() const override { return priority; }
    BexUnicodeString GetActionId() const override { return id; }
    BexUnicodeString GetOwner() const override { return owner; }
    int GetContextCount() const override { return 3; }
    void GetContext(int iIndex, BexUnicodeString& oKind, BexUnicodeString& oValue,
                    BexUnicodeString& oExtra) const override;
    int GetObjectCount() const override { return static_cast<int>(objects.size()); }
    void GetObject(int iIndex, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                   BexUnicodeString& oNickname, BexUnicodeString& oName) const override;

private:
    BexUnicodeString abstract;
    BexUnicodeString priority;
    BexUnicodeString id;
    BexUnicodeString owner;
    std::vector<ActionObject> objects;
};

/** The action of a size. */
std::shared_ptr<const Action> HostAction(int iSize);

/** The identifier of an object of an action, from 0, as 16 hexadecimal digits; also that of its nickname and name. */
std::string Digits(int iIndex);
/** The name of data field @p iIndex, from 0. */
std::string DataName(int iIndex);
/** The value of data field @p iIndex, from 0: 20 characters. */
std::string DataValue(int iIndex);
/** A UUID block of 50 bytes with these digits as its identifier. */
std::string Uuid(const std::string& iTable, std::string_view iDigits);

/** A handler with the usual mappings. */
class Handler final : public QorWflObjectNameHandlerBase {
public:
    Handler();
    BexUnicodeString GetObjectName(const char* /*iUuid*/) const override { return BexUnicodeString(""); }
};

}  // namespace Inputs

#endif
