#include "RecordText.h"
#include "support/Test.h"

namespace {

constexpr VXReal kInfinity = std::numeric_limits<VXReal>::infinity();

using Shape = std::unique_ptr<VXSwfDefineShapeTag>;

/// A stroke that starts at the origin.
Shape Stroked(VXStrokeStyleEnum stroke) {
    Shape shape = NewTag<VXSwfDefineShapeTag>(83);
    shape->SetLineStyle(VXFlintRGB(1, 2, 3, 0, 0), 1, 0, stroke, 1, kVXJoinBevel);
    shape->StartPath(0, 0, 1);
    return shape;
}

/// What a straight edge to `x, y` adds.
std::string EdgeTo(VXSwfDefineShapeTag& shape, VXReal x, VXReal y) {
    VXFlintShapeRecords& records = shape.ShapeWithStyle.ShapeRecords;
    const std::size_t first = records.Records.size();
    shape.AddStraightEdge(999, 999, x, y);  // the start is always the pen
    return TextOf(records, first);
}

/// Where the stroke stands in its pattern: the element, and what remains of it.
std::string PlaceOf(VXSwfDefineShapeTag& shape) {
    std::ostringstream text;
    text << shape.GetStrokePattern().GetCurIndex() << ":" << shape.GetStrokePattern().GetOffset();
    return text.str();
}

}  // namespace

TEST(VXSwfDefineShapeTagPath, DrawsAStrokedShape) {
    const Shape shape = NewTag<VXSwfDefineShapeTag>(83);
    shape->SetCharacterId(7);
    shape->SetFillStyle(VXFlintFillStyle());
    shape->ShapeWithStyle.FillStyles.FillStyles[0].SetAlpha(1);
    shape->SetLineStyle(VXFlintRGB(0x11, 0x22, 0x33, 0, 0x44), 2, 0, kVXStrokeSolid, 1, kVXJoinBevel);
    shape->StartPath(0, 0, 1);
    shape->AddStraightEdge(0, 0, 0.05, 0.1);
    shape->AddCurvedEdge(0, 0, 0.1, 0.1, 0.1, 0);
    shape->EndPath();
    shape->EndShape();
    EXPECT_EQ(DumpOf(*shape), TagBytes(83, Join({Hex("07 00"), Hex("00 00 02"), Hex("01 00 00 00 00 FF"),
                                                 Hex("01 28 00 96 02 11 22 33 00"),
                                                 Bits("0001 0010"
                                                      "0 01001 00000 01"         // move to the origin, line 1
                                                      "11 0001 1 001 010"        // one twip right, two down
                                                      "10 0001 001 000 000 110"  // a curve
                                                      "11 0001 0 0 110"          // back
                                                      "000000")})));
}

TEST(VXSwfDefineShapeTagPath, StylesAreTakenAsTold) {
    const Shape shape = NewTag<VXSwfDefineShapeTag>(2);
    VXFlintShapeWithStyle& styles = shape->ShapeWithStyle;
    shape->SetFillStyle(VXFlintFillStyle());
    shape->SetFillStyle(VXFlintFillStyle());
    EXPECT_EQ(styles.ShapeRecords.NumFillBits, 1u) << "whatever the number of styles";
    const struct {
        VXStrokeStyleEnum stroke;
        short closed, closedStyle;
        VXCapStyleEnum cap;
    } rows[] = {{kVXStrokeSolid, 2, 1, kVXCapSquare},
                {kVXStrokeSolid, 0, 0, kVXCapNone},
                {kVXStrokeDash, 1, 0, kVXCapNone}};
    for (const auto& row : rows) {
        shape->SetLineStyle(VXFlintRGB(), 3, 1, row.stroke, row.closed, kVXJoinRound);
        const VXFlintLineStyle2& line = styles.LineStyles.LineStyles2.back();
        EXPECT_EQ(line.Color.UseAlpha, 1);
        EXPECT_EQ(line.Closed, row.closedStyle);
        EXPECT_EQ(line.StartCapStyle, row.cap);
        EXPECT_EQ(line.EndCapStyle, row.cap);
        EXPECT_EQ(line.JoinStyle, kVXJoinRound);
    }
    EXPECT_EQ(styles.ShapeRecords.NumLineBits, 2u);
    EXPECT_EQ(styles.LineStyles.IsLineStyle2, 1) << "even where the version knows no such lines";
}

