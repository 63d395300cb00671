#include "scripting/VXSwfSymbolClassTag.h"

#include "framework/VXFlintIDMap.h"
#include "support/RecordBytes.h"

namespace {

using Tag = VXSwfSymbolClassTag;
using Ids = std::vector<unsigned short>;

TEST(VXSwfSymbolClassTag, DumpsWhatItLoads) {
    SweepTag("two symbols", LongTagBytes(76, Hex("0200 0000 4100 0500 612E4200")));
    SweepTag("the header becomes a long one, and bytes behind the table go",
             TagBytes(76, Hex("0100 0500 00 FF")), LongTagBytes(76, Hex("0100 0500 00")));
}

TEST(VXSwfSymbolClassTag, TablesThatAreCutKeepWhatWasRead) {
    const struct {
        const char* body;
        Ids ids;
        std::size_t names;
    } rows[] = {{"02", {}, 0},
                {"FEFF", {}, 0},
                {"FEFF 0500 4100 06", {5}, 1},
                {"FEFF 0500 41", {5}, 0},
                {"FEFF 0500 4100 0600", {5, 6}, 1}};
    for (const auto& row : rows) {
        const auto tag = NewTag<Tag>(76);
        EXPECT_EQ(LoadInto(*tag, TagBytes(76, Hex(row.body))), kVXFailure) << row.body;
        EXPECT_EQ(tag->m_Ids, row.ids) << row.body;
        EXPECT_EQ(tag->m_Names.size(), row.names) << row.body;
        EXPECT_LT(tag->m_Ids.capacity() + tag->m_Names.capacity(), 16u) << "memory for the bytes present";
        EXPECT_FALSE(tag->HasID(9));
        tag->AddSymbol("B", 9);
        tag->AddSymbol("C", 5);
        EXPECT_EQ(tag->m_Names.size(), tag->m_Ids.size()) << "parallel again: " << row.body;
        VXFlintIDMap map;
        tag->UpdateReferenceIDs(&map);
    }
}

TEST(VXSwfSymbolClassTag, ALaterNameWinsAndTheTableEndsAtItsCount) {
    const auto tag = NewTag<Tag>(76);
    tag->AddSymbol("A", 5);
    tag->AddSymbol("B", 0);
    tag->AddSymbol("C", 5);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(76, Hex("0200 0500 4300 0000 4200")));
    EXPECT_TRUE(tag->HasID(0));
    tag->m_NumSymbols = 1;
    EXPECT_FALSE(tag->HasID(0)) << "the count decides";
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(76, Hex("0100 0500 4300")));
    const auto full = NewTag<Tag>(76);
    for (unsigned int id = 0; id < 65535; ++id) full->m_Ids.push_back(static_cast<unsigned short>(id));
    full->m_Names.resize(65535);
    full->m_NumSymbols = 65535;
    full->AddSymbol("A", 65535);
    EXPECT_EQ(full->m_Ids.size(), 65535u);
    full->AddSymbol("A", 65534);
    EXPECT_EQ(full->m_Names.back(), VXString("A"));
}

TEST(VXSwfSymbolClassTag, TakesNewIDsOtherThanZero) {
    const auto tag = NewTag<Tag>(76);
    for (const unsigned short id : Ids{0, 5, 6, 7}) tag->AddSymbol("A", id);
    VXFlintIDMap map;
    map.Set(0, 40);
    map.Set(5, 9);
    map.Set(6, 0);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(tag->m_Ids, (Ids{40, 9, 6, 7}));
    EXPECT_EQ(map.size(), 4u) << "Kept: every ID has an entry afterwards";
}

}  // namespace
