#include "media/VXSwfMP3Info.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "bitstream/VXStreamTransfer_p.h"

namespace {

constexpr int kInvalid = -1;
constexpr unsigned int kVersionReserved = 1;
constexpr unsigned int kVersionMpeg25 = 0;
constexpr unsigned int kSamplesPerFrame = 1152;
constexpr unsigned int kSamplesPerFrameOfLayer1 = 384;
constexpr unsigned int kMaxAttempts = 32;

constexpr int kKilobits[2][3][16] = {
    // MPEG-1, Layers I to III
    {{0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, kInvalid},
     {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, kInvalid},
     {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, kInvalid}},
    // MPEG-2 and MPEG-2.5
    {{0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, kInvalid},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, kInvalid},
     {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, kInvalid}}};

// MPEG-1; MPEG-2 has half of that, MPEG-2.5 a quarter.
constexpr int kSampleRates[4] = {44100, 48000, 32000, kInvalid};

bool IsSync(const unsigned char* bytes) { return bytes[0] == 0xFF && (bytes[1] & 0xE0) == 0xE0; }

/// Offset of the first sync that has both its bytes among `size`; `size` without one.
unsigned int FindSync(const unsigned char* bytes, unsigned int size) {
    for (unsigned int at = 0; at + 1 < size; ++at) {
        const void* found = std::memchr(bytes + at, 0xFF, size - 1 - at);
        if (found == nullptr) break;
        at = static_cast<unsigned int>(static_cast<const unsigned char*>(found) - bytes);
        if (IsSync(bytes + at)) return at;
    }
    return size;
}

bool HasPadding(const unsigned char* header) { return (header[2] & 2) != 0; }

unsigned int BigEndian32(const unsigned char* bytes) {
    return static_cast<unsigned int>(bytes[0]) << 24 | static_cast<unsigned int>(bytes[1]) << 16 |
           static_cast<unsigned int>(bytes[2]) << 8 | bytes[3];
}

}  // namespace

void VXSwfMP3FrameHeader::Unpack(const unsigned char* bytes) {
    const unsigned int word = BigEndian32(bytes);
    Sync = word >> 21;
    VersionId = word >> 19 & 3;
    LayerBits = word >> 17 & 3;
    Protection = word >> 16 & 1;
    BitrateIndex = word >> 12 & 15;
    SampleRateIndex = word >> 10 & 3;
    Padding = word >> 9 & 1;
    Private = word >> 8 & 1;
    ChannelMode = word >> 6 & 3;
    ModeExtension = word >> 4 & 3;
    RightsBit = word >> 3 & 1;
    SourceBit = word >> 2 & 1;
    Emphasis = word & 3;
}

int VXSwfMP3FrameHeader::GetKilobits() const {
    if (VersionId == kVersionReserved || GetLayer() == 0) return kInvalid;
    return kKilobits[IsMpeg1() ? 0 : 1][GetLayer() - 1][BitrateIndex & 15];
}

int VXSwfMP3FrameHeader::GetSampleRate() const {
    const int rate = kSampleRates[SampleRateIndex & 3];
    if (VersionId == kVersionReserved || rate == kInvalid) return kInvalid;
    if (IsMpeg1()) return rate;
    return VersionId == kVersionMpeg25 ? rate / 4 : rate / 2;
}

unsigned int VXSwfMP3FrameHeader::GetFrameLength() const {
    const int kilobits = GetKilobits();
    const int rate = GetSampleRate();
    if (kilobits == kInvalid || rate == kInvalid) return 0;
    const int padding = Padding != 0 ? 1 : 0;
    const int length = GetLayer() == 1 ? (kilobits * 12000 / rate + padding) * 4  //
                                       : kilobits * 144000 / rate + padding;
    return static_cast<unsigned int>(length);
}

/// The part of the stream that searches look at.
class VXSwfMP3Info::Window {
public:
    /// What the window holds from `position` on: at least `count` bytes, unless the stream does not deliver
    /// them.
    std::span<const unsigned char> From(IVXStream& stream, std::int64_t position, std::size_t count) {
        if (position < m_Begin || position + static_cast<std::int64_t>(count) > m_Begin + m_Size) {
            VXSeekTo(stream, static_cast<unsigned int>(position));
            m_Begin = position;
            m_Size = VXTransfer(stream, m_Bytes, sizeof m_Bytes);
        }
        const auto offset = static_cast<std::size_t>(position - m_Begin);
        return {m_Bytes + offset, m_Size - offset};
    }

private:
    std::int64_t m_Begin = 0;
    unsigned int m_Size = 0;
    unsigned char m_Bytes[65536];
};

