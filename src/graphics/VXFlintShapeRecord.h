#pragma once

#include <memory>

#include "bitstream/VXBitStream.h"
#include "framework/VXFlintIDMap.h"
#include "graphics/VXFlintShapeRecordBase.h"
#include "memory/VXPool.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// One place in an outline: owns a record of one of the four classes and says which. Its load reads the bits
/// that choose the class, and hands on what the wire does not carry: the widths of style indices that are in
/// force, and the flags of the shape around it.
class VXSWF_API VXFlintShapeRecord : public VXPooled {
public:
    static constexpr unsigned int kEnd = 0;
    static constexpr unsigned int kStyleChange = 1;
    static constexpr unsigned int kStraightEdge = 2;
    static constexpr unsigned int kCurvedEdge = 3;
    static constexpr unsigned int kNone = 4;

    /// Without a record.
    VXFlintShapeRecord() = default;
    /// Takes `record` over and sets `Kind` from its class.
    explicit VXFlintShapeRecord(std::unique_ptr<VXFlintShapeRecordBase> record);
    /// Copies the record too, as what it really is, whatever `Kind` says.
    VXFlintShapeRecord(const VXFlintShapeRecord& other);
    VXFlintShapeRecord(VXFlintShapeRecord&& other) noexcept;
    VXFlintShapeRecord& operator=(VXFlintShapeRecord other) noexcept;
    virtual ~VXFlintShapeRecord();

    /// Replaces the record. The two widths are then those in force behind it. A record whose fields failed
    /// to load stays.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// The two widths are then those in force behind the record, if it is a style change; the record itself
    /// writes with its own. 1 without a record.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);
    /// Of a style change; see there.
    void UpdateReferenceIDs(VXFlintIDMap* map);

    // For the next load, as `VXFlintShapeStyleChangeRecord` has them.

    void SetAlpha(short useAlpha) { UseAlpha = useAlpha; }
    void SetSupports255Plus(short supports255Plus) { Supports255Plus = supports255Plus; }
    void SetIsLineStyle2(short isLineStyle2) { IsLineStyle2 = isLineStyle2; }

    short IsEdge = 0;  ///< the first bit as read
    short UseAlpha = 0;
    short Supports255Plus = 0;
    short IsLineStyle2 = 0;
    VXFlintShapeRecordBase* Record = nullptr;  ///< deleted with the wrapper; who replaces it owns the old one
    /// One of the constants above. A host that sets `Record` sets this too; one that disagrees with the class
    /// of the record is never taken as true.
    unsigned int Kind = kNone;
    unsigned int NumFillBits = 0;  ///< before a load the widths in force, behind it those that it leaves
    unsigned int NumLineBits = 0;

private:
    /// Deletes the old record.
    VXFlintShapeRecordBase& Take(std::unique_ptr<VXFlintShapeRecordBase> record);
    template <typename Edge>
    VXErrorCodeEnum LoadEdge(VXBitStream& in);
    void TakeWidths();
};
