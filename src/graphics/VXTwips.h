#pragma once

#include <climits>

#include "bitstream/VXBitStream.h"
#include "platform/VXTypes.h"

/// Twips per pixel; the wire holds twips, memory holds pixels.
inline constexpr VXReal kVXTwipsPerPixel = 20.0;

/// Cuts the fraction off, toward zero. What 32 bits cannot hold saturates, and a NaN gives 0.
inline int VXTruncate(VXReal value) {
    if (value > -2147483648.0 && value < 2147483648.0) [[likely]]
        return static_cast<int>(value);
    if (!(value == value)) return 0;
    return value < 0.0 ? INT_MIN : INT_MAX;
}

/// The same within 64 bits, then cut to 32 unsigned ones.
inline unsigned int VXTruncateToUnsigned(VXReal value) {
    if (value > -9223372036854775808.0 && value < 9223372036854775808.0) [[likely]] {
        return static_cast<unsigned int>(static_cast<long long>(value));
    }
    return value > 0.0 ? UINT_MAX : 0;
}

/// Pixels to twips: half a twip goes up, for negative values too. Saturates as `VXTruncate` does.
inline int VXToTwips(VXReal pixels) {
    const VXReal twips = pixels * kVXTwipsPerPixel + 0.5;
    if (!(twips > -2147483648.0 && twips < 2147483648.0)) [[unlikely]]
        return VXTruncate(twips);
    // `floor()` by hand: without SSE4.1 that is a library call.
    const int cut = static_cast<int>(twips);
    return cut - (cut > twips ? 1 : 0);
}

/// Twips to pixels: a division, since a multiplication by 0.05 would not come back to the same twips.
inline VXReal VXFromTwips(int twips) { return twips / kVXTwipsPerPixel; }

/// Reads a signed field of twips as pixels. Failure leaves the target as it was.
inline VXErrorCodeEnum VXReadTwips(VXBitStream& in, unsigned int bits, VXReal& pixels) {
    int twips = 0;
    VX_RETURN_IF_FAILED(in.ReadSBits(bits, twips));
    pixels = VXFromTwips(twips);
    return kVXSuccess;
}

/// The same for an unsigned word.
template <typename Pixels>
VXErrorCodeEnum VXReadTwipsWord(VXBitStream& in, Pixels& pixels) {
    unsigned short twips = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(twips));
    pixels = static_cast<Pixels>(VXFromTwips(twips));
    return kVXSuccess;
}

/// Writes pixels as a word of twips, of which the low 16 bits go out.
inline VXErrorCodeEnum VXWriteTwipsWord(VXBitStream& out, VXReal pixels) {
    return out.WriteWord(static_cast<unsigned short>(VXToTwips(pixels)));
}

/// The width that a group of signed fields takes on the wire: OR-ing the magnitudes gives the widest without a
/// branch.
inline unsigned int VXFieldWidth(int a, int b = 0, int c = 0, int d = 0) {
    const unsigned int all = VXBitStream::Magnitude(a) | VXBitStream::Magnitude(b) |
                             VXBitStream::Magnitude(c) | VXBitStream::Magnitude(d);
    return VXBitStream::MinBits(all, 1);
}
