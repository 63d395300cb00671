#include "graphics/VXFlintShapeRecords.h"

VXFlintShapeRecords::VXFlintShapeRecords(const VXFlintShapeRecords& other)
    : NumFillBits(other.NumFillBits),
      NumLineBits(other.NumLineBits),
      UseAlpha(other.UseAlpha),
      Supports255Plus(other.Supports255Plus),
      IsLineStyle2(other.IsLineStyle2) {
    Records.reserve(other.Records.size());
    for (const auto& record : other.Records) {
        Records.push_back(record == nullptr ? nullptr : std::make_unique<VXFlintShapeRecord>(*record));
    }
}

VXFlintShapeRecords& VXFlintShapeRecords::operator=(const VXFlintShapeRecords& other) {
    return *this = VXFlintShapeRecords(other);
}

VXFlintShapeRecords::~VXFlintShapeRecords() = default;

VXErrorCodeEnum VXFlintShapeRecords::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(in.ReadBits(4, NumFillBits));
    VX_RETURN_IF_FAILED(in.ReadBits(4, NumLineBits));
    unsigned int numFillBits = NumFillBits;
    unsigned int numLineBits = NumLineBits;
    for (;;) {
        VXFlintShapeRecord& record = *Records.emplace_back(std::make_unique<VXFlintShapeRecord>());
        Prepare(record, numFillBits, numLineBits);
        VX_RETURN_IF_FAILED(record.LoadFromStream(in));
        numFillBits = record.NumFillBits;
        numLineBits = record.NumLineBits;
        if (record.Kind == VXFlintShapeRecord::kEnd) break;
    }
    Records.shrink_to_fit();  // a movie has thousands of lists, and few grow after their load
    in.ByteAlignSBits();
    return kVXSuccess;
}

VXErrorCodeEnum VXFlintShapeRecords::DumpToStream(VXBitStream& out) {
    VX_RETURN_IF_FAILED(out.WriteBits(NumFillBits, 4));
    VX_RETURN_IF_FAILED(out.WriteBits(NumLineBits, 4));
    unsigned int numFillBits = NumFillBits;
    unsigned int numLineBits = NumLineBits;
    for (const auto& record : Records) {
        if (record == nullptr) return kVXFailure;
        Prepare(*record, numFillBits, numLineBits);
        VX_RETURN_IF_FAILED(record->DumpToStream(out));
        numFillBits = record->NumFillBits;
        numLineBits = record->NumLineBits;
    }
    return kVXSuccess;
}

void VXFlintShapeRecords::Prepare(VXFlintShapeRecord& record, unsigned int numFillBits,
                                  unsigned int numLineBits) const {
    record.UseAlpha = UseAlpha;
    record.Supports255Plus = Supports255Plus;
    record.IsLineStyle2 = IsLineStyle2;
    record.NumFillBits = numFillBits;
    record.NumLineBits = numLineBits;
}

void VXFlintShapeRecords::AddShapeRecord(const VXFlintShapeRecord& record) {
    Records.push_back(std::make_unique<VXFlintShapeRecord>(record));
}

void VXFlintShapeRecords::AddShapeRecord(VXFlintShapeRecord&& record) {
    Records.push_back(std::make_unique<VXFlintShapeRecord>(std::move(record)));
}

void VXFlintShapeRecords::UpdateReferenceIDs(VXFlintIDMap* map) {
    for (const auto& record : Records) {
        if (record != nullptr) record->UpdateReferenceIDs(map);
    }
}
