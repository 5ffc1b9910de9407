#ifndef BexMemorySource_H
#define BexMemorySource_H

#include <xercesc/framework/MemBufInputSource.hpp>

#include <string_view>

/** An input source over memory that tells where the memory is, so that it can be looked at without a copy. */
class BexMemorySource : public xercesc::MemBufInputSource {
public:
    /** Over @p iBytes, which are not copied; @p iSystemId is NUL-terminated. */
    BexMemorySource(std::string_view iBytes, const XMLCh* iSystemId);

    std::string_view Bytes() const { return bytes; }

private:
    std::string_view bytes;
};

#endif
