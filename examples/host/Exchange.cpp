#include "Exchange.h"

#include <QorWflActivityToXml.h>
#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>
#include <QorWflXmlToActivity.h>

#include <limits>
#include <memory>
#include <stdexcept>

namespace {

/** Put into a record before it is read: a document without a duration leaves it there. */
constexpr long kNotTold = std::numeric_limits<long>::min();

/** The bytes of a block that the library returned, or an error that names the URL. */
std::string BytesOf(char* iBlock, const BexUnicodeString& iUrl) {
    const std::unique_ptr<char, QorWflUuidDeleter> block(iBlock);
    if (!block) {
        throw std::runtime_error(std::string("no object URL: ") + iUrl.ConvertToChar());
    }
    return std::string(block.get(), QorWflUuidLayout::kBlockSize);
}

/** A reply for another product than the action's is a mix-up. An action without a product has nothing to compare. */
void CheckProduct(const ActivityInfo& iRecord, const Action& iAction) {
    for (const Object& object : iAction.objects) {
        if (object.type == "Product") {
            BexUnicodeString configuration;
            const BexUnicodeString& url = iRecord.process.context;
            if (BytesOf(QorWflUrlUtil::UrlToContext(url, configuration), url) != object.uuid) {
                throw std::runtime_error("the context is another product's");
            }
        }
    }
}

/** Turns what the workflow tool says into the words of the store. */
Reply ReplyFrom(const ActivityInfo& iRecord, const Store& iStore, HostActionManager& ioManager) {
    Reply reply;
    reply.actionId = QorWflUrlUtil::UrlToActionId(iRecord.extid);
    if (reply.actionId.IsEmpty()) {
        throw std::runtime_error("it names no action");
    }
    const Action action = iStore.Load(reply.actionId);
    CheckProduct(iRecord, action);

    reply.status = ioManager.StatusOf(iRecord.status);
    if (reply.status.IsNull()) {
        throw std::runtime_error(std::string("unknown status '") + iRecord.status.ConvertToChar() + "'");
    }
    // What the reply does not tell stays as it is.
    reply.priority = iRecord.priority.IsNull() ? action.priority : ioManager.GetInternalPriority(iRecord.priority);
    reply.owner = iRecord.owner.IsNull() ? action.owner : iRecord.owner;
    reply.duration = iRecord.duration == kNotTold ? action.duration : iRecord.duration;
    reply.unit = iRecord.durationUnit.IsEmpty() ? action.unit : iRecord.durationUnit;
    if (reply.duration < 0 || reply.duration > std::numeric_limits<int>::max()) {
        throw std::runtime_error("the duration is out of range");
    }
    reply.due = HostActionManager::Due(action, static_cast<int>(reply.duration), reply.unit);
    for (int i = 0; i < iRecord.process.dataNumber; ++i) {
        const DataInfo& data = iRecord.process.datas[i];
        reply.nicknames.push_back({BytesOf(QorWflUrlUtil::UrlToUuid(data.extid), data.extid), data.value});
    }
    return reply;
}

/** Does one thing of many; what goes wrong with it is told in the log. */
template <typename Work>
void Attempt(const std::string& iWhat, Outcome& ioOutcome, HostLog& ioLog, Work iWork) {
    try {
        iWork();
        ++ioOutcome.done;
        ioLog.Write(iWhat + ": done");
    } catch (const std::exception& error) {
        ++ioOutcome.failed;
        ioLog.Write(iWhat + ": " + error.what());
    }
}

}  // namespace

Outcome ExportOpenActions(Store& ioStore, HostActionManager& ioManager, HostMessenger& ioMessenger, HostLog& ioLog) {
    Outcome outcome;
    for (const BexUnicodeString& id : ioStore.OpenActions()) {
        Attempt(std::string("export of ") + id.ConvertToChar(), outcome, ioLog, [&] {
            const Action action = ioStore.Load(id);
            ActivityInfo record;
            ioManager.FillRecord(action, record);
            BexUnicodeString document;
            QorWflActivityToXml(record, document);
            ioMessenger.Send(id, document);
            ioStore.MarkSent(id, HostActionManager::Due(action, action.duration, action.unit));
        });
    }
    return outcome;
}

Outcome ImportReplies(Store& ioStore, HostActionManager& ioManager, HostMessenger& ioMessenger, HostLog& ioLog) {
    Outcome outcome;
    for (const std::string& name : ioMessenger.Waiting()) {
        Attempt("import of " + name, outcome, ioLog, [&] {
            ActivityInfo record;  // a fresh one: what a reply lacks must not come from the one before
            record.duration = kNotTold;
            QorWflXmlToActivity(ioMessenger.Receive(name), record);
            ioStore.Apply(ReplyFrom(record, ioStore, ioManager));
            ioMessenger.Settle(name);
        });
    }
    return outcome;
}
