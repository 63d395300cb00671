#include "timeline/VXSwfFileAttributesTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

namespace {

TEST(VXSwfFileAttributesTag, KeepsThreeOfItsBits) {
    SweepTag("metadata, version 3 scripts, network", TagBytes(69, Hex("19 00 00 00")));
    SweepTag("what a load skips is clear", TagBytes(69, Hex("FF FF FF FF")),
             TagBytes(69, Hex("19 00 00 00")));
    SweepTag("bytes behind the flags go", TagBytes(69, Hex("08 00 00 00 01")),
             TagBytes(69, Hex("08 00 00 00")));
    SweepTag("the long form stays", LongTagBytes(69, Hex("01 00 00 00")));
}

TEST(VXSwfFileAttributesTag, WritesEveryFlagThatIsSetByCode) {
    const auto tag = NewTag<VXSwfFileAttributesTag>(69);
    ASSERT_NE(tag, nullptr);
    tag->SetHasDirectBlit(2);
    EXPECT_EQ(DumpOf(*tag), TagBytes(69, Hex("40 00 00 00")));
    tag->SetUseGPU(1);
    tag->SetNetworkAccess(-1);
    EXPECT_EQ(DumpOf(*tag), TagBytes(69, Hex("61 00 00 00")));
    tag->Reserved0 = tag->Reserved5 = tag->Reserved6 = 1;
    tag->SetHasMetaData(1);
    tag->SetHasAS3(1);
    EXPECT_EQ(DumpOf(*tag), TagBytes(69, Hex("79 00 00 00")));
}

TEST(VXSwfFileAttributesTag, EveryOneOf32BitsMustBeThere) {
    const auto tag = NewTag<VXSwfFileAttributesTag>(69);
    const Bytes bytes = TagBytes(69, Hex("18 00 00"));
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(tag->LoadFromStream(in), kVXFailure);
    EXPECT_EQ(tag->GetHasAS3(), 1) << "fields read by then keep their values";
}

}  // namespace
