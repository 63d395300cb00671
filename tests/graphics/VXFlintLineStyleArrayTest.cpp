#include "graphics/VXFlintLineStyleArray.h"

#include <type_traits>

#include "RecordBytes.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<VXFlintLineStyleArray>);

void LineStyle2WithAlpha(VXFlintLineStyleArray& lines) {
    lines.SetIsLineStyle2(2);
    lines.SetAlpha(1);
}

TEST(VXFlintLineStyleArray, DumpsWhatItLoads) {
    const Bytes two = Hex("02 14 00 10 20 30 28 00 40 50 60");
    const Bytes styles2 = Join({Hex("01 28 00"), Bits("01 01 0 110 00000 0 10"), Hex("10 20 30 40")});
    const Bytes many = Join({Hex("FF 00 01"), Repeat(1280, 0x11)});
    SweepRecordOf<VXFlintLineStyleArray>("two strokes", two, two);
    SweepRecordOf<VXFlintLineStyleArray>("a stroke with caps and alpha", styles2, styles2,
                                         LineStyle2WithAlpha);
    ExpectCutsFail<VXFlintLineStyleArray>(two);

    VXFlintLineStyleArray lines;
    ASSERT_EQ(LoadInto(lines, Join({Hex("FF"), Repeat(1275, 0x11)})), kVXSuccess) << "255 strokes";
    EXPECT_EQ(BytesOfRecord(lines), Join({Hex("FF FF 00"), Repeat(1275, 0x11)})) << "the flag is not asked";
    lines.SetSupports255Plus(1);
    ASSERT_EQ(LoadInto(lines, many), kVXSuccess) << "256 strokes";
    EXPECT_EQ(BytesOfRecord(lines), many);
}

TEST(VXFlintLineStyleArray, LoadsTheKindInUseAndLeavesTheOther) {
    VXFlintLineStyleArray lines;
    ASSERT_EQ(LoadInto(lines, Hex("02 14 00 10 20 30 28 00 40 50 60")), kVXSuccess);
    lines.SetIsLineStyle2(1);
    ASSERT_EQ(LoadInto(lines, Hex("00")), kVXSuccess);
    EXPECT_EQ(lines.LineStyles.size(), 2u);
    lines.SetIsLineStyle2(0);
    lines.SetAlpha(1);
    ASSERT_EQ(LoadInto(lines, Hex("01 3C 00 01 02 03 04")), kVXSuccess);
    EXPECT_EQ(lines.LineStyles.size(), 1u);
    EXPECT_EQ(BytesOfRecord(lines), Hex("01 3C 00 01 02 03 04"));
    lines.SetSupports255Plus(1);
    EXPECT_EQ(LoadInto(lines, Hex("FF FF FF 14 00 10")), kVXFailure);
    EXPECT_LE(lines.LineStyles.capacity(), 255u) << "a count is believed as far as there are bytes";
}

TEST(VXFlintLineStyleArray, MixedKindsShareOneCount) {
    VXFlintLineStyle2 style;
    style.SetJoinStyle(kVXJoinBevel);
    VXFlintLineStyleArray lines;
    lines.AddLineStyle(VXFlintLineStyle());
    EXPECT_EQ(BytesOfRecord(lines), Hex("01 00 00 00 00 00"));
    lines.AddLineStyle(style);
    EXPECT_EQ(lines.LineStyleCount, 2);
    VXBitStream out;
    EXPECT_EQ(lines.DumpToStream(out), kVXFailure) << "one stroke of the kind in use is missing";
    EXPECT_EQ(BytesOf(out), Hex("02 00 00 96 02 00 00 00"));
    lines.AddLineStyle(VXFlintLineStyle());
    EXPECT_EQ(lines.IsLineStyle2, 1) << "never cleared";
    EXPECT_EQ(lines.LineStyles.size(), 2u);
}

}  // namespace
