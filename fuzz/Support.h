#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "vxswf.h"

inline void Require(bool holds) {
    if (!holds) std::abort();
}

inline bool AreEqual(VXBitStream& left, VXBitStream& right) {
    return left.GetSize() == right.GetSize() &&
           (left.GetSize() == 0 || std::memcmp(left.GetBuffer(), right.GetBuffer(), left.GetSize()) == 0);
}

/// Takes the input of a fuzzer apart. What is missing at its end counts as zero.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size) : m_Data(data), m_Left(size) {}

    bool IsEmpty() const { return m_Left == 0; }
    std::uint8_t Byte() {
        if (IsEmpty()) return 0;
        --m_Left;
        return *m_Data++;
    }
    std::uint16_t Word() {
        const unsigned int low = Byte();
        return static_cast<std::uint16_t>(low | static_cast<unsigned int>(Byte()) << 8);
    }
    /// Any float at all.
    float Real() {
        const std::uint32_t low = Word();
        const std::uint32_t bits = low | static_cast<std::uint32_t>(Word()) << 16;
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    /// A length byte and so much text.
    VXString Text() {
        std::string text;
        for (std::size_t left = Byte(); left != 0 && !IsEmpty(); --left) text += static_cast<char>(Byte());
        return VXString(text.c_str());
    }
    /// A stream over the next `size` bytes, or as many as are left.
    VXBitStream Stream(std::size_t size) {
        if (size > m_Left) size = m_Left;
        VXBitStream stream;
        stream.LoadFromAllocedMem(m_Data, static_cast<unsigned int>(size));
        m_Data += size;
        m_Left -= size;
        return stream;
    }
    VXBitStream Rest() { return Stream(m_Left); }

private:
    const std::uint8_t* m_Data;
    std::size_t m_Left;
};
