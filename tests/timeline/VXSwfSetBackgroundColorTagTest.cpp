#include "timeline/VXSwfSetBackgroundColorTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

TEST(VXSwfSetBackgroundColorTag, WritesAlphaOnlyWhenTheColourWasGivenWithIt) {
    const auto tag = NewTag<VXSwfSetBackgroundColorTag>(9);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("43 02 00 00 00"));
    tag->SetRGBColor(VXFlintRGB(0x11, 0x22, 0x33, 1, 0x44));
    EXPECT_EQ(DumpOf(*tag), Hex("44 02 11 22 33 44"));

    const Bytes wire = Hex("43 02 AA BB CC");
    VXBitStream in = StreamOver(wire);
    EXPECT_EQ(tag->LoadFromStream(in), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), wire) << "a load clears the flag";
}
