#include "timeline/VXSwfDefineBinaryDataTag.h"

#include <gtest/gtest.h>

#include "platform/CVXStreamReadWrite.h"
#include "support/TagSweep.h"

TEST(VXSwfDefineBinaryDataTag, DumpsTheBytesOfAStream) {
    const auto tag = NewTag<VXSwfDefineBinaryDataTag>(87);
    ASSERT_NE(tag, nullptr);
    tag->SetCharacterId(7);
    EXPECT_EQ(tag->SetBinaryData(nullptr), kVXFailure);
    EXPECT_EQ(DumpOf(*tag), Hex("C6 15 07 00 00 00 00 00")) << "no data yet";
    const Bytes data = Hex("01 02 03 04");
    CVXStreamReadWrite stream(data.data(), data.size());
    EXPECT_EQ(tag->SetBinaryData(&stream), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("CA 15 07 00 00 00 00 00 01 02 03 04"));
    stream.Seek(3, kVXSeekFromStart);
    EXPECT_EQ(tag->SetBinaryData(&stream), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("CA 15 07 00 00 00 00 00 04 00 00 00"))
        << "the whole length, zeros for the rest";
}

TEST(VXSwfDefineBinaryDataTag, LoadsBehindTheReservedWord) {
    const auto tag = NewTag<VXSwfDefineBinaryDataTag>(87);
    const auto load = [&tag](const Bytes& wire) {
        VXBitStream in = StreamOver(wire);
        return tag->LoadFromStream(in);
    };
    EXPECT_EQ(load(Hex("C8 15 07 00 FF FF FF FF 01 02")), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("C8 15 07 00 00 00 00 00 01 02"));
    EXPECT_EQ(load(Hex("C6 15 07 00 00 00 00 00")), kVXFailure) << "no byte of data";
    EXPECT_EQ(tag->GetBinaryDataSize(), 0u);
    EXPECT_EQ(load(Hex("C4 15 07 00 00 00")), kVXFailure) << "half a reserved word";
    EXPECT_EQ(load(Hex("C2 15 07 00")), kVXFailure);
}
