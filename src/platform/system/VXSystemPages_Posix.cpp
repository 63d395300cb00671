#include <sys/mman.h>

#include "platform/system/VXSystemPages_p.h"

void* VXSystemPages::Map(std::size_t size) {
    void* map = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return map == MAP_FAILED ? nullptr : map;
}

void* VXSystemPages::Remap([[maybe_unused]] void* map, [[maybe_unused]] std::size_t oldSize,
                           [[maybe_unused]] std::size_t size) {
#ifdef MREMAP_MAYMOVE
    void* moved = mremap(map, oldSize, size, MREMAP_MAYMOVE);
    return moved == MAP_FAILED ? nullptr : moved;
#else
    return nullptr;
#endif
}

void VXSystemPages::Unmap(void* start, std::size_t size) {
    // A process with too many mappings cannot split one. It keeps the addresses then, and not the memory.
    if (size != 0 && munmap(start, size) != 0) GiveUp(start, size);
}

void VXSystemPages::GiveUp(void* start, std::size_t size) { madvise(start, size, MADV_DONTNEED); }

void VXSystemPages::PreferHuge([[maybe_unused]] void* start, [[maybe_unused]] std::size_t size) {
#ifdef MADV_HUGEPAGE
    madvise(start, size, MADV_HUGEPAGE);
#endif
}
