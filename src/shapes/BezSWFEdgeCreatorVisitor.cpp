#include "shapes/BezSWFEdgeCreatorVisitor.h"

#include <utility>

#include "graphics/VXTwips.h"
#include "shapes/VXPathWriter_p.h"

namespace BezierLib2 {

namespace {

struct WholePoint {
    WholePoint(double realX, double realY) : x(VXTruncate(realX)), y(VXTruncate(realY)) {}

    float FloatX() const { return static_cast<float>(x); }
    float FloatY() const { return static_cast<float>(y); }
    friend bool operator==(const WholePoint&, const WholePoint&) = default;

    int x;
    int y;
};

void AddDistance(int& sum, int from, int to) { sum = VXWrappingSum(sum, VXWrappingDifference(to, from)); }

}  // namespace

BezSWFEdgeCreatorVisitor::BezSWFEdgeCreatorVisitor(BezShapes shapes, VXFlintShape* target, int* sumX,
                                                   int* sumY)
    : Shapes(std::move(shapes)), Target(target), SumX(sumX), SumY(sumY) {}

BezSWFEdgeCreatorVisitor::~BezSWFEdgeCreatorVisitor() = default;

void BezSWFEdgeCreatorVisitor::VisitShapes() {
    for (const auto& shape : Shapes) shape->Accept(*this);
}

void BezSWFEdgeCreatorVisitor::VisitLine(BezLine& line) {
    const WholePoint start(line.StartX, line.StartY);
    const WholePoint end(line.EndX, line.EndY);
    if (start != end) {
        Target->AddLineToGlyphShape(start.FloatX(), start.FloatY(), end.FloatX(), end.FloatY());
    }
    AddDistance(*SumX, start.x, end.x);
    AddDistance(*SumY, start.y, end.y);
}

void BezSWFEdgeCreatorVisitor::VisitCurve(BezCurve& curve) {
    const WholePoint start(curve.StartX, curve.StartY);
    const WholePoint control(curve.ControlX, curve.ControlY);
    const WholePoint end(curve.EndX, curve.EndY);
    if (control != start || end != start) {
        Target->AddCurveToGlyphShape(start.FloatX(), start.FloatY(), control.FloatX(), control.FloatY(),
                                     end.FloatX(), end.FloatY());
    }
    AddDistance(*SumX, start.x, end.x);
    AddDistance(*SumY, start.y, end.y);
}

}  // namespace BezierLib2
