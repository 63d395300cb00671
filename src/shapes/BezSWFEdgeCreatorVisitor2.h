#pragma once

#include "graphics/VXFlintShapeWithStyle.h"
#include "platform/VXExport.h"
#include "shapes/BezierLib2.h"
#include "shapes/VXSwfStrokePattern.h"

namespace BezierLib2 {

/// Appends the pieces of a reduced curve to the outline of a shape, cut into dashes where the stroke has a
/// pattern.
///
/// The first piece starts at the pen, which differs from the start of the curve by rounding. Pieces shorter
/// than 1e-5 pixels add nothing to a dashed path.
class VXSWF_API BezSWFEdgeCreatorVisitor2 : public BezShapeVisitor {
public:
    /// Takes the pieces over. The rest is borrowed: the outline, the stroke, and the pen and the sum of the
    /// path in twips, which are kept up to date.
    BezSWFEdgeCreatorVisitor2(BezShapes shapes, VXFlintShapeWithStyle* target, VXSwfStrokePattern* stroke,
                              int* penX, int* penY, int* sumX, int* sumY);
    ~BezSWFEdgeCreatorVisitor2() override;

    /// Kept: dashes are measured on the chord, and stretch with the parameter of the curve. Where the
    /// tangents of both ends of a dash do not meet, its control point is the start of the whole piece.
    void VisitCurve(BezCurve& curve) override;
    /// Kept: when nothing is left of the element before, the first dash of a line runs back from its end.
    void VisitLine(BezLine& line) override;

    /// Visits every piece in order.
    void VisitShapes();

    BezShapes Shapes;
    VXFlintShapeWithStyle* Target;
    VXSwfStrokePattern* Stroke;
    int* PenX;
    int* PenY;
    int* SumX;
    int* SumY;
    unsigned int Index = 0;  ///< of the piece that is visited
};

}  // namespace BezierLib2
