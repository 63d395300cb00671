#include <cmath>
#include <utility>

#include "graphics/VXTwips.h"
#include "shapes/BezSWFEdgeCreatorVisitor2.h"
#include "shapes/BezierLib2.h"
#include "shapes/VXPathWriter_p.h"
#include "shapes/VXSwfDefineShapeTag.h"

namespace {

/// Of the polygon of its control points, which is at least as long as the curve.
double LongestLength(const double (&points)[8]) {
    double length = 0.0;
    for (int i = 2; i < 8; i += 2)
        length += std::hypot(points[i] - points[i - 2], points[i + 1] - points[i - 1]);
    return length;
}

}  // namespace

VXPathState VXSwfDefineShapeTag::GetPathState() { return {PenX, PenY, SumX, SumY}; }

void VXSwfDefineShapeTag::AddShapeRecord(std::unique_ptr<VXFlintShapeRecordBase> record) {
    ShapeWithStyle.ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::move(record)));
}

void VXSwfDefineShapeTag::SetFillStyle(const VXFlintFillStyle& style) {
    ShapeWithStyle.AddFillStyle(style);
    ShapeWithStyle.ShapeRecords.NumFillBits = 1;
}

void VXSwfDefineShapeTag::SetLineStyle(const VXFlintRGB& color, int width, short, VXStrokeStyleEnum stroke,
                                       short closed, VXJoinStyleEnum join) {
    ShapeWithStyle.ShapeRecords.NumLineBits = 2;
    VXFlintLineStyle2 style;
    style.Width = width;
    style.Color = color;
    style.SetAlpha(1);
    style.SetClosed(stroke == kVXStrokeSolid && closed != 0 ? 1 : 0);
    style.SetJoinStyle(join);
    StrokePattern.SetStrokeStyleEnum(stroke);
    ShapeWithStyle.AddLineStyle(style);
}

void VXSwfDefineShapeTag::StartPath(VXReal x, VXReal y, short isStroke) {
    auto change = VXMakeMoveTo(GetPathState(), {x, y});
    PathStartX = PenX;
    PathStartY = PenY;
    if (isStroke != 0) {
        change->StateLineStyle = 1;
        change->LineStyle = 1;
    } else {
        change->StateFillStyle0 = 1;
        change->FillStyle0 = 1;
    }
    AddShapeRecord(std::move(change));
    StrokePattern.Reset();
    StrokePattern.SetHasStroke(isStroke);
}

void VXSwfDefineShapeTag::AddStraightEdge(VXReal, VXReal, VXReal x2, VXReal y2) {
    const VXPathState state = GetPathState();
    const VXPathPoint from = state.Pen();
    VXAddLine(ShapeWithStyle.ShapeRecords, StrokePattern, state, from, {x2, y2}, from);
}

void VXSwfDefineShapeTag::AddCurvedEdge(VXReal, VXReal, VXReal cx, VXReal cy, VXReal x2, VXReal y2) {
    const VXPathPoint from = GetPathState().Pen();
    AddShapeRecord(
        std::unique_ptr<VXFlintShapeRecordBase>(CreateCurvedEdgeRecord(from.x, from.y, cx, cy, x2, y2)));
}

void VXSwfDefineShapeTag::AddCurvedEdge(VXReal, VXReal, VXReal c1x, VXReal c1y, VXReal c2x, VXReal c2y,
                                        VXReal x2, VXReal y2) {
    const VXPathPoint from = GetPathState().Pen();
    const double points[] = {from.x, from.y, c1x, c1y, c2x, c2y, x2, y2};
    // A curve beyond all measure has no dashes, though each of its pieces could.
    VXSwfStrokePattern solid;
    const bool isMeasured = LongestLength(points) <= VXDashWalk::kLongest;
    BezierLib2::BezSWFEdgeCreatorVisitor2 visitor(BezierLib2::ConvertCubicToShapes(points, kVXCurveTolerance),
                                                  &ShapeWithStyle, isMeasured ? &StrokePattern : &solid,
                                                  &PenX, &PenY, &SumX, &SumY);
    visitor.VisitShapes();
    GetPathState().SetPen({x2, y2});
}

void VXSwfDefineShapeTag::EndPath() {
    AddShapeRecord(std::unique_ptr<VXFlintShapeRecordBase>(CreateStraightEdgeRecord(
        VXFromTwips(SumX), VXFromTwips(SumY), VXFromTwips(PathStartX), VXFromTwips(PathStartY))));
}

void VXSwfDefineShapeTag::EndShape() {
    AddShapeRecord(std::unique_ptr<VXFlintShapeRecordBase>(CreateEndRecord()));
}

VXFlintShapeEndRecord* VXSwfDefineShapeTag::CreateEndRecord() { return new VXFlintShapeEndRecord; }

VXFlintStraightEdgeRecord* VXSwfDefineShapeTag::CreateStraightEdgeRecord(VXReal x1, VXReal y1, VXReal x2,
                                                                         VXReal y2) {
    return VXMakeStraightEdge(GetPathState(), {x1, y1}, {x2, y2}).release();
}

VXFlintCurvedEdgeRecord* VXSwfDefineShapeTag::CreateCurvedEdgeRecord(VXReal x1, VXReal y1, VXReal cx,
                                                                     VXReal cy, VXReal x2, VXReal y2) {
    const VXPathPoint control = {cx, cy};
    const VXPathPoint to = {x2, y2};
    return VXMakeCurvedEdge(GetPathState(), control - VXPathPoint{x1, y1}, to - control, to).release();
}

VXFlintShapeStyleChangeRecord* VXSwfDefineShapeTag::CreateMoveToRecord(VXReal x, VXReal y) {
    return VXMakeMoveTo(GetPathState(), {x, y}).release();
}
