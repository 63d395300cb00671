#include "RecordText.h"
#include "support/Test.h"

namespace {

constexpr KVMPointType M = kKVMMove;
constexpr KVMPointType L = kKVMLine;
constexpr KVMPointType C = kKVMCurve;
constexpr KVMPointType Z = kKVMClose;

std::string PathOf(std::vector<float> points, const std::vector<KVMPointType>& kinds) {
    VXFlintShape shape;
    shape.CreateShapeFromPathData(static_cast<unsigned int>(kinds.size()), points.data(), kinds.data());
    return TextOf(shape.ShapeRecords);
}

TEST(VXFlintShapeGlyph, RecordsAreMadeInWholeUnits) {
    VXFlintShape shape;
    shape.ShapeRecords.NumFillBits = 1;
    shape.AddChangeToGlyphShape(-5.0f, 0.0f, true);
    EXPECT_EQ(shape.NumFillBits, 4u) << "the width of the move";
    shape.AddLineToGlyphShape(0, 0, 100, 3);
    EXPECT_EQ(shape.NumLineBits, 3u) << "the height alone counts";
    shape.AddLineToGlyphShape(7, 7, 7, 7);
    shape.AddLineToGlyphShape(7, 7, 7, 9);
    shape.AddLineToGlyphShape(7, 7, 9, 7);
    shape.AddCurveToGlyphShape(0, 0, 1, 2, 11, 2);
    EXPECT_EQ(shape.NumFillBits, 5u);
    shape.AddChangeToGlyphShape(0, 0, false);
    shape.AddEndShapeRecord();
    EXPECT_EQ(TextOf(shape.ShapeRecords), "M -5,0 l0 g1 | L 100,3 | V 2 | H 2 | C 1,2 10,0 | M 0,0 | E");
    const auto& change = dynamic_cast<VXFlintShapeStyleChangeRecord&>(*shape.ShapeRecords.Records[0]->Record);
    EXPECT_EQ(change.NumFillBits, 1u) << "of the list, and not what the shape notes";
    EXPECT_EQ(change.MoveBits, 4u);
}

TEST(VXFlintShapeGlyph, PathsCloseExactly) {
    EXPECT_EQ(PathOf({10.7f, 10.7f, 20.9f, 10.7f, 20.9f, 20.2f, 10.7f, 10.7f, 10.7f, 10.7f}, {M, L, L, L, Z}),
              "M 10,10 | H 10 | V 10 | L -10,-10");
    EXPECT_EQ(PathOf({0, 0, 9, 0, 9, 9, 0, 0}, {M, L, L, Z}), "M 0,0 | H 9 | V 9 | L -9,-9")
        << "one line more, to the start";
    EXPECT_EQ(PathOf({5, 5, 5.5f, 5.5f, 5, 5}, {M, L, L}), "M 5,5") << "lines that truncate to nothing";
    EXPECT_EQ(PathOf({-0.9f, 3, 4, 3, 8, 1, 9, 2, 20, 3}, {M, L, M, L, L}),
              "M 0,3 | H 4 | M 8,1 | L 1,1 | L 11,1");
}

TEST(VXFlintShapeGlyph, EntriesThatCannotBeFollowedArePassedOver) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(PathOf({0, 0, 20, 40, 50, 40, 90, 0, 0, 0}, {M, C, C, C, Z}), "M 0,0 | C 30,60 60,-60 | H -90");
    EXPECT_EQ(PathOf({0, 0, 20, 40, 50, 40}, {M, C, C}), "M 0,0") << "cut short";
    EXPECT_EQ(PathOf({0, 0, 8, 0}, {M, static_cast<KVMPointType>(9), L}), "M 0,0 | H 8") << "unknown kinds";
    EXPECT_EQ(PathOf({1, 1, 2, 2, 3, 3, 0, 0, 8, 0}, {C, C, C, M, L}), "M 0,0 | H 8")
        << "a curve from nowhere";
    EXPECT_EQ(PathOf({0, 0, nan, 5, 8, 0}, {M, L, L}), "M 0,0 | H 8");
    EXPECT_EQ(PathOf({0, 0, 1, 1, 1e9f, 2, 3, 3, 8, 0}, {M, C, C, C, L}), "M 0,0 | H 8");
    VXFlintShape shape;
    float point[] = {1, 2};
    shape.CreateShapeFromPathData(3, nullptr, nullptr);
    shape.CreateShapeFromPathData(3, point, nullptr);
    shape.CreateShapeFromPathData(0, point, &M);
    EXPECT_TRUE(shape.ShapeRecords.Records.empty());
}

}  // namespace
