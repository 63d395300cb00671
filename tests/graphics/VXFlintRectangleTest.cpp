#include "support/Test.h"

namespace {

constexpr VXReal kInfinity = std::numeric_limits<VXReal>::infinity();

TEST(VXTwips, HalfATwipGoesUpAndWhat32BitsCannotHoldSaturates) {
    const std::pair<VXReal, int> rows[] = {{0.125, 3},
                                           {-0.125, -2},
                                           {-0.1251, -3},
                                           {-0.025, 0},
                                           {107374182.35, INT_MAX},
                                           {107374182.4, INT_MAX},
                                           {-107374182.35, -INT_MAX},
                                           {-107374182.4, INT_MIN},
                                           {-kInfinity, INT_MIN},
                                           {std::numeric_limits<VXReal>::quiet_NaN(), 0}};
    for (const auto& [pixels, twips] : rows) EXPECT_EQ(VXToTwips(pixels), twips) << pixels;
}

TEST(VXFlintRectangle, DumpsWhatItLoads) {
    const Bytes stage = Bits(  // 11232 by 4200 twips
        "01111 000000000000000 010101111100000 000000000000000 001000001101000");
    SweepRecordOf<VXFlintRectangle>("a stage", stage, stage);
    SweepRecordOf<VXFlintRectangle>("wide fields are narrowed, and -4 is given 4 bits",
                                    Bits("00110 000001 111100 000000 000000"),
                                    Bits("00100 0001 1100 0000 0000"));
    SweepRecordOf<VXFlintRectangle>(
        "-2^30 takes 32 bits, which 5 bits cannot say",
        Bits("11111 1000000000000000000000000000000 0000000000000000000000000000000"
             "0000000000000000000000000000000 0000000000000000000000000000000"),
        Bits("00000 11000000000000000000000000000000 00000000000000000000000000000000"
             "00000000000000000000000000000000 00000000000000000000000000000000"));
    ExpectAlignedDump<VXFlintRectangle>();
    ExpectAlignedLoad<VXFlintRectangle>(Bits("00010 01 00 00 00 111"));
}

TEST(VXFlintRectangle, HoldsPixels) {
    VXFlintRectangle rectangle;
    ASSERT_EQ(LoadInto(rectangle, Bits("01000 11111111 00000001 00101001 01100100")), kVXSuccess);
    EXPECT_EQ(rectangle.XMin, -0.05);
    EXPECT_EQ(rectangle.XMax, 0.05);
    EXPECT_EQ(rectangle.YMin, 2.05);
    EXPECT_EQ(rectangle.GetHeight(), 2) << "2.95, cut";
    // Arguments are left, top, right, bottom; the wire has left, right, top, bottom.
    EXPECT_EQ(BytesOfRecord(VXFlintRectangle(1, 0, -1, 1)), Bits("00110 010100 101100 000000 010100"));
    rectangle.Set(0.0, 0.0, -1.9, 1e300);
    EXPECT_EQ(rectangle.GetWidth(), -1) << "toward zero";
    EXPECT_EQ(rectangle.GetHeight(), INT_MAX);
}

}  // namespace
