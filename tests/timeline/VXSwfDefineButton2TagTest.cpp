#include "timeline/VXSwfDefineButton2Tag.h"

#include <gtest/gtest.h>

#include "framework/VXFlintIDMap.h"
#include "support/TagSweep.h"

namespace {

/// A record for the up state of a character at depth 1, with an empty matrix and colour transform.
Bytes RecordBytes(unsigned char flags, unsigned char id) {
    return Join({Bytes{flags, id}, Hex("00 01 00 00 00")});
}

Bytes ButtonBytes(const Bytes& behindOffset, unsigned char offset = 0) {
    return TagBytes(34, Join({Hex("05 00 00"), Bytes{offset}, Hex("00"), behindOffset}));
}

/// Loads a button with one record that has a filter list and a blend mode, and gives the size of the list.
void ExpectFilterList(const std::string& what, const Bytes& filters) {
    const Bytes wire = ButtonBytes(Join({RecordBytes(0x31, 9), filters, Hex("0D"), Hex("00")}));
    SweepTag(what, wire);
    const TagPtr tag = LoadTag(wire);
    const auto& records = dynamic_cast<VXSwfDefineButton2Tag&>(*tag).ButtonRecords;
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0]->RawFilterList.GetSize(), filters.size()) << what;
    EXPECT_EQ(records[0]->BlendMode, 0x0D) << what;
}

}  // namespace

TEST(VXSwfDefineButton2Tag, DumpsWhatItLoads) {
    SweepTag("no record", ButtonBytes(Hex("00")));
    SweepTag("two records, no condition",
             ButtonBytes(Join({RecordBytes(0x01, 9), RecordBytes(0x0E, 8), Hex("00")})));
    SweepTag("reserved bits of a record are cleared", ButtonBytes(Join({RecordBytes(0xC1, 9), Hex("00")})),
             ButtonBytes(Join({RecordBytes(0x01, 9), Hex("00")})));
    SweepTag("flags of the button stay", TagBytes(34, Hex("05 00 FF 00 00 00")));
}

TEST(VXSwfDefineButton2Tag, MeasuresEveryFilter) {
    ExpectFilterList("none", Hex("00"));
    ExpectFilterList("drop shadow", Join({Hex("01 00"), Repeat(23, 0xAA)}));
    ExpectFilterList("blur", Join({Hex("01 01"), Repeat(9, 0xAA)}));
    ExpectFilterList("glow", Join({Hex("01 02"), Repeat(15, 0xAA)}));
    ExpectFilterList("bevel", Join({Hex("01 03"), Repeat(27, 0xAA)}));
    ExpectFilterList("gradient glow of three colours", Join({Hex("01 04 03"), Repeat(3 * 5 + 19, 0xAA)}));
    ExpectFilterList("convolution of 2 × 3", Join({Hex("01 05 02 03"), Repeat(6 * 4 + 13, 0xAA)}));
    ExpectFilterList("colour matrix", Join({Hex("01 06"), Repeat(80, 0xAA)}));
    ExpectFilterList("gradient bevel", Join({Hex("01 07 01"), Repeat(5 + 19, 0xAA)}));
    ExpectFilterList("an unknown one is its ID alone", Join({Hex("02 08 01"), Repeat(9, 0xAA)}));
}

TEST(VXSwfDefineButton2Tag, AFilterThatLeavesTheBodyMovesNothing) {
    const TagPtr tag = LoadTag(ButtonBytes(Join({RecordBytes(0x11, 9), Hex("02 06 01 02 03 00")})));
    const auto& records = dynamic_cast<VXSwfDefineButton2Tag&>(*tag).ButtonRecords;
    ASSERT_EQ(records.size(), 2u) << "what is left is taken for a record";
    EXPECT_EQ(Bytes(records[0]->RawFilterList.GetBytes(), records[0]->RawFilterList.GetBytes() + 3),
              Hex("02 06 01"));
    EXPECT_EQ(records[0]->RawFilterList.GetSize(), 3u);
}

