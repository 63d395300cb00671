#include "text/VXSwfDefineTextTag.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <utility>

#include "framework/VXFlintIDMap.h"
#include "support/TagSweep.h"
#include "text/FakeTypeEngine.h"
#include "text/VXSwfDefineFont2Tag.h"

namespace {

using TextPtr = std::unique_ptr<VXSwfDefineTextTag>;

TEST(VXSwfDefineTextTag, DumpsWhatItLoads) {
    SweepTag("no runs", TagBytes(11, Hex("05 00  00 00  03 04  00")));
    SweepTag("one run, colour without alpha",
             TagBytes(11, Join({Hex("05 00  00 00  03 04  8F  07 00  01 02 03  FE FF  04 00  F0 00  02"),
                                Bits("101 1011  110 0111"),  // −5 and 7
                                Hex("00")})));
    SweepTag("two runs, colour with alpha",
             TagBytes(33, Join({Hex("05 00  00 00  09 00  84  01 02 03 04  01"), Bits("100000001"),
                                Hex("81  10 00  01"), Bits("000000011"), Hex("00")})));
    SweepTag("bytes behind the end go", TagBytes(11, Hex("05 00  00 00  03 04  00 11 22")),
             TagBytes(11, Hex("05 00  00 00  03 04  00")));
    SweepTag("a height of no whole pixels is cut",
             TagBytes(11, Hex("05 00 00 00 00 00  88 07 00 FA 00 00  00")),
             TagBytes(11, Hex("05 00 00 00 00 00  88 07 00 F0 00 00  00")));
    SweepTag("a type bit of 0 with a flag is a run", TagBytes(11, Hex("05 00 00 00 00 00  10 00  00")),
             TagBytes(11, Hex("05 00 00 00 00 00  90 00  00")));
}

TEST(VXSwfDefineTextTag, ARunThatFailsEndsTheList) {
    SweepTag("no room for its colour", TagBytes(11, Hex("05 00 00 00 00 00  80 00  84 01 02")),
             TagBytes(11, Hex("05 00 00 00 00 00  80 00  00")));
    SweepTag("no room for an advance", TagBytes(11, Hex("05 00 00 00 00 08  80 01 05  80 02 05")),
             TagBytes(11, Hex("05 00 00 00 00 08  80 01 05  00")));
    SweepTag("no glyph count is none", TagBytes(11, Hex("05 00 00 00 00 00  80")),
             TagBytes(11, Hex("05 00 00 00 00 00  80 00  00")));
    SweepTag("indices that are not there are 0", TagBytes(11, Hex("05 00 00 00 08 00  80 02 07")),
             TagBytes(11, Hex("05 00 00 00 08 00  80 02 07 00  00")));
    SweepTag("no widths", TagBytes(11, Hex("05 00 00 00")), TagBytes(11, Hex("05 00 00 00 00 00 00")));
    const TextPtr text = NewTag<VXSwfDefineTextTag>(11);
    const Bytes bytes = TagBytes(11, Hex("05 00 00"));
    VXBitStream in = StreamOver(bytes);
    EXPECT_EQ(text->LoadFromStream(in), kVXFailure) << "no matrix";
}

TEST(VXSwfDefineTextTag, AdvancesHaveEveryWidth) {
    const struct {
        unsigned char bits;
        int advance;
        Bytes bytes;
    } rows[] = {
        {1, -1, Bits("1")},
        {2, -2, Bits("10")},
        {32, INT_MIN, Hex("80 00 00 00")},
        {33, -2, Bits("1 11111111111111111111111111111110")},
        {40, 5, Hex("00 00 00 00 05")},
    };
    for (const auto& row : rows) {
        const Bytes bytes = Join({Hex("80 01"), row.bytes});
        VXBitStream in = StreamOver(bytes);
        VXSwfTextStyleChangeRecord record;
        record.m_AdvanceBits = row.bits;
        ASSERT_EQ(record.LoadFromStream(in), kVXSuccess);
        EXPECT_EQ(record.m_GlyphEntries[0].m_GlyphAdvance, row.advance) << int{row.bits};
        VXBitStream out;
        ASSERT_EQ(record.DumpToStream(out), kVXSuccess);
        ASSERT_EQ(out.FlushBits(), kVXSuccess);
        EXPECT_EQ(BytesOf(out), bytes) << int{row.bits};
    }
}

TEST(VXSwfDefineTextTag, FontsAreRenumbered) {
    const TextPtr text = NewTag<VXSwfDefineTextTag>(11);
    text->m_TextRecords.resize(4);
    const unsigned short ids[] = {7, 8, 0, 7};
    for (std::size_t i = 0; i < 4; ++i) text->m_TextRecords[i].m_FontId = ids[i];
    text->m_TextRecords[3].m_HasFont = 0;
    text->UpdateReferenceIDs(nullptr);
    VXFlintIDMap map;
    map.Set(7, 70);
    text->UpdateReferenceIDs(&map);
    EXPECT_EQ(text->m_TextRecords[0].m_FontId, 70);
    EXPECT_EQ(text->m_TextRecords[1].m_FontId, 8);
    EXPECT_EQ(text->m_TextRecords[2].m_FontId, 0);
    EXPECT_EQ(text->m_TextRecords[3].m_FontId, 7);
    EXPECT_EQ(map.size(), 2u) << "8 has an entry of 0 now";
}

/// A run of one character in `font`.
VXSwfTextStyleChangeRecord NewRun(VXSwfDefineFont2Tag* font, unsigned short c, unsigned char count) {
    VXSwfTextStyleChangeRecord run;
    run.m_Font = font;
    run.m_Character = c;
    run.m_GlyphCount = count;
    run.m_TextHeight = 512;
    run.m_HasColor = run.m_HasYOffset = 0;
    run.m_XOffset = 3;
    return run;
}

TEST(VXSwfDefineTextTag, FontsGiveWidthsAndBounds) {
    FakeTypeEngine engine;
    engine.families = {{{"Solo", "Book", 0}}};
    engine.widths = {{'a', 20.0f}, {'b', 10.0f}};
    const auto font = NewTag<VXSwfDefineFont2Tag>(75);
    EXPECT_EQ(font->CreateGlyphFont("Solo", 0, 0), kVXSuccess);
    for (const char c : {'x', 'y', 'a', 'b'}) font->AddGlyphText(static_cast<unsigned short>(c));
    const TextPtr text = NewTag<VXSwfDefineTextTag>(11);
    text->m_TextRecords = {NewRun(font.get(), 'a', 2), NewRun(font.get(), 'b', 1)};
    text->m_TextRecords[0].m_GlyphEntries = {{1, -2}};
    text->m_TextRecords[0].m_ExtentY = 40;
    text->m_TextRecords[1].m_ExtentY = 99;  // Kept: the first run speaks for all
    // 10 pixels are 200 twips, which take 9 bits; index 3 takes 2. The right end is 203 twips, read as pixels.
    EXPECT_EQ(
        DumpOf(*text),
        TagBytes(11, Join({Hex("00 00"), Bits("01011 00000000000 00011001011 00000000000 01100100000"),
                           Bits("1 10010 010000000000000000 010000000000000000 1 00000 00000"), Hex("02 09"),
                           Hex("89 00 00 03 00 00 28 02"), Bits("01 111111110 00 000000000"),
                           Hex("89 00 00 03 00 00 28 01"), Bits("00 000000000"), Hex("00")})));
    EXPECT_EQ(text->m_Bounds.XMax, 10.15);
    EXPECT_EQ(text->m_TextRecords[0].m_GlyphEntries.size(), 1u) << "the entries stay the host's";

    text->m_TextRecords[1].m_Character = 'z';
    DumpOf(*text);
    EXPECT_EQ(text->m_GlyphBits, 33) << "a character that the font does not have";
}

TEST(VXSwfDefineTextTag, WithoutAFontNothingIsMeasured) {
    const TextPtr text = NewTag<VXSwfDefineTextTag>(11);
    auto font = NewTag<VXSwfDefineFont2Tag>(75);
    text->m_Bounds.XMax = 40.0;
    text->m_GlyphBits = 5;
    text->m_TextRecords = {NewRun(nullptr, 'a', 0), NewRun(font.get(), 'a', 0)};
    font.reset();
    DumpOf(*text);
    EXPECT_EQ(text->m_Bounds.XMax, 40.0) << "a font that is gone is none";
    EXPECT_EQ(text->m_GlyphBits, 5);
    font = NewTag<VXSwfDefineFont2Tag>(75);
    text->m_TextRecords[1].m_Font = font.get();
    DumpOf(*text);
    EXPECT_EQ(text->m_Bounds.XMax, 2.0) << "a run without glyphs still makes twips of it";
    EXPECT_EQ(text->m_Bounds.YMax, 0.0);
    EXPECT_EQ(text->m_GlyphBits, 0);
}

}  // namespace
