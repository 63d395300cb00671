#include "support/Test.h"

namespace {

TEST(VXSwfDoActionTag, DumpsWhatItLoads) {
    SweepTag("a script", TagBytes(12, Hex("96 0300 000000 07 00")));
    SweepTag("a long header on a short body", LongTagBytes(12, Hex("96 0600 000000000000 00")));
    SweepTag("bytes behind the end", TagBytes(12, Hex("07 00 AABB")), TagBytes(12, Hex("07 00")));
    EXPECT_EQ(DumpOf(*LoadTag(Hex("00 03"))), Hex("01 03 00")) << "an empty body gets its end";
    const auto tag = NewTag<VXSwfDoActionTag>(12, 1);
    EXPECT_EQ(LoadInto(*tag, TagBytes(12, Hex("07 17"))), kVXFailure) << "without an end";
    EXPECT_EQ(DumpOf(*tag), TagBytes(12, Hex("07 17 00")));
}

TEST(VXSwfDoActionTag, ListIsTheTagsOwn) {
    const auto tag = NewTag<VXSwfDoActionTag>(12);
    ASSERT_EQ(LoadInto(*tag, TagBytes(12, Hex("96 0200 6162 00"))), kVXSuccess);
    EXPECT_EQ(tag->PushActionRecord(nullptr), kVXSuccess);
    EXPECT_EQ(tag->PushActionRecord(new VXFlintActionRecord(0x17)), kVXSuccess);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    VXFlintActionRecords* list = nullptr;
    tag->GetActionRecords(&list);
    int delta = 0;
    EXPECT_NE((*list->begin())->ReplaceString("ab", "xyz", delta), 0);
    EXPECT_EQ(DumpOf(*tag), TagBytes(12, Hex("96 0300 78797A 17 00"))) << "under the length that it now has";
    EXPECT_EQ(DumpOf(*copy), TagBytes(12, Hex("96 0200 6162 17 00")));
    const std::unique_ptr<VXSwfActionRecordContainer> container = NewTag<VXSwfDoActionTag>(12);
    EXPECT_EQ(container->PushActionRecord(new VXFlintActionRecord(0x17)), kVXSuccess)
        << "either base deletes the tag";
}

TEST(VXSwfDoInitActionTag, DumpsWhatItLoads) {
    SweepTag("a script", TagBytes(59, Hex("FFFF 96 0300 000000 07 00")));
    EXPECT_EQ(DumpOf(*LoadTag(Hex("C0 0E"))), Hex("C3 0E 0000 00")) << "of a body of no bytes";
    for (const char* body : {"05", "0500", "0500 07"}) {
        EXPECT_EQ(LoadInto(*MakeTag(59, 1), TagBytes(59, Hex(body))), kVXFailure) << body;
    }
}

TEST(VXSwfDoInitActionTag, RefersToItsSprite) {
    const TagPtr loaded = LoadTag(TagBytes(59, Hex("0500 07 00")));
    auto& tag = dynamic_cast<VXSwfDoInitActionTag&>(*loaded);
    EXPECT_EQ(tag.PushActionRecord(new VXFlintActionRecord(0x17)), kVXSuccess);
    VXFlintIDMap map;
    map.Set(5, 9);
    tag.UpdateReferenceIDs(&map);
    tag.UpdateReferenceIDs(&map);
    tag.UpdateReferenceIDs(nullptr);
    EXPECT_EQ(tag.GetReferencedID(), 9) << "an ID without a new one stays";
    EXPECT_EQ(map.size(), 2u) << "Kept: the search for 9 has entered it";
    EXPECT_EQ(tag.HasReferencedID(), 0) << "the reference is not the raw body's";
    EXPECT_EQ(tag.GetCharacterId(), 0);
    const TagPtr copy(tag.Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(tag.SetSpriteReferenceID(3), kVXSuccess);
    EXPECT_EQ(DumpOf(tag), TagBytes(59, Hex("0300 07 17 00")));
    EXPECT_EQ(DumpOf(*copy), TagBytes(59, Hex("0900 07 17 00")));
}

}  // namespace
