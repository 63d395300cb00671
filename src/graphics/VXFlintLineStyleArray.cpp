#include "graphics/VXFlintLineStyleArray.h"

#include "graphics/VXStyleSequence_p.h"

VXFlintLineStyleArray::~VXFlintLineStyleArray() = default;

VXErrorCodeEnum VXFlintLineStyleArray::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXLoadStyleCount(in, Supports255Plus, LineStyleCount));
    if (IsLineStyle2 != 0) return VXLoadStyles(in, LineStyleCount, UseAlpha, LineStyles2);
    return VXLoadStyles(in, LineStyleCount, UseAlpha, LineStyles);
}

VXErrorCodeEnum VXFlintLineStyleArray::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(VXDumpStyleCount(out, LineStyleCount));
    if (IsLineStyle2 != 0) return VXDumpStyles(out, LineStyleCount, LineStyles2);
    return VXDumpStyles(out, LineStyleCount, LineStyles);
}

void VXFlintLineStyleArray::AddLineStyle(const VXFlintLineStyle& style) {
    LineStyles.push_back(style);
    ++LineStyleCount;
}

void VXFlintLineStyleArray::AddLineStyle(const VXFlintLineStyle2& style) {
    LineStyles2.push_back(style);
    ++LineStyleCount;
    IsLineStyle2 = 1;
}
