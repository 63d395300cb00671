#include "shapes/BezSWFEdgeCreatorVisitor2.h"

#include <cmath>
#include <utility>

#include "shapes/VXPathWriter_p.h"

namespace BezierLib2 {

namespace {

using Point = VXPathPoint;

struct Quadratic {
    Point start;
    Point control;
    Point end;

    Point At(double t) const {
        const double u = 1.0 - t;
        return u * u * start + 2.0 * t * u * control + t * t * end;
    }
    /// On the tangent at `t`, and the control point of what lies in front of it.
    Point ControlAt(double t) const { return (1.0 - t) * start + t * control; }
    double Length() const;
};

// Kept: the parameter is a quotient of integers, 0 for all samples but the last, so that the length is that
// of the chord.
double Quadratic::Length() const {
    double length = 0.0;
    Point previous = start;
    for (int i = 1; i <= 100; ++i) {
        const Point sample = At(i / 100);  // NOLINT(bugprone-integer-division)
        const Point delta = sample - previous;
        length += std::sqrt(delta.x * delta.x + delta.y * delta.y);
        previous = sample;
    }
    return length;
}

/// Where the line through `a` and `d` meets the line through `b` and `l`, or `otherwise`.
Point MeetingOf(Point a, Point d, Point b, Point l, Point otherwise) {
    const double a1 = a.y - d.y;
    const double b1 = d.x - a.x;
    const double c1 = d.y * a.x - d.x * a.y;
    const double a2 = b.y - l.y;
    const double b2 = l.x - b.x;
    const double c2 = l.y * b.x - l.x * b.y;
    const double determinant = b2 * a1 - a2 * b1;
    if (!(std::fabs(determinant) >= kVXNegligible)) return otherwise;
    return {(c2 * b1 - b2 * c1) / determinant, (c2 * a1 - a2 * c1) / (a2 * b1 - b2 * a1)};
}

std::unique_ptr<VXFlintCurvedEdgeRecord> MakeCurve(const VXPathState& state, Point from, Point control,
                                                   Point to) {
    const Point controlDelta = control - from;
    const Point anchorDelta = (to - from) - controlDelta;
    auto edge = VXMakeCurvedEdge(state, controlDelta, anchorDelta, to);
    if (VXIsZero(controlDelta.x) && VXIsZero(controlDelta.y) && VXIsZero(anchorDelta.x) &&
        VXIsZero(anchorDelta.y)) {
        *edge = VXFlintCurvedEdgeRecord();
    }
    return edge;
}

}  // namespace

BezSWFEdgeCreatorVisitor2::BezSWFEdgeCreatorVisitor2(BezShapes shapes, VXFlintShapeWithStyle* target,
                                                     VXSwfStrokePattern* stroke, int* penX, int* penY,
                                                     int* sumX, int* sumY)
    : Shapes(std::move(shapes)),
      Target(target),
      Stroke(stroke),
      PenX(penX),
      PenY(penY),
      SumX(sumX),
      SumY(sumY) {}

BezSWFEdgeCreatorVisitor2::~BezSWFEdgeCreatorVisitor2() = default;

void BezSWFEdgeCreatorVisitor2::VisitShapes() {
    for (Index = 0; Index < Shapes.size(); ++Index) Shapes[Index]->Accept(*this);
}

void BezSWFEdgeCreatorVisitor2::VisitLine(BezLine& line) {
    const VXPathState state = {*PenX, *PenY, *SumX, *SumY};
    const Point from = Index == 0 ? state.Pen() : Point{line.StartX, line.StartY};
    const Point to = {line.EndX, line.EndY};
    VXAddLine(Target->ShapeRecords, *Stroke, state, from, to, to);
}

void BezSWFEdgeCreatorVisitor2::VisitCurve(BezCurve& curve) {
    const VXPathState state = {*PenX, *PenY, *SumX, *SumY};
    const Quadratic whole = {Index == 0 ? state.Pen() : Point{curve.StartX, curve.StartY},
                             {curve.ControlX, curve.ControlY},
                             {curve.EndX, curve.EndY}};
    VXFlintShapeRecords& records = Target->ShapeRecords;
    Point arcStart = whole.start;
    Point arcTangent = whole.control;
    const double length = VXDashWalk::IsNeeded(*Stroke) ? whole.Length() : 0.0;
    const bool isCut = VXDashWalk::Walk(*Stroke, length, [&](VXReal t, bool isDrawn, bool isRest) {
        const Point end = whole.At(t);
        const Point tangent = whole.ControlAt(t);
        const Point control = isRest ? tangent : MeetingOf(arcStart, arcTangent, end, tangent, whole.start);
        if (isDrawn) {
            records.AddShapeRecord(VXFlintShapeRecord(MakeCurve(state, arcStart, control, end)));
        } else {
            records.AddShapeRecord(VXFlintShapeRecord(VXMakeMoveTo(state, end)));
        }
        arcStart = end;
        arcTangent = control;
    });
    if (!isCut) {
        records.AddShapeRecord(VXFlintShapeRecord(MakeCurve(state, whole.start, whole.control, whole.end)));
    }
}

}  // namespace BezierLib2
