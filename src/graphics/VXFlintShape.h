#pragma once

#include "bitstream/VXBitStream.h"
#include "graphics/VXFlintShapeRecords.h"
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

    unsigned int NumFillBits = 0;  ///< as read; not written
    unsigned int NumLineBits = 0;
    VXFlintShapeRecords ShapeRecords;
};
