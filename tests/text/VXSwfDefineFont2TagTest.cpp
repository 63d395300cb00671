#include "support/Test.h"
#include "text/FakeTypeEngine.h"

namespace {

using FontPtr = std::unique_ptr<VXSwfDefineFont2Tag>;

FontPtr NewFont() { return NewTag<VXSwfDefineFont2Tag>(75); }

FontPtr NewGlyphFont(std::u16string_view text) {
    FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("Solo", 0, 0), kVXSuccess);
    for (const char16_t c : text) font->AddGlyphText(c);
    return font;
}

/// The tag of a font stays raw in a file, so the sweep works on one that was made by code.
void SweepFont(const std::string& what, const Bytes& in, const Bytes& out) {
    SweepRecord<VXSwfDefineFont2Tag, false>(what, *NewFont(), TagBytes(75, in), TagBytes(75, out));
}

TEST(VXSwfDefineFont2Tag, DeviceFontsHaveANameAndNoGlyphs) {
    const struct {
        std::string name;
        short bold, italic;
        Bytes body;
    } rows[] = {
        {"Ab", 0, 0, Hex("05 00  10 01  02 41 62  00 00  02 00")},
        {"\xC3\xA9", 2, -1, Hex("05 00  13 01  01 C3  00 00  02 00")},  // Kept: one unit, one of its bytes
        {"@Ab", 0, 0, Hex("05 00  40 01  03 40 41 62  00 00  02 00")},  // double-byte
        {std::string(256, 'x'), 0, 0, Hex("05 00  10 01  00  00 00  02 00")},  // 256 units count as none
    };
    for (const auto& row : rows) {
        const FontPtr font = NewFont();
        font->SetCharacterId(5);
        EXPECT_EQ(font->CreateDeviceFont(row.name.c_str(), row.bold, row.italic), kVXSuccess);
        EXPECT_EQ(DumpOf(*font), TagBytes(75, row.body)) << row.name;
    }
}

TEST(VXSwfDefineFont2Tag, LoadAndDumpAreNotMirrorImages) {
    SweepFont(
        "wide, with layout",  // a shape with its widths twice
        Hex("05 00  8F 01  02 41 62  01 00  08 00 00 00  0B 00 00 00  10 10 00  41 00  64 00 FF FF 00 10"
            "0A 00  00  00 00"),
        Hex("05 00  8F 01  02 41 62  01 00  08 00 00 00  0A 00 00 00  10 00  41 00  D0 07 EC FF 00 40"
            "0A 00  00  00 00"));
    SweepFont(
        "narrow, without layout",
        Hex("05 00  00 02  01 41  02 00  06 00 09 00  0C 00  00 00 00 00 00 00  41 42  03 00  FF FF FF"),
        Hex("05 00  00 02  01 41  02 00  06 00 09 00  0A 00  00 00 00 00  41 42"));
}

TEST(VXSwfDefineFont2Tag, LoadsFailWhereTheTablesEnd) {
    const FontPtr font = NewFont();
    for (const char* cut : {"05 00  00 01  00  00 00  02 00", "05 00  00 01  00  00 00  02 00  03"}) {
        EXPECT_EQ(LoadInto(*font, TagBytes(75, Hex(cut))), kVXFailure) << "Kept: a kerning count is wanted";
    }
    EXPECT_EQ(LoadInto(*font, TagBytes(75, Hex("05 00  00 01  00  00 00  02 00  03 00  01"))), kVXSuccess);
    EXPECT_EQ(font->m_KerningCount, 0);
    EXPECT_EQ(LoadInto(*font, TagBytes(75, Hex("05 00  8C 01  00  FF FF  01 00 00 00"))), kVXFailure);
    EXPECT_LE(font->m_OffsetTable.capacity(), 4u) << "a count takes no memory by itself";
    EXPECT_EQ(font->m_GlyphShapes.capacity() + font->m_BoundsTable.capacity(), 0u);
}

TEST(VXSwfDefineFont2Tag, TablesThatAreShortGoOutWithNothingBehindThem) {
    const FontPtr font = NewFont();
    font->m_HasLayout = 1;
    font->m_NumGlyphs = 2;
    font->m_OffsetTable = {7};
    font->m_AdvanceTable = {-1};
    font->m_GlyphShapes.resize(1);
    font->m_GlyphShapes[0].ShapeRecords.Records.push_back(new VXFlintShapeRecord);
    EXPECT_EQ(DumpOf(*font),
              TagBytes(75, Hex("00 00  8F 01  00  02 00  07 00 00 00 00 00 00 00  0D 00 00 00  00"
                               "00 00 00 00  00 00 00 00 00 00  FF FF 00 00  00 00  00 00")));
}

TEST(VXSwfDefineFont2Tag, WithoutAnEngineGlyphsAreEmpty) {
    const FontPtr font = NewGlyphFont(u"baab");
    const Bytes bounds = Bits("10000 0000000000000000 0101000000000000 0000000000000000 0000000000000000");
    EXPECT_EQ(
        DumpOf(*font),
        TagBytes(75, Join({Hex("00 00  AC 01  04 53 6F 6C 6F  02 00  0C 00 00 00 10 00 00 00  14 00 00 00"),
                           Hex("10 34 10 00  10 34 10 00  61 00 62 00  00 00 00 00 00 00  00 00 00 00"),
                           bounds, bounds, Hex("00 00")})));  // of the em in width, and none in height
    EXPECT_EQ(font->GetIndexOfChar('b'), 1);
    EXPECT_EQ(font->GetCharWidthW(1), 1024.0);
    EXPECT_EQ(font->GetCharWidthW(2), 0.0);
    EXPECT_EQ(font->GetCharWidthW(-1), 0.0);
    const VXSwfDefineFont2Tag copy(*font);
    font->AddGlyphText('y');
    EXPECT_EQ(copy.GetFontName(), VXString("Solo"));
    EXPECT_EQ(copy.GetIndexOfChar('b'), 1);
    EXPECT_EQ(copy.GetIndexOfChar('y'), -1) << "copies are whole and on their own";
}

