#pragma once

#include <cstdint>

#include "bitstream/VXBitStream.h"

/// Bit fields that follow each other, held back so that several go to the stream in one write. What comes out
/// is what `WriteBits` and `WriteSBits` would have made of each; like those, no step reports a failure.
class VXBitRun {
public:
    explicit VXBitRun(VXBitStream& out) : m_Out(out) {}
    VXBitRun(const VXBitRun&) = delete;
    VXBitRun& operator=(const VXBitRun&) = delete;

    void Add(unsigned int value, unsigned int count) {
        if (count < 32 && value >> count == 0) [[likely]] {
            Hold(value, count);
        } else {
            VXIgnore(Finish());
            WriteWide(m_Out, value, count);
        }
    }
    void AddFlag(short flag) { Hold(flag != 0 ? 1u : 0u, 1); }
    void AddSigned(int value, unsigned int count) {
        if (count == 0) return;
        const unsigned int sign = 1u << (count - 1) % 32;
        const unsigned int bits = static_cast<unsigned int>(value) + sign;
        if (count - 1 < 31 && bits >> count == 0) [[likely]] {
            Hold(bits ^ sign, count);
        } else {
            VXIgnore(Finish());
            WriteSignedWide(m_Out, value, count);
        }
    }

    /// Writes what is held. The end of the object does not.
    VXErrorCodeEnum Finish() {
        m_Out.WriteRun(m_Bits, m_Count);
        m_Bits = 0;
        m_Count = 0;
        return kVXSuccess;
    }

private:
    void Hold(unsigned int bits, unsigned int count) {
        if (m_Count + count > VXBitStream::kLongestRun) [[unlikely]]
            VXIgnore(Finish());
        m_Bits = m_Bits << count | bits;
        m_Count += count;
    }
    // A value that is wider than its field spoils the bits that are pending then, and none in front of those.
    // Neither takes the object, so that its fields can stay in registers.
    static void WriteWide(VXBitStream& out, unsigned int value, unsigned int count);
    static void WriteSignedWide(VXBitStream& out, int value, unsigned int count);

    VXBitStream& m_Out;
    std::uint64_t m_Bits = 0;  // fields that are held, the newest at the bottom
    unsigned int m_Count = 0;  // bits that are held
};
