#include <cmath>

#include "graphics/VXFlintShape.h"
#include "graphics/VXTwips.h"
#include "shapes/BezSWFEdgeCreatorVisitor.h"
#include "shapes/BezierLib2.h"
#include "shapes/VXPathWriter_p.h"

// Reduces cubic curves, and so stands beside what does that.

namespace {

/// Of squared distances in units of the grid.
constexpr double kTolerance = 0.01;
constexpr float kClosing = 0.001f;
/// Whole units up to here are exact in single precision.
constexpr float kFarthest = 16777216.0f;

struct WholePoint {
    int x = 0;
    int y = 0;
};

struct RealPoint {
    float x = 0.0f;
    float y = 0.0f;

    WholePoint Truncated() const { return {VXTruncate(x), VXTruncate(y)}; }
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
    WholePoint start;
    WholePoint current;
    WholePoint pen;  // where the records lead
    bool hasPoint = false;
    BezierLib2::BezSWFEdgeCreatorVisitor visitor({}, this, &pen.x, &pen.y);
    const auto read = [&points]() -> RealPoint {
        const RealPoint point = {points[0], points[1]};
        points += 2;
        return point;
    };
    const auto addLine = [this](WholePoint from, WholePoint to) {
        AddLineToGlyphShape(static_cast<float>(from.x), static_cast<float>(from.y), static_cast<float>(to.x),
                            static_cast<float>(to.y));
    };
    // An entry that cannot be followed is passed over.
    for (unsigned int entry = 0; entry < count; ++entry) {
        switch (kinds[entry]) {
            case kKVMMove: {
                const RealPoint to = read();
                if (!IsNear(to)) break;
                hasPoint = true;
                last = realStart = to;
                start = pen = current = last.Truncated();
                AddChangeToGlyphShape(static_cast<float>(current.x), static_cast<float>(current.y), false);
                break;
            }
            case kKVMLine: {
                const RealPoint to = read();
                if (!IsNear(to)) break;
                hasPoint = true;
                last = to;
                WholePoint target = last.Truncated();
                const bool closesNext = entry + 1 < count && kinds[entry + 1] == kKVMClose;
                if (closesNext && IsClosing(realStart, last)) {
                    // Makes up for what truncation has lost on the way.
                    target.x = VXWrappingSum(current.x, VXWrappingDifference(start.x, pen.x));
                    target.y = VXWrappingSum(current.y, VXWrappingDifference(start.y, pen.y));
                }
                pen.x = VXWrappingSum(pen.x, VXWrappingDifference(target.x, current.x));
                pen.y = VXWrappingSum(pen.y, VXWrappingDifference(target.y, current.y));
                addLine(current, target);
                current = target;
                break;
            }
            case kKVMCurve: {
                if (count - entry < 3) return;  // the path ends within the curve
                const RealPoint control1 = read();
                const RealPoint control2 = read();
                const RealPoint end = read();
                entry += 2;
                if (!hasPoint || !IsNear(control1) || !IsNear(control2) || !IsNear(end)) break;
                const double cubic[] = {last.x,     last.y,     control1.x, control1.y,
                                        control2.x, control2.y, end.x,      end.y};
                BezierLib2::VisitCubic(cubic, kTolerance, visitor);
                last = end;
                current = end.Truncated();
                break;
            }
            case kKVMClose: {
                const RealPoint to = read();
                if (!IsNear(to)) break;
                hasPoint = true;
                last = to;
                const WholePoint from = current;
                current = last.Truncated();
                if (pen.x != start.x || pen.y != start.y) addLine(from, start);
                break;
            }
            default:
                break;
        }
    }
}
