#pragma once

#include <cmath>
#include <cstddef>
#include <memory>

#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintShapeRecords.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"
#include "graphics/VXTwips.h"
#include "platform/VXTypes.h"
#include "shapes/VXSwfStrokePattern.h"

/// Sums of twips and of whole units wrap.
inline int VXWrappingSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) + static_cast<unsigned int>(b));
}
inline int VXWrappingDifference(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b));
}

/// A place on the grid of a glyph.
struct VXWholePoint {
    int x = 0;
    int y = 0;

    static VXWholePoint Of(VXReal x, VXReal y) { return {VXTruncate(x), VXTruncate(y)}; }
    float FloatX() const { return static_cast<float>(x); }
    float FloatY() const { return static_cast<float>(y); }

    friend VXWholePoint operator+(VXWholePoint a, VXWholePoint b) {
        return {VXWrappingSum(a.x, b.x), VXWrappingSum(a.y, b.y)};
    }
    friend VXWholePoint operator-(VXWholePoint a, VXWholePoint b) {
        return {VXWrappingDifference(a.x, b.x), VXWrappingDifference(a.y, b.y)};
    }
    friend bool operator==(VXWholePoint, VXWholePoint) = default;
};

/// Of squared distances, in pixels or in units of the grid: how far off a control point of a reduced curve may
/// be. A tenth of a pixel is two twips.
inline constexpr double kVXCurveTolerance = 0.01;

/// Lengths in pixels, and determinants, that are smaller count as 0.
inline constexpr VXReal kVXNegligible = 1e-5;

inline bool VXIsZero(VXReal delta) { return std::fabs(delta) < kVXNegligible; }

/// A place or a distance, in pixels.
struct VXPathPoint {
    VXReal x = 0.0;
    VXReal y = 0.0;

    friend VXPathPoint operator+(VXPathPoint a, VXPathPoint b) { return {a.x + b.x, a.y + b.y}; }
    friend VXPathPoint operator-(VXPathPoint a, VXPathPoint b) { return {a.x - b.x, a.y - b.y}; }
    friend VXPathPoint operator*(VXReal factor, VXPathPoint a) { return {factor * a.x, factor * a.y}; }
};

/// Where the drawing of a path stands, in twips: the pen is the last end point, rounded; the sum is where the
/// rounded deltas lead a reader of the file.
struct VXPathState {
    int& penX;
    int& penY;
    int& sumX;
    int& sumY;

    /// The pen in pixels.
    VXPathPoint Pen() const;
    void SetPen(VXPathPoint point) const;
    /// Rounds the distance by itself.
    void AddToSum(VXPathPoint distance) const;
};

// What makes a record of a path keeps the state of the path.

/// An axis that does not change is left out of the record.
std::unique_ptr<VXFlintStraightEdgeRecord> VXMakeStraightEdge(const VXPathState& state, VXPathPoint from,
                                                              VXPathPoint to);
std::unique_ptr<VXFlintCurvedEdgeRecord> VXMakeCurvedEdge(const VXPathState& state, VXPathPoint controlDelta,
                                                          VXPathPoint anchorDelta, VXPathPoint to);
std::unique_ptr<VXFlintShapeStyleChangeRecord> VXMakeMoveTo(const VXPathState& state, VXPathPoint to);

/// Appends a straight edge, or as many edges and moves as the pattern makes of it. `firstDash` is where the
/// first dash starts when nothing is left of the element before.
void VXAddLine(VXFlintShapeRecords& records, VXSwfStrokePattern& stroke, const VXPathState& state,
               VXPathPoint from, VXPathPoint to, VXPathPoint firstDash);

/// The walk along a pattern. All lengths are in pixels.
class VXDashWalk {
public:
    /// Bounds the number of pieces. A remainder below 0 lengthens the walk as a longer edge would, so it has the
    /// same bound.
    static constexpr VXReal kLongest = 10000000.0;

    static bool IsNeeded(const VXSwfStrokePattern& stroke) {
        return stroke.HasStroke != 0 && !stroke.Pattern.empty();
    }

    /// Cuts an edge of this length: `piece(t, isDrawn, isRest)` is called for each piece with the fraction of
    /// the length at which it ends, and whether it is what the element before had left. Nothing is left of an
    /// edge that is too short.
    ///
    /// False when the edge is to be drawn whole: it needs no walk, it is longer than `kLongest`, or the place in
    /// the pattern is none. An element that does not exist becomes the first, and a remainder that is not
    /// finite or below −`kLongest` becomes 0; the other of the two stays.
    ///
    /// Kept: what remains of an element is stored only when the element runs over the end of the edge. One
    /// that ends with the edge leaves the old remainder to the next.
    template <typename Piece>
    static bool Walk(VXSwfStrokePattern& stroke, VXReal length, Piece&& piece) {
        if (!IsNeeded(stroke) || !std::isfinite(length) || length > kLongest) return false;
        if (length <= kVXNegligible) return true;
        if (!RepairPlace(stroke)) return false;
        const auto count = static_cast<int>(stroke.Pattern.size());
        int index = stroke.CurIndex;
        VXReal rest = stroke.Offset;
        VXReal position = rest;
        bool runsOver = false;
        const auto endPiece = [&](bool isRest) {
            piece(position / length, index % 2 == 0, isRest);
            if (!runsOver && ++index == count) index = 0;
        };
        if (rest > length + kVXNegligible) {
            rest -= length;
            position = length;
            runsOver = true;
        }
        if (position > kVXNegligible) endPiece(true);
        while (length - kVXNegligible > position) {
            position += stroke.Pattern[static_cast<std::size_t>(index)];
            if (position > length + kVXNegligible) {
                rest = position - length;
                position = length;
                runsOver = true;
            }
            endPiece(false);
        }
        stroke.CurIndex = index;
        stroke.Offset = rest;
        return true;
    }

private:
    static bool RepairPlace(VXSwfStrokePattern& stroke);
};
