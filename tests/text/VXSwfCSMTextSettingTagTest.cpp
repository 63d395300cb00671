#include "text/VXSwfCSMTextSettingTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

namespace {

TEST(VXSwfCSMTextSettingTag, DumpsItsFields) {
    const auto tag = NewTag<VXSwfCSMTextSettingTag>(74);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), TagBytes(74, Hex("00 00  50  00 00 00 00  00 00 00 00  00")));
    tag->m_TextId = 0x0102;
    tag->m_UseType = 2;
    tag->m_GridFit = 5;
    tag->m_Thickness = 0x3F800000;
    tag->m_Sharpness = 0xC0000001;
    EXPECT_EQ(DumpOf(*tag), TagBytes(74, Hex("02 01  A8  00 00 80 3F  01 00 00 C0  00")));
}

TEST(VXSwfCSMTextSettingTag, ALoadLeavesTheFieldsAlone) {
    const auto tag = NewTag<VXSwfCSMTextSettingTag>(74);
    ASSERT_NE(tag, nullptr);
    const Bytes bytes = TagBytes(74, Hex("07 00  48  00 00 00 00  00 00 00 00  00"));
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(tag->LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(tag->GetReferencedID(), 7) << "the body is kept";
    EXPECT_EQ(DumpOf(*tag), TagBytes(74, Hex("00 00  50  00 00 00 00  00 00 00 00  00")));
    EXPECT_EQ(tag->GetReferencedID(), 7) << "the body is in force again";
    Bytes room(13);
    VXBitStream small = StreamOver(room);
    EXPECT_NE(tag->DumpToStream(small), kVXSuccess);
    EXPECT_EQ(tag->GetReferencedID(), 7) << "after a dump that failed";
}

}  // namespace
