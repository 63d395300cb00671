#include "support/TagSweep.h"

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
    TextOf(*tag);
    VXBitStream out;
    VXIgnore(tag->DumpToStream(out));
    VXSwfTagFactory::DeleteTag(tag->Copy());
}

}  // namespace

void ForEachDamage(const Bytes& bytes, const std::function<void(const Bytes&)>& survive) {
    for (std::size_t size = 0; size < bytes.size(); ++size) survive(Head(bytes, size));
    Bytes flipped = Head(bytes, bytes.size());
    for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
        const auto flip = static_cast<unsigned char>(0x80u >> bit % 8);
        flipped[bit / 8] ^= flip;
        survive(flipped);
        flipped[bit / 8] ^= flip;
    }
}

std::string TextOf(VXSwfTag& tag) {
    VXString text;
    tag.GetTextInfo(text);
    return text.GetUTF8String();
}

TagPtr LoadTag(const Bytes& bytes, unsigned char version) {
    TagPtr tag = MakeTag(TypeOf(bytes), 1);
    tag->SetFLVersion(version);
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(tag->LoadFromStream(in), kVXSuccess);
    return tag;
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
        EXPECT_TRUE(tag->DumpToStream(small) != kVXSuccess || small.HasFailed())
            << "with room for " << room << " bytes";
        EXPECT_EQ(tag->GetData(), kept) << "after a dump that failed at byte " << room;
    }
    ForEachDamage(in, [version](const Bytes& bytes) { Survive(bytes, version); });
}

void ExpectRenumbered(unsigned int type, const Bytes& body, VXFlintIDMap& map, const Bytes& renumbered) {
    const TagPtr tag = LoadTag(TagBytes(type, body));
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    tag->UpdateReferenceIDs(nullptr);
    EXPECT_EQ(DumpOf(*tag), DumpOf(*copy));
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(DumpOf(*tag), TagBytes(type, renumbered));
    EXPECT_EQ(DumpOf(*copy), TagBytes(type, body)) << "a copy keeps its IDs";
}
