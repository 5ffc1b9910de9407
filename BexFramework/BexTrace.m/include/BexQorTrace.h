#ifndef BexQorTrace_H
#define BexQorTrace_H

#include "BexExport.h"

#include <atomic>
#include <string>
#include <string_view>

/**
 * A trace channel. Off unless turned on by the environment variable `BexQorTrace` when the channel is built (channel
 * names separated by commas, or `*` for all; empty turns nothing on) or later by SetOn().
 *
 * A channel is meant to be a static object of a source file; BexQorTraceStep writes on it.
 *
 * Threads: channels may be built, destroyed, turned on and off and written to from any threads. A line reaches the
 * sink whole. Nothing that goes wrong while tracing reaches the caller.
 */
class BEX_EXPORT BexQorTrace {
public:
    /** Takes the text of one line. @param iText the line, its line feed included @param iLength its length in bytes. */
    using Sink = void (*)(const char* iChannel, const char* iText, int iLength, void* iData);

    /**
     * Builds a channel.
     * @param iName the name it is turned on by; copied, a null pointer counts as ""
     * @param iTitle a title for people; copied, a null pointer counts as ""
     * @param iSink "STDOUT" for standard output, "STDERR" for standard error; with another text (or a null pointer)
     *        only a sink set by SetSink() sees the lines
     * @param iSize the length in bytes that a line of this channel rarely exceeds; 0 and below: no idea
     */
    BexQorTrace(const char* iName, const char* iTitle, const char* iSink, int iSize);
    ~BexQorTrace();
    BexQorTrace(const BexQorTrace&) = delete;  // a channel is known to the framework by its address
    BexQorTrace& operator=(const BexQorTrace&) = delete;

    /**
     * Turns every channel of a name on or off.
     * @return the number of channels of that name, 0 if there is none or the name is a null pointer.
     */
    static int SetOn(const char* iName, int iOn);
    /**
     * Sends every channel's lines to @p iSink instead of the named sinks, one call a line; null restores those.
     * When the call is back, the former sink is not running any more, unless the call came from within it.
     * The sink runs on the tracing thread, one line at a time; what it traces itself is dropped.
     * @param iData handed to every call as it is; the caller's
     */
    static void SetSink(Sink iSink, void* iData);

    /** @return 1 while the channel is on, else 0. */
    int IsOn() const noexcept { return on.load(std::memory_order_relaxed); }
    /** @return the channel's title. */
    const char* GetTitle() const noexcept { return title.c_str(); }

private:
    friend class BexQorTraceStep;
    enum class NamedSink { None, Stdout, Stderr };

    void Write(std::string_view iLine) const noexcept;

    std::string name;
    std::string title;
    NamedSink namedSink;
    std::size_t lineSize;
    std::atomic<int> on{0};
    BexQorTrace* next = nullptr;  // all channels of the process, under the framework's lock
    BexQorTrace* previous = nullptr;
};

#endif
