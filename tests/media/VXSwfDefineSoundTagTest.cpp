#include "support/Test.h"

namespace {

/// `count` frames of `size` bytes.
Bytes Sound(std::string_view header, std::size_t size, std::size_t count) {
    return Repeat(count, Join({Hex(header), Repeat(size - 4, 0)}));
}

short Include(VXSwfDefineSoundTag& tag, const Bytes& sound, int count, int position = 0) {
    CVXStreamReadWrite stream(sound.data(), sound.size());
    stream.Seek(position, kVXSeekFromStart);
    return tag.IncludeMP3Sound(&stream, count);
}

/// Repeats a frame header for ever, at most so many bytes at a time, and says that it has `length` bytes.
class EndlessStream : public CVXStreamReadWrite {
public:
    explicit EndlessStream(unsigned int length, int most = 1 << 20) : m_Length(length), m_Most(most) {}
    using CVXStreamReadWrite::XferByte;
    int XferByte(unsigned char* data, int count) override {
        count = std::min(count, m_Most);
        for (int i = 0; i < count; ++i) data[i] = m_Header[m_Position++ % m_Header.size()];
        return count;
    }
    int Seek(int offset, VXSeekFromWhere origin) override {
        if (origin == kVXSeekFromStart) m_Position = 0;
        if (origin == kVXSeekFromEnd) m_Position = m_Length;
        m_Position += static_cast<unsigned int>(offset);
        return 1;
    }
    unsigned int Tell() override { return m_Position; }

private:
    Bytes m_Header = Hex("FFFB9000");
    unsigned int m_Length;
    int m_Most;
    unsigned int m_Position = 0;
};

TEST(VXSwfDefineSoundTag, TakesASoundFromItsFirstFrameOn) {
    const auto tag = NewTag<VXSwfDefineSoundTag>(14);
    EXPECT_EQ(DumpOf(*tag), Hex("87 03 00 00 22 00 00 00 00")) << "before a sound was given";
    tag->SetCharacterId(0x0102);
    const Bytes first = Sound("FFFB9000", 417, 4);
    EXPECT_NE(Include(*tag, first, 77, 99), 0);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(14, Join({Hex("02 01 2F EA 11 00 00 00 00"), first})));
    EXPECT_NE(
        Include(*tag, Join({Hex("49 44 33 03 00 00 00 00 00 02 FF 00"), Sound("FFF38CC0", 400, 2)}), 77), 0);
    EXPECT_EQ(tag->GetSoundDataSize(), 802u);
    EXPECT_EQ(tag->SoundType, 0) << "mono";
    EXPECT_EQ(tag->SoundRate, 0) << "a sample rate that there is not";
    EXPECT_EQ(tag->SoundSampleCount, 0u) << "and so no frame";
    const std::pair<const char*, unsigned char> rates[] = {
        {"FFFB9400", 3}, {"FFFB9800", 2}, {"FFF39800", 1}, {"FFE39800", 0}, {"FFEB9000", 0}};
    for (const auto& [header, code] : rates) {
        EXPECT_NE(Include(*tag, Sound(header, 100, 1), 0), 0);
        EXPECT_EQ(tag->SoundRate, code) << "the nearest to that of " << header;
        EXPECT_EQ(tag->SoundType, 1);
    }
}

TEST(VXSwfDefineSoundTag, KeepsAllButTheCountWithoutAFrame) {
    const auto tag = NewTag<VXSwfDefineSoundTag>(14);
    const Bytes sound = Sound("FFE398C0", 100, 1);
    EXPECT_NE(Include(*tag, sound, 5), 0);
    EXPECT_EQ(tag->SoundSampleCount, 1152u) << "too short for the quick measure";
    tag->SoundFormat = 3;
    tag->SoundSize = 0;
    CVXStreamReadWrite empty;
    EndlessStream endless(0xFFFFFFFF);
    for (IVXStream* none : {static_cast<IVXStream*>(nullptr), static_cast<IVXStream*>(&empty),
                            static_cast<IVXStream*>(&endless)}) {
        EXPECT_EQ(tag->IncludeMP3Sound(none, -1), 0);
        EXPECT_EQ(DumpOf(*tag), LongTagBytes(14, Join({Hex("00 00 30 FF FF FF FF 00 00"), sound})));
    }
    EndlessStream tooSlow(1000, 3);
    EXPECT_EQ(tag->IncludeMP3Sound(&tooSlow, 7), 0) << "no header comes whole";
    EndlessStream slow(1000, 8);
    EXPECT_NE(tag->IncludeMP3Sound(&slow, 0), 0);
    ASSERT_EQ(tag->GetSoundDataSize(), 1002u);
    EXPECT_EQ(Bytes(tag->GetSoundData(), tag->GetSoundData() + 1002),
              Join({Hex("00 00 FFFB9000 FFFB9000"), Repeat(992, 0)}))
        << "zero where the stream delivers less";
}

}  // namespace
