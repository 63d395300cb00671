#include "graphics/VXFlintMatrix.h"

#include <cmath>

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

namespace {

constexpr int kOne = 65536;
constexpr unsigned int kFullWidth = 32;

}  // namespace

VXFlintMatrix::~VXFlintMatrix() = default;

VXErrorCodeEnum VXFlintMatrix::LoadFromStream(VXBitStream& in) {
    in.ByteAlignSBits();
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasScale));
    if (HasScale != 0) {
        VX_RETURN_IF_FAILED(VXReadBits(in, 5, NScaleBits));
        VX_RETURN_IF_FAILED(in.ReadSBits(NScaleBits, ScaleX));
        VX_RETURN_IF_FAILED(in.ReadSBits(NScaleBits, ScaleY));
    } else {
        NScaleBits = 0;
        ScaleX = 1;
        ScaleY = 1;
    }
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasRotate));
    if (HasRotate != 0) {
        VX_RETURN_IF_FAILED(VXReadBits(in, 5, NRotateBits));
        VX_RETURN_IF_FAILED(in.ReadSBits(NRotateBits, RotateSkew0));
        VX_RETURN_IF_FAILED(in.ReadSBits(NRotateBits, RotateSkew1));
    } else {
        NRotateBits = 0;
        RotateSkew0 = 0;
        RotateSkew1 = 0;
    }
    VX_RETURN_IF_FAILED(VXReadBits(in, 5, NTranslateBits));
    VX_RETURN_IF_FAILED(VXReadTwips(in, NTranslateBits, TranslateX));
    VX_RETURN_IF_FAILED(VXReadTwips(in, NTranslateBits, TranslateY));
    in.ByteAlignSBits();
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintMatrix::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.FlushBits());
    VXBitRun run(out);
    run.AddFlag(HasScale);
    if (HasScale != 0) {
        NScaleBits = VXFieldWidth(ScaleX, ScaleY);
        run.Add(NScaleBits, 5);
        run.AddSigned(ScaleX, NScaleBits);
        run.AddSigned(ScaleY, NScaleBits);
    }
    run.AddFlag(HasRotate);
    if (HasRotate != 0) {
        NRotateBits = VXFieldWidth(RotateSkew0, RotateSkew1);
        run.Add(NRotateBits, 5);
        run.AddSigned(RotateSkew0, NRotateBits);
        run.AddSigned(RotateSkew1, NRotateBits);
    }
    const int x = VXToTwips(TranslateX);
    const int y = VXToTwips(TranslateY);
    NTranslateBits = VXFieldWidth(x, y);
    run.Add(NTranslateBits, 5);
    run.AddSigned(x, NTranslateBits);
    run.AddSigned(y, NTranslateBits);
    VX_RETURN_IF_FAILED(run.Finish());
    return out.FlushBits();
}

void VXFlintMatrix::Rotate(const VXReal& degrees) {
    // Kept: eight digits of pi, and sine and cosine in single precision.
    const float angle = static_cast<float>(degrees * 3.14159265 / 180.0);
    const float cosine = std::cos(angle);
    const float sine = std::sin(angle);
    const VXReal c = cosine;
    const VXReal s = sine;
    const VXReal sx = HasScale != 0 ? ScaleX : kOne;
    const VXReal sy = HasScale != 0 ? ScaleY : kOne;
    const VXReal k0 = HasRotate != 0 ? RotateSkew0 : 0;
    const VXReal k1 = HasRotate != 0 ? RotateSkew1 : 0;
    const VXReal tx = TranslateX;
    const VXReal ty = TranslateY;

    ScaleX = VXTruncate(sx * c - k0 * s);
    ScaleY = VXTruncate(sy * c + k1 * s);
    RotateSkew0 = VXTruncate(sx * s + k0 * c);
    RotateSkew1 = VXTruncate(k1 * c - sy * s);
    TranslateX = tx * c - ty * s;
    TranslateY = ty * c + tx * s;
    HasScale = 1;
    HasRotate = 1;
    NScaleBits = kFullWidth;
    NRotateBits = kFullWidth;
    NTranslateBits = kFullWidth;
}

void VXFlintMatrix::Translate(const VXReal& x, const VXReal& y) {
    const VXReal dx = x;  // the arguments may be this matrix's own fields
    const VXReal dy = y;
    TranslateX += dx;
    TranslateY += dy;
    NTranslateBits = kFullWidth;
}

void VXFlintMatrix::Scale(const VXReal& x, const VXReal& y) {
    const VXReal fx = x;  // the arguments may be this matrix's own fields
    const VXReal fy = y;
    if (HasScale == 0) {
        HasScale = 1;
        ScaleX = kOne;
        ScaleY = kOne;
    }
    ScaleX = VXTruncate(ScaleX * fx);
    ScaleY = VXTruncate(ScaleY * fy);
    NScaleBits = kFullWidth;
    if (HasRotate == 0) {
        RotateSkew0 = 0;
        RotateSkew1 = 0;
    }
    RotateSkew1 = VXTruncate(RotateSkew1 * fx);
    RotateSkew0 = VXTruncate(RotateSkew0 * fy);
    NRotateBits = kFullWidth;
    TranslateX = std::trunc(TranslateX * fx);
    TranslateY = std::trunc(TranslateY * fy);
}

void VXFlintMatrix::ToUnitMatrix() {
    HasScale = 1;
    HasRotate = 1;
    NScaleBits = kFullWidth;
    ScaleX = kOne;
    ScaleY = kOne;
    NRotateBits = kFullWidth;
    RotateSkew0 = 0;
    RotateSkew1 = 0;
    NTranslateBits = kFullWidth;
    TranslateX = 0.0;
    TranslateY = 0.0;
}
