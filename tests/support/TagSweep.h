#pragma once

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
/// Loads `bytes`, header and body, into a tag of the class that a file gives to the type.
TagPtr LoadTag(const Bytes& bytes, unsigned char version = 8);
/// What a dump of `tag` writes.
Bytes DumpOf(VXSwfTag& tag);

/// Loads one tag, header and body, dumps it and compares with `out`; dumps it once more to the same bytes.
/// Then breaks it in every way that a sanitizer could mind: cut short behind every byte, with every bit
/// flipped, and dumped into every buffer that is too small, which must fail and leave the kept body in force.
void SweepTag(const std::string& what, const Bytes& in, const Bytes& out, unsigned char version = 8);
inline void SweepTag(const std::string& what, const Bytes& in) { SweepTag(what, in, in); }

/// The same for a record: `make` gives a new object with a `Load` and a `Dump`.
struct RecordSweep {
    std::function<VXErrorCodeEnum(VXBitStream&)> load;
    std::function<VXErrorCodeEnum(VXBitStream&)> dump;
};
void SweepRecord(const std::string& what, const std::function<RecordSweep()>& make, const Bytes& in,
                 const Bytes& out);

/// For a record class with `LoadFromStream(VXBitStream&)` and `DumpToStream(VXBitStream&)`. `prepare` sets up
/// a new record.
template <typename Record>
void SweepRecordOf(
    const std::string& what, const Bytes& in, const Bytes& out,
    const std::function<void(Record&)>& prepare = [](Record&) {}) {
    SweepRecord(
        what,
        [&prepare] {
            auto record = std::make_shared<Record>();
            prepare(*record);
            return RecordSweep{[record](VXBitStream& stream) { return record->LoadFromStream(stream); },
                               [record](VXBitStream& stream) { return record->DumpToStream(stream); }};
        },
        in, out);
}
