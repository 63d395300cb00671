#include <algorithm>
#include <utility>

#include "graphics/VXTwips.h"
#include "shapes/VXPathWriter_p.h"
#include "shapes/VXSwfDefineShapeTag.h"

namespace {

/// 20.0 in 16.16: from a pixel of an image to a pixel of the stage, in twips.
constexpr int kImageScale = 1310720;

int ImageScale(int imageSize, int size) {
    if (imageSize == size) return kImageScale;
    const float ratio = static_cast<float>(size) / static_cast<float>(imageSize);
    const float scale = ratio * static_cast<float>(kImageScale);
    return VXTruncate(scale);
}

}  // namespace

void VXSwfDefineShapeTag::AddEdge(VXReal x1, VXReal y1, VXReal x2, VXReal y2) {
    AddShapeRecord(VXMakeStraightEdge(GetPathState(), {x1, y1}, {x2, y2}));
}

void VXSwfDefineShapeTag::StartFill(VXReal x, VXReal y) {
    auto change = VXMakeMoveTo(GetPathState(), {x, y});
    change->StateFillStyle1 = 1;
    change->FillStyle1 = 1;
    AddShapeRecord(std::move(change));
}

void VXSwfDefineShapeTag::AddStyles(const VXFlintRGB& color, VXReal lineWidth) {
    VXFlintFillStyle fill;
    fill.Color = color;
    ShapeWithStyle.AddFillStyle(fill);
    VXFlintLineStyle line;
    line.Width = lineWidth;
    line.Color = color;
    ShapeWithStyle.AddLineStyle(line);
    SetIndexWidths(1, 2);
}

void VXSwfDefineShapeTag::SetIndexWidths(unsigned int numFillBits, unsigned int numLineBits) {
    ShapeWithStyle.ShapeRecords.NumFillBits = numFillBits;
    ShapeWithStyle.ShapeRecords.NumLineBits = numLineBits;
}

void VXSwfDefineShapeTag::CreateRectangle(int left, int top, int right, int bottom, const VXFlintRGB& color) {
    AddStyles(color, 1.0);
    CreateRectangleCommon(left, top, right, bottom);
}

void VXSwfDefineShapeTag::CreateRectangleWithFillStyle(int left, int top, int right, int bottom,
                                                       const VXFlintFillStyle& fill) {
    ShapeWithStyle.AddFillStyle(fill);
    CreateRectangleCommon(left, top, right, bottom);
}

void VXSwfDefineShapeTag::CreateRectangleCommon(int left, int top, int right, int bottom) {
    ShapeBounds.Set(left, top, right, bottom);
    SetIndexWidths(1, 2);
    StartFill(left, top);
    AddEdge(0, top, 0, bottom);
    AddEdge(left, 0, right, 0);
    AddEdge(0, bottom, 0, top);
    AddEdge(right, 0, left, 0);
    EndShape();
}

void VXSwfDefineShapeTag::CreateRoundedRectangle(int left, int top, int right, int bottom,
                                                 const VXFlintRGB& color, int radius) {
    if (radius <= 0) {
        CreateRectangle(left, top, right, bottom, color);
        return;
    }
    ShapeBounds.Set(left, top, right, bottom);
    AddStyles(color, 1.0);
    const VXReal l = left;
    const VXReal t = top;
    const VXReal r = right;
    const VXReal b = bottom;
    // Whole numbers of 33 bits, which a real holds.
    const VXReal innerL = l + radius;
    const VXReal innerT = t + radius;
    const VXReal innerR = r - radius;
    const VXReal innerB = b - radius;
    // The control point of each corner is the corner of the rectangle.
    const auto addCorner = [this](VXPathPoint from, VXPathPoint control, VXPathPoint to) {
        AddShapeRecord(VXMakeCurvedEdge(GetPathState(), control - from, to - control, to));
    };
    StartFill(l, innerT);
    AddEdge(l, innerT, l, innerB);
    addCorner({l, innerB}, {l, b}, {innerL, b});
    AddEdge(innerL, b, innerR, b);
    addCorner({innerR, b}, {r, b}, {r, innerB});
    AddEdge(r, innerB, r, innerT);
    addCorner({r, innerT}, {r, t}, {innerR, t});
    AddEdge(innerR, t, innerL, t);
    addCorner({innerL, t}, {l, t}, {l, innerT});
    EndShape();
}

void VXSwfDefineShapeTag::CreateTriangle(int x1, int y1, int x2, int y2, int x3, int y3,
                                         const VXFlintRGB& color) {
    ShapeBounds.Set(std::min({x1, x2, x3}), std::min({y1, y2, y3}), std::max({x1, x2, x3}),
                    std::max({y1, y2, y3}));
    AddStyles(color, 1.0);
    StartFill(x1, y1);
    AddEdge(x1, y1, x2, y2);
    AddEdge(x2, y2, x3, y3);
    AddEdge(x3, y3, x1, y1);
    EndShape();
}

void VXSwfDefineShapeTag::CreateStraightLine(int x1, int y1, int x2, int y2, const VXFlintRGB& color,
                                             unsigned short width) {
    ShapeBounds.Set(x1, y1, x2, y2);
    AddStyles(color, width);
    auto change = VXMakeMoveTo(GetPathState(), {static_cast<VXReal>(x1), static_cast<VXReal>(y1)});
    change->StateLineStyle = 1;
    change->LineStyle = 1;
    AddShapeRecord(std::move(change));
    AddEdge(x1, y1, x2, y2);
    EndShape();
}

void VXSwfDefineShapeTag::CreateShapeForImage(unsigned short bitmapId, int x, int y, int imageWidth,
                                              int imageHeight, int width, int height, short tiled) {
    const VXReal left = x;
    const VXReal top = y;
    ShapeBounds.Set(left, top, left + width, top + height);
    VXFlintFillStyle fill;
    fill.FillStyleType = tiled != 0 ? kVXFillTiledBitmap : kVXFillClippedBitmap;
    fill.BitmapId = bitmapId;
    fill.BitmapMatrix.HasScale = 1;
    fill.BitmapMatrix.ScaleX = tiled != 0 ? kImageScale : ImageScale(imageWidth, width);
    fill.BitmapMatrix.ScaleY = tiled != 0 ? kImageScale : ImageScale(imageHeight, height);
    ShapeWithStyle.AddFillStyle(fill);
    // Kept: one bit for lines, where the style change is made with two.
    SetIndexWidths(1, 1);
    // Kept: the outline lies at the origin. Only the bounds are at x and y.
    StartFill(width, height);
    AddEdge(width, 0, 0, 0);
    AddEdge(0, height, 0, 0);
    AddEdge(0, 0, width, 0);
    AddEdge(0, 0, 0, height);
    EndShape();
}
