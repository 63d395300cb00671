#include "support/Test.h"

namespace {

void NoAlpha(VXFlintCxForm& form) { form.HasAlpha = 0; }

const Bytes kMultWithAlpha =
    Bits("0 1 1010 0100000000 0010000000 1111111111 0011111111");  // 256, 128, -1, 255
const Bytes kBothNoAlpha =
    Bits("1 1 0110 000010 000001 000000 010000 111111 110000");  // × 2, 1, 0; + 16, -1, -16

TEST(VXFlintCxForm, DumpsWhatItLoads) {
    const Bytes add = Bits("1 0 1001 011111111 100000001 000000000 000000001");
    SweepRecordOf<VXFlintCxForm>("multiply terms with alpha", kMultWithAlpha, kMultWithAlpha);
    SweepRecordOf<VXFlintCxForm>("add terms with alpha", add, add);
    SweepRecordOf<VXFlintCxForm>("both, of one width", kBothNoAlpha, kBothNoAlpha, NoAlpha);
    SweepRecordOf<VXFlintCxForm>("no group has width 0", Bits("0 0 1111"), Hex("00"));
    SweepRecordOf<VXFlintCxForm>("wide fields are narrowed, and -4 is given 4 bits",
                                 Bits("1 0 0011 100 000 000 001"), Bits("1 0 0100 1100 0000 0000 0001"));
    SweepRecordOf<VXFlintCxForm>("-16384 takes 16 bits, which 4 bits cannot say: the flags in front change",
                                 Bits("0 1 1111 100000000000000 000000000000000 000000000000000"),
                                 Bits("1 0 0000 1100000000000000 0000000000000000 0000000000000000"),
                                 NoAlpha);
}

TEST(VXFlintCxForm, AlphaCountsOnlyWithItsFlag) {
    VXFlintCxForm form;
    form.AlphaAddTerm = 77;
    ASSERT_EQ(LoadInto(form, kMultWithAlpha), kVXSuccess);
    EXPECT_EQ(form.BlueMultTerm, -1);
    NoAlpha(form);
    ASSERT_EQ(LoadInto(form, kBothNoAlpha), kVXSuccess);
    EXPECT_EQ(form.GreenMultTerm, 1);
    EXPECT_EQ(form.AlphaMultTerm, 255);
    EXPECT_EQ(form.AlphaAddTerm, 77);

    form = VXFlintCxForm();
    form.HasMultTerms = form.HasAddTerms = 2;
    form.NBits = 3;
    form.GreenMultTerm = 1;
    form.AlphaMultTerm = form.AlphaAddTerm = 1000;
    NoAlpha(form);
    EXPECT_EQ(BytesOfRecord(form), Bits("1 1 0010 00 01 00 00 00 00"));
    EXPECT_EQ(form.NBits, 3u) << "a dump does not touch it";
    form.HasAlpha = 2;
    form.HasMultTerms = 0;
    EXPECT_EQ(BytesOfRecord(form), Bits("1 0 1011 00000000000 00000000000 00000000000 01111101000"));
}

TEST(VXFlintCxForm, OnlyTheDumpAligns) {
    ExpectAlignedDump<VXFlintCxForm>();
    VXFlintCxForm form;
    const Bytes bytes = Bits("101 1 0 0010 01 11 00 01 110");
    VXBitStream in = StreamOver(bytes);
    unsigned int bits = 0;
    ASSERT_EQ(in.ReadBits(3, bits), kVXSuccess);
    ASSERT_EQ(form.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(form.GreenAddTerm, -1);
    ASSERT_EQ(in.ReadBits(3, bits), kVXSuccess);
    EXPECT_EQ(bits, 6u);
}

TEST(VXFlintRGB, DumpsWhatItLoads) {
    const Bytes rgb = Hex("10 20 30");
    const Bytes rgba = Hex("10 20 30 40");
    const auto useAlpha = [](short value) { return [value](VXFlintRGB& color) { color.UseAlpha = value; }; };
    SweepRecordOf<VXFlintRGB>("three bytes", rgb, rgb);
    SweepRecordOf<VXFlintRGB>("four bytes", rgba, rgba, useAlpha(1));
    SweepRecordOf<VXFlintRGB>("Kept: a flag of 2 loads four bytes and dumps three", rgba, rgb, useAlpha(2));
    VXFlintRGB color(1, 2, 3, 1, 4);
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
    EXPECT_EQ(BytesOfRecord(VXFlintRGB(VXColor::FromCMYK(0.0, 1.0, 1.0, 0.0))), Hex("FF 00 00"));
    EXPECT_EQ(BytesOfRecord(VXFlintRGB(VXColor::FromRGB(2.0, -1.0, nan))), Hex("FE 01 00"))
        << "510 and -255 keep eight bits";
}

}  // namespace
