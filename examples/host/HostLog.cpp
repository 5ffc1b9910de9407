#include "HostLog.h"

#include <BexQorTrace.h>
#include <BexTime.h>
#include <BexUnicodeString.h>

#include <stdexcept>
#include <string_view>

HostLog::HostLog(const std::string& iFile, bool iTrace) : file(iFile, std::ios::app) {
    if (!file) {
        throw std::runtime_error("cannot write " + iFile);
    }
    BexQorTrace::SetSink(&HostLog::TakeTrace, this);
    // WFInteropXML stays off: it writes records to the standard output, which is the user's here.
    BexQorTrace::SetOn("WFInterop", iTrace ? 1 : 0);
    BexQorTrace::SetOn("WFInteropUrl", iTrace ? 1 : 0);
}

HostLog::~HostLog() {
    BexQorTrace::SetSink(nullptr, nullptr);
}

void HostLog::Write(const std::string& iLine) {
    file << BexTime().ConvertToString("%Y-%m-%d %H:%M:%S") << ' ' << iLine << std::endl;
}

void HostLog::TakeTrace(const char* iChannel, const char* iText, int iLength, void* iLog) {
    std::string_view line(iText, static_cast<std::size_t>(iLength));
    if (!line.empty() && line.back() == '\n') {
        line.remove_suffix(1);
    }
    static_cast<HostLog*>(iLog)->Write(std::string(iChannel) + ": " + std::string(line));
}
