#include "graphics/VXFlintFillStyle.h"

#include <algorithm>
#include <utility>

#include "bitstream/VXReadField_p.h"
#include "graphics/VXStyleSequence_p.h"

namespace {

bool IsGradient(unsigned char type) { return type == kVXFillLinearGradient || type == kVXFillRadialGradient; }

bool IsBitmap(unsigned char type) { return type >= kVXFillTiledBitmap && type <= kVXFillClippedHardBitmap; }

}  // namespace

VXFlintFillStyle::VXFlintFillStyle(unsigned char type, const VXFlintRGB& color,
                                   const VXFlintMatrix& gradientMatrix, VXFlintGradient gradient,
                                   unsigned short bitmapId, const VXFlintMatrix& bitmapMatrix)
    : FillStyleType(type),
      BitmapId(bitmapId),
      Color(color),
      GradientMatrix(gradientMatrix),
      Gradient(std::move(gradient)),
      BitmapMatrix(bitmapMatrix) {}

VXFlintFillStyle::~VXFlintFillStyle() = default;

VXErrorCodeEnum VXFlintFillStyle::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadByte(FillStyleType));
    if (FillStyleType == kVXFillSolid) return Color.LoadFromStream(in);
    if (IsGradient(FillStyleType)) {
        VX_RETURN_IF_FAILED(GradientMatrix.LoadFromStream(in));
        return Gradient.LoadFromStream(in);
    }
    if (IsBitmap(FillStyleType)) {
        VX_RETURN_IF_FAILED(VXReadWord(in, BitmapId));
        return BitmapMatrix.LoadFromStream(in);
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintFillStyle::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.WriteByte(FillStyleType));
    if (FillStyleType == kVXFillSolid) return Color.DumpToStream(out);
    if (IsGradient(FillStyleType)) {
        VX_RETURN_IF_FAILED(GradientMatrix.DumpToStream(out));
        return Gradient.DumpToStream(out);
    }
    if (IsBitmap(FillStyleType)) {
        VX_RETURN_IF_FAILED(out.WriteWord(BitmapId));
        return BitmapMatrix.DumpToStream(out);
    }
    return kVXSuccess;
}

void VXFlintFillStyle::SetAlpha(short useAlpha) {
    Color.UseAlpha = useAlpha;
    Gradient.SetAlpha(useAlpha);
}

void VXFlintFillStyle::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (map != nullptr && IsBitmap(FillStyleType) && BitmapId != 0) map->Renumber(BitmapId);
}

VXFlintFillStyleArray::~VXFlintFillStyleArray() = default;

void VXFlintFillStyleArray::UpdateReferenceIDs(VXFlintIDMap* map) {
    const std::size_t count = std::min<std::size_t>(FillStyleCount, FillStyles.size());
    for (std::size_t i = 0; i < count; ++i) FillStyles[i].UpdateReferenceIDs(map);
}

VXErrorCodeEnum VXFlintFillStyleArray::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXLoadStyleCount(in, Supports255Plus, FillStyleCount));
    return VXLoadStyles(in, FillStyleCount, UseAlpha, FillStyles);
}

VXErrorCodeEnum VXFlintFillStyleArray::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(VXDumpStyleCount(out, FillStyleCount));
    return VXDumpStyles(out, FillStyleCount, FillStyles);
}

void VXFlintFillStyleArray::AddFillStyle(const VXFlintFillStyle& style) {
    FillStyles.push_back(style);
    ++FillStyleCount;
}
