#pragma once

#include <vector>

#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// How a stroke is drawn. Each style but the solid one is a pattern of lengths in pixels, drawn and left out
/// by turns.
enum VXStrokeStyleEnum : int {
    kVXStrokeSolid = 0,
    kVXStrokeDash = 1,        ///< 21, 7
    kVXStrokeDot = 2,         ///< 7, 7
    kVXStrokeDashDot = 3,     ///< 21, 7, 7, 7
    kVXStrokeDashDotDot = 4,  ///< 21, 7, 7, 7, 7, 7
};

/// The pattern that cuts a path into dashes while it is drawn, and how far along it the pen is. The format
/// knows no dashes: they are written as edges and moves, and so the place in the pattern is carried from edge
/// to edge of a path.
class VXSWF_API VXSwfStrokePattern {
public:
    VXSwfStrokePattern() = default;
    VXSwfStrokePattern(const VXSwfStrokePattern&) = default;
    VXSwfStrokePattern(VXSwfStrokePattern&&) noexcept = default;
    VXSwfStrokePattern& operator=(const VXSwfStrokePattern&) = default;
    VXSwfStrokePattern& operator=(VXSwfStrokePattern&&) noexcept = default;
    virtual ~VXSwfStrokePattern();

    /// Takes the pattern of the style and starts it anew. A style without a name above is kept and has no
    /// pattern.
    void SetStrokeStyleEnum(VXStrokeStyleEnum style);
    VXStrokeStyleEnum GetStrokeStyleEnum() const { return Style; }
    /// Pixels; the sum of the pattern.
    VXReal GetLength() const { return Length; }
    std::vector<VXReal> GetPattern() const { return Pattern; }

    /// What remains of the current element, in pixels.
    VXReal GetOffset() const { return Offset; }
    void SetOffset(VXReal offset) { Offset = offset; }
    /// The current element: an even one is drawn, an odd one left out.
    int GetCurIndex() const { return CurIndex; }
    void SetCurIndex(int index) { CurIndex = index; }
    /// Whether the path is a stroke at all. Nothing is cut when this is 0.
    short GetHasStroke() const { return HasStroke; }
    void SetHasStroke(short hasStroke) { HasStroke = hasStroke; }
    /// Back to the start of the pattern.
    void Reset();

private:
    friend class VXDashWalk;

    VXStrokeStyleEnum Style = kVXStrokeSolid;
    VXReal Length = 0.0;
    VXReal Offset = 0.0;
    std::vector<VXReal> Pattern;
    short HasStroke = 1;
    int CurIndex = 0;
};
