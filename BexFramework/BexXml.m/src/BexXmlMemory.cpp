#include "BexXmlMemory.h"

#include <new>

BexXmlMemory* BexXmlMemory::Instance() {
    static BexXmlMemory instance;
    return &instance;
}

xercesc::MemoryManager* BexXmlMemory::getExceptionMemoryManager() {
    return this;
}

void* BexXmlMemory::allocate(XMLSize_t iSize) {
    return ::operator new(iSize);
}

void BexXmlMemory::deallocate(void* iBlock) {
    ::operator delete(iBlock);
}
