#pragma once

#include "bitstream/VXBitStream.h"
#include "memory/VXPool.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// The base of the four records that an outline is made of. The bits that tell them apart stand in front of
/// the fields, as 1 and 1 or 0 for an edge, as 0 and five flags for what is not an edge:
///
///     ub[1] = 0, StateNewStyles ub[1], StateLineStyle ub[1], StateFillStyle1 ub[1], StateFillStyle0 ub[1],
///     StateMoveTo ub[1]
///
/// `VXFlintShapeRecord` reads these bits, since they choose the class; a record's own load begins behind
/// them. A dump writes them. Records follow each other without alignment.
///
/// Objects come from a pool, as they come by the hundred thousand.
class VXSWF_API VXFlintShapeRecordBase : public VXPooled {
public:
    // Virtual operations, in slot order.

    virtual VXErrorCodeEnum LoadFromStream(VXBitStream& in) = 0;
    virtual VXErrorCodeEnum DumpToStream(VXBitStream& out) = 0;
    virtual ~VXFlintShapeRecordBase();

    // The flags as they were read, put here before the load; all clear for an edge. Classes that have flags
    // of their own dump those.

    short StateNewStyles = 0;
    short StateLineStyle = 0;
    short StateFillStyle1 = 0;
    short StateFillStyle0 = 0;
    short StateMoveTo = 0;

protected:
    VXFlintShapeRecordBase() = default;
    VXFlintShapeRecordBase(const VXFlintShapeRecordBase&) = default;
    VXFlintShapeRecordBase& operator=(const VXFlintShapeRecordBase&) = default;
};

/// The end of an outline, six zero bits.
class VXSWF_API VXFlintShapeEndRecord final : public VXFlintShapeRecordBase {
public:
    /// Reads nothing and takes the base's flags over.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in) override;
    /// Whatever the flags hold.
    VXErrorCodeEnum DumpToStream(VXBitStream& out) override;
    ~VXFlintShapeEndRecord() override;
    VXFlintShapeEndRecord() = default;
    VXFlintShapeEndRecord(const VXFlintShapeEndRecord&) = default;
    VXFlintShapeEndRecord& operator=(const VXFlintShapeEndRecord&) = default;

    short StateNewStyles = 0;
    short StateLineStyle = 0;
    short StateFillStyle1 = 0;
    short StateFillStyle0 = 0;
    short StateMoveTo = 0;
};
