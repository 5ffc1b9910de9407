#ifndef CapturedTrace_H
#define CapturedTrace_H

#include <BexQorTrace.h>

#include <string>
#include <vector>

/** Turns one trace channel on and collects its lines, without indentation and line feed, while it lives. */
class CapturedTrace {
public:
    explicit CapturedTrace(const char* iChannel) : channel(iChannel) {
        BexQorTrace::SetSink(&CapturedTrace::Take, this);
        BexQorTrace::SetOn(channel.c_str(), 1);
    }
    ~CapturedTrace() {
        BexQorTrace::SetOn(channel.c_str(), 0);
        BexQorTrace::SetSink(nullptr, nullptr);
    }
    CapturedTrace(const CapturedTrace&) = delete;
    CapturedTrace& operator=(const CapturedTrace&) = delete;

    /** All lines: steps as ">> name" and "<< name", messages as they are. */
    const std::vector<std::string>& Lines() const { return lines; }
    /** The lines that are messages, not the opening or closing of a step. */
    std::vector<std::string> Messages() const {
        std::vector<std::string> messages;
        for (const std::string& line : lines) {
            if (line.rfind(">> ", 0) != 0 && line.rfind("<< ", 0) != 0) {
                messages.push_back(line);
            }
        }
        return messages;
    }
    /** The raw text, as the sink got it. */
    const std::string& Text() const { return text; }

private:
    static void Take(const char* iChannel, const char* iText, int iLength, void* iData) {
        auto& self = *static_cast<CapturedTrace*>(iData);
        const std::string line(iText, static_cast<std::size_t>(iLength));
        if (self.channel != iChannel) {
            return;
        }
        self.text += line;
        const std::size_t start = line.find_first_not_of(' ');
        const std::size_t end = line.empty() || line.back() != '\n' ? line.size() : line.size() - 1;
        self.lines.push_back(start == std::string::npos ? line : line.substr(start, end - start));
    }

    std::string channel;
    std::string text;
    std::vector<std::string> lines;
};

#endif
