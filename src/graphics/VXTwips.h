#pragma once

#include <climits>

#include "bitstream/VXBitStream.h"
#include "platform/VXTypes.h"

/// Twips per pixel; the wire holds twips, memory holds pixels.
inline constexpr VXReal kVXTwipsPerPixel = 20.0;

/// Cuts the fraction off, toward zero. What 32 bits cannot hold saturates, and a NaN gives 0.
inline int VXTruncate(VXReal value) {
    if (!(value == value)) return 0;
    if (value >= 2147483647.0) return INT_MAX;
    if (value <= -2147483648.0) return INT_MIN;
    return static_cast<int>(value);
}

/// The same within 64 bits, then cut to 32 unsigned ones.
inline unsigned int VXTruncateToUnsigned(VXReal value) {
    if (!(value == value)) return 0;
    if (value >= 9223372036854775807.0) return UINT_MAX;
    if (value <= -9223372036854775808.0) return 0;
    return static_cast<unsigned int>(static_cast<long long>(value));
}

/// Pixels to twips: half a twip goes up, for negative values too. Saturates as `VXTruncate` does.
inline int VXToTwips(VXReal pixels) {
    const VXReal twips = pixels * kVXTwipsPerPixel + 0.5;
    // A floor without the call that it is where the processor's rounding cannot be counted on.
    const int cut = VXTruncate(twips);
    return cut > twips && cut != INT_MIN ? cut - 1 : cut;
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

/// The width that a group of signed fields takes on the wire.
inline unsigned int VXFieldWidth(int a, int b = 0, int c = 0, int d = 0) {
    return VXBitStream::MinBits(VXBitStream::MaxSNum4(a, b, c, d), 1);
}
