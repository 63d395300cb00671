#include "shapes/BezierLib2.h"

#include <cmath>

#include "shapes/VXPathWriter_p.h"

namespace BezierLib2 {

namespace {

using Point = VXPathPoint;

constexpr double kThird = 1.0 / 3.0;
constexpr double kTwoThirds = 2.0 / 3.0;
constexpr double kFarthest = 110000000.0;
/// Far beyond what a curve within `kFarthest` needs. Turns to either half count.
constexpr int kDeepest = 24;

double Square(Point a) { return a.x * a.x + a.y * a.y; }

double Cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }

bool IsSame(Point a, Point b) { return std::fabs(a.x - b.x) < 1e-10 && std::fabs(a.y - b.y) < 1e-10; }

// The two are asked one by one, as a maximum could hide what is not a number.
bool AreWithin(double tolerance, Point error1, Point error2) {
    return tolerance > Square(error1) && tolerance > Square(error2);
}

void SetEnds(BezShape& shape, Point from, Point to) {
    shape.StartX = from.x;
    shape.StartY = from.y;
    shape.EndX = to.x;
    shape.EndY = to.y;
}

void VisitLine(Point from, Point to, BezShapeVisitor& visitor) {
    BezLine line;
    SetEnds(line, from, to);
    visitor.VisitLine(line);
}

void VisitQuadratic(Point from, Point control, Point to, BezShapeVisitor& visitor) {
    const bool isClosed = IsSame(from, to);
    if (isClosed || IsSame(control, from) || IsSame(control, to)) {
        if (!isClosed) VisitLine(from, to, visitor);
        return;
    }
    BezCurve curve;
    SetEnds(curve, from, to);
    curve.ControlX = control.x;
    curve.ControlY = control.y;
    visitor.VisitCurve(curve);
}

/// Recurses into the left half and loops over the right one, so that the stack grows with the depth on one
/// side only.
void VisitHalves(double tolerance, Point p0, Point p1, Point p2, Point p3, int depth,
                 BezShapeVisitor& visitor) {
    for (;; ++depth) {
        if (p3.x == (3.0 * p2.x - 3.0 * p1.x) + p0.x && p3.y == (3.0 * p2.y - 3.0 * p1.y) + p0.y) {
            // A quadratic that was raised.
            VisitQuadratic(p0, 1.5 * p1 - 0.5 * p0, p3, visitor);
            return;
        }
        const Point a = p0 - p1;
        const Point b = p2 - p3;
        const Point c = p1 - p3;
        if (const double d = Cross(a, b); d != 0.0) {
            // Where the tangents of both ends meet.
            const Point q = p1 + (Cross(b, c) / d) * a;
            if (AreWithin(tolerance, p1 - kThird * p0 - kTwoThirds * q, p2 - kTwoThirds * q - kThird * p3)) {
                VisitQuadratic(p0, q, p3, visitor);
                return;
            }
        }
        const Point chord = p3 - p0;
        const bool isFlat =
            AreWithin(tolerance * 0.0625, (p1 - p0) - kThird * chord, (p2 - p0) - kTwoThirds * chord);
        if (isFlat || depth >= kDeepest) {
            VisitLine(p0, p3, visitor);
            return;
        }
        const Point left1 = 0.5 * (p0 + p1);
        const Point middle = 0.5 * (p1 + p2);
        const Point right2 = 0.5 * (p2 + p3);
        const Point left2 = 0.5 * (left1 + middle);
        const Point right1 = 0.5 * (middle + right2);
        const Point center = 0.5 * (left2 + right1);
        VisitHalves(tolerance, p0, left1, left2, center, depth + 1, visitor);
        p0 = center;
        p1 = right1;
        p2 = right2;
    }
}

/// Keeps what it sees.
class Collector final : public BezShapeVisitor {
public:
    explicit Collector(BezShapes& shapes) : m_Shapes(shapes) {}
    void VisitCurve(BezCurve& curve) override { m_Shapes.push_back(std::make_unique<BezCurve>(curve)); }
    void VisitLine(BezLine& line) override { m_Shapes.push_back(std::make_unique<BezLine>(line)); }

private:
    BezShapes& m_Shapes;
};

}  // namespace

BezShape::~BezShape() = default;

BezLine::~BezLine() = default;

void BezLine::Accept(BezShapeVisitor& visitor) { visitor.VisitLine(*this); }

BezCurve::~BezCurve() = default;

void BezCurve::Accept(BezShapeVisitor& visitor) { visitor.VisitCurve(*this); }

BezShapeVisitor::~BezShapeVisitor() = default;

void VisitCubic(const double (&points)[8], double tolerance, BezShapeVisitor& visitor) {
    const Point p0 = {points[0], points[1]};
    const Point p3 = {points[6], points[7]};
    bool isNear = true;
    for (const double coordinate : points) isNear &= std::fabs(coordinate) <= kFarthest;
    if (isNear) {
        // No number of halves is exact enough for a tolerance of 0.
        const int depth = tolerance > 0.0 ? 0 : kDeepest;
        VisitHalves(tolerance, p0, {points[2], points[3]}, {points[4], points[5]}, p3, depth, visitor);
    } else if (std::isfinite(p0.x) && std::isfinite(p0.y) && std::isfinite(p3.x) && std::isfinite(p3.y)) {
        VisitLine(p0, p3, visitor);
    }
}

BezShapes ConvertCubicToShapes(const double (&points)[8], double tolerance) {
    BezShapes shapes;
    Collector collector(shapes);
    VisitCubic(points, tolerance, collector);
    return shapes;
}

}  // namespace BezierLib2
