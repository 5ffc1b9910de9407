// Takes the URLs of a workflow tool's reply apart again: which action it is about, which product and configuration,
// which objects. The file is named on the command line; the vocabulary is looked for along BexMsgCatalogPath.
#include <QorWflActionManagerBase.h>
#include <QorWflUrlUtil.h>
#include <QorWflUuidLayout.h>
#include <QorWflXmlToActivity.h>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

namespace {

using Uuid = std::unique_ptr<char, QorWflUuidDeleter>;

/** A manager that only looks words up. */
class Vocabulary final : public QorWflActionManagerBase {
public:
    Vocabulary() {
        QorWflPropertyFile properties;
        InitResources(properties);
    }
    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return nullptr; }
};

/** The table that an object stands in, without its padding. */
BexUnicodeString Table(const Uuid& iUuid) {
    using QorWflUuidLayout::kKitab;
    return BexUnicodeString(iUuid.get() + kKitab.offset, kKitab.width).Strip(2, ' ');
}

int Explain(const ActivityInfo& iReply) {
    BexUnicodeString configuration;
    const Uuid product(QorWflUrlUtil::UrlToContext(iReply.process.context, configuration));
    if (!product) {
        std::cerr << "the context names no product: " << iReply.process.context << '\n';
        return 1;
    }
    std::cout << "action:            " << QorWflUrlUtil::UrlToActionId(iReply.extid) << '\n'
              << "internal priority: " << Vocabulary().GetInternalPriority(iReply.priority) << '\n'
              << "product:           " << QorWflUrlUtil::GetUrlParm(iReply.process.context, "Nickname") << " in table "
              << Table(product) << '\n'
              << "configuration:     " << configuration << '\n';
    for (int i = 0; i < iReply.process.dataNumber; ++i) {
        const DataInfo& data = iReply.process.datas[i];
        const Uuid uuid(QorWflUrlUtil::UrlToUuid(data.extid));
        if (!uuid) {
            std::cerr << "the data field " << data.name << " names no object: " << data.extid << '\n';
            return 1;
        }
        std::cout << "object:            " << QorWflUrlUtil::GetUrlParm(data.extid, "Nickname") << " in table "
                  << Table(uuid) << '\n';
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
    if (!file) {
        std::cerr << "usage: urls REPLY.xpdl\n";
        return 2;
    }
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    ActivityInfo reply;
    QorWflXmlToActivity(BexUnicodeString::FromNarrow(text), reply);
    return Explain(reply);
}
