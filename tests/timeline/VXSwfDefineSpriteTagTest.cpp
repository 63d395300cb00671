#include "support/Test.h"

namespace {

Bytes SpriteBytes(const char* body) { return LongTagBytes(39, Hex(body)); }

const Bytes kSprite = SpriteBytes("07 00  01 00  43 13 01 02 03  40 00  00 00");

TEST(VXSwfDefineSpriteTag, DumpsWhatItLoadsInOrder) {
    SweepTag("tags and an end tag", kSprite);
    SweepTag("a sprite in a sprite",
             SpriteBytes("07 00  00 00  FF 09 08 00 00 00  08 00 01 00 40 00 00 00  00 00"));
    SweepTag("the header becomes long", TagBytes(39, Hex("07 00 00 00 00 00")),
             SpriteBytes("07 00 00 00 00 00"));
    SweepTag("an end tag is added, and the frames are counted", SpriteBytes("07 00  09 00  40 00"),
             SpriteBytes("07 00  01 00  40 00  00 00"));
    SweepTag("bytes behind the end tag are lost", SpriteBytes("07 00  00 00  00 00  40 00 40 00"),
             SpriteBytes("07 00  00 00  00 00"));
    SweepTag("Kept: a nested tag that fails ends the list",
             SpriteBytes("07 00  00 00  40 00  43 11 01 02 03  40 00"),
             SpriteBytes("07 00  01 00  40 00  00 00"));
    for (const char* body : {"07 00", "07 00 01", "07"}) {
        const auto tag = NewTag<VXSwfDefineSpriteTag>(39);
        EXPECT_EQ(LoadInto<VXSwfTag>(*tag, TagBytes(39, Hex(body))), kVXFailure) << "a frame count is wanted";
    }
    EXPECT_EQ(DumpOf(*NewTag<VXSwfDefineSpriteTag>(39)), SpriteBytes("00 00 00 00 00 00"));
}

/// A tag that cannot be written.
class BrokenTag : public VXSwfTag {
public:
    BrokenTag() : VXSwfTag(VXSwfTagFactory::TAG_METADATA, 1) {}
    VXErrorCodeEnum DumpToStream(VXBitStream&) override { return static_cast<VXErrorCodeEnum>(5); }
};

TEST(VXSwfDefineSpriteTag, NothingIsWrittenWhenANestedTagFails) {
    const TagPtr tag = LoadTag(kSprite);
    const unsigned char* kept = tag->GetData();
    dynamic_cast<VXSwfDefineSpriteTag&>(*tag).AppendTag(new BrokenTag);
    VXBitStream out;
    EXPECT_EQ(tag->DumpToStream(out), static_cast<VXErrorCodeEnum>(5));
    EXPECT_EQ(out.GetSize(), 0u);
    EXPECT_EQ(tag->GetData(), kept);
}

TEST(VXSwfDefineSpriteTag, CopiesAreDeepAndParsed) {
    const TagPtr tag = LoadTag(kSprite);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    auto& sprite = dynamic_cast<VXSwfDefineSpriteTag&>(*copy);
    EXPECT_EQ(sprite.GetNumShowFrameTags(), 1u);
    (*sprite.begin())->SetCharacterId(0xFFFF);
    EXPECT_EQ(DumpOf(*tag), kSprite);
}

}  // namespace
