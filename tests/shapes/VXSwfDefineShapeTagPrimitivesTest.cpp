#include "RecordText.h"
#include "support/Test.h"

namespace {

using Tag = VXSwfDefineShapeTag;
using Shape = std::unique_ptr<VXSwfDefineShapeTag>;

const VXFlintRGB kColor(0x11, 0x22, 0x33, 0, 0);

std::string RecordsOf(const VXSwfDefineShapeTag& shape) { return TextOf(shape.ShapeWithStyle.ShapeRecords); }

std::string BoundsOf(const VXSwfDefineShapeTag& shape) {
    const VXFlintRectangle bounds = shape.GetBounds();
    const auto number = [](VXReal value) { return std::to_string(static_cast<long long>(value)); };
    return number(bounds.XMin) + "," + number(bounds.YMin) + " " + number(bounds.XMax) + "," +
           number(bounds.YMax);
}

/// A shape that one call has drawn.
template <typename... Parameters, typename... Arguments>
Shape Drawn(void (VXSwfDefineShapeTag::*create)(Parameters...), Arguments... arguments) {
    Shape shape = NewTag<VXSwfDefineShapeTag>(2);
    (shape.get()->*create)(static_cast<Parameters>(arguments)...);
    return shape;
}

TEST(VXSwfDefineShapeTagPrimitives, Rectangle) {
    const Shape shape = Drawn(&Tag::CreateRectangle, 1, 2, 4, 7, kColor);
    EXPECT_EQ(RecordsOf(*shape), "M 1,2 g1 | V 5 | H 3 | V -5 | H -3 | E");
    EXPECT_EQ(DumpOf(*shape),
              TagBytes(2, Join({Hex("00 00"), Bits("01001 000010100 001010000 000101000 010001100"),
                                Hex("01 00 11 22 33  01 14 00 11 22 33"),
                                Bits("0001 0010  0 00101 00111 0010100 0101000 1"
                                     "11 0110 0 1 01100100  11 0101 0 0 0111100"
                                     "11 0110 0 1 10011100  11 0101 0 0 1000100  000000")})));
    VXFlintFillStyle fill;
    fill.FillStyleType = 67;
    const Shape filled = Drawn(&Tag::CreateRectangleWithFillStyle, 0, 0, 1, 1, fill);
    EXPECT_EQ(RecordsOf(*filled), "M 0,0 g1 | V 1 | H 1 | V -1 | H -1 | E");
    EXPECT_EQ(filled->ShapeWithStyle.FillStyles.FillStyles.at(0).FillStyleType, 67);
    EXPECT_EQ(filled->ShapeWithStyle.LineStyles.LineStyleCount, 0);
    EXPECT_EQ(filled->ShapeWithStyle.ShapeRecords.NumLineBits, 2u);
    const Shape fourth = NewTag<Tag>(83);
    fourth->CreateRectangle(0, 0, 1, 1, kColor);
    VXBitStream out;
    EXPECT_EQ(fourth->DumpToStream(out), kVXFailure) << "the line is of the other kind";
}

TEST(VXSwfDefineShapeTagPrimitives, RoundedRectangle) {
    const auto draw = [](int left, int top, int right, int bottom, int radius) {
        return Drawn(&Tag::CreateRoundedRectangle, left, top, right, bottom, kColor, radius);
    };
    const Shape shape = draw(0, 0, 100, 50, 10);
    EXPECT_EQ(RecordsOf(*shape),
              "M 0,10 g1 | V 30 | C 0,10 10,0 | H 80 | C 10,0 0,-10 | V -30 | C 0,-10 -10,0 | H -80 | "
              "C -10,0 0,10 | E");
    EXPECT_EQ(BoundsOf(*shape), "0,0 100,50");
    EXPECT_EQ(RecordsOf(*draw(0, 0, 10, 10, 8)).substr(0, 18), "M 0,8 g1 | V -6 | ")
        << "the radius is too large";
    EXPECT_EQ(RecordsOf(*draw(1, 2, 4, 7, INT_MIN)), "M 1,2 g1 | V 5 | H 3 | V -5 | H -3 | E");
    EXPECT_EQ(RecordsOf(*draw(INT_MAX, INT_MAX, INT_MIN, INT_MIN, INT_MAX)).substr(0, 26),
              "M 2.14748e+09,4.29497e+09 ")
        << "sums of 33 bits";
}

TEST(VXSwfDefineShapeTagPrimitives, TriangleAndLine) {
    const Shape shape = Drawn(&Tag::CreateTriangle, 5, 9, 1, 3, 8, 3, kColor);
    EXPECT_EQ(RecordsOf(*shape), "M 5,9 g1 | L -4,-6 | H 7 | L -3,6 | E");
    EXPECT_EQ(BoundsOf(*shape), "1,3 8,9");
    const Shape line = Drawn(&Tag::CreateStraightLine, 9, 1, 2, 4, kColor, 2);
    EXPECT_EQ(RecordsOf(*line), "M 9,1 l1 | L -7,3 | E");
    EXPECT_EQ(BoundsOf(*line), "9,1 2,4") << "not put in order";
    EXPECT_EQ(line->ShapeWithStyle.LineStyles.LineStyles.at(0).Width, 2.0);
    EXPECT_EQ(line->ShapeWithStyle.FillStyles.FillStyleCount, 1);
}

TEST(VXSwfDefineShapeTagPrimitives, ShapeForImage) {
    const Shape shape = Drawn(&Tag::CreateShapeForImage, 7, 10, 20, 100, 30, 50, 30, 0);
    EXPECT_EQ(RecordsOf(*shape), "M 50,30 g1 | H -50 | V -30 | H 50 | V 30 | E") << "Kept: at the origin";
    EXPECT_EQ(BoundsOf(*shape), "10,20 60,50");
    EXPECT_EQ(shape->ShapeWithStyle.FillStyles.FillStyles.at(0).BitmapId, 7);
    EXPECT_EQ(shape->ShapeWithStyle.FillStyles.FillStyles.at(0).BitmapMatrix.ScaleY, 1310720);
    EXPECT_EQ(shape->ShapeWithStyle.ShapeRecords.NumLineBits, 1u);
    const struct {
        int imageWidth, width;
        short tiled;
        int scale;
    } rows[] = {{100, 50, 1, 1310720}, {0, 0, 0, 1310720}, {0, -5, 0, INT_MIN}, {3, 1, 0, 436906}};
    for (const auto& row : rows) {
        const Shape image =
            Drawn(&Tag::CreateShapeForImage, 7, INT_MAX, 0, row.imageWidth, 1, row.width, 1, row.tiled);
        const VXFlintFillStyle& style = image->ShapeWithStyle.FillStyles.FillStyles.at(0);
        EXPECT_EQ(style.FillStyleType, row.tiled != 0 ? 64 : 65);
        EXPECT_EQ(style.BitmapMatrix.ScaleX, row.scale);
    }
}

}  // namespace
