#include "graphics/VXFlintShapeRecord.h"

#include <typeinfo>
#include <utility>

#include "graphics/VXFlintEdgeRecords.h"
#include "graphics/VXFlintShapeStyleChangeRecord.h"

namespace {

// The classes are final, so the type of an object is one of these four or a host's own.
template <typename T>
bool Is(const VXFlintShapeRecordBase& record) {
    return typeid(record) == typeid(T);
}

unsigned int KindOf(const VXFlintShapeRecordBase* record) {
    if (record == nullptr) return VXFlintShapeRecord::kNone;
    if (Is<VXFlintStraightEdgeRecord>(*record)) return VXFlintShapeRecord::kStraightEdge;
    if (Is<VXFlintCurvedEdgeRecord>(*record)) return VXFlintShapeRecord::kCurvedEdge;
    if (Is<VXFlintShapeStyleChangeRecord>(*record)) return VXFlintShapeRecord::kStyleChange;
    if (Is<VXFlintShapeEndRecord>(*record)) return VXFlintShapeRecord::kEnd;
    return VXFlintShapeRecord::kNone;
}

template <typename T>
std::unique_ptr<VXFlintShapeRecordBase> CopyAs(const VXFlintShapeRecordBase& record) {
    return std::make_unique<T>(static_cast<const T&>(record));
}

/// Null for null, and for a class of the host's own.
std::unique_ptr<VXFlintShapeRecordBase> CopyOf(const VXFlintShapeRecordBase* record) {
    switch (KindOf(record)) {
        case VXFlintShapeRecord::kEnd:
            return CopyAs<VXFlintShapeEndRecord>(*record);
        case VXFlintShapeRecord::kStyleChange:
            return CopyAs<VXFlintShapeStyleChangeRecord>(*record);
        case VXFlintShapeRecord::kStraightEdge:
            return CopyAs<VXFlintStraightEdgeRecord>(*record);
        case VXFlintShapeRecord::kCurvedEdge:
            return CopyAs<VXFlintCurvedEdgeRecord>(*record);
        default:
            return nullptr;
    }
}

/// All but the record itself.
void CopyFields(const VXFlintShapeRecord& from, VXFlintShapeRecord& to) {
    to.IsEdge = from.IsEdge;
    to.UseAlpha = from.UseAlpha;
    to.Supports255Plus = from.Supports255Plus;
    to.IsLineStyle2 = from.IsLineStyle2;
    to.Kind = from.Kind;
    to.NumFillBits = from.NumFillBits;
    to.NumLineBits = from.NumLineBits;
}

/// The style change that `wrapper` has by its `Kind` and in truth, or null.
VXFlintShapeStyleChangeRecord* StyleChangeOf(const VXFlintShapeRecord& wrapper) {
    if (wrapper.Kind != VXFlintShapeRecord::kStyleChange || wrapper.Record == nullptr) return nullptr;
    if (!Is<VXFlintShapeStyleChangeRecord>(*wrapper.Record)) return nullptr;
    return static_cast<VXFlintShapeStyleChangeRecord*>(wrapper.Record);
}

}  // namespace

VXFlintShapeRecord::VXFlintShapeRecord(std::unique_ptr<VXFlintShapeRecordBase> record)
    : Record(record.release()), Kind(KindOf(Record)) {}

VXFlintShapeRecord::VXFlintShapeRecord(const VXFlintShapeRecord& other)
    : Record(CopyOf(other.Record).release()) {
    CopyFields(other, *this);
}

VXFlintShapeRecord::VXFlintShapeRecord(VXFlintShapeRecord&& other) noexcept
    : Record(std::exchange(other.Record, nullptr)) {
    CopyFields(other, *this);
}

VXFlintShapeRecord& VXFlintShapeRecord::operator=(VXFlintShapeRecord other) noexcept {
    std::swap(Record, other.Record);
    CopyFields(other, *this);
    return *this;
}

VXFlintShapeRecord::~VXFlintShapeRecord() { delete Record; }

VXFlintShapeRecordBase& VXFlintShapeRecord::Take(std::unique_ptr<VXFlintShapeRecordBase> record) {
    delete Record;
    Record = record.release();
    return *Record;
}

/// Makes the record of a class that is known here, so that its load needs no look-up.
template <typename Edge>
VXErrorCodeEnum VXFlintShapeRecord::LoadEdge(VXBitStream& in) {
    return static_cast<Edge&>(Take(std::make_unique<Edge>())).LoadFromStream(in);
}

VXErrorCodeEnum VXFlintShapeRecord::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadVXBool16(IsEdge));
    if (IsEdge != 0) {
        unsigned int isStraight = 0;
        VX_RETURN_IF_FAILED(in.ReadBits(1, isStraight));
        Kind = isStraight != 0 ? kStraightEdge : kCurvedEdge;
        return isStraight != 0 ? LoadEdge<VXFlintStraightEdgeRecord>(in)
                               : LoadEdge<VXFlintCurvedEdgeRecord>(in);
    }
    unsigned int flags = 0;
    VX_RETURN_IF_FAILED(in.ReadBits(5, flags));
    if (flags != 0) {
        Take(std::make_unique<VXFlintShapeStyleChangeRecord>(NumFillBits, NumLineBits, UseAlpha,
                                                             Supports255Plus, IsLineStyle2));
        Kind = kStyleChange;
    } else {
        Take(std::make_unique<VXFlintShapeEndRecord>());
        Kind = kEnd;
    }
    Record->StateNewStyles = static_cast<short>(flags >> 4 & 1);
    Record->StateLineStyle = static_cast<short>(flags >> 3 & 1);
    Record->StateFillStyle1 = static_cast<short>(flags >> 2 & 1);
    Record->StateFillStyle0 = static_cast<short>(flags >> 1 & 1);
    Record->StateMoveTo = static_cast<short>(flags & 1);
    VX_RETURN_IF_FAILED(Record->LoadFromStream(in));
    TakeWidths();
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintShapeRecord::DumpToStream(VXBitStream& out) {
    if (Record == nullptr) return kVXFailure;
    VX_RETURN_IF_FAILED(Record->DumpToStream(out));
    TakeWidths();
    return kVXSuccess;
}

void VXFlintShapeRecord::TakeWidths() {
    if (const VXFlintShapeStyleChangeRecord* change = StyleChangeOf(*this)) {
        NumFillBits = change->NewNumFillBits;
        NumLineBits = change->NewNumLineBits;
    }
}

void VXFlintShapeRecord::UpdateReferenceIDs(VXFlintIDMap* map) {
    if (VXFlintShapeStyleChangeRecord* change = StyleChangeOf(*this)) change->UpdateReferenceIDs(map);
}
