#pragma once

#include "framework/VXSwfControlTag.h"
#include "media/VXFlintSoundInfo.h"

/// Starts or stops a sound on the timeline.
///
///     type 15:  SoundId u16, SoundInfo
///
/// Built by code only: in a loaded movie the type stays raw, and a load into this class reads nothing.
class VXSWF_API VXSwfStartSoundTag : public VXSwfControlTag {
public:
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfStartSoundTag() override;

    /// Plays the whole sound once, unless it plays already. Points and counts of the info stay as they are,
    /// off the wire.
    void StartSound(unsigned short soundId);

    unsigned short SoundId = 0xFFFF;
    VXFlintSoundInfo SoundInfo;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfStartSoundTag(enuTagType type);
};
