// Tags that give names to characters.
#include "support/Test.h"

namespace {

using Ids = std::vector<unsigned short>;

TEST(VXSwfExportAssetsTag, DumpsWhatItLoads) {
    SweepTag("two assets, one without a name", TagBytes(56, Hex("0200 0500 612F6200 FFFF 00")));
    SweepTag("a long header on a short body", LongTagBytes(56, Hex("0100 0500 4100")));
    SweepTag("Kept: a name outside ASCII is cut", TagBytes(56, Hex("0100 0500 61C3A900")),
             TagBytes(56, Hex("0100 0500 61C300")));
}

TEST(VXSwfExportAssetsTag, TablesThatAreCutKeepWhatWasRead) {
    const struct {
        const char* body;
        Ids ids;
        const char* dump;
    } rows[] = {{"02", {}, "0000"},
                {"FFFF", {}, "0000"},
                {"FEFF 0500 4100", {5}, "0100 0500 4100"},
                {"FEFF 0500 4100 0600 41", {5, 6}, "0100 0500 4100"}};
    for (const auto& [body, ids, dump] : rows) {
        const auto tag = NewTag<VXSwfExportAssetsTag>(56);
        EXPECT_EQ(LoadInto(*tag, TagBytes(56, Hex(body))), kVXFailure) << body;
        EXPECT_EQ(tag->m_Ids, ids) << body;
        EXPECT_EQ(DumpOf(*tag), TagBytes(56, Hex(dump))) << "the entries that were read";
        tag->m_NumAssets = static_cast<unsigned short>(ids.size());
        EXPECT_EQ(tag->AddCharacterIdnName(9, "B"), kVXSuccess);
        VXString name;
        EXPECT_EQ(tag->GetAssestName(9, name), kVXSuccess) << body;
        EXPECT_EQ(name, VXString("B")) << body;
    }
}

TEST(VXSwfExportAssetsTag, IsBuiltByCode) {
    const auto tag = NewTag<VXSwfExportAssetsTag>(56);
    EXPECT_EQ(tag->AddCharacterIdnName(5, "A"), kVXSuccess);
    EXPECT_EQ(tag->AddCharacterIdnName(6, "B"), kVXSuccess);
    EXPECT_EQ(tag->AddCharacterIdnName(5, "C"), kVXSuccess);
    EXPECT_EQ(DumpOf(*tag), TagBytes(56, Hex("0300 0500 4100 0600 4200 0500 4300")));
    EXPECT_EQ(tag->GetAssetIDByIndex(1), 6);
    EXPECT_EQ(tag->GetAssetIDByIndex(3), 0);
    VXString name("old");
    EXPECT_EQ(tag->GetAssestName(7, name), kVXFailure);
    EXPECT_EQ(name, VXString("old"));
    EXPECT_EQ(tag->GetAssestName(5, name), kVXSuccess);
    EXPECT_EQ(name, VXString("A")) << "the first of two";
    tag->m_NumAssets = 65535;
    EXPECT_EQ(tag->AddCharacterIdnName(8, "D"), kVXFailure);
    EXPECT_EQ(DumpOf(*tag), TagBytes(56, Hex("0300 0500 4100 0600 4200 0500 4300"))) << "what is there";
    VXFlintIDMap map;
    map.Set(5, 9);
    map.Set(6, 0);
    tag->UpdateReferenceIDs(nullptr);
    tag->UpdateReferenceIDs(&map);
    tag->m_Ids.push_back(7);
    tag->UpdateReferenceIDs(&map);
    EXPECT_EQ(tag->m_Ids, (Ids{9, 0, 9, 7})) << "Kept: an entry of 0 counts";
    EXPECT_EQ(map.size(), 2u) << "and the map stays as it is";
}

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
    } rows[] = {{"02", {}, 0}, {"FEFF 0500 4100 06", {5}, 1}, {"FEFF 0500 4100 0600", {5, 6}, 1}};
    for (const auto& row : rows) {
        const auto tag = NewTag<VXSwfSymbolClassTag>(76);
        EXPECT_EQ(LoadInto(*tag, TagBytes(76, Hex(row.body))), kVXFailure) << row.body;
        EXPECT_EQ(tag->m_Ids, row.ids) << row.body;
        EXPECT_EQ(tag->m_Names.size(), row.names) << row.body;
        EXPECT_LT(tag->m_Ids.capacity() + tag->m_Names.capacity(), 16u) << "memory for the bytes present";
        EXPECT_FALSE(tag->HasID(9));
        tag->AddSymbol("B", 9);
        tag->AddSymbol("C", 5);
        EXPECT_EQ(tag->m_Names.size(), tag->m_Ids.size()) << "parallel again: " << row.body;
    }
}

TEST(VXSwfSymbolClassTag, ALaterNameWinsAndTheTableEndsAtItsCount) {
    const auto tag = NewTag<VXSwfSymbolClassTag>(76);
    tag->AddSymbol("A", 5);
    tag->AddSymbol("B", 0);
    tag->AddSymbol("C", 5);
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(76, Hex("0200 0500 4300 0000 4200")));
    EXPECT_TRUE(tag->HasID(0));
    tag->m_NumSymbols = 1;
    EXPECT_FALSE(tag->HasID(0)) << "the count decides";
    EXPECT_EQ(DumpOf(*tag), LongTagBytes(76, Hex("0100 0500 4300")));
    tag->m_NumSymbols = 65535;
    tag->AddSymbol("D", 9);
    EXPECT_EQ(tag->m_Ids.size(), 2u) << "one entry too many";
}

TEST(VXSwfSymbolClassTag, TakesNewIDsOtherThanZero) {
    const auto tag = NewTag<VXSwfSymbolClassTag>(76);
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
