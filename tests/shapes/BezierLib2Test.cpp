#include "RecordText.h"
#include "support/Test.h"

using namespace BezierLib2;

namespace {

/// Writes down what it visits.
class Scribe : public BezShapeVisitor {
public:
    void VisitCurve(BezCurve& curve) override {
        text << "C " << curve.StartX << "," << curve.StartY << " " << curve.ControlX << "," << curve.ControlY
             << " " << curve.EndX << "," << curve.EndY << ";";
    }
    void VisitLine(BezLine& line) override {
        text << "L " << line.StartX << "," << line.StartY << " " << line.EndX << "," << line.EndY << ";";
    }
    std::ostringstream text;
};

std::string PiecesOf(const double (&points)[8], double tolerance = 0.01) {
    Scribe scribe;
    for (const auto& shape : ConvertCubicToShapes(points, tolerance)) shape->Accept(scribe);
    return scribe.text.str();
}

/// The greatest distance of points on the pieces from the curve.
double GreatestError(const double (&p)[8], const BezShapes& shapes) {
    constexpr int kSamples = 4000;
    double greatest = 0;
    for (const auto& shape : shapes) {
        const auto* quadratic = dynamic_cast<const BezCurve*>(shape.get());
        const double cx = quadratic != nullptr ? quadratic->ControlX : (shape->StartX + shape->EndX) / 2;
        const double cy = quadratic != nullptr ? quadratic->ControlY : (shape->StartY + shape->EndY) / 2;
        const double x = (shape->StartX + 2 * cx + shape->EndX) / 4;  // in the middle of the piece
        const double y = (shape->StartY + 2 * cy + shape->EndY) / 4;
        double nearest = std::numeric_limits<double>::max();
        for (int i = 0; i <= kSamples; ++i) {
            const double s = static_cast<double>(i) / kSamples, r = 1 - s;
            const double b[] = {r * r * r, 3 * r * r * s, 3 * r * s * s, s * s * s};
            nearest =
                std::min(nearest, std::hypot(x - b[0] * p[0] - b[1] * p[2] - b[2] * p[4] - b[3] * p[6],
                                             y - b[0] * p[1] - b[1] * p[3] - b[2] * p[5] - b[3] * p[7]));
        }
        greatest = std::max(greatest, nearest);
    }
    return greatest;
}

/// A shape and a stroke that pieces are drawn with; the pen stands at the origin.
struct Drawing {
    explicit Drawing(VXStrokeStyleEnum style) { stroke.SetStrokeStyleEnum(style); }

    static BezShapes Line(double x1, double y1, double x2, double y2) {
        return Place(std::make_unique<BezLine>(), x1, y1, x2, y2);
    }
    static BezShapes Curve(double x1, double y1, double cx, double cy, double x2, double y2) {
        auto curve = std::make_unique<BezCurve>();
        curve->ControlX = cx;
        curve->ControlY = cy;
        return Place(std::move(curve), x1, y1, x2, y2);
    }
    static BezShapes Place(std::unique_ptr<BezShape> piece, double x1, double y1, double x2, double y2) {
        piece->StartX = x1;
        piece->StartY = y1;
        piece->EndX = x2;
        piece->EndY = y2;
        BezShapes shapes;
        shapes.push_back(std::move(piece));
        return shapes;
    }
    std::string Draw(BezShapes shapes) {
        const std::size_t first = shape.ShapeRecords.Records.size();
        BezSWFEdgeCreatorVisitor2 visitor(std::move(shapes), &shape, &stroke, &penX, &penY, &sumX, &sumY);
        visitor.VisitShapes();
        return TextOf(shape.ShapeRecords, first);
    }

    VXFlintShapeWithStyle shape;
    VXSwfStrokePattern stroke;
    int penX = 0, penY = 0, sumX = 0, sumY = 0;
};

}  // namespace

