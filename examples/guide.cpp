// What docs/guide.md and docs/urls.md show, as one program: an action goes out, and its own document comes back as a
// reply.
#include <QorWflActionItf.h>
#include <QorWflActionManagerBase.h>
#include <QorWflActivityToXml.h>
#include <QorWflObjectNameHandlerBase.h>
#include <QorWflPropertyFile.h>
#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>
#include <QorWflXmlToActivity.h>

#include <iostream>
#include <memory>
#include <string>

class Handler : public QorWflObjectNameHandlerBase {
public:
    BexUnicodeString GetObjectName(const char* iUuid) const override;
};

class Manager : public QorWflActionManagerBase {
public:
    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return &handler; }
    Handler handler;
};

BexUnicodeString Handler::GetObjectName(const char* iUuid) const {
    return GetExternalType(iUuid);  // a host looks the name up in its store
}

namespace {

/** The block of the one product that there is. */
const std::string kPump =
    "QORDB1  PROD    PRODUCTS          \x3F\x1A\x01\xC2\x7B\x5D\x4E\x10\x01\x01\x01\x01\x01\x01\x01\x01";

/** An action with a product and nothing else. */
class OneAction final : public QorWflActionItf {
public:
    BexUnicodeString GetAbstract() const override { return "Design review of the pump housing"; }
    BexUnicodeString GetPriority() const override { return "3"; }
    BexUnicodeString GetActionId() const override { return "ACT-2047"; }
    BexUnicodeString GetOwner() const override { return "j.smith"; }
    int GetContextCount() const override { return 1; }
    void GetContext(int, BexUnicodeString& oKind, BexUnicodeString& oValue, BexUnicodeString& oExtra) const override {
        oKind = "Config";
        oValue = "As built";
        oExtra.Reset();
    }
    int GetObjectCount() const override { return 1; }
    void GetObject(int, _SEQUENCE_octet& oUuid, BexUnicodeString& oType, BexUnicodeString& oDirection,
                   BexUnicodeString& oNickname, BexUnicodeString& oName) const override {
        oUuid = _SEQUENCE_octet(kPump.data(), kPump.size());
        oType = "Product";
        oDirection.Reset();
        oNickname = "Pump";
        oName.Reset();
    }
};

std::string sent;

void Send(const char* iText) {
    sent = iText;
}

void GoOut(Manager& manager, const QorWflActionItf& action) {
    ActivityInfo activity;
    manager.GetActionInfo(&action, activity);  // what the action tells
    activity.name = "Design review";           // what only the host knows
    activity.status = "DSGin work";
    activity.duration = 5;
    activity.durationUnit = "D";

    BexUnicodeString xml;
    QorWflActivityToXml(activity, xml);
    Send(xml.ConvertToChar());  // ISO-8859-1
}

void ComeIn(Manager& manager, const std::string& text) {
    ActivityInfo reply;  // fresh: fields that the document lacks keep their values
    QorWflXmlToActivity(BexUnicodeString(text.data(), static_cast<int>(text.size())), reply);
    if (reply.extid.IsEmpty()) {
        return;  // nothing that could be used; standard error may say why
    }
    BexUnicodeString actionId = QorWflUrlUtil::UrlToActionId(reply.extid);
    BexUnicodeString priority = manager.GetInternalPriority(reply.priority);
    BexUnicodeString context;
    std::unique_ptr<char, QorWflUuidDeleter> product(QorWflUrlUtil::UrlToContext(reply.process.context, context));

    std::cout << actionId << ", priority " << priority << ", " << reply.duration << ' ' << reply.durationUnit << ", "
              << context << ", " << (product ? "a product" : "no product") << '\n';
}

bool IsThePump(const BexUnicodeString& url) {
    std::unique_ptr<char, QorWflUuidDeleter> block(QorWflUrlUtil::UrlToUuid(url));
    return block && std::string(block.get(), QorWflUuidLayout::kBlockSize) == kPump;
}

}  // namespace

int main() {
    Manager manager;                    // has the built-in vocabulary
    QorWflPropertyFile properties;      // empty
    manager.InitResources(properties);  // defaults of the object types, then the property file
    manager.handler.Init(properties);   // object types and name attributes

    GoOut(manager, OneAction());
    ComeIn(manager, sent);
    return IsThePump(QorWflUrlUtil::InstanceUrl(kPump.data())) ? 0 : 1;
}
