#include "DemoStage.h"

namespace {

using Shape = VXSwfDefineShapeTag;

constexpr auto kShape = VXSwfTagFactory::TAG_DEFINESHAPE3;
constexpr auto kStrokedShape = VXSwfTagFactory::TAG_DEFINESHAPE4;

VXFlintRGB Opaque(unsigned char red, unsigned char green, unsigned char blue) {
    return VXFlintRGB(red, green, blue, 1, 255);
}

void AddPrimitives(DemoStage& stage) {
    Shape& rectangle = stage.Define<Shape>(kShape);
    rectangle.CreateRectangle(0, 0, 80, 60, Opaque(0xC4, 0x4E, 0x3A));
    // Three pixels away, to the lower right; the placement takes the filter over.
    auto* shadow = new VXFlintFilterShadow(VXColor(0x00202020), 4, 4, 45, 3, 255, false, false, true, 1);
    stage.Place(rectangle, 20, 20, {shadow});

    Shape& rounded = stage.Define<Shape>(kShape);
    rounded.CreateRoundedRectangle(0, 0, 80, 60, Opaque(0x3A, 0x7C, 0xA5), 14);
    stage.Place(rounded, 120, 20);

    Shape& triangle = stage.Define<Shape>(kShape);
    triangle.CreateTriangle(0, 60, 40, 0, 80, 60, Opaque(0x6A, 0x99, 0x4E));
    stage.Place(triangle, 220, 20);

    Shape& line = stage.Define<Shape>(kShape);
    line.CreateStraightLine(0, 0, 80, 60, Opaque(0x33, 0x33, 0x33), 3);
    stage.Place(line, 320, 20);
}

/// A gradient of type 16 or 18 over a square of `size` pixels at the origin, from amber to blue.
VXFlintFillStyle GradientFill(unsigned char type, int size) {
    VXFlintFillStyle fill;
    fill.FillStyleType = type;
    // A gradient lies on a square of 32768 twips about the origin.
    fill.GradientMatrix.Translate(size / 2.0, size / 2.0);
    fill.GradientMatrix.HasScale = 1;
    fill.GradientMatrix.ScaleX = fill.GradientMatrix.ScaleY = size * 40;
    fill.Gradient.NumGradients = 2;
    fill.Gradient.GradientRecords.resize(2);
    fill.Gradient.GradientRecords[0].Color = Opaque(0xF2, 0xB1, 0x34);
    fill.Gradient.GradientRecords[1].Ratio = 255;
    fill.Gradient.GradientRecords[1].Color = Opaque(0x1D, 0x35, 0x57);
    fill.SetAlpha(1);
    return fill;
}

void AddGradients(DemoStage& stage) {
    constexpr unsigned char kLinear = 16;
    constexpr unsigned char kRadial = 18;
    double x = 420;
    for (const unsigned char type : {kLinear, kRadial}) {
        Shape& square = stage.Define<Shape>(kShape);
        square.CreateRectangleWithFillStyle(0, 0, 80, 80, GradientFill(type, 80));
        stage.Place(square, x, 20);
        x += 100;
    }
}

/// A straight line with a curve below it, in each of the five stroke styles.
void AddStrokes(DemoStage& stage) {
    double y = 120;
    for (int style = kVXStrokeSolid; style <= kVXStrokeDashDotDot; ++style) {
        Shape& stroke = stage.Define<Shape>(kStrokedShape);
        stroke.SetLineStyle(Opaque(0x26, 0x46, 0x53), 2, 0, static_cast<VXStrokeStyleEnum>(style), 0,
                            kVXJoinRound);
        stroke.StartPath(0, 0, 1);
        stroke.AddStraightEdge(0, 0, 270, 0);
        stroke.StartPath(0, 12, 1);
        stroke.AddCurvedEdge(0, 12, 90, 42, 180, -18, 270, 12);
        stroke.EndShape();
        stroke.SetBounds(VXRect{0, 0, 270, 30}, 1);
        stage.Place(stroke, 20, y);
        y += 44;
    }
}

/// A leaf of two quadratic curves, with a closed outline, and a drop of four cubic ones.
void AddFilledCurves(DemoStage& stage) {
    VXFlintFillStyle green;
    green.Color = Opaque(0x8A, 0xB1, 0x7D);
    green.SetAlpha(1);
    Shape& leaf = stage.Define<Shape>(kStrokedShape);
    leaf.SetFillStyle(green);
    leaf.SetLineStyle(Opaque(0x38, 0x6A, 0x20), 2, 0, kVXStrokeSolid, 1, kVXJoinMiter);
    for (const short isStroke : {short{0}, short{1}}) {
        leaf.StartPath(0, 40, isStroke);
        leaf.AddCurvedEdge(0, 40, 50, -20, 100, 40);
        leaf.AddCurvedEdge(100, 40, 50, 100, 0, 40);
        leaf.EndPath();
    }
    leaf.EndShape();
    leaf.SetBounds(VXRect{0, 10, 100, 70}, 1);
    stage.Place(leaf, 20, 340);

    VXFlintFillStyle blue;
    blue.Color = Opaque(0x45, 0x7B, 0x9D);
    blue.SetAlpha(1);
    Shape& drop = stage.Define<Shape>(kStrokedShape);
    drop.SetFillStyle(blue);
    drop.StartPath(40, 0, 0);
    drop.AddCurvedEdge(40, 0, 45, 25, 80, 30, 80, 60);
    drop.AddCurvedEdge(80, 60, 80, 82, 62, 100, 40, 100);
    drop.AddCurvedEdge(40, 100, 18, 100, 0, 82, 0, 60);
    drop.AddCurvedEdge(0, 60, 0, 30, 35, 25, 40, 0);
    drop.EndPath();
    drop.EndShape();
    drop.SetBounds(VXRect{0, 0, 80, 100}, 0);
    stage.Place(drop, 150, 340);
}

}  // namespace

void AddDemoShapes(DemoStage& stage) {
    AddPrimitives(stage);
    AddGradients(stage);
    AddStrokes(stage);
    AddFilledCurves(stage);
}
