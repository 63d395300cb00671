#include "support/Test.h"

namespace {

TEST(VXSwfDefineButtonSoundTag, DumpsWhatItLoads) {
    SweepTag("every field of an info",
             TagBytes(17, Hex("07 00 00 00"
                              "03 00 2F"  // no stop, no multiple is clear; all four flags
                              "01 00 00 00 02 00 00 00 05 00"  // in point, out point, loops
                              "02 0A 00 00 00 00 80 00 40 0B 00 00 00 00 00 00 80"
                              "00 00 04 00 10")));
    // Kept: an info that fails is kept as far as it was read and not reported.
    SweepTag("half a point", TagBytes(17, Hex("07 00 0000 0000 0000 01 00 08 02 01 00 00 00 02 00 03 00 04")),
             TagBytes(17, Hex("07 00 0000 0000 0000 01 00 08 01 01 00 00 00 02 00 03 00")));
    SweepTag("reserved bits of an info are cleared", TagBytes(17, Hex("07 00 01 00 D0 00 00 00 00 00 00")),
             TagBytes(17, Hex("07 00 01 00 10 00 00 00 00 00 00")));
    EXPECT_EQ(NewTag<VXSwfDefineButtonSoundTag>(17, 0), nullptr);
    EXPECT_NE(NewTag<VXSwfDefinitionTag>(17, 0), nullptr) << "a plain definition when made by code";
}

TEST(VXSwfDefineButtonSoundTag, ReplacesButtonAndSounds) {
    VXFlintIDMap map;
    map.Set(7, 70);
    map.Set(3, 30);
    map.Set(5, 0);
    ExpectRenumbered(17, Hex("07 00 00 00 03 00 00 04 00 00 05 00 00"), map,
                     Hex("46 00 00 00 1E 00 00 04 00 00 05 00 00"));
    EXPECT_EQ(map.find(0), map.end()) << "0 is not looked up";
    EXPECT_NE(map.find(4), map.end()) << "an unknown ID enters the map";
}

TEST(VXSwfStartSoundTag, DumpsItsFields) {
    const auto tag = NewTag<VXSwfStartSoundTag>(15);
    EXPECT_EQ(DumpOf(*tag), Hex("C3 03 FF FF 00")) << "before a sound was started";
    tag->SoundInfo.HasEnvelope = 1;
    tag->SoundInfo.EnvPoints = 77;
    tag->SoundInfo.EnvelopeRecords.resize(2);
    tag->SoundInfo.EnvelopeRecords[1].Pos44 = 3;
    EXPECT_EQ(DumpOf(*tag),
              TagBytes(15, Hex("FF FF 08 02  00 00 00 00 00 00 00 00  03 00 00 00 00 00 00 00")))
        << "the list says how many points there are";
    tag->StartSound(5);
    EXPECT_EQ(DumpOf(*tag), Hex("C3 03 05 00 10"));
}

}  // namespace
