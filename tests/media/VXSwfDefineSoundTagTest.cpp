#include "media/VXSwfDefineSoundTag.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/CVXStreamReadWrite.h"
#include "support/TagSweep.h"

namespace {

/// Many frames of `size` bytes, and `tail` bytes that belong to none.
Bytes Sound(std::string_view header, std::size_t size, std::size_t count) {
    Bytes frame = Hex(header);
    frame.resize(size);
    Bytes sound;
    for (std::size_t i = 0; i < count; ++i) sound.insert(sound.end(), frame.begin(), frame.end());
    return sound;
}

/// Repeats a frame header for ever and says that it has `length` bytes.
class EndlessStream : public CVXStreamReadWrite {
public:
    explicit EndlessStream(unsigned int length) : m_Length(length) {}
    using CVXStreamReadWrite::XferByte;
    int XferByte(unsigned char* data, int count) override {
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
    unsigned int m_Position = 0;
};

}  // namespace

TEST(VXSwfDefineSoundTag, TakesASoundFromItsFirstFrameOn) {
    const auto tag = NewTag<VXSwfDefineSoundTag>(14);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("87 03 00 00 22 00 00 00 00")) << "before a sound was given";
    tag->SetCharacterId(0x0102);

    const Bytes first = Sound("FFFB9000", 417, 4);
    CVXStreamReadWrite stream(first.data(), first.size());
    stream.Seek(99, kVXSeekFromStart);
    EXPECT_NE(tag->IncludeMP3Sound(&stream, 77), 0);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(14, Join({Hex("02 01 2F EA 11 00 00 00 00"), first})));

    const Bytes id3 = Join({Hex("49 44 33 03 00 00 00 00 00 02 FF 00"), Sound("FFF38CC0", 400, 2)});
    CVXStreamReadWrite behindId3(id3.data(), id3.size());
    EXPECT_NE(tag->IncludeMP3Sound(&behindId3, 77), 0);
    EXPECT_EQ(tag->GetSoundDataSize(), 802u);
    EXPECT_EQ(tag->SoundType, 0) << "mono";
    EXPECT_EQ(tag->SoundRate, 0) << "a sample rate that there is not";
    EXPECT_EQ(tag->SoundSampleCount, 0u) << "and so no frame";
}

TEST(VXSwfDefineSoundTag, NamesTheNearestRate) {
    const std::pair<const char*, unsigned char> rows[] = {
        {"FFFB9000", 3}, {"FFFB9400", 3}, {"FFFB9800", 2}, {"FFF39000", 2}, {"FFF39400", 2},
        {"FFF39800", 1}, {"FFE39000", 1}, {"FFE39400", 1}, {"FFE39800", 0}, {"FFEB9000", 0}};
    for (const auto& [header, code] : rows) {
        const Bytes sound = Sound(header, 100, 1);
        CVXStreamReadWrite stream(sound.data(), sound.size());
        const auto tag = NewTag<VXSwfDefineSoundTag>(14);
        EXPECT_NE(tag->IncludeMP3Sound(&stream, 0), 0);
        EXPECT_EQ(tag->SoundRate, code) << header;
        EXPECT_EQ(tag->SoundType, 1);
    }
}

TEST(VXSwfDefineSoundTag, KeepsAllButTheCountWithoutAFrame) {
    const auto tag = NewTag<VXSwfDefineSoundTag>(14);
    const Bytes sound = Sound("FFE398C0", 100, 1);
    CVXStreamReadWrite stream(sound.data(), sound.size());
    EXPECT_NE(tag->IncludeMP3Sound(&stream, 5), 0);
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
}

TEST(VXSwfDefineSoundTag, IsZeroWhereTheStreamDeliversLess) {
    class Shrinking : public EndlessStream {
    public:
        using EndlessStream::EndlessStream;
        using EndlessStream::XferByte;
        int XferByte(unsigned char* data, int count) override {
            return EndlessStream::XferByte(data, std::min(count, 8));
        }
    };
    Shrinking stream(1000);
    const auto tag = NewTag<VXSwfDefineSoundTag>(14);
    EXPECT_NE(tag->IncludeMP3Sound(&stream, 0), 0);
    ASSERT_EQ(tag->GetSoundDataSize(), 1002u);
    EXPECT_EQ(Bytes(tag->GetSoundData(), tag->GetSoundData() + 1002),
              Join({Hex("00 00 FFFB9000 FFFB9000"), Repeat(992, 0)}));
}
