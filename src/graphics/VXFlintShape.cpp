#include "graphics/VXFlintShape.h"

#include "bitstream/VXReadField_p.h"

VXFlintShape::~VXFlintShape() = default;

VXErrorCodeEnum VXFlintShape::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumFillBits));
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumLineBits));
    // Kept: the list reads both once more.
    ShapeRecords.NumFillBits = NumFillBits;
    ShapeRecords.NumLineBits = NumLineBits;
    return ShapeRecords.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintShape::DumpToStream(VXBitStream& out) { return ShapeRecords.DumpToStream(out); }