TEST(VXSwfDefineButton2Tag, FindsConditionsByTheirDistances) {
    // The offset counts from its own field, three bytes in front of the first condition; those three bytes are skipped.
    const Bytes conditions =
        Hex("07 00 80 00 07 17 00"    // idle to over-down; two actions
            "00 00 00 41 0B 00 FF");  // key 32 or over-down to idle; what follows is lost
    SweepTag("the offset comes out 3 too low", ButtonBytes(Join({Hex("00 EE EE EE"), conditions}), 6),
             ButtonBytes(Join({Hex("00"), Hex("07 00 80 00 07 17 00 00 00 00 41 0B 00")}), 3));
    const TagPtr tag = LoadTag(ButtonBytes(Join({Hex("00 EE EE EE"), conditions}), 6));
    const auto& actions = dynamic_cast<VXSwfDefineButton2Tag&>(*tag).ButtonActions;
    ASSERT_EQ(actions.size(), 2u);
    EXPECT_EQ(actions[0]->CondIdleToOverDown, 1);
    EXPECT_EQ(actions[0]->Actions.size(), 2u);
    EXPECT_EQ(actions[1]->CondKeyPress, 32u);
    EXPECT_EQ(actions[1]->CondOverDownToIdle, 1);
}

TEST(VXSwfDefineButton2Tag, ChainsOfConditionsEnd) {
    const auto count = [](const Bytes& wire) {
        const TagPtr tag = LoadTag(wire);
        return dynamic_cast<VXSwfDefineButton2Tag&>(*tag).ButtonActions.size();
    };
    EXPECT_EQ(count(ButtonBytes(Hex("00 00 00 00 00 00"), 0xF0)), 0u) << "behind the body";
    EXPECT_EQ(count(ButtonBytes(Hex("00 05 00 00 00 00"), 3)), 1u) << "the next place has no two bytes";
    // A distance of 0xFFFB leads five back, to where its sum of 16 bits is the offset field itself.
    EXPECT_EQ(count(ButtonBytes(Hex("00 05 00 80 00 00 FB FF 80 00 00"), 3)), 2u) << "a place that was seen";
    // Each condition runs to the end of the body, and the next begins 257 bytes behind its start.
    EXPECT_EQ(count(ButtonBytes(Join({Hex("00"), Repeat(4000, 0x01)}), 3)), 2u)
        << "they take more than the body";
}

TEST(VXSwfDefineButton2Tag, BuiltByCodeItHasTheTrueOffset) {
    const auto tag = NewTag<VXSwfDefineButton2Tag>(34);
    ASSERT_NE(tag, nullptr);
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
        TagBytes(34, Join({Hex("05 00 00 0A 00"), record, Hex("00"), Hex("05 00 02 00 00 00 00 02 00 00")}));
    EXPECT_EQ(DumpOf(*tag), built);
    EXPECT_EQ(DumpOf(*tag), built) << "a second time";
}

TEST(VXSwfDefineButton2Tag, ReplacesAndListsTheCharactersOfItsRecords) {
    const auto tag = NewTag<VXSwfDefineButton2Tag>(34);
    for (const unsigned char id : Hex("07 00 08 07")) tag->CreateButtonRecord(1, 0, 0, 0, id, 1);
    VXFlintIDMap map;
    map.Set(7, 70);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    std::list<unsigned short> ids{1};
    tag->BuildButtonDependencyList(ids, nullptr);
    EXPECT_EQ(ids, (std::list<unsigned short>{1, 70, 8, 70}));
}

TEST(VXSwfDefineButton2Tag, CopiesHaveActionsOfTheirOwn) {
    const auto tag = NewTag<VXSwfDefineButton2Tag>(34);
    auto* action = new VXFlintButtonCondAction;
    action->Actions.PushActionRecord(new VXFlintActionRecord(0x07));
    tag->AddButtonAction(action);
    tag->CreateButtonRecord(1, 0, 0, 0, 7, 1);
    VXSwfDefineButton2Tag copy(*tag);
    (*copy.ButtonActions[0]->Actions.begin())->m_ActionCode = 0x06;
    copy.ButtonRecords[0]->CharacterId = 9;
    EXPECT_EQ((*action->Actions.begin())->m_ActionCode, 0x07);
    EXPECT_EQ(tag->ButtonRecords[0]->CharacterId, 7);
    copy = *tag;
    EXPECT_EQ(DumpOf(copy), DumpOf(*tag));
}
