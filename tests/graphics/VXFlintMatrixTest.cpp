#include "graphics/VXFlintMatrix.h"

#include <climits>
#include <limits>

#include "RecordBytes.h"

namespace {

const Bytes kUnit = Bits(
    "1 10010 010000000000000000 010000000000000000"  // scale: 18 bits, 65536 twice
    "1 00000"                                        // skew: 0 bits
    "00000");                                        // translation: 0 bits

TEST(VXFlintMatrix, DumpsWhatItLoads) {
    const Bytes none = Hex("00");
    const Bytes all = Bits(
        "1 00100 0101 1011"              // scale 5, -5
        "1 00011 010 101"                // skew 2, -3
        "01010 0110010000 1111111111");  // 400 and -1 twips
    const Bytes moved = Bits("0 0 00111 0111111 1000001");
    SweepRecordOf<VXFlintMatrix>("nothing but two flags and a width", none, none);
    SweepRecordOf<VXFlintMatrix>("the identity with its scale pair", kUnit, kUnit);
    SweepRecordOf<VXFlintMatrix>("every group", all, all);
    SweepRecordOf<VXFlintMatrix>("a translation alone", moved, moved);
    SweepRecordOf<VXFlintMatrix>("wide fields are narrowed, and -4 is given 4 bits",
                                 Bits("1 00110 000001 111111 1 00011 100 000 00101 00010 11110"),
                                 Bits("1 00010 01 11 1 00100 1100 0000 00011 010 110"));
    SweepRecordOf<VXFlintMatrix>(
        "-2^30 takes 32 bits, which 5 bits cannot say: the flag in front becomes 0",
        Bits("1 11111 1000000000000000000000000000000 0000000000000000000000000000000 0 00000"),
        Bits("0 00000 11000000000000000000000000000000 00000000000000000000000000000000 0 00000"));
    ExpectCutsFail<VXFlintMatrix>(all);
    ExpectCutsFail<VXFlintMatrix>(moved);
}

TEST(VXFlintMatrix, LoadSetsWhatIsAbsent) {
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    matrix.RotateSkew0 = matrix.RotateSkew1 = 7;
    ASSERT_EQ(LoadInto(matrix, Bits("0 0 00010 01 11")), kVXSuccess);
    EXPECT_EQ(matrix.ScaleX, 1) << "the integer 1, not 65536";
    EXPECT_EQ(matrix.ScaleY, 1);
    EXPECT_EQ(matrix.NScaleBits, 0u);
    EXPECT_EQ(matrix.RotateSkew0, 0);
    EXPECT_EQ(matrix.RotateSkew1, 0);
    EXPECT_EQ(matrix.NRotateBits, 0u);
    EXPECT_EQ(matrix.NTranslateBits, 2u);
    EXPECT_EQ(matrix.TranslateX, 0.05);
    EXPECT_EQ(matrix.TranslateY, -0.05);
}

TEST(VXFlintMatrix, LoadKeepsWhatWasRead) {
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    matrix.TranslateX = 3.5;
    EXPECT_EQ(LoadInto(matrix, Bits("1 00111 0000010 000")), kVXFailure) << "ends inside ScaleY";
    EXPECT_EQ(matrix.NScaleBits, 7u);
    EXPECT_EQ(matrix.ScaleX, 2);
    EXPECT_EQ(matrix.ScaleY, 65536);
    EXPECT_EQ(LoadInto(matrix, Bits("1 00000 1 0")), kVXFailure) << "ends inside the width of the skew";
    EXPECT_EQ(matrix.ScaleY, 0);
    EXPECT_EQ(matrix.NRotateBits, 32u) << "as it was";
    EXPECT_EQ(matrix.TranslateX, 3.5);
}

TEST(VXFlintMatrix, DumpStoresTheWidthsItWrites) {
    VXFlintMatrix matrix;
    matrix.NScaleBits = matrix.NRotateBits = matrix.NTranslateBits = 9;
    matrix.ScaleX = matrix.RotateSkew0 = INT_MIN;
    matrix.TranslateX = 0.025;
    matrix.TranslateY = -0.025;
    EXPECT_EQ(BytesOfRecord(matrix), Bits("0 0 00010 01 00")) << "half a twip goes up";
    EXPECT_EQ(matrix.NScaleBits, 9u);
    EXPECT_EQ(matrix.NRotateBits, 9u);
    EXPECT_EQ(matrix.NTranslateBits, 2u);
    matrix.HasScale = matrix.HasRotate = 2;
    matrix.ScaleX = 3;
    matrix.RotateSkew0 = 0;
    EXPECT_EQ(BytesOfRecord(matrix), Bits("1 00011 011 000 1 00000 00010 01 00"));
    EXPECT_EQ(matrix.NScaleBits, 3u);
    EXPECT_EQ(matrix.NRotateBits, 0u);
}

TEST(VXFlintMatrix, StartsAndEndsOnAByte) {
    VXBitStream out;
    VXFlintMatrix matrix;
    EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
    EXPECT_EQ(matrix.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Hex("80 00 80"));

    const Bytes bytes = Join({Hex("FF"), Bits("0 0 00010 01 00 11111"), Hex("AA")});
    VXBitStream in = StreamOver(bytes);
    unsigned int bits = 0;
    ASSERT_EQ(in.ReadBits(1, bits), kVXSuccess);
    ASSERT_EQ(matrix.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(matrix.TranslateX, 0.05);
    ASSERT_EQ(in.ReadBits(8, bits), kVXSuccess);
    EXPECT_EQ(bits, 0xAAu);
}

TEST(VXFlintMatrix, ToUnitMatrixIsTheIdentity) {
    VXFlintMatrix matrix;
    ASSERT_EQ(LoadInto(matrix, Bits("1 00011 010 010 1 00011 010 011 00100 0101 0101")), kVXSuccess);
    VXFlintMatrix copy;
    copy.Set(matrix);
    matrix.ToUnitMatrix();
    EXPECT_EQ(matrix.NScaleBits, 32u);
    EXPECT_EQ(matrix.NRotateBits, 32u);
    EXPECT_EQ(matrix.NTranslateBits, 32u);
    EXPECT_EQ(BytesOfRecord(matrix), kUnit);
    EXPECT_EQ(BytesOfRecord(copy), Bits("1 00011 010 010 1 00011 010 011 00100 0101 0101"));
}

TEST(VXFlintMatrix, RotatesInSinglePrecision) {
    VXFlintMatrix matrix;
    matrix.TranslateX = 1.5;
    matrix.ScaleX = matrix.RotateSkew0 = 7;  // behind clear flags
    matrix.Rotate(0.0);
    EXPECT_EQ(matrix.TranslateX, 1.5);
    matrix.TranslateX = 0.0;
    EXPECT_EQ(BytesOfRecord(matrix), kUnit);

    matrix.ScaleX = 131072;
    matrix.ScaleY = -40000;
    matrix.RotateSkew0 = 1000;
    matrix.RotateSkew1 = -70000;
    matrix.TranslateX = 10.0;
    matrix.TranslateY = 20.5;
    matrix.Rotate(30.0);
    EXPECT_EQ(matrix.ScaleX, 113011);
    EXPECT_EQ(matrix.ScaleY, -69641);
    EXPECT_EQ(matrix.RotateSkew0, 66402);
    EXPECT_EQ(matrix.RotateSkew1, -40621);
    EXPECT_DOUBLE_EQ(matrix.TranslateX, -1.589746117591858);
    EXPECT_DOUBLE_EQ(matrix.TranslateY, 22.75352045893669);
    EXPECT_EQ(matrix.NScaleBits, 32u);
    EXPECT_EQ(matrix.NRotateBits, 32u);
    EXPECT_EQ(matrix.NTranslateBits, 32u);

    matrix.ToUnitMatrix();
    matrix.ScaleX = matrix.ScaleY = 1 << 30;
    matrix.Rotate(79.0);
    EXPECT_EQ(matrix.ScaleX, 204879664) << "a more exact pi gives ...536";
    EXPECT_EQ(matrix.RotateSkew1, -1054014144);

    matrix.Rotate(std::numeric_limits<VXReal>::infinity());
    EXPECT_EQ(matrix.ScaleX, 0) << "what is not a number becomes 0";
}

TEST(VXFlintMatrix, ScaleCutsTheTranslation) {
    VXFlintMatrix matrix;
    matrix.RotateSkew0 = matrix.RotateSkew1 = 99;  // behind a clear flag
    matrix.TranslateX = 10.75;
    matrix.TranslateY = -10.75;
    matrix.Scale(1.0);
    EXPECT_EQ(matrix.TranslateX, 10.0) << "whole pixels, even by a factor of 1";
    EXPECT_EQ(matrix.TranslateY, -10.0);
    EXPECT_EQ(matrix.ScaleX, 65536);
    EXPECT_EQ(matrix.HasRotate, 0);
    EXPECT_EQ(matrix.RotateSkew0, 0);
    EXPECT_EQ(matrix.NRotateBits, 32u);
    EXPECT_EQ(matrix.NTranslateBits, 0u);

    matrix.HasRotate = 1;
    matrix.RotateSkew0 = 11;
    matrix.RotateSkew1 = -11;
    matrix.TranslateX = 3e9;
    matrix.Scale(2.5, -0.5);
    EXPECT_EQ(matrix.ScaleX, 163840);
    EXPECT_EQ(matrix.ScaleY, -32768);
    EXPECT_EQ(matrix.RotateSkew1, -27) << "the second skew goes with x, the first with y";
    EXPECT_EQ(matrix.RotateSkew0, -5);
    EXPECT_EQ(matrix.TranslateX, 7.5e9) << "not cut to 32 bits";
    EXPECT_EQ(matrix.TranslateY, 5.0);
    matrix.Scale(1e30, std::numeric_limits<VXReal>::quiet_NaN());
    EXPECT_EQ(matrix.ScaleX, INT_MAX);
    EXPECT_EQ(matrix.ScaleY, 0);
}

TEST(VXFlintMatrix, ArgumentsMayBeItsOwnFields) {
    VXFlintMatrix matrix;
    matrix.TranslateX = 2.5;
    matrix.TranslateY = 1.0;
    matrix.Translate(matrix.TranslateY, matrix.TranslateX);
    EXPECT_EQ(matrix.TranslateX, 3.5);
    EXPECT_EQ(matrix.TranslateY, 3.5) << "moved by the old x";
    EXPECT_EQ(matrix.NTranslateBits, 32u);
    EXPECT_EQ(matrix.HasScale, 0);
    matrix.Scale(matrix.TranslateX);
    EXPECT_EQ(matrix.ScaleY, 229376);
    EXPECT_EQ(matrix.TranslateY, 12.0) << "3.5 × 3.5, cut";
}

}  // namespace
