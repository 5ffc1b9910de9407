#include "BexXmlMemory.h"

#include <xercesc/dom/DOMImplementation.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <new>

namespace {

/**
 * The blocks given to one constructor of Xerces-C on this thread. When memory ends in the middle of it, what a document
 * was given up to there is lost to everybody else.
 */
class Construction {
public:
    Construction() { current = this; }
    ~Construction() {
        current = nullptr;
        for (void* block : blocks) {
            ::operator delete(block);
        }
    }
    Construction(const Construction&) = delete;
    Construction& operator=(const Construction&) = delete;

    /** The blocks belong to what was constructed. */
    void Succeed() { blocks.fill(nullptr); }

    static void Given(void* iBlock) { Replace(nullptr, iBlock); }
    static void Returned(void* iBlock) { Replace(iBlock, nullptr); }

private:
    static void Replace(void* iOld, void* iNew) {
        if (current != nullptr) {
            auto* const place = std::find(current->blocks.begin(), current->blocks.end(), iOld);
            if (place != current->blocks.end()) {
                *place = iNew;
            }
        }
    }

    static thread_local Construction* current;
    std::array<void*, 32> blocks{};  // several times as many as a document is made of
};

thread_local Construction* Construction::current = nullptr;

}  // namespace

BexXmlMemory* BexXmlMemory::Instance() {
    alignas(BexXmlMemory) static std::byte place[sizeof(BexXmlMemory)];
    static auto* const instance = new (place) BexXmlMemory;  // never destroyed: a handle may outlive all else
    return instance;
}

xercesc::DOMDocument* BexXmlMemory::NewDocument() {
    Construction construction;
    xercesc::DOMDocument* document = xercesc::DOMImplementation::getImplementation()->createDocument(Instance());
    construction.Succeed();
    return document;
}

xercesc::MemoryManager* BexXmlMemory::getExceptionMemoryManager() {
    return this;
}

void* BexXmlMemory::allocate(XMLSize_t iSize) {
    void* block = ::operator new(iSize);
    Construction::Given(block);
    return block;
}

void BexXmlMemory::deallocate(void* iBlock) {
    if (iBlock != nullptr) {
        Construction::Returned(iBlock);
        ::operator delete(iBlock);
    }
}
