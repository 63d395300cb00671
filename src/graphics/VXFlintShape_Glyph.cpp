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

/// Whole units, with a bit for the sign.
unsigned int WidthOf(VXReal delta) {
    return static_cast<unsigned int>(std::bit_width(VXTruncateToUnsigned(std::fabs(delta)))) + 1;
}

constexpr unsigned int kLeastWidth = 2;

}  // namespace

void VXFlintShape::StoreWidth(unsigned int width) {
    NumFillBits = width;
    NumLineBits = width;
}

void VXFlintShape::AddChangeToGlyphShape(float x, float y, bool selectStyle) {
    auto change = std::make_unique<VXFlintShapeStyleChangeRecord>(
        ShapeRecords.NumFillBits, ShapeRecords.NumLineBits, short{0}, short{0}, short{0});
    change->StateMoveTo = 1;
    change->MoveDeltaX = x;
    change->MoveDeltaY = y;
    change->MoveBits = x == 0.0f ? 0 : WidthOf(x);
    change->StateFillStyle1 = selectStyle ? 1 : 0;
    change->StateLineStyle = selectStyle ? 1 : 0;
    change->FillStyle1 = 1;
    StoreWidth(change->MoveBits);
    ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::move(change)));
}

void VXFlintShape::AddLineToGlyphShape(float x1, float y1, float x2, float y2) {
    if (x1 == x2 && y1 == y2) return;
    const VXReal dx = static_cast<VXReal>(x2) - x1;
    const VXReal dy = static_cast<VXReal>(y2) - y1;
    auto edge = std::make_unique<VXFlintStraightEdgeRecord>();
    if (dx == 0.0) {
        edge->VertLineFlag = 1;
        edge->DeltaY = dy;
    } else if (dy == 0.0) {
        edge->DeltaX = dx;
    } else {
        edge->GeneralLineFlag = 1;
        edge->DeltaX = dx;
        edge->DeltaY = dy;
    }
    // Kept: the height alone counts. A dump finds the width from both.
    edge->NumBits = std::max(WidthOf(dy), kLeastWidth);
    StoreWidth(edge->NumBits);
    ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::move(edge)));
}

void VXFlintShape::AddCurveToGlyphShape(float x1, float y1, float cx, float cy, float x2, float y2) {
    auto edge = std::make_unique<VXFlintCurvedEdgeRecord>();
    edge->ControlDeltaX = static_cast<VXReal>(cx) - x1;
    edge->ControlDeltaY = static_cast<VXReal>(cy) - y1;
    edge->AnchorDeltaX = static_cast<VXReal>(x2) - cx;
    edge->AnchorDeltaY = static_cast<VXReal>(y2) - cy;
    edge->NumBits = std::max({WidthOf(edge->ControlDeltaX), WidthOf(edge->ControlDeltaY),
                              WidthOf(edge->AnchorDeltaX), WidthOf(edge->AnchorDeltaY), kLeastWidth});
    StoreWidth(edge->NumBits);
    ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::move(edge)));
}

void VXFlintShape::AddEndShapeRecord() {
    ShapeRecords.AddShapeRecord(VXFlintShapeRecord(std::make_unique<VXFlintShapeEndRecord>()));
}
