#pragma once

#include "bitstream/VXBitStream.h"
#include "framework/VXFlintIDMap.h"
#include "graphics/VXFlintShapeRecord.h"
#include "memory/VXOwnedVector.h"
#include "platform/VXExport.h"
#include "platform/VXTypes.h"

/// An outline:
///
///     NumFillBits ub[4], NumLineBits ub[4]
///     records, the last of kind `VXFlintShapeRecord::kEnd`
///
/// The two widths are those of style indices at the start; style changes with new styles replace them for
/// what follows. A list made by code needs an end record of its own.
class VXSWF_API VXFlintShapeRecords {
public:
    VXFlintShapeRecords() = default;
    /// Copies every record.
    VXFlintShapeRecords(const VXFlintShapeRecords&) = default;
    VXFlintShapeRecords(VXFlintShapeRecords&&) noexcept = default;
    VXFlintShapeRecords& operator=(const VXFlintShapeRecords&) = default;
    VXFlintShapeRecords& operator=(VXFlintShapeRecords&&) noexcept = default;
    virtual ~VXFlintShapeRecords();

    /// Appends up to the end record, then drops the rest of its last byte. A record that fails ends the load
    /// and stays in the list.
    VXErrorCodeEnum LoadFromStream(VXBitStream& in);
    /// Gives every wrapper the flags of the list and the widths in force. Leaves the stream in mid-byte.
    ///
    /// Kept: the widths in force do not reach the records. Each style change writes with its own.
    VXErrorCodeEnum DumpToStream(VXBitStream& out);

    /// Appends a copy.
    void AddShapeRecord(const VXFlintShapeRecord& record);
    /// Appends the record itself; the argument has none afterwards.
    void AddShapeRecord(VXFlintShapeRecord&& record);
    /// Of every style change; see there.
    void UpdateReferenceIDs(VXFlintIDMap* map);

    // What each record gets before it is loaded or dumped.

    void SetAlpha(short useAlpha) { UseAlpha = useAlpha; }
    void SetSupports255Plus(short supports255Plus) { Supports255Plus = supports255Plus; }
    void SetLineStyle2(short isLineStyle2) { IsLineStyle2 = isLineStyle2; }

    VXOwnedVector<VXFlintShapeRecord> Records;
    unsigned int NumFillBits = 0;
    unsigned int NumLineBits = 0;
    short UseAlpha = 0;
    short Supports255Plus = 0;
    short IsLineStyle2 = 0;

private:
    void Prepare(VXFlintShapeRecord& record, unsigned int numFillBits, unsigned int numLineBits) const;
};
