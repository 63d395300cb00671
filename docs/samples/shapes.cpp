// Shapes: whole ones in one call, drawn ones, and the ways to fill them.
#include <cmath>

#include "expect.h"

namespace {

void AddWholeShapes(VXMovieBuilder& builder) {
    const VXFlintRGB red(0xC4, 0x4E, 0x3A, 1, 255);
    auto& card = builder.Define<TAG_DEFINESHAPE3>();
    card.CreateRoundedRectangle(0, 0, 80, 60, red, 14);  // left, top, right, bottom, colour, radius
    builder.Place(card, 20.0, 20.0, "card");
}

void AddGradient(VXMovieBuilder& builder) {
    VXFlintFillStyle fill;
    fill.FillStyleType = kVXFillLinearGradient;
    // The gradient lies on a square of 1638.4 pixels about the origin. A scale of 1.0 is 65536.
    fill.GradientMatrix.HasScale = 1;
    fill.GradientMatrix.ScaleX = fill.GradientMatrix.ScaleY = static_cast<int>(80 / 1638.4 * 65536);
    fill.GradientMatrix.Translate(40.0, 40.0);
    fill.Gradient.GradientRecords.resize(2);
    fill.Gradient.NumGradients = 2;  // counts stand beside their sequences; keep the two equal
    fill.Gradient.GradientRecords[0].Color = VXFlintRGB(0xF2, 0xB1, 0x34, 1, 255);
    fill.Gradient.GradientRecords[1].Ratio = 255;
    fill.Gradient.GradientRecords[1].Color = VXFlintRGB(0x1D, 0x35, 0x57, 1, 255);
    fill.SetAlpha(1);

    auto& square = builder.Define<TAG_DEFINESHAPE3>();
    square.CreateRectangleWithFillStyle(0, 0, 80, 80, fill);
    builder.Place(square, 120.0, 20.0);
}

void AddLeaf(VXMovieBuilder& builder) {
    VXFlintFillStyle green;  // solid unless told otherwise
    green.Color = VXFlintRGB(0x8A, 0xB1, 0x7D, 1, 255);
    const VXFlintRGB stroke(0x38, 0x6A, 0x20, 1, 255);

    auto& leaf = builder.Define<TAG_DEFINESHAPE4>();
    leaf.SetFillStyle(green);
    leaf.SetLineStyle(stroke, 2, 0, kVXStrokeSolid, 1, kVXJoinRound);
    leaf.StartPath(0, 40, 1);                             // selects the line
    leaf.StartPath(0, 40, 0);                             // selects the fill, and the line stays
    leaf.AddCurvedEdge(0, 40, 50, -20, 100, 40);          // quadratic: from, control, to
    leaf.AddCurvedEdge(100, 40, 80, 80, 60, 90, 50, 90);  // cubic: from, two controls, to
    leaf.AddStraightEdge(50, 90, 0, 40);
    leaf.EndPath();  // closes it
    leaf.EndShape();
    leaf.SetBounds(VXRect{0, 10, 100, 90}, 1);  // of the edges; the stroke reaches a pixel further
    builder.Place(leaf, 220.0, 20.0);
}

/// Whether every edge has both the fill and the line, and the edges lead from the last move back to it.
bool IsOutlinedOnce(const VXFlintShapeRecords& outline) {
    VXReal x = 0.0, y = 0.0;  // from the last move
    unsigned int fill = 0, line = 0;
    bool hasBoth = true;
    for (const VXFlintShapeRecord* record : outline.Records) {
        if (const auto* change = dynamic_cast<VXFlintShapeStyleChangeRecord*>(record->Record)) {
            if (change->StateFillStyle0 != 0) fill = change->FillStyle0;
            if (change->StateLineStyle != 0) line = change->LineStyle;
            x = y = 0.0;
        } else if (const auto* edge = dynamic_cast<VXFlintStraightEdgeRecord*>(record->Record)) {
            hasBoth &= fill == 1 && line == 1;
            x += edge->DeltaX;
            y += edge->DeltaY;
        } else if (const auto* curve = dynamic_cast<VXFlintCurvedEdgeRecord*>(record->Record)) {
            hasBoth &= fill == 1 && line == 1;
            x += curve->ControlDeltaX + curve->AnchorDeltaX;
            y += curve->ControlDeltaY + curve->AnchorDeltaY;
        }
    }
    return hasBoth && fill == 1 && std::abs(x) < 0.01 && std::abs(y) < 0.01;
}

}  // namespace

int main() {
    VXFlintFile movie;
    VXMovieBuilder builder(movie, 320, 240);
    AddWholeShapes(builder);
    AddGradient(builder);
    AddLeaf(builder);

    VXFlintFile loaded;
    SaveAndLoad(builder, "shapes.swf", loaded);
    const auto* square = dynamic_cast<VXSwfDefineShapeTag*>(loaded.FindTagByID(2));
    Expect(square != nullptr && square->ShapeWithStyle.FillStyles.FillStyles.size() == 1 &&
               square->ShapeWithStyle.FillStyles.FillStyles[0].Gradient.GradientRecords.size() == 2,
           "the gradient has two stops");
    const auto* leaf = dynamic_cast<VXSwfDefineShapeTag*>(loaded.FindTagByID(3));
    Expect(leaf != nullptr && IsOutlinedOnce(leaf->ShapeWithStyle.ShapeRecords),
           "fill and line share the edges");
    return 0;
}
