#pragma once

#include "bitstream/VXBitStream.h"
#include "framework/VXFlintIDMap.h"
#include "graphics/VXFlintFillStyle.h"
#include "graphics/VXFlintLineStyleArray.h"
#include "graphics/VXFlintShapeRecords.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// An outline with the styles that it starts with, the format's SHAPEWITHSTYLE:
///
///     FillStyles VXFlintFillStyleArray
///     LineStyles VXFlintLineStyleArray
///     ShapeRecords VXFlintShapeRecords
///
/// What the version of the shape tag decides is handed down by the setters, before a load.
class VXSWF_API VXFlintShapeWithStyle {
public:
    VXFlintShapeWithStyle() = default;
    VXFlintShapeWithStyle(const VXFlintShapeWithStyle&) = default;
    VXFlintShapeWithStyle(VXFlintShapeWithStyle&&) noexcept = default;
    VXFlintShapeWithStyle& operator=(const VXFlintShapeWithStyle&) = default;
    VXFlintShapeWithStyle& operator=(VXFlintShapeWithStyle&&) noexcept = default;
    virtual ~VXFlintShapeWithStyle();

    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Leaves the stream in mid-byte, as the list does.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    void SetAlpha(short useAlpha);
    void SetSupports255Plus(short supports255Plus);
    void SetIsLineStyle2(short isLineStyle2);

    /// Appends a copy, as do the next three.
    void AddFillStyle(const VXFlintFillStyle& style) { FillStyles.AddFillStyle(style); }
    void AddLineStyle(const VXFlintLineStyle& style) { LineStyles.AddLineStyle(style); }
    /// Sets `IsLineStyle2` of the array, and not that of the list.
    void AddLineStyle(const VXFlintLineStyle2& style) { LineStyles.AddLineStyle(style); }
    void AddShapeRecord(const VXFlintShapeRecord& record) { ShapeRecords.AddShapeRecord(record); }

    /// Of all fills, those that style changes bring along included.
    void UpdateReferenceIDs(VXFlintIDMap* map);

    VXFlintFillStyleArray FillStyles;
    VXFlintLineStyleArray LineStyles;
    VXFlintShapeRecords ShapeRecords;
};
