#include "memory/VXPool.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "memory/VXMemoryLimit_p.h"
#include "platform/system/VXSystemPages_p.h"

namespace {

#ifdef VXSWF_NO_POOL
constexpr std::size_t kLargestInPool = 0;
constexpr std::size_t kLeastMapped = SIZE_MAX;
#else
constexpr std::size_t kLargestInPool = VXPool::kLargest;
constexpr std::size_t kLeastMapped = VXPool::kMapped;
#endif

constexpr std::size_t kStep = 8;
constexpr std::size_t kSizes = VXPool::kLargest / kStep;
constexpr unsigned char kBlocksKept = 8;
constexpr std::size_t kChunkSize = std::size_t{64} << 10;
constexpr std::size_t kChunksKept = 64;

// Huge pages halve the first touch of some megabytes. Where memory was taken from the system for good in the
// meantime, as on a virtual machine, hundreds of megabytes of them cost twice what small pages do.
constexpr std::size_t kMostInHugePages = std::size_t{128} << 20;

constinit std::atomic<std::size_t> theMappedBytes{0};  // those of all chunks

/// Bytes from a place to the next multiple of a power of two.
std::size_t BytesUpTo(std::size_t unit, const void* place) {
    return -reinterpret_cast<std::uintptr_t>(place) & (unit - 1);
}

/// Addresses that belong together.
struct Range {
    unsigned char* begin = nullptr;
    unsigned char* end = nullptr;

    std::size_t GetSize() const { return static_cast<std::size_t>(end - begin); }
    void GiveBack() const {
        VXSystemPages::Unmap(begin, GetSize());
        theMappedBytes.fetch_sub(GetSize(), std::memory_order_relaxed);
    }
};

/// Blocks or chunks that nobody uses, each with the next one in its first bytes.
class Stack {
public:
    void Push(void* place) { m_Top = new (place) Entry{m_Top}; }
    /// Null when empty.
    void* Pop() {
        Entry* entry = m_Top;
        if (entry != nullptr) m_Top = entry->next;
        return entry;
    }

private:
    struct Entry {
        Entry* next;
    };
    Entry* m_Top = nullptr;
};

/// Lies at a multiple of its size, so that a block finds it.
struct alignas(16) Chunk {
    /// Blocks that live. A thread that cuts the chunk adds those it has handed out when it takes the next
    /// chunk. Until then frees of other threads make the count negative, and none of them finds it at 0.
    std::atomic<std::int32_t> live{0};

    static Chunk* Of(void* block) {
        return reinterpret_cast<Chunk*>(reinterpret_cast<std::uintptr_t>(block) & ~(kChunkSize - 1));
    }
};

/// What one thread has at hand. It counts in two chunks without an atomic operation: the one that it cuts,
/// and the one whose blocks it frees.
class Heap {
public:
    constexpr explicit Heap(unsigned char blocksKept) { std::fill(m_Room, m_Room + kSizes, blocksKept); }
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
    ~Heap();

    /// Null when the chunk is used up.
    void* Allocate(std::size_t size) {
        const std::size_t index = (size - 1) / kStep;
        if (void* block = m_Blocks[index].Pop(); block != nullptr) {
            ++m_Room[index];
            return block;
        }
        size = (index + 1) * kStep;
        // A size that is a multiple of 16 begins at one.
        unsigned char* block =
            m_Fresh.begin + (reinterpret_cast<std::uintptr_t>(m_Fresh.begin) & ~size & kStep);
        if (size > static_cast<std::size_t>(m_Fresh.end - block)) return nullptr;
        m_Fresh.begin = block + size;
        ++m_NumCut;
        return block;
    }
    /// False when the block is not kept and in neither chunk.
    bool Free(void* block, std::size_t size) noexcept {
        const std::size_t index = (size - 1) / kStep;
        if (m_Room[index] == 0) return FreeInChunk(block);
        --m_Room[index];
        m_Blocks[index].Push(block);
        return true;
    }

