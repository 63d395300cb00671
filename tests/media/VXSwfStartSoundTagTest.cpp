#include "media/VXSwfStartSoundTag.h"

#include <gtest/gtest.h>

#include "support/TagSweep.h"

TEST(VXSwfStartSoundTag, DumpsItsFields) {
    const auto tag = NewTag<VXSwfStartSoundTag>(15);
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(DumpOf(*tag), Hex("C3 03 FF FF 00")) << "before a sound was started";

    tag->SoundInfo.HasEnvelope = 1;
    tag->SoundInfo.EnvPoints = 77;
    for (unsigned int i = 1; i <= 3; ++i) {
        VXFlintSoundEnvelope point;
        point.Pos44 = i;
        tag->SoundInfo.EnvelopeRecords.push_back(point);
    }
    EXPECT_EQ(DumpOf(*tag), TagBytes(15, Hex("FF FF 08 03"
                                             "01 00 00 00 00 00 00 00"
                                             "02 00 00 00 00 00 00 00"
                                             "03 00 00 00 00 00 00 00")))
        << "the list says how many points there are";

    tag->StartSound(5);
    EXPECT_EQ(DumpOf(*tag), Hex("C3 03 05 00 10"));
}

TEST(VXFlintSoundInfo, KeepsTheBitsItReadAndOnlyWholePoints) {
    VXFlintSoundInfo info;
    const Bytes wire = Hex("E8 02 01 00 00 00 02 00 03 00 04 00 00 00 05");
    VXBitStream in = StreamOver(wire);
    EXPECT_EQ(info.LoadFromStream(in), kVXFailure);
    EXPECT_EQ(info.Reserved1, 1);
    EXPECT_EQ(info.Reserved2, 1);
    EXPECT_EQ(info.EnvPoints, 2);
    ASSERT_EQ(info.EnvelopeRecords.size(), 1u);
    EXPECT_EQ(info.EnvelopeRecords[0].RightLevel, 3);
}
