#include "shapes/VXPathWriter_p.h"

VXPathPoint VXPathState::Pen() const { return {VXFromTwips(penX), VXFromTwips(penY)}; }

void VXPathState::SetPen(VXPathPoint point) const {
    penX = VXToTwips(point.x);
    penY = VXToTwips(point.y);
}

void VXPathState::AddToSum(VXPathPoint distance) const {
    sumX = VXWrappingSum(sumX, VXToTwips(distance.x));
    sumY = VXWrappingSum(sumY, VXToTwips(distance.y));
}

std::unique_ptr<VXFlintStraightEdgeRecord> VXMakeStraightEdge(const VXPathState& state, VXPathPoint from,
                                                              VXPathPoint to) {
    const VXPathPoint delta = to - from;
    auto edge = std::make_unique<VXFlintStraightEdgeRecord>();
    if (!VXIsZero(delta.x) && !VXIsZero(delta.y)) {
        edge->GeneralLineFlag = 1;
        edge->DeltaX = delta.x;
        edge->DeltaY = delta.y;
    } else if (!VXIsZero(delta.y)) {
        edge->VertLineFlag = 1;
        edge->DeltaY = delta.y;
    } else {
        edge->DeltaX = delta.x;
    }
    state.SetPen(to);
    state.AddToSum(delta);
    return edge;
}

std::unique_ptr<VXFlintCurvedEdgeRecord> VXMakeCurvedEdge(const VXPathState& state, VXPathPoint controlDelta,
                                                          VXPathPoint anchorDelta, VXPathPoint to) {
    auto edge = std::make_unique<VXFlintCurvedEdgeRecord>();
    edge->ControlDeltaX = controlDelta.x;
    edge->ControlDeltaY = controlDelta.y;
    edge->AnchorDeltaX = anchorDelta.x;
    edge->AnchorDeltaY = anchorDelta.y;
    state.SetPen(to);
    state.AddToSum(controlDelta);
    state.AddToSum(anchorDelta);
    return edge;
}

std::unique_ptr<VXFlintShapeStyleChangeRecord> VXMakeMoveTo(const VXPathState& state, VXPathPoint to) {
    auto move = std::make_unique<VXFlintShapeStyleChangeRecord>(1, 2, short{0}, short{0}, short{1});
    move->StateMoveTo = 1;
    move->MoveDeltaX = to.x;
    move->MoveDeltaY = to.y;
    state.SetPen(to);
    state.sumX = state.penX;
    state.sumY = state.penY;
    return move;
}

void VXAddLine(VXFlintShapeRecords& records, VXSwfStrokePattern& stroke, const VXPathState& state,
               VXPathPoint from, VXPathPoint to, VXPathPoint firstDash) {
    const VXPathPoint delta = to - from;
    // Kept: the length is rounded to single precision, before the root and after it.
    const float square = static_cast<float>(delta.x * delta.x + delta.y * delta.y);
    const float length = std::sqrt(square);
    VXPathPoint previous = firstDash;
    const bool isCut = VXDashWalk::Walk(stroke, length, [&](VXReal t, bool isDrawn, bool isRest) {
        // Counted from both ends of the edge and not from the pen, so that roundings do not add up.
        const VXPathPoint end = (1.0 - t) * from + t * to;
        if (isDrawn) {
            records.AddShapeRecord(
                VXFlintShapeRecord(VXMakeStraightEdge(state, isRest ? from : previous, end)));
        } else {
            records.AddShapeRecord(VXFlintShapeRecord(VXMakeMoveTo(state, end)));
        }
        previous = end;
    });
    if (!isCut) records.AddShapeRecord(VXFlintShapeRecord(VXMakeStraightEdge(state, from, to)));
}

bool VXDashWalk::RepairPlace(VXSwfStrokePattern& stroke) {
    const bool isIndexGood =
        stroke.CurIndex >= 0 && static_cast<std::size_t>(stroke.CurIndex) < stroke.Pattern.size();
    const bool isOffsetGood = std::isfinite(stroke.Offset) && stroke.Offset >= -kLongest;
    if (!isIndexGood) stroke.CurIndex = 0;
    if (!isOffsetGood) stroke.Offset = 0.0;
    return isIndexGood && isOffsetGood;
}
