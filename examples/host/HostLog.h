#ifndef HostLog_H
#define HostLog_H

#include <fstream>
#include <string>

/** The host's own log: a line each, with the time. While it lives it takes the library's trace as well. */
class HostLog {
public:
    /** @param iTrace whether the library is to trace what it does */
    HostLog(const std::string& iFile, bool iTrace);
    ~HostLog();
    HostLog(const HostLog&) = delete;  // the library knows it by its address
    HostLog& operator=(const HostLog&) = delete;

    void Write(const std::string& iLine);

private:
    static void TakeTrace(const char* iChannel, const char* iText, int iLength, void* iLog);

    std::ofstream file;
};

#endif
