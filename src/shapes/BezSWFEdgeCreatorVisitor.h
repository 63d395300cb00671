#pragma once

#include "graphics/VXFlintShape.h"
#include "platform/VXExport.h"
#include "shapes/BezierLib2.h"

namespace BezierLib2 {

/// Appends the pieces of a reduced curve to the outline of a glyph, truncated to whole units of its grid.
/// Pieces that truncate to no length add nothing.
class VXSWF_API BezSWFEdgeCreatorVisitor : public BezShapeVisitor {
public:
    /// Takes the pieces over; borrows the outline and the two sums, to which each piece adds the whole units
    /// that it covers.
    BezSWFEdgeCreatorVisitor(BezShapes shapes, VXFlintShape* target, int* sumX, int* sumY);
    ~BezSWFEdgeCreatorVisitor() override;

    void VisitCurve(BezCurve& curve) override;
    void VisitLine(BezLine& line) override;

    /// Visits every piece in order.
    void VisitShapes();

    BezShapes Shapes;
    VXFlintShape* Target;
    int* SumX;
    int* SumY;
};

}  // namespace BezierLib2
