#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <thread>

#include "support/Test.h"

namespace {

struct Piece {
    unsigned char* bytes;
    std::size_t size;
    unsigned char mark;
};

void CheckAndFree(const Piece& piece) {
    EXPECT_EQ(std::count(piece.bytes, piece.bytes + piece.size, piece.mark), static_cast<int>(piece.size));
    VXPool::Free(piece.bytes, piece.size);
}

/// Takes and frees blocks of all sizes in a scrambled order; no two may ever overlap.
void Churn(unsigned int seed, int rounds) {
    std::vector<Piece> pieces;
    unsigned int random = seed;
    const auto next = [&random] { return (random = random * 1664525u + 1013904223u) >> 8; };
    for (int i = 0; i < rounds; ++i) {
        if (!pieces.empty() && next() % 5 < 2) {
            Piece& piece = pieces[next() % pieces.size()];
            CheckAndFree(piece);
            piece = pieces.back();
            pieces.pop_back();
        } else {
            const std::size_t size = next() % (VXPool::kLargest + 40);
            auto* bytes = static_cast<unsigned char*>(VXPool::Allocate(size));
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 8, 0u);
            const auto mark = static_cast<unsigned char>(next());
            std::memset(bytes, mark, size);
            pieces.push_back({bytes, size, mark});
        }
    }
    for (const Piece& piece : pieces) CheckAndFree(piece);
}

TEST(VXPool, BlocksOfAllSizesKeepTheirBytes) {
    VXPool::Free(nullptr, 8);
    Churn(1, 60000);
}

TEST(VXPool, ManyChunksComeAndGo) {
    // More than a thread keeps, twice: the second round lives in chunks that went back to the system.
    for (const auto round : std::initializer_list<unsigned char>{1, 2}) {
        std::vector<Piece> pieces;
        for (int i = 0; i < 60000; ++i) {
            pieces.push_back({static_cast<unsigned char*>(VXPool::Allocate(200)), 200, round});
            std::memset(pieces.back().bytes, round, 200);
        }
        for (const Piece& piece : pieces) CheckAndFree(piece);
    }
}

struct Base : VXPooled {
    virtual ~Base() = default;
};
struct Derived : Base {
    unsigned char bytes[300] = {};
};

TEST(VXPool, HostsMayAlignTheirClasses) {
    struct alignas(16) Half : Base {};
    struct alignas(64) Line : Base {};
    std::vector<std::unique_ptr<Base>> objects;
    for (int i = 0; i < 100; ++i) {
        objects.push_back(std::make_unique<Half>());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(objects.back().get()) % 16, 0u);
        objects.push_back(std::make_unique<Line>());
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(objects.back().get()) % 64, 0u);
    }
}

// Over the size from which on a buffer is a mapping, and over that of a huge page.
TEST(VXPool, BuffersOfAllSizesKeepTheirBytes) {
    const std::size_t sizes[] = {1000, VXPool::kMapped - 1, VXPool::kMapped, 5000000, 12345678, 5000001, 900};
    for (const std::size_t first : sizes) {
        for (const std::size_t second : sizes) {
            auto* bytes = static_cast<unsigned char*>(VXPool::Resize(nullptr, 0, first));
            std::memset(bytes, 7, first);
            VXPool::PreferHugePages(bytes, first);
            bytes = static_cast<unsigned char*>(VXPool::Resize(bytes, first, second));
            ASSERT_NE(bytes, nullptr) << first << " to " << second;
            const std::size_t kept = std::min(first, second);
            EXPECT_EQ(std::count(bytes, bytes + kept, 7), static_cast<std::ptrdiff_t>(kept));
            std::memset(bytes, 8, second);
            VXPool::FreeBuffer(bytes, second);
        }
    }
}

TEST(VXPool, NullIsNoBuffer) {
    // The page that lies lowest, as a program may have one there that is linked to a fixed address.
    void* const place = reinterpret_cast<void*>(std::uintptr_t{65536});
    void* const page = mmap(place, 4096, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    ASSERT_EQ(page, place);
    VXPool::FreeBuffer(nullptr, VXPool::kMapped);
    EXPECT_EQ(msync(page, 4096, MS_ASYNC), 0) << "it is still mapped";
    munmap(page, 4096);
}

TEST(VXPool, ThreadsMayFreeWhatOthersTook) {
    std::vector<std::thread> threads;
    for (unsigned int i = 0; i < 4; ++i) threads.emplace_back(Churn, i + 7, 20000);
    for (std::thread& thread : threads) thread.join();
    std::list<int, VXPoolAllocator<int>> nodes;
    std::vector<std::unique_ptr<Base>> objects;
    std::thread([&] {
        nodes.assign(5000, 42);
        for (int i = 0; i < 1000; ++i) objects.push_back(std::make_unique<Derived>());
    }).join();
    EXPECT_EQ(nodes.back(), 42);
    nodes.clear();
    objects.clear();  // through a base, which tells the whole size
    Churn(3, 2000);
}

TEST(VXPool, ThreadsThatEndLeaveNothingBehind) {
    /// Made before anything that the pool has in the thread, and so destroyed after it.
    struct Late {
        ~Late() {
            VXPool::Free(block, 24);
            VXPool::Free(VXPool::Allocate(24), 24);
        }
        void* block = nullptr;
    };
    const auto numPages = [] {
        std::size_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        return pages;
    };
    void* kept = nullptr;
    std::size_t before = 0;
    for (int i = 0; i < 300; ++i) {
        std::thread([&] {
            thread_local Late late;
            late.block = VXPool::Allocate(24);
            VXPool::Free(kept, 24);
            kept = VXPool::Allocate(24);
        }).join();
        if (i == 99) before = numPages();
    }
    EXPECT_LE(numPages(), before + 1000);
    VXPool::Free(kept, 24);
}

TEST(VXPool, AProcessMayForkAtAnyTime) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's allocator has locks, which a child may find held";
#endif
    std::atomic<bool> isDone = false;
    std::thread other([&] {
        while (!isDone) Churn(5, 3000);
    });
    for (int i = 0; i < 30; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(60);
            Churn(9, 3000);
            _exit(testing::Test::HasFailure() ? 1 : 0);
        }
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    isDone = true;
    other.join();
}

}  // namespace
