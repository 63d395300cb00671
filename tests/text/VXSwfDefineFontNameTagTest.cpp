#include "text/VXSwfDefineFontNameTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

namespace {

TEST(VXSwfDefineFontNameTag, DumpsItsFields) {
    const TagPtr tag = MakeTag(88, 0);
    auto* name = dynamic_cast<VXSwfDefineFontNameTag*>(tag.get());
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(DumpOf(*name), TagBytes(88, Hex("FF FF 00 00")));
    EXPECT_EQ(name->AddFontInfo(0x0203, "Ab", "(c)"), kVXSuccess);
    EXPECT_EQ(DumpOf(*name), TagBytes(88, Hex("03 02  41 62 00  28 63 29 00")));
    EXPECT_EQ(name->AddFontInfo(1, "\xC3\xA9", ""), kVXSuccess);
    EXPECT_EQ(DumpOf(*name), TagBytes(88, Hex("01 00  C3 00  00"))) << "one unit, so one of its two bytes";
}

TEST(VXSwfDefineFontNameTag, ALoadLeavesTheFieldsAlone) {
    const TagPtr tag = MakeTag(88, 0);
    const Bytes bytes = TagBytes(88, Hex("07 00 41 00 00"));
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(tag->LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), TagBytes(88, Hex("FF FF 00 00")));
    EXPECT_EQ(tag->GetReferencedID(), 7) << "the body is kept";
}

}  // namespace
