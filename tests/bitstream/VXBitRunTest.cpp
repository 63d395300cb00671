#include <random>

#include "bitstream/VXBitRun_p.h"
#include "support/Test.h"

TEST(VXBitRun, WritesWhatTheFieldsAloneWouldWrite) {
    std::mt19937 engine(11);
    const auto random = [&] { return static_cast<unsigned int>(engine()); };
    for (int round = 0; round < 3000; ++round) {
        VXBitStream alone;
        VXBitStream together;
        // Every third is written over old bytes.
        const unsigned int oldBytes = round % 3 == 0 ? 700 : 0;
        for (VXBitStream* stream : {&alone, &together}) {
            ASSERT_EQ(stream->EnsureSize(oldBytes) != 0 && stream->SetPosition(0) != 0, true);
        }
        VXBitRun run(together);
        for (int field = 0; field < 90; ++field) {
            const unsigned int count = random() % 12 == 0 ? random() % 36 : random() % 18;
            unsigned int value = random();
            if (random() % 16 != 0 && count < 32)
                value &= (1u << count) - 1;  // else it spoils what is in front
            if (random() % 2 == 0) {
                EXPECT_EQ(alone.WriteBits(value, count), kVXSuccess);
                run.Add(value, count);
            } else {
                if (count > 0 && count < 32) value -= 1u << (count - 1);
                const auto number = static_cast<int>(value);
                EXPECT_EQ(alone.WriteSBits(number, count), kVXSuccess);
                run.AddSigned(number, count);
            }
            if (random() % 20 == 0) {
                EXPECT_EQ(run.Finish(), kVXSuccess);
            }
        }
        EXPECT_EQ(run.Finish(), kVXSuccess);
        EXPECT_EQ(alone.FlushBits(), kVXSuccess);
        EXPECT_EQ(together.FlushBits(), kVXSuccess);
        ASSERT_EQ(BytesOf(alone), BytesOf(together)) << "round " << round;
    }
}
