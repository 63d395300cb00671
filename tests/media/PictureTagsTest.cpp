#include <zlib.h>

#include "support/Test.h"

namespace {

Bytes Inflated(const unsigned char* data, unsigned int size) {
    Bytes plain(1000);
    uLongf length = plain.size();
    EXPECT_EQ(uncompress(plain.data(), &length, data, size), Z_OK);
    plain.resize(length);
    return plain;
}

Bytes Inflated(const VXSwfDefineBitsLossless2Tag& tag) {
    return Inflated(tag.GetZlibBitmapData(), tag.GetZlibBitmapDataSize());
}

Bytes TrueColor(unsigned int width, unsigned int height, const Bytes& pixels) {
    const auto tag = NewTag<VXSwfDefineBitsLossless2Tag>(36);
    EXPECT_EQ(tag->CreateImage(VXImage(width, height, pixels.data()), kVXBitmapQualityTrueColor), kVXSuccess);
    EXPECT_EQ(tag->BitmapFormat, 5u);
    return Inflated(*tag);
}

Bytes Palette(unsigned int width, unsigned int height, const Bytes& pixels, unsigned char tableSize) {
    const auto tag = NewTag<VXSwfDefineBitsLossless2Tag>(36);
    EXPECT_EQ(tag->CreateImage(VXImage(width, height, pixels.data()), kVXBitmapQualityPalette), kVXSuccess);
    EXPECT_EQ(tag->BitmapFormat, 3u);
    EXPECT_EQ(tag->BitmapColorTableSize, tableSize);
    return Inflated(*tag);
}

TEST(VXSwfDefineBitsLossless2Tag, PremultipliesTrueColour) {
    EXPECT_EQ(TrueColor(2, 2, Hex("FFFFFFFF 10203000 80402080 FF000001")),
              Hex("FF FE FE FE 00 00 00 00 80 40 20 10 01 00 00 00"));  // Kept: 255 × 1 >> 8 is none
    EXPECT_EQ(TrueColor(0, 0, {}), Bytes());
    EXPECT_EQ(TrueColor(0, 3, {}), Bytes());
    Bytes pixels = Repeat(65538 * 2 * 4, 0);
    const std::pair<std::size_t, unsigned char> corner[] = {
        {0, 0x11}, {1, 0x22}, {65538, 0x33}, {65539, 0x44}};
    for (const auto& [at, value] : corner) {
        pixels[at * 4] = value;
        pixels[at * 4 + 3] = 0xFF;
    }
    EXPECT_EQ(TrueColor(65538, 2, pixels), Hex("FF 10 00 00 FF 21 00 00  FF 32 00 00 FF 43 00 00"))
        << "the upper left part of a picture that is too wide";
}

TEST(VXSwfDefineBitsLossless2Tag, PadsRowsOfAPalette) {
    EXPECT_EQ(Palette(5, 2, Repeat(40, 0xFF), 0),
              Hex("FF FF FF FF  00 00 00 00 00 00 00 00  00 00 00 00 00 00 00 00"));
    // Black comes first in the order of the tree. What is invisible counts as black without alpha.
    EXPECT_EQ(Palette(3, 1, Hex("F0F0F0FF 0A0B0C00 F0F0F0FF"), 1),
              Hex("00 00 00 00  F0 F0 F0 FF  01 00 01 00"));
    EXPECT_EQ(Palette(2, 1, Hex("102030FF 1020A0FF"), 0), Hex("10 20 68 FF  00 00 00 00"))
        << "Kept: opaque colours that differ in the third byte are one";
    EXPECT_EQ(Palette(0, 0, {}, 0xFF), Bytes());
}

TEST(VXSwfDefineBitsLossless2Tag, ClearsTheTopBitOf15BitPixels) {
    const auto tag = NewTag<VXSwfDefineBitsLossless2Tag>(36);
    const Bytes pixels = Hex("FF FF 80 01 7F 00   01 02 03 04 85 06");
    EXPECT_EQ(tag->CreateImage(VXImage16BPP(3, 2, pixels.data())), kVXSuccess);
    EXPECT_EQ(Inflated(*tag), Hex("7F FF 00 01 7F 00 00 00   01 02 03 04 05 06 00 00"));
    EXPECT_EQ(tag->CreateImage(VXImage16BPP(7, 9, nullptr)), kVXFailure);
    EXPECT_EQ(TextOf(*tag),
              "TAG_DEFINEBITSLOSSLESS2(36) - Id=0 - Format=15Bit - Width=7 - Height=9 - ColorTableSize=0 - "
              "BitmapDataSize=0")
        << "the old block is gone";
    const SilentAsserts silent;
    EXPECT_EQ(tag->CreateImage(VXImage16BPP(65535, 65535, pixels.data())), kVXFailure) << "8 GiB";
    EXPECT_EQ(tag->CreateImage(VXImage(65535, 65535, pixels.data()), kVXBitmapQualityTrueColor), kVXSuccess);
    EXPECT_EQ(tag->GetZlibBitmapDataSize(), 0u) << "reported, and answered like every picture";
}

TEST(VXSwfDefineBitsLossless2Tag, DumpsUnderALongHeader) {
    const auto tag = NewTag<VXSwfDefineBitsLossless2Tag>(36);
    EXPECT_EQ(DumpOf(*tag), Hex("3F 09 07 00 00 00 00 00 06 00 00 00 00")) << "before an image was given";
    tag->SetCharacterId(0x0102);
    EXPECT_EQ(tag->CreateImage(VXImage(4, 3, nullptr), kVXBitmapQualityPalette), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("3F 09 08 00 00 00 02 01 03 04 00 03 00 FF")) << "no colours, no block";
    const Bytes pixel = Hex("01 02 03 FF");
    EXPECT_EQ(tag->CreateImage(VXImage(1, 1, pixel.data()), kVXBitmapQualityPalette), kVXSuccess);
    const Bytes block(tag->GetZlibBitmapData(), tag->GetZlibBitmapData() + tag->GetZlibBitmapDataSize());
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(36, Join({Hex("02 01 03 01 00 01 00 00"), block})));
}

