#include "BexXMLParser.h"

#include "BexMemorySource.h"
#include "BexXmlMemory.h"
#include "DOMString.h"

#include <xercesc/util/DefaultPanicHandler.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace {

constexpr int kFailure = static_cast<int>(0x80004005);

/** Throws where Xerces-C would end the process. */
class ThrowInPanic : public xercesc::PanicHandler {
public:
    void panic(const PanicReasons iReason) override { throw iReason; }
};

/** Whether there is the memory that a start takes, and some more; all of it is given back. */
bool IsThereMemoryForAStart() {
    constexpr std::size_t kBlocks = 6000;
    constexpr std::size_t kBlockSize = 256;
    try {
        std::vector<std::unique_ptr<char[]>> blocks(kBlocks);
        for (std::unique_ptr<char[]>& block : blocks) {
            block.reset(new char[kBlockSize]);
        }
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

/** The framework's one start of Xerces-C, given back when the library is unloaded. */
class XercesStart {
public:
    int Make() {
        const std::lock_guard<std::mutex> guard(lock);  // Xerces-C's own start is not safe for threads
        if (state == State::kNotMade) {
            try {
                TryToMake();
            } catch (...) {
                state = State::kBroken;
            }
        }
        return state == State::kMade ? 0 : kFailure;
    }
    ~XercesStart() {
        if (state == State::kMade) {
            xercesc::XMLPlatformUtils::Terminate();
        }
    }

private:
    enum class State {
        kNotMade,
        kMade,
        kBroken,  // half made, which Xerces-C can neither complete nor take back
    };

    void TryToMake() {
        if (xercesc::XMLPlatformUtils::fgMemoryManager != nullptr) {  // a host has started it: this is counted only
            xercesc::XMLPlatformUtils::Initialize();
            state = State::kMade;
        } else if (IsThereMemoryForAStart()) {
            MakeFirst();
            state = State::kMade;
        }
    }

    /** A first start that fails, for want of memory, ends the process as Xerces-C has it. Here it throws. */
    static void MakeFirst() {
        ThrowInPanic panic;
        try {
            xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, &panic);
            // from here on Xerces-C behaves as when a host starts it
            xercesc::XMLPlatformUtils::fgDefaultPanicHandler = new xercesc::DefaultPanicHandler();
            xercesc::XMLPlatformUtils::fgUserPanicHandler = nullptr;
        } catch (...) {
            xercesc::XMLPlatformUtils::fgUserPanicHandler = nullptr;
            throw;
        }
    }

    std::mutex lock;
    State state = State::kNotMade;
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
    return new (BexXmlMemory::Instance()) BexMemorySource(std::string_view(iBuffer, static_cast<std::size_t>(iLength)),
                                                          DOMString(iSystemId == nullptr ? "" : iSystemId).rawBuffer());
}
