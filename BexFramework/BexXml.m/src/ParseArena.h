#ifndef ParseArena_H
#define ParseArena_H

#include <xercesc/framework/MemoryManager.hpp>

#include <cstddef>
#include <memory>
#include <vector>

/**
 * Memory for what a parser keeps while it reads one text: hundreds of small blocks, all let go together. Small blocks
 * that are given back serve again for others of their size, large ones go back at once, so nothing grows that would not
 * with the plain allocation operator. For one thread; when memory cannot be had, std::bad_alloc leaves.
 */
class ParseArena : public xercesc::MemoryManager {
public:
    ParseArena() = default;
    ParseArena(const ParseArena&) = delete;  // blocks know their arena
    ParseArena& operator=(const ParseArena&) = delete;

    xercesc::MemoryManager* getExceptionMemoryManager() override;
    void* allocate(XMLSize_t iSize) override;
    void deallocate(void* iBlock) override;

private:
    static constexpr std::size_t kUnit = alignof(std::max_align_t);  // sizes are multiples of it
    static constexpr std::size_t kLargest = 512;                     // of a small block, in bytes
    static constexpr std::size_t kChunk = 16384;                     // taken at a time for small blocks

    /** What stands before a block, in one unit. */
    union Header {
        std::size_t sizeClass;  // in units; 0 for a large block
        std::max_align_t alignment;
    };
    /** A block given back. */
    struct Free {
        Free* next;
    };
    static_assert(sizeof(Header) % kUnit == 0, "a block has to be aligned for anything");

    void* AllocateSmall(std::size_t iSizeClass);

    Free* free[kLargest / kUnit + 1] = {};  // the blocks given back, by size
    std::vector<std::unique_ptr<std::byte[]>> chunks;
    std::byte* unused = nullptr;  // the rest of the last chunk
    std::size_t unusedSize = 0;
};

#endif
