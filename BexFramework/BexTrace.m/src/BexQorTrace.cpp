#include "BexQorTrace.h"

#include "TraceSink.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <iostream>
#include <mutex>

namespace {

constexpr const char* kVariable = "BexQorTrace";
constexpr std::string_view kAllChannels("*");
constexpr char kSeparator = ',';

// Neither lock needs construction or destruction, so channels may come and go while libraries are loaded and unloaded.
std::mutex channelLock;
BexQorTrace* firstChannel = nullptr;

std::mutex sinkLock;  // held while a line is written, so lines stay whole and a sink that was replaced runs no more
BexQorTrace::Sink hostSink = nullptr;
void* hostData = nullptr;
thread_local bool writing = false;  // this thread holds sinkLock: it came here from within a sink

/** Marks the thread as writing for a scope. */
class WritingScope {
public:
    WritingScope() : lock(sinkLock) { writing = true; }
    ~WritingScope() { writing = false; }
    WritingScope(const WritingScope&) = delete;
    WritingScope& operator=(const WritingScope&) = delete;

private:
    std::lock_guard<std::mutex> lock;
};

std::string_view TextOf(const char* iText) {
    return iText == nullptr ? std::string_view() : std::string_view(iText);
}

/** Whether the environment asks for a channel when it is built. */
bool IsNamedByEnvironment(std::string_view iName) {
    std::string_view names = TextOf(std::getenv(kVariable));
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(kSeparator), names.size());
        const std::string_view name = names.substr(0, end);
        if (!name.empty() && (name == iName || name == kAllChannels)) {
            return true;
        }
        names.remove_prefix(std::min(end + 1, names.size()));
    }
    return false;
}

}  // namespace

bool TraceSink::IsRunning() noexcept {
    return writing;
}

BexQorTrace::BexQorTrace(const char* iName, const char* iTitle, const char* iSink, int iSize)
    : name(TextOf(iName)),
      title(TextOf(iTitle)),
      namedSink(TextOf(iSink) == "STDOUT"   ? NamedSink::Stdout
                : TextOf(iSink) == "STDERR" ? NamedSink::Stderr
                                            : NamedSink::None),
      lineSize(static_cast<std::size_t>(std::max(iSize, 0))),
      on(IsNamedByEnvironment(name) ? 1 : 0) {
    const std::lock_guard<std::mutex> lock(channelLock);
    next = firstChannel;
    if (next != nullptr) {
        next->previous = this;
    }
    firstChannel = this;
}

BexQorTrace::~BexQorTrace() {
    const std::lock_guard<std::mutex> lock(channelLock);
    if (next != nullptr) {
        next->previous = previous;
    }
    (previous == nullptr ? firstChannel : previous->next) = next;
}

int BexQorTrace::SetOn(const char* iName, int iOn) {
    if (iName == nullptr) {
        return 0;
    }
    int channels = 0;
    const std::lock_guard<std::mutex> lock(channelLock);
    for (BexQorTrace* channel = firstChannel; channel != nullptr; channel = channel->next) {
        if (channel->name == iName) {
            channel->on.store(iOn == 0 ? 0 : 1, std::memory_order_relaxed);
            ++channels;
        }
    }
    return channels;
}

void BexQorTrace::SetSink(Sink iSink, void* iData) {
    std::unique_lock<std::mutex> lock(sinkLock, std::defer_lock);
    if (!writing) {
        lock.lock();
    }
    hostSink = iSink;
    hostData = iData;
}

/** Sends one line, its line feed included, to where lines go at present. Nothing that fails there reaches the caller.
 */
void BexQorTrace::Write(std::string_view iLine) const noexcept {
    if (writing || iLine.size() > INT_MAX) {
        return;  // what a sink traces itself would never end; of more bytes it could not be told how many there are
    }
    try {
        const WritingScope scope;
        if (hostSink != nullptr) {
            hostSink(name.c_str(), iLine.data(), static_cast<int>(iLine.size()), hostData);
        } else if (namedSink != NamedSink::None) {
            std::ostream& stream = namedSink == NamedSink::Stdout ? std::cout : std::cerr;
            stream.write(iLine.data(), static_cast<std::streamsize>(iLine.size())).flush();
        }
    } catch (...) {  // a trace must not disturb what it traces
    }
}
