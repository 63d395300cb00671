#include "support/Test.h"
#include "text/FakeTypeEngine.h"

namespace {

using TextPtr = std::unique_ptr<VXSwfDefineTextTag>;

TEST(VXSwfDefineTextTag, DumpsWhatItLoads) {
    const struct {
        const char* what;
        Bytes in, out;
    } rows[] = {
        {"bytes behind the end go", Hex("05 00  00 00  03 04  00 11 22"), Hex("05 00  00 00  03 04  00")},
        {"a height of no whole pixels is cut", Hex("05 00 00 00 00 00  88 07 00 FA 00 00  00"),
         Hex("05 00 00 00 00 00  88 07 00 F0 00 00  00")},
        {"a type bit of 0 with a flag is a run", Hex("05 00 00 00 00 00  10 00  00"),
         Hex("05 00 00 00 00 00  90 00  00")},
        {"Kept: a run without room for its colour ends the list", Hex("05 00 00 00 00 00  80 00  84 01 02"),
         Hex("05 00 00 00 00 00  80 00  00")},
        {"or for an advance", Hex("05 00 00 00 00 08  80 01 05  80 02 05"),
         Hex("05 00 00 00 00 08  80 01 05  00")},
        {"Kept: no glyph count is none", Hex("05 00 00 00 00 00  80"), Hex("05 00 00 00 00 00  80 00  00")},
        {"Kept: indices that are not there are 0", Hex("05 00 00 00 08 00  80 02 07"),
         Hex("05 00 00 00 08 00  80 02 07 00  00")},
        {"no widths", Hex("05 00 00 00"), Hex("05 00 00 00 00 00 00")},
    };
    for (const auto& row : rows) SweepTag(row.what, TagBytes(11, row.in), TagBytes(11, row.out));
    SweepTag("one run, colour without alpha",
             TagBytes(11, Join({Hex("05 00  00 00  03 04  8F  07 00  01 02 03  FE FF  04 00  F0 00  02"),
                                Bits("101 1011  110 0111"), Hex("00")})));  // advances of −5 and 7
    SweepTag("two runs, colour with alpha",
             TagBytes(33, Join({Hex("05 00  00 00  09 00  84  01 02 03 04  01"), Bits("100000001"),
                                Hex("81  10 00  01"), Bits("000000011"), Hex("00")})));
    const Bytes wide = TagBytes(11, Join({Hex("05 00 00 00 00 21  80 01"),  // an advance of 33 bits
                                          Bits("1 11111111111111111111111111111110"), Hex("00")}));
    SweepTag("beyond 32 bits the sign has no weight", wide);
    const TagPtr loaded = LoadTag(wide);
    const auto& runs = dynamic_cast<VXSwfDefineTextTag&>(*loaded).m_TextRecords;
    EXPECT_EQ(runs.front().m_GlyphEntries[0].m_GlyphAdvance, -2);
    const TextPtr text = NewTag<VXSwfDefineTextTag>(11);
    EXPECT_EQ(LoadInto(*text, TagBytes(11, Hex("05 00 00"))), kVXFailure) << "no matrix";
}

TEST(VXSwfDefineTextTag, FontsAreRenumbered) {
    const TextPtr text = NewTag<VXSwfDefineTextTag>(11);
    text->m_TextRecords.resize(4);
    const unsigned short ids[] = {7, 8, 0, 7};
    const unsigned short results[] = {70, 8, 0, 7};
    for (std::size_t i = 0; i < 4; ++i) text->m_TextRecords[i].m_FontId = ids[i];
    text->m_TextRecords[3].m_HasFont = 0;
    text->UpdateReferenceIDs(nullptr);
    VXFlintIDMap map;
    map.Set(7, 70);
    text->UpdateReferenceIDs(&map);
    for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(text->m_TextRecords[i].m_FontId, results[i]) << i;
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
    // 10 pixels are 200 twips, which take 9 bits; index 3 takes 2. The right end is 203 twips, read as
    // pixels.
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
