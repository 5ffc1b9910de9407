#ifndef AllocationWatch_H
#define AllocationWatch_H

#include <cstddef>

/**
 * A view into the allocation operators of this test program, which it replaces: what is alive, how much is asked for,
 * and array allocations that fail on demand, what is released in which
 * order. One object of each kind at a time; counts take in all threads.
 */
namespace AllocationWatch {

/** Arrays made by operator new[] and not yet released. */
long LiveArrays();
/** Blocks made by operator new or operator new[] and not yet released. */
long LiveBlocks();

/** Makes array allocations of @p iBytes and more throw std::bad_alloc while it lives. */
class FailingArrays {
public:
    explicit FailingArrays(std::size_t iBytes);
    ~FailingArrays();
    FailingArrays(const FailingArrays&) = delete;
    FailingArrays& operator=(const FailingArrays&) = delete;
};

/** Makes one allocation throw std::bad_alloc, of arrays and others alike: the one behind @p iBefore others. */
class FailingRequest {
public:
    explicit FailingRequest(long iBefore);
    ~FailingRequest();
    FailingRequest(const FailingRequest&) = delete;
    FailingRequest& operator=(const FailingRequest&) = delete;

    /** Whether there were as many allocations as that. */
    bool Reached() const;
};

/** Adds up the bytes asked for while it lives. */
class Requests {
public:
    Requests();
    /** All bytes asked for, those released again included. */
    std::size_t Bytes() const;

private:
    std::size_t before;
};

/** Remembers up to 64 blocks of @p iBytes made by the plain operator new until operator delete lets go of them. */
class PlainBlocks {
public:
    explicit PlainBlocks(std::size_t iBytes);
    ~PlainBlocks();
    PlainBlocks(const PlainBlocks&) = delete;
    PlainBlocks& operator=(const PlainBlocks&) = delete;

    /** Whether @p iBlock is such a block and alive. */
    bool Holds(const void* iBlock) const;
};

/** Remembers the first 64 blocks and arrays that are released while it lives, in their order. */
class Releases {
public:
    Releases();
    ~Releases();
    Releases(const Releases&) = delete;
    Releases& operator=(const Releases&) = delete;

    /** The place of @p iBlock in that order, from 0; -1 when it was not released. */
    int PlaceOf(const void* iBlock) const;
};

}  // namespace AllocationWatch

#endif
