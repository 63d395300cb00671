#include "media/VXSwfStartSoundTag.h"

VXSwfStartSoundTag::VXSwfStartSoundTag(enuTagType type) : VXSwfControlTag(type) {}

VXSwfStartSoundTag::~VXSwfStartSoundTag() = default;

VXErrorCodeEnum VXSwfStartSoundTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteWord(SoundId));
        return SoundInfo.DumpToStream(body);
    });
}

void VXSwfStartSoundTag::StartSound(unsigned short soundId) {
    SoundId = soundId;
    SoundInfo.SyncNoMultiple = 1;
    SoundInfo.SyncStop = 0;
    SoundInfo.HasEnvelope = 0;
    SoundInfo.HasLoops = 0;
    SoundInfo.HasOutPoint = 0;
    SoundInfo.HasInPoint = 0;
}
