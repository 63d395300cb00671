#pragma once

#include "framework/VXFlintIDMap.h"
#include "graphics/VXFlintFillStyle.h"
#include "graphics/VXFlintLineStyleArray.h"
#include "graphics/VXFlintShapeRecordBase.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// Lifts the pen, selects styles, or brings new ones along:
///
///     ub[1] = 0, StateNewStyles ub[1], StateLineStyle ub[1], StateFillStyle1 ub[1], StateFillStyle0 ub[1],
///     StateMoveTo ub[1]
///     MoveBits ub[5], MoveDeltaX sb[MoveBits], MoveDeltaY sb[MoveBits]       when StateMoveTo
///     FillStyle0 ub[NumFillBits]                                             when StateFillStyle0
///     FillStyle1 ub[NumFillBits]                                             when StateFillStyle1
///     LineStyle ub[NumLineBits]                                              when StateLineStyle
///     NewFillStyles VXFlintFillStyleArray, NewLineStyles VXFlintLineStyleArray,
///     NewNumFillBits ub[4], NewNumLineBits ub[4]                             when StateNewStyles
///
/// The arrays begin on a byte. `NumFillBits` and `NumLineBits` are not on the wire: they are what the records
/// in front have left in force. A record made by code must hold the widths that its place in the list gives
/// it; nothing checks that, and an index wider than its field spoils the bits in front of it.
class VXSWF_API VXFlintShapeStyleChangeRecord final : public VXFlintShapeRecordBase {
public:
    VXFlintShapeStyleChangeRecord() = default;
    /// The two widths in force, and for the styles that it may bring along: whether their colours have an
    /// alpha byte, whether there may be more than 255 of them, and the kind of lines.
    VXFlintShapeStyleChangeRecord(unsigned int numFillBits, unsigned int numLineBits, short alpha,
                                  short supports255Plus, short isLineStyle2);
    VXFlintShapeStyleChangeRecord(const VXFlintShapeStyleChangeRecord&) = default;
    VXFlintShapeStyleChangeRecord(VXFlintShapeStyleChangeRecord&&) noexcept = default;
    VXFlintShapeStyleChangeRecord& operator=(const VXFlintShapeStyleChangeRecord&) = default;
    VXFlintShapeStyleChangeRecord& operator=(VXFlintShapeStyleChangeRecord&&) noexcept = default;

    /// Takes the flags of the base over. Fields that they leave out keep their values.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in) override;
    /// Without new styles the widths after this record become those before it.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXFlintShapeStyleChangeRecord() override;

    /// Of the new fills; see there.
    void UpdateReferenceIDs(VXFlintIDMap* map) { NewFillStyles.UpdateReferenceIDs(map); }

    unsigned int NumFillBits = 0;  ///< width of the fill indices of this record
    unsigned int NumLineBits = 0;  ///< width of the line index of this record
    short StateNewStyles = 0;
    short StateLineStyle = 0;
    short StateFillStyle1 = 0;
    short StateFillStyle0 = 0;
    short StateMoveTo = 0;
    unsigned int MoveBits = 0;    ///< width as read
    unsigned int FillStyle0 = 0;  ///< fill on the left of the edges that follow; 1 is the first, 0 is none
    unsigned int FillStyle1 = 0;  ///< fill on the right
    unsigned int LineStyle = 0;
    unsigned int NewNumFillBits = 0;  ///< widths in force behind this record
    unsigned int NewNumLineBits = 0;
    VXReal MoveDeltaX = 0.0;  ///< pixels from the origin of the shape, not from the pen
    VXReal MoveDeltaY = 0.0;
    VXFlintFillStyleArray NewFillStyles;
    VXFlintLineStyleArray NewLineStyles;
};
