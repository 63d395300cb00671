#pragma once

#include <vector>

#include "bitstream/VXBitStream.h"
#include "graphics/VXFlintLineStyle.h"
#include "platform/VXExport.h"

/// The strokes of a shape, the format's LINESTYLEARRAY:
///
///     LineStyleCount u8, or 0xFF and u16
///     LineStyleCount × VXFlintLineStyle, or VXFlintLineStyle2 when IsLineStyle2
///
/// `IsLineStyle2` is not on the wire: the shape around it knows. One count serves both sequences. Mixing the
/// two kinds is the caller's fault and goes unnoticed until a dump finds too few of the kind in use.
///
/// Kept: a load knows the long count only with `Supports255Plus`, and takes 0xFF for 255 styles without it; a
/// dump uses it from 255 styles on, whatever the flag says.
class VXSWF_API VXFlintLineStyleArray {
public:
    VXFlintLineStyleArray() = default;
    VXFlintLineStyleArray(const VXFlintLineStyleArray&) = default;
    VXFlintLineStyleArray(VXFlintLineStyleArray&&) noexcept = default;
    VXFlintLineStyleArray& operator=(const VXFlintLineStyleArray&) = default;
    VXFlintLineStyleArray& operator=(VXFlintLineStyleArray&&) noexcept = default;
    virtual ~VXFlintLineStyleArray();

    /// Styles of the kind in use are loaded over, in place; the others stay. An array that is cut holds what one
    /// of fills would.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// 1 when `LineStyleCount` runs past the sequence in use.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    /// Appends a copy. `IsLineStyle2` stays as it is, even when set.
    void AddLineStyle(const VXFlintLineStyle& style);
    /// Appends a copy and sets `IsLineStyle2`.
    void AddLineStyle(const VXFlintLineStyle2& style);
    /// For the next load. Styles that are there do not change.
    void SetAlpha(short useAlpha) { UseAlpha = useAlpha; }
    void SetSupports255Plus(short supports255Plus) { Supports255Plus = supports255Plus; }
    void SetIsLineStyle2(short isLineStyle2) { IsLineStyle2 = isLineStyle2; }

    unsigned short LineStyleCount = 0;  ///< what every loop goes by
    short UseAlpha = 0;
    short Supports255Plus = 0;
    short IsLineStyle2 = 0;
    std::vector<VXFlintLineStyle> LineStyles;
    std::vector<VXFlintLineStyle2> LineStyles2;
};
