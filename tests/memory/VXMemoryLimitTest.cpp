#include "memory/VXMemoryLimit_p.h"
#include "support/Test.h"

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

/// Blocks of one size that are freed with it.
struct Blocks {
    ~Blocks() { Free(); }

    /// Takes blocks until there are no more, up to `most` bytes. Answers the bytes taken.
    std::size_t Take(std::size_t most) {
        const std::size_t before = blocks.size();
        try {
            while ((blocks.size() - before) * size < most) blocks.push_back(VXPool::Allocate(size));
        } catch (const std::bad_alloc&) {
        }
        return (blocks.size() - before) * size;
    }
    void Free() {
        for (void* block : blocks) VXPool::Free(block, size);
        blocks.clear();
    }

    std::size_t size;
    std::vector<void*> blocks = {};
};

// Blocks out of pages, and large ones.
TEST(VXMemoryLimit, WhatIsFreedComesBackAndNoMore) {
    for (const std::size_t size : {std::size_t{40}, std::size_t{70000}}) {
        Blocks old{size};
        EXPECT_GE(old.Take(3 * kMegabyte), 3 * kMegabyte);
        Blocks blocks{size};
        const VXMemoryLimit limit(2 * kMegabyte);
        const std::size_t most = blocks.Take(100 * kMegabyte);
        EXPECT_GT(most, kMegabyte + kMegabyte / 2);
        EXPECT_LE(most, 2 * kMegabyte + 65536);  // the rest of a page that was in use
        blocks.Free();
        EXPECT_GE(blocks.Take(100 * kMegabyte) + 2 * 65536, most);
        blocks.Free();
        old.Free();
        EXPECT_LE(blocks.Take(100 * kMegabyte), 2 * kMegabyte + 2 * 65536) << "what was there does not count";
    }
}

TEST(VXMemoryLimit, OfSeveralTheTightestStops) {
    VXMemoryLimit limit(1000);
    for (const std::size_t most : {std::size_t{600}, std::size_t{400}}) {
        const VXMemoryLimit inner(600);
        VXMemoryLimit::Charge(most);
        EXPECT_THROW(VXMemoryLimit::Charge(1), std::bad_alloc);
    }
    limit.Raise(2);
    VXMemoryLimit::Charge(2);
    EXPECT_THROW(VXMemoryLimit::Charge(1), std::bad_alloc);
}

}  // namespace
