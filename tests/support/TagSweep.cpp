#include "support/TagSweep.h"

#include <gtest/gtest.h>

TagPtr MakeTag(unsigned int type, short limitedClasses) {
    return {
        VXSwfTagFactory::CreateTagOfType(static_cast<VXSwfTagFactory::enuTagType>(type), limitedClasses, 0),
        &VXSwfTagFactory::DeleteTag};
}

namespace {

unsigned int TypeOf(const Bytes& bytes) { return (bytes[0] | static_cast<unsigned int>(bytes[1]) << 8) >> 6; }

/// Loads and dumps what may be damaged; only the sanitizers judge.
void Survive(const Bytes& bytes, unsigned char version) {
    if (bytes.size() < 2) return;
    const TagPtr tag = MakeTag(TypeOf(bytes), 1);
    tag->SetFLVersion(version);
    VXBitStream in = StreamOver(bytes);
    VXIgnore(tag->LoadFromStream(in));
    VXString text;
    tag->GetTextInfo(text);
    VXBitStream out;
    VXIgnore(tag->DumpToStream(out));
    VXSwfTagFactory::DeleteTag(tag->Copy());
}

/// Cut short behind every byte, in a copy of its own size so that a read behind the end is seen, and with
/// every bit flipped.
void ForEachDamage(const Bytes& bytes, const std::function<void(const Bytes&)>& survive) {
    for (auto end = bytes.begin(); end != bytes.end(); ++end) survive(Bytes(bytes.begin(), end));
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        Bytes flipped = bytes;
        flipped[bit / 8] = static_cast<unsigned char>(flipped[bit / 8] ^ 0x80u >> bit % 8);
        survive(flipped);
    }
}

}  // namespace

TagPtr LoadTag(const Bytes& bytes, unsigned char version) {
    TagPtr tag = MakeTag(TypeOf(bytes), 1);
    tag->SetFLVersion(version);
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(tag->LoadFromStream(in), kVXSuccess);
    return tag;
}

Bytes DumpOf(VXSwfTag& tag) {
    VXBitStream out;
    EXPECT_EQ(tag.DumpToStream(out), kVXSuccess);
    return BytesOf(out);
}

void SweepTag(const std::string& what, const Bytes& in, const Bytes& out, unsigned char version) {
    SCOPED_TRACE(what);
    const TagPtr tag = LoadTag(in, version);
    const unsigned char* kept = tag->GetData();
    EXPECT_EQ(DumpOf(*tag), out);
    EXPECT_EQ(DumpOf(*tag), out) << "the second dump";
    EXPECT_EQ(tag->GetData(), kept) << "the body kept from the load is in force again";
    for (std::size_t room = 0; room < out.size(); ++room) {
        Bytes buffer(room);
        VXBitStream small = StreamOver(buffer);
        EXPECT_NE(tag->DumpToStream(small), kVXSuccess) << "with room for " << room << " bytes";
        EXPECT_EQ(tag->GetData(), kept) << "after a dump that failed at byte " << room;
    }
    ForEachDamage(in, [version](const Bytes& bytes) { Survive(bytes, version); });
}

void SweepRecord(const std::string& what, const std::function<RecordSweep()>& make, const Bytes& in,
                 const Bytes& out) {
    SCOPED_TRACE(what);
    const RecordSweep record = make();
    VXBitStream stream = StreamOver(in);
    EXPECT_EQ(record.load(stream), kVXSuccess);
    for (int round = 0; round < 2; ++round) {
        VXBitStream dumped;
        EXPECT_EQ(record.dump(dumped), kVXSuccess);
        EXPECT_EQ(dumped.FlushBits(), kVXSuccess);
        EXPECT_EQ(BytesOf(dumped), out);
    }
    ForEachDamage(in, [&make](const Bytes& bytes) {
        const RecordSweep damaged = make();
        VXBitStream source = StreamOver(bytes);
        VXIgnore(damaged.load(source));
        VXBitStream dumped;
        VXIgnore(damaged.dump(dumped));
    });
}