TEST(BezierLib2, SimpleCurvesHaveOnePiece) {
    EXPECT_EQ(PiecesOf({0, 0, 20, 40, 50, 40, 90, 0}), "C 0,0 30,60 90,0;") << "a raised quadratic";
    EXPECT_EQ(PiecesOf({0, 0, 10, 0, 20, 0, 30, 0}), "C 0,0 15,0 30,0;") << "on a line, evenly";
    EXPECT_EQ(PiecesOf({5, 5, 5, 5, 5, 5, 5, 5}), "") << "a point";
    EXPECT_EQ(PiecesOf({0, 0, 10.001, 0, 20, 0, 30, 0}), "L 0,0 30,0;") << "parallel tangents, flat";
    EXPECT_EQ(PiecesOf({0, 0, 0, 0, 0.01, 0, 0.03, 0}), "L 0,0 0.03,0;") << "parallel tangents, short";
}

TEST(BezierLib2, PiecesFollowTheCurve) {
    const double curves[][8] = {{0, 0, 100, 0, 0, 100, 100, 100},      // parallel tangents
                                {0, 0, 55.2, 0, 100, 44.8, 100, 100},  // a quarter of a circle
                                {0, 0, 200, 200, -100, 200, 100, 0},   // a loop
                                {0, 0, 100, 100, -100, 100, 0, 0},     // ends where it starts
                                {0, 0, 100, 100, 0, 100, 100, 0},      // a cusp
                                {0, 0, 0, 0, 300, 10, 300, 10}};       // control points on the ends
    for (const auto& points : curves) {
        const BezShapes shapes = ConvertCubicToShapes(points, 0.01);
        ASSERT_GT(shapes.size(), 1u);
        EXPECT_LT(shapes.size(), 150u);
        std::pair end(points[0], points[1]);
        for (const auto& shape : shapes) {
            EXPECT_EQ(std::pair(shape->StartX, shape->StartY), end);
            end = {shape->EndX, shape->EndY};
        }
        EXPECT_EQ(end, std::pair(points[6], points[7]));
        EXPECT_LT(GreatestError(points, shapes), 0.15);
    }
}

TEST(BezierLib2, EndsForEveryInput) {
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double bad : {nan, infinity, -infinity, 1.2e8}) {
        EXPECT_EQ(PiecesOf({0, 0, bad, 0, 1, 1, 9, 9}), "L 0,0 9,9;");
        EXPECT_EQ(PiecesOf({0, 0, 1, 1, 0, bad, 9, 9}), "L 0,0 9,9;");
    }
    EXPECT_EQ(PiecesOf({nan, 0, 1, 0, 1, 1, 9, 9}), "");
    EXPECT_EQ(PiecesOf({0, 0, 1, 0, 1, 1, 9, infinity}), "");
    EXPECT_EQ(PiecesOf({2e8, 0, 1, 0, 1, 1, 9, 9}), "L 2e+08,0 9,9;");
    for (const double tolerance : {0.0, -1.0, nan}) {
        EXPECT_EQ(PiecesOf({0, 0, 100, 0, 0, 100, 9, 9}, tolerance), "L 0,0 9,9;");
        EXPECT_EQ(PiecesOf({0, 0, 10, 20, 20, 20, 30, 0}, tolerance), "C 0,0 15,30 30,0;");
        EXPECT_EQ(PiecesOf({5, 5, 5, 5, 5, 5, 5, 5}, tolerance), "");
    }
    const double farthest[] = {-1.1e8, -1.1e8, 1.1e8, 1.1e8, -1.1e8, 1.1e8, 1.1e8, -1.1e8};
    EXPECT_LT(ConvertCubicToShapes(farthest, 0.01).size(), 100000u);
}

