#include "bitstream/VXPool.h"

#include <sched.h>
#include <sys/mman.h>
#include <sys/single_threaded.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "bitstream/VXMemoryLimit_p.h"

#if defined(__SANITIZE_ADDRESS__)
#define VX_POOL_PASSES_THROUGH 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(memory_sanitizer)
#define VX_POOL_PASSES_THROUGH 1
#endif
#endif

namespace {

void* AllocateLarge(std::size_t size) {
    VXMemoryLimit::Charge(size);
    return ::operator new(size);
}

void FreeLarge(void* block, std::size_t size) noexcept {
    VXMemoryLimit::Regain(size);
    ::operator delete(block);
}

}  // namespace

#ifdef VX_POOL_PASSES_THROUGH

void* VXPool::Allocate(std::size_t size) { return AllocateLarge(size); }

void VXPool::Free(void* block, std::size_t size) noexcept {
    if (block != nullptr) FreeLarge(block, size);
}

void* VXPool::Resize(void* buffer, std::size_t, std::size_t size) noexcept {
    return std::realloc(buffer, size);
}

void VXPool::FreeBuffer(void* buffer, std::size_t) noexcept { std::free(buffer); }

#else

namespace {

// The system hands out regions, a region is cut into pages, a page into blocks of one size. Regions have the
// size of a huge page, since the first touch of fresh memory costs more than everything else that a small
// object needs.
constexpr std::size_t kRegionSize = std::size_t{2} << 20;
constexpr std::size_t kPageSize = std::size_t{64} << 10;
constexpr std::size_t kStep = 8;
constexpr std::size_t kSizes = VXPool::kLargest / kStep;
constexpr std::size_t kPagesInReserve = 64;

struct Block {
    Block* next;
};

struct alignas(16) Page {
    Page* next;
    Page* previous;
    Block* free;
    unsigned char* fresh;  // blocks from here to the end were never handed out
    std::uint32_t live;
    std::uint32_t blockSize;
};

struct PageList {
    Page* first = nullptr;

    void Push(Page* page) {
        page->previous = nullptr;
        page->next = first;
        if (first != nullptr) first->previous = page;
        first = page;
    }
    void Remove(Page* page) {
        (page->previous != nullptr ? page->previous->next : first) = page->next;
        if (page->next != nullptr) page->next->previous = page->previous;
    }
};

class Guard {
public:
    explicit Guard(std::atomic_flag& lock) : m_Lock(lock) {
        while (m_Lock.test_and_set(std::memory_order_acquire)) sched_yield();
    }
    ~Guard() { m_Lock.clear(std::memory_order_release); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

private:
    std::atomic_flag& m_Lock;
};

unsigned char* EndOf(Page* page) { return reinterpret_cast<unsigned char*>(page) + kPageSize; }

bool IsFull(Page* page) { return page->free == nullptr && page->fresh + page->blockSize > EndOf(page); }

// Everything below is guarded by one lock and never destroyed: blocks may be freed while the process ends.
class Store {
public:
    // A process with one thread, which is what most hosts are, pays for no atomic operation.

    void* Allocate(std::size_t index) {
        if (__libc_single_threaded) return TakeBlock(index);
        const Guard guard(m_Lock);
        return TakeBlock(index);
    }

    void Free(void* block, std::size_t index) {
        if (__libc_single_threaded) return GiveBlock(block, index);
        const Guard guard(m_Lock);
        GiveBlock(block, index);
    }

private:
    void* TakeBlock(std::size_t index) {
        Page* page = m_Usable[index].first;
        if (page == nullptr) {
            page = AddPage(index);
            if (page == nullptr) return nullptr;
        }
        ++page->live;
        void* block = page->free;
        if (block != nullptr) {
            page->free = page->free->next;
        } else {
            block = page->fresh;
            page->fresh += page->blockSize;
        }
        if (IsFull(page)) m_Usable[index].Remove(page);
        return block;
    }

    void GiveBlock(void* pointer, std::size_t index) {
        auto* page = reinterpret_cast<Page*>(reinterpret_cast<std::uintptr_t>(pointer) & ~(kPageSize - 1));
        if (IsFull(page)) m_Usable[index].Push(page);
        auto* block = static_cast<Block*>(pointer);
        block->next = page->free;
        page->free = block;
        if (--page->live == 0) {
            m_Usable[index].Remove(page);
            GivePage(page);
        }
    }

    /// Apart from the way that nearly every block takes.
    [[gnu::noinline]] Page* AddPage(std::size_t index) {
        if (!VXMemoryLimit::Spend(kPageSize)) return nullptr;
        Page* page = TakePage(m_IsOften[index]);
        if (page == nullptr) {
            VXMemoryLimit::Regain(kPageSize);
            return nullptr;
        }
        m_IsOften[index] = true;
        page->free = nullptr;
        page->fresh = reinterpret_cast<unsigned char*>(page + 1);
        page->live = 0;
        page->blockSize = static_cast<std::uint32_t>((index + 1) * kStep);
        m_Usable[index].Push(page);
        return page;
    }

    Page* TakePage(bool isFilledSoon) {
        Page* page = m_Reserve.first;
        if (page != nullptr) {
            m_Reserve.Remove(page);
            --m_PagesInReserve;
            return page;
        }
        page = m_Returned.first;
        if (page != nullptr) {
            m_Returned.Remove(page);
        } else {
            if (m_Fresh == m_FreshEnd && !MapRegion()) return nullptr;
            page = reinterpret_cast<Page*>(m_Fresh);
            m_Fresh += kPageSize;
        }
        if (isFilledSoon) VXPool::TouchPages(page, kPageSize);
        return page;
    }

