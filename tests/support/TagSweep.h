#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

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

/// The same for a record that is loaded into and dumped from copies of `record`, but for dumps without room.
template <typename Record>
void SweepRecord(const std::string& what, const Record& record, const Bytes& in, const Bytes& out) {
    SCOPED_TRACE(what);
    Record loaded(record);
    EXPECT_EQ(LoadInto(loaded, in), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(loaded), out);
    EXPECT_EQ(BytesOfRecord(loaded), out) << "the second dump";
    ForEachDamage(in, [&record](const Bytes& bytes) {
        Record damaged(record);
        VXIgnore(LoadInto(damaged, bytes));
        VXBitStream dumped;
        VXIgnore(damaged.DumpToStream(dumped));
    });
}

/// For a record class with `LoadFromStream(VXBitStream&)` and `DumpToStream(VXBitStream&)`. `prepare` sets up
/// a new record.
template <typename Record>
void SweepRecordOf(
    const std::string& what, const Bytes& in, const Bytes& out,
    const std::function<void(Record&)>& prepare = [](Record&) {}) {
    Record record;
    prepare(record);
    SweepRecord(what, record, in, out);
}
