#include "media/VXSwfDefineBitsJpegTag.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "platform/CVXStreamReadWrite.h"
#include "support/TagSweep.h"

namespace {

unsigned char* NewArray(const Bytes& bytes) {
    auto* array = new unsigned char[bytes.size()];
    std::copy(bytes.begin(), bytes.end(), array);
    return array;
}

Bytes Inflated(const unsigned char* data, unsigned int size) {
    Bytes plain(1000);
    uLongf length = plain.size();
    EXPECT_EQ(uncompress(plain.data(), &length, data, size), Z_OK);
    plain.resize(length);
    return plain;
}

}  // namespace

TEST(VXSwfDefineBitsJpegTag, WritesThePictureAloneForType21) {
    const auto tag = NewTag<VXSwfDefineBitsJpegTag>(21);
    ASSERT_NE(tag, nullptr);
    tag->SetCharacterId(5);
    EXPECT_EQ(tag->SetJpegData(nullptr), kVXFailure);
    EXPECT_EQ(tag->SetJpegData(NewArray(Hex("FF D8 FF D9")), 4), kVXSuccess);
    const Bytes alpha = Hex("80 81");
    EXPECT_EQ(tag->SetAlphaData(alpha.data(), 2), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("46 05 05 00 FF D8 FF D9")) << "the alpha plane stays here";
}

TEST(VXSwfDefineBitsJpegTag, WritesTheOffsetToTheAlphaPlaneForType35) {
    const auto tag = NewTag<VXSwfDefineBitsJpegTag>(35);
    ASSERT_NE(tag, nullptr);
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
