#include "BexXMLParser.h"

#include "BexMemorySource.h"
#include "DOMString.h"

#include <xercesc/util/PlatformUtils.hpp>

#include <mutex>

namespace {

constexpr int kFailure = static_cast<int>(0x80004005);

/** The framework's one start of Xerces-C, given back when the library is unloaded. */
class XercesStart {
public:
    int Make() {
        const std::lock_guard<std::mutex> guard(lock);  // Xerces-C's own start is not safe for threads
        if (!made) {
            try {
                xercesc::XMLPlatformUtils::Initialize();
                made = true;
            } catch (...) {
                return kFailure;
            }
        }
        return 0;
    }
    ~XercesStart() {
        if (made) {
            xercesc::XMLPlatformUtils::Terminate();
        }
    }

private:
    std::mutex lock;
    bool made = false;
};

}  // namespace

int BexXMLParser::Initialize() {
    static XercesStart start;
    return start.Make();
}

InputSource* BexXMLParser::CreateMemBufInputSource(const char* iBuffer, int iLength, const char* iSystemId) {
    if (iBuffer == nullptr || iLength < 0 || Initialize() != 0) {
        return nullptr;
    }
    return new BexMemorySource(std::string_view(iBuffer, static_cast<std::size_t>(iLength)),
                               DOMString(iSystemId == nullptr ? "" : iSystemId).rawBuffer());
}
