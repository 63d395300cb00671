#include "graphics/VXFlintGradient.h"

#include <type_traits>

#include "RecordBytes.h"

namespace {

static_assert(std::is_nothrow_move_constructible_v<VXFlintGradient>);

const Bytes kTwoStops =
    Hex("62"             // spread 1, interpolation 2, 2 stops
        "00 10 20 30"    // at 0
        "FF 40 50 60");  // at 255

TEST(VXFlintGradient, DumpsWhatItLoads) {
    const Bytes none = Hex("90");
    const Bytes alpha = Hex("01 80 10 20 30 40");
    SweepRecordOf<VXFlintGradient>("no stop", none, none);
    SweepRecordOf<VXFlintGradient>("two stops", kTwoStops, kTwoStops);
    SweepRecordOf<VXFlintGradient>("a stop with alpha", alpha, alpha,
                                   [](VXFlintGradient& gradient) { gradient.SetAlpha(1); });
    ExpectCutsFail<VXFlintGradient>(kTwoStops);
}

TEST(VXFlintGradient, SecondLoadLengthensTheList) {
    VXFlintGradient gradient;
    ASSERT_EQ(LoadInto(gradient, kTwoStops), kVXSuccess);
    EXPECT_EQ(LoadInto(gradient, Hex("02 33 01 02 03 44 05")), kVXFailure) << "ends inside the second stop";
    ASSERT_EQ(gradient.GradientRecords.size(), 3u) << "only whole stops are appended";
    EXPECT_EQ(BytesOfRecord(gradient), Hex("02 00 10 20 30 FF 40 50 60")) << "the old stops stay in front";
    EXPECT_EQ(gradient.GradientRecords[2].Ratio, 0x33);
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
    const Bytes record = Hex("01 10 20 30 40 02 50 60 70 80");
    const Bytes two = Join({Hex("02"), record, record});
    ExpectCutsFail<VXFlintMorphGradient>(two);
    VXFlintMorphGradient gradient;
    ASSERT_EQ(LoadInto(gradient, two), kVXSuccess);
    EXPECT_EQ(gradient.Records[1].StartRatio, 1);
    EXPECT_EQ(gradient.Records[1].EndRatio, 2);
    EXPECT_EQ(BytesOfRecord(gradient.Records[1].StartColor), Hex("10 20 30 40"));
    EXPECT_EQ(BytesOfRecord(gradient.Records[1].EndColor), Hex("50 60 70 80"));
    EXPECT_EQ(LoadInto(gradient, Join({Hex("09"), Repeat(90, 0xEE)})), kVXFailure);
    EXPECT_EQ(gradient.NumRecords, 9);
    EXPECT_EQ(gradient.Records[0].StartRatio, 1) << "no record is read";
}

}  // namespace
