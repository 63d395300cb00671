#include "graphics/VXFlintShapeStyleChangeRecord.h"

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"
#include "graphics/VXTwips.h"

VXFlintShapeStyleChangeRecord::VXFlintShapeStyleChangeRecord(unsigned int numFillBits,
                                                             unsigned int numLineBits, short alpha,
                                                             short supports255Plus, short isLineStyle2)
    : NumFillBits(numFillBits), NumLineBits(numLineBits) {
    NewFillStyles.SetAlpha(alpha);
    NewFillStyles.SetSupports255Plus(supports255Plus);
    NewLineStyles.SetAlpha(alpha);
    NewLineStyles.SetSupports255Plus(supports255Plus);
    NewLineStyles.SetIsLineStyle2(isLineStyle2);
}

VXFlintShapeStyleChangeRecord::~VXFlintShapeStyleChangeRecord() = default;

VXErrorCodeEnum VXFlintShapeStyleChangeRecord::LoadFromStream(VXBitStream& in) {
    StateNewStyles = VXFlintShapeRecordBase::StateNewStyles;
    StateLineStyle = VXFlintShapeRecordBase::StateLineStyle;
    StateFillStyle1 = VXFlintShapeRecordBase::StateFillStyle1;
    StateFillStyle0 = VXFlintShapeRecordBase::StateFillStyle0;
    StateMoveTo = VXFlintShapeRecordBase::StateMoveTo;
    if (StateMoveTo != 0) {
        VX_RETURN_IF_FAILED(VXReadBits(in, 5, MoveBits));
        VX_RETURN_IF_FAILED(VXReadTwips(in, MoveBits, MoveDeltaX));
        VX_RETURN_IF_FAILED(VXReadTwips(in, MoveBits, MoveDeltaY));
    }
    if (StateFillStyle0 != 0) VX_RETURN_IF_FAILED(VXReadBits(in, NumFillBits, FillStyle0));
    if (StateFillStyle1 != 0) VX_RETURN_IF_FAILED(VXReadBits(in, NumFillBits, FillStyle1));
    if (StateLineStyle != 0) VX_RETURN_IF_FAILED(VXReadBits(in, NumLineBits, LineStyle));
    if (StateNewStyles == 0) {
        NewNumFillBits = NumFillBits;
        NewNumLineBits = NumLineBits;
        return kVXSuccess;
    }
    VX_RETURN_IF_FAILED(NewFillStyles.LoadFromStream(in));
    VX_RETURN_IF_FAILED(NewLineStyles.LoadFromStream(in));
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NewNumFillBits));
    return VXReadBits(in, 4, NewNumLineBits);
}

VXErrorCodeEnum VXFlintShapeStyleChangeRecord::DumpToStream(VXBitStream& out) {
    VXBitRun run(out);
    run.Add(0, 1);
    run.AddFlag(StateNewStyles);
    run.AddFlag(StateLineStyle);
    run.AddFlag(StateFillStyle1);
    run.AddFlag(StateFillStyle0);
    run.AddFlag(StateMoveTo);
    if (StateMoveTo != 0) {
        const int x = VXToTwips(MoveDeltaX);
        const int y = VXToTwips(MoveDeltaY);
        const unsigned int width = VXFieldWidth(x, y);
        run.Add(width, 5);
        run.AddSigned(x, width);
        run.AddSigned(y, width);
    }
    if (StateFillStyle0 != 0) run.Add(FillStyle0, NumFillBits);
    if (StateFillStyle1 != 0) run.Add(FillStyle1, NumFillBits);
    if (StateLineStyle != 0) run.Add(LineStyle, NumLineBits);
    VX_RETURN_IF_FAILED(run.Finish());
    if (StateNewStyles == 0) {
        NewNumFillBits = NumFillBits;
        NewNumLineBits = NumLineBits;
        return kVXSuccess;
    }
    VX_RETURN_IF_FAILED(NewFillStyles.DumpToStream(out));
    VX_RETURN_IF_FAILED(NewLineStyles.DumpToStream(out));
    run.Add(NewNumFillBits, 4);
    run.Add(NewNumLineBits, 4);
    return run.Finish();
}
