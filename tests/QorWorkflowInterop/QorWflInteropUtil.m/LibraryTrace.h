#ifndef LibraryTrace_H
#define LibraryTrace_H

#include <BexQorTrace.h>

#include <cstddef>
#include <string>

/** Turns every trace channel of the library on and collects what they all write, while it lives. */
class LibraryTrace {
public:
    LibraryTrace() {
        BexQorTrace::SetSink(&LibraryTrace::Take, this);
        Switch(1);
    }
    ~LibraryTrace() {
        Switch(0);
        BexQorTrace::SetSink(nullptr, nullptr);
    }
    LibraryTrace(const LibraryTrace&) = delete;
    LibraryTrace& operator=(const LibraryTrace&) = delete;

    /** The lines, each behind the name of its channel and a bar. */
    const std::string& Text() const { return text; }

private:
    static void Switch(int iOn) {
        for (const char* channel : {"WFInterop", "WFInteropUrl", "WFInteropXML"}) {
            BexQorTrace::SetOn(channel, iOn);
        }
    }
    static void Take(const char* iChannel, const char* iText, int iLength, void* iData) {
        static_cast<LibraryTrace*>(iData)->text +=
            iChannel + ("|" + std::string(iText, static_cast<std::size_t>(iLength)));
    }

    std::string text;
};

#endif
