#include "timeline/VXSwfEnableDebugger2Tag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

TEST(VXSwfEnableDebugger2Tag, WritesAReservedWordAndAnEmptyPassword) {
    const auto tag = NewTag<VXSwfEnableDebugger2Tag>(64);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("03 10 00 00 00"));
    EXPECT_EQ(NewTag<VXSwfEnableDebugger2Tag>(64, 1), nullptr) << "raw in a loaded movie";
}
