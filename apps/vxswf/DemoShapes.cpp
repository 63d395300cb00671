#include "DemoPages.h"

namespace {

using Shape = VXSwfDefineShapeTag;

constexpr int kWidth = DemoStage::kCellWidth;
constexpr int kHeight = DemoStage::kCellHeight;

/// A corner or a curve that leads to a point: a quadratic one has one control point, a cubic one two.
struct Edge {
    int numControls;
    VXReal points[6];  // the controls, then the end
};

/// One closed path.
void AddPath(Shape& shape, VXReal x, VXReal y, short isStroke, const std::vector<Edge>& edges) {
    shape.StartPath(x, y, isStroke);
    for (const auto& [numControls, p] : edges) {
        switch (numControls) {
            case 0:
                shape.AddStraightEdge(x, y, p[0], p[1]);
                break;
            case 1:
                shape.AddCurvedEdge(x, y, p[0], p[1], p[2], p[3]);
                break;
            default:
                shape.AddCurvedEdge(x, y, p[0], p[1], p[2], p[3], p[4], p[5]);
                break;
        }
    }
    shape.EndPath();
}

/// The four primitives, each in another version of the shape tag.
void AddPrimitives(DemoStage& stage) {
    Shape& rectangle = stage.GetBuilder().Define<TAG_DEFINESHAPE>();
    rectangle.CreateRectangle(0, 0, kWidth, kHeight, Rgb(kRed));
    stage.PlaceInCell(rectangle, 0, 0, "Rectangle");

    Shape& rounded = stage.GetBuilder().Define<TAG_DEFINESHAPE2>();
    rounded.CreateRoundedRectangle(0, 0, kWidth, kHeight, Rgb(kBlue), 20);
    stage.PlaceInCell(rounded, 1, 0, "Rounded rectangle");

    Shape& triangle = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    triangle.CreateTriangle(0, kHeight, kWidth / 2, 0, kWidth, kHeight, Rgba(kGreen));
    stage.PlaceInCell(triangle, 2, 0, "Triangle");

    Shape& line = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    line.CreateStraightLine(0, 0, kWidth, kHeight, Rgba(kInk), 3);
    stage.PlaceInCell(line, 3, 0, "Straight line, 3 wide");
}

void AddPaths(DemoStage& stage) {
    Shape& leaf = stage.GetBuilder().Define<TAG_DEFINESHAPE4>();
    leaf.SetFillStyle(SolidFill(0x8AB17D));
    leaf.SetLineStyle(Rgba(0x386A20), 2, 0, kVXStrokeSolid, 1, kVXJoinMiter);
    leaf.StartPath(0, 40, 1);  // selects the line, which the fill leaves as it is
    AddPath(leaf, 0, 40, 0, {{1, {60, -40, 120, 40}}, {1, {60, 120, 0, 40}}});
    leaf.EndShape();
    leaf.SetBounds({0, 0, 120, 80}, 1);
    stage.PlaceInCell(leaf, 0, 1, "Quadratic, outlined");

    Shape& drop = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    drop.SetFillStyle(SolidFill(kBlue));
    AddPath(drop, 60, 0, 0,
            {{2, {65, 20, 95, 24, 95, 48}},
             {2, {95, 66, 79, 80, 60, 80}},
             {2, {41, 80, 25, 66, 25, 48}},
             {2, {25, 24, 55, 20, 60, 0}}});
    drop.EndShape();
    drop.SetBounds({25, 0, 95, 80}, 0);
    stage.PlaceInCell(drop, 1, 1, "Cubic curves");

    Shape& frame = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    frame.SetFillStyle(SolidFill(kAmber));
    AddPath(frame, 0, 0, 0, {{0, {120, 0}}, {0, {120, 80}}, {0, {0, 80}}});
    AddPath(frame, 25, 20, 0, {{0, {25, 60}}, {0, {95, 60}}, {0, {95, 20}}});
    frame.EndShape();
    frame.SetBounds({0, 0, 120, 80}, 0);
    stage.PlaceInCell(frame, 2, 1, "Two paths: a hole");

    // The curve closes with a straight edge by itself.
    Shape& open = stage.GetBuilder().Define<TAG_DEFINESHAPE4>();
    open.SetLineStyle(Rgba(kRed), 4, 0, kVXStrokeSolid, 0, kVXJoinRound);
    AddPath(open, 4, 70, 1, {{2, {30, -60, 60, 160, 116, 10}}});
    open.EndShape();
    open.SetBounds({4, 10, 116, 70}, 2);
    stage.PlaceInCell(open, 3, 1, "Path that was closed");
}

/// One tile, placed in other ways.
void AddMatrices(DemoStage& stage) {
    Shape& tile = stage.GetBuilder().Define<TAG_DEFINESHAPE3>();
    tile.CreateRectangle(-30, -20, 30, 20, Rgba(kNavy));
    stage.PlaceInCell(tile, 0, 2, "As it is", {}, 60, 40);

    struct Turn {
        const char* caption;
        double degrees;
        double scaleX;
        double scaleY;
        int skew;  // 16.16
    };
    const Turn turns[] = {{"Turned by 30 degrees", 30, 1, 1, 0},
                          {"Twice as wide", 0, 2, 1, 0},
                          {"Slanted by a half", 0, 1, 1, 32768}};
    int column = 1;
    for (const auto& [caption, degrees, scaleX, scaleY, skew] : turns) {
        VXSwfPlaceObject2Tag& place = stage.PlaceInCell(tile, column++, 2, caption);
        VXFlintMatrix matrix;
        matrix.ToUnitMatrix();
        if (degrees != 0) matrix.Rotate(degrees);
        matrix.Scale(scaleX, scaleY);
        if (skew != 0) {
            matrix.HasRotate = 1;
            matrix.RotateSkew1 = skew;
        }
        const VXFlintMatrix cell = place.GetMatrix();
        matrix.Translate(cell.TranslateX + 60, cell.TranslateY + 40);
        place.SetMatrix(matrix);
    }
}

}  // namespace

void AddDemoShapes(DemoStage& stage) {
    AddPrimitives(stage);
    AddPaths(stage);
    AddMatrices(stage);
}
