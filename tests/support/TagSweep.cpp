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

Bytes FlippedAt(Bytes bytes, std::size_t bit) {
    bytes[bit / 8] = static_cast<unsigned char>(bytes[bit / 8] ^ 0x80u >> bit % 8);
    return bytes;
}

Bytes Head(const Bytes& bytes, std::size_t size) {
    // A copy of its own size, so that a read behind the end is seen.
    return Bytes(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
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
    for (std::size_t size = 0; size < in.size(); ++size) Survive(Head(in, size), version);
    for (std::size_t bit = 0; bit < in.size() * 8; ++bit) Survive(FlippedAt(in, bit), version);
}

void SweepRecord(const std::string& what, const std::function<RecordSweep()>& make, const Bytes& in,
                 const Bytes& out) {
    SCOPED_TRACE(what);
    const auto survive = [&make](const Bytes& bytes) {
        const RecordSweep record = make();
        VXBitStream stream = StreamOver(bytes);
        VXIgnore(record.load(stream));
        VXBitStream dumped;
        VXIgnore(record.dump(dumped));
    };
    const RecordSweep record = make();
    VXBitStream stream = StreamOver(in);
    EXPECT_EQ(record.load(stream), kVXSuccess);
    for (int round = 0; round < 2; ++round) {
        VXBitStream dumped;
        EXPECT_EQ(record.dump(dumped), kVXSuccess);
        EXPECT_EQ(dumped.FlushBits(), kVXSuccess);
        EXPECT_EQ(BytesOf(dumped), out);
    }
    for (std::size_t size = 0; size < in.size(); ++size) survive(Head(in, size));
    for (std::size_t bit = 0; bit < in.size() * 8; ++bit) survive(FlippedAt(in, bit));
}
