#include "graphics/VXFlintRGB.h"

#include "graphics/VXTwips.h"
#include "platform/VXColor.h"

namespace {

unsigned char ByteOf(VXReal component) { return static_cast<unsigned char>(VXTruncate(component * 255.0)); }

}  // namespace

VXFlintRGB::VXFlintRGB(unsigned char red, unsigned char green, unsigned char blue, short useAlpha,
                       unsigned char alpha)
    : Red(red),
      Green(green),
      Blue(blue),
      Alpha(useAlpha != 0 ? alpha : static_cast<unsigned char>(0)),
      UseAlpha(useAlpha) {}

VXFlintRGB::VXFlintRGB(const VXColor& color) {
    const VXColor rgb = color.ConvertToRGB();
    Red = ByteOf(rgb.GetComponent(0));
    Green = ByteOf(rgb.GetComponent(1));
    Blue = ByteOf(rgb.GetComponent(2));
}

VXFlintRGB::~VXFlintRGB() = default;

// Kept: two tests on purpose. Load takes alpha when UseAlpha is non-zero, dump only when it is 1.

VXErrorCodeEnum VXFlintRGB::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadByte(Red));
    VX_RETURN_IF_FAILED(in.ReadByte(Green));
    VX_RETURN_IF_FAILED(in.ReadByte(Blue));
    if (UseAlpha != 0) return in.ReadByte(Alpha);
    Alpha = 255;
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintRGB::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.WriteByte(Red));
    VX_RETURN_IF_FAILED(out.WriteByte(Green));
    VX_RETURN_IF_FAILED(out.WriteByte(Blue));
    if (UseAlpha == 1) return out.WriteByte(Alpha);
    return kVXSuccess;
}
