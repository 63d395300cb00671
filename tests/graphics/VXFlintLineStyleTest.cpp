#include "graphics/VXFlintLineStyle.h"

#include "RecordBytes.h"

namespace {

const Bytes kMiter = Join({Hex("28 00"), Bits("00 10 0 110 00000 0 01"), Hex("00 FF 10 20 30")});
const Bytes kBevel = Join({Hex("28 00"), Bits("01 01 0 110 00000 0 10"), Hex("10 20 30")});

TEST(VXFlintLineStyle, DumpsWhatItLoads) {
    const Bytes thick = Hex("FF FF 10 20 30");
    SweepRecordOf<VXFlintLineStyle>("width and colour", thick, thick);
    ExpectCutsFail<VXFlintLineStyle>(thick);
    VXFlintLineStyle style;
    ASSERT_EQ(LoadInto(style, thick), kVXSuccess);
    EXPECT_EQ(style.Width, 3276.75);
}

TEST(VXFlintLineStyle, DefaultsAndOddWidths) {
    VXFlintLineStyle style;
    EXPECT_EQ(style.Color.UseAlpha, 0);
    style.SetAlpha(1);
    EXPECT_EQ(BytesOfRecord(style), Hex("00 00 00 00 00 00")) << "alpha 0, unlike a bare colour";
    style.SetAlpha(0);
    style.Width = 0.025;
    EXPECT_EQ(BytesOfRecord(style), Hex("01 00 00 00 00"));
    style.Width = 3276.8;
    EXPECT_EQ(BytesOfRecord(style), Hex("00 00 00 00 00")) << "the low 16 bits";
    style.Width = -0.1;
    EXPECT_EQ(BytesOfRecord(style), Hex("FE FF 00 00 00"));
    style.Width = 1e300;
    EXPECT_EQ(BytesOfRecord(style), Hex("FF FF 00 00 00"));
    ExpectShortDumpsFail(style);
}

TEST(VXFlintLineStyle2, DumpsWhatItLoads) {
    SweepRecordOf<VXFlintLineStyle2>("a miter limit stands before the colour", kMiter, kMiter);
    SweepRecordOf<VXFlintLineStyle2>("a bevel has none", kBevel, kBevel);
    const Bytes three = Join({Hex("28 00"), Bits("11 11 0 110 00000 0 11"), Hex("10 20 30")});
    SweepRecordOf<VXFlintLineStyle2>("a join of 3 has none", three, three);
    SweepRecordOf<VXFlintLineStyle2>(
        "flags and limit of another writer are replaced, a fill is read as a colour",
        Join({Hex("28 00"), Bits("00 10 1 001 11111 1 01"), Hex("00 03 10 20 30")}), kMiter);
    ExpectCutsFail<VXFlintLineStyle2>(kMiter);
    VXFlintLineStyle2 style;
    ASSERT_EQ(LoadInto(style, kBevel), kVXSuccess);
    EXPECT_EQ(style.StartCapStyle, kVXCapNone);
    EXPECT_EQ(style.JoinStyle, kVXJoinBevel);
    EXPECT_EQ(style.EndCapStyle, kVXCapSquare);
    ExpectShortDumpsFail(style);
}

TEST(VXFlintLineStyle2, ClosedOverwritesTheCaps) {
    const auto flags = [](const VXFlintLineStyle2& style) {
        const Bytes bytes = BytesOfRecord(style);
        return Bytes{bytes[2], bytes[3]};
    };
    VXFlintLineStyle2 style;
    EXPECT_EQ(style.Closed, 1);
    EXPECT_EQ(flags(style), Bits("10 10 0 110 00000 0 10")) << "square caps and a miter";
    style.SetJoinStyle(kVXJoinRound);
    style.SetClosed(0);
    EXPECT_EQ(flags(style), Bits("01 00 0 110 00000 0 01"));
    style.SetCapStyle(kVXCapRound, kVXCapNone);
    EXPECT_EQ(flags(style), Bits("00 00 0 110 00000 0 01"));
    style.SetClosed(2);
    EXPECT_EQ(flags(style), Bits("10 00 0 110 00000 0 10")) << "no close stays 0";
    EXPECT_EQ(style.Closed, 2);
}

TEST(VXFlintMorphLineStyle, ColoursHaveAlpha) {
    const Bytes bytes = Hex("14 00 10 20 30 40 28 00 50 60 70 80");
    ExpectCutsFail<VXFlintMorphLineStyle>(bytes);
    VXFlintMorphLineStyle style;
    ASSERT_EQ(LoadInto(style, bytes), kVXSuccess);
    EXPECT_EQ(style.StartWidth, 20);
    EXPECT_EQ(style.EndWidth, 40);
    EXPECT_EQ(BytesOfRecord(style.StartColor), Hex("10 20 30 40"));
    EXPECT_EQ(BytesOfRecord(style.EndColor), Hex("50 60 70 80"));
}

}  // namespace