/// A square of 10 by 20 units on the baseline. A tenth of the em goes, and the fraction is cut off.
const std::vector<FakeTypeEngine::Point> kSquare = {{kKVMMove, 102.9f, -20.0f}, {kKVMLine, 112.9f, -20.0f},
                                                    {kKVMLine, 112.9f, 0.0f},   {kKVMLine, 102.9f, 0.0f},
                                                    {kKVMLine, 102.9f, -20.0f}, {kKVMClose, 102.9f, -20.0f}};

TEST(VXSwfDefineFont2Tag, GlyphsComeFromTheEngine) {
    FakeTypeEngine engine;
    engine.families = {{{"Solo", "Book", 0}}};
    engine.widths = {{' ', 256.5f}, {'a', 512.4f}, {'b', 3300.0f}, {'c', 1e30f}};
    engine.outlines = {{'a', kSquare}, {'\n', kSquare}};
    const FontPtr font = NewGlyphFont(u"a \n");
    const Bytes expected = TagBytes(
        75,
        Join({Hex("00 00  AC 01  04 53 6F 6C 6F  03 00  10 00 00 00 14 00 00 00 18 00 00 00  28 00 00 00"),
              Hex("10 34 10 00  10 34 10 00"),
              Bits("0001 0000  0 01101 00000 1  0 00001 01010 0000000000 1001110000"
                   "11 0111 0 0 011001000  11 1000 0 1 0110010000"
                   "11 0111 0 0 100111000  11 1000 0 1 1001110000  000000"),
              Hex("0A 00 20 00 61 00"),
              Hex("00 50 00 14 00 00  00 00 14 14 00 28"),  // the em, a quarter, none; advances
              Bits("10001 00000000000000000 00101000000000000 00000000000000000 01000110000000000"),
              Hex("00"), Bits("01010 0000001010 0011010010 1001110000 0000000000"), Hex("00 00")}));
    EXPECT_EQ(DumpOf(*font), expected);
    EXPECT_EQ(DumpOf(*font), expected) << "the second dump";
    for (const char16_t c : {u'\t', u'b', u'c'}) font->AddGlyphText(c);
    DumpOf(*font);
    EXPECT_EQ(font->m_NumGlyphs, 6);
    EXPECT_EQ(font->m_OffsetTable, (std::vector<unsigned int>{28, 32, 36, 40, 56, 60}));
    EXPECT_EQ(font->m_CodeTable.size(), 12u);
    EXPECT_EQ(font->m_CodeTable[3], '\n') << "codes and advances of earlier dumps stand in front";
    EXPECT_EQ(font->m_AdvanceTable[10], 66000 - 65536) << "advances keep their low bits";
    EXPECT_EQ(font->m_AdvanceTable[11], -1);
}

TEST(VXSwfDefineFont2Tag, ATabHasTheBoundsOfTheGlyphBeforeIt) {
    FakeTypeEngine engine;
    engine.families = {{{"Solo", "Book", 0}}};
    constexpr auto kUnknown = static_cast<KVMPointType>(7);  // has no points, so the line takes what is next
    engine.outlines = {{1, kSquare}, {'x', {{kKVMMove, 10, 10}, {kUnknown, 50, 60}, {kKVMLine, 9999, 9999}}}};
    const FontPtr font = NewGlyphFont(u"\t\x1x");
    DumpOf(*font);
    EXPECT_EQ(engine.numPaths, 3) << "one for the tab too";
    EXPECT_EQ(font->m_BoundsTable[2].YMax, 60.0);
    EXPECT_EQ(font->m_BoundsTable[1].YMin, -20.0);
    EXPECT_EQ(font->m_GlyphShapes[1].ShapeRecords.Records.size(), 2u);
}

#ifdef VX_HAVE_TYPE_ENGINE

/// A glyph font of an installed font, as a dump writes it.
Bytes DumpInstalled(short bold, short italic) {
    BNDInitialize(GetVXBndAddressProc());
    const FontPtr font = NewFont();
    EXPECT_EQ(font->CreateGlyphFont("DejaVu Sans", bold, italic), kVXSuccess);
    for (unsigned short c = ' '; c < 0x100; ++c) font->AddGlyphText(c);
    const Bytes bytes = DumpOf(*font);
    VXFontPublishManager::DoCleanUp();
    BNDTerminate();
    const int index = font->GetIndexOfChar('A');
    EXPECT_GT(font->m_GlyphShapes[static_cast<std::size_t>(index)].ShapeRecords.Records.size(), 8u);
    EXPECT_GT(font->m_Descent, 200);
    return bytes;
}

TEST(VXSwfDefineFont2Tag, InstalledFontsGiveTheirOutlines) {
    const Bytes plain = DumpInstalled(0, 0);
    EXPECT_NE(plain, DumpInstalled(1, 0));
    EXPECT_NE(plain, DumpInstalled(0, 1));
}

#endif

}  // namespace
