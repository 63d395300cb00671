#include "timeline/VXSwfRemoveObjectTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

TEST(VXSwfRemoveObjectTag, DumpsWhatItLoads) {
    SweepTag("type 5 names the character", Hex("44 01"     // type 5, 4 bytes
                                               "07 00"     // character 7
                                               "02 00"));  // depth 2
    SweepTag("type 28 does not", Hex("02 07 02 00"));
    SweepTag("bytes behind the depth are dropped", Hex("03 07 02 00 FF"), Hex("02 07 02 00"));
    SweepTag("a long header stays", Hex("3F 07 02 00 00 00 02 00"));
}

TEST(VXSwfRemoveObjectTag, CopiesBothFieldsAndNoHeader) {
    const TagPtr loaded = LoadTag(Hex("7F 01 04 00 00 00 07 00 02 00"));
    const TagPtr copy(loaded->Copy(), &VXSwfTagFactory::DeleteTag);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(DumpOf(*copy), Hex("44 01 07 00 02 00")) << "not through the wire, so the long header is gone";

    const auto built = NewTag<VXSwfRemoveObjectTag>(28);
    built->SetDepth(9);
    built->CharacterId = 4;
    const TagPtr other(built->Copy(), &VXSwfTagFactory::DeleteTag);
    EXPECT_EQ(dynamic_cast<VXSwfRemoveObjectTag&>(*other).CharacterId, 4) << "which type 28 does not carry";
    EXPECT_EQ(DumpOf(*other), Hex("02 07 09 00"));
}

TEST(VXSwfRemoveObjectTag, DescribesItself) {
    VXString text("> ");
    LoadTag(Hex("44 01 07 00 02 00"))->GetTextInfo(text);
    EXPECT_EQ(text.GetUTF8String(), "> TAG_REMOVEOBJECT(5) - Depth=2 - Id(?)=7");
}
