#pragma once

#include "framework/VXSwfControlTag.h"

/// Settings of the whole movie.
///
///     type 69:  ub[1], HasDirectBlit ub[1], UseGPU ub[1], HasMetaData ub[1], HasAS3 ub[1], ub[2],
///               NetworkAccess ub[1], ub[24]
///
/// Kept: a load keeps `HasMetaData`, `HasAS3` and `NetworkAccess` and skips the rest, so a dump after it
/// clears `HasDirectBlit`, `UseGPU` and the reserved bits.
class VXSWF_API VXSwfFileAttributesTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfFileAttributesTag() override;
    /// 1 when any of the 32 bits is missing.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    void SetHasDirectBlit(short value) { HasDirectBlit = value; }
    void SetUseGPU(short value) { UseGPU = value; }
    void SetHasMetaData(short value) { HasMetaData = value; }
    void SetHasAS3(short value) { HasAS3 = value; }
    short GetHasAS3() const { return HasAS3; }
    void SetNetworkAccess(short value) { NetworkAccess = value; }

    short Reserved0 = 0;  ///< never on the wire
    short HasDirectBlit = 0;
    short UseGPU = 0;
    short HasMetaData = 0;
    short HasAS3 = 0;     ///< the scripts are of version 3
    short Reserved5 = 0;  ///< never on the wire
    short Reserved6 = 0;  ///< never on the wire
    short NetworkAccess = 0;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfFileAttributesTag(enuTagType type);
};
