#pragma once

#include "bitstream/VXBitStream.h"
#include "graphics/VXFlintRGB.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// How a stroke ends.
enum VXCapStyleEnum : int {
    kVXCapRound = 0,
    kVXCapNone = 1,
    kVXCapSquare = 2,
};

/// How two edges of a stroke meet.
enum VXJoinStyleEnum : int {
    kVXJoinRound = 0,
    kVXJoinBevel = 1,
    kVXJoinMiter = 2,
};

/// A stroke, the format's LINESTYLE:
///
///     Width u16, Color VXFlintRGB
///
/// The width is in pixels in memory and in twips on the wire, where the low 16 bits of what does not fit go
/// out.
class VXSWF_API VXFlintLineStyle {
public:
    /// No width, and black with an alpha of 0.
    VXFlintLineStyle() { Color.Alpha = 0; }
    VXFlintLineStyle(const VXFlintLineStyle&) = default;
    VXFlintLineStyle& operator=(const VXFlintLineStyle&) = default;

    // Virtual operations, in slot order.

    virtual ~VXFlintLineStyle();
    virtual VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    virtual VXErrorCodeEnum DumpToStream(VXBitStream& out);

    // The rest.

    /// Whether the colour has an alpha byte.
    void SetAlpha(short useAlpha) { Color.UseAlpha = useAlpha; }

    VXReal Width = 0.0;
    VXFlintRGB Color;
};

/// A stroke with caps and joins, the format's LINESTYLE2 without its fills:
///
///     Width u16
///     StartCapStyle ub[2], JoinStyle ub[2]
///     HasFill ub[1] = 0, NoHScale ub[1] = 1, NoVScale ub[1] = 1, PixelHinting ub[1] = 0
///     Reserved ub[5] = 0, NoClose ub[1] = 0
///     EndCapStyle ub[2]
///     MiterLimit u16 = 255.0 as 8.8    when JoinStyle is 2
///     Color VXFlintRGB
///
/// The fields with a value always go out with it, and a load drops what they hold.
///
/// Kept: a load takes a colour from a style that says it has a fill. What follows is then misread.
class VXSWF_API VXFlintLineStyle2 : public VXFlintLineStyle {
public:
    VXFlintLineStyle2() = default;
    VXFlintLineStyle2(const VXFlintLineStyle2&) = default;
    VXFlintLineStyle2& operator=(const VXFlintLineStyle2&) = default;
    ~VXFlintLineStyle2() override;

    VXErrorCodeEnum LoadFromStream(VXBitStream& in) override;
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;

    void SetJoinStyle(VXJoinStyleEnum join) { JoinStyle = join; }
    void SetCapStyle(VXCapStyleEnum start, VXCapStyleEnum end);
    /// Overwrites both caps: square ones for a closed path, none for an open one.
    void SetClosed(short closed);

    VXJoinStyleEnum JoinStyle = kVXJoinMiter;
    VXCapStyleEnum StartCapStyle = kVXCapSquare;
    VXCapStyleEnum EndCapStyle = kVXCapSquare;
    short Closed = 1;  ///< not on the wire
};

/// A stroke that changes shape; its colours always have an alpha byte:
///
///     StartWidth u16, StartColor VXFlintRGB, EndWidth u16, EndColor VXFlintRGB
///
/// Nothing in the library reads one; it is here for hosts.
class VXSWF_API VXFlintMorphLineStyle {
public:
    VXFlintMorphLineStyle() = default;
    VXFlintMorphLineStyle(const VXFlintMorphLineStyle&) = default;
    VXFlintMorphLineStyle& operator=(const VXFlintMorphLineStyle&) = default;
    virtual ~VXFlintMorphLineStyle();

    VXErrorCodeEnum LoadFromStream(VXBitStream& in);

    unsigned short StartWidth = 0;  ///< twips
    VXFlintRGB StartColor;
    unsigned short EndWidth = 0;  ///< twips
    VXFlintRGB EndColor;
};
