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

    /// What every operation may take beside its share.
    static constexpr std::size_t kRoom = std::size_t{512} << 20;
    /// What is made of a movie that came as `given` bytes and inflates to a body of `body` may take. Deflate
    /// expands up to 1000 to 1, and a tag without a body costs over 100 times its bytes; the limit stops large
    /// movies that do both.
    static constexpr std::size_t RoomForMovie(std::size_t given, std::size_t body) {
        constexpr std::size_t kRoomPerByte = 128;  // as it came; the bodies of the tags have room besides
        return kRoom + kRoomPerByte * given + body;
    }

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