TEST(VXSwfDefineShapeTagPath, StartsSelectWhatIsDrawn) {
    const Shape shape = Stroked(kVXStrokeDash);
    shape->GetStrokePattern().SetOffset(3);
    shape->GetStrokePattern().SetCurIndex(1);
    shape->StartPath(1.51, -1.525, 0);
    EXPECT_EQ(TextOf(shape->ShapeWithStyle.ShapeRecords), "M 0,0 l1 | M 1.51,-1.525 f1");
    EXPECT_EQ(shape->PathStartX, 30);
    EXPECT_EQ(shape->PenX, 30);
    EXPECT_EQ(shape->SumY, -30) << "half a twip goes up";
    EXPECT_EQ(PlaceOf(*shape), "0:0");
    EXPECT_EQ(EdgeTo(*shape, 101.5, -1.5), "H 100") << "a fill is never dashed";
    shape->StartPath(0, 0, 3);
    EXPECT_EQ(shape->GetStrokePattern().GetHasStroke(), 3);
}

TEST(VXSwfDefineShapeTagPath, EdgesTakeTheShortestForm) {
    const Shape shape = Stroked(kVXStrokeSolid);
    EXPECT_EQ(EdgeTo(*shape, 10, 20), "L 10,20");
    EXPECT_EQ(EdgeTo(*shape, 10.000001, 25), "V 5");
    EXPECT_EQ(EdgeTo(*shape, 12, 25), "H 2");
    EXPECT_EQ(EdgeTo(*shape, 12, 25), "H 0") << "without length";
}

TEST(VXSwfDefineShapeTagPath, PathsEndWhereTheRoundedDeltasLead) {
    const Shape shape = Stroked(kVXStrokeSolid);
    const auto drop = [](VXFlintShapeRecordBase* record) { delete record; };
    // Three deltas of 0.4 twips round to nothing each, and the pen moves on.
    for (int i = 0; i < 3; ++i) drop(shape->CreateStraightEdgeRecord(0.02 * i, 0, 0.02 * (i + 1), 0));
    EXPECT_EQ(shape->PenX, 1);
    EXPECT_EQ(shape->SumX, 0);
    drop(shape->CreateCurvedEdgeRecord(0, 0, 1.03, 2, 2.06, 3));  // 20.6 and 20.6 twips
    EXPECT_EQ(shape->PenX, 41);
    EXPECT_EQ(shape->SumX, 42);
    EXPECT_EQ(shape->SumY, 60);
    shape->EndPath();
    EXPECT_EQ(TextOf(shape->ShapeWithStyle.ShapeRecords, 1), "L -2.1,-3");
    drop(shape->CreateMoveToRecord(1.01, 7));
    EXPECT_EQ(shape->PenX, 20);
    EXPECT_EQ(shape->SumX, 20);
    EXPECT_EQ(shape->PathStartX, 0);
}

