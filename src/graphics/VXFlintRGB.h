#pragma once

#include "bitstream/VXBitStream.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

class VXColor;

/// A colour, the format's RGB and RGBA in one class:
///
///     Red u8, Green u8, Blue u8
///     Alpha u8                      when UseAlpha
///
/// `UseAlpha` is not on the wire. Whoever embeds the colour knows which of the two records stands there, and
/// sets it before a load or a dump.
class VXSWF_API VXFlintRGB {
public:
    /// Opaque black without an alpha byte.
    VXFlintRGB() = default;
    /// Kept: without `useAlpha` the alpha is 0 whatever was passed, and not 255. The wire does not show it.
    VXFlintRGB(unsigned char red, unsigned char green, unsigned char blue, short useAlpha,
               unsigned char alpha);
    /// The colour in its form of red, green and blue, each component of 0 to 1 spread over 0 to 255 and
    /// truncated; one outside that range keeps the low eight bits. Opaque, without an alpha byte.
    VXFlintRGB(const VXColor& color);
    VXFlintRGB(const VXFlintRGB&) = default;
    VXFlintRGB& operator=(const VXFlintRGB&) = default;
    virtual ~VXFlintRGB();

    /// Without `UseAlpha` the alpha becomes 255.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out) const;

    unsigned char Red = 0;
    unsigned char Green = 0;
    unsigned char Blue = 0;
    unsigned char Alpha = 255;  ///< 255 is opaque
    short UseAlpha = 0;
};