VXSwfMP3Info::VXSwfMP3Info(IVXStream* stream) : Stream(stream) {
    if (stream == nullptr) return;
    const unsigned int here = stream->Tell();
    m_Length = VXSeekToEnd(*stream);
    VXSeekTo(*stream, here);
}

VXSwfMP3Info::~VXSwfMP3Info() = default;

std::int64_t VXSwfMP3Info::FindFrameHeader(std::int64_t start, VXSwfMP3FrameHeader& header) {
    constexpr std::int64_t kHeaderSize = VXSwfMP3FrameHeader::kSize;
    // Kept: a position against a size.
    const std::int64_t size = m_Length - start;
    const std::int64_t end = size - kHeaderSize;
    if (start < 0 || size < kHeaderSize) return -1;
    if (m_Window == nullptr) m_Window = std::make_unique_for_overwrite<Window>();
    for (std::int64_t position = start; position < end;) {
        const std::span<const unsigned char> bytes = m_Window->From(*Stream, position, kHeaderSize);
        if (bytes.size() < kHeaderSize) return -1;
        // Places where a header can begin, and one byte more for the sync of the last of them.
        const auto places =
            std::min(end - position, static_cast<std::int64_t>(bytes.size()) - (kHeaderSize - 1));
        const unsigned int at = FindSync(bytes.data(), static_cast<unsigned int>(places + 1));
        if (at < places) {
            header.Unpack(bytes.data() + at);
            return position + at;
        }
        position += places;
    }
    return -1;
}

unsigned int VXSwfMP3Info::SizeFrame(const unsigned char* bytes, unsigned int available) {
    if (available < VXSwfMP3FrameHeader::kSize || !IsSync(bytes)) return 0;
    Header.Unpack(bytes);
    // Kept: the second of the two bits that tell the version has no say here.
    if (bytes[1] < 0xF0) Header.VersionId = kVersionMpeg25;
    const int kilobits = Header.GetKilobits();
    const int sampleRate = Header.GetSampleRate();
    if (kilobits < 0 || sampleRate < 0) return 0;
    if (kilobits == 0) return FindFreeFrameSize(bytes, available);
    // Hundreds of hertz, twice those of MPEG-1, once those of the rest, where MPEG-2.5 counts as MPEG-2.
    const int rate = kSampleRates[Header.SampleRateIndex] / 100 * (Header.IsMpeg1() ? 2 : 1);
    if (Header.GetLayer() == 1) return static_cast<unsigned int>(kilobits * 240 / rate * 4);
    const bool isHalf = Header.GetLayer() == 3 && !Header.IsMpeg1() && Header.VersionId != kVersionMpeg25;
    return static_cast<unsigned int>(kilobits * (isHalf ? 1440 : 2880) / rate);
}

/// Finds the distance at which the first two bytes come again and again, to the end of what there is.
unsigned int VXSwfMP3Info::FindFreeFrameSize(const unsigned char* bytes, unsigned int available) const {
    constexpr unsigned int kFirstOffset = 24;
    constexpr unsigned int kEndOffset = 2000;
    constexpr unsigned int kReach = 10000;
    const unsigned int limit = std::min(available, kReach) - 3;
    const unsigned int unit = Header.GetLayer() == 1 ? 4 : 1;
    const unsigned int padding = Header.Padding;
    const auto isRepeat = [bytes](unsigned int at) { return std::memcmp(bytes + at, bytes, 2) == 0; };
    for (unsigned int offset = kFirstOffset; offset <= limit && offset < kEndOffset; ++offset) {
        if (!isRepeat(offset)) continue;
        // Kept: the padding counts once here, whatever the unit.
        const unsigned int candidate = offset - padding;
        unsigned int stop = padding * unit + candidate;
        bool isGood = stop <= limit;
        while (isGood && stop <= limit) {
            isGood = isRepeat(stop);
            stop += (HasPadding(bytes + stop) ? unit : 0) + candidate;
        }
        if (isGood) return candidate;
    }
    return 0;
}

unsigned int VXSwfMP3Info::GetBitrate(unsigned int frameSize) const {
    const int kilobits = Header.GetKilobits();
    if (kilobits != 0) return static_cast<unsigned int>(kilobits);
    unsigned int samples = kSamplesPerFrame;
    if (Header.GetLayer() == 1) samples = kSamplesPerFrameOfLayer1;
    if (Header.GetLayer() == 3 && !Header.IsMpeg1()) samples /= 2;
    return frameSize * 8 * static_cast<unsigned int>(Header.GetSampleRate()) / samples / 1000;
}

