#ifndef RecordingSink_H
#define RecordingSink_H

#include <BexQorTrace.h>

#include <string>
#include <vector>

/** Takes the place of the named sinks while it lives and keeps every call as it came. */
class RecordingSink {
public:
    struct Call {
        std::string channel;
        std::string text;
    };

    RecordingSink() { BexQorTrace::SetSink(&RecordingSink::Take, this); }
    ~RecordingSink() { BexQorTrace::SetSink(nullptr, nullptr); }
    RecordingSink(const RecordingSink&) = delete;
    RecordingSink& operator=(const RecordingSink&) = delete;

    const std::vector<Call>& Calls() const { return calls; }
    /** The text of each call, line feed and indentation included. */
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const Call& call : calls) {
            texts.push_back(call.text);
        }
        return texts;
    }

private:
    static void Take(const char* iChannel, const char* iText, int iLength, void* iData) {
        auto& self = *static_cast<RecordingSink*>(iData);
        self.calls.push_back({iChannel, std::string(iText, static_cast<std::size_t>(iLength))});
    }

    std::vector<Call> calls;
};

#endif
