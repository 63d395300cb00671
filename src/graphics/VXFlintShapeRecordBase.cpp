#include "graphics/VXFlintShapeRecordBase.h"

#include "bitstream/VXBitRun_p.h"

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
    VXBitRun run(out);
    run.Add(0, 1);
    run.Add(0, 5);
    return run.Finish();
}