TEST(VXSwfDefineShapeTagPath, DashesRunOnFromEdgeToEdge) {
    const Shape shape = Stroked(kVXStrokeDash);
    EXPECT_EQ(EdgeTo(*shape, 100, 0), "H 21 | M 28,0 | H 21 | M 56,0 | H 21 | M 84,0 | H 16");
    EXPECT_EQ(PlaceOf(*shape), "0:5");
    EXPECT_EQ(EdgeTo(*shape, 100, 3), "V 3") << "shorter than what remains";
    EXPECT_EQ(PlaceOf(*shape), "0:2");
    EXPECT_EQ(EdgeTo(*shape, 100, 3.000001), "") << "too short";
    EXPECT_EQ(shape->PenY, 60);
    EXPECT_EQ(EdgeTo(*shape, 100, 15), "V 2 | M 100,12 | V 3");
    EXPECT_EQ(EdgeTo(*shape, 103, 19), "L 3,4");
    shape->EndPath();
    EXPECT_EQ(TextOf(shape->ShapeWithStyle.ShapeRecords, 13), "L -103,-19") << "the closing edge is solid";
    EXPECT_EQ(EdgeTo(*Stroked(kVXStrokeDashDotDot), 60, 0),
              "H 21 | M 28,0 | H 7 | M 42,0 | H 7 | M 56,0 | H 4");

    const Shape even = Stroked(kVXStrokeDash);
    EXPECT_EQ(EdgeTo(*even, 25, 0), "H 21 | M 25,0");
    EXPECT_EQ(EdgeTo(*even, 49, 0), "M 28,0 | H 21");
    EXPECT_EQ(PlaceOf(*even), "1:3") << "Kept: an element that ends with the edge leaves the old remainder";
    EXPECT_EQ(EdgeTo(*even, 60, 0), "M 52,0 | H 8") << "a gap of three pixels, not of seven";
}

TEST(VXSwfDefineShapeTagPath, PlacesThatMakeNoSenseGiveASolidEdge) {
    const std::pair<VXReal, int> places[] = {
        {-1e9, 1}, {kInfinity, 1}, {std::nan(""), 1}, {0, -1}, {0, INT_MAX}};
    for (const auto& [offset, index] : places) {
        const Shape shape = Stroked(kVXStrokeDot);
        shape->GetStrokePattern().SetOffset(offset);
        shape->GetStrokePattern().SetCurIndex(index);
        EXPECT_EQ(EdgeTo(*shape, 50, 0), "H 50") << offset << ", " << index;
    }
    const Shape early = Stroked(kVXStrokeDot);
    early->GetStrokePattern().SetOffset(-5.0);
    EXPECT_EQ(EdgeTo(*early, 20, 0), "H 2 | M 9,0 | H 7 | M 20,0") << "a place before the pattern makes some";
    EXPECT_EQ(PlaceOf(*early), "1:3");
    const Shape shape = Stroked(kVXStrokeDot);
    EXPECT_EQ(EdgeTo(*shape, 20000000, 0), "H 2e+07") << "beyond all measure";
    EXPECT_EQ(PlaceOf(*shape), "0:0");
    EXPECT_EQ(EdgeTo(*shape, kInfinity, 0), "H inf");
    EXPECT_EQ(shape->PenX, INT_MAX);
    EXPECT_EQ(EdgeTo(*Stroked(static_cast<VXStrokeStyleEnum>(9)), 50, 0), "H 50");
    const Shape far = Stroked(kVXStrokeDot);
    far->AddCurvedEdge(0, 0, 5e7, 1e8, -5e7, 1e8, 100, 0);
    EXPECT_LT(far->ShapeWithStyle.ShapeRecords.Records.size(), 100000u)
        << "a curve, each piece of which has a measure";
    EXPECT_EQ(far->PenX, 2000);
}

TEST(VXSwfDefineShapeTagPath, CubicCurvesBecomeEdges) {
    const Shape shape = Stroked(kVXStrokeDash);
    shape->AddCurvedEdge(0, 0, 50, 100, 100, 0);
    EXPECT_EQ(TextOf(shape->ShapeWithStyle.ShapeRecords, 1), "C 50,100 50,-100") << "never dashed";
    shape->StartPath(0.51, 0, 0);
    shape->AddCurvedEdge(0, 0, 20, 40, 50, 40, 90, 0);
    EXPECT_EQ(shape->PenX, 1800);
    shape->StartPath(0, 0, 0);
    shape->AddCurvedEdge(0, 0, kInfinity, 0, 5, 5, 9, 9);
    shape->AddCurvedEdge(0, 0, 1, 0, 5, 5, std::nan(""), 9);
    EXPECT_EQ(shape->PenX, 0);
    const std::size_t count = shape->ShapeWithStyle.ShapeRecords.Records.size();
    EXPECT_EQ(TextOf(shape->ShapeWithStyle.ShapeRecords, count - 2), "M 0,0 f1 | L 9,9");
}
