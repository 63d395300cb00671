#pragma once

#include <cstddef>
#include <new>

#include "platform/VXExport.h"

/// Storage for small objects that come by the hundred thousand: tags, list nodes, short bodies, records. A
/// block of the general allocator carries a header of its own and starts at a multiple of 16; a block from
/// here carries nothing and comes at a multiple of 8, or of 16 when its size is one. Sizes above `kLargest`
/// go to the general allocator.
///
/// A thread cuts its blocks from the front of a chunk of 64 KiB, one behind the other. Any thread may free
/// them. A chunk counts the blocks in it that live, and is free when the last one is; so one block holds a
/// chunk. A thread keeps up to 8 freed blocks of each size for its next ones, and up to 4 MiB of free
/// chunks; the rest goes back to the system, and all of it when the thread ends. Nothing here takes a lock,
/// and a process may fork at any time.
///
/// Built with VXSWF_POOL off, as for the sanitizers, every block comes from the general allocator.
class VXSWF_API VXPool {
public:
    static constexpr std::size_t kLargest = 512;
    static constexpr std::size_t kMapped = std::size_t{1} << 20;

    /// Throws std::bad_alloc when there is no memory, and nothing else.
    [[nodiscard]] static void* Allocate(std::size_t size);
    /// `size` must be the one that was asked for. Null is ignored.
    static void Free(void* block, std::size_t size) noexcept;

    /// Gives a buffer a new size, which is not 0, and keeps what fits; a null one begins with `oldSize` 0.
    /// Null without memory, and the old buffer then stays.
    [[nodiscard]] static void* Resize(void* buffer, std::size_t oldSize, std::size_t size) noexcept;
    /// Frees what `Resize` gave; `size` must be the last one asked for. Null is ignored.
    static void FreeBuffer(void* buffer, std::size_t size) noexcept;

    /// Asks the system to back a large block, one that nobody has written yet and that will be written
    /// soon, with huge pages: the first touch of each small page costs more than filling it. Small blocks are
    /// left alone.
    static void PreferHugePages(void* block, std::size_t size) noexcept;
    /// Gives the pages that lie whole in a part of a buffer back to the system; the part is not used again.
    static void ReturnPages(void* part, std::size_t size) noexcept;
};

/// A base that places objects made with `new`, a host's included, in the pool. A class with subclasses needs
/// a virtual destructor, so that `delete` tells the right size.
class VXPooled {
public:
    static void* operator new(std::size_t size) { return VXPool::Allocate(size); }
    static void operator delete(void* block, std::size_t size) noexcept { VXPool::Free(block, size); }
    // The other forms, which those above would hide: in a place of the caller's, for a host's class with an
    // alignment that blocks do not have.
    static void* operator new(std::size_t, void* place) noexcept { return place; }
    static void operator delete(void*, void*) noexcept {}
    static void* operator new(std::size_t size, std::align_val_t alignment) {
        return ::operator new(size, alignment);
    }
    static void operator delete(void* block, std::align_val_t alignment) noexcept {
        ::operator delete(block, alignment);
    }
};

/// Puts the nodes of a standard container in the pool.
template <typename T>
class VXPoolAllocator {
public:
    using value_type = T;

    VXPoolAllocator() = default;
    template <typename U>
    VXPoolAllocator(const VXPoolAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        static_assert(alignof(T) <= 8, "blocks of the pool lie at multiples of 8");
        return static_cast<T*>(VXPool::Allocate(count * sizeof(T)));
    }
    void deallocate(T* block, std::size_t count) noexcept { VXPool::Free(block, count * sizeof(T)); }

    friend bool operator==(const VXPoolAllocator&, const VXPoolAllocator&) { return true; }
};
