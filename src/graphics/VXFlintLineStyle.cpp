#include "graphics/VXFlintLineStyle.h"

#include "graphics/VXTwips.h"

namespace {

/// 255.0 as an 8.8 number.
constexpr unsigned short kMiterLimit = 0xFF00;

/// A failed read leaves the field as it was.
VXErrorCodeEnum ReadWordField(VXBitStream& in, unsigned short& field) {
    unsigned short word = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(word));
    field = word;
    return kVXSuccess;
}

VXErrorCodeEnum ReadWidth(VXBitStream& in, VXReal& pixels) {
    unsigned short twips = 0;
    VX_RETURN_IF_FAILED(in.ReadWord(twips));
    pixels = VXFromTwips(twips);
    return kVXSuccess;
}

VXErrorCodeEnum WriteWidth(VXBitStream& out, VXReal pixels) {
    return out.WriteWord(static_cast<unsigned short>(VXToTwips(pixels)));
}

template <typename Enum>
VXErrorCodeEnum ReadEnum(VXBitStream& in, Enum& field) {
    unsigned int bits = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(2, bits));
    field = static_cast<Enum>(bits);
    return kVXSuccess;
}

template <typename Enum>
VXErrorCodeEnum WriteEnum(VXBitStream& out, Enum field) {
    return out.WriteBits(static_cast<unsigned int>(field), 2);
}

}  // namespace

VXFlintLineStyle::~VXFlintLineStyle() = default;

VXErrorCodeEnum VXFlintLineStyle::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(ReadWidth(in, Width));
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintLineStyle::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(WriteWidth(out, Width));
    return Color.DumpToStream(out);
}

VXFlintLineStyle2::~VXFlintLineStyle2() = default;

VXErrorCodeEnum VXFlintLineStyle2::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(ReadWidth(in, Width));
    VX_RETURN_IF_FAILED(ReadEnum(in, StartCapStyle));
    VX_RETURN_IF_FAILED(ReadEnum(in, JoinStyle));
    unsigned int flags = 0;  // has fill, no scale, no scale, hinting, reserved, no close: dropped
    VX_RETURN_IF_FAILED(in.ReadBits(10, flags));
    VX_RETURN_IF_FAILED(ReadEnum(in, EndCapStyle));
    unsigned short miterLimit = 0;  // dropped
    if (JoinStyle == kVXJoinMiter) VX_RETURN_IF_FAILED(in.ReadWord(miterLimit));
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintLineStyle2::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(WriteWidth(out, Width));
    VX_RETURN_IF_FAILED(WriteEnum(out, StartCapStyle));
    VX_RETURN_IF_FAILED(WriteEnum(out, JoinStyle));
    // Kept: the same flags for every style, whatever was loaded.
    VX_RETURN_IF_FAILED(out.WriteBits(0b0110'00000'0, 10));
    VX_RETURN_IF_FAILED(WriteEnum(out, EndCapStyle));
    if (JoinStyle == kVXJoinMiter) VX_RETURN_IF_FAILED(out.WriteWord(kMiterLimit));
    return Color.DumpToStream(out);
}

void VXFlintLineStyle2::SetCapStyle(VXCapStyleEnum start, VXCapStyleEnum end) {
    StartCapStyle = start;
    EndCapStyle = end;
}

void VXFlintLineStyle2::SetClosed(short closed) {
    Closed = closed;
    const VXCapStyleEnum cap = closed != 0 ? kVXCapSquare : kVXCapNone;
    SetCapStyle(cap, cap);
}

VXFlintMorphLineStyle::~VXFlintMorphLineStyle() = default;

VXErrorCodeEnum VXFlintMorphLineStyle::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(ReadWordField(in, StartWidth));
    StartColor.UseAlpha = 1;
    VX_RETURN_IF_FAILED(StartColor.LoadFromStream(in));
    VX_RETURN_IF_FAILED(ReadWordField(in, EndWidth));
    EndColor.UseAlpha = 1;
    return EndColor.LoadFromStream(in);
}