TEST(BezSWFEdgeCreatorVisitor2, FirstPieceStartsAtThePen) {
    Drawing drawing(kVXStrokeSolid);
    drawing.penX = 10;
    EXPECT_EQ(drawing.Draw(drawing.Line(0.4, 0, 10, 5)), "L 9.5,5");
    EXPECT_EQ(drawing.Draw(drawing.Curve(77, 77, 20, 5, 20, 15)), "C 10,0 0,10");
    EXPECT_EQ(drawing.penY, 300);
    EXPECT_EQ(drawing.sumX, 390);
    // The start that is its own counts for the second piece.
    BezShapes two = drawing.Line(0, 0, 20, 16);
    two.push_back(std::move(drawing.Line(21, 16, 25, 16)[0]));
    EXPECT_EQ(drawing.Draw(std::move(two)), "V 1 | H 4");
    EXPECT_EQ(drawing.Draw(drawing.Curve(0, 0, 25.000001, 16, 25, 16.000001)), "C 0,0 0,0");
}

TEST(BezSWFEdgeCreatorVisitor2, CurvesAreCutAlongTheChord) {
    Drawing bend(kVXStrokeDash);
    EXPECT_EQ(bend.Draw(bend.Curve(0, 0, 50, 50, 100, 0)).substr(0, 39),
              "C 10.5,10.5 10.5,6.09 | M 28,20.16 | C ");
    EXPECT_EQ(bend.stroke.GetOffset(), 5.0);
    EXPECT_EQ(bend.stroke.GetCurIndex(), 0);
    EXPECT_EQ(bend.Draw(bend.Curve(0, 0, 110, 0, 120, 0)).substr(0, 2), "C ") << "what was left comes first";

    Drawing straight(kVXStrokeDash);
    EXPECT_EQ(straight.Draw(straight.Curve(0, 0, 15, 0, 30, 0)), "C 0,0 21,0 | M 28,0 | C -28,0 30,0")
        << "tangents that do not meet take the start of the curve";
    EXPECT_EQ(straight.Draw(straight.Curve(0, 0, 50, 50, 30, 0)), "") << "no chord";
    EXPECT_EQ(straight.stroke.GetOffset(), 19.0);
    EXPECT_EQ(straight.penX, 600);
    EXPECT_EQ(straight.Draw(straight.Curve(0, 0, std::nan(""), 0, 60, 0)), "C nan,0 nan,0") << "uncut";
}

TEST(BezSWFEdgeCreatorVisitor2, LinesStartTheirFirstDashAtTheirEnd) {
    Drawing drawing(kVXStrokeDash);
    EXPECT_EQ(drawing.Draw(drawing.Line(0, 0, 50, 0)), "H -29 | M 28,0 | H 21 | M 50,0");
    EXPECT_EQ(drawing.stroke.GetOffset(), 6.0);
    EXPECT_EQ(drawing.Draw(drawing.Line(50, 0, 80, 0)), "M 56,0 | H 21 | M 80,0") << "not with a remainder";
}

TEST(BezSWFEdgeCreatorVisitor, TruncatesToWholeUnits) {
    const auto draw = [](const double(&points)[8]) {
        VXFlintShape shape;
        int x = 100;
        int y = 0;
        BezSWFEdgeCreatorVisitor visitor(ConvertCubicToShapes(points, 0.01), &shape, &x, &y);
        visitor.VisitShapes();
        return TextOf(shape.ShapeRecords) + " -> " + std::to_string(x) + "," + std::to_string(y);
    };
    EXPECT_EQ(draw({0, 0, 20, 40, 50, 40, 90, -0.9}).substr(0, 2), "C ");
    EXPECT_EQ(draw({0.9, 0, 20.9, 40, 50.9, 40, 90.9, 0}), "C 30,60 60,-60 -> 190,0");
    EXPECT_EQ(draw({0.1, 0.1, 0.3, 0.1, 0.5, 0.1, 0.7, 0.1}), " -> 100,0") << "no length";
    EXPECT_EQ(draw({0, 0, 1.0 / 3, 0.6, 10.0 / 3, 3.6, 9, 9}), "C 0,0 9,9 -> 109,9");
    EXPECT_EQ(draw({1e8, 0, 1e9, 0, 0, 0, -7.9, 0}), "H -1e+08 -> -99999907,0");
}
