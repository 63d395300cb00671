#include "shapes/BezSWFEdgeCreatorVisitor.h"

#include <utility>

#include "shapes/VXPathWriter_p.h"

namespace BezierLib2 {

namespace {

void AddTo(int& sumX, int& sumY, VXWholePoint distance) {
    sumX = VXWrappingSum(sumX, distance.x);
    sumY = VXWrappingSum(sumY, distance.y);
}

}  // namespace

BezSWFEdgeCreatorVisitor::BezSWFEdgeCreatorVisitor(BezShapes shapes, VXFlintShape* target, int* sumX,
                                                   int* sumY)
    : Shapes(std::move(shapes)), Target(target), SumX(sumX), SumY(sumY) {}

BezSWFEdgeCreatorVisitor::~BezSWFEdgeCreatorVisitor() = default;

void BezSWFEdgeCreatorVisitor::VisitShapes() {
    for (const auto& shape : Shapes) shape->Accept(*this);
}

void BezSWFEdgeCreatorVisitor::VisitLine(BezLine& line) {
    const VXWholePoint start = VXWholePoint::Of(line.StartX, line.StartY);
    const VXWholePoint end = VXWholePoint::Of(line.EndX, line.EndY);
    if (start != end) {
        Target->AddLineToGlyphShape(start.FloatX(), start.FloatY(), end.FloatX(), end.FloatY());
    }
    AddTo(*SumX, *SumY, end - start);
}

void BezSWFEdgeCreatorVisitor::VisitCurve(BezCurve& curve) {
    const VXWholePoint start = VXWholePoint::Of(curve.StartX, curve.StartY);
    const VXWholePoint control = VXWholePoint::Of(curve.ControlX, curve.ControlY);
    const VXWholePoint end = VXWholePoint::Of(curve.EndX, curve.EndY);
    if (control != start || end != start) {
        Target->AddCurveToGlyphShape(start.FloatX(), start.FloatY(), control.FloatX(), control.FloatY(),
                                     end.FloatX(), end.FloatY());
    }
    AddTo(*SumX, *SumY, end - start);
}

}  // namespace BezierLib2
