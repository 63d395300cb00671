#include "support/Test.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<VXFlintLineStyleArray>);

/// A host's own stroke.
struct HostLineStyle final : VXFlintLineStyle {
    VXErrorCodeEnum DumpToStream(VXBitStream&) override { return kVXFailure; }
};

TEST(VXFlintLineStyle, DumpsWhatItLoads) {
    const Bytes thick = Hex("FF FF 10 20 30");
    SweepRecordOf<VXFlintLineStyle>("width and colour", thick, thick);
    VXFlintLineStyle style;
    ASSERT_EQ(LoadInto(style, thick), kVXSuccess);
    EXPECT_EQ(style.Width, 3276.75);
    style = VXFlintLineStyle();
    style.SetAlpha(1);
    EXPECT_EQ(BytesOfRecord(style), Hex("00 00 00 00 00 00")) << "alpha 0, unlike a bare colour";
    style.SetAlpha(0);
    const std::pair<VXReal, const char*> rows[] = {{0.025, "01 00 00 00 00"},
                                                   {3276.8, "00 00 00 00 00"},
                                                   {-0.1, "FE FF 00 00 00"},
                                                   {1e300, "FF FF 00 00 00"}};
    for (const auto& [width, bytes] : rows) {
        style.Width = width;
        EXPECT_EQ(BytesOfRecord(style), Hex(bytes)) << "the low 16 bits of " << width;
    }
}

TEST(VXFlintLineStyle2, DumpsWhatItLoads) {
    const auto style2 = [](const char* flags, const char* rest) {
        return Join({Hex("28 00"), Bits(flags), Hex(rest)});
    };
    const Bytes miter = style2("00 10 0 110 00000 0 01", "00 FF 10 20 30");
    const Bytes bevel = style2("01 01 0 110 00000 0 10", "10 20 30");
    SweepRecordOf<VXFlintLineStyle2>("a miter limit stands before the colour", miter, miter);
    SweepRecordOf<VXFlintLineStyle2>("a bevel has none", bevel, bevel);
    SweepRecordOf<VXFlintLineStyle2>(
        "Kept: flags and limit of another writer are replaced, a fill is read as a colour",
        style2("00 10 1 001 11111 1 01", "00 03 10 20 30"), miter);
    VXFlintLineStyle2 style;
    ASSERT_EQ(LoadInto(style, bevel), kVXSuccess);
    EXPECT_EQ(style.StartCapStyle, kVXCapNone);
    EXPECT_EQ(style.JoinStyle, kVXJoinBevel);
    EXPECT_EQ(style.EndCapStyle, kVXCapSquare);
}

TEST(VXFlintLineStyle2, ClosedOverwritesTheCaps) {
    const auto flags = [](VXFlintLineStyle2 style) {
        const Bytes bytes = BytesOfRecord(style);
        return Bytes{bytes[2], bytes[3]};
    };
    VXFlintLineStyle2 style;
    EXPECT_EQ(flags(style), Bits("10 10 0 110 00000 0 10")) << "square caps and a miter";
    style.SetJoinStyle(kVXJoinRound);
    style.SetClosed(0);
    EXPECT_EQ(flags(style), Bits("01 00 0 110 00000 0 01"));
    style.SetCapStyle(kVXCapRound, kVXCapNone);
    EXPECT_EQ(flags(style), Bits("00 00 0 110 00000 0 01"));
    style.SetClosed(2);
    EXPECT_EQ(flags(style), Bits("10 00 0 110 00000 0 10")) << "no close stays 0";
}

TEST(VXFlintMorphLineStyle, ColoursHaveAlpha) {
    const Bytes bytes = Hex("14 00 10 20 30 40 28 00 50 60 70 80");
    VXFlintMorphLineStyle style;
    ExpectCutsFail(bytes, style);
    ASSERT_EQ(LoadInto(style, bytes), kVXSuccess);
    EXPECT_EQ(style.EndWidth, 40);
    EXPECT_EQ(BytesOfRecord(style.StartColor), Hex("10 20 30 40"));
    EXPECT_EQ(BytesOfRecord(style.EndColor), Hex("50 60 70 80"));
}

TEST(VXFlintLineStyleArray, DumpsWhatItLoads) {
    const Bytes two = Hex("02 14 00 10 20 30 28 00 40 50 60");
    const Bytes styles2 = Join({Hex("01 28 00"), Bits("01 01 0 110 00000 0 10"), Hex("10 20 30 40")});
    SweepRecordOf<VXFlintLineStyleArray>("two strokes", two, two);
    SweepRecordOf<VXFlintLineStyleArray>("a stroke with caps and alpha", styles2, styles2,
                                         [](VXFlintLineStyleArray& lines) {
                                             lines.SetIsLineStyle2(2);
                                             lines.SetAlpha(1);
                                         });
    VXFlintLineStyleArray lines;
    ASSERT_EQ(LoadInto(lines, Join({Hex("FF"), Repeat(1275, 0x11)})), kVXSuccess) << "255 strokes";
    EXPECT_EQ(BytesOfRecord(lines), Join({Hex("FF FF 00"), Repeat(1275, 0x11)}))
        << "Kept: the flag is not asked";
    lines.SetSupports255Plus(1);
    const Bytes many = Join({Hex("FF 00 01"), Repeat(1280, 0x11)});
    ASSERT_EQ(LoadInto(lines, many), kVXSuccess) << "256 strokes";
    EXPECT_EQ(BytesOfRecord(lines), many);
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
    ASSERT_EQ(LoadInto(lines, Hex("00")), kVXSuccess);
    EXPECT_EQ(lines.LineStyles.size(), 2u) << "a load leaves the kind that is not in use";
}

}  // namespace
