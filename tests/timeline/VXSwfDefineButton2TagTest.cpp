#include "support/Test.h"

namespace {

using Tag = VXSwfDefineButton2Tag;

/// A record for the up state of a character at depth 1, with an empty matrix and colour transform.
Bytes RecordBytes(unsigned char flags, unsigned char id) {
    return Join({Bytes{flags, id}, Hex("00 01 00 00 00")});
}

Bytes ButtonBytes(const Bytes& behindOffset, unsigned char offset = 0) {
    return TagBytes(34, Join({Hex("05 00 00"), Bytes{offset}, Hex("00"), behindOffset}));
}

TEST(VXSwfDefineButton2Tag, DumpsWhatItLoads) {
    SweepTag("flags of the button stay", TagBytes(34, Hex("05 00 FF 00 00 00")));
    SweepTag("two records, no condition; reserved bits of a record are cleared",
             ButtonBytes(Join({RecordBytes(0xC1, 9), RecordBytes(0x0E, 8), Hex("00")})),
             ButtonBytes(Join({RecordBytes(0x01, 9), RecordBytes(0x0E, 8), Hex("00")})));
}

TEST(VXSwfDefineButton2Tag, MeasuresEveryFilter) {
    const struct {
        const char* what;
        const char* head;
        std::size_t rest;
    } rows[] = {
        {"none", "00", 0},
        {"drop shadow", "01 00", 23},
        {"blur", "01 01", 9},
        {"glow", "01 02", 15},
        {"bevel", "01 03", 27},
        {"gradient glow of three colours", "01 04 03", 3 * 5 + 19},
        {"convolution of 2 × 3", "01 05 02 03", 6 * 4 + 13},
        {"colour matrix", "01 06", 80},
        {"gradient bevel", "01 07 01", 5 + 19},
        {"Kept: an unknown one is its ID alone", "02 08 01", 9},
    };
    for (const auto& row : rows) {
        const Bytes filters = Join({Hex(row.head), Repeat(row.rest, 0xAA)});
        const Bytes wire = ButtonBytes(Join({RecordBytes(0x31, 9), filters, Hex("0D 00")}));
        SweepTag(row.what, wire);
        const TagPtr tag = LoadTag(wire);
        const auto& records = dynamic_cast<Tag&>(*tag).ButtonRecords;
        ASSERT_EQ(records.size(), 1u) << row.what;
        EXPECT_EQ(records[0]->RawFilterList.GetSize(), filters.size()) << row.what;
        EXPECT_EQ(records[0]->BlendMode, 0x0D) << row.what;
    }
    const TagPtr tag = LoadTag(ButtonBytes(Join({RecordBytes(0x11, 9), Hex("02 06 01 02 03 00")})));
    const auto& records = dynamic_cast<Tag&>(*tag).ButtonRecords;
    EXPECT_EQ(records.size(), 2u)
        << "a filter that leaves the body moves nothing: the rest is taken for a record";
    EXPECT_EQ(records[0]->RawFilterList.GetSize(), 3u);
    const Bytes cut = Join({RecordBytes(0x11, 9), Hex("01 05 FF FF 00")});
    VXBitStream owned;
    EXPECT_EQ(owned.Write(cut.data(), static_cast<unsigned int>(cut.size())), kVXSuccess);
    owned.SetPosition(0);
    EXPECT_EQ(VXFlintButtonRecord().LoadFromStream(owned), kVXSuccess);
    EXPECT_EQ(owned.GetSize(), cut.size()) << "nor does it make a stream grow that could";
}

TEST(VXSwfDefineButton2Tag, FindsConditionsByTheirDistances) {
    // The offset counts from its own field, three bytes in front of the first condition; those three are
    // skipped.
    const Bytes conditions =
        Hex("07 00 80 00 07 17 00"    // idle to over-down; two actions
            "00 00 00 41 0B 00 FF");  // key 32 or over-down to idle; what follows is lost
    const Bytes wire = ButtonBytes(Join({Hex("00 EE EE EE"), conditions}), 6);
    SweepTag("Kept: the offset comes out 3 too low", wire,
             ButtonBytes(Hex("00 07 00 80 00 07 17 00 00 00 00 41 0B 00"), 3));
    const TagPtr tag = LoadTag(wire);
    const auto& actions = dynamic_cast<Tag&>(*tag).ButtonActions;
    ASSERT_EQ(actions.size(), 2u);
    EXPECT_EQ(actions[0]->CondIdleToOverDown, 1);
    EXPECT_EQ(actions[1]->CondKeyPress, 32u);
    const Bytes cut = Hex("00 00 00 00 00 96 FF FF 11 22 33");
    EXPECT_EQ(DumpOf(*LoadTag(ButtonBytes(cut, 3))), ButtonBytes(Join({cut, Repeat(65533, 0)})))
        << "an action that is cut does not fail the button";
}

TEST(VXSwfDefineButton2Tag, ChainsOfConditionsEnd) {
    const struct {
        const char* what;
        Bytes wire;
        std::size_t count;
    } rows[] = {
        {"behind the body", ButtonBytes(Hex("00 00 00 00 00 00"), 0xF0), 0},
        {"the next place has no two bytes", ButtonBytes(Hex("00 05 00 00 00 00"), 3), 1},
        // A distance of 0xFFFB leads five back, to where its sum of 16 bits is the offset field itself.
        {"a place that was seen", ButtonBytes(Hex("00 05 00 80 00 00 FB FF 80 00 00"), 3), 2},
        // Each runs to the end of the body, and the next begins 257 bytes behind its start.
        {"they take more than the body", ButtonBytes(Join({Hex("00"), Repeat(4000, 0x01)}), 3), 2},
    };
    for (const auto& row : rows) {
        const TagPtr tag = LoadTag(row.wire);
        EXPECT_EQ(dynamic_cast<Tag&>(*tag).ButtonActions.size(), row.count) << row.what;
    }
}

TEST(VXSwfDefineButton2Tag, BuiltByCodeItHasTheTrueOffset) {
    const auto tag = NewTag<Tag>(34);
    tag->SetCharacterId(5);
    tag->CreateButtonRecord(1, 0, 0, 1, 7, 2);
    tag->AddButtonRecord(nullptr);
    tag->AddButtonAction(nullptr);
    tag->ButtonRecords.emplace_back();
    tag->ButtonActions.emplace_back();
    const Bytes record = Hex("09 07 00 02 00 00 00");
    EXPECT_EQ(DumpOf(*tag), TagBytes(34, Join({Hex("05 00 00 00 00"), record, Hex("00")})));
    for (int i = 0; i < 2; ++i) {
        auto* action = new VXFlintButtonCondAction;
        action->CondActionSize = 0x7777;
        action->CondOverUpToIdle = 1;
        tag->AddButtonAction(action);
    }
    // The conditions begin at byte 13, ten bytes behind the offset.
    const Bytes built =
        TagBytes(34, Join({Hex("05 00 00 0A 00"), record, Hex("00 05 00 02 00 00 00 00 02 00 00")}));
    EXPECT_EQ(DumpOf(*tag), built);
    EXPECT_EQ(DumpOf(*tag), built) << "a second time";

    Tag copy(*tag);
    copy.ButtonActions[1]->Actions.PushActionRecord(new VXFlintActionRecord(0x07));
    copy.ButtonRecords[0]->CharacterId = 9;
    EXPECT_EQ(DumpOf(*tag), built) << "a copy has records and actions of its own";
    copy = *tag;
    EXPECT_EQ(DumpOf(copy), built);
}

TEST(VXSwfDefineButton2Tag, ReplacesAndListsTheCharactersOfItsRecords) {
    const auto tag = NewTag<Tag>(34);
    for (const unsigned char id : Hex("07 00 08 07")) tag->CreateButtonRecord(1, 0, 0, 0, id, 1);
    VXFlintIDMap map;
    map.Set(7, 70);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    std::list<unsigned short> ids{1};
    tag->BuildButtonDependencyList(ids, nullptr);
    EXPECT_EQ(ids, (std::list<unsigned short>{1, 70, 8, 70}));
}

}  // namespace
