// Shapes: whole ones in one call, drawn ones, and the ways to fill them.
#include "kit.h"

namespace {

void AddWholeShapes(VXFlintFile& movie, Ids& ids) {
    const VXFlintRGB red(0xC4, 0x4E, 0x3A, 1, 255);
    auto& card = Define<VXSwfDefineShapeTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESHAPE3);
    card.CreateRoundedRectangle(0, 0, 80, 60, red, 14);  // left, top, right, bottom, colour, radius
    movie.PlaceObject(&card, -1, VXString("card"), 20.0, 20.0, 0, {});
}

void AddGradient(VXFlintFile& movie, Ids& ids) {
    VXFlintFillStyle fill;
    fill.FillStyleType = 16;  // linear; 18 is radial
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

    auto& square = Define<VXSwfDefineShapeTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESHAPE3);
    square.CreateRectangleWithFillStyle(0, 0, 80, 80, fill);
    movie.PlaceObject(&square, -1, VXString(), 120.0, 20.0, 0, {});
}

void AddLeaf(VXFlintFile& movie, Ids& ids) {
    VXFlintFillStyle green;  // solid unless told otherwise
    green.Color = VXFlintRGB(0x8A, 0xB1, 0x7D, 1, 255);
    const VXFlintRGB stroke(0x38, 0x6A, 0x20, 1, 255);

    auto& leaf = Define<VXSwfDefineShapeTag>(movie, ids, VXSwfTagFactory::TAG_DEFINESHAPE4);
    leaf.SetFillStyle(green);
    leaf.SetLineStyle(stroke, 2, 0, kVXStrokeDash, 1, kVXJoinRound);
    for (const short isStroke : {short{0}, short{1}}) {  // first what is filled, then its outline
        leaf.StartPath(0, 40, isStroke);
        leaf.AddCurvedEdge(0, 40, 50, -20, 100, 40);          // quadratic: from, control, to
        leaf.AddCurvedEdge(100, 40, 80, 80, 60, 90, 50, 90);  // cubic: from, two controls, to
        leaf.AddStraightEdge(50, 90, 0, 40);
        leaf.EndPath();  // closes it
    }
    leaf.EndShape();
    leaf.SetBounds(VXRect{0, 10, 100, 90}, 1);  // of the edges; the stroke reaches a pixel further
    movie.PlaceObject(&leaf, -1, VXString(), 220.0, 20.0, 0, {});
}

}  // namespace

int main() {
    VXFlintFile movie;
    Ids ids;
    Begin(movie);
    AddWholeShapes(movie, ids);
    AddGradient(movie, ids);
    AddLeaf(movie, ids);

    VXFlintFile loaded;
    Finish(movie, "shapes.swf", loaded);
    const auto* square = dynamic_cast<VXSwfDefineShapeTag*>(loaded.FindTagByID(2));
    Expect(square != nullptr && square->ShapeWithStyle.FillStyles.FillStyles.size() == 1 &&
               square->ShapeWithStyle.FillStyles.FillStyles[0].Gradient.GradientRecords.size() == 2,
           "the gradient has two stops");
    const auto* leaf = dynamic_cast<VXSwfDefineShapeTag*>(loaded.FindTagByID(3));
    Expect(leaf != nullptr && leaf->ShapeWithStyle.ShapeRecords.Records.size() > 12, "the outline is dashed");
    return 0;
}
