#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

using ByteSpan = std::span<const unsigned char>;

/// Reads the fields of a movie from bytes that may say anything. A read beyond the end gives zeros and takes
/// the reader to the end; `HasFailed` then answers true for good. Reads of bytes drop what is left of a byte
/// that bits were read from.
class ByteReader {
public:
    explicit ByteReader(ByteSpan bytes) : m_Bytes(bytes) {}

    bool HasFailed() const { return m_HasFailed; }
    bool IsAtEnd() const { return m_Position >= m_Bytes.size(); }
    std::size_t GetPosition() const { return m_Position; }
    std::size_t GetRemaining() const { return m_Bytes.size() - m_Position; }
    ByteSpan GetRest() const { return m_Bytes.subspan(m_Position); }

    /// The next `count` bytes, fewer where the end comes first.
    ByteSpan Take(std::size_t count) {
        m_BitCount = 0;
        if (count > GetRemaining()) m_HasFailed = true;
        const ByteSpan taken = m_Bytes.subspan(m_Position, std::min(count, GetRemaining()));
        m_Position += taken.size();
        return taken;
    }
    std::uint8_t U8() { return static_cast<std::uint8_t>(Little(1)); }
    std::uint16_t U16() { return static_cast<std::uint16_t>(Little(2)); }
    std::int16_t S16() { return static_cast<std::int16_t>(Little(2)); }
    std::uint32_t U32() { return static_cast<std::uint32_t>(Little(4)); }
    std::uint64_t U64() { return Little(8); }
    /// Up to a NUL, which is consumed, or to the end.
    std::string Text() {
        m_BitCount = 0;
        const ByteSpan rest = GetRest();
        const auto end = std::find(rest.begin(), rest.end(), 0);
        if (end == rest.end()) m_HasFailed = true;
        m_Position += static_cast<std::size_t>(end - rest.begin()) + (end == rest.end() ? 0 : 1);
        return {rest.begin(), end};
    }
    /// Drops what is left of a byte.
    void Align() { m_BitCount = 0; }
    /// At most 32 bits, from the top one on.
    std::uint32_t Bits(unsigned int count) {
        std::uint64_t value = 0;
        for (unsigned int left = count; left > 0;) {
            if (m_BitCount == 0) {
                const ByteSpan next = Take(1);
                m_Byte = next.empty() ? 0 : next[0];
                m_BitCount = 8;
            }
            const unsigned int step = std::min(left, m_BitCount);
            m_BitCount -= step;
            value = value << step | (m_Byte >> m_BitCount & ((1u << step) - 1));
            left -= step;
        }
        return static_cast<std::uint32_t>(value);
    }
    std::int32_t SignedBits(unsigned int count) {
        if (count == 0) return 0;
        const std::uint32_t sign = 1u << (count - 1);
        return static_cast<std::int32_t>((Bits(count) ^ sign) - sign);
    }
    std::size_t GetRemainingBits() const { return 8 * GetRemaining() + m_BitCount; }

private:
    std::uint64_t Little(std::size_t size) {
        const ByteSpan bytes = Take(size);
        if (bytes.size() < size) return 0;
        std::uint64_t value = 0;
        for (std::size_t i = size; i-- > 0;) value = value << 8 | bytes[i];
        return value;
    }

    ByteSpan m_Bytes;
    std::size_t m_Position = 0;
    unsigned int m_Byte = 0;
    unsigned int m_BitCount = 0;  // of the byte, still unread
    bool m_HasFailed = false;
};
