#include "graphics/VXFlintMatrix.h"

#include <climits>
#include <limits>

#include "RecordBytes.h"

namespace {

const Bytes kUnit = Bits(
    "1 10010 010000000000000000 010000000000000000"  // scale: 18 bits, 65536 twice
    "1 00000"                                        // skew: 0 bits
    "00000");                                        // translation: 0 bits
const Bytes kAll = Bits(
    "1 00100 0101 1011"              // scale 5, -5
    "1 00011 010 101"                // skew 2, -3
    "01010 0110010000 1111111111");  // 400 and -1 twips

void ExpectWidths(const VXFlintMatrix& matrix, unsigned int scale, unsigned int rotate,
                  unsigned int translate) {
    EXPECT_EQ(matrix.NScaleBits, scale);
    EXPECT_EQ(matrix.NRotateBits, rotate);
    EXPECT_EQ(matrix.NTranslateBits, translate);
}

TEST(VXFlintMatrix, DumpsWhatItLoads) {
    const Bytes none = Hex("00");
    const Bytes moved = Bits("0 0 00111 0111111 1000001");
    SweepRecordOf<VXFlintMatrix>("nothing but two flags and a width", none, none);
    SweepRecordOf<VXFlintMatrix>("the identity with its scale pair", kUnit, kUnit);
    SweepRecordOf<VXFlintMatrix>("every group", kAll, kAll);
    SweepRecordOf<VXFlintMatrix>("a translation alone", moved, moved);
    SweepRecordOf<VXFlintMatrix>("wide fields are narrowed, and -4 is given 4 bits",
                                 Bits("1 00110 000001 111111 1 00011 100 000 00101 00010 11110"),
                                 Bits("1 00010 01 11 1 00100 1100 0000 00011 010 110"));
    SweepRecordOf<VXFlintMatrix>(
        "-2^30 takes 32 bits, which 5 bits cannot say: the flag in front becomes 0",
        Bits("1 11111 1000000000000000000000000000000 0000000000000000000000000000000 0 00000"),
        Bits("0 00000 11000000000000000000000000000000 00000000000000000000000000000000 0 00000"));
    ExpectCutsFail<VXFlintMatrix>(kAll);
    ExpectCutsFail<VXFlintMatrix>(moved);
}

TEST(VXFlintMatrix, LoadSetsWhatIsAbsentAndKeepsWhatWasRead) {
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    matrix.TranslateX = 3.5;
    EXPECT_EQ(LoadInto(matrix, Bits("1 00111 0000010 000")), kVXFailure) << "ends inside ScaleY";
    EXPECT_EQ(matrix.ScaleX, 2);
    EXPECT_EQ(matrix.ScaleY, 65536);
    EXPECT_EQ(LoadInto(matrix, Bits("1 00000 1 0")), kVXFailure) << "ends inside the width of the skew";
    ExpectWidths(matrix, 0, 32, 32);
    EXPECT_EQ(matrix.TranslateX, 3.5);

    matrix.RotateSkew0 = matrix.RotateSkew1 = 7;
    matrix.NScaleBits = 9;
    ASSERT_EQ(LoadInto(matrix, Bits("0 0 00010 01 11")), kVXSuccess);
    ExpectWidths(matrix, 0, 0, 2);
    EXPECT_EQ(matrix.ScaleX, 1) << "the integer 1, not 65536";
    EXPECT_EQ(matrix.ScaleY, 1);
    EXPECT_EQ(matrix.RotateSkew0, 0);
    EXPECT_EQ(matrix.RotateSkew1, 0);
    EXPECT_EQ(matrix.TranslateX, 0.05);
    EXPECT_EQ(matrix.TranslateY, -0.05);
}

TEST(VXFlintMatrix, DumpStoresTheWidthsItWrites) {
    VXFlintMatrix matrix;
    matrix.NScaleBits = matrix.NRotateBits = matrix.NTranslateBits = 9;
    matrix.ScaleX = matrix.RotateSkew0 = INT_MIN;
    matrix.TranslateX = 0.025;
    matrix.TranslateY = -0.025;
    EXPECT_EQ(BytesOfRecord(matrix), Bits("0 0 00010 01 00")) << "half a twip goes up";
    ExpectWidths(matrix, 9, 9, 2);
    matrix.HasScale = matrix.HasRotate = 2;
    matrix.ScaleX = 3;
    matrix.RotateSkew0 = 0;
    EXPECT_EQ(BytesOfRecord(matrix), Bits("1 00011 011 000 1 00000 00010 01 00"));
    ExpectWidths(matrix, 3, 0, 2);
}

TEST(VXFlintMatrix, StartsAndEndsOnAByte) {
    ExpectAlignedDump<VXFlintMatrix>();
    ExpectAlignedLoad<VXFlintMatrix>(Bits("0 0 00010 01 00 11111"));
}

TEST(VXFlintMatrix, ToUnitMatrixIsTheIdentity) {
    VXFlintMatrix matrix;
    ASSERT_EQ(LoadInto(matrix, kAll), kVXSuccess);
    VXFlintMatrix copy;
    copy.Set(matrix);
    matrix.ToUnitMatrix();
    ExpectWidths(matrix, 32, 32, 32);
    EXPECT_EQ(BytesOfRecord(matrix), kUnit);
    EXPECT_EQ(BytesOfRecord(copy), kAll);
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
    ExpectWidths(matrix, 32, 32, 32);

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
    matrix.ScaleX = matrix.RotateSkew0 = matrix.RotateSkew1 = 99;  // behind clear flags
    matrix.TranslateX = 10.75;
    matrix.TranslateY = -10.75;
    matrix.Scale(1.0);
    EXPECT_EQ(matrix.TranslateX, 10.0) << "whole pixels, even by a factor of 1";
    EXPECT_EQ(matrix.TranslateY, -10.0);
    EXPECT_EQ(matrix.ScaleX, 65536);
    EXPECT_EQ(matrix.RotateSkew0, 0);
    EXPECT_EQ(matrix.HasRotate, 0);
    ExpectWidths(matrix, 32, 32, 0);

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
}

TEST(VXFlintMatrix, ArgumentsMayBeItsOwnFields) {
    VXFlintMatrix matrix;
    matrix.TranslateX = 2.5;
    matrix.TranslateY = 1.0;
    matrix.Translate(matrix.TranslateY, matrix.TranslateX);
    EXPECT_EQ(matrix.TranslateX, 3.5);
    EXPECT_EQ(matrix.TranslateY, 3.5) << "moved by the old x";
    ExpectWidths(matrix, 0, 0, 32);
    matrix.Scale(matrix.TranslateX);
    EXPECT_EQ(matrix.ScaleY, 229376);
    EXPECT_EQ(matrix.TranslateX, 12.0) << "3.5 × 3.5, cut";
    EXPECT_EQ(matrix.TranslateY, 12.0) << "by the old x";
}

}  // namespace