    /// False without memory.
    bool TakeChunk() noexcept;
    /// Frees the block and goes on freeing in its chunk.
    void FreeElsewhere(void* block) noexcept;

private:
    bool FreeInChunk(void* block) noexcept {
        const Chunk* chunk = Chunk::Of(block);
        if (chunk == m_Cut) {
            --m_NumCut;
        } else if (chunk == m_Freed) {
            ++m_NumFreed;
        } else {
            return false;
        }
        return true;
    }
    void AddToCount(Chunk* chunk, std::int32_t change) noexcept;
    bool MapChunks() noexcept;

    Range m_Fresh;  // of the chunk that is cut
    Chunk* m_Cut = nullptr;
    Chunk* m_Freed = nullptr;
    std::int32_t m_NumCut = 0;  // less those freed again
    std::int32_t m_NumFreed = 0;
    unsigned char m_Room[kSizes] = {};  // for blocks of each size
    Stack m_Blocks[kSizes];
    Stack m_Chunks;
    std::size_t m_NumChunks = 0;
    Range m_Mapped;    // chunks that were never used
    Range m_GoesBack;  // neighbours within a huge page, which is not split that way
};

Heap::~Heap() {
    for (Stack& blocks : m_Blocks) {
        while (void* block = blocks.Pop()) {
            if (!FreeInChunk(block)) FreeElsewhere(block);
        }
    }
    AddToCount(m_Cut, m_NumCut);
    AddToCount(m_Freed, -m_NumFreed);
    while (void* chunk = m_Chunks.Pop()) {
        auto* begin = static_cast<unsigned char*>(chunk);
        Range{begin, begin + kChunkSize}.GiveBack();
    }
    m_Mapped.GiveBack();
    m_GoesBack.GiveBack();
}

bool Heap::TakeChunk() noexcept {
    AddToCount(m_Cut, m_NumCut);
    m_Cut = nullptr;
    m_Fresh = {};
    m_NumCut = 0;
    if (!VXMemoryLimit::Spend(kChunkSize)) return false;
    void* place = m_Chunks.Pop();
    if (place != nullptr) {
        --m_NumChunks;
    } else if (m_Mapped.GetSize() != 0 || MapChunks()) {
        place = m_Mapped.begin;
        m_Mapped.begin += kChunkSize;
    } else {
        VXMemoryLimit::Regain(kChunkSize);
        return false;
    }
    m_Cut = new (place) Chunk;
    m_Fresh = {reinterpret_cast<unsigned char*>(m_Cut + 1), static_cast<unsigned char*>(place) + kChunkSize};
    return true;
}

bool Heap::MapChunks() noexcept {
    auto* map = static_cast<unsigned char*>(VXSystemPages::Map(2 * VXSystemPages::kHugeSize));
    if (map == nullptr) return false;
    // A small movie needs but a part of the first huge page.
    const bool isFirst = m_Mapped.begin == nullptr;
    const std::size_t before = BytesUpTo(VXSystemPages::kHugeSize, map);
    m_Mapped = {map + before, map + before + VXSystemPages::kHugeSize};
    VXSystemPages::Unmap(map, before);
    VXSystemPages::Unmap(m_Mapped.end, VXSystemPages::kHugeSize - before);
    const std::size_t mapped = theMappedBytes.fetch_add(VXSystemPages::kHugeSize, std::memory_order_relaxed);
    if (!isFirst && mapped < kMostInHugePages)
        VXSystemPages::PreferHuge(m_Mapped.begin, VXSystemPages::kHugeSize);
    return true;
}

void Heap::FreeElsewhere(void* block) noexcept {
    AddToCount(m_Freed, -m_NumFreed);
    m_Freed = Chunk::Of(block);
    m_NumFreed = 1;
}

/// Whoever brings the count of a chunk to 0 takes the chunk.
void Heap::AddToCount(Chunk* chunk, std::int32_t change) noexcept {
    if (chunk == nullptr || chunk->live.fetch_add(change, std::memory_order_acq_rel) != -change) return;
    VXMemoryLimit::Regain(kChunkSize);
    if (m_NumChunks < kChunksKept) {
        m_Chunks.Push(chunk);
        ++m_NumChunks;
        return;
    }
    auto* begin = reinterpret_cast<unsigned char*>(chunk);
    if (begin != m_GoesBack.end || BytesUpTo(VXSystemPages::kHugeSize, begin) == 0) {
        m_GoesBack.GiveBack();
        m_GoesBack.begin = begin;
    }
    m_GoesBack.end = begin + kChunkSize;
}

// A thread begins with an empty heap, which never changes, and ends with it.
constinit Heap theEmptyHeap(0);
[[gnu::tls_model("initial-exec")]] constinit thread_local Heap* theHeap = &theEmptyHeap;
constinit thread_local bool isEnding = false;

struct HeapOwner {
    ~HeapOwner() {
        theHeap = &theEmptyHeap;
        isEnding = true;
        delete heap;
    }
    Heap* heap;
};

/// Does `step` with the heap of the thread. One that is ending, or has no memory for a heap, gets a heap for
/// this step alone.
template <typename Step>
auto WithHeap(const Step& step) {
    if (theHeap == &theEmptyHeap && !isEnding) {
        if (auto* heap = new (std::nothrow) Heap(kBlocksKept); heap != nullptr) {
            thread_local const HeapOwner owner{heap};
            theHeap = heap;
        }
    }
    if (theHeap != &theEmptyHeap) return step(*theHeap);
    Heap brief(0);
    return step(brief);
}

// Apart from the way that nearly every block takes.

[[gnu::noinline]] void* AllocateFromNextChunk(std::size_t size) {
    void* block = WithHeap([size](Heap& heap) { return heap.TakeChunk() ? heap.Allocate(size) : nullptr; });
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

[[gnu::noinline]] void FreeInNextChunk(void* block) noexcept {
    WithHeap([block](Heap& heap) { heap.FreeElsewhere(block); });
}

/// A size of 0 is none for the pool.
bool IsInPool(std::size_t size) { return size - 1 < kLargestInPool; }

}  // namespace

void* VXPool::Allocate(std::size_t size) {
    if (!IsInPool(size)) {
        VXMemoryLimit::Charge(size);
        return ::operator new(size);
    }
    void* block = theHeap->Allocate(size);
    return block != nullptr ? block : AllocateFromNextChunk(size);
}

void VXPool::Free(void* block, std::size_t size) noexcept {
    if (block == nullptr) return;
    if (!IsInPool(size)) {
        VXMemoryLimit::Regain(size);
        ::operator delete(block);
    } else if (!theHeap->Free(block, size)) {
        FreeInNextChunk(block);
    }
}

void* VXPool::Resize(void* buffer, std::size_t oldSize, std::size_t size) noexcept {
    const bool wasMapped = oldSize >= kLeastMapped;
    const bool isMapped = size >= kLeastMapped;
    if (!wasMapped && !isMapped) return std::realloc(buffer, size);
    if (wasMapped && isMapped) {
        if (void* moved = VXSystemPages::Remap(buffer, oldSize, size); moved != nullptr) return moved;
    }
    void* resized = isMapped ? VXSystemPages::Map(size) : std::malloc(size);
    if (resized == nullptr) return nullptr;
    // All of it, so that it stays one mapping.
    if (isMapped && size <= kMostInHugePages) VXSystemPages::PreferHuge(resized, size);
    if (buffer != nullptr) std::memcpy(resized, buffer, std::min(oldSize, size));
    FreeBuffer(buffer, oldSize);
    return resized;
}

void VXPool::FreeBuffer(void* buffer, std::size_t size) noexcept {
    if (size < kLeastMapped) {
        std::free(buffer);
    } else if (buffer != nullptr) {
        VXSystemPages::Unmap(buffer, size);
    }
}

void VXPool::PreferHugePages(void* block, std::size_t size) noexcept {
    const std::size_t before = BytesUpTo(VXSystemPages::kHugeSize, block);
    if (size < before + VXSystemPages::kHugeSize) return;
    VXSystemPages::PreferHuge(static_cast<unsigned char*>(block) + before,
                              (size - before) & ~(VXSystemPages::kHugeSize - 1));
}

void VXPool::ReturnPages(void* part, std::size_t size) noexcept {
    const std::size_t before = BytesUpTo(VXSystemPages::kSize, part);
    if (size >= before + VXSystemPages::kSize)
        VXSystemPages::GiveUp(static_cast<unsigned char*>(part) + before,
                              (size - before) & ~(VXSystemPages::kSize - 1));
}
