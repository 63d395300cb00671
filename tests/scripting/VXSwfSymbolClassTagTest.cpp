#include "scripting/VXSwfSymbolClassTag.h"

#include <gtest/gtest.h>

#include "framework/VXFlintIDMap.h"
#include "support/TagSweep.h"

namespace {

using Tag = VXSwfSymbolClassTag;
using Ids = std::vector<unsigned short>;

TEST(VXSwfSymbolClassTag, DumpsWhatItLoads) {
    SweepTag("no symbol", LongTagBytes(76, Hex("0000")));
    SweepTag("two symbols", LongTagBytes(76, Hex("0200 0000 4100 0500 612E4200")));
    SweepTag("the header becomes a long one", TagBytes(76, Hex("0100 0500 4100")),
             LongTagBytes(76, Hex("0100 0500 4100")));
    SweepTag("bytes behind the table", LongTagBytes(76, Hex("0100 0500 00 FF")),
             LongTagBytes(76, Hex("0100 0500 00")));
}

TEST(VXSwfSymbolClassTag, TablesThatAreCutKeepWhatWasRead) {
    const auto loadCut = [](const char* body, const Ids& ids, std::size_t names) {
        const Bytes bytes = TagBytes(76, Hex(body));
        const auto tag = NewTag<Tag>(76);
        VXBitStream in = StreamOver(bytes);
        EXPECT_EQ(tag->LoadFromStream(in), kVXFailure) << body;
        EXPECT_EQ(tag->m_Ids, ids) << body;
        EXPECT_EQ(tag->m_Names.size(), names) << body;
        EXPECT_LT(tag->m_Ids.capacity() + tag->m_Names.capacity(), 16u) << "memory for the bytes present";
        EXPECT_FALSE(tag->HasID(9));
        tag->AddSymbol("B", 9);
        tag->AddSymbol("C", 5);
        EXPECT_EQ(tag->m_Names.size(), tag->m_Ids.size()) << "parallel again: " << body;
        VXFlintIDMap map;
        tag->UpdateReferenceIDs(&map);
    };
    loadCut("02", {}, 0);
    loadCut("FEFF", {}, 0);
    loadCut("FEFF 0500 4100 06", {5}, 1);
    loadCut("FEFF 0500 41", {5}, 0);
    loadCut("FEFF 0500 4100 0600", {5, 6}, 1);
}

TEST(VXSwfSymbolClassTag, ALaterNameWins) {
    const auto tag = NewTag<Tag>(76);
    tag->AddSymbol("A", 5);
    tag->AddSymbol("B", 0);
    tag->AddSymbol("C", 5);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(76, Hex("0200 0500 4300 0000 4200")));
    EXPECT_TRUE(tag->HasID(0));
    EXPECT_TRUE(tag->HasID(5));
    tag->m_NumSymbols = 1;
    EXPECT_FALSE(tag->HasID(0)) << "the count decides";
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(76, Hex("0100 0500 4300")));
    const TagPtr copy(tag->Copy(), &VXSwfTagFactory::DeleteTag);
    ASSERT_NE(dynamic_cast<Tag*>(copy.get()), nullptr);
}

TEST(VXSwfSymbolClassTag, TheTableEndsAtItsCount) {
    const auto tag = NewTag<Tag>(76);
    for (unsigned int id = 0; id < 65535; ++id) tag->m_Ids.push_back(static_cast<unsigned short>(id));
    tag->m_Names.resize(65535);
    tag->m_NumSymbols = 65535;
    tag->AddSymbol("A", 65535);
    EXPECT_EQ(tag->m_Ids.size(), 65535u);
    EXPECT_EQ(tag->m_NumSymbols, 65535);
    tag->AddSymbol("A", 65534);
    EXPECT_EQ(tag->m_Names.back(), VXString("A"));
    tag->AddSymbol("B", 100);
    EXPECT_EQ(tag->m_Names[100], VXString("B"));
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
