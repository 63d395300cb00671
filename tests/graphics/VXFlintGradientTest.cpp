#include "graphics/VXFlintGradient.h"

#include "support/RecordBytes.h"

namespace {

TEST(VXFlintGradient, DumpsWhatItLoads) {
    const Bytes two = Hex("62 00 10 20 30 FF 40 50 60");  // spread 1, interpolation 2, stops at 0 and 255
    const Bytes alpha = Hex("01 80 10 20 30 40");
    SweepRecordOf<VXFlintGradient>("two stops", two, two);
    SweepRecordOf<VXFlintGradient>("a stop with alpha", alpha, alpha,
                                   [](VXFlintGradient& gradient) { gradient.SetAlpha(1); });
    ExpectCutsFail<VXFlintGradient>(two);
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
    ExpectCutsFail<VXFlintMorphGradient>(two);
    VXFlintMorphGradient gradient;
    ASSERT_EQ(LoadInto(gradient, two), kVXSuccess);
    EXPECT_EQ(gradient.Records[1].StartRatio, 1);
    EXPECT_EQ(gradient.Records[1].EndRatio, 2);
    EXPECT_EQ(BytesOfRecord(gradient.Records[1].StartColor), Hex("10 20 30 40"));
    EXPECT_EQ(BytesOfRecord(gradient.Records[1].EndColor), Hex("50 60 70 80"));
    EXPECT_EQ(LoadInto(gradient, Join({Hex("09"), Repeat(90, 0xEE)})), kVXFailure);
    EXPECT_EQ(gradient.Records[0].StartRatio, 3) << "no record is read";
}

}  // namespace
