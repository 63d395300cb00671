#include "graphics/VXFlintLineStyle.h"

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

namespace {

/// 255.0 as an 8.8 number.
constexpr unsigned short kMiterLimit = 0xFF00;

}  // namespace

VXFlintLineStyle::~VXFlintLineStyle() = default;

VXErrorCodeEnum VXFlintLineStyle::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXReadTwipsWord(in, Width));
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintLineStyle::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(VXWriteTwipsWord(out, Width));
    return Color.DumpToStream(out);
}

VXFlintLineStyle2::~VXFlintLineStyle2() = default;

VXErrorCodeEnum VXFlintLineStyle2::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXReadTwipsWord(in, Width));
    VX_RETURN_IF_FAILED(VXReadBits(in, 2, StartCapStyle));
    VX_RETURN_IF_FAILED(VXReadBits(in, 2, JoinStyle));
    unsigned int dropped = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(10, dropped));  // has fill, no scale twice, hinting, reserved, no close
    VX_RETURN_IF_FAILED(VXReadBits(in, 2, EndCapStyle));
    if (JoinStyle == kVXJoinMiter) VX_RETURN_IF_FAILED(VXReadWord(in, dropped));  // the limit
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintLineStyle2::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(VXWriteTwipsWord(out, Width));
    VXBitRun run(out);
    run.Add(static_cast<unsigned int>(StartCapStyle), 2);
    run.Add(static_cast<unsigned int>(JoinStyle), 2);
    run.Add(0b0110'00000'0, 10);  // Kept: the same flags for every style, whatever was loaded
    run.Add(static_cast<unsigned int>(EndCapStyle), 2);
    VX_RETURN_IF_FAILED(run.Finish());
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
    VX_RETURN_IF_FAILED(VXReadWord(in, StartWidth));
    StartColor.UseAlpha = 1;
    VX_RETURN_IF_FAILED(StartColor.LoadFromStream(in));
    VX_RETURN_IF_FAILED(VXReadWord(in, EndWidth));
    EndColor.UseAlpha = 1;
    return EndColor.LoadFromStream(in);
}
