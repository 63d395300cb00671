#pragma once

#include <cstddef>

/// Pages of memory, straight from the system. VXSystemPages_Portable.cpp, for systems where they cannot be had
/// this way, has none; the general allocator then serves alone.
///
/// Part of the movie library, whose hosts may bring a platform library of their own.
class VXSystemPages {
public:
    /// The granularity of what is given up.
    static constexpr std::size_t kSize = 4096;
    static constexpr std::size_t kHugeSize = std::size_t{2} << 20;

    /// Zeroed pages, which take memory when they are first written. Null without memory.
    static void* Map(std::size_t size);
    /// Moves a mapping to a new size without copying. Null where that is not possible, as for one that consists
    /// of several; it then stays.
    static void* Remap(void* map, std::size_t oldSize, std::size_t size);
    /// May take a part of a mapping.
    static void Unmap(void* start, std::size_t size);
    /// Gives the memory of whole pages back. The addresses stay and read as zero.
    static void GiveUp(void* start, std::size_t size);
    /// Asks for pages of `kHugeSize`. Advice; a system that does not take it has lost nothing.
    static void PreferHuge(void* start, std::size_t size);
};