/// Reads on where the quick measure stands. A stream that has no end is left at its length.
bool VXSwfMP3Info::ReadOn(unsigned char* target, unsigned int count) {
    if (count > m_Unread) return false;
    m_Unread -= count;
    return VXTransfer(*Stream, target, count) == count;
}

/// Answers the size of the frame, or 0.
unsigned int VXSwfMP3Info::FindFirstFrame() {
    VXSeekTo(*Stream, 0);
    m_Unread = m_Length;
    for (unsigned int attempt = 0; attempt < kMaxAttempts; ++attempt) {
        if (!ReadOn(Block.get(), kBlockSize)) return 0;
        unsigned int at = FindSync(Block.get(), kBlockSize);
        while (at == kBlockSize) {
            // The last byte may be the first one of a sync.
            Block[0] = Block[kBlockSize - 1];
            if (!ReadOn(Block.get() + 1, kBlockSize - 1)) return 0;
            at = FindSync(Block.get(), kBlockSize);
        }
        const unsigned int size = SizeFrame(Block.get() + at, kBlockSize - at);
        if (size != 0) return size;
        // Kept: the rest of the block is not looked at.
    }
    return 0;
}

bool VXSwfMP3Info::MeasureQuickly(unsigned int& samples) {
    if (Stream == nullptr) return false;
    if (Block == nullptr) Block = std::make_unique_for_overwrite<unsigned char[]>(kBlockSize);
    const unsigned int frameSize = FindFirstFrame();
    if (frameSize == 0) return false;
    Bitrate = GetBitrate(frameSize);
    const int rate = Header.GetSampleRate();
    const auto msPerFrame = static_cast<float>((Header.IsMpeg1() ? 1152000.0 : 576000.0) / rate);
    const std::int64_t frames = m_Length / frameSize;
    const float duration = static_cast<float>(frames) * msPerFrame;
    const auto durationMs = static_cast<std::uint64_t>(duration);
    samples = static_cast<unsigned int>(durationMs * static_cast<unsigned int>(rate) / 1000);
    return true;
}

unsigned int VXSwfMP3Info::MeasureSlowly() {
    unsigned int samples = 0;
    VXSwfMP3FrameHeader header;
    std::int64_t position = FindFrameHeader(0, header);
    while (position >= 0) {
        const unsigned int length = header.GetFrameLength();
        if (length != 0) samples += header.GetLayer() == 1 ? kSamplesPerFrameOfLayer1 : kSamplesPerFrame;
        position = FindFrameHeader(position + std::max(length, 1u), header);
    }
    return samples;
}

short VXSwfMP3Info::ReadXingInfo(const unsigned char* block, unsigned int length) {
    XingInfo = nullptr;
    std::span<const unsigned char> rest(block, length);
    const auto take = [&rest](std::size_t count) {
        const unsigned char* bytes = count <= rest.size() ? rest.data() : nullptr;
        rest = rest.subspan(std::min(count, rest.size()));
        return bytes;
    };
    const auto takeNumber = [&take](auto& number) {
        const unsigned char* bytes = take(4);
        if (bytes != nullptr)
            number = static_cast<std::remove_reference_t<decltype(number)>>(BigEndian32(bytes));
        return bytes != nullptr;
    };
    if (length < VXSwfMP3FrameHeader::kSize) return 0;
    VXSwfMP3FrameHeader header;
    header.Unpack(block);
    const unsigned int offset = header.IsMpeg1() ? (header.IsMono() ? 21 : 36) : (header.IsMono() ? 13 : 21);
    take(offset);
    const unsigned char* mark = take(4);
    if (mark == nullptr || std::memcmp(mark, "Xing", 4) != 0) return 0;

    auto info = std::make_unique<VXSwfXingInfo>();
    if (!takeNumber(info->Flags)) return 0;
    if ((info->Flags & 1) != 0 && !takeNumber(info->Frames)) return 0;
    if ((info->Flags & 2) != 0 && !takeNumber(info->Bytes)) return 0;
    if ((info->Flags & 4) != 0) {
        const unsigned char* toc = take(VXSwfXingInfo::kTocSize);
        if (toc == nullptr) return 0;
        std::copy_n(toc, VXSwfXingInfo::kTocSize, info->Toc);
    }
    if ((info->Flags & 8) != 0 && !takeNumber(info->VbrScale)) return 0;
    const int rate = kSampleRates[header.SampleRateIndex];
    if (rate != kInvalid) info->SampleRate = static_cast<unsigned int>(header.IsMpeg1() ? rate : rate / 2);
    info->IsMpeg1 = header.IsMpeg1() ? 1 : 0;
    XingInfo = std::move(info);
    return 1;
}
