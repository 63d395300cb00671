#include "graphics/VXFlintShapeRecordBase.h"

VXFlintShapeRecordBase::~VXFlintShapeRecordBase() = default;

VXFlintShapeEndRecord::~VXFlintShapeEndRecord() = default;

VXErrorCodeEnum VXFlintShapeEndRecord::LoadFromStream(VXBitStream&) {
    StateNewStyles = VXFlintShapeRecordBase::StateNewStyles;
    StateLineStyle = VXFlintShapeRecordBase::StateLineStyle;
    StateFillStyle1 = VXFlintShapeRecordBase::StateFillStyle1;
    StateFillStyle0 = VXFlintShapeRecordBase::StateFillStyle0;
    StateMoveTo = VXFlintShapeRecordBase::StateMoveTo;
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintShapeEndRecord::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.WriteBits(0, 1));
    return out.WriteBits(0, 5);
}
