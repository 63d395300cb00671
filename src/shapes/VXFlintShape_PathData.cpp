#include <cmath>

#include "graphics/VXFlintShape.h"
#include "shapes/BezSWFEdgeCreatorVisitor.h"
#include "shapes/BezierLib2.h"
#include "shapes/VXPathWalk_p.h"
#include "shapes/VXPathWriter_p.h"

// Reduces cubic curves, and so stands beside what does that.

namespace {

constexpr float kClosing = 0.001f;
/// Whole units up to here are exact in single precision.
constexpr float kFarthest = 16777216.0f;

struct RealPoint {
    float x = 0.0f;
    float y = 0.0f;

    VXWholePoint Truncated() const { return VXWholePoint::Of(x, y); }
};

/// False for what is not a number too.
bool IsNear(RealPoint point) { return std::fabs(point.x) <= kFarthest && std::fabs(point.y) <= kFarthest; }

bool IsClosing(RealPoint start, RealPoint end) {
    return std::fabs(start.x - end.x) < kClosing && std::fabs(start.y - end.y) < kClosing;
}

}  // namespace

void VXFlintShape::CreateShapeFromPathData(unsigned int count, float* points, const KVMPointType* kinds) {
    if (points == nullptr || kinds == nullptr) return;
    RealPoint realStart;
    RealPoint last;
    VXWholePoint start;
    VXWholePoint current;
    VXWholePoint pen;  // where the records lead
    bool hasPoint = false;
    BezierLib2::BezSWFEdgeCreatorVisitor visitor({}, this, &pen.x, &pen.y);
    const auto addLine = [this](VXWholePoint from, VXWholePoint to) {
        AddLineToGlyphShape(from.FloatX(), from.FloatY(), to.FloatX(), to.FloatY());
    };
    // A step that cannot be followed is passed over.
    VXWalkPath(count, points, kinds, [&](unsigned int entry, const float* floats, unsigned int numPoints) {
        const auto at = [floats](unsigned int i) -> RealPoint { return {floats[i * 2], floats[i * 2 + 1]}; };
        for (unsigned int i = 0; i < numPoints; ++i) {
            if (!IsNear(at(i))) return;
        }
        const KVMPointType kind = kinds[entry];
        if (kind == kKVMCurve && !hasPoint) return;
        hasPoint = true;
        const RealPoint from = last;
        const VXWholePoint wholeFrom = current;
        last = at(numPoints - 1);
        current = last.Truncated();
        switch (kind) {
            case kKVMMove:
                realStart = last;
                start = pen = current;
                AddChangeToGlyphShape(current.FloatX(), current.FloatY(), false);
                break;
            case kKVMLine: {
                const bool closesNext = entry + 1 < count && kinds[entry + 1] == kKVMClose;
                if (closesNext && IsClosing(realStart, last)) {
                    // Makes up for what truncation has lost on the way.
                    current = wholeFrom + (start - pen);
                }
                pen = pen + (current - wholeFrom);
                addLine(wholeFrom, current);
                break;
            }
            case kKVMCurve: {
                const double cubic[] = {from.x, from.y, at(0).x, at(0).y, at(1).x, at(1).y, last.x, last.y};
                BezierLib2::VisitCubic(cubic, kVXCurveTolerance, visitor);
                break;
            }
            default:
                if (pen != start) addLine(wholeFrom, start);
                break;
        }
    });
}
