#include <algorithm>
#include <bit>
#include <cmath>
#include <memory>
#include <utility>

#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintShape.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"
#include "graphics/VXTwips.h"

namespace {

/// Bits of whole units.
unsigned int Magnitude(VXReal delta) { return VXTruncateToUnsigned(std::fabs(delta)); }

/// With a bit for the sign.
unsigned int WidthOf(unsigned int magnitude) {
    return static_cast<unsigned int>(std::bit_width(magnitude)) + 1;
}

constexpr unsigned int kLeastWidth = 2;

/// Appends a record whose class is known, so that nothing has to look for it.
template <typename Record, typename... Arguments>
Record& Append(VXFlintShapeRecords& list, unsigned int kind, Arguments... arguments) {
    auto made = std::make_unique<Record>(arguments...);
    Record& record = *made;
    VXFlintShapeRecord& place = list.Records.Add(std::make_unique<VXFlintShapeRecord>());
    place.Record = made.release();
    place.Kind = kind;
    return record;
}

}  // namespace

void VXFlintShape::StoreWidth(unsigned int width) {
    NumFillBits = width;
    NumLineBits = width;
}

void VXFlintShape::AddChangeToGlyphShape(float x, float y, bool selectStyle) {
    auto& change = Append<VXFlintShapeStyleChangeRecord>(ShapeRecords, VXFlintShapeRecord::kStyleChange,
                                                         ShapeRecords.NumFillBits, ShapeRecords.NumLineBits,
                                                         short{0}, short{0}, short{0});
    change.StateMoveTo = 1;
    change.MoveDeltaX = x;
    change.MoveDeltaY = y;
    change.MoveBits = x == 0.0f ? 0 : WidthOf(Magnitude(x));
    change.StateFillStyle1 = selectStyle ? 1 : 0;
    change.StateLineStyle = selectStyle ? 1 : 0;
    change.FillStyle1 = 1;
    StoreWidth(change.MoveBits);
}

void VXFlintShape::AddLineToGlyphShape(float x1, float y1, float x2, float y2) {
    if (x1 == x2 && y1 == y2) return;
    const VXReal dx = static_cast<VXReal>(x2) - x1;
    const VXReal dy = static_cast<VXReal>(y2) - y1;
    auto& edge = Append<VXFlintStraightEdgeRecord>(ShapeRecords, VXFlintShapeRecord::kStraightEdge);
    if (dx == 0.0) {
        edge.VertLineFlag = 1;
        edge.DeltaY = dy;
    } else if (dy == 0.0) {
        edge.DeltaX = dx;
    } else {
        edge.GeneralLineFlag = 1;
        edge.DeltaX = dx;
        edge.DeltaY = dy;
    }
    // Kept: the height alone counts. A dump finds the width from both.
    edge.NumBits = std::max(WidthOf(Magnitude(dy)), kLeastWidth);
    StoreWidth(edge.NumBits);
}

void VXFlintShape::AddCurveToGlyphShape(float x1, float y1, float cx, float cy, float x2, float y2) {
    auto& edge = Append<VXFlintCurvedEdgeRecord>(ShapeRecords, VXFlintShapeRecord::kCurvedEdge);
    edge.ControlDeltaX = static_cast<VXReal>(cx) - x1;
    edge.ControlDeltaY = static_cast<VXReal>(cy) - y1;
    edge.AnchorDeltaX = static_cast<VXReal>(x2) - cx;
    edge.AnchorDeltaY = static_cast<VXReal>(y2) - cy;
    // OR-ing the magnitudes gives the widest.
    edge.NumBits = std::max(WidthOf(Magnitude(edge.ControlDeltaX) | Magnitude(edge.ControlDeltaY) |
                                    Magnitude(edge.AnchorDeltaX) | Magnitude(edge.AnchorDeltaY)),
                            kLeastWidth);
    StoreWidth(edge.NumBits);
}

void VXFlintShape::AddEndShapeRecord() {
    Append<VXFlintShapeEndRecord>(ShapeRecords, VXFlintShapeRecord::kEnd);
}
