#include "graphics/VXFlintGradient.h"

#include <algorithm>

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"

VXFlintGradRecord::~VXFlintGradRecord() = default;

VXErrorCodeEnum VXFlintGradRecord::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadByte(Ratio));
    return Color.LoadFromStream(in);
}

VXErrorCodeEnum VXFlintGradRecord::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.WriteByte(Ratio));
    return Color.DumpToStream(out);
}

VXFlintGradient::~VXFlintGradient() = default;

VXErrorCodeEnum VXFlintGradient::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXReadBits(in, 2, SpreadMode));
    VX_RETURN_IF_FAILED(VXReadBits(in, 2, InterpolationMode));
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumGradients));
    if (GradientRecords.empty()) {
        GradientRecords.reserve(std::min<unsigned int>(NumGradients, in.GetRemaining() / 4));
    }
    for (unsigned int i = 0; i < NumGradients; ++i) {
        VXFlintGradRecord record;
        record.Color.UseAlpha = UseAlpha;
        VX_RETURN_IF_FAILED(record.LoadFromStream(in));
        GradientRecords.push_back(record);
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintGradient::DumpToStream(VXBitStream& out) {
    VXBitRun run(out);
    run.Add(SpreadMode, 2);
    run.Add(InterpolationMode, 2);
    run.Add(NumGradients, 4);
    VX_RETURN_IF_FAILED(run.Finish());
    for (unsigned int i = 0; i < NumGradients; ++i) {
        if (i >= GradientRecords.size()) return kVXFailure;
        GradientRecords[i].Color.UseAlpha = UseAlpha;
        VX_RETURN_IF_FAILED(GradientRecords[i].DumpToStream(out));
    }
    return kVXSuccess;
}

void VXFlintGradient::SetAlpha(short useAlpha) {
    UseAlpha = useAlpha;
    for (VXFlintGradRecord& record : GradientRecords) record.Color.UseAlpha = useAlpha;
}

VXFlintMorphGradRecord::~VXFlintMorphGradRecord() = default;

VXErrorCodeEnum VXFlintMorphGradRecord::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadByte(StartRatio));
    StartColor.UseAlpha = 1;
    VX_RETURN_IF_FAILED(StartColor.LoadFromStream(in));
    VX_RETURN_IF_FAILED(in.ReadByte(EndRatio));
    EndColor.UseAlpha = 1;
    return EndColor.LoadFromStream(in);
}

VXFlintMorphGradient::~VXFlintMorphGradient() = default;

VXErrorCodeEnum VXFlintMorphGradient::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadByte(NumRecords));
    if (NumRecords > Records.size()) return kVXFailure;
    for (unsigned int i = 0; i < NumRecords; ++i) VX_RETURN_IF_FAILED(Records[i].LoadFromStream(in));
    return kVXSuccess;
}
