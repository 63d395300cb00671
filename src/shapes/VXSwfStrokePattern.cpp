#include "shapes/VXSwfStrokePattern.h"

#include <numeric>

namespace {

constexpr VXReal kDash = 21.0;
constexpr VXReal kDot = 7.0;
constexpr VXReal kGap = 7.0;

std::vector<VXReal> PatternOf(VXStrokeStyleEnum style) {
    switch (style) {
        case kVXStrokeDash:
            return {kDash, kGap};
        case kVXStrokeDot:
            return {kDot, kGap};
        case kVXStrokeDashDot:
            return {kDash, kGap, kDot, kGap};
        case kVXStrokeDashDotDot:
            return {kDash, kGap, kDot, kGap, kDot, kGap};
        default:
            return {};
    }
}

}  // namespace

VXSwfStrokePattern::~VXSwfStrokePattern() = default;

void VXSwfStrokePattern::SetStrokeStyleEnum(VXStrokeStyleEnum style) {
    Style = style;
    Pattern = PatternOf(style);
    Length = std::accumulate(Pattern.begin(), Pattern.end(), 0.0);
    Reset();
}

void VXSwfStrokePattern::Reset() {
    Offset = 0.0;
    CurIndex = 0;
}
