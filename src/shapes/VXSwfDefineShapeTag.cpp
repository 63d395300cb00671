#include "shapes/VXSwfDefineShapeTag.h"

#include <string>

#include "graphics/VXTwips.h"

VXSwfDefineShapeTag::VXSwfDefineShapeTag(enuTagType type) : VXSwfDefinitionTag(type) {
    ShapeWithStyle.SetAlpha(IsUseAlpha());
    ShapeWithStyle.SetSupports255Plus(Supports255Plus());
    ShapeWithStyle.SetIsLineStyle2(IsDefineShape4Tag());
}

VXSwfDefineShapeTag::~VXSwfDefineShapeTag() = default;

short VXSwfDefineShapeTag::IsUseAlpha() const {
    return GetTagType() >= VXSwfTagFactory::TAG_DEFINESHAPE3 ? 1 : 0;
}

short VXSwfDefineShapeTag::Supports255Plus() const {
    return GetTagType() >= VXSwfTagFactory::TAG_DEFINESHAPE2 ? 1 : 0;
}

short VXSwfDefineShapeTag::IsDefineShape4Tag() const {
    return GetTagType() == VXSwfTagFactory::TAG_DEFINESHAPE4 ? 1 : 0;
}

VXErrorCodeEnum VXSwfDefineShapeTag::LoadDataFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(ShapeBounds.LoadFromStream(in));
    if (IsDefineShape4Tag() != 0) {
        VX_RETURN_IF_FAILED(EdgeBounds.LoadFromStream(in));
        unsigned int skipped = 0;
        VX_RETURN_IF_FAILED(in.ReadBits(8, skipped));  // which strokes scale
    }
    return ShapeWithStyle.LoadFromStream(in);
}

VXErrorCodeEnum VXSwfDefineShapeTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) -> VXErrorCodeEnum {
        VX_RETURN_IF_FAILED(ShapeBounds.DumpToStream(body));
        if (IsDefineShape4Tag() != 0) {
            VX_RETURN_IF_FAILED(EdgeBounds.DumpToStream(body));
            VX_RETURN_IF_FAILED(body.WriteBits(0b10, 8));  // Kept: the same flags for every shape
        }
        return ShapeWithStyle.DumpToStream(body);
    });
}

void VXSwfDefineShapeTag::UpdateReferenceIDs(VXFlintIDMap* map) {
    ShapeWithStyle.UpdateReferenceIDs(map);
    VXSwfDefinitionTag::UpdateReferenceIDs(map);
}

void VXSwfDefineShapeTag::GetTextInfo(VXString& text) {
    VXSwfDefinitionTag::GetTextInfo(text);
    const auto whole = [](VXReal pixels) { return std::to_string(VXTruncate(pixels)); };
    const std::string rect = "-Rect =(" + whole(ShapeBounds.XMin) + "," + whole(ShapeBounds.YMin) + "),(" +
                             whole(ShapeBounds.XMax) + "," + whole(ShapeBounds.YMax) + ")";
    text += VXString(rect.c_str());
}

void VXSwfDefineShapeTag::SetBounds(const VXRect& rect, int margin) {
    EdgeBounds.Set(rect.left, rect.top, rect.right, rect.bottom);
    ShapeBounds.Set(rect.left - margin, rect.top - margin, rect.right + margin, rect.bottom + margin);
}
