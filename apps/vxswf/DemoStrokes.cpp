#include <memory>

#include "DemoPages.h"

namespace {

using Shape = VXSwfDefineShapeTag;

constexpr auto kStroked = TAG_DEFINESHAPE4;

/// Each pattern along a line and along a curve.
void AddPatterns(DemoStage& stage) {
    const char* captions[] = {"Solid", "Dash", "Dot", "Dash dot", "Dash dot dot"};
    for (int style = kVXStrokeSolid; style <= kVXStrokeDashDotDot; ++style) {
        Shape& stroke = stage.GetBuilder().Define<kStroked>();
        stroke.SetLineStyle(Rgba(kNavy), 2, 0, static_cast<VXStrokeStyleEnum>(style), 0, kVXJoinRound);
        stroke.StartPath(0, 0, 1);
        stroke.AddStraightEdge(0, 0, 190, 0);
        stroke.StartPath(0, 25, 1);
        stroke.AddCurvedEdge(0, 25, 60, 75, 130, -25, 190, 25);
        stroke.EndShape();
        stroke.SetBounds({0, 0, 190, 42}, 1);
        const double top = DemoStage::kTop + 8 + 72 * style;
        stage.Write(captions[style], 20, top - 4);
        stage.Place(stroke, 130, top);
    }
}

void AddWidths(DemoStage& stage) {
    double top = DemoStage::kTop + 8;
    for (const int width : {1, 2, 4, 8}) {
        Shape& stroke = stage.GetBuilder().Define<kStroked>();
        stroke.SetLineStyle(Rgba(kNavy), width, 0, kVXStrokeSolid, 0, kVXJoinRound);
        stroke.StartPath(0, 0, 1);
        stroke.AddStraightEdge(0, 0, 180, 0);
        stroke.EndShape();
        stroke.SetBounds({0, 0, 180, 0}, width / 2 + 1);
        stage.Write(std::to_string(width) + " wide", 360, top - 8);
        stage.Place(stroke, 440, top);
        top += 24;
    }
}

void AddJoins(DemoStage& stage) {
    const struct {
        VXJoinStyleEnum join;
        const char* caption;
    } joins[] = {{kVXJoinRound, "Round join"}, {kVXJoinBevel, "Bevel join"}, {kVXJoinMiter, "Miter join"}};
    double left = 370;
    for (const auto& [join, caption] : joins) {
        Shape& stroke = stage.GetBuilder().Define<kStroked>();
        stroke.SetLineStyle(Rgba(kBlue), 14, 0, kVXStrokeSolid, 0, join);
        stroke.StartPath(0, 50, 1);
        stroke.AddStraightEdge(0, 50, 30, 0);
        stroke.AddStraightEdge(30, 0, 60, 50);
        stroke.EndShape();
        stroke.SetBounds({0, 0, 60, 50}, 14);
        stage.Place(stroke, left, 196);
        stage.Write(caption, left - 5, 264);
        left += 94;
    }
}

/// Caps that reach beyond a path of 130 pixels, which lies on the stroke as a thin line.
void AddCaps(DemoStage& stage) {
    const struct {
        VXCapStyleEnum cap;
        const char* caption;
    } caps[] = {{kVXCapNone, "No cap"}, {kVXCapRound, "Round cap"}, {kVXCapSquare, "Square cap"}};
    double top = 312;
    for (const auto& [cap, caption] : caps) {
        Shape& stroke = stage.GetBuilder().Define<kStroked>();
        VXFlintLineStyle2 wide;
        wide.Width = 16;
        wide.Color = Rgba(kBlue);
        wide.SetJoinStyle(kVXJoinRound);
        wide.SetCapStyle(cap, cap);
        VXFlintLineStyle2 thin = wide;
        thin.Width = 1;
        thin.Color = Rgba(0xFFFFFF);
        thin.SetCapStyle(kVXCapNone, kVXCapNone);
        // A path selects the first style; a record of its own selects the second.
        stroke.SetLineStyle(Rgba(kBlue), 16, 0, kVXStrokeSolid, 0, kVXJoinRound);
        stroke.ShapeWithStyle.LineStyles.LineStyles2[0] = wide;
        stroke.ShapeWithStyle.AddLineStyle(thin);
        stroke.StartPath(0, 0, 1);
        stroke.AddStraightEdge(0, 0, 130, 0);
        auto* select = stroke.CreateMoveToRecord(0, 0);
        select->StateLineStyle = 1;
        select->LineStyle = 2;
        stroke.ShapeWithStyle.AddShapeRecord(
            VXFlintShapeRecord(std::unique_ptr<VXFlintShapeRecordBase>(select)));
        stroke.AddStraightEdge(0, 0, 130, 0);
        stroke.EndShape();
        stroke.SetBounds({0, 0, 130, 0}, 8);
        stage.Write(caption, 360, top - 8);
        stage.Place(stroke, 460, top);
        top += 36;
    }
}

}  // namespace

void AddDemoStrokes(DemoStage& stage) {
    AddPatterns(stage);
    AddWidths(stage);
    AddJoins(stage);
    AddCaps(stage);
}
