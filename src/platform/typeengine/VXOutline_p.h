#pragma once

#include <ft2build.h>
#include FT_OUTLINE_H

#include <vector>

#include "platform/typeengine/VXTypeEngineAPI.h"

/// The entries of a path buffer, two floats for each kind.
struct VXPathEntries {
    std::vector<float> points;
    std::vector<KVMPointType> kinds;
};

/// A matrix in double precision, in the order of `TYMatrix`.
struct VXTransform {
    double a = 1.0, b = 0.0;
    double c = 0.0, d = 1.0;
    double tx = 0.0, ty = 0.0;

    static VXTransform Of(const TYMatrix& matrix) {
        return {matrix.a, matrix.b, matrix.c, matrix.d, matrix.tx, matrix.ty};
    }
    /// This one first, then `next`.
    VXTransform Then(const VXTransform& next) const;
    bool IsFinite() const;
};

/// The contours of a glyph as its font has them, lines, quadratics and cubics, each closed by a line.
/// Contours without any extent are left out. The inside lies to the right of the way round, seen with y
/// upwards; where the font has it on the left, the contours run backwards here.
class VXOutline {
public:
    VXOutline() = default;
    /// Keeps the room for a glyph that comes later.
    void Clear() {
        m_Points.clear();
        m_Steps.clear();
    }
    /// False when the outline is damaged. Positions keep the units of `outline`.
    bool Load(const FT_Outline& outline);

    /// Around all points, controls included; without extent at 0 when there are none.
    TYBox GetBox(const VXTransform& transform) const;
    /// Appends a move, the lines and curves, and a close for each contour, as floats. Quadratics go out as
    /// cubics, formed so that a reader who looks for the quadratic behind each finds it: see the source. False
    /// when there is nothing to append.
    bool AppendTo(VXPathEntries& path, const VXTransform& transform) const;

private:
    friend class VXOutlineBuilder;

    struct Point {
        double x = 0.0;
        double y = 0.0;
        bool operator==(const Point&) const = default;
    };
    /// The number of points that a step takes, but for the move that begins a contour.
    enum class Step : unsigned char { Move = 0, Line = 1, Quadratic = 2, Cubic = 3 };

    static std::size_t PointsOf(Step step) { return step == Step::Move ? 1 : static_cast<std::size_t>(step); }

    std::vector<Point> m_Points;
    std::vector<Step> m_Steps;
};
