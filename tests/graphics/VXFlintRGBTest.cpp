#include "graphics/VXFlintRGB.h"

#include <limits>

#include "platform/VXColor.h"
#include "support/RecordBytes.h"

namespace {

TEST(VXFlintRGB, DumpsWhatItLoads) {
    const Bytes rgb = Hex("10 20 30");
    const Bytes rgba = Hex("10 20 30 40");
    const auto useAlpha = [](short value) { return [value](VXFlintRGB& color) { color.UseAlpha = value; }; };
    SweepRecordOf<VXFlintRGB>("three bytes", rgb, rgb);
    SweepRecordOf<VXFlintRGB>("four bytes", rgba, rgba, useAlpha(1));
    SweepRecordOf<VXFlintRGB>("Kept: a flag of 2 loads four bytes and dumps three", rgba, rgb, useAlpha(2));
    VXFlintRGB color(1, 2, 3, 1, 4);
    ExpectCutsFail(rgba, color);
    ExpectShortDumpsFail(color);
    EXPECT_EQ(LoadInto(color, Hex("10 20")), kVXFailure);
    EXPECT_EQ(BytesOfRecord(color), Hex("10 20 03 04")) << "what was read is kept";
    color.UseAlpha = 0;
    EXPECT_EQ(LoadInto(color, Hex("50 60 70")), kVXSuccess);
    EXPECT_EQ(color.Alpha, 255) << "opaque, whatever it held before";
}

TEST(VXFlintRGB, ConstructorsDifferInAlpha) {
    EXPECT_EQ(VXFlintRGB().Alpha, 255);
    EXPECT_EQ(VXFlintRGB(1, 2, 3, 0, 99).Alpha, 0) << "not 255 and not what was passed";
    EXPECT_EQ(VXFlintRGB(1, 2, 3, 2, 99).Alpha, 99);
    EXPECT_EQ(VXFlintRGB(1, 2, 3, 2, 99).UseAlpha, 2);
    const VXFlintRGB color(VXColor::FromRGB(0.0, 0.5, 1.0, 0.25));
    EXPECT_EQ(color.Alpha, 255);
    EXPECT_EQ(color.UseAlpha, 0);
    const VXReal nan = std::numeric_limits<VXReal>::quiet_NaN();
    EXPECT_EQ(BytesOfRecord(VXFlintRGB(VXColor::FromRGB(0.0, 0.5, 0.9999))), Hex("00 7F FE")) << "truncated";
    EXPECT_EQ(BytesOfRecord(VXFlintRGB(VXColor::FromGray(1.0))), Hex("FF FF FF"));
    EXPECT_EQ(BytesOfRecord(VXFlintRGB(VXColor::FromCMYK(0.0, 1.0, 1.0, 0.0))), Hex("FF 00 00"));
    EXPECT_EQ(BytesOfRecord(VXFlintRGB(VXColor::FromRGB(2.0, -1.0, nan))), Hex("FE 01 00"))
        << "510 and -255 keep eight bits";
}

}  // namespace
