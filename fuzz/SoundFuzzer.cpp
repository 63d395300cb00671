// Looks for the frames of an MP3 file, measures it, and makes a sound of it.
//
//     u8     flags: 1 a stream that gives out early, 2 more of the file comes from repeating it
//     u8     how often the file is repeated
//     u16    where the stream gives out
//     u32    where a search starts
//     bytes  the file

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Support.h"
#include "vxswf.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kLargestFile = std::size_t{1} << 17;
constexpr int kMostSearches = 64;

/// Has its whole length, and gives only some of it.
class BrokenStream : public CVXStreamReadWrite {
public:
    BrokenStream(const Bytes& bytes, int left)
        : CVXStreamReadWrite(bytes.data(), bytes.size()), m_Left(left) {}

    int XferByte(unsigned char* data, int count) override {
        const int moved = CVXStreamReadWrite::XferByte(data, std::min(count, m_Left));
        m_Left -= moved;
        return moved;
    }
    using CVXStreamReadWrite::XferByte;

private:
    int m_Left;
};

void Search(IVXStream& stream, std::int64_t start, const Bytes& file, bool isWhole) {
    VXSwfMP3Info info(&stream);
    const auto size = static_cast<std::int64_t>(file.size());
    Require(info.GetLength() == size);
    VXSwfMP3FrameHeader header;
    for (int searches = 0; searches < kMostSearches; ++searches) {
        const std::int64_t found = info.FindFrameHeader(start, header);
        if (found < 0) break;
        const auto at = static_cast<std::size_t>(found);
        Require(found >= start && found + VXSwfMP3FrameHeader::kSize <= size);
        Require(!isWhole || (file[at] == 0xFF && file[at + 1] >= 0xE0));
        // A block of just that size, so that a sanitizer sees a read behind the end.
        const Bytes rest(file.begin() + found,
                         file.begin() + std::min(size, found + VXSwfMP3Info::kBlockSize));
        const auto length = static_cast<unsigned int>(rest.size());
        Require(info.SizeFrame(rest.data(), length) <= VXSwfMP3Info::kBlockSize * 4);
        Require((info.ReadXingInfo(rest.data(), length) != 0) == (info.XingInfo != nullptr));
        start = found + std::max(1u, header.GetFrameLength());
    }
}

void Measure(IVXStream& stream) {
    VXSwfMP3Info info(&stream);
    unsigned int samples = 77;
    if (!info.MeasureQuickly(samples)) Require(samples == 77);
    info.MeasureSlowly();
}

void Include(IVXStream& stream, std::size_t size, int count) {
    const TagPtr tag = MakeTag(VXSwfTagFactory::TAG_DEFINESOUND, 0);
    auto* sound = dynamic_cast<VXSwfDefineSoundTag*>(tag.get());
    Require(sound != nullptr);
    if (sound->IncludeMP3Sound(&stream, count) != 0) {
        constexpr std::size_t kSkipSize = 2;
        Require(sound->GetSoundDataSize() >= VXSwfMP3FrameHeader::kSize + kSkipSize);
        Require(sound->GetSoundDataSize() <= size + kSkipSize);
    } else {
        Require(sound->SoundSampleCount == static_cast<unsigned int>(count) &&
                sound->GetSoundDataSize() == 0);
    }
    VXBitStream out;
    Require(DumpTwice(*tag, out) == kVXSuccess);
    const TagPtr again = MakeTag(VXSwfTagFactory::TAG_DEFINESOUND, 1);
    Require(again->LoadFromStream(out) == kVXSuccess);
    VXBitStream dumped;
    Require(again->DumpToStream(dumped) == kVXSuccess);
    Require(AreEqual(out, dumped));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    VXSetAssertHandler([](const char*) {});
    Input input(data, size);
    const unsigned int flags = input.Byte();
    const unsigned int repeats = (flags & 2) != 0 ? input.Byte() : 0;
    const int left = input.Word();
    const std::uint32_t start = input.DWord();
    const bool isWhole = (flags & 1) == 0;
    VXBitStream once = input.Rest();
    Bytes file;
    for (unsigned int i = 0; i <= repeats && file.size() + once.GetSize() <= kLargestFile; ++i) {
        file.insert(file.end(), once.GetBuffer(), once.GetBuffer() + once.GetSize());
    }

    // Each has what the stream gives for itself.
    const auto run = [&](auto&& step) {
        BrokenStream stream(file, isWhole ? INT32_MAX : left);
        step(stream);
    };
    run([&](IVXStream& stream) { Search(stream, start % (file.size() + 1), file, isWhole); });
    run([](IVXStream& stream) { Measure(stream); });
    run([&](IVXStream& stream) { Include(stream, file.size(), static_cast<int>(start)); });
    return 0;
}