TEST(VXSwfDefineBitsJpegTag, WritesThePictureAloneForType21) {
    const auto tag = NewTag<VXSwfDefineBitsJpegTag>(21);
    tag->SetCharacterId(5);
    EXPECT_EQ(tag->SetJpegData(nullptr), kVXFailure);
    EXPECT_EQ(tag->SetJpegData(new unsigned char[4]{0xFF, 0xD8, 0xFF, 0xD9}, 4), kVXSuccess);
    const Bytes alpha = Hex("80 81");
    EXPECT_EQ(tag->SetAlphaData(alpha.data(), 2), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("46 05 05 00 FF D8 FF D9")) << "the alpha plane stays here";
}

/// Claims 4 GiB once it was asked where it stands.
struct Liar : CVXStreamReadWrite {
    using CVXStreamReadWrite::CVXStreamReadWrite;
    unsigned int Tell() override { return std::exchange(m_Claim, 0xFFFFFFFF); }
    unsigned int m_Claim = 0;
};

TEST(VXSwfDefineBitsJpegTag, TakesNoMoreThanTwiceWhatComes) {
    const Bytes data = Noise(33 << 20);
    Liar liar(data.data(), data.size());
    const auto tag = NewTag<VXSwfDefineBitsJpegTag>(21);
    EXPECT_EQ(tag->SetJpegData(&liar), kVXSuccess);
    ASSERT_EQ(tag->GetJpegDataSize(), 64u << 20);
    EXPECT_TRUE(std::equal(data.begin(), data.end(), tag->GetJpegData()));
    EXPECT_EQ(tag->GetJpegData()[data.size()], 0);
}

TEST(VXSwfDefineBitsJpegTag, WritesTheOffsetToTheAlphaPlaneForType35) {
    const auto tag = NewTag<VXSwfDefineBitsJpegTag>(35);
    const Bytes picture = Hex("00 FF D8 FF D9");
    CVXStreamReadWrite stream(picture.data(), picture.size());
    stream.Seek(1, kVXSeekFromStart);
    EXPECT_EQ(tag->SetJpegData(&stream), kVXSuccess) << "the whole length from the position, then zeros";
    EXPECT_EQ(DumpOf(*tag), Hex("CB 08 00 00 05 00 00 00 FF D8 FF D9 00"));

    const Bytes alpha = Repeat(100, 0x7F);
    EXPECT_EQ(tag->SetAlphaData(alpha.data(), 100), kVXSuccess);
    EXPECT_EQ(Inflated(tag->GetAlphaData(), tag->GetAlphaDataSize()), alpha);
    const Bytes dump = DumpOf(*tag);
    const Bytes tail(tag->GetAlphaData(), tag->GetAlphaData() + tag->GetAlphaDataSize());
    EXPECT_EQ(Bytes(dump.end() - static_cast<std::ptrdiff_t>(tail.size()), dump.end()), tail);

    EXPECT_EQ(tag->SetAlphaData(nullptr, 3), kVXFailure);
    EXPECT_EQ(tag->GetAlphaDataSize(), tail.size()) << "nothing changed";
    EXPECT_EQ(tag->SetAlphaData(nullptr, 0), kVXSuccess);
    EXPECT_EQ(Inflated(tag->GetAlphaData(), tag->GetAlphaDataSize()), Bytes());
}

}  // namespace
