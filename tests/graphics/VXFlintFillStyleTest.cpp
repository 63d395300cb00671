#include "graphics/VXFlintFillStyle.h"

#include <type_traits>

#include "RecordBytes.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<VXFlintFillStyle>);
static_assert(std::is_nothrow_move_constructible_v<VXFlintFillStyleArray>);

VXFlintFillStyle BitmapFill(int type, int id) {
    return VXFlintFillStyle(static_cast<unsigned char>(type), VXFlintRGB(), VXFlintMatrix(),
                            VXFlintGradient(), static_cast<unsigned short>(id), VXFlintMatrix());
}

void Supports255Plus(VXFlintFillStyleArray& fills) { fills.SetSupports255Plus(1); }

TEST(VXFlintFillStyle, DumpsWhatItLoads) {
    const Bytes solid = Hex("00 10 20 30");
    SweepRecordOf<VXFlintFillStyle>("solid", solid, solid);
    ExpectCutsFail<VXFlintFillStyle>(solid);
    for (const char* type : {"10", "12"}) {
        const Bytes gradient = Join({Hex(type), Bits("0 0 00010 01 11"), Hex("41 80 10 20 30")});
        SweepRecordOf<VXFlintFillStyle>("gradient", gradient, gradient);
        ExpectCutsFail<VXFlintFillStyle>(gradient);
    }
    for (const char* type : {"40", "41", "42", "43"}) {
        const Bytes bitmap = Join({Hex(type), Hex("FF FF"), Bits("0 0 00010 01 11")});
        SweepRecordOf<VXFlintFillStyle>("bitmap", bitmap, bitmap);
        ExpectCutsFail<VXFlintFillStyle>(bitmap);
    }
    for (const char* type : {"01", "0F", "11", "13", "3F", "44", "FF"}) {
        SweepRecordOf<VXFlintFillStyle>("a type without a meaning is one byte",
                                        Join({Hex(type), Hex("EE EE")}), Hex(type));
    }
}

TEST(VXFlintFillStyle, AlphaReachesEveryColour) {
    VXFlintFillStyle style;
    style.Gradient.NumGradients = 1;
    style.Gradient.GradientRecords.resize(1);
    style.SetAlpha(1);
    EXPECT_EQ(style.Gradient.GradientRecords[0].Color.UseAlpha, 1);
    EXPECT_EQ(BytesOfRecord(style), Hex("00 00 00 00 FF"));
    style.FillStyleType = 16;
    EXPECT_EQ(BytesOfRecord(style), Hex("10 00 01 00 00 00 00 FF"));
}

TEST(VXFlintFillStyle, BitmapsAreRenumbered) {
    VXFlintIDMap map;
    map.Set(0, 9);
    map.Set(5, 50);
    map.Set(0xFFFF, 51);
    VXFlintFillStyleArray fills;
    for (const int type : {64, 67, 63, 68, 16}) fills.AddFillStyle(BitmapFill(type, 5));
    for (const int id : {0, 0xFFFF, 6}) fills.AddFillStyle(BitmapFill(65, id));
    fills.FillStyles.push_back(BitmapFill(65, 5));  // behind the count
    fills.UpdateReferenceIDs(nullptr);
    EXPECT_EQ(fills.FillStyles[0].BitmapId, 5);
    fills.UpdateReferenceIDs(&map);
    const unsigned short expected[] = {50, 50, 5, 5, 5, 0, 51, 6, 5};
    for (std::size_t i = 0; i < 9; ++i) EXPECT_EQ(fills.FillStyles[i].BitmapId, expected[i]) << i;
    fills.FillStyleCount = 20;
    fills.UpdateReferenceIDs(&map);
    EXPECT_EQ(fills.FillStyles[8].BitmapId, 50) << "and no style behind the last";
}

TEST(VXFlintFillStyleArray, CountHasTwoForms) {
    const Bytes few = Join({Hex("FE"), Repeat(254, 0x13)});
    const Bytes many = Join({Hex("FF FF 00"), Repeat(255, 0x13)});
    SweepRecordOf<VXFlintFillStyleArray>("none", Hex("00"), Hex("00"));
    SweepRecordOf<VXFlintFillStyleArray>("the long form may say 5", Hex("FF 05 00 13 13 13 13 13"),
                                         Hex("05 13 13 13 13 13"), Supports255Plus);
    VXFlintFillStyleArray fills;
    ASSERT_EQ(LoadInto(fills, few), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(fills), few);
    ASSERT_EQ(LoadInto(fills, Join({Hex("FF"), Repeat(255, 0x13)})), kVXSuccess) << "255 styles";
    EXPECT_EQ(BytesOfRecord(fills), many) << "the flag is not asked";
    Supports255Plus(fills);
    ASSERT_EQ(LoadInto(fills, many), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(fills), many);
    fills.FillStyleCount = 7;
    EXPECT_EQ(LoadInto(fills, Hex("FF 05")), kVXFailure);
    EXPECT_EQ(fills.FillStyleCount, 7) << "half a count is none";
}

TEST(VXFlintFillStyleArray, LoadsOverItsStyles) {
    const Bytes gradient = Hex("12 00 01 80 10 20 30 40");
    VXFlintFillStyleArray fills;
    fills.SetAlpha(1);
    ASSERT_EQ(LoadInto(fills, Join({Hex("03"), gradient, Hex("00 10 20 30 40 00 50 60 70 80")})), kVXSuccess);
    fills.SetAlpha(0);
    ASSERT_EQ(LoadInto(fills, Hex("02 12 00 01 90 50 60 70 00 01 02 03")), kVXSuccess);
    EXPECT_EQ(fills.FillStyles.size(), 2u);
    EXPECT_EQ(BytesOfRecord(fills), Hex("02 12 00 01 80 10 20 30 00 01 02 03"))
        << "the old stop stays in front, without alpha";
    EXPECT_EQ(LoadInto(fills, Hex("03 13 13")), kVXFailure);
    EXPECT_EQ(fills.FillStyleCount, 3);
    EXPECT_EQ(fills.FillStyles[1].FillStyleType, 19) << "what was read stays";
}

TEST(VXFlintFillStyleArray, CountIsBelievedAsFarAsThereAreBytes) {
    VXFlintFillStyleArray fills;
    Supports255Plus(fills);
    EXPECT_EQ(LoadInto(fills, Hex("FF FF FF 13 13")), kVXFailure);
    EXPECT_EQ(fills.FillStyleCount, 65535);
    EXPECT_EQ(fills.FillStyles.size(), 255u) << "no more than a count of one byte could ask for";
    VXBitStream out;
    EXPECT_EQ(fills.DumpToStream(out), kVXFailure) << "a style is missing";
    VXFlintFillStyleArray brief;
    EXPECT_EQ(LoadInto(brief, Hex("FF 01 02 03")), kVXFailure);
    EXPECT_EQ(brief.FillStyles.size(), brief.FillStyleCount) << "a short count is kept";
}

TEST(VXFlintFillStyleArray, AddKeepsTheStyleAsItIs) {
    VXFlintFillStyleArray fills;
    fills.SetAlpha(1);
    fills.AddFillStyle(VXFlintFillStyle());
    EXPECT_EQ(BytesOfRecord(fills), Hex("01 00 00 00 00"));
    ExpectShortDumpsFail(fills);
}

}  // namespace
