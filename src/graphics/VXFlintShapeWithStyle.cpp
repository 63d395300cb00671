#include "graphics/VXFlintShapeWithStyle.h"

VXFlintShapeWithStyle::~VXFlintShapeWithStyle() = default;

VXErrorCodeEnum VXFlintShapeWithStyle::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(FillStyles.LoadFromStream(in));
    VX_RETURN_IF_FAILED(LineStyles.LoadFromStream(in));
    return ShapeRecords.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintShapeWithStyle::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(FillStyles.DumpToStream(out));
    VX_RETURN_IF_FAILED(LineStyles.DumpToStream(out));
    return ShapeRecords.DumpToStream(out);
}

void VXFlintShapeWithStyle::SetAlpha(short useAlpha) {
    FillStyles.SetAlpha(useAlpha);
    LineStyles.SetAlpha(useAlpha);
    ShapeRecords.SetAlpha(useAlpha);
}

void VXFlintShapeWithStyle::SetSupports255Plus(short supports255Plus) {
    FillStyles.SetSupports255Plus(supports255Plus);
    LineStyles.SetSupports255Plus(supports255Plus);
    ShapeRecords.SetSupports255Plus(supports255Plus);
}

void VXFlintShapeWithStyle::SetIsLineStyle2(short isLineStyle2) {
    LineStyles.SetIsLineStyle2(isLineStyle2);
    ShapeRecords.SetLineStyle2(isLineStyle2);
}

void VXFlintShapeWithStyle::UpdateReferenceIDs(VXFlintIDMap* map) {
    FillStyles.UpdateReferenceIDs(map);
    ShapeRecords.UpdateReferenceIDs(map);
}
