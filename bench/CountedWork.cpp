#include "Inputs.h"

#include <QorWflActionManagerBase.h>
#include <QorWflActivityToXml.h>
#include <QorWflUrlUtil.h>
#include <QorWflXmlToActivity.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

/**
 * Does some work inside CountedWork(), whose instructions valgrind counts: `qorwfltraced action|read|url`. Built with
 * the library as it is and with one that has no trace in it.
 */

namespace {

constexpr int kSize = 100;

class Manager final : public QorWflActionManagerBase {
public:
    QorWflObjectNameHandlerBase* GetObjectNameHandler() override { return &handler; }

private:
    Inputs::Handler handler;
};

int ReadAction() {
    static Manager manager;
    ActivityInfo activity;
    manager.GetActionInfo(Inputs::HostAction(kSize).get(), activity);
    return activity.process.dataNumber;
}

int ReadDocument() {
    ActivityInfo activity;
    QorWflXmlToActivity(*Inputs::Document(kSize), activity);
    return activity.process.dataNumber;
}

int UseUrls() {
    static const std::string uuid = Inputs::Uuid("KIRVA_MODEL", Inputs::Digits(1));
    BexUnicodeString url = QorWflUrlUtil::ContextUrl(uuid.data(), "CONF1");
    QorWflUrlUtil::AddUrlParm(url, "Nickname", "Rib of wing");
    BexUnicodeString context;
    const std::unique_ptr<char, QorWflUuidDeleter> block(QorWflUrlUtil::UrlToContext(url, context));
    const BexUnicodeString id = QorWflUrlUtil::UrlToActionId(QorWflUrlUtil::ActionUrl("ACT-4711"));
    return QorWflUrlUtil::GetUrlParm(url, "Nickname").GetLengthInChar() + id.GetLengthInChar() +
           (block == nullptr ? 0 : context.GetLengthInChar());
}

using Work = int (*)();

Work FindWork(const char* iName) {
    constexpr struct {
        const char* name;
        Work work;
    } kWorks[]{{"action", ReadAction}, {"read", ReadDocument}, {"url", UseUrls}};
    for (const auto& entry : kWorks) {
        if (std::strcmp(entry.name, iName) == 0) {
            return entry.work;
        }
    }
    return nullptr;
}

}  // namespace

/** What is counted; known by its name. */
extern "C" __attribute__((noinline, visibility("default"))) int CountedWork(int (*iWork)(), int iRounds) {
    int result = 0;
    for (int i = 0; i < iRounds; ++i) {
        result += iWork();
    }
    return result;
}

int main(int argc, char** argv) {
    const Work work = argc == 2 ? FindWork(argv[1]) : nullptr;
    if (work == nullptr) {
        std::fprintf(stderr, "usage: %s action|read|url\n", argv[0]);
        return 2;
    }
    constexpr int kRounds = 100;
    const int once = work();  // what happens only the first time is not counted
    return CountedWork(work, kRounds) == once * kRounds && once > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
