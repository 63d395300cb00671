#include "media/VXSwfDefineSoundTag.h"

#include <climits>

#include "bitstream/VXStreamTransfer_p.h"
#include "media/VXSwfMP3Info.h"

namespace {

constexpr unsigned int kSeekSamplesSize = 2;

unsigned char RateCode(int sampleRate) {
    if (sampleRate < 11000) return 0;
    if (sampleRate < 22000) return 1;
    return sampleRate < 44000 ? 2 : 3;
}

}  // namespace

VXSwfDefineSoundTag::VXSwfDefineSoundTag(enuTagType type) : VXSwfDefinitionTag(type) {}

VXSwfDefineSoundTag::~VXSwfDefineSoundTag() = default;

short VXSwfDefineSoundTag::IncludeMP3Sound(IVXStream* stream, int count) {
    SoundSampleCount = static_cast<unsigned int>(count);
    VXSwfMP3Info info(stream);
    VXSwfMP3FrameHeader header;
    const std::int64_t first = info.FindFrameHeader(0, header);
    if (first < 0) return 0;
    const std::int64_t length = info.GetLength() - first;
    if (length + kSeekSamplesSize > UINT_MAX) return 0;

    SoundFormat = 2;
    SoundSize = 1;
    SoundRate = RateCode(header.GetSampleRate());
    SoundType = header.IsMono() ? 0 : 1;
    if (!info.MeasureQuickly(SoundSampleCount)) SoundSampleCount = info.MeasureSlowly();

    // The earlier data goes first, so that the two never stand side by side.
    SoundData = VXByteBlock();
    VXSeekTo(*stream, static_cast<unsigned int>(first));
    SoundData = VXReadBytes(*stream, static_cast<unsigned int>(length), kSeekSamplesSize);
    return 1;
}

VXErrorCodeEnum VXSwfDefineSoundTag::DumpToStream(VXBitStream& out) {
    return DumpFields(out, [this](VXBitStream& body) {
        VX_RETURN_IF_FAILED(body.WriteBits(SoundFormat & 15u, 4));
        VX_RETURN_IF_FAILED(body.WriteBits(SoundRate & 3u, 2));
        VX_RETURN_IF_FAILED(body.WriteBits(SoundSize != 0 ? 1 : 0, 1));
        VX_RETURN_IF_FAILED(body.WriteBits(SoundType != 0 ? 1 : 0, 1));
        VX_RETURN_IF_FAILED(body.WriteDWord(SoundSampleCount));
        return body.Write(SoundData.GetBytes(), SoundData.GetSize());
    });
}
