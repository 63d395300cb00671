#include "media/VXFlintSoundInfo.h"

#include <algorithm>

VXErrorCodeEnum VXFlintSoundEnvelope::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadDWord(Pos44));
    VX_RETURN_IF_FAILED(in.ReadWord(LeftLevel));
    return in.ReadWord(RightLevel);
}

VXErrorCodeEnum VXFlintSoundEnvelope::DumpToStream(VXBitStream& out) const {
    VX_RETURN_IF_FAILED(out.WriteDWord(Pos44));
    VX_RETURN_IF_FAILED(out.WriteWord(LeftLevel));
    return out.WriteWord(RightLevel);
}

VXErrorCodeEnum VXFlintSoundInfo::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadVXBool16(Reserved1));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(Reserved2));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(SyncStop));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(SyncNoMultiple));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasEnvelope));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasLoops));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasOutPoint));
    VX_RETURN_IF_FAILED(in.ReadVXBool16(HasInPoint));
    if (HasInPoint != 0) VX_RETURN_IF_FAILED(in.ReadDWord(InPoint));
    if (HasOutPoint != 0) VX_RETURN_IF_FAILED(in.ReadDWord(OutPoint));
    if (HasLoops != 0) VX_RETURN_IF_FAILED(in.ReadWord(LoopCount));
    if (HasEnvelope == 0) return kVXSuccess;
    VX_RETURN_IF_FAILED(in.ReadByte(EnvPoints));
    constexpr unsigned int kPointSize = 8;
    EnvelopeRecords.reserve(EnvelopeRecords.size() +
                            std::min<unsigned int>(EnvPoints, in.GetRemaining() / kPointSize));
    for (unsigned int i = 0; i < EnvPoints; ++i) {
        VXFlintSoundEnvelope point;
        VX_RETURN_IF_FAILED(point.LoadFromStream(in));
        EnvelopeRecords.push_back(point);
    }
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintSoundInfo::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.WriteBits(0, 2));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(SyncStop));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(SyncNoMultiple));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasEnvelope));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasLoops));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasOutPoint));
    VX_RETURN_IF_FAILED(out.WriteVXBool16(HasInPoint));
    if (HasInPoint != 0) VX_RETURN_IF_FAILED(out.WriteDWord(InPoint));
    if (HasOutPoint != 0) VX_RETURN_IF_FAILED(out.WriteDWord(OutPoint));
    if (HasLoops != 0) VX_RETURN_IF_FAILED(out.WriteWord(LoopCount));
    if (HasEnvelope == 0) return kVXSuccess;
    EnvPoints = static_cast<unsigned char>(EnvelopeRecords.size());
    VX_RETURN_IF_FAILED(out.WriteByte(EnvPoints));
    for (const VXFlintSoundEnvelope& point : EnvelopeRecords) VX_RETURN_IF_FAILED(point.DumpToStream(out));
    return kVXSuccess;
}
