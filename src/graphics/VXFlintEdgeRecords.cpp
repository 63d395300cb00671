#include "graphics/VXFlintEdgeRecords.h"

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

namespace {

/// Added to what the four bits of a width say.
constexpr unsigned int kLeastWidth = 2;

void AddWidth(VXBitRun& out, unsigned int& width) {
    if (width < kLeastWidth) width += kLeastWidth;
    out.Add(width - kLeastWidth, 4);
}

}  // namespace

VXFlintStraightEdgeRecord::~VXFlintStraightEdgeRecord() = default;

VXErrorCodeEnum VXFlintStraightEdgeRecord::LoadFromStream(VXBitStream& in) {
    StraightFlag = 1;
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumBits));
    NumBits += kLeastWidth;
    VX_RETURN_IF_FAILED(in.ReadVXBool16(GeneralLineFlag));
    if (GeneralLineFlag != 0) {
        VX_RETURN_IF_FAILED(VXReadTwips(in, NumBits, DeltaX));
        return VXReadTwips(in, NumBits, DeltaY);
    }
    VX_RETURN_IF_FAILED(in.ReadVXBool16(VertLineFlag));
    return VXReadTwips(in, NumBits, VertLineFlag != 0 ? DeltaY : DeltaX);
}

VXErrorCodeEnum VXFlintStraightEdgeRecord::DumpToStream(VXBitStream& out) {
    const bool isGeneral = GeneralLineFlag != 0;
    const bool hasX = isGeneral || VertLineFlag == 0;
    const bool hasY = isGeneral || VertLineFlag != 0;
    const int x = hasX ? VXToTwips(DeltaX) : 0;
    const int y = hasY ? VXToTwips(DeltaY) : 0;
    unsigned int width = VXFieldWidth(x, y);
    VXBitRun run(out);
    run.Add(3, 2);
    AddWidth(run, width);
    run.AddFlag(GeneralLineFlag);
    if (!isGeneral) run.AddFlag(VertLineFlag);
    if (hasX) run.AddSigned(x, width);
    if (hasY) run.AddSigned(y, width);
    return run.Finish();
}

VXFlintCurvedEdgeRecord::~VXFlintCurvedEdgeRecord() = default;

VXErrorCodeEnum VXFlintCurvedEdgeRecord::LoadFromStream(VXBitStream& in) {
    StraightFlag = 0;
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumBits));
    NumBits += kLeastWidth;
    VX_RETURN_IF_FAILED(VXReadTwips(in, NumBits, ControlDeltaX));
    VX_RETURN_IF_FAILED(VXReadTwips(in, NumBits, ControlDeltaY));
    VX_RETURN_IF_FAILED(VXReadTwips(in, NumBits, AnchorDeltaX));
    return VXReadTwips(in, NumBits, AnchorDeltaY);
}

VXErrorCodeEnum VXFlintCurvedEdgeRecord::DumpToStream(VXBitStream& out) {
    const int controlX = VXToTwips(ControlDeltaX);
    const int controlY = VXToTwips(ControlDeltaY);
    const int anchorX = VXToTwips(AnchorDeltaX);
    const int anchorY = VXToTwips(AnchorDeltaY);
    unsigned int width = VXFieldWidth(controlX, controlY, anchorX, anchorY);
    VXBitRun run(out);
    run.Add(2, 2);
    AddWidth(run, width);
    run.AddSigned(controlX, width);
    run.AddSigned(controlY, width);
    run.AddSigned(anchorX, width);
    run.AddSigned(anchorY, width);
    return run.Finish();
}
