#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "memory/VXByteBlock.h"

/// A sound to be started by an event, made from an MP3 file.
///
///     type 14:  CharacterId u16
///               SoundFormat ub[4], SoundRate ub[2], SoundSize ub[1], SoundType ub[1]
///               SoundSampleCount u32
///               SoundData                samples to skip u16 = 0, then the file from its first frame on
///
/// Built by code only: in a loaded movie the type stays raw. Copies share the data.
class VXSWF_API VXSwfDefineSoundTag : public VXSwfDefinitionTag {
public:
    using VXSwfDefinitionTag::DumpToStream;
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXSwfDefineSoundTag() override;

    /// Takes the whole of an MP3 file, wherever the stream stands; it is read from its first frame to its end
    /// and not kept. Describes the sound by the first frame and measures it, whatever `count` says. Data that
    /// does not come is zero, up to 16 MiB or twice what came; beyond that it is left out.
    ///
    /// Non-zero for good. 0 when there is no frame, for null, and when the data would take 2^32 bytes or
    /// more; `SoundSampleCount` is then `count`, and everything else is as it was.
    ///
    /// Kept: what passes for a frame may be another pair of bytes, such as the mark of UTF-16 text in an ID3
    /// tag.
    short IncludeMP3Sound(IVXStream* stream, int count);

    unsigned char SoundFormat = 2;      ///< 2 for MP3
    unsigned char SoundRate = 0;        ///< 0 to 3 for 5.5, 11, 22 and 44 kHz
    unsigned short SoundSize = 1;       ///< 1 for 16 bits a sample
    unsigned short SoundType = 0;       ///< 1 for stereo
    unsigned int SoundSampleCount = 0;  ///< of one channel

    const unsigned char* GetSoundData() const { return SoundData.GetBytes(); }
    unsigned int GetSoundDataSize() const { return SoundData.GetSize(); }

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineSoundTag(enuTagType type);

    VXByteBlock SoundData;
};
