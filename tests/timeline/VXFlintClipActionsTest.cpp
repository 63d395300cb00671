#include "support/Test.h"

namespace {

using Flags = VXFlintClipEventFlags;

/// Of a version below 6, and of 6.
template <unsigned char version>
struct Actions : VXFlintClipActions {
    VXErrorCodeEnum LoadFromStream(VXBitStream& in) {
        return VXFlintClipActions::LoadFromStream(in, version);
    }
};

TEST(VXFlintClipActions, DumpsTheFormOfVersion6) {
    SweepRecordOf<Actions<5>>("version 5 grows",
                              Hex("34 12 01 80"              // reserved; all events: Load and DragOver
                                  "01 00 63 00 00 00 06 00"  // on Load; a size that is wrong; play
                                  "00 80 02 00 00 00 07 00"  // on DragOver; stop
                                  "00 00"),
                              Hex("34 12 01 80 00 00"
                                  "01 00 00 00 63 00 00 00 06 00"
                                  "00 80 00 00 02 00 00 00 07 00"
                                  "00 00 00 00"));
    const Bytes six =
        Hex("00 00 00 00 FE FF"                 // every reserved flag, KeyPress and not DragOut
            "00 00 02 00 03 00 00 00 41 07 00"  // on KeyPress of A
            "00 00 00 00");
    SweepRecordOf<Actions<6>>("version 6 stays", six, six);
}

TEST(VXFlintClipEventFlags, StandInTheOrderOfTheWire) {
    const struct {
        short Flags::*flag;
        Bytes bytes;
    } rows[] = {{&Flags::ClipEventUnload, Hex("04 00 00 00")},
                {&Flags::ClipEventData, Hex("00 01 00 00")},
                {&Flags::ClipEventKeyPress, Hex("00 00 02 00")}};
    for (const auto& row : rows) {
        Flags flags;
        flags.*row.flag = 2;  // any value but 0 is a set bit
        EXPECT_EQ(BytesOfRecord(flags), row.bytes);
    }
    Flags flags;
    flags.Reserved1[5] = flags.ClipEventDragOut = flags.Reserved2[0] = 1;
    const Bytes bytes = Hex("80 00");
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(flags.LoadFromStream(in, 5), kVXSuccess);
    EXPECT_EQ(BytesOfRecord(flags), Hex("80 00 00 00")) << "below version 6 the second half is lost";
}

TEST(VXFlintClipActions, KeepWhatWasReadWhole) {
    VXFlintClipActions actions;
    const Bytes cut = Hex("00 00 01 00  01 00 02 00 00 00 07 00  01 00 02 00 00 00 07");
    VXBitStream in = StreamOver(cut);
    EXPECT_EQ(actions.LoadFromStream(in, 5), kVXFailure);
    ASSERT_EQ(actions.ClipActionRecords.size(), 1u) << "the second has no end";
    EXPECT_EQ(actions.ClipActionEndFlag, 1u);
    VXFlintClipActions noEnd;
    in.LoadFromAllocedMem(cut.data(), 13);
    in.SetPosition(0);
    EXPECT_EQ(noEnd.LoadFromStream(in, 5), kVXFailure);
    EXPECT_EQ(noEnd.ClipActionEndFlag, 1u) << "the word read last";
    const Bytes whole = Hex("00 00 01 00  00 80 02 00 00 00 06 00  00 00");
    VXBitStream more = StreamOver(whole);
    EXPECT_EQ(actions.LoadFromStream(more, 5), kVXSuccess);
    EXPECT_EQ(actions.ClipActionRecords.size(), 2u) << "a load appends";
    EXPECT_EQ(actions.ClipActionEndFlag, 0u);
}

TEST(VXFlintClipActions, ShareTheirHandlersWithCopies) {
    auto actions = std::make_unique<VXFlintClipActions>();
    actions->ClipActionRecords.push_back(new VXFlintClipActionRecord);
    actions->ClipActionRecords.push_back(nullptr);
    VXFlintClipActions copy(*actions), other;
    other.ClipActionRecords.push_back(new VXFlintClipActionRecord);
    other = copy;
    actions->ClipActionRecords[0]->KeyCode = 65;
    actions->ClipActionRecords[0]->EventFlags.ClipEventKeyPress = 1;
    const Bytes bytes = BytesOfRecord(*actions);
    actions.reset();
    EXPECT_EQ(BytesOfRecord(copy), bytes);
    copy = VXFlintClipActions();
    EXPECT_EQ(BytesOfRecord(other), bytes);
}

}  // namespace
