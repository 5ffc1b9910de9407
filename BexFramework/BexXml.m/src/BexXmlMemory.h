#ifndef BexXmlMemory_H
#define BexXmlMemory_H

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include <new>

/**
 * Memory for what Xerces-C builds on the framework's behalf. It comes from the plain allocation operator, and when it
 * cannot be had, std::bad_alloc leaves: Xerces-C's own manager throws a type that hosts do not know.
 */
class BexXmlMemory : public xercesc::MemoryManager {
public:
    /** The one instance; it outlives every document. */
    static BexXmlMemory* Instance();
    /** A new empty document in this memory, the caller's to release. When there is no memory for it, nothing stays. */
    [[nodiscard]] static xercesc::DOMDocument* NewDocument();

    xercesc::MemoryManager* getExceptionMemoryManager() override;
    void* allocate(XMLSize_t iSize) override;
    void deallocate(void* iBlock) override;

private:
    BexXmlMemory() = default;
};

/** Runs what Xerces-C does with memory of its own, whatever it is asked to use: its type of exception stays here. */
template <typename Operation>
auto InForeignMemory(const Operation& iOperation) {
    try {
        return iOperation();
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
}

#endif
