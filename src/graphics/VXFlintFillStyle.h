#pragma once

#include <vector>

#include "bitstream/VXBitStream.h"
#include "framework/VXFlintIDMap.h"
#include "graphics/VXFlintGradient.h"
#include "graphics/VXFlintMatrix.h"
#include "graphics/VXFlintRGB.h"
#include "platform/VXExport.h"

/// Types of fills. A clipped bitmap goes on in the colours of its edge; a hard one has its pixels as they are.
enum VXFillStyleEnum : unsigned char {
    kVXFillSolid = 0,
    kVXFillLinearGradient = 16,
    kVXFillRadialGradient = 18,
    kVXFillTiledBitmap = 64,
    kVXFillClippedBitmap = 65,
    kVXFillTiledHardBitmap = 66,
    kVXFillClippedHardBitmap = 67,
};

/// What fills a shape, the format's FILLSTYLE:
///
///     FillStyleType u8
///     Color VXFlintRGB                                           solid
///     GradientMatrix VXFlintMatrix, Gradient VXFlintGradient     gradients
///     BitmapId u16, BitmapMatrix VXFlintMatrix                   bitmaps
///
/// Kept: any other type, the focal gradient 19 among them, is the type byte alone in both directions, and no
/// failure. What follows it in a movie is then misread.
class VXSWF_API VXFlintFillStyle {
public:
    /// Solid, opaque black.
    VXFlintFillStyle() = default;
    VXFlintFillStyle(unsigned char type, const VXFlintRGB& color, const VXFlintMatrix& gradientMatrix,
                     VXFlintGradient gradient, unsigned short bitmapId, const VXFlintMatrix& bitmapMatrix);
    VXFlintFillStyle(const VXFlintFillStyle&) = default;
    VXFlintFillStyle(VXFlintFillStyle&&) noexcept = default;
    VXFlintFillStyle& operator=(const VXFlintFillStyle&) = default;
    VXFlintFillStyle& operator=(VXFlintFillStyle&&) noexcept = default;
    virtual ~VXFlintFillStyle();

    /// Fields that the type does not carry keep their values.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    /// Whether colours have an alpha byte: that of the fill, and those of the gradient.
    void SetAlpha(short useAlpha);
    /// Gives a bitmap fill the new ID of its bitmap. An ID of 0 is not looked up, and an answer of 0 leaves
    /// the old one. Null does nothing.
    void UpdateReferenceIDs(VXFlintIDMap* map);

    unsigned char FillStyleType = kVXFillSolid;  ///< of `VXFillStyleEnum`, or any other
    unsigned short BitmapId = 0;
    VXFlintRGB Color;
    VXFlintMatrix GradientMatrix;
    VXFlintGradient Gradient;
    VXFlintMatrix BitmapMatrix;
};

/// The fills of a shape, the format's FILLSTYLEARRAY:
///
///     FillStyleCount u8, or 0xFF and u16
///     FillStyleCount × VXFlintFillStyle
///
/// The short form ends at 254 styles.
///
/// Kept: a load knows the long form only with `Supports255Plus`, and takes 0xFF for 255 styles without it; a
/// dump uses it from 255 styles on, whatever the flag says.
class VXSWF_API VXFlintFillStyleArray {
public:
    VXFlintFillStyleArray() = default;
    VXFlintFillStyleArray(const VXFlintFillStyleArray&) = default;
    VXFlintFillStyleArray(VXFlintFillStyleArray&&) noexcept = default;
    VXFlintFillStyleArray& operator=(const VXFlintFillStyleArray&) = default;
    VXFlintFillStyleArray& operator=(VXFlintFillStyleArray&&) noexcept = default;

    // Virtual operations, in slot order.

    virtual ~VXFlintFillStyleArray();
    /// Of every style; see there.
    virtual void UpdateReferenceIDs(VXFlintIDMap* map);

    // The rest.

    /// Styles that are there are loaded over, in place. An array that is cut has `FillStyleCount` styles all the
    /// same, those behind the cut as they were or new; of more than 255 only 255, or one for each byte that was
    /// left.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// 1 when `FillStyleCount` runs past the sequence.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    /// Appends a copy as it is: the array's `UseAlpha` is not passed on.
    void AddFillStyle(const VXFlintFillStyle& style);
    /// For the next load. Styles that are there do not change.
    void SetAlpha(short useAlpha) { UseAlpha = useAlpha; }
    void SetSupports255Plus(short supports255Plus) { Supports255Plus = supports255Plus; }

    unsigned short FillStyleCount =
        0;  ///< what every loop goes by; to be kept equal to the size of `FillStyles`
    short UseAlpha = 0;
    short Supports255Plus = 0;
    std::vector<VXFlintFillStyle> FillStyles;
};
