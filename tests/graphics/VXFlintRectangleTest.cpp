#include "graphics/VXFlintRectangle.h"

#include <climits>

#include "RecordBytes.h"

namespace {

TEST(VXFlintRectangle, DumpsWhatItLoads) {
    const Bytes zero = Hex("00");
    SweepRecordOf<VXFlintRectangle>("a width of 0 and no fields", zero, zero);
    const Bytes stage = Bits(
        "01111"              // width 15
        "000000000000000"    // left 0
        "010101111100000"    // right 11200 twips
        "000000000000000"    // top 0
        "001000001101000");  // bottom 4200 twips
    SweepRecordOf<VXFlintRectangle>("a stage", stage, stage);
    ExpectCutsFail<VXFlintRectangle>(stage);
    SweepRecordOf<VXFlintRectangle>("a width that is wider than needed is narrowed",
                                    Bits("00110 000001 111110 000000 000000"), Bits("00011 001 110 000 000"));
    SweepRecordOf<VXFlintRectangle>("-4 fits 3 bits and is given 4", Bits("00011 100 000 000 000"),
                                    Bits("00100 1100 0000 0000 0000"));
    SweepRecordOf<VXFlintRectangle>(
        "-2^30 in 31 bits takes 32, which spoils nothing but the width",
        Bits("11111 1000000000000000000000000000000 0000000000000000000000000000000"
             "0000000000000000000000000000000 0000000000000000000000000000000"),
        Bits("00000 11000000000000000000000000000000 00000000000000000000000000000000"
             "00000000000000000000000000000000 00000000000000000000000000000000"));
}

TEST(VXFlintRectangle, HoldsPixels) {
    const Bytes bytes = Bits("01000 11111111 00000001 00101001 01100100");
    VXBitStream in = StreamOver(bytes);
    VXFlintRectangle rectangle;
    ASSERT_EQ(rectangle.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(rectangle.XMin, -0.05);
    EXPECT_EQ(rectangle.XMax, 0.05);
    EXPECT_EQ(rectangle.YMin, 2.05);
    EXPECT_EQ(rectangle.YMax, 5.0);
    EXPECT_EQ(rectangle.GetHeight(), 2) << "2.95 is truncated";

    // Both take left, top, right, bottom; the wire takes left, right, top, bottom.
    const Bytes expected = Bits("00110 010100 101100 000000 010100");
    EXPECT_EQ(BytesOfRecord(VXFlintRectangle(1, 0, -1, 1)), expected);
    rectangle.Set(1.0, 0.0, -1.0, 1.0);
    EXPECT_EQ(BytesOfRecord(rectangle), expected);
    EXPECT_EQ(rectangle.GetWidth(), -2) << "nothing keeps left at or below right";
    rectangle.Set(0.0, 0.0, -1.9, 1e300);
    EXPECT_EQ(rectangle.GetWidth(), -1) << "toward zero";
    EXPECT_EQ(rectangle.GetHeight(), INT_MAX);
}

TEST(VXFlintRectangle, HalfATwipGoesUp) {
    VXFlintRectangle rectangle;
    rectangle.Set(0.025, -0.025, -0.026, 0.0249);
    EXPECT_EQ(BytesOfRecord(rectangle), Bits("00010 01 11 00 00"));
}

TEST(VXFlintRectangle, StartsAndEndsOnAByte) {
    VXBitStream out;
    EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
    EXPECT_EQ(VXFlintRectangle(0, 0, 0, 0).DumpToStream(out), kVXSuccess);
    EXPECT_EQ(out.WriteByte(0x11), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Hex("80 00 11"));

    const Bytes bytes = Join({Hex("FF"), Bits("00010 01 00 00 00 111"), Hex("AA")});
    VXBitStream in = StreamOver(bytes);
    unsigned int bits = 0;
    ASSERT_EQ(in.ReadBits(3, bits), kVXSuccess);
    VXFlintRectangle rectangle;
    ASSERT_EQ(rectangle.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(rectangle.XMin, 0.05);
    ASSERT_EQ(in.ReadBits(8, bits), kVXSuccess);
    EXPECT_EQ(bits, 0xAAu);
}

}  // namespace
