#pragma once

#include <cstdint>
#include <memory>

#include "bitstream/VXBitStream.h"

/// Takes the bytes of a dump in order and writes them packed.
class VXPacker {
public:
    virtual ~VXPacker() = default;
    /// False when a byte did not get through. The call with `isLast` ends the packed stream.
    virtual bool Put(const unsigned char* data, unsigned int length, bool isLast) = 0;

    /// To what stands in `out` these put: the bytes themselves, a zlib stream (RFC 1950), and a raw LZMA
    /// stream with five bytes of properties in front. Null without memory; the last also in a build without
    /// LZMA. `size` is about how much will come.
    static std::unique_ptr<VXPacker> MakePlain(VXBitStream& out);
    static std::unique_ptr<VXPacker> MakeDeflate(VXBitStream& out, int level);
    static std::unique_ptr<VXPacker> MakeLzma(VXBitStream& out, int level, std::uint64_t size);
};

constexpr unsigned int kVXLzmaProperties = 5;

bool VXHasLzma();
/// Writes to `out` what five bytes of properties and a raw LZMA stream hold, at most `most` bytes of it. A
/// stream without an end mark ends where `stated` bytes came. 1 when neither end is reached.
VXErrorCodeEnum VXUnpackLzma(const unsigned char* data, unsigned int length, std::uint64_t stated,
                             std::uint64_t most, VXBitStream& out);
