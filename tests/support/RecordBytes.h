#pragma once

#include "support/TagSweep.h"

/// Every load from fewer bytes than these fails; what is loaded into is a copy of `record`.
template <typename Record>
void ExpectCutsFail(const Bytes& bytes, const Record& record = {}) {
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Record cut = record;
        EXPECT_EQ(LoadInto(cut, Head(bytes, size)), kVXFailure) << size << " bytes";
    }
}

/// Every dump into fewer bytes than it takes fails. Only for records that end with whole bytes: a lost byte
/// of bits goes unnoticed.
template <typename Record>
void ExpectShortDumpsFail(Record&& record) {
    const std::size_t size = BytesOfRecord(record).size();
    for (std::size_t room = 0; room < size; ++room) {
        Bytes buffer(room);
        VXBitStream out = StreamOver(buffer);
        EXPECT_EQ(record.DumpToStream(out), kVXFailure) << "room for " << room << " bytes";
    }
}

/// An empty record starts and ends on a byte, whatever bits stand before and behind it.
template <typename Record>
void ExpectAlignedDump() {
    VXBitStream out;
    EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
    EXPECT_EQ(Record().DumpToStream(out), kVXSuccess);
    EXPECT_EQ(out.WriteBits(1, 1), kVXSuccess);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Hex("80 00 80"));
}

/// A load drops the rest of the byte in front, and what it does not need of the last byte of `bytes`.
template <typename Record>
void ExpectAlignedLoad(const Bytes& bytes) {
    const Bytes amid = Join({Hex("FF"), bytes, Hex("AA")});
    VXBitStream in = StreamOver(amid);
    unsigned int bits = 0;
    EXPECT_EQ(in.ReadBits(1, bits), kVXSuccess);
    Record record;
    EXPECT_EQ(record.LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(in.ReadBits(8, bits), kVXSuccess);
    EXPECT_EQ(bits, 0xAAu);
}
