#pragma once

#include "framework/VXSwfDefinitionTag.h"
#include "graphics/VXFlintRectangle.h"
#include "graphics/VXFlintShapeWithStyle.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"
#include "shapes/VXSwfStrokePattern.h"

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
    /// cover. 1 also for want of memory.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    /// Of the bitmaps that fill the shape.
    void UpdateReferenceIDs(VXFlintIDMap* map) override;
    ~VXSwfDefineShapeTag() override;
    /// Adds "-Rect =(", the left and top, "),(", the right and bottom in whole pixels, and ")".
    void GetTextInfo(VXString& text) override;
    /// A shape that fails keeps what it read. 1 also for want of memory.
    VXErrorCodeEnum LoadDataFromStream(VXBitStream& in) override;

    VXFlintRectangle GetBounds() const { return ShapeBounds; }
    /// `rect` bounds the edges; the shape's bounds are `margin` pixels wider on each side, for the stroke.
    void SetBounds(const VXRect& rect, int margin);
    /// Whether the colours of this version have an alpha byte.
    short IsUseAlpha() const;
    short IsDefineShape4Tag() const;
    VXSwfStrokePattern& GetStrokePattern() { return StrokePattern; }

    VXFlintRectangle ShapeBounds;  ///< with the stroke
    VXFlintRectangle EdgeBounds;   ///< without it
    VXFlintShapeWithStyle ShapeWithStyle;

private:
    friend class VXSwfTagFactory;
    explicit VXSwfDefineShapeTag(enuTagType type);

    short Supports255Plus() const;
    VXErrorCodeEnum LoadFields(VXBitStream& in);
    VXErrorCodeEnum DumpFields(VXBitStream& body);

    VXSwfStrokePattern StrokePattern;
};
