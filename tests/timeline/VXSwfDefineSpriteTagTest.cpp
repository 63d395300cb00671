#include "timeline/VXSwfDefineSpriteTag.h"

#include <gtest/gtest.h>

#include <list>

#include "framework/VXFlintIDMap.h"
#include "support/TagSweep.h"

namespace {

Bytes SpriteBytes(const Bytes& body) { return LongTagBytes(39, body); }

TEST(VXSwfDefineSpriteTag, DumpsWhatItLoads) {
    SweepTag("tags and an end tag", SpriteBytes(Hex("07 00"
                                                    "01 00"
                                                    "43 13 01 02 03"
                                                    "40 00"
                                                    "00 00")));
    SweepTag("a sprite in a sprite", SpriteBytes(Join({Hex("07 00"
                                                           "00 00"),
                                                       SpriteBytes(Hex("08 00"
                                                                       "01 00"
                                                                       "40 00"
                                                                       "00 00")),
                                                       Hex("00 00")})));
}

TEST(VXSwfDefineSpriteTag, ALoadAndDumpPutsInOrder) {
    SweepTag("the header becomes long",
             TagBytes(39, Hex("07 00"
                              "00 00"
                              "00 00")),
             SpriteBytes(Hex("07 00"
                             "00 00"
                             "00 00")));
    SweepTag("an end tag is added, and the frames are counted",
             SpriteBytes(Hex("07 00"
                             "09 00"
                             "40 00")),
             SpriteBytes(Hex("07 00"
                             "01 00"
                             "40 00"
                             "00 00")));
    SweepTag("bytes behind the end tag are lost",
             SpriteBytes(Hex("07 00"
                             "00 00"
                             "00 00"
                             "40 00 40 00")),
             SpriteBytes(Hex("07 00"
                             "00 00"
                             "00 00")));
    SweepTag("a nested tag that fails ends the list",
             SpriteBytes(Hex("07 00"
                             "00 00"
                             "40 00"
                             "43 11 01 02 03"
                             "40 00")),
             SpriteBytes(Hex("07 00"
                             "01 00"
                             "40 00"
                             "00 00")));
}

TEST(VXSwfDefineSpriteTag, NeedsAFrameCount) {
    for (const char* body : {"07 00", "07 00 01", "07"}) {
        const auto tag = NewTag<VXSwfDefineSpriteTag>(39);
        const Bytes bytes = TagBytes(39, Hex(body));
        VXBitStream in = StreamOver(bytes);
        EXPECT_EQ(static_cast<VXSwfTag&>(*tag).LoadFromStream(in), kVXFailure);
    }
}

TEST(VXSwfDefineSpriteTag, ANewSpriteIsEmpty) {
    const auto tag = NewTag<VXSwfDefineSpriteTag>(39);
    EXPECT_EQ(DumpOf(*tag), SpriteBytes(Hex("00 00"
                                            "00 00"
                                            "00 00")));
    EXPECT_EQ(tag->GetNumTags(), 0u);
}

/// A tag that cannot be written.
class BrokenTag : public VXSwfTag {
public:
    BrokenTag() : VXSwfTag(VXSwfTagFactory::TAG_METADATA, 1) {}
    VXErrorCodeEnum DumpToStream(VXBitStream&) override { return static_cast<VXErrorCodeEnum>(5); }
};

TEST(VXSwfDefineSpriteTag, NothingIsWrittenWhenANestedTagFails) {
    const TagPtr owner =
        LoadTag(SpriteBytes(Hex("07 00"
                                "00 00"
                                "00 00")));
    auto* tag = dynamic_cast<VXSwfDefineSpriteTag*>(owner.get());
    const unsigned char* kept = tag->GetData();
    tag->AppendTag(new BrokenTag);
    VXBitStream out;
    EXPECT_EQ(owner->DumpToStream(out), static_cast<VXErrorCodeEnum>(5));
    EXPECT_EQ(out.GetSize(), 0u);
    EXPECT_EQ(tag->GetData(), kept);
}

TEST(VXSwfDefineSpriteTag, CopiesAreDeepAndParsed) {
    const TagPtr owner =
        LoadTag(SpriteBytes(Hex("07 00"
                                "01 00"
                                "43 13 01 02 03"
                                "40 00"
                                "00 00")));
    const TagPtr copy(owner->Copy(), &VXSwfTagFactory::DeleteTag);
    auto* sprite = dynamic_cast<VXSwfDefineSpriteTag*>(copy.get());
    ASSERT_NE(sprite, nullptr);
    EXPECT_EQ(sprite->GetNumShowFrameTags(), 1u);
    (*sprite->begin())->SetCharacterId(0xFFFF);
    EXPECT_EQ(DumpOf(*owner), SpriteBytes(Hex("07 00"
                                              "01 00"
                                              "43 13 01 02 03"
                                              "40 00"
                                              "00 00")));
}

TEST(VXSwfDefineSpriteTag, ReferencesOfNestedTagsFollowTheMap) {
    const TagPtr tag =
        LoadTag(SpriteBytes(Hex("07 00"
                                "00 00"
                                "82 13 07 00"
                                "00 00")));
    VXFlintIDMap map;
    map.Set(7, 9);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(DumpOf(*tag), SpriteBytes(Hex("07 00"
                                            "00 00"
                                            "82 13 09 00"
                                            "00 00")));
}

TEST(VXSwfDefineSpriteTag, WhatItNeedsComesInFront) {
    VXSwfTagSet set;
    VXSwfTag* font = LoadTag(TagBytes(48, Hex("01 00"))).release();
    VXSwfTag* sound = LoadTag(TagBytes(14, Hex("02 00"))).release();
    VXSwfTag* sprite = LoadTag(SpriteBytes(Hex("07 00"
                                               "00 00"
                                               "82 13 01 00"
                                               "82 13 02 00"
                                               "00 00")))
                           .release();
    for (VXSwfTag* tag : {font, sound, sprite}) set.AppendTag(tag);
    std::list<VXSwfTag*> list;
    for (int round = 0; round < 2; ++round) {
        sprite->BuildDependencyList(list, &set);
        EXPECT_EQ(list, (std::list<VXSwfTag*>{sound, font, sprite}));
    }
}

}  // namespace
