#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfTag.h"
#include "support/Bytes.h"

using TagPtr = std::unique_ptr<VXSwfTag, void (*)(VXSwfTag*)>;

/// A tag of the factory that deletes itself.
TagPtr MakeTag(unsigned int type, short limitedClasses);
/// The same as a class that the caller expects; null when the factory made another.
template <typename Tag>
std::unique_ptr<Tag> NewTag(unsigned int type, short limitedClasses = 0) {
    VXSwfTag* tag = MakeTag(type, limitedClasses).release();
    auto* made = dynamic_cast<Tag*>(tag);
    if (made == nullptr) VXSwfTagFactory::DeleteTag(tag);
    return std::unique_ptr<Tag>(made);
}
/// What a tag says of itself.
std::string TextOf(VXSwfTag& tag);

/// Loads `bytes` into a record or a tag.
template <typename Record>
VXErrorCodeEnum LoadInto(Record& record, const Bytes& bytes) {
    VXBitStream in = StreamOver(bytes);
    return record.LoadFromStream(in);
}
/// What a dump of a record writes.
template <typename Record>
Bytes BytesOfRecord(Record&& record) {
    VXBitStream out;
    EXPECT_EQ(record.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(out.FlushBits(), kVXSuccess);
    return BytesOf(out);
}

/// Loads `bytes`, header and body, into a tag of the class that a file gives to the type.
TagPtr LoadTag(const Bytes& bytes, unsigned char version = 8);
/// What a dump of a tag, a tag set or a movie writes.
template <typename Dumped>
Bytes DumpOf(Dumped& dumped) {
    return BytesOfRecord(dumped);
}

/// Calls `survive` with `bytes` cut short behind every byte, in a copy of its own size so that a read behind
/// the end is seen, and with every bit flipped.
void ForEachDamage(const Bytes& bytes, const std::function<void(const Bytes&)>& survive);

/// Loads one tag, header and body, dumps it and compares with `out`; dumps it once more to the same bytes.
/// Then breaks it in every way that a sanitizer could mind: cut short behind every byte, with every bit
/// flipped, and dumped into every buffer that is too small, which must fail and leave the kept body in force.
void SweepTag(const std::string& what, const Bytes& in, const Bytes& out, unsigned char version = 8);
inline void SweepTag(const std::string& what, const Bytes& in) { SweepTag(what, in, in); }

/// A tag of this body dumps the second one after it took the IDs of `map`; none follow from a null map.
void ExpectRenumbered(unsigned int type, const Bytes& body, VXFlintIDMap& map, const Bytes& renumbered);

/// Every load from fewer bytes than these fails; what is loaded into is a copy of `record`.
template <typename Record>
void ExpectCutsFail(const Bytes& bytes, const Record& record) {
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        Record cut(record);
        EXPECT_EQ(LoadInto(cut, Head(bytes, size)), kVXFailure) << "from " << size << " bytes";
    }
}

/// Every dump of `record`, which takes `size` bytes, fails where there are fewer. One that is not strict may leave it
/// to the stream to tell.
template <typename Record>
void ExpectShortDumpsFail(Record& record, std::size_t size, bool isStrict = true) {
    for (std::size_t room = 0; room < size; ++room) {
        Bytes buffer(room);
        VXBitStream out = StreamOver(buffer);
        const bool isReported = record.DumpToStream(out) != kVXSuccess || out.FlushBits() != kVXSuccess;
        EXPECT_TRUE(isReported || (!isStrict && out.HasFailed())) << "with room for " << room << " bytes";
    }
}

/// What SweepTag does, for a record that is loaded into copies of `record`. A load from fewer bytes fails, unless the
/// class is not strict.
template <typename Record, bool kIsStrict = true>
void SweepRecord(const std::string& what, const Record& record, const Bytes& in, const Bytes& out) {
    SCOPED_TRACE(what);
    Record loaded(record);
    EXPECT_EQ(LoadInto(loaded, in), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(loaded), out);
    EXPECT_EQ(BytesOfRecord(loaded), out) << "the second dump";
    ExpectShortDumpsFail(loaded, out.size(), kIsStrict);
    if (kIsStrict) ExpectCutsFail(in, record);
    ForEachDamage(in, [&record](const Bytes& bytes) {
        Record damaged(record);
        VXIgnore(LoadInto(damaged, bytes));
        VXBitStream dumped;
        VXIgnore(damaged.DumpToStream(dumped));
    });
}

/// For a record class with `LoadFromStream(VXBitStream&)` and `DumpToStream(VXBitStream&)`. `prepare` sets up
/// a new record.
template <typename Record, bool kIsStrict = true>
void SweepRecordOf(
    const std::string& what, const Bytes& in, const Bytes& out,
    const std::function<void(Record&)>& prepare = [](Record&) {}) {
    Record record;
    prepare(record);
    SweepRecord<Record, kIsStrict>(what, record, in, out);
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
