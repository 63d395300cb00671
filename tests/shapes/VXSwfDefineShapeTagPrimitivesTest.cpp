#include <gtest/gtest.h>

#include <climits>
#include <memory>

#include "RecordText.h"
#include "shapes/VXSwfDefineShapeTag.h"
#include "support/TagSweep.h"

namespace {

using Shape = std::unique_ptr<VXSwfDefineShapeTag>;

const VXFlintRGB kColor(0x11, 0x22, 0x33, 0, 0);

Shape NewShape() { return NewTag<VXSwfDefineShapeTag>(2); }

std::string RecordsOf(const VXSwfDefineShapeTag& shape) { return TextOf(shape.ShapeWithStyle.ShapeRecords); }

std::string BoundsOf(const VXSwfDefineShapeTag& shape) {
    const VXFlintRectangle bounds = shape.GetBounds();
    const auto number = [](VXReal value) { return std::to_string(static_cast<long long>(value)); };
    return number(bounds.XMin) + "," + number(bounds.YMin) + " " + number(bounds.XMax) + "," +
           number(bounds.YMax);
}

}  // namespace

TEST(VXSwfDefineShapeTagPrimitives, Rectangle) {
    const Shape shape = NewShape();
    shape->CreateRectangle(1, 2, 4, 7, kColor);
    EXPECT_EQ(RecordsOf(*shape), "M 1,2 g1 | V 5 | H 3 | V -5 | H -3 | E");
    EXPECT_EQ(BoundsOf(*shape), "1,2 4,7");
    EXPECT_EQ(DumpOf(*shape),
              TagBytes(2, Join({Hex("00 00"), Bits("01001 000010100 001010000 000101000 010001100"),
                                Hex("01 00 11 22 33  01 14 00 11 22 33"),
                                Bits("0001 0010"
                                     "0 00101 00111 0010100 0101000 1"
                                     "11 0110 0 1 01100100"
                                     "11 0101 0 0 0111100"
                                     "11 0110 0 1 10011100"
                                     "11 0101 0 0 1000100"
                                     "000000")})));
    const Shape empty = NewShape();
    empty->CreateRectangle(5, 0, 5, 9, kColor);
    EXPECT_EQ(RecordsOf(*empty), "M 5,0 g1 | V 9 | H 0 | V -9 | H 0 | E") << "without a width";
}

TEST(VXSwfDefineShapeTagPrimitives, RectangleWithFillStyle) {
    const Shape shape = NewShape();
    VXFlintFillStyle fill;
    fill.FillStyleType = 67;
    shape->CreateRectangleWithFillStyle(0, 0, 1, 1, fill);
    EXPECT_EQ(RecordsOf(*shape), "M 0,0 g1 | V 1 | H 1 | V -1 | H -1 | E");
    EXPECT_EQ(shape->ShapeWithStyle.FillStyles.FillStyles.at(0).FillStyleType, 67);
    EXPECT_EQ(shape->ShapeWithStyle.LineStyles.LineStyleCount, 0);
    EXPECT_EQ(shape->ShapeWithStyle.ShapeRecords.NumLineBits, 2u);
}

TEST(VXSwfDefineShapeTagPrimitives, RoundedRectangle) {
    const Shape shape = NewShape();
    shape->CreateRoundedRectangle(0, 0, 100, 50, kColor, 10);
    EXPECT_EQ(RecordsOf(*shape),
              "M 0,10 g1 | V 30 | C 0,10 10,0 | H 80 | C 10,0 0,-10 | V -30 | C 0,-10 -10,0 | H -80 | "
              "C -10,0 0,10 | E");
    EXPECT_EQ(BoundsOf(*shape), "0,0 100,50");
    const Shape reversed = NewShape();
    reversed->CreateRoundedRectangle(0, 0, 10, 10, kColor, 8);
    EXPECT_EQ(RecordsOf(*reversed).substr(0, 18), "M 0,8 g1 | V -6 | ") << "the radius is too large";
    for (const int radius : {0, -5, INT_MIN}) {
        const Shape plain = NewShape();
        plain->CreateRoundedRectangle(1, 2, 4, 7, kColor, radius);
        EXPECT_EQ(RecordsOf(*plain), "M 1,2 g1 | V 5 | H 3 | V -5 | H -3 | E");
    }
    const Shape huge = NewShape();
    huge->CreateRoundedRectangle(INT_MAX, INT_MAX, INT_MIN, INT_MIN, kColor, INT_MAX);
    EXPECT_EQ(RecordsOf(*huge).substr(0, 26), "M 2.14748e+09,4.29497e+09 ") << "sums of 33 bits";
}

