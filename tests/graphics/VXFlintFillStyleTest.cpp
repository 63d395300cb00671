#include "support/Test.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<VXFlintFillStyleArray>);

VXFlintFillStyle BitmapFill(int type, int id) {
    return VXFlintFillStyle(static_cast<unsigned char>(type), VXFlintRGB(), VXFlintMatrix(),
                            VXFlintGradient(), static_cast<unsigned short>(id), VXFlintMatrix());
}

void Supports255Plus(VXFlintFillStyleArray& fills) { fills.SetSupports255Plus(1); }

TEST(VXFlintGradient, DumpsWhatItLoads) {
    const Bytes two = Hex("62 00 10 20 30 FF 40 50 60");  // spread 1, interpolation 2, stops at 0 and 255
    const Bytes alpha = Hex("01 80 10 20 30 40");
    SweepRecordOf<VXFlintGradient>("two stops", two, two);
    SweepRecordOf<VXFlintGradient>("a stop with alpha", alpha, alpha,
                                   [](VXFlintGradient& gradient) { gradient.SetAlpha(1); });
    VXFlintGradient gradient;
    ASSERT_EQ(LoadInto(gradient, two), kVXSuccess);
    EXPECT_EQ(LoadInto(gradient, Hex("02 33 01 02 03 44 05")), kVXFailure) << "ends inside the second stop";
    ASSERT_EQ(gradient.GradientRecords.size(), 3u) << "only whole stops are appended";
    EXPECT_EQ(BytesOfRecord(gradient), Hex("02 00 10 20 30 FF 40 50 60")) << "the old stops stay in front";
}

TEST(VXFlintGradient, DumpGivesItsAlphaToTheStops) {
    VXFlintGradient gradient;
    gradient.GradientRecords.resize(2);
    gradient.NumGradients = 1;
    gradient.SetAlpha(1);
    gradient.UseAlpha = 0;
    EXPECT_EQ(BytesOfRecord(gradient), Hex("01 00 00 00 00"));
    EXPECT_EQ(gradient.GradientRecords[0].Color.UseAlpha, 0) << "for good";
    EXPECT_EQ(gradient.GradientRecords[1].Color.UseAlpha, 1) << "not written";
    gradient.NumGradients = 3;
    VXBitStream out;
    EXPECT_EQ(gradient.DumpToStream(out), kVXFailure);
    EXPECT_EQ(BytesOf(out), Hex("03 00 00 00 00 00 00 00 00")) << "what is there goes out";
}

TEST(VXFlintMorphGradient, LoadsUpToEightRecords) {
    const Bytes two = Hex("02 03 10 20 30 40 04 50 60 70 80 01 10 20 30 40 02 50 60 70 80");
    VXFlintMorphGradient gradient;
    ExpectCutsFail(two, gradient);
    ASSERT_EQ(LoadInto(gradient, two), kVXSuccess);
    EXPECT_EQ(gradient.Records[1].EndRatio, 2);
    EXPECT_EQ(BytesOfRecord(gradient.Records[1].EndColor), Hex("50 60 70 80"));
    EXPECT_EQ(LoadInto(gradient, Join({Hex("09"), Repeat(90, 0xEE)})), kVXFailure);
    EXPECT_EQ(gradient.Records[0].StartRatio, 3) << "no record is read";
}

TEST(VXFlintFillStyle, DumpsWhatItLoads) {
    const auto sweep = [](const char* types, const Bytes& rest) {
        for (const unsigned char type : Hex(types)) {
            const Bytes bytes = Join({Bytes{type}, rest});
            SweepRecordOf<VXFlintFillStyle>("type " + std::to_string(type), bytes, bytes);
        }
    };
    sweep("00", Hex("10 20 30"));
    sweep("10 12", Join({Bits("0 0 00010 01 11"), Hex("41 80 10 20 30")}));
    sweep("40 41 42 43", Join({Hex("FF FF"), Bits("0 0 00010 01 11")}));
    sweep("01 0F 11 13 3F 44 FF", {});  // types without a meaning are one byte
    VXFlintFillStyle style;
    style.Gradient.NumGradients = 1;
    style.Gradient.GradientRecords.resize(1);
    style.SetAlpha(1);
    EXPECT_EQ(BytesOfRecord(style), Hex("00 00 00 00 FF"));
    style.FillStyleType = 16;
    EXPECT_EQ(BytesOfRecord(style), Hex("10 00 01 00 00 00 00 FF")) << "alpha reaches every colour";
}

TEST(VXFlintFillStyleArray, BitmapsAreRenumbered) {
    VXFlintIDMap map;
    map.Set(0, 9);
    map.Set(5, 50);
    map.Set(0xFFFF, 51);
    VXFlintFillStyleArray fills;
    for (const int type : {64, 67, 63, 68, 16}) fills.AddFillStyle(BitmapFill(type, 5));
    for (const int id : {0, 0xFFFF, 6}) fills.AddFillStyle(BitmapFill(65, id));
    fills.FillStyles.push_back(BitmapFill(65, 5));  // behind the count
    fills.UpdateReferenceIDs(nullptr);
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
    SweepRecordOf<VXFlintFillStyleArray>("the long form may say 5", Hex("FF 05 00 13 13 13 13 13"),
                                         Hex("05 13 13 13 13 13"), Supports255Plus);
    VXFlintFillStyleArray fills;
    ASSERT_EQ(LoadInto(fills, few), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(fills), few);
    ASSERT_EQ(LoadInto(fills, Join({Hex("FF"), Repeat(255, 0x13)})), kVXSuccess) << "255 styles";
    EXPECT_EQ(BytesOfRecord(fills), many) << "Kept: the flag is not asked";
    Supports255Plus(fills);
    ASSERT_EQ(LoadInto(fills, many), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(fills), many);
    EXPECT_EQ(LoadInto(fills, Hex("FF FF FF 13 13")), kVXFailure);
    EXPECT_EQ(fills.FillStyleCount, 65535);
    EXPECT_EQ(fills.FillStyles.size(), 255u) << "no more than a count of one byte could ask for";
    VXBitStream out;
    EXPECT_EQ(fills.DumpToStream(out), kVXFailure) << "a style is missing";
}

TEST(VXFlintFillStyleArray, LoadsOverItsStyles) {
    VXFlintFillStyleArray fills;
    fills.SetAlpha(1);
    fills.AddFillStyle(VXFlintFillStyle());
    EXPECT_EQ(BytesOfRecord(fills), Hex("01 00 00 00 00")) << "one that is added is kept as it is";
    ASSERT_EQ(LoadInto(fills, Hex("03 12 00 01 80 10 20 30 40 00 10 20 30 40 00 50 60 70 80")), kVXSuccess);
    fills.SetAlpha(0);
    ASSERT_EQ(LoadInto(fills, Hex("02 12 00 01 90 50 60 70 00 01 02 03")), kVXSuccess);
    EXPECT_EQ(fills.FillStyles.size(), 2u);
    EXPECT_EQ(BytesOfRecord(fills), Hex("02 12 00 01 80 10 20 30 00 01 02 03"))
        << "the old stop stays in front, without alpha";
    EXPECT_EQ(LoadInto(fills, Hex("03 13 13")), kVXFailure);
    EXPECT_EQ(fills.FillStyleCount, 3);
    EXPECT_EQ(fills.FillStyles[1].FillStyleType, 19) << "what was read stays";
}

}  // namespace
