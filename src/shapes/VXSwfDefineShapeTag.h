#pragma once

#include <memory>

#include "framework/VXSwfDefinitionTag.h"
#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintRectangle.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"
#include "graphics/VXFlintShapeWithStyle.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"
#include "shapes/VXSwfStrokePattern.h"

struct VXPathState;

/// A shape, in all four versions. The version is the type of the tag, and nothing else:
///
///     CharacterId u16
///     ShapeBounds VXFlintRectangle
///     EdgeBounds VXFlintRectangle                                        type 83
///     Reserved ub[6] = 0, UsesNonScalingStrokes ub[1] = 1,
///     UsesScalingStrokes ub[1] = 0                                       type 83
///     ShapeWithStyle VXFlintShapeWithStyle
///
///     type 2     colours without alpha, up to 255 styles
///     type 22    any number of styles
///     type 32    colours with alpha
///     type 83    bounds of the edges, and lines of the second kind
///
/// The two flags of type 83 always go out with these values, which agree with what every line style says of
/// its scaling; a load drops what they hold. Nothing checks that the styles fit the version.
///
/// The position and the stroke pattern serve the drawing of paths. A load leaves them alone, so a shape that
/// was loaded cannot be drawn on reliably.
class VXSWF_API VXSwfDefineShapeTag : public VXSwfDefinitionTag {
public:
    using VXSwfDefinitionTag::DumpToStream;

    /// Regenerates the body; the bytes as loaded play no part. Bounds go out as they are, whatever the edges
    /// cover.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Of the bitmaps that fill the shape.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineShapeTag() override;
    /// Adds "-Rect =(", the left and top, "),(", the right and bottom in whole pixels, and ")".
    void GetTextInfo(VXString& text) override;
    /// A shape that fails keeps what it read.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    VXFlintRectangle GetBounds() const { return ShapeBounds; }
    /// `rect` bounds the edges; the shape's bounds are `margin` pixels wider on each side, for the stroke.
    void SetBounds(const VXRect& rect, int margin);
    /// Whether the colours of this version have an alpha byte.
    short IsUseAlpha() const;
    short IsDefineShape4Tag() const;
    VXSwfStrokePattern& GetStrokePattern() { return StrokePattern; }

    // Drawing a shape edge by edge, in pixels: the styles first, then for each path its start, its edges, and
    // its end when it is to be closed; last the end of the shape, and the bounds. The order is not checked.
    // Every edge starts at the pen: the `x1` and `y1` of the two operations that have them go unused.

    /// Appends a copy. Style indices of fills take one bit from then on.
    void SetFillStyle(const VXFlintFillStyle& style);
    /// Appends a line of `width` pixels, always of the second kind, so stroked shapes want type 83. It has
    /// square caps when it is solid and `closed`, else none. All paths have the pattern that was set last.
    void SetLineStyle(const VXFlintRGB& color, int width, short ignoredFlag, VXStrokeStyleEnum stroke,
                      short closed, VXJoinStyleEnum join);
    /// A stroke selects line 1 and leaves the fill as it is; any other path selects fill 1 and leaves the
    /// line. The pattern starts anew.
    void StartPath(VXReal x, VXReal y, short isStroke);
    /// Cut into dashes when the path is a stroke with a pattern. An edge shorter than 1e-5 pixels is then left
    /// out; one longer than 10,000,000, or with a place in the pattern that does not exist, is drawn whole.
    void AddStraightEdge(VXReal x1, VXReal y1, VXReal x2, VXReal y2);
    /// A quadratic curve, never cut into dashes.
    void AddCurvedEdge(VXReal x1, VXReal y1, VXReal cx, VXReal cy, VXReal x2, VXReal y2);
    /// A cubic curve, as straight and quadratic edges that are off by a tenth of a pixel at most. They are cut
    /// into dashes too, unless the polygon of the curve's points is longer than 10,000,000 pixels.
    void AddCurvedEdge(VXReal x1, VXReal y1, VXReal c1x, VXReal c1y, VXReal c2x, VXReal c2y, VXReal x2,
                       VXReal y2);
    /// Closes the path with one solid edge, from where the rounded deltas lead to where the path began. It is
    /// there even without length.
    void EndPath();
    void EndShape();

    // Single records, which the caller owns. They move the pen and are not part of the shape.

    /// A horizontal or vertical edge when the other axis changes by less than 1e-5.
    VXFlintStraightEdgeRecord* CreateStraightEdgeRecord(VXReal x1, VXReal y1, VXReal x2, VXReal y2);
    VXFlintCurvedEdgeRecord* CreateCurvedEdgeRecord(VXReal x1, VXReal y1, VXReal cx, VXReal cy, VXReal x2,
                                                    VXReal y2);
    VXFlintShapeStyleChangeRecord* CreateMoveToRecord(VXReal x, VXReal y);

    // Whole shapes in one call, in pixels: bounds, styles, outline and end. They append to what is there. Edges
    // select the fill as `FillStyle1`, where drawn paths select it as `FillStyle0`. Shapes with a colour add a
    // line style of the first kind, so they are for the types below 83; only the straight line selects it.

    void CreateRectangle(int left, int top, int right, int bottom, const VXFlintRGB& color);
    void CreateRectangleWithFillStyle(int left, int top, int right, int bottom, const VXFlintFillStyle& fill);
    /// Each corner is one quadratic curve with the corner itself as its control point. A radius of 0 or less
    /// gives the plain rectangle; one that is too large reverses edges.
    void CreateRoundedRectangle(int left, int top, int right, int bottom, const VXFlintRGB& color,
                                int radius);
    void CreateTriangle(int x1, int y1, int x2, int y2, int x3, int y3, const VXFlintRGB& color);
    /// The bounds are the two points as they are, not in order and without the width.
    void CreateStraightLine(int x1, int y1, int x2, int y2, const VXFlintRGB& color, unsigned short width);
    /// A rectangle filled with a bitmap, in its own size when `tiled`, else stretched to the rectangle.
    ///
    /// Kept: `x` and `y` shift the bounds, and not the outline, which lies at the origin.
    void CreateShapeForImage(unsigned short bitmapId, int x, int y, int imageWidth, int imageHeight,
                             int width, int height, short tiled);

    VXFlintRectangle ShapeBounds;  ///< with the stroke
    VXFlintRectangle EdgeBounds;   ///< without it
    VXFlintShapeWithStyle ShapeWithStyle;
    int PathStartX = 0;  ///< twips, as the next five: where the path began
    int PathStartY = 0;
    int PenX = 0;  ///< the last end point, rounded
    int PenY = 0;
    int SumX = 0;  ///< where the rounded deltas lead a reader of the file; off the pen by their rounding
    int SumY = 0;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineShapeTag(enuTagType type);

    short Supports255Plus() const;
    VXPathState GetPathState();
    VXFlintShapeEndRecord* CreateEndRecord();
    void AddShapeRecord(std::unique_ptr<VXFlintShapeRecordBase> record);
    void AddEdge(VXReal x1, VXReal y1, VXReal x2, VXReal y2);
    void StartFill(VXReal x, VXReal y);
    void AddStyles(const VXFlintRGB& color, VXReal lineWidth);
    void SetIndexWidths(unsigned int numFillBits, unsigned int numLineBits);
    void CreateRectangleCommon(int left, int top, int right, int bottom);

    VXSwfStrokePattern StrokePattern;
};
