#include "ParseArena.h"

#include "BexXmlMemory.h"

#include <algorithm>
#include <new>

xercesc::MemoryManager* ParseArena::getExceptionMemoryManager() {
    return BexXmlMemory::Instance();  // an exception may outlive the arena
}

void* ParseArena::allocate(XMLSize_t iSize) {
    if (iSize <= kLargest) {
        return AllocateSmall(std::max<std::size_t>((iSize + kUnit - 1) / kUnit, 1));
    }
    auto* header = static_cast<Header*>(::operator new(sizeof(Header) + iSize));
    header->sizeClass = 0;
    return header + 1;
}

void ParseArena::deallocate(void* iBlock) {
    if (iBlock == nullptr) {
        return;
    }
    Header* header = static_cast<Header*>(iBlock) - 1;
    if (header->sizeClass == 0) {
        ::operator delete(header);
        return;
    }
    Free*& first = free[header->sizeClass];
    first = new (iBlock) Free{first};
}

void* ParseArena::AllocateSmall(std::size_t iSizeClass) {
    if (Free* block = free[iSizeClass]) {
        free[iSizeClass] = block->next;
        return block;
    }
    const std::size_t size = sizeof(Header) + iSizeClass * kUnit;
    if (unusedSize < size) {
        chunks.push_back(std::unique_ptr<std::byte[]>(new std::byte[kChunk]));
        unused = chunks.back().get();
        unusedSize = kChunk;
    }
    auto* header = new (unused) Header;
    unused += size;
    unusedSize -= size;
    header->sizeClass = iSizeClass;
    return header + 1;
}
