#include "timeline/VXFlintClipActions.h"

#include <gtest/gtest.h>

#include <memory>

#include "support/TagSweep.h"

namespace {

void SweepActions(const char* what, unsigned char version, const Bytes& in, const Bytes& out) {
    SweepRecord(
        what,
        [version] {
            auto actions = std::make_shared<VXFlintClipActions>();
            return RecordSweep{[=](VXBitStream& stream) { return actions->LoadFromStream(stream, version); },
                               [=](VXBitStream& stream) { return actions->DumpToStream(stream); }};
        },
        in, out);
}

Bytes DumpOf(const VXFlintClipActions& actions) {
    VXBitStream out;
    EXPECT_EQ(actions.DumpToStream(out), kVXSuccess);
    return BytesOf(out);
}

VXErrorCodeEnum Load(VXFlintClipActions& actions, unsigned char version, const Bytes& bytes) {
    VXBitStream in = StreamOver(bytes);
    return actions.LoadFromStream(in, version);
}

}  // namespace

TEST(VXFlintClipActions, DumpsTheFormOfVersion6) {
    SweepActions("version 5 grows", 5,
                 Hex("34 12"        // reserved
                     "01 80"        // all events: Load and DragOver
                     "01 00"        // on Load
                     "63 00 00 00"  // a size that is wrong
                     "06 00"        // play
                     "00 80"        // on DragOver
                     "02 00 00 00"  //
                     "07 00"        // stop
                     "00 00"),      //
                 Hex("34 12"
                     "01 80 00 00"
                     "01 00 00 00"
                     "63 00 00 00"
                     "06 00"
                     "00 80 00 00"
                     "02 00 00 00"
                     "07 00"
                     "00 00 00 00"));
    const Bytes six =
        Hex("00 00"
            "00 00 FE FF"  // every reserved flag, KeyPress and not DragOut
            "00 00 02 00"  // on KeyPress
            "03 00 00 00"  //
            "41"           // of A
            "07 00"        //
            "00 00 00 00");
    SweepActions("version 6 stays", 6, six, six);
    SweepActions("no handlers", 8, Hex("34 12 80 00 00 01 00 00 00 00"),
                 Hex("34 12 80 00 00 01 00 00 00 00"));
}

TEST(VXFlintClipEventFlags, StandInTheOrderOfTheWire) {
    const auto bitOf = [](short VXFlintClipEventFlags::*flag) {
        VXFlintClipEventFlags flags;
        flags.*flag = 2;  // any value but 0 is a set bit
        VXBitStream out;
        EXPECT_EQ(flags.DumpToStream(out), kVXSuccess);
        return BytesOf(out);
    };
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventKeyUp), Hex("80 00 00 00"));
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventUnload), Hex("04 00 00 00"));
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventLoad), Hex("01 00 00 00"));
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventReleaseOutside), Hex("00 10 00 00"));
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventData), Hex("00 01 00 00"));
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventKeyPress), Hex("00 00 02 00"));
    EXPECT_EQ(bitOf(&VXFlintClipEventFlags::ClipEventDragOut), Hex("00 00 01 00"));
}

TEST(VXFlintClipEventFlags, LoseTheirSecondHalfBelowVersion6) {
    VXFlintClipEventFlags flags;
    flags.Reserved1[5] = 1;
    flags.ClipEventDragOut = 1;
    flags.Reserved2[0] = 1;
    const Bytes bytes = Hex("80 00");
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(flags.LoadFromStream(in, 5), kVXSuccess);
    VXBitStream out;
    EXPECT_EQ(flags.DumpToStream(out), kVXSuccess);
    EXPECT_EQ(BytesOf(out), Hex("80 00 00 00"));
}

TEST(VXFlintClipActions, KeepWhatWasReadWhole) {
    VXFlintClipActions actions;
    EXPECT_EQ(Load(actions, 5, Hex("00 00 01 00  01 00 02 00 00 00 07 00  01 00 02 00 00 00 07")),
              kVXFailure);
    ASSERT_EQ(actions.ClipActionRecords.size(), 1u) << "the second has no end";
    EXPECT_EQ(actions.ClipActionEndFlag, 1u);
    EXPECT_EQ(Load(actions, 5, Hex("00 00 01 00  00 80 02 00 00 00 06 00  00 00")), kVXSuccess);
    EXPECT_EQ(actions.ClipActionRecords.size(), 2u) << "a load appends";
    EXPECT_EQ(actions.ClipActionEndFlag, 0u);
    EXPECT_NE(actions.IsNonEmpty(), 0);
}

TEST(VXFlintClipActions, ShareTheirHandlersWithCopies) {
    auto actions = std::make_unique<VXFlintClipActions>();
    actions->ClipActionRecords.push_back(new VXFlintClipActionRecord);
    actions->ClipActionRecords.push_back(actions->ClipActionRecords[0]);
    VXFlintClipActions copy(*actions);
    VXFlintClipActions other;
    other.ClipActionRecords.push_back(new VXFlintClipActionRecord);
    other = copy;
    actions->ClipActionRecords[0]->KeyCode = 65;
    actions->ClipActionRecords[0]->EventFlags.ClipEventKeyPress = 1;
    const Bytes twice = DumpOf(*actions);
    actions.reset();
    EXPECT_EQ(DumpOf(copy), twice);
    copy.ClipActionRecords.clear();
    EXPECT_EQ(DumpOf(other), twice);
    const VXFlintClipActionRecord alone = *other.ClipActionRecords[1];
    EXPECT_EQ(alone.KeyCode, 65) << "a copy of a handler has no holder, and is not deleted by one";
}
