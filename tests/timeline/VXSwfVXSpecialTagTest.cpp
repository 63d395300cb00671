#include "timeline/VXSwfVXSpecialTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

TEST(VXSwfVXSpecialTag, HasADumpOfItsBytesAlone) {
    const auto tag = NewTag<VXSwfVXSpecialTag>(997);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("40 F9")) << "no data, no body";
    const Bytes data = Hex("01 02 03 04 05");
    EXPECT_EQ(tag->SetSpecificData(data.data(), 5), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), Hex("45 F9 01 02 03 04 05"));
    tag->SetIsLongTag(1);
    EXPECT_EQ(DumpOf(*tag), Hex("7F F9 05 00 00 00 01 02 03 04 05"));
}

TEST(VXSwfVXSpecialTag, TakesItsOwnBytesAgain) {
    const auto tag = NewTag<VXSwfVXSpecialTag>(999);
    const Bytes data = Hex("01 02 03 04 05");
    EXPECT_EQ(tag->SetSpecificData(data.data(), 5), kVXSuccess);
    EXPECT_EQ(tag->SetSpecificData(tag->GetSpecificData() + 3, 2), kVXSuccess);
    EXPECT_EQ(tag->SetSpecificData(data.data(), 0), kVXSuccess) << "changes nothing";
    EXPECT_EQ(tag->SetSpecificData(nullptr, 7), kVXFailure) << "changes nothing";
    EXPECT_EQ(DumpOf(*tag), Hex("C2 F9 04 05"));
}

TEST(VXSwfVXSpecialTag, CopiesItsBytes) {
    auto tag = NewTag<VXSwfVXSpecialTag>(996);
    const Bytes data = Hex("AA BB");
    EXPECT_EQ(tag->SetSpecificData(data.data(), 2), kVXSuccess);
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    tag.reset();
    EXPECT_EQ(DumpOf(*copy), Hex("02 F9 AA BB"));
}

TEST(VXSwfVXSpecialTag, IsRawInALoadedMovie) {
    const TagPtr tag = LoadTag(Hex("42 F9 AA BB"));
    EXPECT_EQ(dynamic_cast<VXSwfVXSpecialTag*>(tag.get()), nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("42 F9 AA BB"));
}