TEST(VXSwfDefineShapeTagPrimitives, Triangle) {
    const Shape shape = NewShape();
    shape->CreateTriangle(5, 9, 1, 3, 8, 3, kColor);
    EXPECT_EQ(RecordsOf(*shape), "M 5,9 g1 | L -4,-6 | H 7 | L -3,6 | E");
    EXPECT_EQ(BoundsOf(*shape), "1,3 8,9");
    const Shape point = NewShape();
    point->CreateTriangle(5, 5, 5, 5, 5, 5, kColor);
    EXPECT_EQ(RecordsOf(*point), "M 5,5 g1 | H 0 | H 0 | H 0 | E");
}

TEST(VXSwfDefineShapeTagPrimitives, StraightLine) {
    const Shape shape = NewShape();
    shape->CreateStraightLine(9, 1, 2, 4, kColor, 2);
    EXPECT_EQ(RecordsOf(*shape), "M 9,1 l1 | L -7,3 | E");
    EXPECT_EQ(BoundsOf(*shape), "9,1 2,4") << "not put in order";
    EXPECT_EQ(shape->ShapeWithStyle.LineStyles.LineStyles.at(0).Width, 2.0);
    EXPECT_EQ(shape->ShapeWithStyle.FillStyles.FillStyleCount, 1);
}

TEST(VXSwfDefineShapeTagPrimitives, ShapeForImage) {
    const Shape shape = NewShape();
    shape->CreateShapeForImage(7, 10, 20, 100, 30, 50, 30, 0);
    EXPECT_EQ(RecordsOf(*shape), "M 50,30 g1 | H -50 | V -30 | H 50 | V 30 | E") << "at the origin";
    EXPECT_EQ(BoundsOf(*shape), "10,20 60,50");
    const VXFlintFillStyle& fill = shape->ShapeWithStyle.FillStyles.FillStyles.at(0);
    EXPECT_EQ(fill.FillStyleType, 65);
    EXPECT_EQ(fill.BitmapId, 7);
    EXPECT_EQ(fill.BitmapMatrix.HasScale, 1);
    EXPECT_EQ(fill.BitmapMatrix.ScaleX, 655360);
    EXPECT_EQ(fill.BitmapMatrix.ScaleY, 1310720);
    EXPECT_EQ(shape->ShapeWithStyle.ShapeRecords.NumLineBits, 1u);

    struct Row {
        int imageWidth, width;
        short tiled;
        int scale;
    };
    for (const Row& row : {Row{100, 50, 1, 1310720}, Row{0, 0, 0, 1310720}, Row{0, 5, 0, INT_MAX},
                           Row{0, -5, 0, INT_MIN}, Row{3, 1, 0, 436906}, Row{1, INT_MAX, 0, INT_MAX}}) {
        const Shape other = NewShape();
        other->CreateShapeForImage(7, INT_MAX, 0, row.imageWidth, 1, row.width, 1, row.tiled);
        const VXFlintFillStyle& style = other->ShapeWithStyle.FillStyles.FillStyles.at(0);
        EXPECT_EQ(style.FillStyleType, row.tiled != 0 ? 64 : 65);
        EXPECT_EQ(style.BitmapMatrix.ScaleX, row.scale);
    }
}

TEST(VXSwfDefineShapeTagPrimitives, ColoursAreNotForTheFourthVersion) {
    const Shape shape = NewTag<VXSwfDefineShapeTag>(83);
    shape->CreateRectangle(0, 0, 1, 1, kColor);
    VXBitStream out;
    EXPECT_EQ(shape->DumpToStream(out), kVXFailure) << "the line is of the other kind";
}
