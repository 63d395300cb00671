#pragma once

#include <cstddef>

/// While one lives, the blocks that its thread gets from the pool, and has not freed again, come to that many
/// bytes at most: the pool then answers as without memory. Small blocks count by the page that they fill,
/// buffers not at all. Of several limits the last one made is in force.
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

    /// Whether the limit, if there is one, leaves so much; then it is taken.
    static bool Spend(std::size_t bytes) noexcept;
    static void Regain(std::size_t bytes) noexcept;

private:
    std::size_t m_Bytes;
    std::size_t m_BytesLeft;
    VXMemoryLimit* const m_Outer;
};
