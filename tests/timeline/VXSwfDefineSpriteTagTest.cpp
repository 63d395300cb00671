#include "timeline/VXSwfDefineSpriteTag.h"

#include <list>

#include "framework/VXFlintIDMap.h"
#include "support/RecordBytes.h"

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

TEST(VXSwfDefineSpriteTag, ReferencesOfNestedTagsAreFollowed) {
    VXSwfTagSet set;
    VXSwfTag* font = LoadTag(TagBytes(48, Hex("01 00"))).release();
    VXSwfTag* sound = LoadTag(TagBytes(14, Hex("02 00"))).release();
    VXSwfTag* sprite = LoadTag(SpriteBytes("07 00  00 00  82 13 01 00  82 13 02 00  00 00")).release();
    for (VXSwfTag* tag : {font, sound, sprite}) set.AppendTag(tag);
    std::list<VXSwfTag*> list;
    for (int round = 0; round < 2; ++round) {
        sprite->BuildDependencyList(list, &set);
        EXPECT_EQ(list, (std::list<VXSwfTag*>{sound, font, sprite})) << "what it needs comes in front";
    }
    VXFlintIDMap map;
    map.Set(1, 9);
    sprite->UpdateReferenceIDs(nullptr);
    sprite->UpdateReferenceIDs(&map);
    EXPECT_EQ(DumpOf(*sprite), SpriteBytes("07 00  00 00  82 13 09 00  82 13 02 00  00 00"));
}

}  // namespace
