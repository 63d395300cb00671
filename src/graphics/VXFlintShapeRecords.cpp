#include "graphics/VXFlintShapeRecords.h"

#include "bitstream/VXBitRun_p.h"
#include "bitstream/VXReadField_p.h"

VXFlintShapeRecords::~VXFlintShapeRecords() = default;

VXErrorCodeEnum VXFlintShapeRecords::LoadFromStream(VXBitStream& in) {
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumFillBits));
    VX_RETURN_IF_FAILED(VXReadBits(in, 4, NumLineBits));
    unsigned int numFillBits = NumFillBits;
    unsigned int numLineBits = NumLineBits;
    for (;;) {
        VXFlintShapeRecord& record = Records.Add(std::make_unique<VXFlintShapeRecord>());
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
    VXBitRun run(out);
    run.Add(NumFillBits, 4);
    run.Add(NumLineBits, 4);
    VX_RETURN_IF_FAILED(run.Finish());
    unsigned int numFillBits = NumFillBits;
    unsigned int numLineBits = NumLineBits;
    for (VXFlintShapeRecord* record : Records) {
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
    Records.Add(std::make_unique<VXFlintShapeRecord>(record));
}

void VXFlintShapeRecords::AddShapeRecord(VXFlintShapeRecord&& record) {
    Records.Add(std::make_unique<VXFlintShapeRecord>(std::move(record)));
}

void VXFlintShapeRecords::UpdateReferenceIDs(VXFlintIDMap* map) {
    for (VXFlintShapeRecord* record : Records) {
        if (record != nullptr) record->UpdateReferenceIDs(map);
    }
}
