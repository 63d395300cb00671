#include "media/VXSwfDefineButtonSoundTag.h"

#include <gtest/gtest.h>

#include "framework/VXFlintIDMap.h"
#include "framework/VXSwfDefinitionTag.h"
#include "support/TagSweep.h"

TEST(VXSwfDefineButtonSoundTag, DumpsWhatItLoads) {
    SweepTag("no sound, no info", TagBytes(17, Hex("07 00 00 00 00 00 00 00 00 00")));
    SweepTag("every field of an info",
             TagBytes(17, Hex("07 00"
                              "00 00"
                              "03 00 2F"     // no stop, no multiple is clear; all four flags
                              "01 00 00 00"  // in point
                              "02 00 00 00"  // out point
                              "05 00"        // loops
                              "02"           // two points
                              "0A 00 00 00 00 80 00 40"
                              "0B 00 00 00 00 00 00 80"
                              "00 00"
                              "04 00 10")));
    SweepTag("reserved bits of an info are cleared", TagBytes(17, Hex("07 00 01 00 D0 00 00 00 00 00 00")),
             TagBytes(17, Hex("07 00 01 00 10 00 00 00 00 00 00")));
}

TEST(VXSwfDefineButtonSoundTag, IsAPlainDefinitionWhenMadeByCode) {
    EXPECT_EQ(NewTag<VXSwfDefineButtonSoundTag>(17, 0), nullptr);
    EXPECT_NE(NewTag<VXSwfDefinitionTag>(17, 0), nullptr);
}

TEST(VXSwfDefineButtonSoundTag, ReplacesButtonAndSounds) {
    const TagPtr tag = LoadTag(TagBytes(17, Hex("07 00 00 00 03 00 00 04 00 00 05 00 00")));
    VXFlintIDMap map;
    map.Set(7, 70);
    map.Set(3, 30);
    map.Set(5, 0);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(DumpOf(*tag), TagBytes(17, Hex("46 00 00 00 1E 00 00 04 00 00 05 00 00")));
    EXPECT_EQ(map.find(0), map.end()) << "0 is not looked up";
    EXPECT_NE(map.find(4), map.end()) << "an unknown ID enters the map";
}
