#ifndef BexXmlMemory_H
#define BexXmlMemory_H

#include <xercesc/framework/MemoryManager.hpp>

/**
 * Memory for what Xerces-C builds on the framework's behalf. It comes from the plain allocation operator, and when it
 * cannot be had, std::bad_alloc leaves: Xerces-C's own manager throws a type that hosts do not know.
 */
class BexXmlMemory : public xercesc::MemoryManager {
public:
    /** The one instance; it outlives every document. */
    static BexXmlMemory* Instance();

    xercesc::MemoryManager* getExceptionMemoryManager() override;
    void* allocate(XMLSize_t iSize) override;
    void deallocate(void* iBlock) override;

private:
    BexXmlMemory() = default;
};

#endif