    [[gnu::noinline]] void GivePage(Page* page) {
        VXMemoryLimit::Regain(kPageSize);
        if (m_PagesInReserve < kPagesInReserve) {
            m_Reserve.Push(page);
            ++m_PagesInReserve;
            return;
        }
        // The first piece stays, since it holds the list.
        madvise(reinterpret_cast<unsigned char*>(page) + kPiece, kPageSize - kPiece, MADV_DONTNEED);
        m_Returned.Push(page);
    }

    bool MapRegion() {
        void* map =
            mmap(nullptr, 2 * kRegionSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (map == MAP_FAILED) return false;
        const auto start = reinterpret_cast<std::uintptr_t>(map);
        const std::uintptr_t region = (start + kRegionSize - 1) & ~(kRegionSize - 1);
        if (region != start) munmap(map, region - start);
        if (region != start + kRegionSize) {
            munmap(reinterpret_cast<void*>(region + kRegionSize), start + kRegionSize - region);
        }
        // A small movie stays within the first region and should not take two megabytes for it.
        if (m_FreshEnd != 0) madvise(reinterpret_cast<void*>(region), kRegionSize, MADV_HUGEPAGE);
        m_Fresh = region;
        m_FreshEnd = region + kRegionSize;
        return true;
    }

    static constexpr std::size_t kPiece = 4096;

    std::atomic_flag m_Lock;
    PageList m_Usable[kSizes];    // pages with a block to give, for each size
    bool m_IsOften[kSizes] = {};  // sizes that have filled a page
    PageList m_Reserve;           // empty pages whose memory is kept
    PageList m_Returned;          // empty pages whose memory the system has
    std::size_t m_PagesInReserve = 0;
    std::uintptr_t m_Fresh = 0;  // what the newest region has left
    std::uintptr_t m_FreshEnd = 0;
};

constinit Store theStore;

constexpr std::size_t IndexOf(std::size_t size) { return size == 0 ? 0 : (size - 1) / kStep; }

}  // namespace

void* VXPool::Allocate(std::size_t size) {
    if (size > kLargest) return AllocateLarge(size);
    void* block = theStore.Allocate(IndexOf(size));
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void VXPool::Free(void* block, std::size_t size) noexcept {
    if (block == nullptr) return;
    if (size > kLargest) {
        FreeLarge(block, size);
    } else {
        theStore.Free(block, IndexOf(size));
    }
}

void* VXPool::Resize(void* buffer, std::size_t oldSize, std::size_t size) noexcept {
    const bool wasMapped = oldSize >= kMapped;
    const bool isMapped = size >= kMapped;
    if (!wasMapped && !isMapped) return std::realloc(buffer, size);
    void* resized = nullptr;
    if (wasMapped && isMapped) {
        // Fails for a buffer that consists of several mappings, as one does of which a part was advised on.
        resized = mremap(buffer, oldSize, size, MREMAP_MAYMOVE);
        if (resized != MAP_FAILED) return resized;
    }
    if (isMapped) {
        resized = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (resized == MAP_FAILED) return nullptr;
        // All of it, so that it stays one mapping. One that takes over what was written is there already.
        if (buffer == nullptr) madvise(resized, size, MADV_HUGEPAGE);
    } else {
        resized = std::malloc(size);
        if (resized == nullptr) return nullptr;
    }
    if (buffer != nullptr) std::memcpy(resized, buffer, std::min(oldSize, size));
    FreeBuffer(buffer, oldSize);
    return resized;
}

void VXPool::FreeBuffer(void* buffer, std::size_t size) noexcept {
    if (size < kMapped) {
        std::free(buffer);
    } else if (buffer != nullptr) {
        munmap(buffer, size);
    }
}

#endif

namespace {

/// The part of a block that consists of whole units.
struct Whole {
    std::uintptr_t start;
    std::size_t size;
};

Whole WholeUnits(void* block, std::size_t size, std::uintptr_t unit) {
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t start = (begin + unit - 1) & ~(unit - 1);
    const std::uintptr_t end = (begin + size) & ~(unit - 1);
    return {start, end > start ? end - start : 0};
}

}  // namespace

// All are advice; a system that does not take it has lost nothing.

void VXPool::PreferHugePages(void* block, std::size_t size) noexcept {
    const Whole whole = WholeUnits(block, size, std::size_t{2} << 20);
    if (whole.size != 0) madvise(reinterpret_cast<void*>(whole.start), whole.size, MADV_HUGEPAGE);
}

void VXPool::ReturnPages(void* part, std::size_t size) noexcept {
    const Whole whole = WholeUnits(part, size, 4096);
    if (whole.size != 0) madvise(reinterpret_cast<void*>(whole.start), whole.size, MADV_DONTNEED);
}

void VXPool::TouchPages(void* block, std::size_t size) noexcept {
#ifdef MADV_POPULATE_WRITE
    const Whole whole = WholeUnits(block, size, 4096);
    if (whole.size != 0) madvise(reinterpret_cast<void*>(whole.start), whole.size, MADV_POPULATE_WRITE);
#endif
}
