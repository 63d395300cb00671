#pragma once

#include <cstddef>

/// While one lives, what its thread takes from the pool and has not freed again comes to that many bytes at
/// most; beyond that the pool answers as without memory.
///
/// Small blocks count by the chunks of 64 KiB that they are cut from, larger ones by their size, buffers not
/// at all, and memory that is not the pool's where `Charge` is told of it. A block from before that is freed
/// makes room for no more than was taken since. Of several limits each counts, and the tightest one stops.
class VXMemoryLimit {
public:
    explicit VXMemoryLimit(std::size_t bytes) noexcept;
    ~VXMemoryLimit();
    VXMemoryLimit(const VXMemoryLimit&) = delete;
    VXMemoryLimit& operator=(const VXMemoryLimit&) = delete;

    /// Makes the limit higher.
    void Raise(std::size_t bytes) noexcept {
        m_Bytes += bytes;
        m_BytesLeft += bytes;
    }

    /// Counts memory that does not come from the pool. Throws std::bad_alloc when it is too much.
    static void Charge(std::size_t bytes);

    /// Takes so much, if every limit leaves it.
    static bool Spend(std::size_t bytes) noexcept;
    static void Regain(std::size_t bytes) noexcept;

private:
    std::size_t m_Bytes;
    std::size_t m_BytesLeft;
    VXMemoryLimit* const m_Outer;
};
