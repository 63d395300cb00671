#include "timeline/VXSwfFreeCharacterTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

TEST(VXSwfFreeCharacterTag, NamesTheCharacterThatCodeGaveIt) {
    const auto tag = NewTag<VXSwfFreeCharacterTag>(3);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("C2 00 00 00"));
    tag->SetReferencedID(0x1234);
    EXPECT_EQ(tag->GetReferencedID(), 0x1234);
    EXPECT_EQ(DumpOf(*tag), Hex("C2 00 34 12"));
}

TEST(VXSwfFreeCharacterTag, ReadsNothing) {
    const auto tag = NewTag<VXSwfFreeCharacterTag>(3);
    const Bytes bytes = Hex("C2 00 09 00");
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(tag->LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(tag->GetReferencedID(), 0) << "not the ID in the body";
    EXPECT_EQ(DumpOf(*tag), Hex("C2 00 00 00"));
    SweepTag("in a loaded movie the type is raw", bytes);
}
