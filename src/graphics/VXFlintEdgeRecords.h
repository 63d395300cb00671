#pragma once

#include "graphics/VXFlintShapeRecordBase.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// A straight edge from where the last record ended:
///
///     ub[2] = 11, ub[4] = NumBits − 2, GeneralLineFlag ub[1]
///     DeltaX sb[NumBits], DeltaY sb[NumBits]      when GeneralLineFlag
///     VertLineFlag ub[1]                          otherwise
///     DeltaY sb[NumBits]                          when VertLineFlag
///     DeltaX sb[NumBits]                          when not
///
/// Deltas are in pixels in memory and in twips on the wire. A delta of 65,536 twips or more needs a wider
/// field than the four bits can say, and spoils the bits in front of them.
class VXSWF_API VXFlintStraightEdgeRecord final : public VXFlintShapeRecordBase {
public:
    VXFlintStraightEdgeRecord() = default;
    VXFlintStraightEdgeRecord(const VXFlintStraightEdgeRecord&) = default;
    VXFlintStraightEdgeRecord& operator=(const VXFlintStraightEdgeRecord&) = default;

    /// A delta that is not on the wire keeps its value.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in) override;
    /// Trusts the two flags: a delta that they leave out is dropped. `NumBits` plays no part.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXFlintStraightEdgeRecord() override;

    short StraightFlag = 0;    ///< 1 after a load
    unsigned int NumBits = 0;  ///< width as read
    short GeneralLineFlag = 0;
    short VertLineFlag = 0;
    VXReal DeltaX = 0.0;
    VXReal DeltaY = 0.0;
};

/// A quadratic curve from where the last record ended:
///
///     ub[2] = 10, ub[4] = NumBits − 2
///     ControlDeltaX sb[NumBits], ControlDeltaY sb[NumBits]
///     AnchorDeltaX sb[NumBits], AnchorDeltaY sb[NumBits]
///
/// The anchor is the end of the curve, counted from the control point. Units and range as in
/// `VXFlintStraightEdgeRecord`.
class VXSWF_API VXFlintCurvedEdgeRecord final : public VXFlintShapeRecordBase {
public:
    VXFlintCurvedEdgeRecord() = default;
    VXFlintCurvedEdgeRecord(const VXFlintCurvedEdgeRecord&) = default;
    VXFlintCurvedEdgeRecord& operator=(const VXFlintCurvedEdgeRecord&) = default;

    VXErrorCodeEnum LoadFromStream(VXBitStream& in) override;
    /// `NumBits` plays no part.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXFlintCurvedEdgeRecord() override;

    short StraightFlag = 0;    ///< 0 after a load
    unsigned int NumBits = 0;  ///< width as read
    VXReal ControlDeltaX = 0.0;
    VXReal ControlDeltaY = 0.0;
    VXReal AnchorDeltaX = 0.0;
    VXReal AnchorDeltaY = 0.0;
};
