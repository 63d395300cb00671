#include "support/Test.h"

namespace {

const Bytes kUnit = Bits("1 10010 010000000000000000 010000000000000000 1 00000 00000");  // 65536 twice
const Bytes kAll =
    Bits("1 00100 0101 1011 1 00011 010 101 01010 0110010000 1111111111");  // 5 -5; 2 -3; 400 -1

void ExpectWidths(const VXFlintMatrix& matrix, unsigned int scale, unsigned int rotate,
                  unsigned int translate) {
    EXPECT_EQ(matrix.NScaleBits, scale);
    EXPECT_EQ(matrix.NRotateBits, rotate);
    EXPECT_EQ(matrix.NTranslateBits, translate);
}

void ExpectFields(const VXFlintMatrix& matrix, int scaleX, int scaleY, int skew0, int skew1, VXReal x,
                  VXReal y) {
    EXPECT_EQ(matrix.ScaleX, scaleX);
    EXPECT_EQ(matrix.ScaleY, scaleY);
    EXPECT_EQ(matrix.RotateSkew0, skew0);
    EXPECT_EQ(matrix.RotateSkew1, skew1);
    EXPECT_DOUBLE_EQ(matrix.TranslateX, x);
    EXPECT_DOUBLE_EQ(matrix.TranslateY, y);
}

TEST(VXFlintMatrix, DumpsWhatItLoads) {
    const Bytes moved = Bits("0 0 00111 0111111 1000001");
    SweepRecordOf<VXFlintMatrix>("every group", kAll, kAll);
    SweepRecordOf<VXFlintMatrix>("a translation alone", moved, moved);
    SweepRecordOf<VXFlintMatrix>("wide fields are narrowed, and -4 is given 4 bits",
                                 Bits("1 00110 000001 111111 1 00011 100 000 00101 00010 11110"),
                                 Bits("1 00010 01 11 1 00100 1100 0000 00011 010 110"));
    SweepRecordOf<VXFlintMatrix>(
        "-2^30 takes 32 bits, which 5 bits cannot say: the flag in front becomes 0",
        Bits("1 11111 1000000000000000000000000000000 0000000000000000000000000000000 0 00000"),
        Bits("0 00000 11000000000000000000000000000000 00000000000000000000000000000000 0 00000"));
    ExpectAlignedDump<VXFlintMatrix>();
    ExpectAlignedLoad<VXFlintMatrix>(Bits("0 0 00010 01 00 11111"));
}

TEST(VXFlintMatrix, LoadSetsWhatIsAbsentAndKeepsWhatWasRead) {
    VXFlintMatrix matrix;
    matrix.ToUnitMatrix();
    ExpectWidths(matrix, 32, 32, 32);
    EXPECT_EQ(BytesOfRecord(VXFlintMatrix(matrix)), kUnit);
    matrix.TranslateX = 3.5;
    EXPECT_EQ(LoadInto(matrix, Bits("1 00111 0000010 000")), kVXFailure) << "ends inside ScaleY";
    ExpectFields(matrix, 2, 65536, 0, 0, 3.5, 0.0);
    matrix.RotateSkew0 = matrix.RotateSkew1 = 7;
    matrix.NScaleBits = 9;
    ASSERT_EQ(LoadInto(matrix, Bits("0 0 00010 01 11")), kVXSuccess);
    ExpectWidths(matrix, 0, 0, 2);
    ExpectFields(matrix, 1, 1, 0, 0, 0.05, -0.05);  // Kept: the integer 1, not 65536
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
}

TEST(VXFlintMatrix, RotatesInSinglePrecision) {
    VXFlintMatrix matrix;
    matrix.TranslateX = 1.5;
    matrix.ScaleX = matrix.RotateSkew0 = 7;  // behind clear flags
    matrix.Rotate(0.0);
    ExpectFields(matrix, 65536, 65536, 0, 0, 1.5, 0.0);
    matrix.ScaleX = 131072;
    matrix.ScaleY = -40000;
    matrix.RotateSkew0 = 1000;
    matrix.RotateSkew1 = -70000;
    matrix.TranslateX = 10.0;
    matrix.TranslateY = 20.5;
    matrix.Rotate(30.0);
    ExpectFields(matrix, 113011, -69641, 66402, -40621, -1.589746117591858, 22.75352045893669);
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
    ExpectFields(matrix, 65536, 65536, 0, 0, 10.0, -10.0);  // whole pixels, even by a factor of 1
    ExpectWidths(matrix, 32, 32, 0);
    matrix.HasRotate = 1;
    matrix.RotateSkew0 = 11;
    matrix.RotateSkew1 = -11;
    matrix.TranslateX = 3e9;
    matrix.Scale(2.5, -0.5);
    ExpectFields(matrix, 163840, -32768, -5, -27, 7.5e9, 5.0);  // x with the second skew; not cut to 32 bits

    matrix = VXFlintMatrix();
    matrix.TranslateX = 2.5;
    matrix.TranslateY = 1.0;
    matrix.Translate(matrix.TranslateY, matrix.TranslateX);
    EXPECT_EQ(matrix.TranslateX, 3.5);
    EXPECT_EQ(matrix.TranslateY, 3.5) << "arguments may be its own fields: moved by the old x";
    ExpectWidths(matrix, 0, 0, 32);
    matrix.Scale(matrix.TranslateX);
    ExpectFields(matrix, 229376, 229376, 0, 0, 12.0, 12.0);  // 3.5 × 3.5, cut; both by the old x
}

}  // namespace
