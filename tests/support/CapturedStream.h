#ifndef CapturedStream_H
#define CapturedStream_H

#include <iostream>
#include <sstream>
#include <string>

/** Collects what goes to std::cout or std::cerr while it lives. */
class CapturedStream {
public:
    explicit CapturedStream(std::ostream& ioStream) : stream(ioStream), former(ioStream.rdbuf(text.rdbuf())) {}
    ~CapturedStream() { stream.rdbuf(former); }
    CapturedStream(const CapturedStream&) = delete;
    CapturedStream& operator=(const CapturedStream&) = delete;

    std::string Text() const { return text.str(); }

private:
    std::ostringstream text;
    std::ostream& stream;
    std::streambuf* former;
};

#endif
