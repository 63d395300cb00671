#pragma once

#include <cmath>
#include <cstddef>
#include <memory>

#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintShapeRecords.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"
#include "platform/VXTypes.h"
#include "shapes/VXSwfStrokePattern.h"

/// Sums of twips and of whole units wrap.
inline int VXWrappingSum(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) + static_cast<unsigned int>(b));
}
inline int VXWrappingDifference(int a, int b) {
    return static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b));
}

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

/// An axis that changes by less than 1e-5 is left out of the record.
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
    static constexpr VXReal kTolerance = 1e-5;
    static constexpr VXReal kLongest = 10000000.0;

    static bool IsNeeded(const VXSwfStrokePattern& stroke) {
        return stroke.HasStroke != 0 && !stroke.Pattern.empty();
    }

    /// Cuts an edge of this length: `piece(t, isDrawn, isRest)` is called for each piece with the fraction of
    /// the length at which it ends, and whether it is what the element before had left. Nothing is left of an
    /// edge that is too short.
    ///
    /// False when the edge is to be drawn whole: it needs no walk, its length is beyond all measure, or the
    /// place in the pattern makes no sense. Such a place becomes the start.
    ///
    /// Kept: what remains of an element is stored only when the element runs over the end of the edge. One
    /// that ends with the edge leaves the old remainder to the next.
    template <typename Piece>
    static bool Walk(VXSwfStrokePattern& stroke, VXReal length, Piece&& piece) {
        if (!IsNeeded(stroke) || !std::isfinite(length) || length > kLongest) return false;
        if (length <= kTolerance) return true;
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
        if (rest > length + kTolerance) {
            rest -= length;
            position = length;
            runsOver = true;
        }
        if (position > kTolerance) endPiece(true);
        while (length - kTolerance > position) {
            position += stroke.Pattern[static_cast<std::size_t>(index)];
            if (position > length + kTolerance) {
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
