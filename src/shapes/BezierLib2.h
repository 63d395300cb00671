#pragma once

#include <memory>
#include <vector>

#include "memory/VXPool.h"
#include "platform/VXExport.h"

/// Reduces cubic curves to the straight and quadratic edges that the format has.
namespace BezierLib2 {

class BezShapeVisitor;

/// A piece of a reduced curve. All coordinates are in pixels.
class VXSWF_API BezShape : public VXPooled {
public:
    // Virtual operations, in slot order.

    virtual ~BezShape();
    virtual void Accept(BezShapeVisitor& visitor) = 0;

    double StartX = 0.0;
    double StartY = 0.0;
    double EndX = 0.0;
    double EndY = 0.0;
};

class VXSWF_API BezLine : public BezShape {
public:
    ~BezLine() override;
    /// Calls `VisitLine`.
    void Accept(BezShapeVisitor& visitor) override;
};

/// A quadratic curve.
class VXSWF_API BezCurve : public BezShape {
public:
    ~BezCurve() override;
    /// Calls `VisitCurve`.
    void Accept(BezShapeVisitor& visitor) override;

    double ControlX = 0.0;
    double ControlY = 0.0;
};

class VXSWF_API BezShapeVisitor {
public:
    // Virtual operations, in slot order.

    virtual ~BezShapeVisitor();
    virtual void VisitCurve(BezCurve& curve) = 0;
    virtual void VisitLine(BezLine& line) = 0;
};

using BezShapes = std::vector<std::unique_ptr<BezShape>, VXPoolAllocator<std::unique_ptr<BezShape>>>;

/// Has a visitor see the pieces in their order along the curve, each as soon as it is found. `points` has x
/// and y of the start, both control points and the end; `tolerance` is the square of the distance in pixels
/// by which a control point may be off.
///
/// A curve with a coordinate that is not finite or beyond 110,000,000 pixels becomes a line from start to end,
/// or nothing when one of these is not finite. With a tolerance that is not above 0, every curve but a raised
/// quadratic one becomes a line.
VXSWF_API void VisitCubic(const double (&points)[8], double tolerance, BezShapeVisitor& visitor);

/// The same pieces as a list.
VXSWF_API BezShapes ConvertCubicToShapes(const double (&points)[8], double tolerance);

}  // namespace BezierLib2
