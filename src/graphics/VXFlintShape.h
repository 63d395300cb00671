#pragma once

#include "bitstream/VXBitStream.h"
#include "graphics/VXFlintShapeRecords.h"
#include "platform/KVMPointType.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// The outline of a glyph, the format's SHAPE. It brings no styles: index 1 selects what the text has.
///
///     ShapeRecords VXFlintShapeRecords
///
/// Kept: a load wants NumFillBits ub[4] and NumLineBits ub[4] twice, once here and once in the list, where a
/// dump writes them once. A glyph that was written here is not read back as it was.
class VXSWF_API VXFlintShape {
public:
    VXFlintShape() = default;
    VXFlintShape(const VXFlintShape&) = default;
    VXFlintShape(VXFlintShape&&) noexcept = default;
    VXFlintShape& operator=(const VXFlintShape&) = default;
    VXFlintShape& operator=(VXFlintShape&&) noexcept = default;
    virtual ~VXFlintShape();

    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Leaves the stream in mid-byte, as the list does.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    void SetAlpha(short useAlpha) { ShapeRecords.SetAlpha(useAlpha); }
    /// Appends a copy.
    void AddShapeRecord(const VXFlintShapeRecord& record) { ShapeRecords.AddShapeRecord(record); }

    // Building the outline of a glyph, in units of its grid. Each edge and change stores the width that it
    // works out in `NumFillBits` and `NumLineBits`, where it has no effect.

    /// A move to this place. With `selectStyle` it selects fill 1 on the right, and no line. Indices take the
    /// widths that the list has.
    void AddChangeToGlyphShape(float x, float y, bool selectStyle);
    /// Nothing for a line without length.
    void AddLineToGlyphShape(float x1, float y1, float x2, float y2);
    /// A quadratic curve.
    void AddCurveToGlyphShape(float x1, float y1, float cx, float cy, float x2, float y2);
    void AddEndShapeRecord();
    /// Appends a path of `count` entries, truncated to whole units, and closes what the path closes. Null
    /// pointers stand for an empty path. The coordinates are read as the kinds say, two for each entry. A
    /// curve without a point in front or without its three entries, and what is not a number or lies beyond
    /// 2^24, is passed over.
    void CreateShapeFromPathData(unsigned int count, float* points, const KVMPointType* kinds);

    unsigned int NumFillBits = 0;  ///< as read; not written
    unsigned int NumLineBits = 0;
    VXFlintShapeRecords ShapeRecords;

private:
    void StoreWidth(unsigned int width);
};
